// SPDX-License-Identifier: GPL-3.0-or-later
// What the edits of an alignment have in common when they are bytes.
#pragma once

#include "AlignmentTable.h"
#include "BitBuffer.h"
#include "ChainBreakPlaces.h"

namespace TAMBO {

class EditReader;
class EditWriter;
struct RowBreaks;

void storeBreaks(const BreakColumns &columns, EditWriter &out);
[[nodiscard]] BreakColumns loadBreaks(EditReader &in);

// Runs of columns in ascending order and apart, in all no wider than an alignment may be.
void storeRuns(const std::vector<GapRun> &runs, EditWriter &out);
[[nodiscard]] std::vector<GapRun> loadRuns(EditReader &in);
void storeBits(const BitBuffer &bits, EditWriter &out);
[[nodiscard]] BitBuffer loadBits(EditReader &in);
void storeRowBreaks(const std::vector<RowBreaks> &rows, EditWriter &out);
[[nodiscard]] std::vector<RowBreaks> loadRowBreaks(EditReader &in);
// Of the rows that have any, in their order.
[[nodiscard]] bool breaksFit(const AlignmentTable &table, const std::vector<RowBreaks> &rows);
[[nodiscard]] std::uint64_t bitsIn(const std::vector<BitBuffer::Word> &words);
// Whether the row's residues ascend and are of its sequence.
[[nodiscard]] bool isOfItsSequence(const AlignmentRow &row);

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
