// SPDX-License-Identifier: GPL-3.0-or-later
#include "OccupancyRow.h"

#include "Bits.h"

#include <algorithm>
#include <utility>

namespace TAMBO {

namespace {

using Word = OccupancyRow::Word;
using Column = OccupancyRow::Column;

} // namespace

OccupancyRow::OccupancyRow(std::vector<Word> words) : m_Words(std::move(words))
{
    trim();
    m_Words.shrink_to_fit();
    recount(0, m_Words.size() * kWordColumns);
}

OccupancyRow OccupancyRow::filled(Column residues)
{
    std::vector<Word> words(bits::wordsFor(residues), ~Word(0));
    if (residues % kWordColumns != 0)
        words.back() = bits::low(residues % kWordColumns);
    return OccupancyRow(std::move(words));
}

std::uint32_t OccupancyRow::rank(Column column) const noexcept
{
    const std::size_t last = column / kWordColumns;
    if (last >= m_Words.size())
        return m_Residues;
    const std::size_t block = column / kBlockColumns;
    std::uint32_t result = m_Ranks[block];
    for (std::size_t i = block * kBlockWords; i < last; ++i)
        result += bits::count(m_Words[i]);
    return result + bits::count(m_Words[last] & bits::low(column % kWordColumns));
}

Column OccupancyRow::columnOf(std::uint32_t ordinal) const noexcept
{
    const auto block = std::ranges::upper_bound(m_Ranks, ordinal) - m_Ranks.begin() - 1;
    std::size_t index = std::size_t(block) * kBlockWords;
    std::uint32_t left = ordinal - m_Ranks[std::size_t(block)];
    for (std::uint32_t here = bits::count(m_Words[index]); left >= here;
         here = bits::count(m_Words[index])) {
        left -= here;
        ++index;
    }
    Word rest = m_Words[index];
    for (; left > 0; --left)
        rest &= rest - 1;
    return index * kWordColumns + bits::first(rest);
}

Column OccupancyRow::end() const noexcept
{
    if (m_Words.empty())
        return 0;
    return (m_Words.size() - 1) * kWordColumns + bits::last(m_Words.back()) + 1;
}

Column OccupancyRow::gapRunBegin(Column column) const noexcept
{
    if (column >= end())
        return end();
    std::size_t index = column / kWordColumns;
    Word before = m_Words[index] & bits::low(column % kWordColumns);
    while (before == 0 && index > 0)
        before = m_Words[--index];
    return before == 0 ? 0 : index * kWordColumns + bits::last(before) + 1;
}

Column OccupancyRow::gapRunEnd(Column column, Column limit) const noexcept
{
    if (column >= end())
        return limit;
    std::size_t index = column / kWordColumns;
    Word behind = m_Words[index] & ~bits::low(column % kWordColumns);
    while (behind == 0)
        behind = m_Words[++index];
    return index * kWordColumns + bits::first(behind);
}

std::vector<Word> OccupancyRow::columns(Column begin, Column count) const
{
    std::vector<Word> result(bits::wordsFor(count));
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = bitsAt(begin + i * kWordColumns);
    if (count % kWordColumns != 0)
        result.back() &= bits::low(count % kWordColumns);
    return result;
}

void OccupancyRow::insertGaps(Column column, Column count)
{
    const Column oldEnd = end();
    if (count == 0 || column >= oldEnd)
        return;
    extendTo(oldEnd + count);
    if (count <= kWordColumns) {
        // A count loses the residues that cross its column; those are known without counting anew.
        for (std::size_t block = column / kBlockColumns + 1; block < m_Ranks.size(); ++block) {
            const Column start = block * kBlockColumns;
            const Column crossing = std::min(count, start - column);
            m_Ranks[block] -=
                bits::count(m_Words[block * kBlockWords - 1] >> (kWordColumns - crossing));
        }
        shiftUp(column, oldEnd, count);
        clear(column, count);
    } else {
        shiftUp(column, oldEnd, count);
        clear(column, count);
        recount(column, oldEnd + count);
    }
}

void OccupancyRow::removeColumns(Column begin, Column count)
{
    const Column oldEnd = end();
    if (count == 0 || begin >= oldEnd)
        return;
    count = std::min(count, oldEnd - begin);
    if (count <= kWordColumns) {
        const std::uint32_t removed = bits::count(bitsAt(begin) & bits::low(count));
        m_Residues -= removed;
        for (std::size_t block = begin / kBlockColumns + 1; block < m_Ranks.size(); ++block) {
            const std::uint32_t crossing =
                bits::count(m_Words[block * kBlockWords] & bits::low(count));
            m_Ranks[block] += crossing - removed;
        }
        shiftDown(begin + count, oldEnd, count);
        clear(oldEnd - count, count);
        trim();
    } else {
        shiftDown(begin + count, oldEnd, count);
        clear(oldEnd - count, count);
        trim();
        recount(begin, oldEnd);
    }
}

void OccupancyRow::moveGaps(Column from, Column count, Column to)
{
    const Column oldEnd = end();
    if (to > from) {
        const Column passedEnd = std::min(to + count, oldEnd);
        if (passedEnd <= from + count)
            return;
        shiftDown(from + count, passedEnd, count);
        clear(passedEnd - count, count);
        recount(from, passedEnd);
        trim();
    } else if (to < from) {
        const Column passedEnd = std::min(from, oldEnd);
        if (passedEnd <= to)
            return;
        extendTo(passedEnd + count);
        shiftUp(to, passedEnd, count);
        clear(to, count);
        recount(to, passedEnd + count);
    }
}

void OccupancyRow::setColumns(Column begin, Column count, const std::vector<Word> &bits)
{
    if (count == 0)
        return;
    extendTo(begin + count);
    const std::uint32_t before = rank(begin + count) - rank(begin);
    for (Column done = 0; done < count; done += kWordColumns)
        storeBits(begin + done, bits[done / kWordColumns], std::min(kWordColumns, count - done));
    std::uint32_t after = 0;
    for (Column done = 0; done < count; done += kWordColumns)
        after += bits::count(bits[done / kWordColumns] & bits::low(count - done));
    m_Residues += after - before;
    for (std::size_t block = (begin + count - 1) / kBlockColumns + 1; block < m_Ranks.size();
         ++block)
        m_Ranks[block] += after - before;
    recount(begin, begin + count);
    trim();
}

void OccupancyRow::openGaps(const std::vector<GapRun> &runs)
{
    if (runs.size() == 1) {
        insertGaps(runs.front().column, runs.front().count);
        return;
    }
    const Column oldEnd = end();
    OccupancyRow result;
    Column added = 0;
    for (const GapRun &run : runs)
        added += run.column < oldEnd ? run.count : 0;
    result.extendTo(oldEnd + added);
    Column done = 0;
    added = 0;
    for (const GapRun &run : runs) {
        const Column begin = std::min(run.column, oldEnd);
        result.copyFrom(*this, done, begin - done, done + added);
        done = begin;
        added += run.count;
    }
    result.copyFrom(*this, done, oldEnd - done, done + added);
    *this = OccupancyRow(std::move(result.m_Words));
}

void OccupancyRow::closeGaps(const std::vector<GapRun> &runs)
{
    if (runs.size() == 1) {
        removeColumns(runs.front().column, runs.front().count);
        return;
    }
    const Column oldEnd = end();
    OccupancyRow result;
    result.extendTo(oldEnd);
    Column done = 0;
    Column opened = 0;
    for (const GapRun &run : runs) {
        if (run.column + opened >= oldEnd)
            break;
        result.copyFrom(*this, done + opened, run.column - done, done);
        done = run.column;
        opened += run.count;
    }
    if (done + opened < oldEnd)
        result.copyFrom(*this, done + opened, oldEnd - done - opened, done);
    *this = OccupancyRow(std::move(result.m_Words));
}

std::size_t OccupancyRow::bytes() const noexcept
{
    return m_Words.capacity() * sizeof(Word) + m_Ranks.capacity() * sizeof(std::uint32_t);
}

Word OccupancyRow::bitsAt(Column column) const noexcept
{
    const std::size_t index = bits::wordOf(column);
    return bits::joined(word(index), word(index + 1), bits::placeOf(column));
}

// The words are there; count is at most one word's.
void OccupancyRow::storeBits(Column column, Word bits, Column count) noexcept
{
    const std::size_t index = column / kWordColumns;
    const Column shift = column % kWordColumns;
    const Word mask = bits::low(count);
    bits &= mask;
    m_Words[index] = (m_Words[index] & ~(mask << shift)) | bits << shift;
    if (shift + count > kWordColumns) {
        const Column done = kWordColumns - shift;
        m_Words[index + 1] = (m_Words[index + 1] & ~(mask >> done)) | bits >> done;
    }
}

// The bits [begin, end) move by so many columns. Whole words are put together of two each, in the
// order in which no word is overwritten before it was read.
void OccupancyRow::shiftUp(Column begin, Column end, Column by) noexcept
{
    const std::size_t words = by / kWordColumns;
    const Column bits = by % kWordColumns;
    const std::size_t first = (begin + by) / kWordColumns;
    const std::size_t last = (end + by - 1) / kWordColumns;
    const auto moved = [&](std::size_t index) {
        const Word high = m_Words[index - words] << bits;
        const bool hasLower = bits != 0 && index > words;
        return hasLower ? high | m_Words[index - words - 1] >> (kWordColumns - bits) : high;
    };
    const Word headMask = ~bits::low((begin + by) % kWordColumns);
    const Word tailMask = bits::low(end + by - last * kWordColumns);
    if (first == last) {
        put(first, moved(first), headMask & tailMask);
        return;
    }
    put(last, moved(last), tailMask);
    if (bits != 0) {
        Word *const target = m_Words.data();
        const Word *const source = target - words;
        for (std::size_t i = last - 1; i > first; --i)
            target[i] = source[i] << bits | source[i - 1] >> (kWordColumns - bits);
    } else {
        std::copy_backward(m_Words.begin() + std::ptrdiff_t(first + 1 - words),
                           m_Words.begin() + std::ptrdiff_t(last - words),
                           m_Words.begin() + std::ptrdiff_t(last));
    }
    put(first, moved(first), headMask);
}

void OccupancyRow::shiftDown(Column begin, Column end, Column by) noexcept
{
    if (begin >= end)
        return;
    const std::size_t words = by / kWordColumns;
    const Column bits = by % kWordColumns;
    const std::size_t first = (begin - by) / kWordColumns;
    const std::size_t last = (end - by - 1) / kWordColumns;
    const auto moved = [&](std::size_t index) {
        const Word low = word(index + words) >> bits;
        return bits != 0 ? low | word(index + words + 1) << (kWordColumns - bits) : low;
    };
    const Word headMask = ~bits::low((begin - by) % kWordColumns);
    const Word tailMask = bits::low(end - by - last * kWordColumns);
    if (first == last) {
        put(first, moved(first), headMask & tailMask);
        return;
    }
    put(first, moved(first), headMask);
    if (bits != 0) {
        Word *const target = m_Words.data();
        const Word *const source = target + words;
        for (std::size_t i = first + 1; i < last; ++i)
            target[i] = source[i] >> bits | source[i + 1] << (kWordColumns - bits);
    } else {
        std::copy(m_Words.begin() + std::ptrdiff_t(first + 1 + words),
                  m_Words.begin() + std::ptrdiff_t(last + words),
                  m_Words.begin() + std::ptrdiff_t(first + 1));
    }
    put(last, moved(last), tailMask);
}

void OccupancyRow::copyFrom(const OccupancyRow &other, Column from, Column count,
                            Column to) noexcept
{
    for (Column done = 0; done < count;) {
        const Column target = to + done;
        const Column step = std::min(kWordColumns - target % kWordColumns, count - done);
        storeBits(target, other.bitsAt(from + done), step);
        done += step;
    }
}

void OccupancyRow::clear(Column begin, Column count) noexcept
{
    const Column limit = std::min(begin + count, Column(m_Words.size()) * kWordColumns);
    for (Column column = begin; column < limit;) {
        const Column step = std::min(kWordColumns - column % kWordColumns, limit - column);
        storeBits(column, 0, step);
        column += step;
    }
}

void OccupancyRow::extendTo(Column columns)
{
    const std::size_t words = bits::wordsFor(columns);
    if (words <= m_Words.size())
        return;
    // Little room to spare: a column typed into ten thousand rows must not double their memory.
    if (words > m_Words.capacity())
        m_Words.reserve(words + words / 16 + 1);
    m_Words.resize(words);
    const std::size_t blocks = (words + kBlockWords - 1) / kBlockWords;
    if (blocks > m_Ranks.capacity())
        m_Ranks.reserve(blocks + 1);
    m_Ranks.resize(blocks, m_Residues);
}

void OccupancyRow::trim()
{
    while (!m_Words.empty() && m_Words.back() == 0)
        m_Words.pop_back();
    m_Ranks.resize((m_Words.size() + kBlockWords - 1) / kBlockWords);
}

// Brings the counts of the blocks that begin in (begin, end) up to date, and the total when the
// row's last word lies there.
void OccupancyRow::recount(Column begin, Column end)
{
    if (m_Ranks.empty()) {
        m_Residues = 0;
        return;
    }
    const std::size_t first = std::min<std::size_t>(begin / kBlockColumns, m_Ranks.size() - 1);
    if (first == 0)
        m_Ranks[0] = 0;
    const std::size_t lastWord = std::min<std::size_t>(bits::wordsFor(end), m_Words.size());
    std::uint32_t count = m_Ranks[first];
    for (std::size_t i = first * kBlockWords; i < lastWord; ++i) {
        if (i % kBlockWords == 0)
            m_Ranks[i / kBlockWords] = count;
        count += bits::count(m_Words[i]);
    }
    if (lastWord == m_Words.size())
        m_Residues = count;
}

} // namespace TAMBO
