// SPDX-License-Identifier: GPL-3.0-or-later
// One row of an alignment file as its object will keep it, so that a file of a million rows is
// never in memory twice.
#pragma once

#include "OccupancyRow.h"
#include "Rare.h"
#include "RowLabel.h"
#include "SequenceText.h"

#include <cstdint>

namespace TAMBO {

struct PackedRow
{
    SequenceText text;
    OccupancyRow cells;
    std::uint64_t width = 0;
    // The name is in the text. Annotation of residues has a character for each column.
    Rare<RowLabel> label;
};

} // namespace TAMBO
