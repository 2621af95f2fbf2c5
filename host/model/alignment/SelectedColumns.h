// SPDX-License-Identifier: GPL-3.0-or-later
// Which columns are selected as a whole, kept for the columns that somebody looks at.
#pragma once

#include "AlignmentRow.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace TAMBO {

// Found for a block of columns at once, row by row; right until the selection changes anywhere.
// What is known of a block follows the edits of a row: only columns that lost a residue are looked
// at again.
class SelectedColumns
{
public:
    using Column = OccupancyRow::Column;
    using Rows = std::vector<std::unique_ptr<AlignmentRow>>;

    // The column holds a residue, and every residue in it is selected.
    [[nodiscard]] bool isSelected(const Rows &rows, Column width, Column column);

    // To be called around every change that moves the residues of one row within [begin, end).
    void subtract(const AlignmentRow &row, Column begin, Column end) noexcept;
    void add(const AlignmentRow &row, Column begin, Column end) noexcept;
    // The cells in [begin, end) have changed.
    void forget(Column begin, Column end) noexcept;
    void addRows(const Rows &added) noexcept;
    void takeRows() noexcept;
    // On the heap.
    [[nodiscard]] std::size_t bytes() const noexcept { return m_Blocks.capacity() * sizeof(Block); }

private:
    using Words = std::array<OccupancyRow::Word, OccupancyRow::kBlockWords>;

    struct Block
    {
        std::uint64_t selectionRevision = 0;
        bool isKnown = false;
        // Of these columns nothing is known.
        Words open{};
        Words holding{};
        // Columns with an unselected residue, and those beyond the last one.
        Words unselected{};
    };

    [[nodiscard]] bool knowsWhetherAny() const noexcept;
    [[nodiscard]] bool isAnySelected(const Rows &rows) noexcept;
    static void find(const Rows &rows, Column width, std::size_t index, Block &block);
    // Calls visit(block, number of the block, cells of the row in [begin, end)) for what is known.
    template <typename Visit>
    void visitKnown(const AlignmentRow &row, Column begin, Column end, Visit visit) noexcept;

    std::vector<Block> m_Blocks;
    // Mostly nothing is, and then no row need be looked at.
    bool m_IsAnySelected = false;
    bool m_IsAnyKnown = false;
    std::uint64_t m_AnyRevision = 0;
};

} // namespace TAMBO
