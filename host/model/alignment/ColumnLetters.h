// SPDX-License-Identifier: GPL-3.0-or-later
// The letters of a few neighbouring columns, for passes that read one column after the other.
#pragma once

#include "AlignmentRow.h"

#include <memory>
#include <vector>

namespace TAMBO {

// To read a column is to look into every row, each at another place of memory. So a column brings
// its neighbours along, and they stay until a cell changes.
class ColumnLetters
{
public:
    using Column = OccupancyRow::Column;
    using Rows = std::vector<std::unique_ptr<AlignmentRow>>;

    // Appends one letter per row, '\0' for gaps.
    void append(const Rows &rows, Column width, Column column, std::vector<char> &out);
    void clear() noexcept;
    // On the heap.
    [[nodiscard]] std::size_t bytes() const noexcept { return m_Letters.capacity(); }

private:
    void read(const Rows &rows, Column width, Column column);

    Column m_Begin = 0;
    Column m_End = 0;
    // Column by column.
    std::vector<char> m_Letters;
};

} // namespace TAMBO
