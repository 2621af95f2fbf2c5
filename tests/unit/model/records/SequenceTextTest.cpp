// SPDX-License-Identifier: GPL-3.0-or-later
#include "SequenceText.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace TAMBO {
namespace SequenceTextTest {

TEST(SequenceText, HoldsNameAndLettersInOneAllocation)
{
    const SequenceText text("row1", "ACDEF");
    EXPECT_EQ(text.name(), "row1");
    EXPECT_EQ(text.letters(), "ACDEF");
    EXPECT_EQ(text.letterCount(), 5U);
    EXPECT_EQ(text.letter(2), 'D');
    EXPECT_EQ(text.bytes(), 8U + 4U + 5U);
}

TEST(SequenceText, LettersMayBeFilledIn)
{
    SequenceText text("row1", std::size_t{3});
    EXPECT_EQ(text.name(), "row1");
    EXPECT_EQ(text.letterCount(), 3U);
    std::string("ACD").copy(text.letterRoom(), 3);
    EXPECT_EQ(text.letters(), "ACD");
    EXPECT_EQ(text.name(), "row1");
}

TEST(SequenceText, WithoutACharacterTakesNoRoom)
{
    const SequenceText text("", "");
    EXPECT_EQ(text.name(), "");
    EXPECT_EQ(text.letters(), "");
    EXPECT_EQ(text.bytes(), 0U);
    EXPECT_EQ(SequenceText().letterCount(), 0U);
}

TEST(SequenceText, GetsAnotherNameAndKeepsItsLetters)
{
    SequenceText text("a", std::string(1000, 'W'));
    text.setName("a much longer name");
    EXPECT_EQ(text.name(), "a much longer name");
    EXPECT_EQ(text.letters(), std::string(1000, 'W'));
    text.setName("");
    EXPECT_EQ(text.name(), "");
    EXPECT_EQ(text.bytes(), 8U + 1000U);
}

TEST(SequenceText, MovesWithoutItsLettersMoving)
{
    SequenceText first("a", "AC");
    const char *const letters = first.letters().data();
    SequenceText second(std::move(first));
    EXPECT_EQ(second.letters().data(), letters);
    second = SequenceText("b", "");
    EXPECT_EQ(second.name(), "b");
    EXPECT_EQ(second.letters(), "");
}

} // namespace SequenceTextTest
} // namespace TAMBO
