// SPDX-License-Identifier: GPL-3.0-or-later
// Recorded changes of an alignment that plug-ins have no need of.
#pragma once

#include "AlignmentTable.h"
#include "BitBuffer.h"
#include "PointerSet.h"

#include <cstddef>
#include <string>
#include <vector>

namespace TAMBO {

// For a sequence that is being destroyed: also done to a locked alignment. The rows come back at
// their places on undo.
void removeRowsOf(AlignmentTable &table, const Peptide &sequence);
// The same for several at once. False when no row shows one of them.
bool removeRowsOf(AlignmentTable &table, const PointerSet<Peptide> &sequences);

// Behind the others. The alignment gets as wide as they are, if it was not. Nothing when it is
// locked.
void addRowsTo(AlignmentTable &table, AlignmentTable::Rows rows);

// What is said of a row beside its cells gives way to what the label says. Nothing when the
// alignment is locked. kind: a literal.
void relabelRow(AlignmentTable &table, std::size_t row, RowLabel label, const char *kind);
// The label of a row, or one that says nothing of it yet.
[[nodiscard]] RowLabel labelOf(const AlignmentRow &row);
// The lines of the annotation say this of the columns from begin on; one text of equal length for
// each line. Nothing when the alignment is locked.
void rewriteColumns(AlignmentTable &table, AlignmentTable::Column begin,
                    std::vector<std::string> texts);

// All that is said of the alignment and of its columns gives way to this, of which each line is as
// wide as the alignment. Nothing when it is locked. kind: a literal.
void annotate(AlignmentTable &table, std::vector<Annotation> remarks, std::vector<Annotation> lines,
              const char *kind);

// The columns of the range give way to columns in which each row holds the same residues, placed
// anew. False, with a line in the log, when a row would not, or when the alignment is locked.
// kind: a literal.
bool replaceColumns(AlignmentTable &table, const AlignmentTable::Range &range,
                    const std::vector<OccupancyRow> &rows, AlignmentTable::Column count,
                    const char *kind = "realign");

// The cells of the range, row by row, with as many residues in each row as there are. What is said
// of the columns stays. Inside a ChangeScope.
void replaceCells(AlignmentTable &table, const char *kind, const AlignmentTable::Range &range,
                  BitBuffer cells);

// What the annotation says of the columns is about to lose them. Inside a ChangeScope.
void clearColumnTexts(AlignmentTable &table, const char *kind, AlignmentTable::Column begin,
                      AlignmentTable::Column count);
// The same of runs of columns in ascending order, each at where it counts once all are gone.
void clearColumnTexts(AlignmentTable &table, const char *kind, const std::vector<GapRun> &runs);

} // namespace TAMBO
