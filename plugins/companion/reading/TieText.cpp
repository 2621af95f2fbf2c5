// SPDX-License-Identifier: GPL-3.0-or-later
#include "TieText.h"

#include "Alignment.h"
#include "Texts.h"

#include <vector>

namespace companion {

QString tieText(const TAMBO::CellTie &tie)
{
    using Kind = TAMBO::CellTie::Kind;
    if (tie.kind == Kind::OtherLetter)
        return tr("differs from the structure, which has %1 here").arg(QLatin1Char(tie.letter));
    if (tie.kind != Kind::NoPosition)
        return {};
    return tie.letter == '\0' ? tr("not in the coordinates of the structure")
                              : tr("without coordinates of a CA atom");
}

QString tieText(const TAMBO::Alignment &alignment, const TAMBO::CellIndex &cell)
{
    std::vector<TAMBO::CellTie> ties;
    TAMBO::AlignmentDetails::readTies(alignment, cell.row, cell.col, cell.col + 1, ties);
    return ties.empty() ? QString() : tieText(ties.front());
}

} // namespace companion
