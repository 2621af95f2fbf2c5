// SPDX-License-Identifier: GPL-3.0-or-later
// The two languages in which sub-sequences are searched for, on texts alone.
#include "CellPattern.h"
#include "TextPattern.h"
#include "support/Outcome.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <future>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace PatternTest {

using TAMBO::services::CellPattern;
using TAMBO::services::TextPattern;
using End = TextPattern::End;
using Pairs = std::vector<std::pair<unsigned long, unsigned long>>;

// The columns of each match or of overlapping ones: begin and end.
Pairs cells(const QString &pattern, const std::string &row)
{
    Pairs found;
    CellPattern(pattern).forEachMatch(
        row, [&](unsigned long begin, unsigned long end) { found.emplace_back(begin, end); });
    return found;
}

struct Hits
{
    // Begin and length.
    Pairs pairs;
    End end = End::Whole;

    friend bool operator==(const Hits &, const Hits &) = default;
};

Hits hits(TextPattern &pattern, const std::string &row)
{
    const std::atomic<bool> goesOn = false;
    Hits found;
    found.end = pattern
                    .forEachMatch(
                        row,
                        [&](unsigned long begin, unsigned long length) {
                            found.pairs.emplace_back(begin, length);
                        },
                        goesOn)
                    .end;
    return found;
}

Hits hits(const QString &text, const std::string &row)
{
    TextPattern pattern(text);
    return hits(pattern, row);
}

// As the toolkit finds them.
Hits toolkitHits(const QString &pattern, const std::string &row)
{
    const QRegularExpression expression(pattern);
    const QString text = QString::fromStdString(row);
    Hits found;
    for (qsizetype at = 0;;) {
        const QRegularExpressionMatch match = expression.match(text, at);
        if (!match.hasMatch())
            return found;
        if (match.capturedLength() == 0) {
            found.end = End::EmptyMatch;
            return found;
        }
        found.pairs.emplace_back(match.capturedStart(), match.capturedLength());
        at = match.capturedEnd();
    }
}

std::string covered(const QString &pattern, const std::string &row)
{
    std::string marks(row.size(), '.');
    for (const auto &[begin, end] : cells(pattern, row))
        std::fill(marks.begin() + std::ptrdiff_t(begin), marks.begin() + std::ptrdiff_t(end), '#');
    return marks;
}

std::string coveredByTrying(const std::string &pattern, const std::string &row)
{
    std::string marks(row.size(), '.');
    for (std::size_t start = 0; start + pattern.size() <= row.size(); ++start) {
        std::size_t k = 0;
        while (k < pattern.size() && (pattern[k] == '.' || pattern[k] == row[start + k]))
            ++k;
        if (k == pattern.size())
            std::fill_n(marks.begin() + std::ptrdiff_t(start), pattern.size(), '#');
    }
    return marks;
}

TEST(CellPattern, APointIsAnyCellAndAHyphenAGap)
{
    EXPECT_EQ(cells("C.D", "AC-D"), (Pairs{{1, 4}}));
    EXPECT_EQ(cells("-D", "AC-D"), (Pairs{{2, 4}}));
    EXPECT_EQ(cells("-C", "AC-D"), Pairs());
}

TEST(CellPattern, EveryOtherCharacterIsAResidueOfThatCode)
{
    EXPECT_EQ(cells("AC", "AC-D"), (Pairs{{0, 2}}));
    for (const char *pattern : {"*C", "[AC]", "A?", "a", "\\w", "^A"})
        EXPECT_EQ(cells(pattern, "AC-D"), Pairs()) << pattern;
    EXPECT_EQ(cells("*", "A*"), (Pairs{{1, 2}}));
}

TEST(CellPattern, GapsAreNotSkipped)
{
    EXPECT_EQ(cells("C-D", "AC-D"), (Pairs{{1, 4}}));
    EXPECT_EQ(cells("CD", "AC-D"), Pairs());
}

TEST(CellPattern, OverlappingMatchesAreAllFound)
{
    EXPECT_EQ(cells("AA", "AAA"), (Pairs{{0, 3}}));
    EXPECT_EQ(cells("ACA", "ACACA-ACA"), (Pairs{{0, 5}, {6, 9}}));
    EXPECT_EQ(cells("A", "AACA"), (Pairs{{0, 2}, {3, 4}}));
}

TEST(CellPattern, APatternAsLongAsTheRowHasOnePlaceAndALongerOneNone)
{
    EXPECT_EQ(cells("AC-D", "AC-D"), (Pairs{{0, 4}}));
    EXPECT_EQ(cells("....", "AC-D"), (Pairs{{0, 4}}));
    EXPECT_EQ(cells(".....", "AC-D"), Pairs());
    EXPECT_EQ(cells("A", ""), Pairs());
    EXPECT_EQ(cells("", "A"), Pairs());
}

TEST(CellPattern, CharactersThatNoResidueHasMatchNothing)
{
    EXPECT_EQ(cells(QString(QChar(0x3b1)), "A\xb1"), Pairs());
    EXPECT_EQ(cells(QString(QChar(0xe4)), "A\xe4"), (Pairs{{1, 2}}));
}

TEST(CellPattern, PatternsOfAnyLengthMatchAsTryingEachPlaceDoes)
{
    std::mt19937 random(5);
    for (const std::size_t length : {1, 2, 5, 63, 64, 65, 127, 128, 129, 200}) {
        for (int i = 0; i < 40; ++i) {
            std::string row;
            for (int k = 0; k < 400; ++k)
                row += random() % 40 == 0 ? '-' : 'A';
            std::string pattern;
            for (std::size_t k = 0; k < length; ++k)
                pattern += "A."[random() % 2];
            EXPECT_EQ(covered(QString::fromStdString(pattern), row), coveredByTrying(pattern, row))
                << pattern << " in " << row;
        }
    }
}

TEST(TextPattern, PlainTextIsFoundWithoutOverlap)
{
    EXPECT_EQ(hits("AA", "AAA"), (Hits{{{0, 2}}}));
    EXPECT_EQ(hits("AA", "AAAA"), (Hits{{{0, 2}, {2, 2}}}));
    EXPECT_EQ(hits("C-D", "AC-D"), (Hits{{{1, 3}}}));
    EXPECT_EQ(hits("CD", "AC-D"), Hits());
    EXPECT_EQ(hits("c", "AC-D"), Hits());
    EXPECT_EQ(hits("AC-DE", "AC-D"), Hits());
}

TEST(TextPattern, ExpressionsAreFoundWithoutOverlap)
{
    EXPECT_EQ(hits("C.D", "AC-D"), (Hits{{{1, 3}}}));
    EXPECT_EQ(hits("C.", "AC-D"), (Hits{{{1, 2}}}));
    EXPECT_EQ(hits("A?C", "AXC"), (Hits{{{2, 1}}}));
    EXPECT_EQ(hits("[AC]+", "AC-CA"), (Hits{{{0, 2}, {3, 2}}}));
    EXPECT_EQ(hits("A.", "AAAA"), (Hits{{{0, 2}, {2, 2}}}));
    EXPECT_EQ(hits("[ac]", "AC"), Hits());
}

TEST(TextPattern, AnExpressionFindsWhatPlainTextFinds)
{
    for (const char *row : {"", "A", "AC", "ACACAC", "AACC-ACA", "-AC-AC-"})
        EXPECT_EQ(hits("AC", row), hits("[A]C", row)) << row;
}

TEST(TextPattern, TheBeginningOfTheRowIsNotThatOfTheSearch)
{
    EXPECT_EQ(hits("^A", "AAA"), (Hits{{{0, 1}}}));
    EXPECT_EQ(hits("A$", "AAA"), (Hits{{{2, 1}}}));
    EXPECT_EQ(hits("(?<=C)A", "ACACA"), (Hits{{{2, 1}, {4, 1}}}));
}

TEST(TextPattern, AnEmptyMatchEndsTheSearchOfTheRow)
{
    EXPECT_EQ(hits("A*", "AAA"), (Hits{{{0, 3}}, End::EmptyMatch}));
    EXPECT_EQ(hits("A*", "CCC"), (Hits{{}, End::EmptyMatch}));
    EXPECT_EQ(hits("A*", "AACA"), (Hits{{{0, 2}}, End::EmptyMatch}));
    EXPECT_EQ(hits("A*", ""), (Hits{{}, End::EmptyMatch}));
    EXPECT_EQ(hits("B|$", "AB"), (Hits{{{1, 1}}, End::EmptyMatch}));
}

TEST(TextPattern, AMistakeIsNamedWithItsPosition)
{
    EXPECT_TRUE(complaintOf(TextPattern("A[").validity()).ends_with(" at position 2"));
    EXPECT_FALSE(TextPattern("A(").validity());
    EXPECT_EQ(hits("A(", "AAA"), Hits());
    for (const char *pattern : {"A", "A.", "[AC]D", "}", "]", "A-C"})
        EXPECT_EQ(complaintOf(TextPattern(pattern).validity()), "") << pattern;
}

TEST(TextPattern, LettersBeyondAsciiAreCompared)
{
    EXPECT_EQ(hits(QString(QChar(0xe4)), "A\xe4"), (Hits{{{1, 1}}}));
    EXPECT_EQ(hits(QString(QChar(0x3b1)), "A\xb1"), Hits());
}

std::string manyColumns(std::size_t count, const std::string &letters)
{
    std::mt19937 random(7);
    std::string row;
    for (std::size_t i = 0; i < count; ++i)
        row += letters[random() % letters.size()];
    return row;
}

TEST(TextPattern, FindsWhatTheToolkitFinds)
{
    const char *const patterns[] = {"[AC]D",
                                    "A-?C",
                                    "C.*?D",
                                    "(?<=A)C|D$",
                                    "(A|C)+D",
                                    "(?<!A)C(?!D)",
                                    "A{2,3}",
                                    "^A|C-+D",
                                    "\\GA",
                                    "A(*SKIP)C|C",
                                    "A(*COMMIT)C",
                                    "C\\KA",
                                    "(A)(C)\\1",
                                    "(?:A-)*C",
                                    "A*",
                                    "(?i)ac",
                                    "-+$",
                                    "[^AC-]+-",
                                    "\\bA\\w",
                                    "(?>A+)C",
                                    "A++[AD]",
                                    "(A(?1)?C)",
                                    "D(*F)|C",
                                    "(?=C-)C",
                                    "(?<=C-)A",
                                    "(*ANYCRLF)C$",
                                    "(?|(A)C|(D)C)",
                                    "(*LIMIT_MATCH=900)(?:A|C)+D"};
    for (const char *text : patterns) {
        TextPattern pattern(text);
        ASSERT_EQ(complaintOf(pattern.validity()), "") << text;
        for (const std::size_t columns : {0, 1, 5, 63, 64, 65, 700, 3000}) {
            const std::string row = manyColumns(columns, "AACCD-");
            EXPECT_EQ(hits(pattern, row), toolkitHits(text, row)) << text << " in " << columns;
        }
    }
}

TEST(TextPattern, ALongMatchIsFound)
{
    const std::string row = "AC" + manyColumns(60'000, "WACD-") + "WAA";
    const std::size_t begin = row.find('W');
    EXPECT_EQ(hits("W(?:.|-)*W", row), (Hits{{{begin, row.rfind('W') + 1 - begin}}}));
}

TEST(TextPattern, APlaceThatTakesTooManyStepsEndsTheSearchOfTheRow)
{
    const std::string row = "ACD" + std::string(60, 'A');
    TextPattern pattern("CD|(?:A+)+[BW]");
    const std::atomic<bool> goesOn = false;
    Pairs pairs;
    const TextPattern::Outcome outcome = pattern.forEachMatch(
        row, [&](unsigned long begin, unsigned long length) { pairs.emplace_back(begin, length); },
        goesOn);
    EXPECT_EQ(outcome.end, End::GaveUp);
    EXPECT_EQ(outcome.place, 3U);
    EXPECT_EQ(outcome.reason, "match limit exceeded");
    EXPECT_EQ(pairs, (Pairs{{1, 2}})) << "what was found before stays";
    EXPECT_EQ(hits(pattern, "ACD"), (Hits{{{1, 2}}})) << "the next row is searched";
}

TEST(TextPattern, ASearchCanBeEndedAtAnyTime)
{
    // At each of a million places it would be tried for a second or more.
    const std::string row = "CD" + std::string(1'000'000, 'A');
    for (const char *text :
         {"CD|(?:A+)+[BW]", "CD|(*F)|(?:(?:.{20}A)+)+[BW]", "CD|A.*.*[BW]", "CD|\\G(?:A+)+[BW]"}) {
        TextPattern pattern(text);
        std::atomic<bool> isCancelled = false;
        std::promise<void> begun;
        End end = End::Whole;
        std::thread search([&] {
            end = pattern
                      .forEachMatch(
                          row, [&](auto, auto) { begun.set_value(); }, isCancelled)
                      .end;
        });
        begun.get_future().wait();
        isCancelled = true;
        search.join();
        EXPECT_EQ(end, End::Cancelled) << text;
    }
}

} // namespace PatternTest
