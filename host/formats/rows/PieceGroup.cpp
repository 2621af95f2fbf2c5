// SPDX-License-Identifier: GPL-3.0-or-later
#include "PieceGroup.h"

#include "Bits.h"

#include <cstring>

namespace TAMBO::formats {

namespace {

using Words = std::span<const std::uint64_t>;

// The pieces' bits have none behind their columns.
void appendBits(Words piece, std::uint64_t *row, std::uint64_t width) noexcept
{
    std::uint64_t *to = row + bits::wordOf(width);
    const unsigned shift = bits::placeOf(width);
    for (const bits::Word word : piece) {
        *to++ |= word << shift;
        if (shift != 0)
            *to |= word >> (bits::kPerWord - shift);
    }
}

} // namespace

template <typename Visit> void PieceGroup::forEachPiece(Visit visit) const
{
    for (const Batch &batch : m_Batches) {
        const std::size_t words = bits::wordsFor(batch.width);
        const std::uint64_t *const cells = batch.cells.words();
        const auto *letters = reinterpret_cast<const char *>(cells + words * batch.count);
        for (std::size_t i = 0; i < batch.count; ++i) {
            const Words piece(cells + i * words, words);
            std::size_t count = 0;
            for (const bits::Word word : piece)
                count += bits::count(word);
            visit(batch.first + i * batch.step, batch.width, piece,
                  std::string_view(letters, count));
            letters += count;
        }
    }
}

std::vector<PackedRow> PieceGroup::rows(std::span<const std::string_view> names) const
{
    // Of a row: all of it, then as much as was put into it.
    struct Tail
    {
        std::uint64_t width = 0;
        std::size_t letters = 0;
        std::size_t firstWord = 0;
    };
    std::vector<Tail> tails(names.size());
    forEachPiece([&](std::size_t row, std::uint64_t width, Words, std::string_view letters) {
        tails[row].width += width;
        tails[row].letters += letters.size();
    });
    std::vector<PackedRow> result(names.size());
    std::size_t words = 0;
    for (std::size_t row = 0; row < names.size(); ++row) {
        Tail &tail = tails[row];
        result[row].text = SequenceText(names[row], tail.letters);
        result[row].width = tail.width;
        const std::size_t firstWord = words;
        words += bits::wordsFor(tail.width) + 1;
        tail = {0, 0, firstWord};
    }
    std::vector<std::uint64_t> cells(words);
    forEachPiece([&](std::size_t row, std::uint64_t width, Words piece, std::string_view letters) {
        Tail &tail = tails[row];
        std::memcpy(result[row].text.letterRoom() + tail.letters, letters.data(), letters.size());
        appendBits(piece, cells.data() + tail.firstWord, tail.width);
        tail.letters += letters.size();
        tail.width += width;
    });
    for (std::size_t row = 0; row < names.size(); ++row)
        result[row].cells = OccupancyRow(
            Words(cells).subspan(tails[row].firstWord, bits::wordsFor(tails[row].width)));
    return result;
}

} // namespace TAMBO::formats
