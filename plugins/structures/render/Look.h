// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace structures {

// Grounds, 0xRRGGBB.
inline constexpr std::uint32_t kWhiteGround = 0xffffff;
inline constexpr std::uint32_t kDarkGround = 0x101418;

// How a picture is made of what is seen.
struct Look
{
    // 0xRRGGBB.
    std::uint32_t background = kWhiteGround;
    // Nothing but shapes is painted.
    bool isTransparent = false;
    // What is far away fades into the background.
    bool hasDepthCue = true;
    // Dark lines where something is far in front of something else.
    bool hasOutlines = true;
    // What lies behind something near is darker.
    bool hasShadows = true;

    friend constexpr bool operator==(const Look &, const Look &) = default;
};

} // namespace structures
