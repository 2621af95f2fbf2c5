// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextReader.h"

#include "TestFiles.h"

#include <gmock/gmock.h>

#include <random>

namespace TAMBO::formats {
namespace TextReaderTest {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const ReadProgress kNoProgress;

std::vector<std::string> linesOf(std::string_view text)
{
    const TemporaryFile file("x", text);
    ByteSource source(file.path(), kNoProgress);
    TextReader reader(source);
    std::vector<std::string> lines;
    while (reader.nextLine()) {
        lines.push_back(reader.restOfLine());
        EXPECT_EQ(reader.line(), lines.size());
    }
    EXPECT_TRUE(reader.outcome());
    return lines;
}

TEST(TextReader, WordsEndAtBlanksAndAtTheLine)
{
    const TemporaryFile file("x", "  one\ttwo \n\n \nthree");
    ByteSource source(file.path(), kNoProgress);
    TextReader reader(source);
    std::vector<std::vector<std::string>> lines;
    while (reader.nextLine()) {
        lines.emplace_back();
        for (std::string word; !(word = reader.nextWord()).empty();)
            lines.back().push_back(word);
    }
    EXPECT_THAT(lines,
                ElementsAre(ElementsAre("one", "two"), IsEmpty(), IsEmpty(), ElementsAre("three")));
}

TEST(TextReader, WordsAreWholeAcrossTheEdgesOfTheBuffer)
{
    const std::size_t buffer = std::size_t{1} << 18U;
    for (std::size_t length = buffer - 8; length <= buffer + 3; ++length) {
        const TemporaryFile file("x", "a" + std::string(length, ' ') + "word  rest\nnext");
        ByteSource source(file.path(), kNoProgress);
        TextReader reader(source);
        ASSERT_TRUE(reader.nextLine());
        EXPECT_EQ(reader.nextWord(), "a");
        EXPECT_EQ(reader.nextWord(), "word");
        EXPECT_EQ(reader.restOfLine(), "  rest");
        ASSERT_TRUE(reader.nextLine());
        EXPECT_EQ(reader.nextWord(), "next");
        EXPECT_EQ(reader.nextWord(), "");
    }
}

TEST(TextReader, EveryLineEndIsOne)
{
    EXPECT_THAT(linesOf("a\nb\r\nc\rd\n\r\n\re"), ElementsAre("a", "b", "c", "d", "", "", "e"));
    EXPECT_THAT(linesOf("a\n"), ElementsAre("a"));
    EXPECT_THAT(linesOf("a"), ElementsAre("a"));
    EXPECT_THAT(linesOf("\n"), ElementsAre(""));
    EXPECT_THAT(linesOf(""), IsEmpty());
}

TEST(TextReader, LineEndsAreOneAcrossTheEdgesOfTheBuffer)
{
    const std::size_t buffer = std::size_t{1} << 18U;
    for (std::size_t length = buffer - 3; length <= buffer + 3; ++length) {
        const std::vector<std::string> lines = linesOf(std::string(length, 'a') + "\r\nb\r\n" +
                                                       std::string(buffer - 4, 'c') + "\r\nd");
        ASSERT_EQ(lines.size(), 4U);
        EXPECT_EQ(lines[0].size(), length);
        EXPECT_EQ(lines[1], "b");
        EXPECT_EQ(lines[2].size(), buffer - 4);
        EXPECT_EQ(lines[3], "d");
    }
}

TEST(TextReader, ByteOrderMarkIsLeftOutAtTheStartOnly)
{
    EXPECT_THAT(linesOf("\xef\xbb\xbf"
                        "a\n\xef\xbb\xbf"
                        "b"),
                ElementsAre("a", "\xef\xbb\xbf"
                                 "b"));
}

TEST(TextReader, RestOfALineMayBeLeftUnread)
{
    const TemporaryFile file("x", "first line\n\nthird");
    ByteSource source(file.path(), kNoProgress);
    TextReader reader(source);
    ASSERT_TRUE(reader.nextLine());
    EXPECT_EQ(reader.ahead().substr(0, 5), "first");
    reader.skip(5);
    ASSERT_TRUE(reader.nextLine());
    EXPECT_EQ(reader.ahead().front(), '\n');
    ASSERT_TRUE(reader.nextLine());
    EXPECT_EQ(reader.restOfLine(), "third");
    EXPECT_FALSE(reader.nextLine());
    EXPECT_EQ(reader.line(), 3U);
}

TEST(TextReader, SkippingToTheEndOfALineLeavesTheNextOneWhole)
{
    const TemporaryFile file("x", "ab\ncd\n");
    ByteSource source(file.path(), kNoProgress);
    TextReader reader(source);
    ASSERT_TRUE(reader.nextLine());
    reader.skip(2);
    ASSERT_TRUE(reader.nextLine());
    EXPECT_EQ(reader.restOfLine(), "cd");
}

TEST(TextReader, HeadLeavesTheTextToBeRead)
{
    const TemporaryFile file("x", "ab\r\ncd");
    ByteSource source(file.path(), kNoProgress);
    TextReader reader(source);
    EXPECT_EQ(reader.head(), "ab\ncd");
    EXPECT_EQ(reader.restOfText(), "ab\ncd");
}

TEST(TextReader, RestOfTextIsTheTextWithItsLineEndsMadeOne)
{
    std::mt19937 random(5);
    std::string text;
    std::string expected;
    while (text.size() < 1000000) {
        const std::string line(random() % 300, 'x');
        text += line + (random() % 2 == 0 ? "\r\n" : "\r");
        expected += line + '\n';
    }
    const TemporaryFile file("x", text + "end");
    ByteSource source(file.path(), kNoProgress);
    TextReader reader(source);
    EXPECT_EQ(reader.restOfText(), expected + "end");
}

} // namespace TextReaderTest
} // namespace TAMBO::formats
