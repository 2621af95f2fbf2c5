// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellText.h"

#include "Bits.h"
#include "LetterSpread.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace TAMBO::formats {

static_assert(CellText::kSlack >= kSpreadWriteSlack);

void CellText::append(std::uint64_t count, char gap, std::string &text)
{
    const std::size_t start = text.size();
    text.resize(start + count + kSlack);
    put(count, gap, text.data() + start);
    text.resize(start + count);
}

char *CellText::put(std::uint64_t count, char gap, char *to)
{
    const std::string_view letters = m_Row.letters;
    const std::span<const std::uint64_t> words = m_Row.occupancy;
    const std::uint64_t end = m_Column + count;
    while (m_Column < end) {
        const auto columns = static_cast<unsigned>(std::min(end - m_Column, bits::kPerWord));
        const std::size_t word = bits::wordOf(m_Column);
        const unsigned shift = bits::placeOf(m_Column);
        const bits::Word next = word + 1 < words.size() ? words[word + 1] : 0;
        const bits::Word cells = bits::joined(words[word], next, shift) & bits::low(columns);
        const char *const from = letters.data() + m_Letter;
        const std::size_t left = letters.size() - m_Letter;
        if (left >= bits::kPerWord + kSpreadReadSlack) {
            m_Letter +=
                static_cast<std::size_t>(spreadLetters(to, from, cells, columns, gap) - from);
        } else {
            // Nothing behind the last letter is to be read.
            std::array<char, bits::kPerWord + kSpreadReadSlack> last{};
            std::memcpy(last.data(), from, left);
            m_Letter += static_cast<std::size_t>(
                spreadLetters(to, last.data(), cells, columns, gap) - last.data());
        }
        m_Column += columns;
        to += columns;
    }
    return to;
}

} // namespace TAMBO::formats
