// SPDX-License-Identifier: GPL-3.0-or-later
// Structures superposed along the rows of an alignment, each onto one that stays where it is.
#pragma once

#include "Export.h"

#include <cstddef>
#include <limits>
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

// What structures are superposed by.
struct FitChoice
{
    static constexpr unsigned long kAllColumns = std::numeric_limits<unsigned long>::max();
    // In Angstrom, as most often used.
    static constexpr double kUsualCutoff = 2;

    // Pairs of these columns alone, half-open.
    unsigned long begin = 0;
    unsigned long end = kAllColumns;
    // In Angstrom: of pairs that are farther apart once superposed some are left out, and the rest
    // is superposed anew, until there are none. 0: all count.
    double cutoff = 0;

    [[nodiscard]] bool isOfAll() const noexcept { return begin == 0 && end == kAllColumns; }

    friend bool operator==(const FitChoice &, const FitChoice &) = default;
};

// How far the structure of a row is from that of the row that stays.
struct StructureFit
{
    unsigned long row = 0;
    // Columns in which both rows have a CA atom of their structures.
    std::size_t pairs = 0;
    // In Angstrom, of the CA atoms of these columns, as they are now.
    double rmsd = 0;
    // Of the pairs that are not left out: how many, and their distance once superposed by them.
    // All, when nothing is to be left out, or fewer than three would be left.
    std::size_t corePairs = 0;
    double coreRmsd = 0;
    // Of the same pairs, as they are now.
    double coreRmsdNow = 0;
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
                                              unsigned long row, const FitChoice &choice = {});
    // A change, to be made inside a guard: the structure of each row, as a whole, to where the sum
    // of the squares of the distances to the fixed row's is least, of the pairs that count. One
    // that is there already, so that no CA atom of the row would move by kNear, stays, as does one
    // with a problem. A structure that is locked, or that two of the rows have, is a problem. An
    // entry for each row.
    static std::vector<StructureFit> superpose(const Alignment &alignment, unsigned long fixed,
                                               const std::vector<unsigned long> &rows,
                                               const FitChoice &choice = {});

    // What the structures of an alignment were last superposed by: a value of the alignment, which
    // comes back with it. With a range it is the alignment's range as it is now.
    [[nodiscard]] static FitChoice lastChoice(const Alignment &alignment);
    // A change, to be made inside a guard by who superposes at the user's wish. A locked alignment
    // keeps what it has.
    static void keepChoice(Alignment &alignment, const FitChoice &choice);
};

} // namespace TAMBO
