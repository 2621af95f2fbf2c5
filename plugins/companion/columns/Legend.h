// SPDX-License-Identifier: GPL-3.0-or-later
// What a legend shows, in the order in which it is drawn.
#pragma once

#include "Color.h"

#include <optional>
#include <string>
#include <vector>

namespace companion {

// Where a color stands on the scale: above the first value, up to the second one.
struct LegendRange
{
    double above = 0;
    double upTo = 0;

    friend bool operator==(const LegendRange &, const LegendRange &) = default;
};

struct LegendEntry
{
    std::string label;
    Color color;
    // Nothing where colors stand for kinds.
    std::optional<LegendRange> range;
};

struct Legend
{
    std::string title;
    // Empty where colors stand for kinds, as scale is.
    std::string unit;
    // The ends of the scale; what is in no entry's range has no color.
    std::optional<LegendRange> scale;
    std::vector<LegendEntry> entries;
    // What is to be known beside it; empty for nothing.
    std::string note = {};
};

} // namespace companion
