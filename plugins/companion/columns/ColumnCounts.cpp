// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnCounts.h"

#include <algorithm>
#include <numeric>

namespace companion {

ColumnCounts::ColumnCounts(std::span<const char> letters) noexcept
{
    for (const char letter : letters)
        add(letter);
}

bool ColumnCounts::remove(char letter) noexcept
{
    std::uint32_t &count = m_Counts[letterKind(letter)];
    if (count == 0)
        return false;
    --count;
    return true;
}

ColumnCounts &ColumnCounts::operator+=(const ColumnCounts &other) noexcept
{
    for (std::size_t i = 0; i < m_Counts.size(); ++i)
        m_Counts[i] += other.m_Counts[i];
    return *this;
}

std::uint32_t ColumnCounts::aminoAcids() const noexcept
{
    return std::accumulate(m_Counts.begin(), m_Counts.begin() + kAminoAcidCount, std::uint32_t(0));
}

void addRow(std::span<ColumnCounts> columns, std::span<const char> letters) noexcept
{
    const std::size_t count = std::min(columns.size(), letters.size());
    for (std::size_t i = 0; i < count; ++i)
        columns[i].add(letters[i]);
}

void removeRow(std::span<ColumnCounts> columns, std::span<const char> letters) noexcept
{
    const std::size_t count = std::min(columns.size(), letters.size());
    for (std::size_t i = 0; i < count; ++i)
        columns[i].remove(letters[i]);
}

} // namespace companion
