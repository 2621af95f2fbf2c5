// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowBuilder.h"

#include "Bits.h"
#include "LetterCopy.h"

#include <algorithm>
#include <span>
#include <utility>

namespace TAMBO::formats {

static_assert(RowBuilder::kReadAhead >= kScanWidth + kCopyReadSlack);

std::size_t RowBuilder::append(std::string_view text)
{
    // Room is made by the piece: behind the row the text may go on with all the others.
    constexpr std::size_t pieceSize = 4 * kScanWidth;
    for (std::size_t done = 0; done < text.size();) {
        const std::string_view piece = text.substr(done, pieceSize);
        makeRoom(piece.size());
        const std::size_t count = appendPiece(piece);
        done += count;
        if (count < piece.size())
            return done;
    }
    return text.size();
}

std::size_t RowBuilder::appendPiece(std::string_view text)
{
    for (std::size_t done = 0; done < text.size();) {
        const char *from = text.data() + done;
        const CellMasks masks = scanCells(from);
        const std::uint64_t cells = masks.letters | masks.dashes | masks.otherGaps;
        const auto left =
            static_cast<unsigned>(std::min<std::size_t>(text.size() - done, kScanWidth));
        const unsigned count = std::min(left, bits::run(cells));
        const std::uint64_t taken = bits::low(count);
        const std::uint64_t letters = masks.letters & taken;
        const std::size_t word = bits::wordOf(m_Width);
        const unsigned bit = bits::placeOf(m_Width);
        m_Occupancy[word] |= letters << bit;
        if (bit != 0)
            m_Occupancy[word + 1] |= letters >> (bits::kPerWord - bit);
        char *to = m_Letters.data() + m_LetterCount;
        m_LetterCount += static_cast<std::size_t>(copyLetters(to, from, letters) - to);
        if ((masks.lowerCase & taken) != 0)
            m_LowerCaseCount += bits::count(masks.lowerCase & taken);
        m_HasOtherGaps |= (masks.otherGaps & taken) != 0;
        m_Width += count;
        done += count;
        if (count < left)
            return done;
    }
    return text.size();
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
    bits::set(m_Occupancy, m_Width);
    ++m_Width;
}

GappedView RowBuilder::cells() const noexcept
{
    return {std::string_view(m_Letters.data(), m_LetterCount),
            std::span<const std::uint64_t>(m_Occupancy).first(bits::wordsFor(m_Width)), m_Width};
}

PackedRow RowBuilder::pack(std::string_view name)
{
    const GappedView row = cells();
    PackedRow packed{SequenceText(name, row.letters), OccupancyRow(row.occupancy), row.width, {}};
    begin();
    return packed;
}

void RowBuilder::begin()
{
    std::fill_n(m_Occupancy.begin(), bits::wordsFor(m_Width), 0);
    m_Width = 0;
    m_LetterCount = 0;
    m_LowerCaseCount = 0;
    m_Stops = 0;
    m_HasOtherGaps = false;
}

// Room for so many more columns, and for the slack behind them.
void RowBuilder::makeRoom(std::size_t columns)
{
    const std::size_t words = bits::wordOf(m_Width + columns) + 2;
    if (m_Occupancy.size() < words)
        m_Occupancy.resize(std::max(words, m_Occupancy.size() * 2));
    const std::size_t letters = m_LetterCount + columns + kCopyWriteSlack;
    if (m_Letters.size() < letters)
        m_Letters.resize(std::max(letters, m_Letters.size() * 2));
}

} // namespace TAMBO::formats
