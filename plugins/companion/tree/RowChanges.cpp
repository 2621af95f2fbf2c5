// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowChanges.h"

#include "Alignment.h"
#include "DataPoint.h"
#include "StepName.h"

namespace companion {

bool selectRows(TAMBO::Alignment &alignment, const std::vector<unsigned long> &rows, bool adds)
{
    DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
    if (!change.m_good)
        return false;
    if (!adds)
        alignment.select({0, alignment.width()}, false);
    for (const unsigned long row : rows)
        alignment.selectInRow(row, {0, alignment.width()});
    return true;
}

bool sortRows(TAMBO::Alignment &alignment, const std::vector<unsigned long> &rows)
{
    DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
    if (!change.m_good)
        return false;
    const StepName name("Sort rows by tree");
    std::vector<unsigned long> order = rows;
    order.reserve(alignment.height());
    std::vector<bool> isThere(alignment.height());
    for (const unsigned long row : rows)
        if (row < isThere.size())
            isThere[row] = true;
    for (unsigned long row = 0; row < isThere.size(); ++row)
        if (!isThere[row])
            order.push_back(row);
    alignment.reorderRows(order);
    return true;
}

} // namespace companion
