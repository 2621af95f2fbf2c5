// SPDX-License-Identifier: GPL-3.0-or-later
#include "PartAlignments.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "DataAdder.h"
#include "ResidueColumns.h"
#include "Space.h"
#include "StepName.h"
#include "Texts.h"

namespace companion {

namespace {

QString copied(const TAMBO::Alignment &alignment, const std::vector<bool> &rows,
               const std::vector<bool> &columns, const QString &part)
{
    const DataAdder<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
    if (!guard.m_good)
        return tr("No alignment is made: nothing can be changed now.");
    const StepName name("New alignment of a part");
    const TAMBO::Alignment *const made =
        alignment.duplicate(rows, columns, alignment.Name() + " (" + part.toStdString() + ')');
    return made == nullptr
               ? tr("No alignment is made: it was cancelled.")
               : tr("New alignment “%1”, %2 rows × %3 columns: it stands in the list of objects.")
                     .arg(QString::fromStdString(made->Name()))
                     .arg(made->height())
                     .arg(made->width());
}

std::vector<bool> flagsIn(unsigned long size, unsigned long begin, unsigned long end)
{
    std::vector<bool> wanted(size);
    for (unsigned long i = begin; i < end; ++i)
        wanted[i] = true;
    return wanted;
}

// As people count them.
QString placesText(const QString &one, const QString &several, unsigned long begin,
                   unsigned long end)
{
    return end - begin == 1 ? one.arg(end) : several.arg(begin + 1).arg(end);
}

} // namespace

QString newAlignmentOfBlock(TAMBO::AlignmentWindow &window, const TAMBO::CellBlock &wanted)
{
    const TAMBO::Alignment *const alignment = window.alignment();
    if (alignment == nullptr)
        return tr("No alignment is shown.");
    const TAMBO::CellBlock block =
        wanted.intersected({0, alignment->height(), 0, alignment->width()});
    if (block.isEmpty())
        return tr("No alignment is made: there is no block.");
    return copied(
        *alignment, flagsIn(alignment->height(), block.rowBegin, block.rowEnd),
        flagsIn(alignment->width(), block.colBegin, block.colEnd),
        placesText(tr("row %1"), tr("rows %1-%2"), block.rowBegin, block.rowEnd) +
            QStringLiteral(", ") +
            placesText(tr("column %1"), tr("columns %1-%2"), block.colBegin, block.colEnd));
}

QString newAlignmentOfRows(TAMBO::AlignmentWindow &window, const std::vector<unsigned long> &rows)
{
    const TAMBO::Alignment *const alignment = window.alignment();
    if (alignment == nullptr)
        return tr("No alignment is shown.");
    if (rows.empty())
        return tr("No alignment is made: no row has selected residues.");
    std::vector<bool> wanted(alignment->height());
    for (const unsigned long row : rows)
        wanted[row] = true;
    const std::optional<std::vector<bool>> columns = columnsWithResidues(window, wanted);
    if (!columns)
        return tr("No alignment is made: it was cancelled.");
    return copied(*alignment, wanted, *columns,
                  rows.size() == 1 ? tr("1 row") : tr("%L1 rows").arg(rows.size()));
}

} // namespace companion
