// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyBench.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <filesystem>

namespace FamilyFolderTest {

using namespace TAMBO;
using namespace TAMBO::families;
using testing::HasSubstr;

using FamilyFolderFile = FamilyBench;

TEST_F(FamilyFolderFile, WhatWasPreparedIsFoundAgainAlsoWhereItWasMovedTo)
{
    ASSERT_TRUE(prepare());
    std::filesystem::rename(family(), path() / "moved");
    const auto folder = FamilyFolder::open(path() / "moved");
    ASSERT_TRUE(folder);
    EXPECT_EQ(folder.value().name(), "globins");
    EXPECT_EQ(folder.value().source(), "globins.ali");
    ASSERT_EQ(folder.value().targets().size(), 3U);
    const FamilyTarget &a = folder.value().targets().front();
    EXPECT_EQ(a.name, "a");
    EXPECT_EQ(a.file, "a");
    EXPECT_EQ(a.templateName, "t1");
    EXPECT_EQ(a.residues, 9U);
    EXPECT_EQ(a.identical, 8U);
    EXPECT_EQ(a.aligned, 9U);
    EXPECT_EQ(folder.value().inputOf(a), path() / "moved/inputs/a.ali");
    EXPECT_EQ(folder.value().templateOf(a), path() / "moved/templates/t1.pdb");
    EXPECT_EQ(folder.value().modelOf(a), path() / "moved/models/a.pdb");
    EXPECT_EQ(folder.value().recordOf(a), path() / "moved/runs/a.json");
    EXPECT_EQ(folder.value().logOf(a), path() / "moved/runs/a.log");
}

TEST_F(FamilyFolderFile, AFolderWithoutAFamilySaysSo)
{
    const auto folder = FamilyFolder::open(path());
    ASSERT_FALSE(folder);
    EXPECT_EQ(folder.error().kind, FailureKind::NotFound);
    EXPECT_THAT(folder.error().message(), HasSubstr("holds no models of a family"));
}

TEST_F(FamilyFolderFile, AListLargerThanAnyIsNotRead)
{
    write("family.json", "{");
    std::filesystem::resize_file(path() / "family.json", std::uintmax_t{1} << 40U);
    const auto folder = FamilyFolder::open(path());
    ASSERT_FALSE(folder);
    EXPECT_THAT(folder.error().message(), HasSubstr("family.json: is too large"));
}

TEST_F(FamilyFolderFile, AListThatWasCutOrChangedIsOneMessageWhereverThatIs)
{
    ASSERT_TRUE(prepare());
    const std::string whole = read("family/family.json");
    for (std::size_t size = 0; size + 2 < whole.size(); size += 3) {
        write("family/family.json", whole.substr(0, size));
        const auto folder = FamilyFolder::open(family());
        ASSERT_FALSE(folder) << size;
        EXPECT_THAT(folder.error().message(), HasSubstr("family.json: is damaged: "));
    }
    for (const auto &[from, to] : std::vector<std::pair<std::string, std::string>>{
             {"\"file\":\"a\"", "\"file\":\"../../a\""},
             {"\"file\":\"b\"", "\"file\":\"a\""},
             {"\"template_file\":\"t1\"", "\"template_file\":\"/etc/passwd\""},
             {"\"residues\":9", "\"residues\":-9"},
             {"\"residues\":9", "\"residues\":99999999999999999999"},
             {"\"name\":\"a\"", "\"name\":7"},
             {"\"format\": 1", "\"format\": 99"}}) {
        std::string changed = whole;
        ASSERT_NE(changed.find(from), std::string::npos) << from;
        changed.replace(changed.find(from), from.size(), to);
        write("family/family.json", changed);
        EXPECT_FALSE(FamilyFolder::open(family())) << to;
    }
}

} // namespace FamilyFolderTest
