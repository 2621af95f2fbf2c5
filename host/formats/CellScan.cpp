// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellScan.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace TAMBO::formats {

#ifdef __SSE2__

namespace {

std::uint64_t bits(__m128i cells, unsigned place) noexcept
{
    return static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(cells))) << place;
}

} // namespace

CellMasks scanCells(const char *text) noexcept
{
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
}

#else

CellMasks scanCells(const char *text) noexcept
{
    return scanCellsOneByOne(text);
}

#endif

CellMasks scanCellsOneByOne(const char *text) noexcept
{
    CellMasks masks;
    for (unsigned place = 0; place < kScanWidth; ++place) {
        const char cell = text[place];
        const bool lowerCase = cell >= 'a' && cell <= 'z';
        const bool letter = lowerCase || (cell >= 'A' && cell <= 'Z');
        masks.letters |= std::uint64_t{letter} << place;
        masks.lowerCase |= std::uint64_t{lowerCase} << place;
        masks.dashes |= std::uint64_t{cell == '-'} << place;
        masks.otherGaps |= std::uint64_t{cell == '.' || cell == '~'} << place;
    }
    return masks;
}

} // namespace TAMBO::formats
