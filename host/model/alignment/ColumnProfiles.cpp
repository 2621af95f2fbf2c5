// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnProfiles.h"

#include "LetterTally.h"
#include "LongWork.h"

#include <algorithm>

namespace TAMBO {

namespace {

// Counted at once: half of what a screen shows, so that scrolling never waits for much more than it
// needs.
constexpr OccupancyRow::Column kBatchColumns = 128;
// The same for whoever wants all columns: of a million rows each is another walk through the
// memory, so that few passes count. What they count in still fits the fastest memory.
constexpr OccupancyRow::Column kWideBatch = 512;
// Of columns that are moved for runs of others, one after the other: some milliseconds.
constexpr std::size_t kMostMovedSlots = std::size_t(1) << 24;
// Of all rows, and rows in any case.
constexpr std::size_t kFollowedShare = 16;
constexpr std::size_t kFollowedRows = 4096;

} // namespace

ColumnProfiles::ColumnProfiles()
{
    m_PlaceOf.fill(kUnknown);
}

AlignmentMajority ColumnProfiles::majority(const Rows &rows, Column width, Column column)
{
    m_FollowedRows = 0;
    if (slotOf(column) == kNone)
        count(rows, width, column, kBatchColumns, nullptr);
    return majorityOf(column);
}

std::vector<AlignmentMajority> ColumnProfiles::majorities(const Rows &rows, Column width)
{
    std::vector<AlignmentMajority> all;
    all.reserve(width);
    LongWork work("Counting letters", rows.size() * ((width + kWideBatch - 1) / kWideBatch),
                  LongWork::Kind::Reading);
    for (Column column = 0; column < width; ++column) {
        if (slotOf(column) == kNone && !count(rows, width, column, kWideBatch, &work))
            return {};
        all.push_back(majorityOf(column));
    }
    return all;
}

AlignmentMajority ColumnProfiles::majorityOf(Column column) const noexcept
{
    AlignmentMajority result;
    const std::uint32_t *const counts = &m_Counts[std::size_t(slotOf(column)) * m_Stride];
    for (std::size_t i = 0; i < m_Letters.size(); ++i) {
        if (counts[i] == 0 || counts[i] < result.count)
            continue;
        const bool isEqual = counts[i] == result.count;
        const bool isBefore =
            static_cast<signed char>(m_Letters[i]) < static_cast<signed char>(result.letter);
        if (!isEqual || isBefore)
            result.letter = m_Letters[i];
        result.count = counts[i];
        result.isAlone = !isEqual;
    }
    return result;
}

void ColumnProfiles::subtract(const AlignmentRow &row, Column begin, Column end) noexcept
{
    forgetOfMany();
    if (isEmpty())
        return;
    row.forEachResidue(
        begin, std::min<Column>(end, m_SlotOf.size()), [&](Column column, std::uint32_t index) {
            const Slot slot = m_SlotOf[column];
            if (slot == kNone)
                return;
            const auto letter = static_cast<unsigned char>(row.sequence().letter(index));
            --m_Counts[std::size_t(slot) * m_Stride + m_PlaceOf[letter]];
        });
}

void ColumnProfiles::add(const AlignmentRow &row, Column begin, Column end)
{
    if (isEmpty())
        return;
    bool isKnown = true;
    row.forEachResidue(begin, std::min<Column>(end, m_SlotOf.size()),
                       [&](Column column, std::uint32_t index) {
                           const Slot slot = m_SlotOf[column];
                           if (slot == kNone)
                               return;
                           const char letter = row.sequence().letter(index);
                           isKnown = isKnown && admit(letter);
                           if (isKnown)
                               ++m_Counts[std::size_t(slot) * m_Stride +
                                          m_PlaceOf[static_cast<unsigned char>(letter)]];
                       });
    if (!isKnown)
        clear();
}

void ColumnProfiles::forgetOfMany() noexcept
{
    if (!isEmpty() && ++m_FollowedRows > std::max(kFollowedRows, m_CountedRows / kFollowedShare))
        clear();
}

void ColumnProfiles::insertColumns(Column at, Column count)
{
    if (at >= m_SlotOf.size())
        return;
    m_SlotOf.insert(m_SlotOf.begin() + std::ptrdiff_t(at), count, kNone);
    if (m_Used + count > kMostColumns)
        return;
    for (Column column = at; column < at + count; ++column)
        m_SlotOf[column] = takeSlot();
}

void ColumnProfiles::removeColumns(Column begin, Column count)
{
    forget(begin, begin + count);
    if (begin >= m_SlotOf.size())
        return;
    const Column end = std::min<Column>(begin + count, m_SlotOf.size());
    m_SlotOf.erase(m_SlotOf.begin() + std::ptrdiff_t(begin),
                   m_SlotOf.begin() + std::ptrdiff_t(end));
}

void ColumnProfiles::forgetBefore(const std::vector<GapRun> &runs) noexcept
{
    if (runs.size() * m_SlotOf.size() > kMostMovedSlots)
        clear();
}

void ColumnProfiles::openColumns(const std::vector<GapRun> &runs)
{
    forgetBefore(runs);
    for (auto run = runs.rbegin(); run != runs.rend(); ++run)
        insertColumns(run->column, run->count);
}

// Each run stands where it counts once those before it are gone.
void ColumnProfiles::closeColumns(const std::vector<GapRun> &runs)
{
    forgetBefore(runs);
    for (const GapRun &run : runs)
        removeColumns(run.column, run.count);
}

void ColumnProfiles::forget(Column begin, Column end) noexcept
{
    for (Column column = begin; column < std::min<Column>(end, m_SlotOf.size()); ++column) {
        if (m_SlotOf[column] != kNone)
            release(m_SlotOf[column]);
        m_SlotOf[column] = kNone;
    }
}

ColumnProfiles::Counts ColumnProfiles::counts(Column begin, Column count) const
{
    // More than one looks at, and few beside the columns' cells.
    Counts result(std::min(count, 2 * kBatchColumns));
    for (Column i = 0; i < result.size(); ++i) {
        const Slot slot = slotOf(begin + i);
        if (slot == kNone)
            continue;
        const auto first = m_Counts.begin() + std::ptrdiff_t(slot * m_Stride);
        result[i].assign(first, first + std::ptrdiff_t(m_Letters.size()));
    }
    return result;
}

void ColumnProfiles::setCounts(Column begin, const Counts &counts)
{
    for (Column i = 0; i < counts.size(); ++i) {
        if (counts[i].empty() || begin + i >= m_SlotOf.size() || m_Used >= kMostColumns)
            continue;
        Slot &slot = m_SlotOf[begin + i];
        if (slot == kNone)
            slot = takeSlot();
        // A letter keeps its place.
        std::ranges::copy(counts[i], m_Counts.begin() + std::ptrdiff_t(slot * m_Stride));
    }
}

void ColumnProfiles::clear() noexcept
{
    m_SlotOf.clear();
    m_Free.clear();
    m_Counts.clear();
    m_Used = 0;
}

std::size_t ColumnProfiles::bytes() const noexcept
{
    return (m_SlotOf.capacity() + m_Free.capacity()) * sizeof(Slot) +
           m_Counts.capacity() * sizeof(m_Counts[0]) + m_Letters.capacity();
}

ColumnProfiles::Slot ColumnProfiles::takeSlot()
{
    ++m_Used;
    if (m_Free.empty()) {
        const std::size_t slots = m_Counts.size() / m_Stride;
        m_Counts.resize(m_Counts.size() + m_Stride);
        if (m_Free.capacity() <= slots)
            m_Free.reserve(2 * slots + kBatchColumns);
        return Slot(slots);
    }
    const Slot slot = m_Free.back();
    m_Free.pop_back();
    std::fill_n(m_Counts.begin() + std::ptrdiff_t(slot * m_Stride), m_Stride, 0U);
    return slot;
}

// There is room: takeSlot() keeps as many places free as there are slots.
void ColumnProfiles::release(Slot slot) noexcept
{
    m_Free.push_back(slot);
    --m_Used;
}

bool ColumnProfiles::admit(char letter)
{
    std::uint16_t &place = m_PlaceOf[static_cast<unsigned char>(letter)];
    if (place != kUnknown)
        return true;
    if (m_Letters.size() == m_Stride)
        return false;
    place = std::uint16_t(m_Letters.size());
    m_Letters.push_back(letter);
    return true;
}

void ColumnProfiles::widen()
{
    clear();
    m_Stride *= 2;
}

bool ColumnProfiles::count(const Rows &rows, Column width, Column column, Column most,
                           LongWork *work)
{
    constexpr Column kWordColumns = OccupancyRow::kWordColumns;
    if (m_Used + most > kMostColumns)
        clear();
    const Column begin = column - column % kWordColumns;
    const bool isNextKnown = slotOf(begin + kWordColumns) != kNone;
    const Column end = std::min(width, begin + (isNextKnown ? kWordColumns : most));
    m_CountedRows = rows.size();
    m_FollowedRows = 0;
    LetterTally tally(begin, end);
    for (const auto &row : rows) {
        if (work != nullptr && !work->goesOn())
            return false;
        tally.add(*row);
    }
    tally.finish();
    while (!store(tally, begin, end))
        widen();
    return true;
}

bool ColumnProfiles::store(const LetterTally &tally, Column begin, Column end)
{
    std::vector<std::uint16_t> places;
    for (const std::uint8_t letter : tally.letters()) {
        if (!admit(static_cast<char>(letter)))
            return false;
        places.push_back(m_PlaceOf[letter]);
    }
    if (m_SlotOf.size() < end)
        m_SlotOf.resize(end, kNone);
    for (Column column = begin; column < end; ++column) {
        // Those that are known were counted along.
        if (m_SlotOf[column] != kNone)
            continue;
        m_SlotOf[column] = takeSlot();
        std::uint32_t *const counts = &m_Counts[std::size_t(m_SlotOf[column]) * m_Stride];
        for (std::size_t i = 0; i < places.size(); ++i)
            counts[places[i]] = tally.count(i, column);
    }
    return true;
}

} // namespace TAMBO
