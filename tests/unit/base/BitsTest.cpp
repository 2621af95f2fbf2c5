// SPDX-License-Identifier: GPL-3.0-or-later
#include "Bits.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>
#include <vector>

namespace BitsTest {

namespace bits = TAMBO::bits;
using bits::Word;

constexpr Word kAll = ~Word{0};

TEST(Bits, SoManyWordsAreNeeded)
{
    EXPECT_EQ(bits::wordsFor(0), 0U);
    EXPECT_EQ(bits::wordsFor(1), 1U);
    EXPECT_EQ(bits::wordsFor(64), 1U);
    EXPECT_EQ(bits::wordsFor(65), 2U);
}

TEST(Bits, LowOnesReachUpToAWholeWord)
{
    EXPECT_EQ(bits::low(0), 0U);
    EXPECT_EQ(bits::low(1), 1U);
    EXPECT_EQ(bits::low(63), kAll >> 1);
    EXPECT_EQ(bits::low(64), kAll);
    EXPECT_EQ(bits::low(1000), kAll);
    EXPECT_EQ(bits::without(kAll, 63), Word{1} << 63);
    EXPECT_EQ(bits::without(kAll, 64), 0U);
    EXPECT_EQ(bits::without(kAll, 0), kAll);
}

TEST(Bits, CountIsThatOfTheLibrary)
{
    std::mt19937_64 random(7);
    for (const Word word : {Word{0}, Word{1}, Word{1} << 63, kAll, kAll >> 1})
        EXPECT_EQ(bits::count(word), unsigned(std::popcount(word))) << word;
    for (int i = 0; i < 1000; ++i) {
        const Word word = random() & random();
        EXPECT_EQ(bits::count(word), unsigned(std::popcount(word))) << word;
    }
}

TEST(Bits, FirstLastAndRunKnowTheEndsOfAWord)
{
    EXPECT_EQ(bits::first(1), 0U);
    EXPECT_EQ(bits::first(Word{1} << 63), 63U);
    EXPECT_EQ(bits::last(1), 0U);
    EXPECT_EQ(bits::last(kAll), 63U);
    EXPECT_EQ(bits::run(0), 0U);
    EXPECT_EQ(bits::run(0b1011), 2U);
    EXPECT_EQ(bits::run(kAll), 64U);
}

TEST(Bits, AWordIsJoinedOfTwo)
{
    EXPECT_EQ(bits::joined(5, kAll, 0), 5U);
    EXPECT_EQ(bits::joined(Word{1} << 63, 1, 63), 3U);
    EXPECT_EQ(bits::joined(kAll, 0, 1), kAll >> 1);
}

TEST(Bits, OneIsSetAndFoundInItsWord)
{
    std::vector<Word> words(3);
    for (const std::size_t index : {0U, 63U, 64U, 191U})
        bits::set(words, index);
    EXPECT_EQ(words, (std::vector<Word>{Word{1} << 63 | 1, 1, Word{1} << 63}));
    EXPECT_TRUE(bits::isSet(words, 64));
    EXPECT_FALSE(bits::isSet(words, 65));
    EXPECT_TRUE(bits::isSet(words, 191));
}

TEST(Bits, EachIsVisitedInOrder)
{
    const std::vector<Word> words = {Word{1} << 63 | 1, 0, 6};
    std::vector<std::size_t> visited;
    bits::forEachIn(words, [&](std::size_t index) { visited.push_back(index); });
    EXPECT_EQ(visited, (std::vector<std::size_t>{0, 63, 129, 130}));
}

TEST(Bits, RunsAreVisitedAsPlaceAndLength)
{
    using Runs = std::vector<std::pair<unsigned, unsigned>>;
    const auto runsOf = [](Word word) {
        Runs runs;
        bits::forEachRun(
            word, [&](unsigned place, unsigned length) { runs.emplace_back(place, length); });
        return runs;
    };
    EXPECT_EQ(runsOf(0), Runs());
    EXPECT_EQ(runsOf(kAll), (Runs{{0, 64}}));
    EXPECT_EQ(runsOf(Word{7} << 61 | 0b110), (Runs{{1, 2}, {61, 3}}));
}

TEST(Bits, MasksCoverARangeWordByWord)
{
    using Masks = std::vector<std::pair<std::size_t, Word>>;
    const auto masksOf = [](std::size_t begin, std::size_t end) {
        Masks masks;
        bits::forEachMask(begin, end,
                          [&](std::size_t word, Word mask) { masks.emplace_back(word, mask); });
        return masks;
    };
    EXPECT_EQ(masksOf(5, 5), Masks());
    EXPECT_EQ(masksOf(1, 3), (Masks{{0, 6}}));
    EXPECT_EQ(masksOf(63, 129), (Masks{{0, Word{1} << 63}, {1, kAll}, {2, 1}}));
    EXPECT_EQ(masksOf(64, 128), (Masks{{1, kAll}}));
}

TEST(Bits, SameBytesHaveTheirHighestBit)
{
    EXPECT_EQ(bits::sameBytes(0, 0), 0x8080808080808080U);
    EXPECT_EQ(bits::sameBytes(0x0102030405060708, 0x01ff03ff05ff0788), 0x8000800080008000U);
    EXPECT_EQ(bits::sameBytes(0x80, 0), 0x8080808080808000U);
}

} // namespace BitsTest
