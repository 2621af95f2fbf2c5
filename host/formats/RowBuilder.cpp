// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowBuilder.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace TAMBO::formats {

namespace {

// Letters are copied in whole pieces of this size, so that much is touched beyond the last one.
constexpr std::size_t kCopy = 32;
constexpr std::size_t kSlack = kScanWidth + kCopy;

} // namespace

std::size_t RowBuilder::append(std::string_view text)
{
    makeRoom(text.size());
    char rest[2 * kSlack];
    std::size_t done = 0;
    while (done < text.size()) {
        const char *from = text.data() + done;
        const std::size_t left = text.size() - done;
        if (left < kSlack && from != rest) {
            std::memcpy(rest, from, left);
            std::memset(rest + left, 0, sizeof rest - left);
            from = rest;
        }
        const CellMasks masks = scanCells(from);
        const std::uint64_t cells = masks.letters | masks.dashes | masks.otherGaps;
        const unsigned inBlock = static_cast<unsigned>(std::min<std::size_t>(left, kScanWidth));
        const unsigned count = std::min(inBlock, static_cast<unsigned>(std::countr_one(cells)));
        const std::uint64_t taken = count < 64 ? (std::uint64_t{1} << count) - 1 : ~std::uint64_t{};
        appendCells(from, count, masks.letters & taken);
        m_LowerCaseCount += static_cast<unsigned>(std::popcount(masks.lowerCase & taken));
        m_HasOtherGaps |= (masks.otherGaps & taken) != 0;
        done += count;
        if (count < inBlock)
            break;
    }
    return done;
}

void RowBuilder::appendGap()
{
    makeRoom(1);
    ++m_Width;
}

void RowBuilder::appendLetter(char letter)
{
    makeRoom(1);
    m_Letters[m_LetterCount++] = letter;
    m_Occupancy[m_Width / 64] |= std::uint64_t{1} << (m_Width % 64);
    ++m_Width;
}

GappedSequence RowBuilder::take()
{
    GappedSequence row;
    row.letters.assign(m_Letters.data(), m_LetterCount);
    const auto words = static_cast<std::ptrdiff_t>((m_Width + 63) / 64);
    row.occupancy.assign(m_Occupancy.begin(), m_Occupancy.begin() + words);
    row.width = m_Width;
    std::fill(m_Occupancy.begin(), m_Occupancy.begin() + words, 0);
    m_Width = 0;
    m_LetterCount = 0;
    m_LowerCaseCount = 0;
    m_HasOtherGaps = false;
    return row;
}

// Room for so many more columns, and for the slack behind them.
void RowBuilder::makeRoom(std::size_t columns)
{
    const std::size_t words = (m_Width + columns) / 64 + 2;
    if (m_Occupancy.size() < words)
        m_Occupancy.resize(std::max(words, m_Occupancy.size() * 2));
    const std::size_t letters = m_LetterCount + columns + kSlack;
    if (m_Letters.size() < letters)
        m_Letters.resize(std::max(letters, m_Letters.size() * 2));
}

void RowBuilder::appendCells(const char *text, unsigned count, std::uint64_t letters)
{
    const std::size_t word = m_Width / 64;
    const unsigned bit = m_Width % 64;
    m_Occupancy[word] |= letters << bit;
    if (bit != 0)
        m_Occupancy[word + 1] |= letters >> (64 - bit);
    m_Width += count;
    copyLetters(text, letters);
}

// Run by run of letters, each copied as one or two pieces of fixed size: the number of letters is
// found by counting, not by looking at each.
void RowBuilder::copyLetters(const char *text, std::uint64_t letters)
{
    char *to = m_Letters.data() + m_LetterCount;
    while (letters != 0) {
        const auto start = static_cast<unsigned>(std::countr_zero(letters));
        const auto length = static_cast<unsigned>(std::countr_one(letters >> start));
        std::memcpy(to, text + start, kCopy);
        if (length > kCopy)
            std::memcpy(to + kCopy, text + start + kCopy, kCopy);
        to += length;
        const unsigned end = start + length;
        letters = end < 64 ? letters >> end << end : 0;
    }
    m_LetterCount = static_cast<std::size_t>(to - m_Letters.data());
}

} // namespace TAMBO::formats
