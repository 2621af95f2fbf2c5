// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyBench.h"

#include <gmock/gmock.h>

#include <random>

namespace FamilyPlanTest {

using namespace TAMBO;
using namespace TAMBO::families;
using testing::HasSubstr;

class FamilyPlan : public FamilyBench
{
protected:
    static std::string refusal(const Family &family, const ModelsOrder &order)
    {
        const auto plan = planModels(family, order);
        return plan ? "planned" : plan.error().message();
    }
};

TEST_F(FamilyPlan, EachTargetGetsTheTemplateWithTheMostIdenticalPairs)
{
    const auto plan = planModels(smallFamily(), {});
    ASSERT_TRUE(plan);
    ASSERT_EQ(plan.value().size(), 3U);
    const PlannedModel &a = plan.value()[0];
    EXPECT_EQ(a.target, 1U);
    EXPECT_EQ(a.templateRow, 0U);
    EXPECT_EQ(a.identical, 8U);
    EXPECT_EQ(a.aligned, 9U);
    EXPECT_EQ(a.residues, 9U);
    EXPECT_EQ(plan.value()[1].templateRow, 2U);
    EXPECT_EQ(plan.value()[1].identical, 9U);
}

TEST_F(FamilyPlan, OfTemplatesThatAreAlikeTheFirstRowIsTaken)
{
    Family family = smallFamily();
    family.rows[2].text = family.rows[0].text;
    const auto plan = planModels(family, {});
    ASSERT_TRUE(plan);
    for (const PlannedModel &model : plan.value())
        EXPECT_EQ(model.templateRow, 0U);
}

TEST_F(FamilyPlan, CapitalsAndSmallLettersAreTheSame)
{
    Family family = smallFamily();
    family.rows[1].text = "acdef-hikm";
    EXPECT_EQ(planModels(family, {}).value()[0].identical, 8U);
}

TEST_F(FamilyPlan, TwoUnknownResiduesAreNoIdenticalPair)
{
    Family family = smallFamily();
    const auto replace = [](std::string &text, char letter) {
        const std::size_t place = text.find('C');
        ASSERT_NE(place, std::string::npos);
        text[place] = letter;
    };
    replace(family.rows[0].text, 'X');
    replace(family.rows[1].text, 'x');
    EXPECT_EQ(planModels(family, {}).value()[0].identical, 7U);
    EXPECT_EQ(planModels(family, {}).value()[0].aligned, 9U);
}

TEST_F(FamilyPlan, ItIsWhatAPlainCountOfColumnsGives)
{
    std::mt19937 random(7);
    const std::string letters = "ACDEX-";
    Family family{"random", {}, {}};
    for (int row = 0; row < 40; ++row) {
        std::string text;
        for (int col = 0; col < 37; ++col)
            text += letters[random() % letters.size()];
        family.rows.push_back({"r" + std::to_string(row), text, row % 5 == 0});
    }
    const auto plan = planModels(family, {});
    ASSERT_TRUE(plan);
    ASSERT_EQ(plan.value().size(), 32U);
    for (const PlannedModel &model : plan.value()) {
        const std::string &target = family.rows[model.target].text;
        std::size_t best = 0;
        std::size_t bestRow = family.rows.size();
        for (std::size_t row = 0; row < family.rows.size(); ++row) {
            if (!family.rows[row].hasStructure)
                continue;
            std::size_t identical = 0;
            for (std::size_t col = 0; col < target.size(); ++col)
                identical += target[col] != '-' && target[col] != 'X' &&
                             target[col] == family.rows[row].text[col];
            if (bestRow == family.rows.size() || identical > best) {
                best = identical;
                bestRow = row;
            }
        }
        EXPECT_EQ(model.templateRow, bestRow);
        EXPECT_EQ(model.identical, best);
    }
}

TEST_F(FamilyPlan, ATargetWithAStructureIsBuiltOnAnotherRow)
{
    const auto plan = planModels(smallFamily(), {"", {"t1"}});
    ASSERT_TRUE(plan);
    ASSERT_EQ(plan.value().size(), 1U);
    EXPECT_EQ(plan.value()[0].templateRow, 2U);
}

TEST_F(FamilyPlan, TargetsComeInTheOrderOfTheRowsAndOnce)
{
    const auto plan = planModels(smallFamily(), {"t1", {"b", "a", "b"}});
    ASSERT_TRUE(plan);
    ASSERT_EQ(plan.value().size(), 2U);
    EXPECT_EQ(plan.value()[0].target, 1U);
    EXPECT_EQ(plan.value()[1].target, 3U);
    EXPECT_EQ(plan.value()[1].templateRow, 0U);
}

TEST_F(FamilyPlan, ATargetThatSharesNoColumnIsPlannedWithNoneAligned)
{
    Family family = smallFamily();
    family.rows[0].text = "ACDEF-----";
    family.rows[4].text = "------AAAA";
    const auto plan = planModels(family, {"t1", {}});
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan.value()[2].aligned, 0U);
    EXPECT_GT(plan.value()[0].aligned, 0U);
}

TEST_F(FamilyPlan, OfTemplatesWithoutAnIdenticalPairTheFirstThatSharesAColumnIsTaken)
{
    Family family = smallFamily();
    family.rows[0].text = "ACDEF-----";
    family.rows[4].text = "------WWWW";
    const auto plan = planModels(family, {});
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan.value()[2].identical, 0U);
    EXPECT_EQ(plan.value()[2].templateRow, 2U);
    EXPECT_EQ(plan.value()[2].aligned, 4U);
}

TEST_F(FamilyPlan, WhatCannotBePlannedIsNamed)
{
    Family none = smallFamily();
    none.rows[0].hasStructure = none.rows[2].hasStructure = false;
    EXPECT_EQ(refusal(none, {}), "no row of \"globins\" has a structure that could be a template");
    EXPECT_EQ(refusal(smallFamily(), {"t9", {}}), "\"globins\" has no row called \"t9\"");
    EXPECT_EQ(refusal(smallFamily(), {"", {"a", "x"}}), "\"globins\" has no row called \"x\"");
    EXPECT_EQ(refusal(smallFamily(), {"t1", {"t1"}}), "the target \"t1\" is the template itself");
    EXPECT_EQ(refusal(smallFamily(), {"a", {}}),
              "the row \"a\" has no structure and cannot be a template");
    Family twins = smallFamily();
    twins.rows[3].name = "a";
    EXPECT_THAT(refusal(twins, {"", {"a"}}), HasSubstr("2 rows are called \"a\""));
    Family single = smallFamily();
    single.rows[2].hasStructure = false;
    EXPECT_THAT(refusal(single, {"", {"t1"}}), HasSubstr("is the only row with a structure"));
    Family all = smallFamily();
    for (FamilyRow &row : all.rows)
        row.hasStructure = true;
    EXPECT_THAT(refusal(all, {}), HasSubstr("all rows of \"globins\" have a structure"));
}

} // namespace FamilyPlanTest
