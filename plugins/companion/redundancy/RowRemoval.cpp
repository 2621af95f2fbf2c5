// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowRemoval.h"

#include "Alignment.h"
#include "DataPoint.h"
#include "StepName.h"

namespace companion {

bool removeRows(TAMBO::Alignment &alignment, const std::vector<bool> &rows, const std::string &step)
{
    DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
    if (!change.m_good)
        return false;
    const StepName name(step);
    alignment.removeRows(rows);
    return true;
}

} // namespace companion
