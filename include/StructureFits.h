// SPDX-License-Identifier: GPL-3.0-or-later
// Structures superposed along the rows of an alignment, each onto one that stays where it is.
#pragma once

#include "Export.h"

#include <cstddef>
#include <string>
#include <vector>

namespace TAMBO {

class Alignment;
class Compound;

// A row of an alignment whose residues have coordinates, and the structure that most of them are
// in.
struct StructureRow
{
    unsigned long row = 0;
    Compound *structure = nullptr;

    friend bool operator==(const StructureRow &, const StructureRow &) = default;
};

// How far the structure of a row is from that of the row that stays.
struct StructureFit
{
    unsigned long row = 0;
    // Columns in which both rows have a CA atom of their structures.
    std::size_t pairs = 0;
    // In Angstrom, of the CA atoms of these columns, as they are now.
    double rmsd = 0;
    // The structure has been moved.
    bool hasMoved = false;
    // Why nothing can be said or done, in a sentence; empty when it can. The numbers above are 0
    // then.
    std::string problem;

    friend bool operator==(const StructureFit &, const StructureFit &) = default;
};

// The workbench's own superposing, with two rows at a time: it takes three pairs that are not in
// one line. All calls are made in the GUI thread.
class TAMBO_API StructureFits
{
public:
    // Nearer than this, in Angstrom, is where it belongs: files have three decimals.
    static constexpr double kNear = 0.0005;

    // The first row of each structure, from above; a look at every row.
    [[nodiscard]] static std::vector<StructureRow> rows(const Alignment &alignment);
    // The structure that most of a row's residues are in; null without.
    [[nodiscard]] static Compound *structureOf(const Alignment &alignment, unsigned long row);
    // As things are; nothing changes.
    [[nodiscard]] static StructureFit measure(const Alignment &alignment, unsigned long fixed,
                                              unsigned long row);
    // A change, to be made inside a guard: the structure of each row, as a whole, to where the sum
    // of the squares of the distances to the fixed row's is least. One that is there already, so
    // that no CA atom of the row would move by kNear, stays, as does one with a problem. A
    // structure that is locked, or that two of the rows have, is a problem. An entry for each row.
    static std::vector<StructureFit> superpose(const Alignment &alignment, unsigned long fixed,
                                               const std::vector<unsigned long> &rows);
};

} // namespace TAMBO
