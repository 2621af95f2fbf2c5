// SPDX-License-Identifier: GPL-3.0-or-later
// Which columns are selected as a whole, kept for the columns that somebody looks at.
#pragma once

#include "AlignmentRow.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace TAMBO {

// Found for a block of columns at once, row by row; right until the selection changes anywhere or a
// row changes in the block.
class SelectedColumns
{
public:
    using Column = OccupancyRow::Column;
    using Rows = std::vector<std::unique_ptr<AlignmentRow>>;

    // The column holds a residue, and every residue in it is selected.
    [[nodiscard]] bool isSelected(const Rows &rows, Column width, Column column);

    // The cells in [begin, end) have changed.
    void forget(Column begin, Column end) noexcept;
    void clear() noexcept { m_Blocks.clear(); }
    // On the heap.
    [[nodiscard]] std::size_t bytes() const noexcept { return m_Blocks.capacity() * sizeof(Block); }

private:
    struct Block
    {
        std::uint64_t selectionRevision = 0;
        bool isKnown = false;
        std::array<OccupancyRow::Word, OccupancyRow::kBlockWords> selected{};
    };

    static void find(const Rows &rows, Column width, std::size_t index, Block &block);

    std::vector<Block> m_Blocks;
};

} // namespace TAMBO
