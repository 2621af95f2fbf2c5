// SPDX-License-Identifier: GPL-3.0-or-later
// What the edits of an alignment have in common when they are bytes.
#pragma once

#include "AlignmentTable.h"
#include "ChainBreakPlaces.h"

namespace TAMBO {

class EditReader;
class EditWriter;

void storeBreaks(const BreakColumns &columns, EditWriter &out);
[[nodiscard]] BreakColumns loadBreaks(EditReader &in);

[[nodiscard]] bool areWithin(const AlignmentTable &table, AlignmentTable::Column begin,
                             AlignmentTable::Column count);
[[nodiscard]] std::uint32_t residuesIn(const OccupancyRow &cells, AlignmentTable::Column begin,
                                       AlignmentTable::Column count);

} // namespace TAMBO
