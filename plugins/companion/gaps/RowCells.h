// SPDX-License-Identifier: GPL-3.0-or-later
// Where one row has gaps and where residues, found by counting residues, at any length.
#pragma once

#include <limits>
#include <vector>

namespace TAMBO {
class Alignment;
}

namespace companion {

struct GapRun
{
    unsigned long begin = 0;
    unsigned long count = 0;
};

class RowCells
{
public:
    RowCells(const TAMBO::Alignment &alignment, unsigned long row)
        : m_Alignment(alignment), m_Row(row)
    { }

    [[nodiscard]] bool isGap(unsigned long col) const;
    [[nodiscard]] unsigned long residuesIn(unsigned long begin, unsigned long end) const;
    // One past the column of the last residue before that column, 0 without one.
    [[nodiscard]] unsigned long endOfResidues(unsigned long before) const;
    // Directly before the column and not before the limit, or from the column on and before the
    // limit.
    [[nodiscard]] unsigned long gapsBefore(unsigned long col, unsigned long limit) const;
    [[nodiscard]] unsigned long gapsFrom(unsigned long col, unsigned long limit) const;
    // Of the residues side by side, of which the last one stands directly before end, or the first
    // one at begin.
    [[nodiscard]] unsigned long residueRunBegin(unsigned long end) const;
    [[nodiscard]] unsigned long residueRunEnd(unsigned long begin) const;
    // So many gaps of these columns, the last ones first.
    [[nodiscard]] std::vector<GapRun>
    lastGaps(unsigned long begin, unsigned long end,
             unsigned long most = std::numeric_limits<unsigned long>::max()) const;

private:
    const TAMBO::Alignment &m_Alignment;
    unsigned long m_Row;
};

} // namespace companion
