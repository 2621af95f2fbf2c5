// SPDX-License-Identifier: GPL-3.0-or-later
// How alike two rows of an alignment are, counted column by column.
#pragma once

#include "GappedSequence.h"
#include "Records.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace TAMBO {

struct PairIdentity
{
    // Columns where both rows have a residue, of the same letter or of two.
    std::uint64_t identical = 0;
    std::uint64_t different = 0;
    // Residues of either row.
    std::uint64_t firstLength = 0;
    std::uint64_t secondLength = 0;
    // Columns with a residue of either row: all of them, and those between the first and the last
    // one where both have one.
    std::uint64_t hangs = 0;
    std::uint64_t overlap = 0;

    friend bool operator==(const PairIdentity &, const PairIdentity &) = default;
};

// Compares any two rows of an alignment. Keeps a byte a cell.
class PairIdentities
{
public:
    // The alignment outlives this; its rows are of one length.
    explicit PairIdentities(const AlignmentRecord &alignment);

    [[nodiscard]] PairIdentity compare(std::size_t first, std::size_t second) const;

private:
    const AlignmentRecord &m_Alignment;
    std::vector<std::string> m_Texts;
};

} // namespace TAMBO
