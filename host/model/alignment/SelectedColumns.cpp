// SPDX-License-Identifier: GPL-3.0-or-later
#include "SelectedColumns.h"

#include "Bits.h"
#include "Revisions.h"

#include <algorithm>
#include <functional>

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

bool hasSelected(const std::unique_ptr<AlignmentRow> &row) noexcept
{
    return row->sequence().selectedCount() > 0;
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
    if (!isAnySelected(rows))
        return false;
    const std::size_t index = column / OccupancyRow::kBlockColumns;
    if (index >= m_Blocks.size())
        m_Blocks.resize(index + 1);
    Block &block = m_Blocks[index];
    const Column place = column % OccupancyRow::kBlockColumns;
    if (!block.isKnown || block.selectionRevision != selectionRevision()) {
        block = {};
        block.open.fill(~OccupancyRow::Word(0));
    }
    if (bits::isSet(block.open, place))
        find(rows, width, index, block);
    return bits::isSet(block.holding, place) && !bits::isSet(block.unselected, place);
}

bool SelectedColumns::knowsWhetherAny() const noexcept
{
    return m_IsAnyKnown && m_AnyRevision == selectionRevision();
}

bool SelectedColumns::isAnySelected(const Rows &rows) noexcept
{
    if (!knowsWhetherAny()) {
        m_IsAnySelected = std::ranges::any_of(rows, hasSelected);
        m_AnyRevision = selectionRevision();
        m_IsAnyKnown = true;
    }
    return m_IsAnySelected;
}

// Of the columns that are open; in those there is nothing yet.
void SelectedColumns::find(const Rows &rows, Column width, std::size_t index, Block &block)
{
    const Column begin = index * OccupancyRow::kBlockColumns;
    Words settled;
    for (std::size_t i = 0; i < settled.size(); ++i) {
        const Column first = begin + i * OccupancyRow::kWordColumns;
        settled[i] = ~block.open[i];
        // Columns beyond the last one count as settled.
        if (first >= width)
            settled[i] = ~OccupancyRow::Word(0);
        else if (width - first < OccupancyRow::kWordColumns)
            settled[i] |= ~OccupancyRow::Word(0) << (width - first);
    }
    Words holding{};
    Words unselected = settled;
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
        // Mostly little is selected, and a few rows show that for every column.
        if (isSettled)
            break;
    }
    for (std::size_t i = 0; i < holding.size(); ++i) {
        block.holding[i] |= holding[i] & ~settled[i];
        block.unselected[i] |= unselected[i] & ~settled[i];
        block.open[i] = 0;
    }
    block.isKnown = true;
    block.selectionRevision = selectionRevision();
}

template <typename Visit>
void SelectedColumns::visitKnown(const AlignmentRow &row, Column begin, Column end,
                                 Visit visit) noexcept
{
    constexpr Column kBlock = OccupancyRow::kBlockColumns;
    for (std::size_t index = begin / kBlock; index < m_Blocks.size() && index * kBlock < end;
         ++index) {
        Block &block = m_Blocks[index];
        if (!block.isKnown)
            continue;
        Words words = wordsOf(row, index);
        for (std::size_t i = 0; i < words.size(); ++i) {
            const Column first = index * kBlock + i * OccupancyRow::kWordColumns;
            words[i] &= bits::low(end > first ? end - first : 0) &
                        ~bits::low(begin > first ? begin - first : 0);
        }
        visit(block, index, words);
    }
}

void SelectedColumns::subtract(const AlignmentRow &row, Column begin, Column end) noexcept
{
    visitKnown(row, begin, end, [](Block &block, std::size_t, const Words &words) {
        for (std::size_t i = 0; i < words.size(); ++i) {
            block.open[i] |= words[i];
            block.holding[i] &= ~words[i];
            block.unselected[i] &= ~words[i];
        }
    });
}

void SelectedColumns::add(const AlignmentRow &row, Column begin, Column end) noexcept
{
    visitKnown(row, begin, end, [&](Block &block, std::size_t index, const Words &words) {
        const std::size_t selected = row.sequence().selectedCount();
        Words unselected{};
        if (selected == 0) {
            unselected = words;
        } else if (selected < row.sequence().residueCount()) {
            std::ranges::transform(words, unselected.begin(), std::bit_not());
            addMixed(row, index, wordsOf(row, index), unselected);
        }
        for (std::size_t i = 0; i < words.size(); ++i) {
            unselected[i] &= words[i];
            block.unselected[i] |= unselected[i];
            // One that is not selected is enough to know.
            block.open[i] &= ~unselected[i];
            block.holding[i] |= words[i] & ~block.open[i];
        }
    });
}

void SelectedColumns::forget(Column begin, Column end) noexcept
{
    for (std::size_t i = begin / OccupancyRow::kBlockColumns;
         i < m_Blocks.size() && i * OccupancyRow::kBlockColumns < end; ++i)
        m_Blocks[i].isKnown = false;
}

void SelectedColumns::addRows(const Rows &added) noexcept
{
    m_Blocks.clear();
    if (knowsWhetherAny())
        m_IsAnySelected = m_IsAnySelected || std::ranges::any_of(added, hasSelected);
}

void SelectedColumns::takeRows() noexcept
{
    m_Blocks.clear();
    // Without any before there is none now.
    m_IsAnyKnown = knowsWhetherAny() && !m_IsAnySelected;
}

} // namespace TAMBO
