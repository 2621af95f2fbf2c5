// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellText.h"

#include "Bits.h"

#include <algorithm>
#include <cstring>

namespace TAMBO::formats {

void CellText::append(std::uint64_t count, char gap, std::string &text)
{
    const std::size_t start = text.size();
    text.append(count, gap);
    const std::uint64_t begin = m_Column;
    const std::uint64_t end = begin + count;
    m_Column = end;
    for (std::uint64_t first = begin; first < end;) {
        const unsigned shift = bits::placeOf(first);
        const std::uint64_t columns = std::min(end - first, bits::kPerWord - shift);
        char *const to = text.data() + start + (first - begin);
        bits::forEachRun(m_Row->occupancy[bits::wordOf(first)] >> shift & bits::low(columns),
                         [&](unsigned place, unsigned length) {
                             std::memcpy(to + place, m_Row->letters.data() + m_Letter, length);
                             m_Letter += length;
                         });
        first += columns;
    }
}

} // namespace TAMBO::formats
