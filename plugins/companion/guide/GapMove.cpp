// SPDX-License-Identifier: GPL-3.0-or-later
#include "GapMove.h"

namespace companion {

namespace {

// One row, and where its residues and gaps stand.
class RowPlaces
{
public:
    RowPlaces(const TAMBO::Alignment &alignment, unsigned long row)
        : m_Alignment(alignment), m_Row(row)
    { }

    [[nodiscard]] unsigned long width() const { return m_Alignment.width(); }
    [[nodiscard]] bool isGap(unsigned long col) const
    {
        return m_Alignment.letterAt(m_Row, col) == '\0';
    }
    // Of the gaps around the column.
    [[nodiscard]] unsigned long runBegin(unsigned long col) const
    {
        const unsigned long before = m_Alignment.residueCount(m_Row, col);
        return before == 0 ? 0 : m_Alignment.columnOfResidue(m_Row, before - 1) + 1;
    }
    [[nodiscard]] unsigned long runEnd(unsigned long col) const
    {
        return m_Alignment.columnOfResidue(m_Row, m_Alignment.residueCount(m_Row, col));
    }
    // One past the last residue.
    [[nodiscard]] unsigned long end() const { return runBegin(width()); }
    // Gaps that go to other gaps change nothing.
    [[nodiscard]] GapMoves moved(unsigned long from, unsigned long count, unsigned long to) const
    {
        const GapMove move{m_Row, from, count, to};
        const bool hasResidues = m_Alignment.residueCount(m_Row, move.begin()) !=
                                 m_Alignment.residueCount(m_Row, move.end());
        return hasResidues ? GapMoves{move} : GapMoves();
    }
    // Gaps come before a column, out of those at the end of the row as far as there are.
    [[nodiscard]] GapMoves inserted(unsigned long col, unsigned long count) const
    {
        if (col >= end())
            return {};
        const unsigned long spare = width() - end();
        const unsigned long growth = count > spare ? count - spare : 0;
        return moved(width() + growth - count, count, col);
    }
    // The residue there and what follows it.
    [[nodiscard]] GapMoves slid(unsigned long from, unsigned long to) const
    {
        if (to > from)
            return inserted(from, to - from);
        if (isGap(from - 1)) {
            const unsigned long count = std::min(from - to, from - runBegin(from - 1));
            return moved(from - count, count, width() - count);
        }
        return {};
    }
    [[nodiscard]] GapMoves runMoved(unsigned long from, unsigned long to) const
    {
        const unsigned long begin = runBegin(from);
        const unsigned long end = runEnd(from);
        const unsigned long target = to < from ? begin - std::min(begin, from - to)
                                               : begin + std::min(width() - end, to - from);
        return moved(begin, end - begin, target);
    }

private:
    const TAMBO::Alignment &m_Alignment;
    unsigned long m_Row;
};

} // namespace

GapMoves movesOf(const TAMBO::Alignment &alignment, const TAMBO::GapDrag &press,
                 unsigned long column)
{
    const auto [row, from] = press.from;
    if (row >= alignment.height() || from >= alignment.width() || column >= alignment.width())
        return {};
    const RowPlaces places(alignment, row);
    const bool isLeft = press.button == Qt::LeftButton;
    if (column == from)
        return isLeft ? GapMoves() : places.inserted(from, 1);
    if (!places.isGap(from))
        return places.slid(from, column);
    return isLeft ? places.moved(from, 1, column) : places.runMoved(from, column);
}

} // namespace companion
