// SPDX-License-Identifier: GPL-3.0-or-later
#include "WholeSelection.h"

#include "Alignment.h"
#include "AlignmentDetails.h"
#include "DataPoint.h"
#include "Space.h"
#include "Texts.h"

#include <QKeySequence>

#include <vector>

namespace companion {

namespace {

bool selectAllCells(TAMBO::Alignment &alignment, TAMBO::Alignment::Selecting how)
{
    const DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
    if (change.m_good)
        alignment.selectCells(std::vector<bool>(alignment.height(), true),
                              std::vector<bool>(alignment.width(), true), how);
    return change.m_good;
}

} // namespace

std::optional<TAMBO::SelectedCount> selectNothing()
{
    const DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
    if (!change.m_good)
        return std::nullopt;
    return TAMBO::Selections::deselectAll();
}

std::optional<TAMBO::SelectedCount> selectAgain()
{
    const DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
    if (!change.m_good)
        return std::nullopt;
    return TAMBO::Selections::selectAgain();
}

QString deselectedText(const TAMBO::SelectedCount &count)
{
    if (count.isNone())
        return tr("Nothing is selected.");
    const QString keys = QKeySequence(kSelectAgainKeys).toString(QKeySequence::NativeText);
    if (count.residues == 0)
        return tr("Nothing is selected any more; %1 selects again what was.").arg(keys);
    return count.residues == 1 ? tr("Deselected 1 residue; %1 selects it again.").arg(keys)
                               : tr("Deselected %L1 residues; %2 selects them again.")
                                     .arg(count.residues)
                                     .arg(keys);
}

QString selectedAgainText(const TAMBO::SelectedCount &count)
{
    if (count.isNone())
        return tr("Nothing of what was deselected last is left to be selected again.");
    if (count.residues == 0)
        return tr("What was deselected is selected again.");
    return count.residues == 1 ? tr("Selected 1 residue again.")
                               : tr("Selected %L1 residues again.").arg(count.residues);
}

bool isAnySelectedOf(const TAMBO::Alignment *alignment)
{
    if (alignment == nullptr)
        return false;
    for (unsigned long row = 0; row < alignment->height(); ++row)
        if (TAMBO::AlignmentDetails::hasSelected(*alignment, row))
            return true;
    return false;
}

bool selectEverything(TAMBO::Alignment &alignment)
{
    return selectAllCells(alignment, TAMBO::Alignment::Selecting::Add);
}

bool invertSelection(TAMBO::Alignment &alignment)
{
    return selectAllCells(alignment, TAMBO::Alignment::Selecting::Toggle);
}

} // namespace companion
