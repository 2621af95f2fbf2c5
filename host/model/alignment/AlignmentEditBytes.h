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

// A few bytes that somebody has made may ask for more memory than there is. What users have done
// takes less than this, in bytes.
[[nodiscard]] bool isAffordable(std::uint64_t now, std::uint64_t then);
// Of the annotation's lines, when columns come into them.
[[nodiscard]] bool canOpen(const AlignmentAnnotation *annotation, AlignmentTable::Column column,
                           AlignmentTable::Column count);

} // namespace TAMBO
