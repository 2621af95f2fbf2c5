// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnLetters.h"

#include <algorithm>
#include <string_view>

namespace TAMBO {

namespace {

using Column = ColumnLetters::Column;

constexpr std::size_t kMostBytes = std::size_t(4) << 20;

Column columnsAtOnce(std::size_t rows)
{
    return std::clamp<Column>(kMostBytes / std::max<std::size_t>(rows, 1), 1,
                              OccupancyRow::kWordColumns);
}

} // namespace

void ColumnLetters::append(const Rows &rows, Column width, Column column, std::vector<char> &out)
{
    if (column < m_Begin || column >= m_End)
        read(rows, width, column);
    const auto begin = m_Letters.begin() + std::ptrdiff_t((column - m_Begin) * rows.size());
    out.insert(out.end(), begin, begin + std::ptrdiff_t(rows.size()));
}

void ColumnLetters::clear() noexcept
{
    m_Begin = 0;
    m_End = 0;
    m_Letters = {};
}

void ColumnLetters::read(const Rows &rows, Column width, Column column)
{
    const Column count = columnsAtOnce(rows.size());
    m_Begin = column - column % count;
    m_End = std::min(width, m_Begin + count);
    m_Letters.assign((m_End - m_Begin) * rows.size(), '\0');
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::string_view letters = rows[i]->sequence().letters();
        rows[i]->forEachResidue(m_Begin, m_End, [&](Column place, std::uint32_t index) {
            m_Letters[(place - m_Begin) * rows.size() + i] = letters[index];
        });
    }
}

} // namespace TAMBO
