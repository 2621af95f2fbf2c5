// SPDX-License-Identifier: GPL-3.0-or-later
// What structures that follow their alignment are superposed by, and which alignment they follow.
#include "Refitting.h"

#include <algorithm>

namespace RefitChoiceTest {

using companion::setRefitted;
using TAMBO::FitChoice;
using TAMBO::StructureFit;
using TAMBO::StructureFits;

// ---- By what the user has superposed them last

TEST_F(Refitting, LeavesOutThePairsThatTheLastSuperpositionWouldLeaveOut)
{
    TAMBO::Alignment &alignment = hinged();
    setRefitted(alignment, true);
    EXPECT_GT(found(alignment).fits()[0].coreRmsdNow, 3) << "all count at first";
    choose(alignment, {0, FitChoice::kAllColumns, 2});
    const auto before = bits();
    TAMBO::renameObject(alignment, "other");
    EXPECT_EQ(bits(), before) << "a choice moves nothing by itself";
    slide(alignment, 1, 30);
    const StructureFit fit = found(alignment).fits()[0];
    EXPECT_GE(fit.corePairs, 24U);
    EXPECT_LT(fit.coreRmsdNow, 0.3);
    EXPECT_GT(fit.rmsd, 3);
    EXPECT_EQ(lineOf(alignment),
              QString("moving_A lies on fixed_A: core %1 Å of %2 % of 39 pairs of "
                      "CA atoms")
                  .arg(fit.coreRmsdNow, 0, 'f', 2)
                  .arg(100 * fit.corePairs / 39));
    history.undo();
    EXPECT_EQ(bits(), before);
    choose(alignment, {});
    slide(alignment, 1, 30);
    expectSuperposed(alignment);
}

TEST_F(Refitting, AnotherChoiceConcernsAllStructuresWithTheNextEdit)
{
    TAMBO::Alignment &alignment = apart(5);
    setRefitted(alignment, true);
    choose(alignment, {0, FitChoice::kAllColumns, 1});
    slide(alignment, 3, 8);
    EXPECT_EQ(refit.fits(), 4U);
    slide(alignment, 3, 8);
    EXPECT_EQ(refit.fits(), 5U);
}

TEST_F(Refitting, CountsTheRangeAloneAndSaysSo)
{
    TAMBO::Alignment &alignment = hinged();
    const auto setRange = [&](const TAMBO::Alignment::Range &range) {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &alignment);
        alignment.range(range);
    };
    setRange({2, 20});
    choose(alignment, {2, 20, 0});
    setRefitted(alignment, true);
    EXPECT_EQ(
        lineOf(alignment),
        QString("moving_A lies on fixed_A: RMSD 0.00 Å over 18 pairs of CA atoms in the range"));
    setRange({25, 40});
    slide(alignment, 1, 39);
    EXPECT_TRUE(lineOf(alignment).startsWith("moving_A lies on fixed_A: RMSD 0.00 Å over 14 pairs"))
        << qPrintable(lineOf(alignment));
    setRange({0, alignment.width()});
    slide(alignment, 1, 20);
    expectSuperposed(alignment);
}

TEST_F(Refitting, AChoiceThatNoProgramHasWrittenIsNone)
{
    TAMBO::Alignment &alignment = apart();
    for (const char *text : {"", "nan", "inf", "-2", "two", "2e999", "0 rangers", " range"}) {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &alignment);
        ASSERT_TRUE(PluginValues::Set(&alignment, "tambo", "superposed-by", text));
        EXPECT_EQ(StructureFits::lastChoice(alignment), FitChoice()) << text;
    }
}

// ---- Two alignments of the same structures

class TwoRefitted : public Refitting
{
protected:
    // Both have the last structure; what each puts it on lies elsewhere.
    TwoRefitted()
    {
        const Points fold = randomFold(30, 11);
        for (unsigned i = 0; i < 5; ++i)
            structures.push_back(&structureAt("s" + std::to_string(i), turned(fold, i + 1)));
        const std::string text = std::string(30, 'A') + "------";
        const auto rowOf = [&](std::size_t place) {
            return std::pair(structures[place]->chain(0), text);
        };
        one = &alignmentOf({rowOf(0), rowOf(1), rowOf(4)});
        TAMBO::renameObject(*one, "one");
        two = &alignmentOf({rowOf(2), rowOf(3), rowOf(4)});
        TAMBO::renameObject(*two, "two");
        history.clear();
        setRefitted(*one, true);
        setRefitted(*two, true);
    }
    [[nodiscard]] double distanceIn(const TAMBO::Alignment &alignment, unsigned long row) const
    {
        return StructureFits::measure(alignment, 0, row).rmsd;
    }

    TAMBO::Alignment *one;
    TAMBO::Alignment *two;
};

TEST_F(TwoRefitted, WhatIsEditedLaterHasTheStructureAndTheOtherSaysSo)
{
    EXPECT_LT(distanceIn(*two, 2), 0.01) << "it was switched on later";
    EXPECT_EQ(lineOf(*two),
              QString("2 structures lie on s2_A: RMSD 0.00 Å over 30 pairs of CA atoms"));
    EXPECT_EQ(
        lineOf(*one),
        QString("s1_A lies on s0_A: RMSD 0.00 Å over 30 pairs of CA atoms; s4_A lies %1 Å away, "
                "for the alignment two keeps s4 superposed, too")
            .arg(distanceIn(*one, 2), 0, 'f', 2));
    slide(*one, 2, 20);
    EXPECT_TRUE(lineOf(*one).startsWith("2 structures lie on s0_A: ")) << qPrintable(lineOf(*one));
    EXPECT_TRUE(lineOf(*two).endsWith("Å away, for the alignment one keeps s4 superposed, too"))
        << qPrintable(lineOf(*two));
    history.undo();
    EXPECT_LT(distanceIn(*two, 2), 0.01);
    setRefitted(*two, false);
    EXPECT_TRUE(lineOf(*one).startsWith("2 structures lie on s0_A: RMSD 0.00 to "))
        << "nobody keeps it where it is: " << qPrintable(lineOf(*one));
}

TEST_F(TwoRefitted, AnEditThatDoesNotConcernItLeavesItToTheOther)
{
    slide(*one, 2, 20);
    const auto before = bits();
    slide(*two, 1, 10);
    EXPECT_EQ(bits()[4], before[4]);
    EXPECT_NE(bits()[3], before[3]);
}

TEST_F(TwoRefitted, TheFirstStructureMayBeTheOneThatTheOtherHasMoved)
{
    TAMBO::Alignment &three = alignmentOf({{structures[4]->chain(0), std::string(30, 'A')},
                                           {structures[0]->chain(0), std::string(30, 'A')}});
    setRefitted(three, true);
    slide(*two, 2, 20);
    EXPECT_TRUE(lineOf(three).endsWith("Å away, for the alignment one keeps s0 superposed, too"))
        << qPrintable(lineOf(three));
}

TEST_F(TwoRefitted, AStepThatEditsBothIsFollowedOnceInEachAndEnds)
{
    const std::size_t steps = history.size();
    for (int round = 0; round < 5; ++round) {
        const std::size_t fits = refit.fits();
        {
            const DataPoint<TAMBO::Space> step(nullptr, TAMBO::Space::instance());
            slide(*one, 2, 20);
            slide(*two, 2, 10);
        }
        EXPECT_EQ(refit.fits(), fits + 2);
        EXPECT_EQ(lineOf(*two).count("away"), 0) << "it was edited later";
        EXPECT_EQ(lineOf(*one).count("away"), 1);
    }
    EXPECT_EQ(history.size(), steps + 5);
    const auto after = bits();
    TAMBO::renameObject(*one, "another");
    EXPECT_EQ(bits(), after);
    for (int round = 0; round < 6; ++round)
        history.undo();
    EXPECT_EQ(history.size(), steps + 6);
    EXPECT_LT(distanceIn(*two, 2), 0.01);
}

} // namespace RefitChoiceTest
