// SPDX-License-Identifier: GPL-3.0-or-later
// An alignment as bytes: what is said of all of it, and its rows some at a time.
#include "AlignmentTable.h"
#include "ObjectWriter.h"

#include <algorithm>

namespace TAMBO {

namespace {

// So many take a fraction of a millisecond, however wide they are.
constexpr std::size_t kCellsOfPart = std::size_t(1) << 22;
constexpr std::size_t kRowsOfPart = 1024;

} // namespace

std::size_t AlignmentTable::rowsOfPart() const noexcept
{
    return std::clamp<std::size_t>(kCellsOfPart / std::max<Column>(width(), 1), 1, kRowsOfPart);
}

std::size_t AlignmentTable::partCount() const noexcept
{
    return 1 + (m_Rows.size() + rowsOfPart() - 1) / rowsOfPart();
}

void AlignmentTable::writePart(std::size_t part, const StoredObject &self, ObjectWriter &out) const
{
    if (part == 0) {
        out.begin(StoredKind::Alignment);
        out.head(self);
        out.text(m_Name);
        out.number(width());
        out.number(m_Alignment->range().first);
        out.number(m_Alignment->range().second);
        out.flag(m_Annotation != nullptr);
        if (m_Annotation != nullptr)
            m_Annotation->write(out);
        out.number(m_Rows.size());
        return;
    }
    const std::size_t begin = (part - 1) * rowsOfPart();
    const std::size_t end = std::min(begin + rowsOfPart(), m_Rows.size());
    beginRows(self, begin, end, out);
    for (std::size_t i = begin; i < end; ++i)
        m_Rows[i]->write(out);
}

void AlignmentTable::beginRows(const StoredObject &self, std::size_t begin, std::size_t end,
                               ObjectWriter &out)
{
    out.begin(StoredKind::Rows);
    out.number(self.identity());
    out.number(begin);
    out.number(end - begin);
}

} // namespace TAMBO
