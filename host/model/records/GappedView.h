// SPDX-License-Identifier: GPL-3.0-or-later
// One row of an alignment that is kept elsewhere: see GappedSequence.
#pragma once

#include "GappedSequence.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace TAMBO {

struct GappedView
{
    GappedView() = default;
    GappedView(std::string_view ofLetters, std::span<const std::uint64_t> ofCells,
               std::uint64_t columns) noexcept
        : letters(ofLetters), occupancy(ofCells), width(columns)
    { }
    // Every row that is kept as a value can be looked at like this.
    GappedView(const GappedSequence &row) noexcept
        : GappedView(row.letters, row.occupancy, row.width)
    { }

    std::string_view letters;
    std::span<const std::uint64_t> occupancy;
    std::uint64_t width = 0;
};

} // namespace TAMBO
