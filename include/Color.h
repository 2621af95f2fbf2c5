// SPDX-License-Identifier: GPL-3.0-or-later
// A display colour of the workbench: opaque red, green and blue, eight bits each.
#pragma once

#include "Export.h"

class QColor;

class TAMBO_API Color
{
public:
    Color() = default;
    // 0xRRGGBB; the upper eight bits, where toolkits keep alpha, are ignored.
    explicit constexpr Color(unsigned int rgb) noexcept : m_Rgb(rgb & 0xffffffU) { }
    explicit Color(const QColor &color);

    [[nodiscard]] QColor toQColor() const;
    [[nodiscard]] constexpr unsigned int rgb() const noexcept { return m_Rgb; }

    friend constexpr bool operator==(Color a, Color b) noexcept { return a.m_Rgb == b.m_Rgb; }

private:
    unsigned int m_Rgb = 0;
};
