// SPDX-License-Identifier: GPL-3.0-or-later
#include "WrapLayout.h"

namespace companion {

WrapLayout::WrapLayout(unsigned long rows, unsigned long columns, unsigned long columnsOfBlock,
                       unsigned long rulerLines)
    : m_Rows(rows),
      m_Columns(columns),
      m_Wide(std::max(columnsOfBlock, 1UL)),
      m_RulerLines(std::max(rulerLines, 1UL))
{ }

WrapLine WrapLayout::at(std::uint64_t line) const noexcept
{
    if (line >= lines())
        return {};
    WrapLine found;
    found.colBegin = line / linesOfBlock() * m_Wide;
    found.colEnd = std::min(found.colBegin + m_Wide, m_Columns);
    const unsigned long inBlock = line % linesOfBlock();
    if (inBlock < m_RulerLines) {
        found.kind = WrapLine::Kind::Ruler;
        found.rulerLine = inBlock;
    } else if (inBlock - m_RulerLines < m_Rows) {
        found.kind = WrapLine::Kind::Row;
        found.row = inBlock - m_RulerLines;
    }
    return found;
}

} // namespace companion
