// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Look.h"
#include "Palette.h"
#include "Samples.h"

#include <cstdint>

namespace structures {

// Where what is seen begins and ends, in Angstrom to the viewer.
struct DepthRange
{
    float front = 0;
    float back = 0;
};

struct Rgb
{
    float red;
    float green;
    float blue;
};

[[nodiscard]] inline Rgb rgbOf(std::uint32_t color) noexcept
{
    return {float((color >> 16U) & 0xffU), float((color >> 8U) & 0xffU), float(color & 0xffU)};
}

// Light on the color of what samples belong to, and the depth in which it fades. For one picture.
class Lighting
{
public:
    Lighting(const DepthRange &range, const Look &look, const Palette &palette,
             float eyeDistance) noexcept;

    // Of a sample of nothing.
    [[nodiscard]] std::uint32_t empty() const noexcept { return m_Empty; }
    // Samples that lie side by side. left: how much light each of them has.
    template <bool kIsPerspective>
    void paint(const float *keys, const Pick *picks, const std::uint16_t *shades, const float *left,
               int count, std::uint32_t *out) const noexcept;

private:
    Rgb m_Ground;
    std::uint32_t m_Empty;
    float m_Front;
    // How much of what is so far away, a unit of length.
    float m_Fade;
    float m_EyeDistance;
    const std::uint32_t *m_Colors;
};

} // namespace structures
