// SPDX-License-Identifier: GPL-3.0-or-later
// What a process that ended half-way has left behind goes; everything else stays.
#include "UnfinishedFiles.h"

#include "ReplacementFile.h"
#include "SystemCalls.h"
#include "TestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <sys/wait.h>
#include <unistd.h>

namespace TAMBO::formats {
namespace UnfinishedFilesTest {

namespace fs = std::filesystem;

// An empty folder, and a process that may leave something there.
class UnfinishedFiles : public ::testing::Test
{
protected:
    ~UnfinishedFiles() override
    {
        if (m_Child > 0) {
            ::kill(m_Child, SIGKILL);
            ::waitpid(m_Child, nullptr, 0);
        }
    }

    [[nodiscard]] const fs::path &folder() const { return m_Folder; }
    [[nodiscard]] std::vector<std::string> files() const
    {
        std::vector<std::string> names;
        for (const auto &entry : fs::directory_iterator(m_Folder))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
    // Another process begins to write x.ali and is then at work until it is ended.
    std::string beginElsewhere()
    {
        int ready[2] = {-1, -1};
        EXPECT_EQ(::pipe(ready), 0);
        m_Child = ::fork();
        if (m_Child == 0) {
            ReplacementFile file(m_Folder / "x.ali");
            file.write("half");
            [[maybe_unused]] const ssize_t told = ::write(ready[1], "x", 1);
            for (;;)
                ::pause();
        }
        ::close(ready[1]);
        char byte = 0;
        EXPECT_EQ(::read(ready[0], &byte, 1), 1);
        ::close(ready[0]);
        const std::vector<std::string> names = files();
        EXPECT_EQ(names.size(), 1U);
        return names.empty() ? std::string() : names.front();
    }
    void endElsewhere()
    {
        ::kill(m_Child, SIGKILL);
        ::waitpid(m_Child, nullptr, 0);
        m_Child = 0;
    }
    // The name of a file that a process left behind.
    std::string leftBehind()
    {
        std::string name = beginElsewhere();
        endElsewhere();
        return name;
    }

private:
    const TemporaryFile m_Made{"made", ""};
    const fs::path m_Folder = [this] {
        fs::remove(m_Made.path());
        return m_Made.path().parent_path();
    }();
    pid_t m_Child = 0;
};

TEST_F(UnfinishedFiles, WhatADeadProcessLeftIsRemovedByTheNextOneThatWritesThere)
{
    const std::string name = leftBehind();
    ASSERT_EQ(name.find(".tambo-"), 0U);
    ReplacementFile file(folder() / "y.ali");
    ASSERT_TRUE(file.complete() && file.putInPlace());
    EXPECT_EQ(files(), std::vector<std::string>{"y.ali"});
}

TEST_F(UnfinishedFiles, WhatAnotherProcessIsWritingStays)
{
    const std::string name = beginElsewhere();
    removeUnfinished(folder());
    EXPECT_EQ(files(), std::vector<std::string>{name});
    endElsewhere();
    removeUnfinished(folder());
    EXPECT_EQ(files(), std::vector<std::string>{});
}

TEST_F(UnfinishedFiles, WhatThisProcessIsWritingStays)
{
    ReplacementFile first(folder() / "x.ali");
    ReplacementFile second(folder() / "y.ali");
    EXPECT_TRUE(first.complete() && second.complete());
    EXPECT_TRUE(first.putInPlace() && second.putInPlace());
    EXPECT_EQ(files(), (std::vector<std::string>{"x.ali", "y.ali"}));
}

TEST_F(UnfinishedFiles, ANumberThatAnotherProcessHasNowDoesNotProtectThem)
{
    std::string name = leftBehind();
    // The number becomes our own; the digest behind it tells of another time of beginning, which
    // that of a process begun in the same tick of the clock would not.
    const std::size_t number = name.find('-', 7) + 1;
    name.replace(number, name.find('-', number) - number, std::to_string(::getpid()));
    char &digit = name[name.find('-', number) + 1];
    digit = digit == '0' ? '1' : '0';
    std::ofstream(folder() / name) << "half";
    removeUnfinished(folder());
    EXPECT_EQ(files(), std::vector<std::string>{});
}

TEST_F(UnfinishedFiles, FilesOfAnotherHostStay)
{
    const std::string name = leftBehind();
    std::string elsewhere = name;
    elsewhere[7] = name[7] == '0' ? '1' : '0';
    fs::rename(folder() / name, folder() / elsewhere);
    removeUnfinished(folder());
    EXPECT_EQ(files(), std::vector<std::string>{elsewhere});
}

TEST_F(UnfinishedFiles, FilesThatMerelyLookLikeItStay)
{
    const std::string name = leftBehind();
    const std::vector<std::string> others = {".tambo-",
                                             ".tambo-12345.ali",
                                             ".tambo-notes.txt",
                                             name.substr(0, 24) + "x-0-0",
                                             name.substr(0, 24) + "4000000",
                                             name.substr(1),
                                             name.substr(0, 24) + "-1" + name.substr(24)};
    for (const std::string &other : others)
        std::ofstream(folder() / other) << "mine";
    fs::create_symlink(folder() / others[0], folder() / (name + ".link"));
    fs::create_directory(folder() / (name + ".folder"));
    removeUnfinished(folder());
    std::vector<std::string> expected = others;
    expected.push_back(name + ".link");
    expected.push_back(name + ".folder");
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(files(), expected);
}

TEST_F(UnfinishedFiles, FilesOfAnotherUserStay)
{
    const std::string name = leftBehind();
    {
        SystemCalls calls;
        calls.user = ::geteuid() + 1;
        removeUnfinished(folder());
    }
    EXPECT_EQ(files(), std::vector<std::string>{name});
    removeUnfinished(folder());
    EXPECT_EQ(files(), std::vector<std::string>{});
}

TEST_F(UnfinishedFiles, AFolderThatIsNotThereIsNoTrouble)
{
    removeUnfinished(folder() / "none");
    EXPECT_EQ(files(), std::vector<std::string>{});
}

TEST_F(UnfinishedFiles, NamesAreNotUsedTwiceAndFitIntoAFolder)
{
    const std::string name = unfinishedName(".sto.gz");
    EXPECT_NE(name, unfinishedName(".sto.gz"));
    EXPECT_TRUE(name.ends_with(".sto.gz"));
    EXPECT_LT(name.size(), 80U);
}

} // namespace UnfinishedFilesTest
} // namespace TAMBO::formats
