// SPDX-License-Identifier: GPL-3.0-or-later
#include "LetterSpread.h"

#include "Bits.h"

#include <array>
#include <cstring>

#if defined(__x86_64__) && defined(__GNUC__)
#define TAMBO_HAS_BYTE_SPREAD
#include <tmmintrin.h>
#endif

namespace TAMBO {

namespace {

#ifdef TAMBO_HAS_BYTE_SPREAD

// Of eight columns.
constexpr unsigned kGroup = 8;

// For each pattern of letters among eight columns, which letter comes to each; the highest bit
// stands for a gap.
using LetterPlaces = std::array<std::array<std::uint8_t, kGroup>, 256>;

constexpr LetterPlaces makeLetterPlaces() noexcept
{
    LetterPlaces places{};
    for (unsigned pattern = 0; pattern < places.size(); ++pattern) {
        std::uint8_t letter = 0;
        for (unsigned column = 0; column < kGroup; ++column)
            places[pattern][column] = (pattern >> column & 1U) != 0 ? letter++ : 0x80U;
    }
    return places;
}

constexpr LetterPlaces kLetterPlaces = makeLetterPlaces();

// How many letters stand before each group, in the byte of that group, and in the last one all of
// those of the others.
constexpr bits::Word countsUpTo(bits::Word cells) noexcept
{
    cells -= cells >> 1 & 0x5555555555555555U;
    cells = (cells & 0x3333333333333333U) + (cells >> 2 & 0x3333333333333333U);
    cells = (cells + (cells >> 4)) & 0x0f0f0f0f0f0f0f0fU;
    return cells * 0x0101010101010101U;
}

// No group waits for the one before it: all of their first letters are known from the start.
__attribute__((target("ssse3"))) const char *shuffleToColumns(char *to, const char *letters,
                                                              std::uint64_t cells, unsigned columns,
                                                              char gap) noexcept
{
    const bits::Word counts = countsUpTo(cells);
    const __m128i gaps = _mm_set1_epi8(gap);
    const __m128i none = _mm_setzero_si128();
    bits::Word before = counts << kGroup;
    for (unsigned column = 0; column < columns; column += kGroup) {
        const char *const from = letters + (before & 0xff);
        const __m128i order =
            _mm_loadl_epi64(reinterpret_cast<const __m128i *>(kLetterPlaces[cells & 0xff].data()));
        const __m128i placed =
            _mm_shuffle_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i *>(from)), order);
        const __m128i open = _mm_and_si128(_mm_cmplt_epi8(order, none), gaps);
        _mm_storel_epi64(reinterpret_cast<__m128i *>(to + column), _mm_or_si128(placed, open));
        cells >>= kGroup;
        before >>= kGroup;
    }
    return letters + (counts >> (bits::kPerWord - kGroup));
}

#endif

using Spread = const char *(*)(char *, const char *, std::uint64_t, unsigned, char) noexcept;

Spread fastestSpread() noexcept
{
#ifdef TAMBO_HAS_BYTE_SPREAD
    if (__builtin_cpu_supports("ssse3"))
        return shuffleToColumns;
#endif
    return spreadLetterRuns;
}

const Spread kFastestSpread = fastestSpread();

} // namespace

const char *spreadLetters(char *to, const char *letters, std::uint64_t cells, unsigned columns,
                          char gap) noexcept
{
    return kFastestSpread(to, letters, cells, columns, gap);
}

const char *spreadLetterRuns(char *to, const char *letters, std::uint64_t cells, unsigned columns,
                             char gap) noexcept
{
    std::memset(to, gap, columns);
    bits::forEachRun(cells, [&](unsigned place, unsigned length) {
        std::memcpy(to + place, letters, length);
        letters += length;
    });
    return letters;
}

} // namespace TAMBO
