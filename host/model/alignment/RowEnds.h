// SPDX-License-Identifier: GPL-3.0-or-later
// Behind which columns the rows of an alignment have their last residue, so that it is known how
// narrow it may become without a look at each row. Found when somebody asks, and followed from then
// on while single rows change.
#pragma once

#include "AlignmentRow.h"

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

namespace TAMBO {

class RowEnds
{
public:
    using Column = OccupancyRow::Column;
    using Rows = std::vector<std::unique_ptr<AlignmentRow>>;

    // Of all rows but one, whose end is given. 0 when there are no others.
    [[nodiscard]] Column lastOfOthers(const Rows &rows, Column own);
    void change(Column from, Column to);
    // Any row may have changed.
    void clear() noexcept
    {
        m_Counts.clear();
        m_IsKnown = false;
    }

private:
    // Of the rows with each end.
    std::map<Column, std::size_t> m_Counts;
    bool m_IsKnown = false;
};

} // namespace TAMBO
