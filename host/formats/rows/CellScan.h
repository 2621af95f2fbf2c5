// SPDX-License-Identifier: GPL-3.0-or-later
// Sorts the characters of an alignment row into residues and gaps, 64 at a time.
#pragma once

#include <cstdint>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace TAMBO::formats {

// One bit a character, the first character in the lowest bit.
struct CellMasks
{
    // A to Z in either case.
    std::uint64_t letters = 0;
    std::uint64_t lowerCase = 0;
    // '-'
    std::uint64_t dashes = 0;
    // '.' and '~'
    std::uint64_t otherGaps = 0;
};

constexpr unsigned kScanWidth = 64;

// Reads 64 characters from there on. For machines without vector instructions that we know.
[[nodiscard]] CellMasks scanCellsOneByOne(const char *text) noexcept;

// The same; inline, since readers spend their time here.
[[nodiscard]] inline CellMasks scanCells(const char *text) noexcept
{
#ifdef __SSE2__
    const auto bits = [](__m128i cells, unsigned place) {
        return static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(cells))) << place;
    };
    CellMasks masks;
    for (unsigned place = 0; place < kScanWidth; place += 16) {
        const __m128i cells = _mm_loadu_si128(reinterpret_cast<const __m128i *>(text + place));
        // With the case bit set, letters are the bytes from 'a' on that are less than 26 above it.
        const __m128i above =
            _mm_sub_epi8(_mm_or_si128(cells, _mm_set1_epi8(0x20)), _mm_set1_epi8('a'));
        const __m128i letters = _mm_cmpeq_epi8(_mm_min_epu8(above, _mm_set1_epi8(25)), above);
        const __m128i lowerCase = _mm_and_si128(letters, _mm_slli_epi16(cells, 2));
        const __m128i dashes = _mm_cmpeq_epi8(cells, _mm_set1_epi8('-'));
        const __m128i others = _mm_or_si128(_mm_cmpeq_epi8(cells, _mm_set1_epi8('.')),
                                            _mm_cmpeq_epi8(cells, _mm_set1_epi8('~')));
        masks.letters |= bits(letters, place);
        masks.lowerCase |= bits(lowerCase, place);
        masks.dashes |= bits(dashes, place);
        masks.otherGaps |= bits(others, place);
    }
    return masks;
#else
    return scanCellsOneByOne(text);
#endif
}

} // namespace TAMBO::formats
