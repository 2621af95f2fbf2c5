// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DistanceMatrix.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace companion {

// What the identical pairs of two rows are a share of.
enum class IdentityOf {
    // All columns: as many as the longest of the rows has.
    AlignmentLength,
    // The residues of the row that has fewer of them.
    ShorterSequence,
    // The columns in which both rows have a residue.
    AlignedPairs
};

// 1 - identical pairs / compared pairs, for each two of the rows: from 0 to 1. A pair is identical
// when both rows have the same letter in a column, whatever its case and whatever letter it is. 1
// when there is nothing to compare. Each row has a letter for each column, '\0', '-', '.' or '~'
// for a gap; a row that is shorter than others has gaps at its end. Nothing when it was given up.
[[nodiscard]] std::optional<DistanceMatrix>
identityDistances(std::span<const std::string> rows, IdentityOf compared, const GoOn &goOn = {});

// Of one row, with the same rows and the same kinds, to others one after the other: identical pairs
// / compared pairs, 0 when there is nothing to compare.
class IdentityTo
{
public:
    // Of an alignment of so many columns, as many as the row has at least.
    IdentityTo(const std::string &row, std::size_t columns, IdentityOf compared);
    ~IdentityTo();
    IdentityTo(const IdentityTo &) = delete;
    IdentityTo &operator=(const IdentityTo &) = delete;

    [[nodiscard]] double of(std::span<const char> row);

private:
    struct Rows;
    std::unique_ptr<Rows> m_Rows;
    IdentityOf m_Compared;
};

} // namespace companion
