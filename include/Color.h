// SPDX-License-Identifier: GPL-3.0-or-later
// A display colour of the workbench: red, green, blue and how opaque it is, eight bits each.
#pragma once

#include "Export.h"

class QColor;

class TAMBO_API Color
{
public:
    Color() = default;
    // 0xAARRGGBB, as toolkits keep it. Without alpha, 0xRRGGBB, the colour is opaque.
    explicit constexpr Color(unsigned int argb) noexcept
        : m_Value(argb <= kRgb ? argb : argb ^ ~kRgb)
    { }
    explicit Color(const QColor &color);
    // As argb() gives it: 0x00RRGGBB is wholly transparent.
    [[nodiscard]] static constexpr Color fromArgb(unsigned int argb) noexcept
    {
        Color color;
        color.m_Value = argb ^ ~kRgb;
        return color;
    }

    [[nodiscard]] QColor toQColor() const;
    [[nodiscard]] constexpr unsigned int rgb() const noexcept { return m_Value & kRgb; }
    [[nodiscard]] constexpr unsigned int argb() const noexcept { return m_Value ^ ~kRgb; }
    [[nodiscard]] constexpr bool isOpaque() const noexcept { return m_Value <= kRgb; }

    friend constexpr bool operator==(Color a, Color b) noexcept { return a.m_Value == b.m_Value; }

private:
    static constexpr unsigned int kRgb = 0xffffffU;

    // The upper eight bits say how much is lacking to be opaque.
    unsigned int m_Value = 0;
};
