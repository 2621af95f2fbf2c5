// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnRemoval.h"

#include "Alignment.h"
#include "DataPoint.h"
#include "StepName.h"
#include "Texts.h"

#include <algorithm>

namespace companion {

QString removeColumns(TAMBO::Alignment &alignment, const std::vector<bool> &columns,
                      const std::string &step, const QString &which)
{
    const auto count = static_cast<unsigned long>(std::ranges::count(columns, true));
    if (count == 0)
        return tr("No column is removed: there is none %1.").arg(which);
    if (count >= alignment.width())
        return tr("No column is removed: all are %1, and one has to stay.").arg(which);
    DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
    if (!change.m_good)
        return tr("No column is removed: the alignment cannot be changed now.");
    const StepName name(step);
    if (!alignment.removeColumns(columns))
        return tr("No column is removed: it was cancelled.");
    return count == 1 ? tr("1 column %1 removed.").arg(which)
                      : tr("%L1 columns %2 removed.").arg(count).arg(which);
}

} // namespace companion
