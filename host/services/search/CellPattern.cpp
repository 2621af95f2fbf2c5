// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellPattern.h"

#include "Bits.h"

#include <algorithm>

namespace TAMBO::services {

namespace {

constexpr std::size_t kCodes = 256;

} // namespace

CellPattern::CellPattern(const QString &text)
    : m_Length(static_cast<std::size_t>(text.size())),
      m_Words(bits::wordsFor(m_Length)),
      m_Fitting(kCodes * m_Words)
{
    for (std::size_t place = 0; place < m_Length; ++place) {
        const std::size_t code = text[static_cast<qsizetype>(place)].unicode();
        const Word bit = bits::one(place);
        for (std::size_t other = 0; other < kCodes; ++other) {
            if (other == code || code == '.')
                m_Fitting[other * m_Words + bits::wordOf(place)] |= bit;
        }
    }
}

// Bit k of the state says that the first k + 1 characters of the pattern fit the cells that end
// here, so that a cell costs the same whatever the pattern begins with.
void CellPattern::forEachMatch(std::string_view row, const Visitor &visit) const
{
    if (m_Length == 0)
        return;
    std::vector<Word> state(m_Words);
    const Word last = bits::one(m_Length - 1);
    unsigned long begin = 0;
    unsigned long end = 0;
    for (std::size_t column = 0; column < row.size(); ++column) {
        const Word *const fitting =
            m_Fitting.data() + static_cast<unsigned char>(row[column]) * m_Words;
        Word carry = 1;
        for (std::size_t i = 0; i < m_Words; ++i) {
            const Word next = state[i] >> (bits::kPerWord - 1);
            state[i] = (state[i] << 1 | carry) & fitting[i];
            carry = next;
        }
        if ((state.back() & last) == 0)
            continue;
        const unsigned long first = column + 1 - m_Length;
        if (begin < end && first > end)
            visit(begin, end);
        if (first > end || begin == end)
            begin = first;
        end = column + 1;
    }
    if (begin < end)
        visit(begin, end);
}

} // namespace TAMBO::services
