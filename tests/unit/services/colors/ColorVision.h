// SPDX-License-Identifier: GPL-3.0-or-later
// What colours look like to people who see colours differently, and how far apart two are.
#pragma once

#include "Color.h"

#include <array>

enum class Vision { Normal, Protanopia, Deuteranopia, Tritanopia };

inline constexpr std::array kVisions = {Vision::Normal, Vision::Protanopia, Vision::Deuteranopia,
                                        Vision::Tritanopia};

[[nodiscard]] const char *nameOf(Vision vision);

// CIE L*a*b*, white point D65.
struct LabColor
{
    double lightness = 0;
    double a = 0;
    double b = 0;
};

// Machado GM, Oliveira MM, Fernandes LAF (2009) A physiologically-based model for simulation of
// color vision deficiency, IEEE Trans Vis Comput Graph 15:1291-1298: their matrices for severity
// 1.0, on linear red, green and blue.
[[nodiscard]] LabColor seenBy(Vision vision, Color color);

// CIEDE2000, as Sharma G, Wu W, Dalal EN (2005), Color Res Appl 30:21-30, write it. A difference of
// 1 can just be seen side by side.
[[nodiscard]] double colorDifference(const LabColor &first, const LabColor &second);

// The contrast ratio (WCAG 2, 1 to 21) of a residue's letter on its cell: white on dark colours,
// black on all others, by the rule of the cells.
[[nodiscard]] double letterContrast(Color cell);
