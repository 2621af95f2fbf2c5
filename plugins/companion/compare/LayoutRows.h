// SPDX-License-Identifier: GPL-3.0-or-later
// The places of the residues of many rows, in two large blocks, for a thread to look at.
#pragma once

#include "RowLayouts.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

namespace companion {

class LayoutRows
{
public:
    using Word = std::uint64_t;
    using Residues = TAMBO::RowLayout::Residues;

    static constexpr unsigned long kWordColumns = 64;

    void add(std::span<const Word> cells, std::span<const Residues> residues);

    [[nodiscard]] std::size_t size() const noexcept { return m_Ends.size(); }
    [[nodiscard]] std::span<const Word> cells(std::size_t row) const noexcept
    {
        const std::size_t begin = row == 0 ? 0 : m_Ends[row - 1];
        return std::span(m_Words).subspan(begin, m_Ends[row] - begin);
    }
    // Empty for a row that has the first residues of its sequence.
    [[nodiscard]] std::span<const Residues> residues(std::size_t row) const
    {
        const auto found = m_Residues.find(row);
        return found == m_Residues.end() ? std::span<const Residues>() : found->second;
    }

private:
    std::vector<Word> m_Words;
    // Behind the words of each row.
    std::vector<std::size_t> m_Ends;
    std::unordered_map<std::size_t, std::vector<Residues>> m_Residues;
};

// From one residue of a row to the next. There are a great many of these at a time.
class ResidueWalk
{
public:
    ResidueWalk() = default;
    ResidueWalk(const LayoutRows &rows, std::size_t row) { begin(rows.cells(row)); }

    [[nodiscard]] bool isAtEnd() const noexcept { return m_Bits == 0; }
    [[nodiscard]] unsigned long column() const noexcept
    {
        return m_Word * LayoutRows::kWordColumns + unsigned(std::countr_zero(m_Bits));
    }
    // Which residue of the sequence it is.
    [[nodiscard]] unsigned long residue(std::span<const LayoutRows::Residues> runs) const noexcept
    {
        return runs.empty() ? m_Ordinal : runs[m_Run].first + (m_Ordinal - m_RunBegin);
    }
    void next(std::span<const LayoutRows::Word> cells,
              std::span<const LayoutRows::Residues> runs) noexcept
    {
        m_Bits &= m_Bits - 1;
        ++m_Ordinal;
        find(cells);
        if (!runs.empty() && m_Ordinal - m_RunBegin == runs[m_Run].count) {
            m_RunBegin = m_Ordinal;
            ++m_Run;
        }
    }
    // To the first residue in the column or behind it, from somewhere before it.
    void skipTo(unsigned long column, std::span<const LayoutRows::Word> cells,
                std::span<const LayoutRows::Residues> runs) noexcept;
    // To the residue that has the place among those of the row.
    void skipToOrdinal(std::uint32_t ordinal, std::span<const LayoutRows::Word> cells,
                       std::span<const LayoutRows::Residues> runs) noexcept;
    [[nodiscard]] std::uint32_t ordinal() const noexcept { return m_Ordinal; }

private:
    void begin(std::span<const LayoutRows::Word> cells) noexcept
    {
        m_Bits = cells.empty() ? 0 : cells[0];
        find(cells);
    }
    void find(std::span<const LayoutRows::Word> cells) noexcept
    {
        while (m_Bits == 0 && m_Word + 1 < cells.size())
            m_Bits = cells[++m_Word];
    }
    void findRun(std::span<const LayoutRows::Residues> runs) noexcept;

    // Those that are still to come of the word.
    LayoutRows::Word m_Bits = 0;
    std::uint32_t m_Word = 0;
    std::uint32_t m_Ordinal = 0;
    std::uint32_t m_Run = 0;
    // The ordinal with which the run begins.
    std::uint32_t m_RunBegin = 0;
};

} // namespace companion
