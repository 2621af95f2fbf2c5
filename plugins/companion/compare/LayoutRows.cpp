// SPDX-License-Identifier: GPL-3.0-or-later
#include "LayoutRows.h"

namespace companion {

void LayoutRows::add(std::span<const Word> cells, std::span<const Residues> residues)
{
    const bool isPlain = residues.empty() || (residues.size() == 1 && residues[0].first == 0);
    if (!isPlain)
        m_Residues.emplace(m_Ends.size(), std::vector<Residues>(residues.begin(), residues.end()));
    m_Words.insert(m_Words.end(), cells.begin(), cells.end());
    m_Ends.push_back(m_Words.size());
}

void ResidueWalk::findRun(std::span<const LayoutRows::Residues> runs) noexcept
{
    while (m_Run < runs.size() && m_Ordinal - m_RunBegin >= runs[m_Run].count)
        m_RunBegin += std::uint32_t(runs[m_Run++].count);
}

void ResidueWalk::skipTo(unsigned long column, std::span<const LayoutRows::Word> cells,
                         std::span<const LayoutRows::Residues> runs) noexcept
{
    const std::size_t word = column / LayoutRows::kWordColumns;
    while (m_Bits != 0 && m_Word < word) {
        m_Ordinal += unsigned(std::popcount(m_Bits));
        m_Bits = 0;
        find(cells);
    }
    if (m_Bits != 0 && m_Word == word) {
        const LayoutRows::Word before =
            m_Bits & ((LayoutRows::Word(1) << column % LayoutRows::kWordColumns) - 1);
        m_Ordinal += unsigned(std::popcount(before));
        m_Bits &= ~before;
        find(cells);
    }
    findRun(runs);
}

void ResidueWalk::skipToOrdinal(std::uint32_t ordinal, std::span<const LayoutRows::Word> cells,
                                std::span<const LayoutRows::Residues> runs) noexcept
{
    while (m_Bits != 0 && m_Ordinal + unsigned(std::popcount(m_Bits)) <= ordinal) {
        m_Ordinal += unsigned(std::popcount(m_Bits));
        m_Bits = 0;
        find(cells);
    }
    for (; m_Bits != 0 && m_Ordinal < ordinal; ++m_Ordinal)
        m_Bits &= m_Bits - 1;
    findRun(runs);
}

} // namespace companion
