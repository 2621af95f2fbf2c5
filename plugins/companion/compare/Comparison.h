// SPDX-License-Identifier: GPL-3.0-or-later
// How two alignments of the same rows agree: pairs of residues, columns, and the stretches between
// columns in which they differ.
#pragma once

#include "LayoutRows.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace companion {

// Row i of one alignment is the row i of the other. Residues that only one of both has count in its
// pairs and columns, and make no stretch.
struct ComparedLayout
{
    LayoutRows rows;
    unsigned long width = 0;
};

// The columns of one of both.
struct ComparedColumns
{
    // For columns without a residue that both have.
    static constexpr std::uint32_t kNone = ~std::uint32_t(0);

    // In which column of the other one most of its residues stand; of several the first one.
    std::vector<std::uint32_t> mostly;
    // Whether a column of the other one has the same residues and no others.
    std::vector<char> isSame;
    // Pairs of residues that stand in one column.
    std::uint64_t pairs = 0;
    // Columns with two residues and more.
    std::uint64_t columns = 0;
    // Residues that the other one does not have.
    std::uint64_t alone = 0;
};

// Columns [begin, end) of one alignment and [otherBegin, otherEnd) of the other, in which each row
// has the same residues. As short as possible: before and behind it are columns that are the same
// in both, or an end.
struct Stretch
{
    unsigned long begin = 0;
    unsigned long end = 0;
    unsigned long otherBegin = 0;
    unsigned long otherEnd = 0;

    friend bool operator==(const Stretch &, const Stretch &) = default;
};

struct Comparison
{
    ComparedColumns here;
    ComparedColumns there;
    // Pairs that stand in one column here and there.
    std::uint64_t samePairs = 0;
    // With two residues and more, here and there.
    std::uint64_t sameColumns = 0;
    std::vector<Stretch> stretches;
};

// Grows with the cells, not with pairs of rows. goOn is told the share that is done, and gives
// false to give up; then there is nothing.
[[nodiscard]] std::optional<Comparison> compare(const ComparedLayout &here,
                                                const ComparedLayout &there,
                                                const std::function<bool(double)> &goOn);

} // namespace companion
