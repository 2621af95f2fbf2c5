// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnProfiles.h"

#include <algorithm>
#include <string_view>

namespace TAMBO {

namespace {

constexpr OccupancyRow::Column kBlockColumns = OccupancyRow::kBlockColumns;

} // namespace

ColumnProfiles::ColumnProfiles()
{
    m_PlaceOf.fill(kUnknown);
}

AlignmentMajority ColumnProfiles::majority(const Rows &rows, Column width, Column column)
{
    if (slotOf(column) == kNone)
        count(rows, width, column / kBlockColumns);
    AlignmentMajority result;
    const std::uint32_t *const counts = &m_Counts[std::size_t(slotOf(column)) * m_Stride];
    for (std::size_t i = 0; i < m_Letters.size(); ++i) {
        const bool isBefore =
            static_cast<unsigned char>(m_Letters[i]) < static_cast<unsigned char>(result.letter);
        if (counts[i] > result.count || (counts[i] == result.count && counts[i] > 0 && isBefore))
            result = {m_Letters[i], counts[i]};
    }
    return result;
}

void ColumnProfiles::subtract(const AlignmentRow &row, Column begin, Column end) noexcept
{
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

void ColumnProfiles::forget(Column begin, Column end) noexcept
{
    for (Column column = begin; column < std::min<Column>(end, m_SlotOf.size()); ++column) {
        if (m_SlotOf[column] != kNone)
            release(m_SlotOf[column]);
        m_SlotOf[column] = kNone;
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
        m_Counts.resize(m_Counts.size() + m_Stride);
        m_Free.reserve(m_Counts.size() / m_Stride);
        return Slot(m_Counts.size() / m_Stride - 1);
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

void ColumnProfiles::count(const Rows &rows, Column width, std::size_t block)
{
    const Column begin = block * kBlockColumns;
    const Column end = std::min(width, begin + kBlockColumns);
    if (m_Used + kBlockColumns > kMostColumns)
        clear();
    while (!tryCount(rows, begin, end))
        widen();
}

bool ColumnProfiles::tryCount(const Rows &rows, Column begin, Column end)
{
    if (m_SlotOf.size() < end)
        m_SlotOf.resize(end, kNone);
    std::array<bool, kBlockColumns> isNew{};
    for (Column column = begin; column < end; ++column) {
        if (m_SlotOf[column] != kNone)
            continue;
        isNew[column - begin] = true;
        m_SlotOf[column] = takeSlot();
    }
    // Columns that are counted already go to a place that nobody reads.
    std::array<std::uint32_t, 256> unread{};
    std::array<std::uint32_t *, kBlockColumns> countsOf;
    countsOf.fill(unread.data());
    for (Column column = begin; column < end; ++column) {
        if (isNew[column - begin])
            countsOf[column - begin] = &m_Counts[std::size_t(m_SlotOf[column]) * m_Stride];
    }
    bool isKnown = true;
    for (const auto &row : rows) {
        const std::string_view letters = row->sequence().letters();
        row->forEachResidue(begin, end, [&](Column column, std::uint32_t index) {
            const char letter = letters[index];
            std::uint16_t place = m_PlaceOf[static_cast<unsigned char>(letter)];
            if (place == kUnknown) {
                isKnown = isKnown && admit(letter);
                place = isKnown ? m_PlaceOf[static_cast<unsigned char>(letter)] : 0;
            }
            ++countsOf[column - begin][place];
        });
        if (!isKnown)
            return false;
    }
    return true;
}

} // namespace TAMBO
