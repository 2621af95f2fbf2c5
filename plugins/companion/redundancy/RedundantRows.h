// SPDX-License-Identifier: GPL-3.0-or-later
// Which rows of an alignment are so like others that they say nothing new.
#pragma once

#include "DistanceMatrix.h"
#include "IdentityDistances.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace companion {

// A copy of rows for comparing each with many.
class ComparedRows
{
public:
    // How many bytes the rows take.
    [[nodiscard]] static std::uint64_t bytesOf(std::uint64_t rows, std::uint64_t columns) noexcept;

    explicit ComparedRows(std::size_t columns = 0);

    void reserve(std::size_t rows);
    // Letters and gaps as for identityDistances(); shorter ones have gaps at their end.
    void add(std::span<const char> row, bool hasStructure);

    [[nodiscard]] std::size_t rows() const noexcept { return m_HasStructure.size(); }
    [[nodiscard]] std::size_t columns() const noexcept { return m_Columns; }
    [[nodiscard]] std::uint32_t residues(std::size_t row) const noexcept
    {
        return m_Residues[row * (m_Blocks + 1)];
    }
    [[nodiscard]] bool hasStructure(std::size_t row) const noexcept { return m_HasStructure[row]; }

private:
    friend class RowComparison;

    std::size_t m_Columns;
    std::size_t m_Blocks;
    // Whole blocks; gaps are 0, and letters capital.
    std::vector<std::uint8_t> m_Letters;
    // Of each row how many residues are left at the begin of each block, and none at the end.
    std::vector<std::uint32_t> m_Residues;
    std::vector<bool> m_HasStructure;
};

struct RedundancyRule
{
    // At least so much, from 0 to 1.
    double identity = 0.9;
    IdentityOf compared = IdentityOf::ShorterSequence;
    // Of rows that are like each other, one with a structure is kept before longer ones.
    bool keepsStructures = true;
};

struct RedundantRow
{
    std::uint32_t row = 0;
    // The row that stays, and that it is like.
    std::uint32_t kept = 0;
    double identity = 0;
};

// One row after the other, the longest first and equal ones in their order, is kept unless it is
// like one that is kept; it is told with the first of these (Li and Godzik, Bioinformatics 22:1658,
// 2006). Those with residues in none of the columns are left alone. By row. Nothing when it was
// given up.
[[nodiscard]] std::optional<std::vector<RedundantRow>>
redundantRows(const ComparedRows &rows, const RedundancyRule &rule, const GoOn &goOn = {});

} // namespace companion
