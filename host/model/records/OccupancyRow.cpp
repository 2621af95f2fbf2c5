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

// ---- The allocation

std::size_t OccupancyRow::bytesFor(std::size_t room) noexcept
{
    return room * sizeof(Word) + (room + kBlockWords - 1) / kBlockWords * sizeof(std::uint32_t);
}

OccupancyRow::OccupancyRow(std::span<const Word> words)
{
    while (!words.empty() && words.back() == 0)
        words = words.first(words.size() - 1);
    if (words.size() > kBlockWords)
        reallocate(roomFor(words.size()), words.size());
    else
        setWords(words.size());
    std::copy_n(words.data(), words.size(), this->words());
    recount(0, words.size() * kWordColumns);
}

OccupancyRow::OccupancyRow(const OccupancyRow &other)
{
    const std::size_t count = other.m_Head.words;
    if (count > kBlockWords)
        reallocate(roomFor(count), count);
    else
        setWords(count);
    std::copy_n(other.words(), count, words());
    if (isFar())
        std::copy_n(other.ranks(), blocks(), ranks());
    m_Head.residues = other.m_Head.residues;
}

// The row has that many words afterwards; the ones that are new hold gaps.
void OccupancyRow::reallocate(std::size_t room, std::size_t count)
{
    Store made{};
    if (room > kBlockWords)
        made.far = static_cast<Word *>(::operator new(bytesFor(room)));
    const OccupancyRow old(std::move(*this));
    m_Store = made;
    m_Head.words = static_cast<std::uint32_t>(count);
    m_Head.spare = static_cast<std::uint32_t>(room - count);
    m_Head.residues = old.m_Head.residues;
    const std::size_t kept = std::min<std::size_t>(old.m_Head.words, count);
    std::fill(std::copy_n(old.words(), kept, words()), words() + count, 0);
    if (!isFar())
        return;
    // A row that had none has at most the first block, before which nothing stands.
    ranks()[0] = 0;
    const std::size_t known = old.isFar() ? std::min(old.blocks(), blocks()) : 1;
    if (old.isFar())
        std::copy_n(old.ranks(), known, ranks());
    std::fill(ranks() + known, ranks() + blocks(), m_Head.residues);
}

// ---- Reading

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
    if (last >= m_Head.words)
        return m_Head.residues;
    const std::size_t block = column / kBlockColumns;
    const Word *const cells = words();
    std::uint32_t result = rankOf(block);
    for (std::size_t i = block * kBlockWords; i < last; ++i)
        result += bits::count(cells[i]);
    return result + bits::count(cells[last] & bits::low(column % kWordColumns));
}

Column OccupancyRow::columnOf(std::uint32_t ordinal) const noexcept
{
    std::size_t block = 0;
    if (isFar()) {
        const std::uint32_t *const counts = ranks();
        block = std::size_t(std::upper_bound(counts, counts + blocks(), ordinal) - counts) - 1;
    }
    std::size_t index = block * kBlockWords;
    std::uint32_t left = ordinal - rankOf(block);
    for (std::uint32_t here = bits::count(words()[index]); left >= here;
         here = bits::count(words()[index])) {
        left -= here;
        ++index;
    }
    Word rest = words()[index];
    for (; left > 0; --left)
        rest &= rest - 1;
    return index * kWordColumns + bits::first(rest);
}

Column OccupancyRow::gapRunBegin(Column column) const noexcept
{
    if (column >= end())
        return end();
    std::size_t index = column / kWordColumns;
    Word before = words()[index] & bits::low(column % kWordColumns);
    while (before == 0 && index > 0)
        before = words()[--index];
    return before == 0 ? 0 : index * kWordColumns + bits::last(before) + 1;
}

Column OccupancyRow::gapRunEnd(Column column, Column limit) const noexcept
{
    if (column >= end())
        return limit;
    std::size_t index = column / kWordColumns;
    Word behind = words()[index] & ~bits::low(column % kWordColumns);
    while (behind == 0)
        behind = words()[++index];
    return index * kWordColumns + bits::first(behind);
}

std::vector<Word> OccupancyRow::columns(Column begin, Column count) const
{
    std::vector<Word> result;
    const std::size_t size = bits::wordsFor(count);
    result.reserve(size);
    if (bits::placeOf(begin) == 0) {
        // As when a whole row is asked for.
        const std::span<const Word> all = allWords();
        const std::span<const Word> behind = all.subspan(std::min(bits::wordOf(begin), all.size()));
        const std::span<const Word> wanted = behind.first(std::min(size, behind.size()));
        result.assign(wanted.begin(), wanted.end());
        result.resize(size);
    } else {
        for (std::size_t i = 0; i < size; ++i)
            result.push_back(bitsAt(begin + i * kWordColumns));
    }
    if (count % kWordColumns != 0)
        result.back() &= bits::low(count % kWordColumns);
    return result;
}

void OccupancyRow::insertGaps(Column column, Column count)
{
    const Column oldEnd = end();
    if (count == 0 || column >= oldEnd)
        return;
    if (!isFar() && count < kWordColumns && oldEnd + count <= kBlockColumns) {
        insertNear(column, unsigned(count), bits::wordsFor(oldEnd + count));
        return;
    }
    extendTo(oldEnd + count);
    if (count <= kWordColumns && isFar()) {
        // A count loses the residues that cross its column; those are known without counting anew.
        const Word *const cells = words();
        std::uint32_t *const counts = ranks();
        const std::size_t end = blocks();
        for (std::size_t block = column / kBlockColumns + 1; block < end; ++block) {
            const Column start = block * kBlockColumns;
            const Column crossing = std::min(count, start - column);
            const Word crossed = cells[block * kBlockWords - 1] >> (kWordColumns - crossing);
            // Mostly a single column.
            counts[block] -= count == 1 ? std::uint32_t(crossed) : bits::count(crossed);
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
    if (isShort() && count > 0 && count < kWordColumns) {
        static_cast<void>(takeFromShort(begin, unsigned(count)));
        return;
    }
    const Column oldEnd = end();
    if (count == 0 || begin >= oldEnd)
        return;
    count = std::min(count, oldEnd - begin);
    if (count <= kWordColumns && isFar()) {
        const std::uint32_t removed = bits::count(bitsAt(begin) & bits::low(count));
        m_Head.residues -= removed;
        const Word *const cells = words();
        std::uint32_t *const counts = ranks();
        const std::size_t end = blocks();
        for (std::size_t block = begin / kBlockColumns + 1; block < end; ++block) {
            const Word crossed = cells[block * kBlockWords] & bits::low(count);
            // Mostly a single column.
            counts[block] += (count == 1 ? std::uint32_t(crossed) : bits::count(crossed)) - removed;
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

// Of a row that has its words here, before and afterwards.
void OccupancyRow::insertNear(Column column, unsigned count, std::size_t words) noexcept
{
    Word *const cells = m_Store.near.data();
    setWords(words);
    const std::size_t first = bits::wordOf(column);
    const Word staying = cells[first] & bits::low(bits::placeOf(column));
    cells[first] ^= staying;
    for (std::size_t i = words - 1; i > first; --i)
        cells[i] = cells[i] << count | cells[i - 1] >> (kWordColumns - count);
    cells[first] = cells[first] << count | staying;
}

// Gaps of such a row, which is not trimmed, give way to the lowest bits.
void OccupancyRow::fillNear(Column column, unsigned count, Word bits) noexcept
{
    bits &= bits::low(count);
    if (bits == 0)
        return;
    m_Head.residues += count == 1 ? 1 : bits::count(bits);
    setWords(std::max<std::size_t>(m_Head.words, bits::wordOf(column + bits::last(bits)) + 1));
    Word *const cells = m_Store.near.data() + bits::wordOf(column);
    const unsigned place = bits::placeOf(column);
    cells[0] |= bits << place;
    if (place + count > kWordColumns && bits >> (kWordColumns - place) != 0)
        cells[1] |= bits >> (kWordColumns - place);
}

void OccupancyRow::insertColumns(Column column, Column count, std::span<const Word> bits)
{
    insertGaps(column, count);
    if (!isFar() && count < kWordColumns && column + count <= kBlockColumns)
        fillNear(column, unsigned(count), bits.empty() ? 0 : bits.front());
    else
        setColumns(column, count, bits);
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

void OccupancyRow::setColumns(Column begin, Column count, std::span<const Word> bits)
{
    if (count == 0)
        return;
    if (!isFar() && begin + count <= kBlockColumns && count <= kWordColumns) {
        setWords(std::max<std::size_t>(m_Head.words, bits::wordsFor(begin + count)));
        m_Head.residues -= bits::count(bitsAt(begin) & bits::low(count));
        m_Head.residues += bits::count(bits.front() & bits::low(count));
        storeBits(begin, bits.front(), count);
        trim();
        return;
    }
    extendTo(begin + count);
    const std::uint32_t before = rank(begin + count) - rank(begin);
    for (Column done = 0; done < count; done += kWordColumns)
        storeBits(begin + done, bits[done / kWordColumns], std::min(kWordColumns, count - done));
    std::uint32_t after = 0;
    for (Column done = 0; done < count; done += kWordColumns)
        after += bits::count(bits[done / kWordColumns] & bits::low(count - done));
    m_Head.residues += after - before;
    for (std::size_t block = (begin + count - 1) / kBlockColumns + 1; block < blocks(); ++block)
        ranks()[block] += after - before;
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
    for (auto run = runs.begin(); run != runs.end() && run->column < oldEnd; ++run)
        added += run->count;
    result.extendTo(oldEnd + added);
    Column done = 0;
    added = 0;
    for (const GapRun &run : runs) {
        if (run.column >= oldEnd)
            break;
        result.copyFrom(*this, done, run.column - done, done + added);
        done = run.column;
        added += run.count;
    }
    result.copyFrom(*this, done, oldEnd - done, done + added);
    result.settle();
    *this = std::move(result);
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
    result.settle();
    *this = std::move(result);
}

void OccupancyRow::restoreRuns(const std::vector<GapRun> &runs, std::span<const Word> bits)
{
    const Column oldEnd = end();
    const auto bitsFrom = [&](Column begin, Column count) {
        const std::size_t index = bits::wordOf(begin);
        const Word next = index + 1 < bits.size() ? bits[index + 1] : 0;
        return bits::joined(bits[index], next, bits::placeOf(begin)) & bits::low(count);
    };
    // Of the runs behind the last residue those without one need no words.
    Column newEnd = oldEnd;
    Column added = 0;
    for (const GapRun &run : runs) {
        for (Column put = 0; put < run.count; put += kWordColumns) {
            const Column step = std::min(kWordColumns, run.count - put);
            if (run.column < oldEnd)
                newEnd += step;
            else if (bitsFrom(added + put, step) != 0)
                newEnd = run.column + added + put + step;
        }
        added += run.count;
    }
    OccupancyRow result;
    result.extendTo(newEnd);
    Column done = 0;
    added = 0;
    for (const GapRun &run : runs) {
        if (done < oldEnd)
            result.copyFrom(*this, done, std::min(run.column, oldEnd) - done, done + added);
        done = run.column;
        for (Column put = 0; put < run.count && done + added < newEnd;) {
            const Column step = std::min(kWordColumns, run.count - put);
            result.storeBits(done + added, bitsFrom(added, step), step);
            put += step;
            added += step;
        }
        if (done + added >= newEnd)
            break;
    }
    if (done < oldEnd)
        result.copyFrom(*this, done, oldEnd - done, done + added);
    result.settle();
    *this = std::move(result);
}

std::size_t OccupancyRow::bytes() const noexcept
{
    return isFar() ? bytesFor(room()) : 0;
}

// The words are there; count is at most one word's.
void OccupancyRow::storeBits(Column column, Word bits, Column count) noexcept
{
    Word *const cells = words();
    const std::size_t index = column / kWordColumns;
    const Column shift = column % kWordColumns;
    const Word mask = bits::low(count);
    bits &= mask;
    cells[index] = (cells[index] & ~(mask << shift)) | bits << shift;
    if (shift + count > kWordColumns) {
        const Column done = kWordColumns - shift;
        cells[index + 1] = (cells[index + 1] & ~(mask >> done)) | bits >> done;
    }
}

// The bits [begin, end) move by so many columns. Whole words are put together of two each, in the
// order in which no word is overwritten before it was read.
void OccupancyRow::shiftUp(Column begin, Column end, Column by) noexcept
{
    Word *const cells = words();
    const std::size_t whole = by / kWordColumns;
    const Column bits = by % kWordColumns;
    const std::size_t first = (begin + by) / kWordColumns;
    const std::size_t last = (end + by - 1) / kWordColumns;
    const auto moved = [&](std::size_t index) {
        const Word high = cells[index - whole] << bits;
        const bool hasLower = bits != 0 && index > whole;
        return hasLower ? high | cells[index - whole - 1] >> (kWordColumns - bits) : high;
    };
    const Word headMask = ~bits::low((begin + by) % kWordColumns);
    const Word tailMask = bits::low(end + by - last * kWordColumns);
    if (first == last) {
        put(first, moved(first), headMask & tailMask);
        return;
    }
    put(last, moved(last), tailMask);
    if (bits != 0) {
        const Word *const source = cells - whole;
        for (std::size_t i = last - 1; i > first; --i)
            cells[i] = source[i] << bits | source[i - 1] >> (kWordColumns - bits);
    } else {
        std::copy_backward(cells + first + 1 - whole, cells + last - whole, cells + last);
    }
    put(first, moved(first), headMask);
}

void OccupancyRow::shiftDown(Column begin, Column end, Column by) noexcept
{
    if (begin >= end)
        return;
    Word *const cells = words();
    const std::size_t whole = by / kWordColumns;
    const Column bits = by % kWordColumns;
    const std::size_t first = (begin - by) / kWordColumns;
    const std::size_t last = (end - by - 1) / kWordColumns;
    const auto moved = [&](std::size_t index) {
        const Word low = word(index + whole) >> bits;
        return bits != 0 ? low | word(index + whole + 1) << (kWordColumns - bits) : low;
    };
    const Word headMask = ~bits::low((begin - by) % kWordColumns);
    const Word tailMask = bits::low(end - by - last * kWordColumns);
    if (first == last) {
        put(first, moved(first), headMask & tailMask);
        return;
    }
    put(first, moved(first), headMask);
    if (bits != 0) {
        const Word *const source = cells + whole;
        for (std::size_t i = first + 1; i < last; ++i)
            cells[i] = source[i] >> bits | source[i + 1] << (kWordColumns - bits);
    } else {
        std::copy(cells + first + 1 + whole, cells + last + whole, cells + first + 1);
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
    const Column limit = std::min(begin + count, Column(m_Head.words) * kWordColumns);
    for (Column column = begin; column < limit;) {
        const Column step = std::min(kWordColumns - column % kWordColumns, limit - column);
        storeBits(column, 0, step);
        column += step;
    }
}

void OccupancyRow::extendTo(Column columns)
{
    const std::size_t wanted = bits::wordsFor(columns);
    const std::size_t had = m_Head.words;
    if (wanted <= had)
        return;
    // Little room to spare: a column typed into ten thousand rows must not double their memory.
    if (wanted > room())
        return reallocate(roomFor(wanted + std::min(wanted / 16, kMostSpare - 1)), wanted);
    const std::size_t blocksBefore = blocks();
    setWords(wanted);
    std::fill(words() + had, words() + wanted, 0);
    if (isFar())
        std::fill(ranks() + blocksBefore, ranks() + blocks(), m_Head.residues);
}

void OccupancyRow::trim()
{
    std::size_t count = m_Head.words;
    while (count > 0 && words()[count - 1] == 0)
        --count;
    if (count == m_Head.words)
        return;
    if (count == 0)
        *this = OccupancyRow();
    else if (room() - count <= kMostSpare)
        setWords(count);
    else
        reallocate(roomFor(count), count);
}

void OccupancyRow::settle()
{
    trim();
    const std::size_t count = m_Head.words;
    if (count > 0 && room() != roomFor(count))
        reallocate(roomFor(count), count);
    recount(0, count * kWordColumns);
}

// Brings the counts of the blocks that begin in (begin, end) up to date, and the total when the
// row's last word lies there.
void OccupancyRow::recount(Column begin, Column end) noexcept
{
    const std::size_t all = m_Head.words;
    if (all == 0)
        return;
    const std::size_t first = std::min<std::size_t>(begin / kBlockColumns, blocks() - 1);
    const bool keepsRanks = isFar();
    if (keepsRanks)
        ranks()[0] = 0;
    const std::size_t lastWord = std::min<std::size_t>(bits::wordsFor(end), all);
    std::uint32_t count = rankOf(first);
    for (std::size_t i = first * kBlockWords; i < lastWord; ++i) {
        if (keepsRanks && i % kBlockWords == 0)
            ranks()[i / kBlockWords] = count;
        count += bits::count(words()[i]);
    }
    if (lastWord == all)
        m_Head.residues = count;
}

} // namespace TAMBO
