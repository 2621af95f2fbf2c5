// SPDX-License-Identifier: GPL-3.0-or-later
#include "StopCount.h"

#include "FormatText.h"

namespace TAMBO::formats {

void StopCount::add(std::uint64_t count, std::uint64_t line, std::string_view row)
{
    if (count > 0 && (m_Count == 0 || line < m_Line)) {
        m_Line = line;
        m_Row = row;
    }
    m_Count += count;
}

void StopCount::add(const StopCount &other)
{
    add(other.m_Count, other.m_Line, other.m_Row);
}

std::string StopCount::remark(const std::string &file) const
{
    return at(file, m_Line,
              "a stop (\"*\") in row " + shown(m_Row) + " was read as a gap" +
                  (m_Count > 1 ? "; so were " + std::to_string(m_Count - 1) + " more further down"
                               : std::string()));
}

} // namespace TAMBO::formats
