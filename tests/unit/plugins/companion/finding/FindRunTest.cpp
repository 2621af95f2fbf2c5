// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindRun.h"

#include "unit/model/ModelFixture.h"

#include "Alignment.h"
#include "Compound.h"
#include "DataMaker.h"
#include "DataPoint.h"

#include <random>
#include <string>

namespace FindRunTest {

using companion::FindIn;
using companion::FindRun;
using companion::Hit;
using companion::PatternLanguage;
using companion::SequencePattern;

constexpr auto kForever = std::chrono::hours(1);

class Finding : public ModelFixture
{
protected:
    TAMBO::Alignment &rows(const std::vector<std::string> &letters)
    {
        std::vector<TAMBO::Compound *> sequences;
        for (const std::string &text : letters)
            sequences.push_back(
                TAMBO::DataMaker::makeSequence("row" + std::to_string(sequences.size()), text));
        return *TAMBO::DataMaker::makeAlignment("rows", sequences);
    }
    static FindRun run(const TAMBO::Alignment &alignment, const char *text,
                       bool onlySelected = false)
    {
        FindRun run(alignment, SequencePattern(text, PatternLanguage::Plain), FindIn::Sequences,
                    onlySelected);
        EXPECT_FALSE(run.goOn(kForever));
        EXPECT_EQ(run.percent(), 100);
        return run;
    }
};

TEST_F(Finding, GoesAcrossGaps)
{
    TAMBO::Alignment &alignment = rows({"ACDEF", "CDACD"});
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
        alignment.insertGap(0, 2);
        alignment.insertGap(0, 2);
    }
    const FindRun found = run(alignment, "CDE");
    ASSERT_EQ(found.hits().size(), 1U);
    EXPECT_EQ(found.hits()[0].row, 0U);
    EXPECT_EQ(companion::columnsOf(alignment, found.hits()[0]), std::pair(1UL, 6UL));
}

TEST_F(Finding, HitsAreInTheOrderOfRowsAndResidues)
{
    const FindRun found = run(rows({"ACACA", "GGGGG", "CACAG"}), "ACA");
    ASSERT_EQ(found.hits().size(), 3U);
    EXPECT_EQ(found.hits()[0].residues, (companion::Match{0, 3}));
    EXPECT_EQ(found.hits()[1].residues, (companion::Match{2, 5}));
    EXPECT_EQ(found.hits()[2].row, 2U);
}

TEST_F(Finding, OnlyWhatIsSelectedWhenThatIsAsked)
{
    TAMBO::Alignment &alignment = rows({"ACACA"});
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
        alignment.selectInRow(0, {1, 5});
    }
    const FindRun found = run(alignment, "ACA", true);
    ASSERT_EQ(found.hits().size(), 1U);
    EXPECT_EQ(found.hits()[0].residues.begin, 2U);
}

TEST_F(Finding, NamesAreFoundAsTheyAreWritten)
{
    FindRun names(rows({"A", "C", "D"}), SequencePattern("W1", PatternLanguage::Plain),
                  FindIn::Names, false);
    EXPECT_FALSE(names.goOn(kForever));
    ASSERT_EQ(names.hits().size(), 1U);
    EXPECT_EQ(names.hits()[0].row, 1U);
    EXPECT_TRUE(names.hits()[0].isName());
}

TEST_F(Finding, EndsAtTheMostHitsAndSaysSo)
{
    const TAMBO::Alignment &alignment = rows({"AAAAAAAA", "AAAAAAAA"});
    FindRun found(alignment, SequencePattern("A", PatternLanguage::Plain), FindIn::Sequences, false,
                  5);
    EXPECT_FALSE(found.goOn(kForever));
    EXPECT_TRUE(found.isFull());
    EXPECT_EQ(found.hits().size(), 5U);
}

TEST_F(Finding, InSmallPartsFindsWhatIsFoundInOneGo)
{
    std::mt19937 random(3); // NOLINT(cert-msc51-cpp): the same in each run
    std::vector<std::string> letters(50);
    for (std::string &text : letters)
        for (int i = 0; i < 60; ++i)
            text += "ACD"[random() % 3];
    const TAMBO::Alignment &alignment = rows(letters);
    const FindRun whole = run(alignment, "ACDA");
    FindRun parts(alignment, SequencePattern("ACDA", PatternLanguage::Plain), FindIn::Sequences,
                  false);
    int calls = 1;
    while (parts.goOn(std::chrono::microseconds(0)))
        ++calls;
    EXPECT_EQ(calls, 50);
    EXPECT_TRUE(std::ranges::equal(parts.hits(), whole.hits(), [](const Hit &a, const Hit &b) {
        return a.row == b.row && a.residues == b.residues;
    }));
    EXPECT_FALSE(whole.hits().empty());
}

} // namespace FindRunTest
