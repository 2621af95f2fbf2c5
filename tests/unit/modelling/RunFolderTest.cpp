// SPDX-License-Identifier: GPL-3.0-or-later
#include "RunFolder.h"

#include "ModellingFolder.h"

#include <gmock/gmock.h>
#include <thread>

namespace RunFolderTest {

namespace fs = std::filesystem;
using kestram::RunFolder;
using testing::HasSubstr;

class RunFolderTest : public ModellingFolder
{
protected:
    RunFolderTest() { fs::create_directory(path() / "models"); }
    [[nodiscard]] fs::path model() const { return path() / "models/P1.pdb"; }
    [[nodiscard]] bool isTidy() const { return fs::is_empty(path() / "models"); }
};

TEST_F(RunFolderTest, EachHasANameOfItsOwnAndGoesWithItsObject)
{
    fs::path folder;
    {
        const auto made = RunFolder::make(path() / "tmp");
        const auto other = RunFolder::make(path() / "tmp");
        ASSERT_TRUE(made && other);
        folder = made.value()->path();
        EXPECT_TRUE(fs::is_directory(folder));
        EXPECT_NE(folder, other.value()->path());
        ASSERT_TRUE(made.value()->write("x", "text"));
        EXPECT_TRUE(fs::is_regular_file(folder / "x"));
    }
    EXPECT_TRUE(fs::is_empty(path() / "tmp"));
    const auto none = RunFolder::make(path() / "none");
    ASSERT_FALSE(none);
    EXPECT_THAT(none.error().message(), HasSubstr("No such file"));
}

TEST_F(RunFolderTest, ThatOfAModelStandsBesideItAndHasNothingOfFormerRuns)
{
    fs::create_directories(path() / "models/.P1.work/deep");
    {
        const auto made = RunFolder::makeFor(model());
        ASSERT_TRUE(made) << made.error().message();
        EXPECT_EQ(made.value()->path(), path() / "models/.P1.work");
        EXPECT_TRUE(fs::is_empty(made.value()->path()));
    }
    EXPECT_TRUE(isTidy());
    EXPECT_FALSE(RunFolder::makeFor(path() / "none/P1.pdb"));
}

TEST_F(RunFolderTest, ThatOfAModelIsLeftToTheRunThatHasIt)
{
    const auto first = RunFolder::makeFor(model());
    ASSERT_TRUE(first && first.value()->write("x", "text"));
    const auto second = RunFolder::makeFor(model(), {});
    ASSERT_FALSE(second);
    EXPECT_EQ(second.error().message(), "P1.pdb: is being built by another run of kestram");
    EXPECT_EQ(read("models/.P1.work/x"), "text");
    EXPECT_TRUE(RunFolder::makeFor(path() / "models/P2.pdb", {})) << "another model";
}

TEST_F(RunFolderTest, ARunWaitsForTheOneBeforeToHavePutThingsInOrder)
{
    auto first = RunFolder::makeFor(model());
    ASSERT_TRUE(first);
    std::thread later([&] { first.value().reset(); });
    const auto second = RunFolder::makeFor(model(), std::chrono::minutes(1));
    later.join();
    ASSERT_TRUE(second) << second.error().message();
    EXPECT_TRUE(fs::is_directory(second.value()->path()));
}

// The adapter and the process that watches over it both remove it, and a new run may begin between.
TEST_F(RunFolderTest, WhatWasRemovedElsewhereIsAnotherRunsByThen)
{
    const auto first = RunFolder::makeFor(model());
    ASSERT_TRUE(first);
    first.value()->remove();
    EXPECT_TRUE(isTidy());
    const auto second = RunFolder::makeFor(model(), {});
    ASSERT_TRUE(second) << second.error().message();
    first.value()->remove();
    EXPECT_TRUE(fs::is_directory(second.value()->path()));
}

} // namespace RunFolderTest
