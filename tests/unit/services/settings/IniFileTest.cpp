// SPDX-License-Identifier: GPL-3.0-or-later
#include "IniFile.h"

#include <gmock/gmock.h>

using namespace TAMBO::services;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace IniFileTest {

IniFile parsed(std::string_view text)
{
    auto file = IniFile::parse(text, "x.ini");
    EXPECT_TRUE(file.has_value()) << (file ? "" : file.error().message());
    return file ? file.value() : IniFile();
}

std::string failureOf(std::string_view text)
{
    const auto file = IniFile::parse(text, "x.ini");
    return file ? "no failure" : file.error().message();
}

TEST(IniFile, ReadsValuesBySectionAndKey)
{
    const IniFile file = parsed("[A]\nkey = one\n[B]\nkey=two = 2\n");
    EXPECT_EQ(file.value("A", "key"), "one");
    EXPECT_EQ(file.value("B", "key"), "two = 2");
    EXPECT_FALSE(file.value("A", "other"));
    EXPECT_FALSE(file.value("C", "key"));
    EXPECT_FALSE(file.value("a", "Key")) << "names are case-sensitive";
}

TEST(IniFile, AnEmptyValueIsThere)
{
    const IniFile file = parsed("[A]\nkey =\n");
    EXPECT_EQ(file.value("A", "key"), "");
}

TEST(IniFile, OverlooksBlanksCommentsAndLineEndsOfOtherSystems)
{
    const IniFile file = parsed("\xef\xbb\xbf# hello\r\n[ A ]\r\n\r\n  ; note\r\nkey\t=  a b \r\n");
    EXPECT_EQ(file.value("A", "key"), "a b");
}

TEST(IniFile, AValueGoesOnInLinesThatStartWithABlank)
{
    const IniFile file = parsed("[A]\nlist = 1;\n    2;\n\t3\nnext = 4\n");
    EXPECT_EQ(file.value("A", "list"), "1; 2; 3");
    EXPECT_EQ(file.value("A", "next"), "4");
}

TEST(IniFile, QuotesKeepBlanksAndLineEnds)
{
    const IniFile file = parsed("[A]\nkey = \"  a \\\"b\\\"\\n\\\\c \"\n");
    EXPECT_EQ(file.value("A", "key"), "  a \"b\"\n\\c ");
}

TEST(IniFile, TheLastOfTwoEqualKeysCounts)
{
    const IniFile file = parsed("[A]\nkey = 1\n[B]\n[A]\nkey = 2\n");
    EXPECT_EQ(file.value("A", "key"), "2");
    EXPECT_THAT(file.keys("A"), ElementsAre("key"));
}

TEST(IniFile, MalformedTextIsNamedByFileLineAndCause)
{
    EXPECT_EQ(failureOf("[A]\nkey = 1\nnonsense\n"), "x.ini:3: expected [section] or key = value");
    EXPECT_EQ(failureOf("[A]\n= 1\n"), "x.ini:2: expected [section] or key = value");
    EXPECT_EQ(failureOf("[A\n"), "x.ini:1: expected [section]");
    EXPECT_EQ(failureOf("[]\n"), "x.ini:1: expected [section]");
    EXPECT_EQ(failureOf("key = 1\n"), "x.ini:1: a value before the first [section]");
    EXPECT_EQ(failureOf("[A]\n  1\n"), "x.ini:2: a continued value without a key above it");
    EXPECT_EQ(failureOf(std::string_view("[A]\nk = \0\n", 10)), "x.ini:2: not a text file");
}

TEST(IniFile, AChangeKeepsCommentsAndOrder)
{
    IniFile file = parsed("# mine\n[A]\nold = 1\nlist = 1;\n  2\n\n# about B\n[B]\nkey = 2\n");
    file.setValue("A", "old", "5");
    file.setValue("A", "new", "6");
    file.setValue("C", "key", "7");
    file.remove("B", "key");
    EXPECT_EQ(file.text(), "# mine\n[A]\nold = 5\nlist = 1;\n  2\nnew = 6\n\n# about B\n[B]\n"
                           "[C]\nkey = 7\n");
}

TEST(IniFile, TellsItsSectionsAndTheLinesOfItsValues)
{
    IniFile file = parsed("# note\n[A]\none = 1\n[B]\n[C]\nx = 1\n  2\ny = 3\n[A]\none = 4\n");
    EXPECT_THAT(file.sections(), ElementsAre("A", "C"));
    EXPECT_EQ(file.lineOf("A", "one"), 10U) << "the last one counts";
    EXPECT_EQ(file.lineOf("C", "x"), 6U);
    EXPECT_EQ(file.lineOf("C", "y"), 8U);
    EXPECT_EQ(file.lineOf("C", "z"), 0U);
    file.setValue("C", "y", "4");
    EXPECT_EQ(file.lineOf("C", "y"), 0U);
}

TEST(IniFile, WhatWasSetIsReadBackTheSame)
{
    const std::vector<std::string> values = {
        "plain",       "",    "  blanks  ", "two\nlines", "\"quoted\"",
        "back\\slash", "\\n", "a=b;c|d#e",  " \\ \" \n",  "[no section]"};
    IniFile file;
    for (std::size_t i = 0; i < values.size(); ++i)
        file.setValue("A", "key " + std::to_string(i), values[i]);
    const IniFile again = parsed(file.text());
    for (std::size_t i = 0; i < values.size(); ++i)
        EXPECT_EQ(again.value("A", "key " + std::to_string(i)), values[i]) << file.text();
}

} // namespace IniFileTest
