// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellText.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace TAMBO::formats {

void CellText::append(std::uint64_t count, char gap, std::string &text)
{
    constexpr std::uint64_t wordColumns = 64;
    const std::size_t start = text.size();
    text.append(count, gap);
    const std::uint64_t begin = m_Column;
    const std::uint64_t end = begin + count;
    m_Column = end;
    for (std::uint64_t first = begin; first < end;) {
        const unsigned shift = first % wordColumns;
        const auto columns = static_cast<unsigned>(std::min(end - first, wordColumns - shift));
        std::uint64_t bits = m_Row->occupancy[first / wordColumns] >> shift;
        if (columns < wordColumns)
            bits &= (std::uint64_t{1} << columns) - 1;
        char *const to = text.data() + start + (first - begin);
        while (bits != 0) {
            const auto place = static_cast<unsigned>(std::countr_zero(bits));
            const auto length = static_cast<unsigned>(std::countr_one(bits >> place));
            std::memcpy(to + place, m_Row->letters.data() + m_Letter, length);
            m_Letter += length;
            const unsigned done = place + length;
            bits = done < wordColumns ? bits >> done << done : 0;
        }
        first += columns;
    }
}

} // namespace TAMBO::formats
