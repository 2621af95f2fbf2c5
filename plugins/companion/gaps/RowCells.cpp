// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowCells.h"

#include "Alignment.h"

#include <algorithm>

namespace companion {

namespace {

// The largest number up to most for which a property holds that holds for 0, and for no number
// above one for which it does not.
template <typename Holds> unsigned long lastThatHolds(unsigned long most, Holds holds)
{
    unsigned long least = 0;
    while (least < most) {
        const unsigned long middle = most - (most - least) / 2;
        if (holds(middle))
            least = middle;
        else
            most = middle - 1;
    }
    return least;
}

} // namespace

bool RowCells::isGap(unsigned long col) const
{
    return m_Alignment.letterAt(m_Row, col) == '\0';
}

unsigned long RowCells::residuesIn(unsigned long begin, unsigned long end) const
{
    return m_Alignment.residueCount(m_Row, end) - m_Alignment.residueCount(m_Row, begin);
}

unsigned long RowCells::endOfResidues(unsigned long before) const
{
    const unsigned long count = m_Alignment.residueCount(m_Row, before);
    return count == 0 ? 0 : m_Alignment.columnOfResidue(m_Row, count - 1) + 1;
}

unsigned long RowCells::gapsBefore(unsigned long col, unsigned long limit) const
{
    return col - std::max(std::min(limit, col), endOfResidues(col));
}

unsigned long RowCells::gapsFrom(unsigned long col, unsigned long limit) const
{
    const unsigned long next =
        m_Alignment.columnOfResidue(m_Row, m_Alignment.residueCount(m_Row, col));
    return std::max(std::min(next, limit), col) - col;
}

unsigned long RowCells::residueRunBegin(unsigned long end) const
{
    const unsigned long last = end - 1;
    const unsigned long residue = m_Alignment.residueCount(m_Row, last);
    return last - lastThatHolds(residue, [&](unsigned long before) {
               return m_Alignment.columnOfResidue(m_Row, residue - before) == last - before;
           });
}

unsigned long RowCells::residueRunEnd(unsigned long begin) const
{
    const unsigned long residue = m_Alignment.residueCount(m_Row, begin);
    const unsigned long all = m_Alignment.residueCount(m_Row, m_Alignment.width());
    return begin + 1 + lastThatHolds(all - residue - 1, [&](unsigned long behind) {
               return m_Alignment.columnOfResidue(m_Row, residue + behind) == begin + behind;
           });
}

std::vector<GapRun> RowCells::lastGaps(unsigned long begin, unsigned long end,
                                       unsigned long most) const
{
    std::vector<GapRun> runs;
    while (end > begin && most > 0) {
        const unsigned long gaps = gapsBefore(end, begin);
        const unsigned long taken = std::min(gaps, most);
        if (taken > 0)
            runs.push_back({end - taken, taken});
        most -= taken;
        end -= gaps;
        if (end > begin && most > 0)
            end = std::max(begin, residueRunBegin(end));
    }
    return runs;
}

} // namespace companion
