// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/model/SuperposeFixture.h"

#include "DataMaker.h"
#include "ObjectOperations.h"

using namespace TAMBO;

namespace SuperposePlanTest {

using SuperposePlanTest = SuperposeFixture;

TEST_F(SuperposePlanTest, ACopyTurnedAndShiftedAnyhowComesToLieOnItsOriginal)
{
    const Points points = randomFold(60, 1);
    Structure &original = structureAt("original", points);
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        Structure &copy = structureAt("copy", turned(points, seed));
        Alignment &alignment = ungapped({&original, &copy});
        const SuperposePlan plan = superpose(alignment, {0, 1});
        EXPECT_EQ(plan.columns, 60U);
        EXPECT_GT(plan.moves.at(0).rmsdBefore, 1);
        EXPECT_LT(plan.moves[0].rmsdAfter, 1e-4);
        const auto atoms = atomsOf(copy);
        const auto targets = atomsOf(original);
        for (std::size_t i = 1; i < 2 * points.size(); i += 2) {
            for (std::size_t k = 0; k < 3; ++k)
                ASSERT_NEAR(atoms[i]->Position().coordinates()[k],
                            targets[i]->Position().coordinates()[k], 1e-3);
        }
        DataMaker::Destroy(&alignment);
        DataMaker::Destroy(&copy);
    }
}

TEST_F(SuperposePlanTest, SuperposingNeverIncreasesTheDistance)
{
    for (unsigned seed = 1; seed <= 100; ++seed) {
        SCOPED_TRACE(seed);
        // Unrelated folds, some of which lie near each other as they are.
        Structure &one = structureAt("one", randomFold(3 + seed % 20, seed));
        Structure &two = structureAt("two", randomFold(3 + seed % 20, seed + 1000));
        const Alignment &alignment = ungapped({&one, &two});
        const double first = superpose(alignment, {0, 1}).moves.at(0).rmsdAfter;
        const SuperposePlan again = superpose(alignment, {0, 1});
        EXPECT_LE(first, again.moves.at(0).rmsdBefore + 1e-5);
        EXPECT_NEAR(again.moves[0].rmsdAfter, again.moves[0].rmsdBefore, 1e-4);
    }
}

TEST_F(SuperposePlanTest, OnlyColumnsInWhichAllChosenRowsHaveACarbonCount)
{
    const Points points = randomFold(8, 3);
    Structure &one = structureAt("one", points);
    Structure &two = structureAt("two", turned(points, 1));
    Structure &three = structureAt("three", turned(points, 2));
    const Alignment &alignment = alignmentOf({{one.chain(0), "AAAAAAAA--"},
                                              {two.chain(0), "AAAA-AAAA-"},
                                              {three.chain(0), "--AAAAAAAA"}});
    EXPECT_EQ(superpose(alignment, {0, 1}).columns, 7U);
    const SuperposePlan plan = superpose(alignment, {0, 1, 2});
    EXPECT_EQ(plan.columns, 5U);
    EXPECT_EQ(plan.reference, "one_A");
    ASSERT_EQ(plan.moves.size(), 2U);
    EXPECT_EQ(plan.moves[0].name, "two_A");
    EXPECT_EQ(plan.moves[1].name, "three_A");
}

TEST_F(SuperposePlanTest, OnlyTheChosenColumnsCount)
{
    const Points fold = randomFold(20, 3);
    Points moved = turned(fold, 1);
    // From the eleventh on elsewhere.
    const Points elsewhere = turned(fold, 2);
    std::copy(elsewhere.begin() + 10, elsewhere.end(), moved.begin() + 10);
    Structure &one = structureAt("one", fold);
    Structure &two = structureAt("two", moved);
    const Alignment &alignment = ungapped({&one, &two});
    EXPECT_EQ(refusal(alignment, {0, 1}, {8, 10, 0}),
              "The chosen chains have CA atoms in 2 columns of the range together; superposing "
              "takes 3.");
    EXPECT_EQ(refusal(alignment, {0, 1}, {20, 30, 0}),
              "The chosen chains have CA atoms in no column of the range together; superposing "
              "takes 3.");
    const SuperposePlan plan = superpose(alignment, {0, 1}, {0, 10, 0});
    EXPECT_EQ(plan.columns, 10U);
    EXPECT_LT(plan.moves.at(0).rmsdAfter, 1e-4);
    EXPECT_NEAR(two.chain(0)->position(4).x(), one.chain(0)->position(4).x(), 1e-3);
    EXPECT_EQ(superpose(alignment, {0, 1}, {10, FitChoice::kAllColumns, 0}).columns, 10U);
    EXPECT_NEAR(two.chain(0)->position(14).x(), one.chain(0)->position(14).x(), 1e-3);
}

TEST_F(SuperposePlanTest, PairsThatDoNotFitAreLeftOutAndBothDistancesAreTold)
{
    const Points fold = randomFold(60, 3);
    Points moved = turned(fold, 1);
    const Points elsewhere = turned(fold, 2);
    std::copy(elsewhere.begin() + 45, elsewhere.end(), moved.begin() + 45);
    Structure &one = structureAt("one", fold);
    Structure &two = structureAt("two", moved);
    Structure &three = structureAt("three", turned(fold, 4));
    const SuperposePlan plan =
        superpose(ungapped({&one, &two, &three}), {0, 1, 2}, {0, FitChoice::kAllColumns, 2});
    EXPECT_EQ(plan.columns, 60U);
    EXPECT_EQ(plan.moves.at(0).corePairs, 45U);
    EXPECT_LT(plan.moves[0].rmsdCore, 1e-4);
    EXPECT_GT(plan.moves[0].rmsdAfter, 5);
    EXPECT_FALSE(plan.moves[0].lacksCore);
    EXPECT_EQ(plan.moves.at(1).corePairs, 60U);
    EXPECT_DOUBLE_EQ(plan.moves[1].rmsdCore, plan.moves[1].rmsdAfter);
    EXPECT_NEAR(two.chain(0)->position(44).z(), one.chain(0)->position(44).z(), 1e-3);
}

TEST_F(SuperposePlanTest, WithoutACoreAllCount)
{
    Structure &one = structureAt("one", {{0, 0, 0}, {9, 0, 0}, {0, 9, 0}});
    Structure &two = structureAt("two", {{0, 0, 0}, {99, 0, 0}, {0, 99, 0}});
    const Alignment &alignment = ungapped({&one, &two});
    const double whole = planSuperposition(alignment, {0, 1}).value().moves.at(0).rmsdAfter;
    const SuperposePlan plan = superpose(alignment, {0, 1}, {0, FitChoice::kAllColumns, 2});
    EXPECT_TRUE(plan.moves.at(0).lacksCore);
    EXPECT_EQ(plan.moves[0].corePairs, 3U);
    EXPECT_DOUBLE_EQ(plan.moves[0].rmsdAfter, whole);
}

TEST_F(SuperposePlanTest, ResiduesWithoutACarbonAreNoPairs)
{
    const Points points = randomFold(6, 4);
    Structure &one = structureAt("one", points);
    StructureRecord record;
    record.name = "two";
    record.chains.push_back(chainAt("A", turned(points, 5)));
    record.chains[0].residues[2].atoms.pop_back();
    Structure &two = *ObjectFactory::adopt(std::move(record));
    EXPECT_EQ(superpose(ungapped({&one, &two}), {0, 1}).columns, 5U);
}

TEST_F(SuperposePlanTest, TheFirstRowIsTheOneThatStays)
{
    const Points points = randomFold(10, 6);
    Structure &one = structureAt("one", points);
    Structure &two = structureAt("two", turned(points, 7));
    const Alignment &alignment = ungapped({&one, &two});
    const auto before = bitsOf(two);
    const SuperposePlan plan = superpose(alignment, {1, 0});
    EXPECT_EQ(plan.reference, "two_A");
    EXPECT_EQ(bitsOf(two), before);
    EXPECT_NEAR(one.chain(0)->position(4).x(), two.chain(0)->position(4).x(), 1e-3);
}

TEST_F(SuperposePlanTest, TheWholeStructureMovesWithAllItsChainsAndLigands)
{
    const Points points = randomFold(10, 8);
    Structure &one = structureAt("one", points);
    StructureRecord record;
    record.name = "dimer";
    const Points moved = turned(points, 9);
    record.chains.push_back(chainAt("A", moved));
    record.chains.push_back(chainAt("B", randomFold(5, 10)));
    Structure &dimer = *ObjectFactory::adopt(std::move(record));
    const auto distances = [&] {
        std::vector<double> result;
        const auto atoms = atomsOf(dimer);
        for (const Compound *atom : atoms)
            for (const Compound *other : atoms) {
                const Vertex a = atom->Position();
                const Vertex b = other->Position();
                result.push_back(std::hypot(a.x() - b.x(), a.y() - b.y(), a.z() - b.z()));
            }
        return result;
    };
    const auto before = distances();
    const auto places = bitsOf(dimer);
    superpose(ungapped({&one, &dimer}), {0, 1});
    const auto after = distances();
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < before.size(); ++i)
        ASSERT_NEAR(after[i], before[i], 1e-3);
    const auto moves = bitsOf(dimer);
    for (std::size_t i = 0; i < moves.size(); i += 3)
        EXPECT_NE(moves[i], places[i]) << "atom " << i / 3;
}

TEST_F(SuperposePlanTest, ResiduesStandWhereTheirCarbonsAreAfterEachMove)
{
    const Points points = randomFold(40, 3);
    Structure &original = structureAt("original", points);
    Structure &copy = structureAt("copy", turned(points, 5));
    const auto expectAtCarbons = [&] {
        for (const Structure *structure : {&original, &copy}) {
            const TAMBO::Peptide &chain = *structure->chain(0);
            for (std::size_t i = 0; i < chain.residueCount(); ++i)
                ASSERT_EQ(chain.position(i).coordinates(), chain.atom(i, 1)->place().coordinates());
        }
    };
    expectAtCarbons();
    const TAMBO::Vertex before = copy.chain(0)->position(0);
    auto inverse = std::make_unique<TAMBO::PositionEdit>(std::vector<Structure *>{&copy});
    superpose(ungapped({&original, &copy}), {0, 1});
    expectAtCarbons();
    EXPECT_NE(copy.chain(0)->position(0).coordinates(), before.coordinates());
    (void)inverse->apply();
    expectAtCarbons();
    EXPECT_EQ(copy.chain(0)->position(0).coordinates(), before.coordinates());
}

TEST_F(SuperposePlanTest, RowsWithoutCoordinatesAreNotOffered)
{
    Structure &one = structureAt("one", randomFold(4, 1));
    Peptide &sequence = peptide("sequence", "AAAA");
    const Alignment &alignment = alignmentOf({{&sequence, "AAAA"}, {one.chain(0), "AAAA"}});
    const auto rows = superposableRows(alignment);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0].row, 1U);
    EXPECT_EQ(rows[0].name, "one_A");
    EXPECT_EQ(rows[0].structure, &one);
    EXPECT_EQ(rows[0].residues, 4U);
}

TEST_F(SuperposePlanTest, ARowThatIsTiedToAChainHasItsCoordinates)
{
    const Points points = randomFold(6, 2);
    Structure &one = structureAt("one", points);
    Structure &two = structureAt("two", turned(points, 3));
    Peptide &sequence = peptide("sequence", "CCAAAAAA");
    sequence.tie(2, *two.chain(0), 0, 6);
    const Alignment &alignment = alignmentOf({{one.chain(0), "--AAAAAA"}, {&sequence, "CCAAAAAA"}});
    const SuperposePlan plan = superpose(alignment, {0, 1});
    EXPECT_EQ(plan.columns, 6U);
    EXPECT_EQ(plan.moves.at(0).motion.structure, &two);
    EXPECT_LT(plan.moves[0].rmsdAfter, 1e-4);
}

TEST_F(SuperposePlanTest, OneRowIsNotEnough)
{
    Structure &one = structureAt("one", randomFold(4, 1));
    const Alignment &alignment = ungapped({&one});
    EXPECT_EQ(refusal(alignment, {}), "Choose two chains or more.");
    EXPECT_EQ(refusal(alignment, {0}), "Choose two chains or more.");
    EXPECT_EQ(refusal(alignment, {0, 1}), "The alignment has no row 2.");
}

TEST_F(SuperposePlanTest, ARowWithoutCoordinatesIsNamed)
{
    Structure &one = structureAt("one", randomFold(4, 1));
    Peptide &sequence = peptide("sequence", "AAAA");
    const Alignment &alignment = alignmentOf({{one.chain(0), "AAAA"}, {&sequence, "AAAA"}});
    EXPECT_EQ(refusal(alignment, {0, 1}), "sequence has no coordinates.");
    EXPECT_EQ(refusal(alignment, {1, 0}), "sequence has no coordinates.");
}

TEST_F(SuperposePlanTest, AStructureCannotBeChosenTwice)
{
    StructureRecord record;
    record.name = "dimer";
    record.chains.push_back(chainAt("A", randomFold(5, 1)));
    record.chains.push_back(chainAt("B", randomFold(5, 2)));
    Structure &dimer = *ObjectFactory::adopt(std::move(record));
    const Alignment &alignment =
        alignmentOf({{dimer.chain(0), "AAAAA"}, {dimer.chain(1), "AAAAA"}});
    EXPECT_EQ(refusal(alignment, {0, 1}), "dimer_A and dimer_B belong to the same structure, "
                                          "dimer, which moves as a whole.");
    EXPECT_EQ(refusal(alignment, {1, 1}), "dimer_B and dimer_B belong to the same structure, "
                                          "dimer, which moves as a whole.");
}

TEST_F(SuperposePlanTest, FewerThanThreeCommonColumnsAreTooFew)
{
    Structure &one = structureAt("one", randomFold(4, 1));
    Structure &two = structureAt("two", randomFold(4, 2));
    const auto refused = [&](const std::string &first, const std::string &second) {
        return refusal(alignmentOf({{one.chain(0), first}, {two.chain(0), second}}), {0, 1});
    };
    EXPECT_EQ(refused("AAAA----", "----AAAA"),
              "The chosen chains have CA atoms in no column together; superposing takes 3.");
    EXPECT_EQ(refused("AAAA---", "---AAAA"),
              "The chosen chains have CA atoms in 1 column together; superposing takes 3.");
    EXPECT_EQ(refused("AAAA--", "--AAAA"),
              "The chosen chains have CA atoms in 2 columns together; superposing takes 3.");
    EXPECT_EQ(refused("AAAA-", "-AAAA"), "no failure");
}

TEST_F(SuperposePlanTest, AtomsOnOneLineLeaveTheOrientationOpen)
{
    Structure &one = structureAt("one", randomFold(4, 1));
    Structure &line = structureAt("line", {{0, 0, 0}, {1, 1, 1}, {2, 2, 2}, {5, 5, 5}});
    Structure &spot = structureAt("spot", {{2, 2, 2}, {2, 2, 2}, {2, 2, 2}, {2, 2, 2}});
    const Alignment &alignment = ungapped({&one, &line, &spot});
    const std::string rest = "_A in the 4 columns of all chosen chains stand in one line, which "
                             "leaves open how to turn them.";
    EXPECT_EQ(refusal(alignment, {0, 1}), "The CA atoms of line" + rest);
    EXPECT_EQ(refusal(alignment, {1, 0}), "The CA atoms of line" + rest);
    EXPECT_EQ(refusal(alignment, {0, 2}), "The CA atoms of spot" + rest);
}

TEST_F(SuperposePlanTest, ALockedStructureStaysButMayBeTheReference)
{
    const Points points = randomFold(5, 1);
    Structure &one = structureAt("one", points);
    Structure &two = structureAt("two", turned(points, 1));
    const Alignment &alignment = ungapped({&one, &two});
    setObjectLocked(two, true);
    EXPECT_EQ(refusal(alignment, {0, 1}), "two is locked.");
    EXPECT_EQ(refusal(alignment, {1, 0}), "no failure");
    setObjectLocked(two, false);
    setObjectLocked(*two.chain(0), true);
    EXPECT_EQ(refusal(alignment, {0, 1}), two.chain(0)->GetFQName() + " is locked.");
}

TEST_F(SuperposePlanTest, MovingRefusesAllWhenOneIsLocked)
{
    const Points points = randomFold(5, 1);
    Structure &one = structureAt("one", points);
    Structure &two = structureAt("two", turned(points, 1));
    const auto before = bitsOf(one);
    const Superposition shift({{Vertex(0, 0, 0), Vertex(1, 0, 0)}});
    setObjectLocked(two, true);
    EXPECT_FALSE(moveStructures({{&one, shift}, {&two, shift}}));
    EXPECT_EQ(bitsOf(one), before);
    EXPECT_EQ(log, Texts{"\"two\" is locked and was not changed."});
    setObjectLocked(two, false);
    EXPECT_TRUE(moveStructures({{&one, shift}, {&two, shift}}));
    EXPECT_NE(bitsOf(one), before);
    EXPECT_TRUE(moveStructures({}));
}

} // namespace SuperposePlanTest
