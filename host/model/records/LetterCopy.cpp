// SPDX-License-Identifier: GPL-3.0-or-later
#include "LetterCopy.h"

#include "Bits.h"

#include <array>
#include <cstring>

#if defined(__x86_64__) && defined(__GNUC__)
#define TAMBO_HAS_BYTE_SHUFFLE
#include <tmmintrin.h>
#endif

namespace TAMBO {

namespace {

constexpr unsigned kCopyBlock = 64;

#ifdef TAMBO_HAS_BYTE_SHUFFLE

// For each pattern of letters among eight characters, their places.
struct Places
{
    std::array<std::array<std::uint8_t, 8>, 256> order{};
    std::array<std::uint8_t, 256> count{};
};

constexpr Places makePlaces() noexcept
{
    Places places;
    for (unsigned pattern = 0; pattern < 256; ++pattern)
        for (std::uint8_t place = 0; place < 8; ++place)
            if ((pattern >> place & 1U) != 0)
                places.order[pattern][places.count[pattern]++] = place;
    return places;
}

constexpr Places kPlaces = makePlaces();

// Without a branch on the pattern: real rows change between letters and gaps too often to guess.
__attribute__((target("ssse3"))) char *shuffleLetters(char *to, const char *text,
                                                      std::uint64_t letters) noexcept
{
    if (letters == ~std::uint64_t{}) {
        std::memcpy(to, text, kCopyBlock);
        return to + kCopyBlock;
    }
    for (unsigned place = 0; place < kCopyBlock; place += 8, letters >>= 8) {
        const std::size_t pattern = letters & 0xff;
        const __m128i cells = _mm_loadl_epi64(reinterpret_cast<const __m128i *>(text + place));
        const __m128i order =
            _mm_loadl_epi64(reinterpret_cast<const __m128i *>(kPlaces.order[pattern].data()));
        _mm_storel_epi64(reinterpret_cast<__m128i *>(to), _mm_shuffle_epi8(cells, order));
        to += kPlaces.count[pattern];
    }
    return to;
}

#endif

using Copy = char *(*)(char *, const char *, std::uint64_t) noexcept;

Copy fastestCopy() noexcept
{
#ifdef TAMBO_HAS_BYTE_SHUFFLE
    if (__builtin_cpu_supports("ssse3"))
        return shuffleLetters;
#endif
    return copyLetterRuns;
}

const Copy kFastestCopy = fastestCopy();

} // namespace

char *copyLetters(char *to, const char *text, std::uint64_t letters) noexcept
{
    return kFastestCopy(to, text, letters);
}

// Each run is copied as one or two pieces of fixed size.
char *copyLetterRuns(char *to, const char *text, std::uint64_t letters) noexcept
{
    bits::forEachRun(letters, [&](unsigned start, unsigned length) {
        std::memcpy(to, text + start, kCopyReadSlack);
        if (length > kCopyReadSlack)
            std::memcpy(to + kCopyReadSlack, text + start + kCopyReadSlack, kCopyReadSlack);
        to += length;
    });
    return to;
}

} // namespace TAMBO
