// SPDX-License-Identifier: GPL-3.0-or-later
// Bits one after the other: the cells of removed columns, row by row, without a bit between rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace TAMBO {

class BitBuffer
{
public:
    using Word = std::uint64_t;

    // Makes room, so that appending so many bits in all allocates once.
    void reserve(std::size_t bits) { m_Words.reserve((bits + 63) / 64); }
    // The first count bits of words that start at bit 0; bits beyond count are clear.
    void append(const std::vector<Word> &words, std::size_t count)
    {
        for (std::size_t done = 0; done < count; done += 64) {
            const std::size_t shift = m_Size % 64;
            const std::size_t step = count - done < 64 ? count - done : 64;
            const Word word = words[done / 64];
            if (shift == 0)
                m_Words.push_back(word);
            else
                m_Words.back() |= word << shift;
            if (shift != 0 && shift + step > 64)
                m_Words.push_back(word >> (64 - shift));
            m_Size += step;
        }
    }
    // count bits from begin on, as words that start at bit 0.
    [[nodiscard]] std::vector<Word> bits(std::size_t begin, std::size_t count) const
    {
        std::vector<Word> result((count + 63) / 64);
        for (std::size_t i = 0; i < result.size(); ++i) {
            const std::size_t index = begin / 64 + i;
            const std::size_t shift = begin % 64;
            result[i] = m_Words[index] >> shift;
            if (shift != 0 && index + 1 < m_Words.size())
                result[i] |= m_Words[index + 1] << (64 - shift);
        }
        if (count % 64 != 0)
            result.back() &= (Word(1) << count % 64) - 1;
        return result;
    }
    // On the heap.
    [[nodiscard]] std::size_t bytes() const noexcept { return m_Words.capacity() * sizeof(Word); }

private:
    std::vector<Word> m_Words;
    std::size_t m_Size = 0;
};

} // namespace TAMBO
