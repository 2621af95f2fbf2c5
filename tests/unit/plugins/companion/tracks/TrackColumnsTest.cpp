// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackColumns.h"

#include "unit/model/ModelFixture.h"

#include "Alignment.h"
#include "ColumnScores.h"
#include "DataMaker.h"
#include "DataPoint.h"

#include <string>

namespace TrackColumnsTest {

using companion::ColumnCounts;
using companion::TrackColumn;
using companion::TrackColumns;

constexpr auto kForever = std::chrono::hours(1);
constexpr auto kNoTime = std::chrono::microseconds(0);

class ColumnsOfTracks : public ModelFixture
{
protected:
    static TAMBO::Alignment &rows(const std::vector<std::string> &letters)
    {
        std::vector<TAMBO::Compound *> sequences;
        for (const std::string &text : letters)
            sequences.push_back(
                TAMBO::DataMaker::makeSequence("row" + std::to_string(sequences.size()), text));
        return *TAMBO::DataMaker::makeAlignment("rows", sequences);
    }
    // Of different lengths, so that there are gaps at the end.
    static TAMBO::Alignment &uneven(unsigned long count, unsigned long columns)
    {
        std::vector<std::string> texts;
        for (unsigned long row = 0; row < count; ++row) {
            std::string text;
            for (unsigned long col = 0; col + row < columns; ++col)
                text += "ACDEFGHIKLMNPQRSTVWYX"[(row * 5 + col * 3) % 21];
            texts.push_back(text);
        }
        return rows(texts);
    }
    static void expectRight(const TrackColumns &columns, const TAMBO::Alignment &alignment,
                            unsigned long begin, unsigned long end)
    {
        for (unsigned long col = begin; col < end; ++col) {
            std::vector<char> letters;
            alignment.readColumn(col, letters);
            const ColumnCounts counts(letters);
            const TrackColumn *const found = columns.at(col);
            ASSERT_NE(found, nullptr) << col;
            EXPECT_EQ(found->counts, counts) << col;
            EXPECT_EQ(found->conservation, companion::conservation(counts)) << col;
            EXPECT_EQ(found->occupancy, companion::occupancy(counts)) << col;
            EXPECT_EQ(found->bits, companion::informationContent(counts)) << col;
            EXPECT_EQ(found->logo, companion::logo(counts)) << col;
        }
    }
};

TEST_F(ColumnsOfTracks, ValuesAreThoseOfTheLettersInEachColumn)
{
    const TAMBO::Alignment &alignment = uneven(30, 200);
    TrackColumns columns;
    columns.want(0, alignment.width());
    EXPECT_FALSE(columns.goOn(alignment, kForever));
    EXPECT_TRUE(columns.isDone());
    expectRight(columns, alignment, 0, alignment.width());
}

TEST_F(ColumnsOfTracks, OnlyThoseThatAreWantedAndNewAreComputed)
{
    const TAMBO::Alignment &alignment = uneven(5, 300);
    TrackColumns columns;
    columns.want(100, 150);
    columns.goOn(alignment, kForever);
    EXPECT_EQ(columns.computed(), 50U);
    EXPECT_EQ(columns.at(99), nullptr);
    EXPECT_EQ(columns.at(150), nullptr);
    columns.want(120, 170);
    columns.goOn(alignment, kForever);
    EXPECT_EQ(columns.computed(), 70U);
    // On both sides of what is known.
    columns.want(90, 180);
    columns.goOn(alignment, kForever);
    EXPECT_EQ(columns.computed(), 90U);
    columns.want(90, 180);
    EXPECT_TRUE(columns.isDone());
    expectRight(columns, alignment, 90, 180);
}

TEST_F(ColumnsOfTracks, PartsOfOneRowGiveTheSame)
{
    const TAMBO::Alignment &alignment = uneven(20, 100);
    TrackColumns columns;
    columns.want(0, 100);
    unsigned long parts = 1;
    while (columns.goOn(alignment, kNoTime)) {
        EXPECT_TRUE(parts >= 20 || columns.at(0) == nullptr) << parts;
        ++parts;
    }
    // The first pass has as many columns as go into one, the second one the others.
    EXPECT_EQ(parts, 40U);
    expectRight(columns, alignment, 0, 100);
}

TEST_F(ColumnsOfTracks, APassIsGivenUpWhenNothingOfItIsWantedAnyMore)
{
    const TAMBO::Alignment &alignment = uneven(20, 300);
    TrackColumns columns;
    columns.want(0, 50);
    columns.goOn(alignment, kNoTime);
    columns.want(200, 250);
    columns.goOn(alignment, kForever);
    EXPECT_EQ(columns.computed(), 50U);
    expectRight(columns, alignment, 200, 250);
}

TEST_F(ColumnsOfTracks, AfterAnEditInTheMiddleOfAPassNothingOfBeforeIsLeft)
{
    TAMBO::Alignment &alignment = uneven(20, 60);
    TrackColumns columns;
    columns.want(0, 60);
    for (int part = 0; part < 7; ++part)
        columns.goOn(alignment, kNoTime);
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
        alignment.removeRow(3);
    }
    columns.clear();
    columns.goOn(alignment, kForever);
    expectRight(columns, alignment, 0, 60);
}

TEST_F(ColumnsOfTracks, ARowThatGoesInTheMiddleOfAPassIsNotReadBehind)
{
    TAMBO::Alignment &alignment = rows({"ACD", "ACD"});
    TrackColumns columns;
    columns.want(0, 3);
    columns.goOn(alignment, kNoTime);
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
        alignment.removeRow(1);
    }
    EXPECT_FALSE(columns.goOn(alignment, kForever));
    EXPECT_EQ(columns.at(0)->counts.rows(), 1U);
}

TEST_F(ColumnsOfTracks, OfVeryManyThoseOutOfSightAreForgotten)
{
    const TAMBO::Alignment &alignment = uneven(1, TrackColumns::kMostKept + 100);
    TrackColumns columns;
    columns.want(0, TrackColumns::kMostKept + 50);
    columns.goOn(alignment, kForever);
    EXPECT_NE(columns.at(0), nullptr);
    columns.want(50, 150);
    EXPECT_EQ(columns.at(0), nullptr);
    EXPECT_NE(columns.at(50), nullptr);
    EXPECT_TRUE(columns.isDone());
}

} // namespace TrackColumnsTest
