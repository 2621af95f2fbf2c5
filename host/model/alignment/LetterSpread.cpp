// SPDX-License-Identifier: GPL-3.0-or-later
#include "LetterSpread.h"

#include "Bits.h"

#include <array>

#if defined(__x86_64__) && defined(__GNUC__)
#define TAMBO_SHUFFLES_BYTES
#include <tmmintrin.h>
#endif

namespace TAMBO {

namespace {

#ifdef TAMBO_SHUFFLES_BYTES

// For each pattern of letters in eight columns, which of the letters stands where.
struct SpreadPlaces
{
    std::array<std::array<std::uint8_t, 8>, 256> source{};
    std::array<std::uint8_t, 256> count{};
};

constexpr SpreadPlaces makeSpreadPlaces() noexcept
{
    SpreadPlaces places;
    for (unsigned pattern = 0; pattern < 256; ++pattern) {
        for (unsigned column = 0; column < 8; ++column) {
            const bool isLetter = (pattern >> column & 1U) != 0;
            // With the highest bit the instruction gives 0.
            places.source[pattern][column] = isLetter ? places.count[pattern] : 0x80;
            places.count[pattern] += isLetter ? 1 : 0;
        }
    }
    return places;
}

constexpr SpreadPlaces kSpreadPlaces = makeSpreadPlaces();

__attribute__((target("ssse3"))) const std::uint8_t *
shuffleToColumns(std::uint8_t *to, const std::uint8_t *letters, std::uint64_t columns) noexcept
{
    for (unsigned place = 0; place < bits::kPerWord; place += 8, columns >>= 8) {
        const std::size_t pattern = columns & 0xff;
        const __m128i text = _mm_loadl_epi64(reinterpret_cast<const __m128i *>(letters));
        const __m128i source = _mm_loadl_epi64(
            reinterpret_cast<const __m128i *>(kSpreadPlaces.source[pattern].data()));
        _mm_storel_epi64(reinterpret_cast<__m128i *>(to + place), _mm_shuffle_epi8(text, source));
        letters += kSpreadPlaces.count[pattern];
    }
    return letters;
}

#endif

using Spread = const std::uint8_t *(*)(std::uint8_t *, const std::uint8_t *,
                                       std::uint64_t) noexcept;

Spread fastestSpread() noexcept
{
#ifdef TAMBO_SHUFFLES_BYTES
    if (__builtin_cpu_supports("ssse3"))
        return shuffleToColumns;
#endif
    return spreadEachLetter;
}

const Spread kFastestSpread = fastestSpread();

} // namespace

const std::uint8_t *spreadLetters(std::uint8_t *to, const std::uint8_t *letters,
                                  std::uint64_t columns) noexcept
{
    return kFastestSpread(to, letters, columns);
}

const std::uint8_t *spreadEachLetter(std::uint8_t *to, const std::uint8_t *letters,
                                     std::uint64_t columns) noexcept
{
    for (unsigned place = 0; place < bits::kPerWord; ++place, columns >>= 1) {
        const bool isLetter = (columns & 1) != 0;
        to[place] = isLetter ? *letters : 0;
        letters += isLetter ? 1 : 0;
    }
    return letters;
}

} // namespace TAMBO
