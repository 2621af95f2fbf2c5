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
// What is known follows the edits of a row, where only columns that lost a residue are looked at
// again, and of columns.
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
    // Columns of gaps. Of many runs, what is known is forgotten instead of being moved for each.
    void insertColumns(Column at, Column count) noexcept;
    void removeColumns(Column begin, Column count) noexcept;
    void openColumns(const std::vector<GapRun> &runs) noexcept;
    void closeColumns(const std::vector<GapRun> &runs) noexcept;
    // The cells in [begin, end) have changed.
    void forget(Column begin, Column end) noexcept;
    void addRows(const Rows &added) noexcept;
    void takeRows() noexcept;
    // On the heap.
    [[nodiscard]] std::size_t bytes() const noexcept
    {
        return (m_Known.capacity() + m_Holding.capacity() + m_Unselected.capacity()) *
               sizeof(OccupancyRow::Word);
    }

private:
    using Words = std::array<OccupancyRow::Word, OccupancyRow::kBlockWords>;

    void forgetBefore(const std::vector<GapRun> &runs) noexcept;
    [[nodiscard]] bool knowsWhetherAny() const noexcept;
    [[nodiscard]] bool isAnySelected(const Rows &rows) noexcept;
    void find(const Rows &rows, Column width, std::size_t index);
    // Calls visit(number of the block, cells of the row in [begin, end)).
    template <typename Visit>
    void visitBlocks(const AlignmentRow &row, Column begin, Column end, Visit visit) noexcept;

    // One bit a column. Of columns that are not known the others are not set.
    std::vector<OccupancyRow::Word> m_Known;
    std::vector<OccupancyRow::Word> m_Holding;
    // Columns with an unselected residue.
    std::vector<OccupancyRow::Word> m_Unselected;
    std::uint64_t m_Revision = 0;
    // Mostly nothing is, and then no row need be looked at.
    bool m_IsAnySelected = false;
    bool m_IsAnyKnown = false;
    std::uint64_t m_AnyRevision = 0;
};

} // namespace TAMBO
