// SPDX-License-Identifier: GPL-3.0-or-later
#include "FormatText.h"

#include <gtest/gtest.h>

namespace TAMBO::formats {
namespace FormatTextTest {

TEST(FormatText, CharactersThatCannotBeShownAreShownAsBytes)
{
    EXPECT_EQ(shown('1'), "\"1\"");
    EXPECT_EQ(shown(' '), "byte 0x20");
    EXPECT_EQ(shown('\0'), "byte 0x00");
    EXPECT_EQ(shown('\xff'), "byte 0xff");
}

TEST(FormatText, AWordOfACommandIsQuotedWhereTheShellWantsIt)
{
    EXPECT_EQ(shellWord("/home/me/out-1.d"), "/home/me/out-1.d");
    EXPECT_EQ(shellWord("Gl\xc3\xbc"
                        "ck"),
              "Gl\xc3\xbc"
              "ck");
    EXPECT_EQ(shellWord("my models"), "'my models'");
    EXPECT_EQ(shellWord("it's $HOME"), "'it'\\''s $HOME'");
    EXPECT_EQ(shellWord("~me"), "'~me'");
    EXPECT_EQ(shellWord(""), "''");
}

TEST(FormatText, LongTextIsCutBetweenCharacters)
{
    EXPECT_EQ(shown(std::string_view("  short \nsecond line")), "\"short\"");
    std::string text;
    for (int i = 0; i < 39; ++i)
        text += 'a';
    EXPECT_EQ(shown(text + "\xc3\xa4 and more"), '"' + text + "...\"");
}

TEST(FormatText, TextThatIsNoUtf8IsTakenForLatin1)
{
    EXPECT_EQ(cleanText("\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80"),
              "\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80");
    EXPECT_EQ(cleanText("a\xe4"), "a\xc3\xa4");
    // Overlong, surrogate, beyond the last code point, cut short.
    EXPECT_EQ(cleanText("\xc0\xaf"), "\xc3\x80\xc2\xaf");
    EXPECT_EQ(cleanText("\xed\xa0\x80"), "\xc3\xad\xc2\xa0\xc2\x80");
    EXPECT_EQ(cleanText("\xf5\x80\x80\x80"), "\xc3\xb5\xc2\x80\xc2\x80\xc2\x80");
    EXPECT_EQ(cleanText("\xe2\x82"), "\xc3\xa2\xc2\x82");
}

TEST(FormatText, ControlCharactersBecomeBlanks)
{
    EXPECT_EQ(cleanText(std::string_view("a\tb\0c\x7f", 6)), "a b c ");
}

TEST(FormatText, BaseNameLosesItsLastExtensionAndGz)
{
    EXPECT_EQ(baseName("d1yeb__.pdb.gz"), "d1yeb__");
    EXPECT_EQ(baseName("x.ali"), "x");
    EXPECT_EQ(baseName("X.PDB.GZ"), "X");
    EXPECT_EQ(baseName("my.family.fasta"), "my.family");
    EXPECT_EQ(baseName("plain"), "plain");
    EXPECT_EQ(baseName(".hidden"), ".hidden");
    EXPECT_EQ(baseName(".gz"), ".gz");
}

} // namespace FormatTextTest
} // namespace TAMBO::formats
