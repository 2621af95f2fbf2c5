// SPDX-License-Identifier: GPL-3.0-or-later
// An alignment as lines of one height: blocks of columns below each other, each with lines for its
// ruler, a line for each row, and an empty one behind it.
#pragma once

#include "CellPlaces.h"

#include <algorithm>
#include <cstdint>

namespace companion {

struct WrapLine
{
    enum class Kind { Ruler, Row, Empty };

    Kind kind = Kind::Empty;
    // Which of the ruler's lines, from the upper one on.
    unsigned long rulerLine = 0;
    unsigned long row = 0;
    unsigned long colBegin = 0;
    unsigned long colEnd = 0;
};

class WrapLayout
{
public:
    WrapLayout() = default;
    // columnsOfBlock and rulerLines are at least 1.
    WrapLayout(unsigned long rows, unsigned long columns, unsigned long columnsOfBlock,
               unsigned long rulerLines);

    [[nodiscard]] unsigned long rows() const noexcept { return m_Rows; }
    [[nodiscard]] unsigned long columns() const noexcept { return m_Columns; }
    [[nodiscard]] unsigned long columnsOfBlock() const noexcept { return m_Wide; }
    [[nodiscard]] unsigned long blocks() const noexcept
    {
        return m_Rows == 0 ? 0 : (m_Columns + m_Wide - 1) / m_Wide;
    }
    [[nodiscard]] std::uint64_t linesOfBlock() const noexcept { return m_RulerLines + m_Rows + 1; }
    // The empty one behind the last block is none of them.
    [[nodiscard]] std::uint64_t lines() const noexcept
    {
        return blocks() == 0 ? 0 : blocks() * linesOfBlock() - 1;
    }
    // Beyond the last one, an empty one.
    [[nodiscard]] WrapLine at(std::uint64_t line) const noexcept;
    // Of a cell that there is.
    [[nodiscard]] std::uint64_t lineOf(const TAMBO::CellIndex &cell) const noexcept
    {
        return firstLineOf(cell.col) + m_RulerLines + cell.row;
    }
    // The uppermost one of the ruler above a column.
    [[nodiscard]] std::uint64_t firstLineOf(unsigned long col) const noexcept
    {
        return col / m_Wide * linesOfBlock();
    }

private:
    unsigned long m_Rows = 0;
    unsigned long m_Columns = 0;
    unsigned long m_Wide = 1;
    unsigned long m_RulerLines = 1;
};

} // namespace companion
