// SPDX-License-Identifier: GPL-3.0-or-later
#include "TakeOver.h"

#include "Candidates.h"
#include "MadeLayouts.h"
#include "RowMatch.h"

#include "DataPoint.h"
#include "History.h"
#include "unit/model/AlignmentFixture.h"

#include <gmock/gmock.h>

#include <random>

using testing::ElementsAre;
using testing::IsEmpty;

namespace TakeOverTest {

using companion::Comparison;
using companion::RowMatch;
using companion::Stretch;
using companion::TakeOver;

constexpr auto kLong = std::chrono::hours(1);
constexpr std::uint32_t kNone = companion::ComparedColumns::kNone;

struct Together
{
    companion::ComparedLayout here;
    companion::ComparedLayout there;
    std::vector<std::uint32_t> places;
    Comparison comparison;
};

class TakingOver : public AlignmentFixture
{
protected:
    TakingOver() { TAMBO::setEditRecorder(&steps); }
    ~TakingOver() override
    {
        TAMBO::setEditRecorder(&history);
        steps.clear();
    }

    // Of the same sequences.
    TAMBO::Alignment &laidOut(const TAMBO::Alignment &like, const Texts &rows)
    {
        std::vector<std::pair<TAMBO::Peptide *, std::string>> made;
        for (std::size_t row = 0; row < rows.size(); ++row)
            made.emplace_back(&sequence(like, row), rows[row]);
        return alignmentOf(made, "other");
    }
    static Together together(const TAMBO::Alignment &here, const companion::OtherRows &there)
    {
        RowMatch match(here, there);
        while (match.goOn(kLong)) {
        }
        Together made{match.takeHere(), match.takeThere(), match.placesHere(), {}};
        made.comparison = compared(made.here, made.there);
        return made;
    }
    // Gives what became of it: the misfit, if there was one.
    static std::optional<unsigned long> takeOver(TAMBO::Alignment &here, const Together &both,
                                                 const std::vector<Stretch> &stretches,
                                                 std::vector<bool> rows = {})
    {
        if (rows.empty())
            rows.assign(here.height(), true);
        TakeOver work({&here, &both.here, &both.there, &both.places, stretches, rows});
        while (work.goOn({})) {
        }
        if (work.misfit())
            return work.misfit();
        const DataPoint<TAMBO::Alignment> change(nullptr, &here);
        EXPECT_TRUE(TAMBO::RowLayouts::place(here, work.range(), work.count(), work.cells()));
        return std::nullopt;
    }

    TAMBO::History steps;
};

TEST_F(TakingOver, AStretchIsLaidOutAsInTheOther)
{
    TAMBO::Alignment &here = alignment({"ACD-EF", "ACDDEF"});
    TAMBO::Alignment &other = laidOut(here, {"AC-DEF", "ACDDEF"});
    const Together both = together(here, &other);
    ASSERT_EQ(both.comparison.stretches, (std::vector<Stretch>{{2, 4, 2, 4}}));
    EXPECT_FALSE(takeOver(here, both, both.comparison.stretches));
    EXPECT_EQ(rowsOf(here), rowsOf(other));
}

TEST_F(TakingOver, AWiderStretchOpensColumnsAndANarrowerOneClosesThem)
{
    TAMBO::Alignment &narrow = alignment({"ACDE", "ACDE"});
    TAMBO::Alignment &wide = laidOut(narrow, {"A--CDE", "ACD--E"});
    const Together both = together(narrow, &wide);
    EXPECT_FALSE(takeOver(narrow, both, both.comparison.stretches));
    EXPECT_EQ(rowsOf(narrow), (Texts{"A--CDE", "ACD--E"}));
    steps.undo();
    EXPECT_EQ(rowsOf(narrow), (Texts{"ACDE", "ACDE"}));
    const Together back = together(wide, &narrow);
    EXPECT_FALSE(takeOver(wide, back, back.comparison.stretches));
    EXPECT_EQ(rowsOf(wide), (Texts{"ACDE", "ACDE"}));
}

TEST_F(TakingOver, SomeRowsLeaveTheirGapsAtTheRight)
{
    TAMBO::Alignment &wide = alignment({"A--CDE", "ACD--E"});
    TAMBO::Alignment &narrow = laidOut(wide, {"ACDE", "ACDE"});
    const Together both = together(wide, &narrow);
    EXPECT_FALSE(takeOver(wide, both, both.comparison.stretches, {true, false}));
    EXPECT_EQ(rowsOf(wide), (Texts{"ACD--E", "ACD--E"}));
}

TEST_F(TakingOver, RowsThatTheOtherLacksKeepWhatTheyHave)
{
    TAMBO::Alignment &here = alignment({"ACD-EF", "ACDDEF", "AAAAAA"});
    TAMBO::Alignment &other = laidOut(here, {"A--CDEF", "ACDDE-F"});
    const Together both = together(here, &other);
    EXPECT_THAT(both.places, ElementsAre(0, 1, kNone));
    ASSERT_EQ(both.comparison.stretches.size(), 1U);
    EXPECT_FALSE(takeOver(here, both, both.comparison.stretches));
    EXPECT_EQ(rowsOf(here), (Texts{"A--CDEF", "ACDDE-F", "AAAAA-A"}));
}

TEST_F(TakingOver, AResidueThatTheOtherLacksForbidsIt)
{
    TAMBO::Alignment &here = alignment({"ACD-EF", "ACDDEF"});
    TAMBO::Alignment &other = laidOut(here, {"AC-DEF", "ACDDEF"});
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &other);
        other.remove({3, 4});
    }
    const Together both = together(here, &other);
    const Texts before = rowsOf(here);
    ASSERT_EQ(both.comparison.here.alone, 2U);
    EXPECT_TRUE(takeOver(here, both, {{2, 4, 2, 3}}));
    EXPECT_EQ(rowsOf(here), before);
}

TEST_F(TakingOver, ResiduesThatOnlyTheOtherHasAreLeftOut)
{
    TAMBO::Alignment &here = alignment({"AC-DEF", "ACDDEF"});
    TAMBO::Alignment &other = laidOut(here, {"ACD-EF", "AC-DDEF"});
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &here);
        here.remove({3, 4});
    }
    ASSERT_EQ(rowsOf(here), (Texts{"AC-EF", "ACDEF"}));
    const Together both = together(here, &other);
    EXPECT_EQ(both.comparison.there.alone, 2U);
    ASSERT_FALSE(both.comparison.stretches.empty());
    EXPECT_FALSE(takeOver(here, both, both.comparison.stretches));
    EXPECT_EQ(here.GetSequence(0, true), "ACEF");
    EXPECT_EQ(here.GetSequence(1, true), "ACDEF");
}

TEST_F(TakingOver, AllStretchesOfRandomLayoutsMakeThemEqualAndUndoBringsTheSameBack)
{
    std::mt19937 random(27);
    for (int round = 0; round < 120; ++round) {
        const TwoLayouts made = randomLayouts(random, 2 + random() % 6, 1 + random() % 150);
        TAMBO::Alignment &here = alignment(made.here);
        TAMBO::Alignment &other = laidOut(here, made.there);
        const Together both = together(here, &other);
        steps.clear();
        if (both.comparison.stretches.empty()) {
            ASSERT_EQ(made.here, made.there);
            continue;
        }
        ASSERT_FALSE(takeOver(here, both, both.comparison.stretches));
        ASSERT_EQ(rowsOf(here), made.there);
        ASSERT_EQ(steps.size(), 1U);
        steps.undo();
        ASSERT_EQ(rowsOf(here), made.here);
        steps.redo();
        ASSERT_EQ(rowsOf(here), made.there);
        steps.clear();
        TAMBO::ObjectSpace::get().reset();
    }
}

TEST_F(TakingOver, OneStretchAfterTheOtherMakesThemEqualAndLosesNoResidue)
{
    std::mt19937 random(28);
    for (int round = 0; round < 60; ++round) {
        const TwoLayouts made = randomLayouts(random, 2 + random() % 6, 1 + random() % 90);
        TAMBO::Alignment &here = alignment(made.here);
        TAMBO::Alignment &other = laidOut(here, made.there);
        Together both = together(here, &other);
        const std::size_t stretches = both.comparison.stretches.size();
        for (std::size_t done = 0; done < stretches; ++done) {
            ASSERT_EQ(both.comparison.stretches.size(), stretches - done);
            const Stretch one = both.comparison.stretches[random() % (stretches - done)];
            ASSERT_FALSE(takeOver(here, both, {one}));
            for (unsigned long row = 0; row < here.height(); ++row)
                ASSERT_EQ(here.GetSequence(row, true), other.GetSequence(row, true));
            both = together(here, &other);
        }
        ASSERT_EQ(rowsOf(here), made.there);
        steps.clear();
        TAMBO::ObjectSpace::get().reset();
    }
}

TEST_F(TakingOver, AnyRowsOfAnyStretchLoseNoResidueAndChangeNoOtherRow)
{
    std::mt19937 random(29);
    for (int round = 0; round < 120; ++round) {
        const TwoLayouts made = randomLayouts(random, 2 + random() % 6, 1 + random() % 90);
        TAMBO::Alignment &here = alignment(made.here);
        TAMBO::Alignment &other = laidOut(here, made.there);
        const Together both = together(here, &other);
        std::vector<bool> rows;
        for (unsigned long row = 0; row < here.height(); ++row)
            rows.push_back(random() % 2 == 0);
        if (both.comparison.stretches.empty())
            continue;
        const Stretch one = both.comparison.stretches[random() % both.comparison.stretches.size()];
        ASSERT_FALSE(takeOver(here, both, {one}, rows));
        const auto isGap = [](char letter) { return letter == '-'; };
        for (unsigned long row = 0; row < here.height(); ++row) {
            const std::string now = here.GetSequence(row, false);
            ASSERT_EQ(here.GetSequence(row, true), other.GetSequence(row, true));
            const Texts &from = rows[row] ? made.there : made.here;
            const std::string wanted =
                rows[row] ? from[row].substr(one.otherBegin, one.otherEnd - one.otherBegin)
                          : from[row].substr(one.begin, one.end - one.begin);
            ASSERT_EQ(now.substr(one.begin, wanted.size()), wanted);
            const std::size_t end = now.size() - (made.here[row].size() - one.end);
            ASSERT_TRUE(std::all_of(now.begin() + std::ptrdiff_t(one.begin + wanted.size()),
                                    now.begin() + std::ptrdiff_t(end), isGap));
            ASSERT_EQ(now.substr(end), made.here[row].substr(one.end));
        }
        steps.clear();
        TAMBO::ObjectSpace::get().reset();
    }
}

// ---- Which rows are the same

TEST_F(TakingOver, RowsOfOneSequenceAreMatchedInAnyOrder)
{
    TAMBO::Alignment &here = alignment({"AC", "DE", "FG"});
    TAMBO::Alignment &other =
        alignmentOf({{&sequence(here, 2), "FG"}, {&sequence(here, 0), "AC"}}, "other");
    const Together both = together(here, &other);
    EXPECT_THAT(both.places, ElementsAre(0, kNone, 1));
}

TEST_F(TakingOver, RowsOfOtherSequencesAreMatchedByNameAndResidues)
{
    const auto named = [this](const Texts &names, const Texts &rows) -> TAMBO::Alignment & {
        std::vector<std::pair<TAMBO::Peptide *, std::string>> made;
        for (std::size_t row = 0; row < rows.size(); ++row) {
            std::string letters = rows[row];
            std::erase(letters, '-');
            made.emplace_back(&peptide(names[row], letters), rows[row]);
        }
        return alignmentOf(made, "named");
    };
    TAMBO::Alignment &here = named({"a", "b", "c", "d", "d"}, {"A-C", "DE-", "FG-", "HI-", "KL-"});
    TAMBO::Alignment &other = named({"d", "b", "c", "a", "d"}, {"K-L", "D-E", "FFG", "a-c", "HI-"});
    const Together both = together(here, &other);
    EXPECT_THAT(both.places, ElementsAre(0, 1, kNone, 2, 3));
    EXPECT_EQ(both.comparison.here.alone, 0U);
    companion::Candidates candidates(here);
    while (candidates.goOn({})) {
    }
    EXPECT_THAT(candidates.found(), ElementsAre(&other));
}

TEST_F(TakingOver, AnAlignmentOfOtherSequencesIsNoCandidate)
{
    TAMBO::Alignment &here = alignment({"AC", "DE"});
    alignment({"AC", "DE"});
    alignmentOf({{&sequence(here, 0), "AC"}}, "one row");
    companion::Candidates candidates(here);
    while (candidates.goOn(kLong)) {
    }
    EXPECT_THAT(candidates.found(), IsEmpty());
}

TEST_F(TakingOver, WhatAnAlignmentWasBeforeIsMatchedBySequences)
{
    TAMBO::Alignment &here = alignment({"AC-D", "ACDE", "-CD-"});
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &here);
        here.moveGap(0, 2, 0, true);
        here.bubbleRow(0, 2);
    }
    const auto former = TAMBO::RowLayouts::before(here, 1);
    const Together both = together(here, &*former);
    EXPECT_THAT(both.places, ElementsAre(0, 1, 2));
    EXPECT_FALSE(takeOver(here, both, both.comparison.stretches));
    EXPECT_EQ(rowsOf(here), (Texts{"ACDE", "-CD-", "AC-D"}));
}

} // namespace TakeOverTest
