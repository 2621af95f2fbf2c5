// SPDX-License-Identifier: GPL-3.0-or-later
// What the words behind `tambo models` mean.
#include "CommandLine.h"

#include <gmock/gmock.h>

namespace FamilyOrderTest {

using TAMBO::app::CommandLine;
using TAMBO::app::FamilyOrder;
using TAMBO::app::parseCommandLine;
using TAMBO::app::parseFamilyOrder;
using testing::ElementsAre;
using testing::HasSubstr;
using Task = FamilyOrder::Task;

TEST(FamilyOrder, AFamilyIsBuiltInAFolder)
{
    const auto line = parseCommandLine({"models", "a.ali", "1abc.pdb", "--out", "there"});
    ASSERT_TRUE(line);
    EXPECT_EQ(line.value().mode, CommandLine::Mode::Models);
    const FamilyOrder &order = line.value().models;
    EXPECT_EQ(order.task, Task::Build);
    EXPECT_THAT(order.files, ElementsAre("a.ali", "1abc.pdb"));
    EXPECT_EQ(order.folder, "there");
    EXPECT_EQ(order.templateName, "");
    EXPECT_FALSE(order.jobs);
    EXPECT_FALSE(order.usesPool);
}

TEST(FamilyOrder, OptionsStandWhereTheyLike)
{
    const auto order =
        parseFamilyOrder({"--jobs", "4", "--template", "1abc_A", "--targets", "x,y", "--targets",
                          "z", "--out", "d", "--object", "family", "--pool", "--", "-odd.ali"});
    ASSERT_TRUE(order);
    EXPECT_EQ(order.value().jobs, 4);
    EXPECT_EQ(order.value().templateName, "1abc_A");
    EXPECT_THAT(order.value().targets, ElementsAre("x,y", "z"));
    EXPECT_EQ(order.value().object, "family");
    EXPECT_TRUE(order.value().usesPool);
    EXPECT_THAT(order.value().files, ElementsAre("-odd.ali"));
}

TEST(FamilyOrder, TheBestTemplateIsTheOneThatIsTakenAnyway)
{
    EXPECT_EQ(parseFamilyOrder({"a", "--out", "d", "--template", "best"}).value().templateName, "");
}

TEST(FamilyOrder, AFolderMayBePreparedGoneOnWithOrCounted)
{
    EXPECT_EQ(parseFamilyOrder({"a", "--out", "d", "--prepare"}).value().task, Task::Prepare);
    const auto order = parseFamilyOrder({"--continue", "d", "--profile", "slurm", "--jobs", "9"});
    ASSERT_TRUE(order);
    EXPECT_EQ(order.value().task, Task::Continue);
    EXPECT_EQ(order.value().profile, "slurm");
    EXPECT_EQ(parseFamilyOrder({"--table", "d"}).value().task, Task::Table);
}

TEST(FamilyOrder, WhatDoesNotGoTogetherIsOneSentence)
{
    const auto said = [](const std::vector<std::string> &words) {
        const auto order = parseFamilyOrder(words);
        return order ? "taken" : order.error().message();
    };
    EXPECT_THAT(said({"a"}), HasSubstr("--out DIR"));
    EXPECT_THAT(said({"--out", "d"}), HasSubstr("the file of a family"));
    EXPECT_THAT(said({"a", "--out"}), HasSubstr("--out needs a folder"));
    EXPECT_THAT(said({"a", "--out", "d", "--targets", ""}), HasSubstr("--targets needs names"));
    EXPECT_THAT(said({"", "--out", "d"}), HasSubstr("a file name is empty"));
    EXPECT_THAT(said({"a", "--out", "d", "--fast"}), HasSubstr("models knows no option --fast"));
    for (const char *jobs : {"0", "-1", "x", "1x", "99999999999"})
        EXPECT_THAT(said({"a", "--out", "d", "--jobs", jobs}), HasSubstr("--jobs needs a number"));
    EXPECT_THAT(said({"a", "--out", "d", "--continue", "e"}), HasSubstr("works in one folder"));
    EXPECT_THAT(said({"a", "--continue", "d"}), HasSubstr("without a family"));
    EXPECT_THAT(said({"--table", "d", "--targets", "x"}), HasSubstr("without a family"));
    EXPECT_THAT(said({"--table", "d", "--jobs", "2"}), HasSubstr("are for building models"));
    EXPECT_THAT(said({"a", "--out", "d", "--prepare", "--pool"}),
                HasSubstr("are for building models"));
    EXPECT_THAT(said({"a", "--out", "d", "--profile", "slurm", "--pool"}),
                HasSubstr("--pool does without"));
}

} // namespace FamilyOrderTest
