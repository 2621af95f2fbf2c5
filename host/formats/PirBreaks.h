// SPDX-License-Identifier: GPL-3.0-or-later
// Breaks between chains in the rows of PIR files: a '/' in the place of a gap.
#pragma once

#include "Records.h"

#include <cstdint>
#include <vector>

namespace TAMBO::formats {

struct PlacedBreak
{
    std::uint64_t column;
    // The number of letters before it.
    std::uint64_t letters;
};

// A break goes into the gap behind the last letter before it, one before the first letter to the
// start of the row. A break without such a gap has no place.
[[nodiscard]] std::vector<PlacedBreak> placedBreaks(const RowRecord &row);

} // namespace TAMBO::formats
