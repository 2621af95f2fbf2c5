// SPDX-License-Identifier: GPL-3.0-or-later
#include "PieceStore.h"

#include "Bits.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace TAMBO::formats {

void PieceStore::add(std::size_t row, const GappedView &piece)
{
    if (!isNext(row, piece.width)) {
        close();
        m_OpenGroup = row / kGroup;
        m_Open.first = static_cast<std::uint32_t>(row % kGroup);
        m_Open.width = piece.width;
    } else if (m_Open.count == 1) {
        m_Open.step = static_cast<std::uint32_t>(row % kGroup) - m_Open.first;
    }
    ++m_Open.count;
    m_Words.insert(m_Words.end(), piece.occupancy.begin(), piece.occupancy.end());
    m_Letters.append(piece.letters);
}

bool PieceStore::isNext(std::size_t row, std::uint64_t width) const noexcept
{
    constexpr std::size_t largest = std::size_t{1} << 19U;
    if (m_Open.count == 0 || m_OpenGroup != row / kGroup || m_Open.width != width ||
        m_Letters.size() >= largest || m_Words.size() >= largest / sizeof(std::uint64_t))
        return false;
    const std::size_t place = row % kGroup;
    if (m_Open.count == 1)
        return place == m_Open.first || place == m_Open.first + 1;
    return place == m_Open.first + std::size_t{m_Open.count} * m_Open.step;
}

// With no room to spare.
void PieceStore::close()
{
    if (m_Open.count == 0)
        return;
    const std::size_t words =
        m_Words.size() + (m_Letters.size() + sizeof(std::uint64_t) - 1) / sizeof(std::uint64_t);
    m_Open.cells = CellBlock(words);
    std::memcpy(std::ranges::copy(m_Words, m_Open.cells.words()).out, m_Letters.data(),
                m_Letters.size());
    if (m_Groups.size() <= m_OpenGroup)
        m_Groups.resize(m_OpenGroup + 1);
    m_Groups[m_OpenGroup].add(std::exchange(m_Open, {}));
    m_Words.clear();
    m_Letters.clear();
}

PieceGroup PieceStore::take(std::size_t group)
{
    close();
    return group < m_Groups.size() ? std::exchange(m_Groups[group], {}) : PieceGroup();
}

} // namespace TAMBO::formats
