// SPDX-License-Identifier: GPL-3.0-or-later
// How often each letter occurs in a column, kept for the columns that somebody looks at.
#pragma once

#include "Alignment.h"
#include "AlignmentRow.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace TAMBO {

class LetterTally;
class LongWork;

// Counted for a block of columns at once, row by row, when one of them is first asked for; from
// then on an edit of a row adjusts the counts of the columns it touches. Forgetting is always
// allowed, and happens when too many columns are kept.
class ColumnProfiles
{
public:
    using Column = OccupancyRow::Column;
    using Rows = std::vector<std::unique_ptr<AlignmentRow>>;

    ColumnProfiles();

    [[nodiscard]] AlignmentMajority majority(const Rows &rows, Column width, Column column);
    // Of all columns. Empty when that took long and the user has given it up.
    [[nodiscard]] std::vector<AlignmentMajority> majorities(const Rows &rows, Column width);

    // Before and after the residues in [begin, end) of a row change.
    void subtract(const AlignmentRow &row, Column begin, Column end) noexcept;
    void add(const AlignmentRow &row, Column begin, Column end);
    // Columns of gaps. Of many runs, what is known is forgotten instead of being moved for each.
    void insertColumns(Column at, Column count);
    void removeColumns(Column begin, Column count);
    void openColumns(const std::vector<GapRun> &runs);
    void closeColumns(const std::vector<GapRun> &runs);
    void forget(Column begin, Column end) noexcept;
    // For columns that go and may come back: the counts of each, none of one that is not kept.
    using Counts = std::vector<std::vector<std::uint32_t>>;
    [[nodiscard]] Counts counts(Column begin, Column count) const;
    // Of columns that have just come, with the residues that they had.
    void setCounts(Column begin, const Counts &counts);
    void clear() noexcept;

    [[nodiscard]] bool isEmpty() const noexcept { return m_Used == 0; }
    // On the heap.
    [[nodiscard]] std::size_t bytes() const noexcept;

private:
    using Slot = std::uint32_t;

    static constexpr Slot kNone = ~Slot(0);
    static constexpr std::uint16_t kUnknown = 0xffff;
    // Beyond this many columns everything is forgotten: two megabytes for protein letters.
    static constexpr std::size_t kMostColumns = 16384;

    [[nodiscard]] Slot slotOf(Column column) const noexcept
    {
        return column < m_SlotOf.size() ? m_SlotOf[column] : kNone;
    }
    void forgetBefore(const std::vector<GapRun> &runs) noexcept;
    // A row's residues are about to move. Of many rows, while nobody asks for a count, what is
    // known is forgotten: to count once more takes less than to follow each of them.
    void forgetOfMany() noexcept;
    [[nodiscard]] Slot takeSlot();
    void release(Slot slot) noexcept;
    // The letter's place among the counts of a column; true when it has one without more room.
    [[nodiscard]] bool admit(char letter);
    void widen();
    // The letters of a column that is known.
    [[nodiscard]] AlignmentMajority majorityOf(Column column) const noexcept;
    // With up to most columns beside it. False when the work is given up.
    bool count(const Rows &rows, Column width, Column column, Column most, LongWork *work);
    // False when there is no room for all letters.
    [[nodiscard]] bool store(const LetterTally &tally, Column begin, Column end);

    // Per column; shorter than the alignment when the last ones have none.
    std::vector<Slot> m_SlotOf;
    std::vector<Slot> m_Free;
    std::size_t m_Used = 0;
    std::size_t m_CountedRows = 0;
    // Since somebody has asked.
    std::size_t m_FollowedRows = 0;
    // m_Stride counts per slot, one for each letter seen so far.
    std::vector<std::uint32_t> m_Counts;
    std::size_t m_Stride = 32;
    std::array<std::uint16_t, 256> m_PlaceOf;
    std::vector<char> m_Letters;
};

} // namespace TAMBO
