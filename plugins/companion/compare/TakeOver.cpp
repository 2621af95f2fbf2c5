// SPDX-License-Identifier: GPL-3.0-or-later
#include "TakeOver.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace companion {

namespace {

using CellWord = LayoutRows::Word;
using CellWords = std::span<const CellWord>;
using ResidueRuns = std::span<const LayoutRows::Residues>;

constexpr unsigned long kBits = LayoutRows::kWordColumns;

CellWord lowBits(unsigned long count)
{
    return count >= kBits ? ~CellWord(0) : (CellWord(1) << count) - 1;
}

// Up to 64 cells from a column on.
CellWord cellsAt(CellWords cells, unsigned long column, unsigned long count)
{
    const std::size_t index = column / kBits;
    const unsigned long shift = column % kBits;
    const auto word = [&](std::size_t i) { return i < cells.size() ? cells[i] : CellWord(0); };
    const CellWord next = shift == 0 ? 0 : word(index + 1) << (kBits - shift);
    return (word(index) >> shift | next) & lowBits(count);
}

class CellWriter
{
public:
    explicit CellWriter(unsigned long columns) : m_Cells((columns + kBits - 1) / kBits) { }

    [[nodiscard]] unsigned long columns() const noexcept { return m_Columns; }
    void gaps(unsigned long count) noexcept { m_Columns += count; }
    void set(unsigned long column) noexcept
    {
        m_Cells[column / kBits] |= CellWord(1) << column % kBits;
    }
    void copy(CellWords cells, unsigned long begin, unsigned long end)
    {
        for (unsigned long column = begin; column < end; column += kBits) {
            const unsigned long count = std::min(kBits, end - column);
            const CellWord word = cellsAt(cells, column, count);
            const unsigned long shift = m_Columns % kBits;
            if (word != 0) {
                m_Cells[m_Columns / kBits] |= word << shift;
                if (shift != 0 && word >> (kBits - shift) != 0)
                    m_Cells[m_Columns / kBits + 1] |= word >> (kBits - shift);
            }
            m_Columns += count;
        }
    }
    [[nodiscard]] std::vector<CellWord> take() { return std::move(m_Cells); }

private:
    std::vector<CellWord> m_Cells;
    unsigned long m_Columns = 0;
};

unsigned long residuesAmong(CellWords cells, unsigned long begin, unsigned long end)
{
    unsigned long sum = 0;
    for (unsigned long column = begin; column < end; column += kBits)
        sum += unsigned(std::popcount(cellsAt(cells, column, std::min(kBits, end - column))));
    return sum;
}

// One row here and there, from one stretch to the next.
struct RowPair
{
    CellWords cells;
    ResidueRuns runs;
    CellWords otherCells;
    ResidueRuns otherRuns;
    ResidueWalk walk;
    ResidueWalk other;

    // Its residues as in the other, those left out that it does not have; false when the other
    // lacks one.
    bool layOut(const Stretch &stretch, CellWriter &out)
    {
        const bool isPlain = runs.empty() && otherRuns.empty();
        if (isPlain && residuesAmong(cells, stretch.begin, stretch.end) ==
                           residuesAmong(otherCells, stretch.otherBegin, stretch.otherEnd)) {
            out.copy(otherCells, stretch.otherBegin, stretch.otherEnd);
            return true;
        }
        walk.skipTo(stretch.begin, cells, runs);
        other.skipTo(stretch.otherBegin, otherCells, otherRuns);
        const unsigned long first = out.columns();
        for (; !walk.isAtEnd() && walk.column() < stretch.end; walk.next(cells, runs)) {
            const unsigned long residue = walk.residue(runs);
            while (!other.isAtEnd() && other.residue(otherRuns) < residue)
                other.next(otherCells, otherRuns);
            if (other.isAtEnd() || other.residue(otherRuns) != residue ||
                other.column() >= stretch.otherEnd)
                return false;
            out.set(first + other.column() - stretch.otherBegin);
        }
        out.gaps(stretch.otherEnd - stretch.otherBegin);
        return true;
    }
};

} // namespace

// Columns can go when each row has left them.
TakeOver::TakeOver(Source source) : m_Source(std::move(source))
{
    const std::vector<std::uint32_t> &places = *m_Source.places;
    bool isOfAll = true;
    for (std::size_t row = 0; row < places.size(); ++row)
        isOfAll = isOfAll && m_Source.rows[row] && places[row] != ComparedColumns::kNone;
    unsigned long behind = m_Source.stretches.front().begin;
    for (const Stretch &stretch : m_Source.stretches) {
        const unsigned long wanted = stretch.otherEnd - stretch.otherBegin;
        m_Widths.push_back(isOfAll ? wanted : std::max(wanted, stretch.end - stretch.begin));
        m_Count += stretch.begin - behind + m_Widths.back();
        behind = stretch.end;
    }
    m_Cells.reserve(places.size());
}

bool TakeOver::goOn(std::chrono::microseconds most)
{
    const auto end = std::chrono::steady_clock::now() + most;
    const std::size_t rows = m_Source.places->size();
    while (!m_Misfit && m_Cells.size() < rows) {
        if (!layOut(m_Cells.size()))
            m_Misfit = m_Cells.size();
        if (std::chrono::steady_clock::now() >= end)
            break;
    }
    return !m_Misfit && m_Cells.size() < rows;
}

bool TakeOver::layOut(unsigned long row)
{
    const std::uint32_t place = (*m_Source.places)[row];
    const bool isTaken = m_Source.rows[row] && place != ComparedColumns::kNone;
    const std::vector<CellWord> own =
        isTaken ? std::vector<CellWord>() : TAMBO::RowLayouts::of(*m_Source.alignment, row).cells;
    RowPair pair{own, {}, {}, {}, {}, {}};
    if (isTaken) {
        const LayoutRows &here = m_Source.here->rows;
        const LayoutRows &there = m_Source.there->rows;
        pair = {here.cells(place),     here.residues(place),     there.cells(place),
                there.residues(place), ResidueWalk(here, place), ResidueWalk(there, place)};
    }
    CellWriter cells(m_Count);
    unsigned long behind = m_Source.stretches.front().begin;
    for (std::size_t i = 0; i < m_Widths.size(); ++i) {
        const Stretch &stretch = m_Source.stretches[i];
        cells.copy(pair.cells, behind, stretch.begin);
        const unsigned long begin = cells.columns();
        if (!isTaken)
            cells.copy(pair.cells, stretch.begin, stretch.end);
        else if (!pair.layOut(stretch, cells))
            return false;
        cells.gaps(m_Widths[i] - (cells.columns() - begin));
        behind = stretch.end;
    }
    m_Cells.push_back(cells.take());
    CellWriter before(range().second - range().first);
    before.copy(pair.cells, range().first, range().second);
    if (before.take() != m_Cells.back())
        ++m_Changed;
    return true;
}

int TakeOver::percent() const
{
    constexpr std::size_t all = 100;
    return int(m_Cells.size() * all / std::max<std::size_t>(1, m_Source.places->size()));
}

TAMBO::Alignment::Range TakeOver::range() const
{
    return {m_Source.stretches.front().begin, m_Source.stretches.back().end};
}

} // namespace companion
