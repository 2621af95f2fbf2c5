// SPDX-License-Identifier: GPL-3.0-or-later
// One lamp, over the viewer's left shoulder: diffuse light, and what is mirrored, after J. F.
// Blinn, "Models of light reflection for computer synthesized pictures", SIGGRAPH 1977.
#pragma once

#include "Vec3.h"

#include <algorithm>
#include <cstdint>

namespace structures {

// To the lamp, and half way between that and the viewer; of unit length.
inline constexpr Vec3 kToLamp{-0.302F, 0.402F, 0.864F};
inline constexpr Vec3 kHalfWay{-0.156F, 0.208F, 0.966F};

// normal: of unit length, in view coordinates.
[[nodiscard]] inline std::uint16_t shadeOf(Vec3 normal) noexcept
{
    // Something of it comes around the edge, so that the dark side keeps its form.
    // In this order what is no number becomes dark: a shape may stand at places that are none.
    const auto limited = [](float light) { return std::min(1.0F, std::max(0.0F, light)); };
    const float diffuse = limited(dot(normal, kToLamp) * 0.85F + 0.15F);
    float mirrored = limited(dot(normal, kHalfWay));
    mirrored *= mirrored;
    mirrored *= mirrored;
    mirrored *= mirrored;
    mirrored *= mirrored;
    mirrored *= mirrored;
    return std::uint16_t(unsigned(diffuse * 255) | (unsigned(mirrored * 255) << 8U));
}

} // namespace structures
