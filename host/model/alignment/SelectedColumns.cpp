// SPDX-License-Identifier: GPL-3.0-or-later
#include "SelectedColumns.h"

#include "Bits.h"
#include "Revisions.h"

namespace TAMBO {

namespace {

using Words = std::array<OccupancyRow::Word, OccupancyRow::kBlockWords>;
using Column = OccupancyRow::Column;

Words wordsOf(const AlignmentRow &row, std::size_t block) noexcept
{
    Words words;
    for (std::size_t i = 0; i < words.size(); ++i)
        words[i] = row.cells().word(block * words.size() + i);
    return words;
}

// Adds a row of which some residues are selected and some are not. Only columns that may still turn
// out to be selected are looked at.
void addMixed(const AlignmentRow &row, std::size_t block, const Words &words, Words &unselected)
{
    std::uint32_t before = row.cells().blockRank(block);
    for (std::size_t i = 0; i < words.size(); ++i) {
        for (OccupancyRow::Word open = words[i] & ~unselected[i]; open != 0; open &= open - 1) {
            const OccupancyRow::Word bit = open & (~open + 1);
            const auto ordinal = before + bits::count(words[i] & (bit - 1));
            if (!row.sequence().isSelected(row.residueIndex(ordinal)))
                unselected[i] |= bit;
        }
        before += bits::count(words[i]);
    }
}

} // namespace

bool SelectedColumns::isSelected(const Rows &rows, Column width, Column column)
{
    const std::size_t index = column / OccupancyRow::kBlockColumns;
    if (index >= m_Blocks.size())
        m_Blocks.resize(index + 1);
    Block &block = m_Blocks[index];
    if (!block.isKnown || block.selectionRevision != selectionRevision())
        find(rows, width, index, block);
    const Column place = column % OccupancyRow::kBlockColumns;
    return bits::isSet(block.selected, place);
}

void SelectedColumns::find(const Rows &rows, Column width, std::size_t index, Block &block)
{
    const Column begin = index * OccupancyRow::kBlockColumns;
    Words holding{};
    Words unselected{};
    // Columns beyond the last one count as settled.
    for (std::size_t i = 0; i < unselected.size(); ++i) {
        const Column first = begin + i * OccupancyRow::kWordColumns;
        if (first >= width)
            unselected[i] = ~OccupancyRow::Word(0);
        else if (width - first < OccupancyRow::kWordColumns)
            unselected[i] = ~OccupancyRow::Word(0) << (width - first);
    }
    for (const auto &row : rows) {
        const Words words = wordsOf(*row, index);
        const std::size_t selected = row->sequence().selectedCount();
        if (selected > 0 && selected < row->sequence().residueCount())
            addMixed(*row, index, words, unselected);
        bool isSettled = true;
        for (std::size_t i = 0; i < words.size(); ++i) {
            holding[i] |= words[i];
            if (selected == 0)
                unselected[i] |= words[i];
            isSettled = isSettled && unselected[i] == ~OccupancyRow::Word(0);
        }
        // Mostly nothing is selected, and a few rows show that for every column.
        if (isSettled)
            break;
    }
    for (std::size_t i = 0; i < holding.size(); ++i)
        block.selected[i] = holding[i] & ~unselected[i];
    block.isKnown = true;
    block.selectionRevision = selectionRevision();
}

void SelectedColumns::forget(Column begin, Column end) noexcept
{
    for (std::size_t i = begin / OccupancyRow::kBlockColumns;
         i < m_Blocks.size() && i * OccupancyRow::kBlockColumns < end; ++i)
        m_Blocks[i].isKnown = false;
}

} // namespace TAMBO
