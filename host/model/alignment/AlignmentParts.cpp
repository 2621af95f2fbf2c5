// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentParts.h"

#include "ObjectReader.h"

#include <utility>

namespace TAMBO {

AlignmentParts::AlignmentParts(ObjectReader &in) : m_Head(in.head())
{
    m_Name = in.text();
    m_Width = in.number(AlignmentTable::kMostColumns);
    m_Range.first = in.number();
    m_Range.second = in.number();
    if (m_Range.first < m_Range.second && m_Range.second > m_Width)
        in.fail("the range reaches beyond the columns");
    if (in.flag())
        m_Annotation = AlignmentAnnotation::read(in);
    m_RowCount = in.number();
}

void AlignmentParts::readRows(ObjectReader &in)
{
    constexpr std::size_t kLeastBytes = 3;
    if (in.number() != m_Rows.size())
        in.fail("rows of the alignment \"" + m_Name + "\" are missing");
    const std::size_t count = in.count(kLeastBytes);
    if (count > m_RowCount - m_Rows.size())
        in.fail("the alignment \"" + m_Name + "\" has more rows than it had");
    for (std::size_t i = 0; i < count && !in.failed(); ++i)
        m_Rows.push_back(AlignmentRow::read(in, m_Width, m_Words));
}

std::unique_ptr<Alignment> AlignmentParts::make(ObjectReader &in)
{
    m_Rows.shrink_to_fit();
    std::unique_ptr<Alignment> made = AlignmentTable::make(m_Name, std::move(m_Rows), m_Width);
    AlignmentTable &table = made->table();
    table.setRange(m_Range);
    table.presetAnnotation(std::move(m_Annotation));
    in.add(*StoredObject::from(made.get()), std::move(m_Head));
    return made;
}

} // namespace TAMBO
