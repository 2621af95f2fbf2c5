// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowBuilder.h"

#include "CellScan.h"

#include <gtest/gtest.h>

#include <random>

namespace TAMBO::formats {
namespace RowBuilderTest {

// Text with the room behind it that the builder may look at.
class Text
{
public:
    explicit Text(std::string text) : m_Size(text.size()), m_Text(std::move(text))
    {
        m_Text.append(RowBuilder::kReadAhead, 'A');
    }
    [[nodiscard]] std::string_view view() const
    {
        return std::string_view(m_Text).substr(0, m_Size);
    }

private:
    std::size_t m_Size;
    std::string m_Text;
};

std::string randomCells(std::size_t length, std::mt19937 &random)
{
    std::string cells;
    bool gap = false;
    while (cells.size() < length) {
        gap = random() % 5 == 0 ? !gap : gap;
        cells += gap ? "-.~"[random() % 3] : "ACDEFGHIKLMNPQRSTVWYacd"[random() % 23];
    }
    return cells;
}

std::string withDashes(std::string cells)
{
    for (char &c : cells)
        if (c == '.' || c == '~')
            c = '-';
    return cells;
}

// The row so far; the next one begins.
GappedSequence taken(RowBuilder &builder)
{
    const GappedView cells = builder.cells();
    GappedSequence row;
    row.letters = cells.letters;
    row.occupancy.assign(cells.occupancy.begin(), cells.occupancy.end());
    row.width = cells.width;
    builder.begin();
    return row;
}

TEST(RowBuilder, PiecesOfEveryLengthAddUpToTheRow)
{
    std::mt19937 random(1);
    RowBuilder builder;
    for (unsigned round = 0; round < 300; ++round) {
        std::string all;
        while (random() % 6 != 0) {
            const std::string cells = randomCells(random() % 200, random);
            EXPECT_EQ(builder.append(Text(cells).view()), cells.size());
            all += cells;
        }
        EXPECT_EQ(builder.width(), all.size());
        const GappedSequence row = taken(builder);
        EXPECT_EQ(row.text(), withDashes(all));
        EXPECT_EQ(row.width, all.size());
        GappedSequence expected;
        expected.append(all);
        EXPECT_EQ(row.occupancy, expected.occupancy);
        EXPECT_EQ(row.letters, expected.letters);
        EXPECT_EQ(builder.width(), 0U);
    }
}

TEST(RowBuilder, StopsAtTheFirstOtherCharacter)
{
    for (std::size_t before = 0; before < 200; ++before) {
        RowBuilder builder;
        EXPECT_EQ(builder.append(Text(std::string(before, 'A') + "*CD").view()), before);
        builder.appendGap();
        builder.appendLetter('X');
        EXPECT_EQ(builder.append(Text("CD").view()), 2U);
        EXPECT_EQ(taken(builder).text(), std::string(before, 'A') + "-XCD");
    }
}

TEST(RowBuilder, CountsLowerCaseAndNoticesOtherGaps)
{
    RowBuilder builder;
    (void)builder.append(Text("AcD-ef").view());
    EXPECT_EQ(builder.lowerCaseCount(), 3U);
    EXPECT_EQ(builder.letterCount(), 5U);
    EXPECT_FALSE(builder.hasOtherGaps());
    (void)builder.append(Text(".").view());
    EXPECT_TRUE(builder.hasOtherGaps());
    (void)taken(builder);
    EXPECT_EQ(builder.lowerCaseCount(), 0U);
    EXPECT_FALSE(builder.hasOtherGaps());
}

TEST(RowBuilder, WhatStandsBehindTheTextIsNotCounted)
{
    RowBuilder builder;
    const std::string text = "AC" + std::string(200, 'a') + "...";
    (void)builder.append(std::string_view(text).substr(0, 2));
    EXPECT_EQ(builder.width(), 2U);
    EXPECT_EQ(builder.lowerCaseCount(), 0U);
    EXPECT_FALSE(builder.hasOtherGaps());
    EXPECT_EQ(taken(builder).text(), "AC");
}

TEST(CellScan, EveryByteIsSortedAlikeByBothWays)
{
    std::string bytes(256 + kScanWidth, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i);
    for (std::size_t i = 0; i < 256; ++i) {
        const CellMasks fast = scanCells(bytes.data() + i);
        const CellMasks simple = scanCellsOneByOne(bytes.data() + i);
        EXPECT_EQ(fast.letters, simple.letters) << i;
        EXPECT_EQ(fast.lowerCase, simple.lowerCase) << i;
        EXPECT_EQ(fast.dashes, simple.dashes) << i;
        EXPECT_EQ(fast.otherGaps, simple.otherGaps) << i;
    }
}

TEST(CellScan, LettersAndGapsAreWhatTheyAre)
{
    std::string text(kScanWidth, ' ');
    text.replace(0, 10, "AZaz-.~@[`");
    for (const CellMasks &masks : {scanCells(text.data()), scanCellsOneByOne(text.data())}) {
        EXPECT_EQ(masks.letters, 0b1111U);
        EXPECT_EQ(masks.lowerCase, 0b1100U);
        EXPECT_EQ(masks.dashes, 0b10000U);
        EXPECT_EQ(masks.otherGaps, 0b1100000U);
    }
}

} // namespace RowBuilderTest
} // namespace TAMBO::formats
