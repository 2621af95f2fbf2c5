// SPDX-License-Identifier: GPL-3.0-or-later
// Rows that the user has chosen, wherever edits carry them.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace TAMBO {
class Alignment;
class Compound;
} // namespace TAMBO

namespace companion {

class ChosenRows
{
public:
    // None of the alignment of before any more.
    void clear() noexcept { m_Rows.clear(); }
    void choose(const TAMBO::Alignment &alignment, const std::vector<unsigned long> &rows);
    void giveUp(unsigned long row);
    // After edits; a row that goes comes back with undo.
    void follow(const TAMBO::Alignment &alignment);
    // Where they are, in the order in which they were chosen.
    [[nodiscard]] std::vector<unsigned long> rows() const;

private:
    struct Row
    {
        // Only to be compared.
        const TAMBO::Compound *sequence = nullptr;
        // Nothing while the alignment does not have it.
        std::optional<unsigned long> place;
    };

    void findAll(const TAMBO::Alignment &alignment);

    std::vector<Row> m_Rows;
    std::uint64_t m_Revision = 0;
};

// The first rows of which a residue is selected, as many as wanted.
[[nodiscard]] std::vector<unsigned long> rowsWithSelection(const TAMBO::Alignment &alignment,
                                                           std::size_t most);

} // namespace companion
