// SPDX-License-Identifier: GPL-3.0-or-later
#include "Text.h"

#include <gtest/gtest.h>

#include <limits>

namespace TextTest {

using namespace TAMBO;
using namespace std::string_view_literals;

TEST(Text, LettersAndDigitsAreThoseOfAscii)
{
    std::string letters;
    std::string digits;
    std::string blanks;
    for (int byte = 0; byte < 256; ++byte) {
        const char character = char(byte);
        if (isLetter(character))
            letters += character;
        if (isDigit(character))
            digits += character;
        if (isBlank(character))
            blanks += character;
        EXPECT_EQ(isLetter(character), isSmallLetter(character) || isCapitalLetter(character));
        EXPECT_EQ(isControl(character), byte < 32 || byte == 127) << byte;
    }
    EXPECT_EQ(letters, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(digits, "0123456789");
    EXPECT_EQ(blanks, "\t\n\v\f\r ");
}

TEST(Text, CaseOfOtherCharactersStays)
{
    EXPECT_EQ(lowerCase("A[Z@\xc3\x84"), "a[z@\xc3\x84");
    EXPECT_EQ(upperCase("a{z`\xc3\xa4"), "A{Z`\xc3\xa4");
    EXPECT_TRUE(isSameWithoutCase("Stockholm", "sTOCKHOLM"));
    EXPECT_FALSE(isSameWithoutCase("a", "ab"));
    EXPECT_FALSE(isSameWithoutCase("@", "`"));
    EXPECT_TRUE(startsWithoutCase("CLUSTAL W", "clustal"));
    EXPECT_FALSE(startsWithoutCase("clu", "clustal"));
    EXPECT_TRUE(endsWithoutCase("x.GZ", ".gz"));
    EXPECT_FALSE(endsWithoutCase("gz", ".gz"));
}

TEST(Text, BlanksGoFromBothEnds)
{
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed(" \t\r\n"), "");
    EXPECT_EQ(trimmed("\va b\f"), "a b");
}

TEST(Text, WordsAndLinesAreTakenFromTheStart)
{
    std::string_view text = "  one\ttwo ";
    EXPECT_EQ(takeWord(text), "one");
    EXPECT_EQ(takeWord(text), "two");
    EXPECT_EQ(takeWord(text), "");
    EXPECT_EQ(wordsOf(" a  bc\n"), (std::vector<std::string_view>{"a", "bc"}));
    EXPECT_TRUE(wordsOf(" \n").empty());

    text = "first\n\nlast";
    EXPECT_EQ(takeLine(text), "first");
    EXPECT_EQ(takeLine(text), "");
    EXPECT_EQ(takeLine(text), "last");
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(takeLine(text), "");
}

TEST(Text, DirectoriesOfEitherKindGo)
{
    EXPECT_EQ(withoutDirectories("1abc.pdb"), "1abc.pdb");
    EXPECT_EQ(withoutDirectories("/a/b\\1abc.pdb"), "1abc.pdb");
    EXPECT_EQ(withoutDirectories("a/"), "");
    EXPECT_EQ(withoutDirectories(""), "");
}

TEST(Text, NumbersAreReadAsFarAsTheyGo)
{
    std::string_view text = "12ab";
    EXPECT_EQ(takeNumber<unsigned>(text), 12U);
    EXPECT_EQ(text, "ab");
    EXPECT_EQ(takeNumber<unsigned>(text), std::nullopt);
    EXPECT_EQ(text, "ab");

    EXPECT_EQ(numberIn<int>("-7"), -7);
    EXPECT_EQ(numberIn<int>("2147483647"), std::numeric_limits<int>::max());
    for (const char *none : {"", "x", "7x", " 7", "+7", "2147483648"})
        EXPECT_EQ(numberIn<int>(none), std::nullopt) << none;
    EXPECT_TRUE(isAllDigits("0123456789"));
    EXPECT_FALSE(isAllDigits("1-2"));
}

TEST(Text, OneIsCountedInTheSingular)
{
    EXPECT_EQ(counted(0, "row"), "0 rows");
    EXPECT_EQ(counted(1, "row"), "1 row");
    EXPECT_EQ(counted(1, "helix is", "helices are"), "1 helix is");
    EXPECT_EQ(counted(2, "helix is", "helices are"), "2 helices are");
}

TEST(Text, OnlyWholeCharactersAreUtf8)
{
    for (const std::string_view text : {"", "a", "\x7f", "\xc2\x80", "\xe0\xa0\x80", "\xed\x9f\xbf",
                                        "\xf0\x90\x80\x80", "\xf4\x8f\xbf\xbf"})
        EXPECT_TRUE(isUtf8(text)) << text;
    // Alone, cut, overlong, surrogate, beyond the last, no lead byte.
    for (const std::string_view text :
         {"\x80", "\xc3", "\xe2\x82", "\xf0\x90\x80", "\xc0\x80", "\xc1\xbf", "\xe0\x9f\xbf",
          "\xed\xa0\x80", "\xf0\x8f\xbf\xbf", "\xf4\x90\x80\x80", "\xf5\x80\x80\x80", "\xff",
          "\xc3("})
        EXPECT_FALSE(isUtf8(text)) << text;
    EXPECT_TRUE(isUtf8("\0x"sv));
}

TEST(Text, CharactersAreCountedNotBytes)
{
    EXPECT_EQ(characterCount(""), 0U);
    EXPECT_EQ(characterCount("a\xc3\xa4\xe2\x82\xac"), 3U);
}

TEST(Text, ACharacterIsNotCutInTwo)
{
    EXPECT_EQ(shortened("abc", 3), "abc");
    EXPECT_EQ(shortened("abc", 2), "ab");
    EXPECT_EQ(shortened("a\xe2\x82\xac", 4), "a\xe2\x82\xac");
    EXPECT_EQ(shortened("a\xe2\x82\xac", 3), "a");
    EXPECT_EQ(shortened("\xe2\x82\xac", 2), "");
    EXPECT_EQ(shortened("abc", 0), "");
}

} // namespace TextTest
