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

// So many rows mostly show of every column that it is not selected.
constexpr std::size_t kFewRows = 256;
// Of words that are moved for runs of columns, one after the other: some milliseconds.
constexpr std::size_t kMostMovedWords = std::size_t(1) << 22;

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

// The bits from at on move up, the last ones out; such that are not set come in their place.
void insertBits(std::vector<OccupancyRow::Word> &words, Column at, Column count) noexcept
{
    const std::size_t last = bits::wordOf(at);
    for (std::size_t i = words.size(); i-- > last;) {
        const Column first = i * bits::kPerWord;
        const Column staying = at > first ? at - first : 0;
        const OccupancyRow::Word before = words[i] & bits::low(staying);
        OccupancyRow::Word moved = 0;
        if (first >= count)
            moved = bits::joined(words[bits::wordOf(first - count)],
                                 words[std::min(bits::wordOf(first - count) + 1, i)],
                                 bits::placeOf(first - count));
        else if (count - first < bits::kPerWord)
            moved = words[0] << (count - first);
        words[i] = before | bits::without(moved, at + count > first ? at + count - first : 0);
    }
}

void removeBits(std::vector<OccupancyRow::Word> &words, Column begin, Column count) noexcept
{
    const auto word = [&](std::size_t index) { return index < words.size() ? words[index] : 0; };
    for (std::size_t i = bits::wordOf(begin); i < words.size(); ++i) {
        const Column first = i * bits::kPerWord;
        const Column staying = begin > first ? begin - first : 0;
        const std::size_t from = first + count;
        const OccupancyRow::Word moved = bits::joined(
            word(bits::wordOf(from)), word(bits::wordOf(from) + 1), bits::placeOf(from));
        words[i] = (words[i] & bits::low(staying)) | bits::without(moved, staying);
    }
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
    if (knowsWhetherAny() && !m_IsAnySelected)
        return false;
    if (m_Revision != selectionRevision()) {
        forget(0, m_Known.size() * OccupancyRow::kWordColumns);
        m_Revision = selectionRevision();
    }
    const std::size_t index = column / OccupancyRow::kBlockColumns;
    const std::size_t needed = (index + 1) * OccupancyRow::kBlockWords;
    if (m_Known.size() < needed) {
        m_Known.resize(needed);
        m_Holding.resize(needed);
        m_Unselected.resize(needed);
    }
    if (!bits::isSet(m_Known, column))
        find(rows, width, index);
    return bits::isSet(m_Holding, column) && !bits::isSet(m_Unselected, column);
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

void SelectedColumns::find(const Rows &rows, Column width, std::size_t index)
{
    const Column begin = index * OccupancyRow::kBlockColumns;
    Words settled;
    for (std::size_t i = 0; i < settled.size(); ++i) {
        const Column first = begin + i * OccupancyRow::kWordColumns;
        settled[i] = m_Known[index * settled.size() + i];
        // Columns beyond the last one count as settled.
        if (first >= width)
            settled[i] = ~OccupancyRow::Word(0);
        else if (width - first < OccupancyRow::kWordColumns)
            settled[i] |= ~OccupancyRow::Word(0) << (width - first);
    }
    Words holding{};
    Words unselected = settled;
    std::size_t looks = 0;
    bool isHeld = false;
    for (const auto &row : rows) {
        // A column that holds nothing is not settled by any row, and mostly nothing is selected.
        if (++looks == kFewRows && !isAnySelected(rows))
            return;
        const std::size_t selected = row->sequence().selectedCount();
        const bool isWhole = selected > 0 && selected == row->sequence().residueCount();
        // Of many rows that are selected as a whole the first ones show where residues stand.
        if (isWhole && isHeld)
            continue;
        const Words words = wordsOf(*row, index);
        if (selected > 0 && !isWhole)
            addMixed(*row, index, words, unselected);
        bool isSettled = true;
        isHeld = true;
        for (std::size_t i = 0; i < words.size(); ++i) {
            holding[i] |= words[i];
            if (selected == 0)
                unselected[i] |= words[i];
            isSettled = isSettled && unselected[i] == ~OccupancyRow::Word(0);
            isHeld = isHeld && (holding[i] | settled[i]) == ~OccupancyRow::Word(0);
        }
        // Mostly little is selected, and a few rows show that for every column.
        if (isSettled)
            break;
    }
    for (std::size_t i = 0; i < holding.size(); ++i) {
        const std::size_t word = index * holding.size() + i;
        m_Holding[word] |= holding[i] & ~settled[i];
        m_Unselected[word] |= unselected[i] & ~settled[i];
        const Column first = begin + i * OccupancyRow::kWordColumns;
        m_Known[word] |= bits::low(width > first ? width - first : 0);
    }
}

template <typename Visit>
void SelectedColumns::visitBlocks(const AlignmentRow &row, Column begin, Column end,
                                  Visit visit) noexcept
{
    constexpr Column kBlock = OccupancyRow::kBlockColumns;
    for (std::size_t index = begin / kBlock;
         (index + 1) * OccupancyRow::kBlockWords <= m_Known.size() && index * kBlock < end;
         ++index) {
        Words words = wordsOf(row, index);
        for (std::size_t i = 0; i < words.size(); ++i) {
            const Column first = index * kBlock + i * OccupancyRow::kWordColumns;
            words[i] &= bits::low(end > first ? end - first : 0) &
                        ~bits::low(begin > first ? begin - first : 0);
        }
        visit(index, words);
    }
}

void SelectedColumns::subtract(const AlignmentRow &row, Column begin, Column end) noexcept
{
    visitBlocks(row, begin, end, [this](std::size_t index, const Words &words) {
        for (std::size_t i = 0; i < words.size(); ++i) {
            const std::size_t word = index * words.size() + i;
            m_Known[word] &= ~words[i];
            m_Holding[word] &= ~words[i];
            m_Unselected[word] &= ~words[i];
        }
    });
}

void SelectedColumns::add(const AlignmentRow &row, Column begin, Column end) noexcept
{
    visitBlocks(row, begin, end, [&](std::size_t index, const Words &words) {
        const std::size_t selected = row.sequence().selectedCount();
        Words unselected{};
        if (selected == 0) {
            unselected = words;
        } else if (selected < row.sequence().residueCount()) {
            std::ranges::transform(words, unselected.begin(), std::bit_not());
            addMixed(row, index, wordsOf(row, index), unselected);
        }
        for (std::size_t i = 0; i < words.size(); ++i) {
            const std::size_t word = index * words.size() + i;
            unselected[i] &= words[i];
            m_Unselected[word] |= unselected[i];
            // One that is not selected is enough to know.
            m_Known[word] |= unselected[i];
            m_Holding[word] |= words[i] & m_Known[word];
        }
    });
}

void SelectedColumns::insertColumns(Column at, Column count) noexcept
{
    const Column all = m_Known.size() * OccupancyRow::kWordColumns;
    for (auto *const words : {&m_Known, &m_Holding, &m_Unselected})
        insertBits(*words, at, count);
    // Nothing stands in them.
    bits::forEachMask(at, std::min(at + count, all),
                      [this](std::size_t word, OccupancyRow::Word mask) { m_Known[word] |= mask; });
}

void SelectedColumns::removeColumns(Column begin, Column count) noexcept
{
    for (auto *const words : {&m_Known, &m_Holding, &m_Unselected})
        removeBits(*words, begin, count);
}

void SelectedColumns::forgetBefore(const std::vector<GapRun> &runs) noexcept
{
    if (runs.size() * m_Known.size() <= kMostMovedWords)
        return;
    for (auto *const words : {&m_Known, &m_Holding, &m_Unselected})
        words->clear();
}

void SelectedColumns::openColumns(const std::vector<GapRun> &runs) noexcept
{
    forgetBefore(runs);
    for (auto run = runs.rbegin(); run != runs.rend(); ++run)
        insertColumns(run->column, run->count);
}

// Each run stands where it counts once those before it are gone.
void SelectedColumns::closeColumns(const std::vector<GapRun> &runs) noexcept
{
    forgetBefore(runs);
    for (const GapRun &run : runs)
        removeColumns(run.column, run.count);
}

void SelectedColumns::forget(Column begin, Column end) noexcept
{
    const Column all = m_Known.size() * OccupancyRow::kWordColumns;
    bits::forEachMask(begin, std::min(end, all), [this](std::size_t word, OccupancyRow::Word mask) {
        m_Known[word] &= ~mask;
        m_Holding[word] &= ~mask;
        m_Unselected[word] &= ~mask;
    });
}

void SelectedColumns::addRows(const Rows &added) noexcept
{
    forget(0, m_Known.size() * OccupancyRow::kWordColumns);
    if (knowsWhetherAny())
        m_IsAnySelected = m_IsAnySelected || std::ranges::any_of(added, hasSelected);
}

void SelectedColumns::takeRows() noexcept
{
    forget(0, m_Known.size() * OccupancyRow::kWordColumns);
    // Without any before there is none now.
    m_IsAnyKnown = knowsWhetherAny() && !m_IsAnySelected;
}

} // namespace TAMBO
