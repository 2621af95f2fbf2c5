// SPDX-License-Identifier: GPL-3.0-or-later
// Bits one after the other: the cells of removed columns, row by row, without a bit between rows.
#pragma once

#include "Bits.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace TAMBO {

class BitBuffer
{
public:
    using Word = bits::Word;

    BitBuffer() = default;
    // The first count bits of words.
    BitBuffer(std::vector<Word> words, std::size_t count) : m_Words(std::move(words)), m_Size(count)
    { }

    [[nodiscard]] std::size_t size() const noexcept { return m_Size; }
    // The bits beyond them are clear.
    [[nodiscard]] const std::vector<Word> &words() const noexcept { return m_Words; }

    // Makes room, so that appending so many bits in all allocates once.
    void reserve(std::size_t count) { m_Words.reserve(bits::wordsFor(count)); }
    // The first count bits of a word, at most all of them.
    void append(Word word, std::size_t count)
    {
        word &= bits::low(count);
        const unsigned shift = bits::placeOf(m_Size);
        if (shift == 0)
            m_Words.push_back(word);
        else
            m_Words.back() |= word << shift;
        if (shift != 0 && shift + count > bits::kPerWord)
            m_Words.push_back(word >> (bits::kPerWord - shift));
        m_Size += count;
    }
    // Of words that start at bit 0.
    void append(std::span<const Word> words, std::size_t count)
    {
        for (std::size_t done = 0; done < count; done += bits::kPerWord)
            append(words[bits::wordOf(done)], std::min(count - done, bits::kPerWord));
    }
    // count bits from begin on; count is at most one word's.
    [[nodiscard]] Word word(std::size_t begin, std::size_t count) const noexcept
    {
        const std::size_t index = bits::wordOf(begin);
        const Word next = index + 1 < m_Words.size() ? m_Words[index + 1] : 0;
        return bits::joined(m_Words[index], next, bits::placeOf(begin)) & bits::low(count);
    }
    // count bits from begin on, as words that start at bit 0.
    void read(std::size_t begin, std::size_t count, std::vector<Word> &out) const
    {
        out.resize(bits::wordsFor(count));
        for (std::size_t i = 0; i < out.size(); ++i) {
            const std::size_t index = bits::wordOf(begin) + i;
            const Word next = index + 1 < m_Words.size() ? m_Words[index + 1] : 0;
            out[i] = bits::joined(m_Words[index], next, bits::placeOf(begin));
        }
        if (bits::placeOf(count) != 0)
            out.back() &= bits::low(bits::placeOf(count));
    }
    [[nodiscard]] std::vector<Word> bits(std::size_t begin, std::size_t count) const
    {
        std::vector<Word> result;
        read(begin, count, result);
        return result;
    }
    // On the heap.
    [[nodiscard]] std::size_t bytes() const noexcept { return m_Words.capacity() * sizeof(Word); }

private:
    std::vector<Word> m_Words;
    std::size_t m_Size = 0;
};

} // namespace TAMBO
