// SPDX-License-Identifier: GPL-3.0-or-later
// Where the residues of one alignment row stand: one bit a column, with counts at regular steps so
// that a column's place among the residues is found in a few operations.
#pragma once

#include "Bits.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <new>
#include <span>
#include <utility>
#include <vector>

namespace TAMBO {

// So many gaps before a column, as it counts without any of the runs.
struct GapRun
{
    std::uint64_t column = 0;
    std::uint64_t count = 0;
};

// Columns without a word of their own are gaps, so a row ends nowhere: the alignment's width is not
// kept here, and appending columns to an alignment does not touch its rows.
class OccupancyRow
{
public:
    using Column = std::uint64_t;
    using Word = std::uint64_t;

    static constexpr Column kWordColumns = bits::kPerWord;
    // Columns per count; at most this many columns are looked at to find a residue's place.
    static constexpr Column kBlockColumns = 256;
    static constexpr std::size_t kBlockWords = kBlockColumns / kWordColumns;

    OccupancyRow() noexcept = default;
    // Bit c is column c.
    explicit OccupancyRow(std::span<const Word> words);
    OccupancyRow(const OccupancyRow &other);
    OccupancyRow(OccupancyRow &&other) noexcept
        : m_Head(std::exchange(other.m_Head, {})), m_Store(std::exchange(other.m_Store, {}))
    { }
    ~OccupancyRow()
    {
        if (isFar())
            ::operator delete(m_Store.far);
    }
    OccupancyRow &operator=(OccupancyRow other) noexcept
    {
        std::swap(m_Head, other.m_Head);
        std::swap(m_Store, other.m_Store);
        return *this;
    }
    // Residues in the first columns, no gaps between them.
    [[nodiscard]] static OccupancyRow filled(Column residues);

    [[nodiscard]] bool isResidue(Column column) const noexcept
    {
        return (word(bits::wordOf(column)) >> bits::placeOf(column) & 1) != 0;
    }
    // The number of residues before a column.
    [[nodiscard]] std::uint32_t rank(Column column) const noexcept;
    // The column of a residue; ordinal is below residues().
    [[nodiscard]] Column columnOf(std::uint32_t ordinal) const noexcept;
    [[nodiscard]] std::uint32_t residues() const noexcept { return m_Head.residues; }
    // One past the column of the last residue.
    [[nodiscard]] Column end() const noexcept
    {
        const std::size_t count = m_Head.words;
        return count == 0 ? 0 : (count - 1) * kWordColumns + bits::last(words()[count - 1]) + 1;
    }
    // The first and one past the last column of the run of gaps around a gap. A run behind the last
    // residue ends at limit.
    [[nodiscard]] Column gapRunBegin(Column column) const noexcept;
    [[nodiscard]] Column gapRunEnd(Column column, Column limit) const noexcept;

    // Whole words, for passes over many columns; 0 beyond the last one kept.
    [[nodiscard]] Word word(std::size_t index) const noexcept
    {
        return index < m_Head.words ? words()[index] : 0;
    }
    // The 64 columns from one on.
    [[nodiscard]] Word bitsAt(Column column) const noexcept
    {
        const std::size_t index = bits::wordOf(column);
        return bits::joined(word(index), word(index + 1), bits::placeOf(column));
    }
    // All that are kept: the last one is not 0.
    [[nodiscard]] std::span<const Word> allWords() const noexcept
    {
        return {words(), m_Head.words};
    }
    // The number of residues before column block * kBlockColumns.
    [[nodiscard]] std::uint32_t blockRank(std::size_t block) const noexcept
    {
        return block < blocks() ? rankOf(block) : m_Head.residues;
    }
    // The columns [begin, begin + count) as words that start at bit 0.
    [[nodiscard]] std::vector<Word> columns(Column begin, Column count) const;

    // What stands at column and behind it moves right.
    void insertGaps(Column column, Column count);
    // The same, and the columns that come hold the first bits of the words.
    void insertColumns(Column column, Column count, std::span<const Word> bits);
    // The columns vanish with what stands in them, and what stands behind them moves left.
    void removeColumns(Column begin, Column count);
    struct Taken
    {
        // What stood there, from bit 0 on, and how many residues before.
        Word cells = 0;
        std::uint32_t before = 0;
    };
    // The same of fewer columns than a word has, in one pass, for a row whose words are all here.
    [[nodiscard]] bool isShort() const noexcept { return !isFar(); }
    [[nodiscard]] Taken takeFromShort(Column begin, unsigned count) noexcept
    {
        Word *const cells = m_Store.near.data();
        std::size_t all = m_Head.words;
        const std::size_t first = bits::wordOf(begin);
        if (first >= all)
            return {0, m_Head.residues};
        const Word staying = bits::low(bits::placeOf(begin));
        const Word head = cells[first] & staying;
        Taken taken;
        for (std::size_t i = 0; i < first; ++i)
            taken.before += bits::count(cells[i]);
        taken.before += bits::count(head);
        taken.cells = bitsAt(begin) & bits::low(count);
        m_Head.residues -= count == 1 ? std::uint32_t(taken.cells) : bits::count(taken.cells);
        for (std::size_t i = first; i + 1 < all; ++i)
            cells[i] = cells[i] >> count | cells[i + 1] << (kWordColumns - count);
        cells[all - 1] >>= count;
        cells[first] = (cells[first] & ~staying) | head;
        while (all > 0 && cells[all - 1] == 0)
            --all;
        setWords(all);
        return taken;
    }
    // The gaps [from, from + count) are taken out and put in so that they begin at to.
    void moveGaps(Column from, Column count, Column to);
    // Runs in ascending order open at once, or vanish with what stands in them.
    void openGaps(const std::vector<GapRun> &runs);
    void closeGaps(const std::vector<GapRun> &runs);
    // The runs that open hold bits: one run's behind the other's, from bit 0 on.
    void restoreRuns(const std::vector<GapRun> &runs, std::span<const Word> bits);
    // Overwrites the columns [begin, begin + count) with words that start at bit 0.
    void setColumns(Column begin, Column count, std::span<const Word> bits);

    // On the heap.
    [[nodiscard]] std::size_t bytes() const noexcept;

    friend bool operator==(const OccupancyRow &a, const OccupancyRow &b) noexcept
    {
        return std::equal(a.words(), a.words() + a.m_Head.words, b.words(),
                          b.words() + b.m_Head.words);
    }

private:
    struct Head
    {
        // The last one is not 0 between two operations.
        std::uint32_t words : 26 = 0;
        // Words that there is room for besides.
        std::uint32_t spare : 6 = kBlockWords;
        std::uint32_t residues = 0;
    };
    // The words that a row has here beyond its last one are 0. Those of a row that has more than a
    // block are one allocation, with the counts, one a block, behind the room for them. An edit of
    // columns goes through all rows, of which there are a million when they are short; then there
    // is one place of memory less to wait for in each.
    union Store {
        std::array<Word, kBlockWords> near;
        Word *far;
    };
    static constexpr std::size_t kMostSpare = 63;

    // Of an even number of words the allocator leaves eight bytes unused.
    [[nodiscard]] static std::size_t roomFor(std::size_t words) noexcept
    {
        return words <= kBlockWords ? kBlockWords : words | 1U;
    }
    [[nodiscard]] static std::size_t bytesFor(std::size_t room) noexcept;
    [[nodiscard]] Word *words() noexcept { return isFar() ? m_Store.far : m_Store.near.data(); }
    [[nodiscard]] const Word *words() const noexcept
    {
        return isFar() ? m_Store.far : m_Store.near.data();
    }
    [[nodiscard]] std::size_t room() const noexcept
    {
        return std::size_t(m_Head.words) + m_Head.spare;
    }
    [[nodiscard]] bool isFar() const noexcept { return room() > kBlockWords; }
    // Of a row that is far.
    [[nodiscard]] std::uint32_t *ranks() noexcept
    {
        return reinterpret_cast<std::uint32_t *>(m_Store.far + room());
    }
    [[nodiscard]] const std::uint32_t *ranks() const noexcept
    {
        return reinterpret_cast<const std::uint32_t *>(m_Store.far + room());
    }
    [[nodiscard]] std::size_t blocks() const noexcept
    {
        return (m_Head.words + kBlockWords - 1) / kBlockWords;
    }
    // Of a block that the row has.
    [[nodiscard]] std::uint32_t rankOf(std::size_t block) const noexcept
    {
        return block == 0 ? 0 : ranks()[block];
    }
    void setWords(std::size_t count) noexcept
    {
        const std::size_t all = room();
        m_Head.words = static_cast<std::uint32_t>(count);
        m_Head.spare = static_cast<std::uint32_t>(all - count);
    }
    void reallocate(std::size_t room, std::size_t count);
    void insertNear(Column column, unsigned count, std::size_t words) noexcept;
    void fillNear(Column column, unsigned count, Word bits) noexcept;
    void storeBits(Column column, Word bits, Column count) noexcept;
    void put(std::size_t index, Word bits, Word mask) noexcept
    {
        words()[index] = (words()[index] & ~mask) | (bits & mask);
    }
    void shiftUp(Column begin, Column end, Column by) noexcept;
    void shiftDown(Column begin, Column end, Column by) noexcept;
    void copyFrom(const OccupancyRow &other, Column from, Column count, Column to) noexcept;
    void clear(Column begin, Column count) noexcept;
    void extendTo(Column columns);
    void trim();
    // After changes all over the row.
    void settle();
    void recount(Column begin, Column end) noexcept;

    Head m_Head;
    Store m_Store{};
};

} // namespace TAMBO
