// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on when they superpose structures along an alignment.
#include "StructureFits.h"

#include "DataPoint.h"
#include "ObjectOperations.h"
#include "unit/model/SuperposeFixture.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace StructureFitsContractTest {

using TAMBO::StructureFit;
using TAMBO::StructureFits;
using TAMBO::StructureRow;

class StructureFitsContract : public SuperposeFixture
{
protected:
    StructureFitsContract()
    {
        const Points fold = randomFold(20, 1);
        one = &structureAt("one", fold);
        two = &structureAt("two", turned(fold, 2));
        three = &structureAt("three", turned(randomFold(20, 3), 4));
        const std::string whole(20, 'A');
        alignment = &alignmentOf({{&peptide("none", whole), whole + "--"},
                                  {one->chain(0), whole + "--"},
                                  {two->chain(0), whole + "--"},
                                  {two->chain(0), "--" + whole},
                                  {three->chain(0), "--" + whole}});
    }
    std::vector<StructureFit> superpose(const std::vector<unsigned long> &rows)
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, alignment);
        return StructureFits::superpose(*alignment, 1, rows);
    }

    TAMBO::Structure *one;
    TAMBO::Structure *two;
    TAMBO::Structure *three;
    TAMBO::Alignment *alignment;
};

TEST_F(StructureFitsContract, RowsAreTheFirstOfEachStructure)
{
    EXPECT_THAT(StructureFits::rows(*alignment),
                ElementsAre(StructureRow{1, one}, StructureRow{2, two}, StructureRow{4, three}));
    EXPECT_EQ(StructureFits::structureOf(*alignment, 3), two);
    EXPECT_EQ(StructureFits::structureOf(*alignment, 0), nullptr);
    EXPECT_EQ(StructureFits::structureOf(*alignment, 5), nullptr);
}

TEST_F(StructureFitsContract, MeasuringMovesNothing)
{
    const auto before = bitsOf(*two);
    const StructureFit fit = StructureFits::measure(*alignment, 1, 2);
    EXPECT_EQ(fit.row, 2U);
    EXPECT_EQ(fit.pairs, 20U);
    EXPECT_GT(fit.rmsd, 1);
    EXPECT_FALSE(fit.hasMoved);
    EXPECT_EQ(fit.problem, "");
    EXPECT_EQ(bitsOf(*two), before);
}

TEST_F(StructureFitsContract, EachStructureComesToLieOnTheFixedOneByItsOwnPairs)
{
    const auto fixed = bitsOf(*one);
    const auto fits = superpose({2, 4});
    ASSERT_THAT(fits, SizeIs(2));
    EXPECT_TRUE(fits[0].hasMoved);
    EXPECT_LT(fits[0].rmsd, 1e-4);
    EXPECT_EQ(fits[0].pairs, 20U);
    EXPECT_TRUE(fits[1].hasMoved);
    EXPECT_EQ(fits[1].pairs, 18U);
    EXPECT_NEAR(fits[1].rmsd, StructureFits::measure(*alignment, 1, 4).rmsd, 1e-4);
    EXPECT_EQ(bitsOf(*one), fixed);
    EXPECT_NEAR(two->chain(0)->position(7).x(), one->chain(0)->position(7).x(), 1e-3);
}

TEST_F(StructureFitsContract, WhatLiesWhereItBelongsIsNotMovedAgain)
{
    superpose({2, 4});
    const auto before = std::pair(bitsOf(*two), bitsOf(*three));
    const auto fits = superpose({2, 4});
    EXPECT_FALSE(fits[0].hasMoved);
    EXPECT_FALSE(fits[1].hasMoved);
    EXPECT_EQ(std::pair(bitsOf(*two), bitsOf(*three)), before);
}

TEST_F(StructureFitsContract, AProblemIsToldAndTheOthersAreMoved)
{
    const auto before = bitsOf(*three);
    TAMBO::setObjectLocked(*three, true);
    const auto fits = superpose({0, 1, 2, 3, 4, 7});
    ASSERT_THAT(fits, SizeIs(6));
    EXPECT_EQ(fits[0].problem, "none has no coordinates.");
    EXPECT_THAT(fits[1].problem, HasSubstr("belong to the same structure"));
    EXPECT_TRUE(fits[2].hasMoved);
    EXPECT_EQ(fits[3].problem, "two belongs to another one of the rows, too.");
    EXPECT_EQ(fits[4].problem, "three is locked.");
    EXPECT_EQ(fits[5].problem, "The alignment has no row 8.");
    EXPECT_EQ(fits[4].pairs, 0U);
    EXPECT_EQ(bitsOf(*three), before);
    TAMBO::setObjectLocked(*three, false);
}

TEST_F(StructureFitsContract, PairsOfOtherColumnsAndThoseThatDoNotFitAreLeftOut)
{
    const StructureFit part = StructureFits::measure(*alignment, 1, 2, {5, 12, 0});
    EXPECT_EQ(part.pairs, 7U);
    EXPECT_EQ(part.corePairs, 7U);
    EXPECT_LT(part.coreRmsd, 1e-4);
    TAMBO::FitChoice pruned;
    pruned.cutoff = TAMBO::FitChoice::kUsualCutoff;
    const StructureFit core = StructureFits::measure(*alignment, 1, 4, pruned);
    EXPECT_EQ(core.pairs, 18U);
    EXPECT_LT(core.corePairs, 18U);
    EXPECT_GE(core.corePairs, 3U);
    EXPECT_LT(core.coreRmsd, 2);
    const DataPoint<TAMBO::Alignment> guard(nullptr, alignment);
    const auto fits = StructureFits::superpose(*alignment, 1, {4}, pruned);
    EXPECT_EQ(fits.at(0).corePairs, core.corePairs);
    EXPECT_NEAR(fits[0].coreRmsd, core.coreRmsd, 1e-6);
    // All of them, where they are now.
    EXPECT_GT(fits[0].rmsd, core.coreRmsd);
    EXPECT_NEAR(fits[0].rmsd, StructureFits::measure(*alignment, 1, 4).rmsd, 1e-4);
}

TEST_F(StructureFitsContract, TheLastChoiceIsKeptWithTheAlignmentAndItsCopies)
{
    using TAMBO::FitChoice;
    EXPECT_EQ(StructureFits::lastChoice(*alignment), FitChoice());
    const DataPoint<TAMBO::Alignment> guard(nullptr, alignment);
    alignment->range({3, 9});
    StructureFits::keepChoice(*alignment, {3, 9, 1.5});
    EXPECT_EQ(StructureFits::lastChoice(*alignment), (FitChoice{3, 9, 1.5}));
    alignment->range({4, 8});
    EXPECT_EQ(StructureFits::lastChoice(*alignment), (FitChoice{4, 8, 1.5}))
        << "the range as it is now";
    alignment->rangeAll();
    EXPECT_EQ(StructureFits::lastChoice(*alignment), (FitChoice{0, FitChoice::kAllColumns, 1.5}));
    const TAMBO::Alignment *const copy = alignment->duplicate(alignment->height());
    EXPECT_EQ(StructureFits::lastChoice(*copy).cutoff, 1.5);
    StructureFits::keepChoice(*alignment, {});
    EXPECT_EQ(StructureFits::lastChoice(*alignment), FitChoice());
}

TEST_F(StructureFitsContract, TheCoreIsMeasuredAsItLiesToo)
{
    TAMBO::FitChoice pruned;
    pruned.cutoff = TAMBO::FitChoice::kUsualCutoff;
    const StructureFit before = StructureFits::measure(*alignment, 1, 2, pruned);
    EXPECT_GT(before.coreRmsdNow, 1);
    EXPECT_LT(before.coreRmsd, 1e-4);
    const DataPoint<TAMBO::Alignment> guard(nullptr, alignment);
    const auto fits = StructureFits::superpose(*alignment, 1, {2}, pruned);
    EXPECT_LT(fits.at(0).coreRmsdNow, 1e-4);
    EXPECT_LT(StructureFits::measure(*alignment, 1, 2, pruned).coreRmsdNow, 1e-4);
}

TEST_F(StructureFitsContract, FewerThanThreePairsAreAProblem)
{
    const TAMBO::Alignment &apart =
        alignmentOf({{one->chain(0), std::string(20, 'A') + std::string(18, '-')},
                     {two->chain(0), std::string(18, '-') + std::string(20, 'A')}});
    EXPECT_THAT(StructureFits::measure(apart, 0, 1).problem, HasSubstr("2 columns"));
    const auto before = bitsOf(*two);
    EXPECT_FALSE(StructureFits::superpose(apart, 0, {1})[0].hasMoved);
    EXPECT_EQ(bitsOf(*two), before);
}

} // namespace StructureFitsContractTest
