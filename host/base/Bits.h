// SPDX-License-Identifier: GPL-3.0-or-later
// Arithmetic on rows of bits that stand in 64-bit words: bit i % 64 of word i / 64 is number i.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace TAMBO::bits {

using Word = std::uint64_t;

constexpr std::size_t kPerWord = 64;

constexpr std::size_t wordOf(std::size_t index) noexcept
{
    return index / kPerWord;
}

constexpr unsigned placeOf(std::size_t index) noexcept
{
    return index % kPerWord;
}

// The words that so many bits need.
constexpr std::size_t wordsFor(std::size_t count) noexcept
{
    return (count + kPerWord - 1) / kPerWord;
}

constexpr Word one(std::size_t index) noexcept
{
    return Word{1} << placeOf(index);
}

// The first bits of a word; all of them when there are fewer.
constexpr Word low(std::size_t count) noexcept
{
    return count >= kPerWord ? ~Word{0} : (Word{1} << count) - 1;
}

// The bits [begin, end) of a word; begin is below 64.
constexpr Word between(std::size_t begin, std::size_t end) noexcept
{
    return low(end) & ~low(begin);
}

// Arithmetic instead of the library's bit count, which calls a table lookup on processors that are
// not known to have an instruction for it.
constexpr std::uint32_t count(Word bits) noexcept
{
    bits -= bits >> 1 & 0x5555555555555555U;
    bits = (bits & 0x3333333333333333U) + (bits >> 2 & 0x3333333333333333U);
    bits = (bits + (bits >> 4)) & 0x0f0f0f0f0f0f0f0fU;
    return static_cast<std::uint32_t>(bits * 0x0101010101010101U >> 56);
}

// Of the lowest and the highest bit of a word that is not 0.
constexpr unsigned first(Word bits) noexcept
{
    return static_cast<unsigned>(std::countr_zero(bits));
}

constexpr unsigned last(Word bits) noexcept
{
    return kPerWord - 1 - static_cast<unsigned>(std::countl_zero(bits));
}

// How many bits are set from the lowest one on.
constexpr unsigned run(Word bits) noexcept
{
    return static_cast<unsigned>(std::countr_one(bits));
}

// Without its lowest bits; none are left of 64 and more.
constexpr Word without(Word bits, std::size_t lowest) noexcept
{
    return bits & ~low(lowest);
}

// The word that begins with bit shift of one word and goes on in the next; shift is below 64.
constexpr Word joined(Word word, Word next, unsigned shift) noexcept
{
    return shift == 0 ? word : word >> shift | next << (kPerWord - shift);
}

template <typename Words> constexpr bool isSet(const Words &words, std::size_t index) noexcept
{
    return (words[wordOf(index)] >> placeOf(index) & 1U) != 0;
}

template <typename Words> constexpr void set(Words &words, std::size_t index) noexcept
{
    words[wordOf(index)] |= one(index);
}

// Calls visit(index) for the bits that are set, in ascending order. begin is that of the lowest
// bit.
template <typename Visit> constexpr void forEach(Word word, std::size_t begin, Visit &&visit)
{
    for (; word != 0; word &= word - 1)
        visit(begin + first(word));
}

template <typename Words, typename Visit>
constexpr void forEachIn(const Words &words, Visit &&visit)
{
    for (std::size_t i = 0; i < words.size(); ++i)
        forEach(words[i], i * kPerWord, visit);
}

// Calls visit(place, length) for the runs of bits that are set.
template <typename Visit> constexpr void forEachRun(Word word, Visit &&visit)
{
    while (word != 0) {
        const unsigned place = first(word);
        const unsigned length = run(word >> place);
        visit(place, length);
        word = without(word, place + length);
    }
}

// Calls visit(word, mask) for the words that the bits [begin, end) touch.
template <typename Visit>
constexpr void forEachMask(std::size_t begin, std::size_t end, Visit &&visit)
{
    while (begin < end) {
        const std::size_t word = wordOf(begin);
        const std::size_t stop = end < (word + 1) * kPerWord ? end : (word + 1) * kPerWord;
        visit(word, low(stop - begin) << placeOf(begin));
        begin = stop;
    }
}

// The highest bit of each byte that is the same in both words.
constexpr Word sameBytes(Word a, Word b) noexcept
{
    constexpr Word kLow = 0x7f7f7f7f7f7f7f7f;
    const Word different = a ^ b;
    return ~(((different & kLow) + kLow) | different | kLow);
}

} // namespace TAMBO::bits
