// SPDX-License-Identifier: GPL-3.0-or-later
// Which rows of two alignments hold the same sequences.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace TAMBO {

class AlignmentTable;

// A row and the one of the other alignment that it shares its sequence with.
struct Partners
{
    std::size_t row = 0;
    std::size_t other = 0;
    // One object; otherwise two sequences of the same name and letters.
    bool isSame = false;
};

class SharedRows
{
public:
    SharedRows(const AlignmentTable &table, const AlignmentTable &other);

    // The first row whose sequence the other table holds too; null without one.
    [[nodiscard]] const Partners *anchor() const noexcept;
    // Those of the same name and letters.
    [[nodiscard]] const std::vector<Partners> &equal() const noexcept { return m_Equal; }
    [[nodiscard]] bool isShared(std::size_t rowOfOther) const { return m_IsShared[rowOfOther]; }

private:
    void findSame(const AlignmentTable &table, const AlignmentTable &other);
    void findEqual(const AlignmentTable &table, const AlignmentTable &other);

    std::optional<Partners> m_FirstSame;
    std::vector<Partners> m_Equal;
    // Of the rows of this table and of the other one.
    std::vector<bool> m_HasPartner;
    std::vector<bool> m_IsShared;
};

} // namespace TAMBO
