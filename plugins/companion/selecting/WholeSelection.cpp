// SPDX-License-Identifier: GPL-3.0-or-later
#include "WholeSelection.h"

#include "Alignment.h"
#include "AlignmentDetails.h"
#include "DataPoint.h"
#include "Space.h"

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

bool selectNothing()
{
    const DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
    if (!change.m_good)
        return false;
    for (TAMBO::Compound *const object : *TAMBO::Space::instance())
        object->SetSelected(false);
    return true;
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
