// SPDX-License-Identifier: GPL-3.0-or-later
// What superposing structures along an alignment would do, before anything is moved.
#pragma once

#include "PositionEdit.h"
#include "Result.h"
#include "StructureFits.h"

#include <optional>
#include <string>
#include <vector>

namespace TAMBO {

class Alignment;
class Structure;

// A row whose residues have coordinates.
struct SuperposableRow
{
    unsigned long row;
    std::string name;
    // Where the most of its residues are.
    Structure *structure;
    // With a CA atom there.
    std::size_t residues;
};

// Nothing when it has none, or is not there.
[[nodiscard]] std::optional<SuperposableRow> superposableRow(const Alignment &alignment,
                                                             unsigned long row);
[[nodiscard]] std::vector<SuperposableRow> superposableRows(const Alignment &alignment);

struct PlannedMove
{
    // Of the row.
    std::string name;
    StructureMotion motion;
    // Angstrom, of the CA atoms of the common columns.
    double rmsdBefore;
    double rmsdAfter;
    // Those that the motion is made for: all of them, when nothing was to be left out, and also
    // when nothing would have been left.
    std::size_t corePairs;
    double rmsdCore;
    // Something was to be left out, and too little would have been left.
    bool lacksCore;
    // Of the core, as rmsdBefore.
    double rmsdCoreBefore = 0;
};

struct SuperposePlan
{
    // The name of the row that stays.
    std::string reference;
    // In which all chosen rows have a CA atom, of those that were to be looked at: the pairs of
    // each move.
    std::size_t columns;
    std::vector<PlannedMove> moves;
};

// The structures of the rows onto that of the first one, each as a whole. The failure says in one
// sentence what is in the way.
[[nodiscard]] Result<SuperposePlan> planSuperposition(const Alignment &alignment,
                                                      const std::vector<unsigned long> &rows,
                                                      const FitChoice &choice = {});

} // namespace TAMBO
