// SPDX-License-Identifier: GPL-3.0-or-later
#include "TargetFiles.h"

#include <gtest/gtest.h>

#include <string>

namespace TargetFilesTest {

using TAMBO::families::isFileWord;
using TAMBO::families::TargetFiles;

TEST(TargetFiles, APlainNameStays)
{
    TargetFiles files;
    EXPECT_EQ(files.add("P11413"), "P11413");
    EXPECT_EQ(files.add("1abc_A.x-2"), "1abc_A.x-2");
}

TEST(TargetFiles, WhatNoFileOrShellTakesIsReplaced)
{
    TargetFiles files;
    EXPECT_EQ(files.add("sp|P1|X/1-20"), "sp_P1_X_1-20");
    EXPECT_EQ(files.add("../etc"), "_._etc");
    EXPECT_EQ(files.add("-rf"), "_rf");
    EXPECT_EQ(files.add("a b;$(x)"), "a_b___x_");
    EXPECT_EQ(files.add(""), "row");
    EXPECT_EQ(files.add("é"), "__");
    EXPECT_EQ(files.add("end."), "end_");
    EXPECT_LE(files.add(std::string(1000, 'x')).size(), 200U);
}

TEST(TargetFiles, NoTwoAreTheSameWhereCapitalsDoNotCount)
{
    TargetFiles files;
    files.take("Old");
    EXPECT_EQ(files.add("old"), "old_2");
    EXPECT_EQ(files.add("a/b"), "a_b");
    EXPECT_EQ(files.add("A|B"), "A_B_2");
    EXPECT_EQ(files.add("a_b_2"), "a_b_2_2");
    EXPECT_EQ(files.add("a b"), "a_b_3");
}

TEST(TargetFiles, WhatItGivesIsAFileWordAndWhatLeadsElsewhereIsNone)
{
    TargetFiles files;
    for (const char *name : {"", ".", "..", "/", "a/b", "-", "é\n"})
        EXPECT_TRUE(isFileWord(files.add(name))) << name;
    for (const char *name : {"", "..", "../x", "a/b", "-x", ".x", "a b", "a\tb"})
        EXPECT_FALSE(isFileWord(name)) << name;
    EXPECT_FALSE(isFileWord(std::string(300, 'x')));
}

} // namespace TargetFilesTest
