// SPDX-License-Identifier: GPL-3.0-or-later
#include "LetterTally.h"

#include "Bits.h"
#include "LetterSpread.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace TAMBO {

LetterTally::LetterTally(Column begin, Column end)
    : m_Begin(begin),
      m_End(end),
      m_Stride(bits::wordsFor(end - begin) * bits::kPerWord),
      m_Cells(kRows * m_Stride),
      m_Text(m_Stride + kSpreadReadSlack)
{ }

void LetterTally::add(const AlignmentRow &row)
{
    write(row, m_Cells.data() + m_Rows * m_Stride);
    if (++m_Rows == kRows)
        finish();
}

void LetterTally::finish()
{
    for (std::size_t block = 0; block * kBlock < m_End - m_Begin; ++block)
        countBlock(block);
    m_Rows = 0;
}

void LetterTally::write(const AlignmentRow &row, std::uint8_t *cells)
{
    const std::string_view letters = row.sequence().letters();
    const std::uint32_t first = row.cells().rank(m_Begin);
    const std::uint32_t last = row.cells().rank(m_End);
    const std::uint32_t from = first < last ? row.residueIndex(first) : 0;
    // Residues that were removed in between.
    if (first == last || row.residueIndex(last - 1) - from != last - 1 - first) {
        std::fill_n(cells, m_Stride, std::uint8_t(0));
        row.forEachRun(m_Begin, m_End,
                       [&](Column column, std::uint32_t index, std::uint32_t count) {
                           std::memcpy(cells + (column - m_Begin), letters.data() + index, count);
                       });
        return;
    }
    std::memcpy(m_Text.data(), letters.data() + from, last - first);
    const char *text = reinterpret_cast<const char *>(m_Text.data());
    for (Column column = m_Begin; column < m_End; column += bits::kPerWord, cells += bits::kPerWord)
        text = spreadLetters(reinterpret_cast<char *>(cells), text,
                             row.cells().word(bits::wordOf(column)) & bits::low(m_End - column),
                             bits::kPerWord, '\0');
}

LetterTally::Group LetterTally::countGroup(std::size_t block, std::size_t letter) const noexcept
{
    const auto wanted = [&](std::size_t i) {
        return Bytes{} + m_Letters[std::min(letter + i, m_Letters.size() - 1)];
    };
    const Bytes first = wanted(0);
    const Bytes second = wanted(1);
    const Bytes third = wanted(2);
    const Bytes fourth = wanted(3);
    Group counts{};
    Bytes a{};
    Bytes b{};
    Bytes c{};
    Bytes d{};
    const std::uint8_t *cells = m_Cells.data() + block * kBlock;
    for (std::size_t row = 0; row < m_Rows; ++row, cells += m_Stride) {
        Bytes here;
        std::memcpy(&here, cells, sizeof(here));
        // Where they are the same all bits are set, which is -1.
        a -= reinterpret_cast<Bytes>(here == first);
        b -= reinterpret_cast<Bytes>(here == second);
        c -= reinterpret_cast<Bytes>(here == third);
        d -= reinterpret_cast<Bytes>(here == fourth);
    }
    counts = {a, b, c, d};
    return counts;
}

void LetterTally::countBlock(std::size_t block)
{
    Bytes left{};
    for (std::size_t row = 0; row < m_Rows; ++row) {
        Bytes here;
        std::memcpy(&here, m_Cells.data() + row * m_Stride + block * kBlock, sizeof(here));
        left -= reinterpret_cast<Bytes>(here != 0);
    }
    for (std::size_t letter = 0;; letter += kGroup) {
        if (letter >= m_Letters.size()) {
            const std::uint8_t unknown = unknownLetter(block);
            if (unknown == 0)
                return;
            m_IsKnown[unknown] = true;
            m_Letters.push_back(unknown);
            m_Counts.emplace_back(m_Stride);
            letter = m_Letters.size() - 1;
        }
        const Group counts = countGroup(block, letter);
        const std::size_t end = std::min(letter + kGroup, m_Letters.size());
        for (std::size_t i = letter; i < end; ++i) {
            std::uint32_t *const sums = m_Counts[i].data() + block * kBlock;
            for (std::size_t column = 0; column < kBlock; ++column)
                sums[column] += counts[i - letter][column];
            left -= counts[i - letter];
        }
        if (end < m_Letters.size())
            continue;
        std::array<std::uint64_t, 2> rest{};
        std::memcpy(rest.data(), &left, sizeof(left));
        if ((rest[0] | rest[1]) == 0)
            return;
    }
}

std::uint8_t LetterTally::unknownLetter(std::size_t block) const noexcept
{
    for (std::size_t row = 0; row < m_Rows; ++row) {
        const std::uint8_t *const cells = m_Cells.data() + row * m_Stride + block * kBlock;
        for (std::size_t column = 0; column < kBlock; ++column) {
            if (cells[column] != 0 && !m_IsKnown[cells[column]])
                return cells[column];
        }
    }
    return 0;
}

} // namespace TAMBO
