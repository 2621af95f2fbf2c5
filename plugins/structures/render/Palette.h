// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Shapes.h"

#include <cstdint>
#include <vector>

namespace structures {

// Colors and marks, by pick. An entry for 0 as well, which means nothing.
struct Palette
{
    static constexpr std::uint8_t kSelected = 1;
    static constexpr std::uint8_t kPointed = 2;

    // 0xRRGGBB.
    std::vector<std::uint32_t> colors;
    std::vector<std::uint8_t> marks;

    // 0xRRGGBB of the outlines.
    std::uint32_t selectedOutline = 0xff00d0;
    std::uint32_t pointedOutline = 0xffb000;
};

} // namespace structures
