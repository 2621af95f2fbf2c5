// SPDX-License-Identifier: GPL-3.0-or-later
// The last versions of a file stay beside it, and none is lost when the file cannot be written.
#include "BackupFiles.h"

#include "ReplacementFile.h"
#include "SystemCalls.h"
#include "TestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <sys/stat.h>

namespace TAMBO::formats {
namespace BackupFilesTest {

namespace fs = std::filesystem;

// What a case sees of a new text; "" when all went well and there is nothing to say.
std::string written(const fs::path &path, const std::string &text)
{
    ReplacementFile file(path, [&path] { return path.parent_path(); });
    file.keepBackups();
    file.write(text);
    const bool isWritten = file.complete() && file.putInPlace();
    if (!isWritten)
        return file.outcome() ? "no failure" : file.outcome().error().message();
    return file.remark().value_or("");
}

// All that is in the folder.
using Texts = std::map<std::string, std::string>;
Texts textsBeside(const fs::path &file)
{
    Texts texts;
    for (const auto &entry : fs::directory_iterator(file.parent_path()))
        texts[entry.path().filename().string()] = bytesOf(entry.path());
    return texts;
}

class Backups : public testing::Test
{
protected:
    const TemporaryFile m_File{"x.ali", "first"};
};

TEST_F(Backups, AreTheLastThreeVersions)
{
    EXPECT_EQ(written(m_File.path(), "second"), "");
    EXPECT_EQ(textsBeside(m_File.path()), (Texts{{"x.ali", "second"}, {"x.ali.1.bak~", "first"}}));
    for (const char *text : {"third", "fourth", "fifth"})
        EXPECT_EQ(written(m_File.path(), text), "");
    EXPECT_EQ(textsBeside(m_File.path()), (Texts{{"x.ali", "fifth"},
                                                 {"x.ali.1.bak~", "fourth"},
                                                 {"x.ali.2.bak~", "third"},
                                                 {"x.ali.3.bak~", "second"}}));
}

TEST_F(Backups, AreTheFilesThatTheyWereWithTheirRights)
{
    fs::permissions(m_File.path(), fs::perms(0604));
    const auto time = fs::last_write_time(m_File.path());
    EXPECT_EQ(written(m_File.path(), "second"), "");
    const fs::path backup = BackupFiles::nameOf(m_File.path(), 1);
    EXPECT_EQ(fs::status(backup).permissions(), fs::perms(0604));
    EXPECT_EQ(fs::last_write_time(backup), time);
    EXPECT_EQ(fs::hard_link_count(backup), 1U);
    EXPECT_EQ(fs::hard_link_count(m_File.path()), 1U);
}

TEST_F(Backups, AreNotMadeOfAFileThatIsNew)
{
    const fs::path path = m_File.path().parent_path() / "new.ali";
    EXPECT_EQ(written(path, "text"), "");
    EXPECT_EQ(textsBeside(path), (Texts{{"new.ali", "text"}, {"x.ali", "first"}}));
}

TEST_F(Backups, AreNotMadeOfWhatDoesNotChange)
{
    EXPECT_EQ(written(m_File.path(), "first"), "");
    EXPECT_EQ(textsBeside(m_File.path()), (Texts{{"x.ali", "first"}}));
    EXPECT_EQ(written(m_File.path(), "other"), "") << "as long as before";
    EXPECT_EQ(textsBeside(m_File.path()).size(), 2U);
}

TEST_F(Backups, FillAGapBeforeTheOldestGoes)
{
    for (const char *text : {"second", "third", "fourth"})
        EXPECT_EQ(written(m_File.path(), text), "");
    fs::remove(BackupFiles::nameOf(m_File.path(), 2));
    EXPECT_EQ(written(m_File.path(), "fifth"), "");
    EXPECT_EQ(textsBeside(m_File.path()), (Texts{{"x.ali", "fifth"},
                                                 {"x.ali.1.bak~", "fourth"},
                                                 {"x.ali.2.bak~", "third"},
                                                 {"x.ali.3.bak~", "first"}}));
}

// A file of several names is written in place, and a link of it would change with it.
TEST_F(Backups, OfAFileWithSeveralNamesAreCopies)
{
    fs::create_hard_link(m_File.path(), m_File.path().parent_path() / "second.ali");
    fs::permissions(m_File.path(), fs::perms(0640));
    const auto time = fs::last_write_time(m_File.path());
    EXPECT_EQ(written(m_File.path(), "new"),
              "x.ali: was written in place, because it has several links");
    EXPECT_EQ(textsBeside(m_File.path()),
              (Texts{{"second.ali", "new"}, {"x.ali", "new"}, {"x.ali.1.bak~", "first"}}));
    const fs::path backup = BackupFiles::nameOf(m_File.path(), 1);
    EXPECT_EQ(fs::status(backup).permissions(), fs::perms(0640));
    EXPECT_EQ(fs::last_write_time(backup), time);
}

TEST_F(Backups, ThatCannotBeMadeLeaveTheFileAlone)
{
    for (const char *text : {"second", "third", "fourth"})
        EXPECT_EQ(written(m_File.path(), text), "");
    const Texts before = textsBeside(m_File.path());
    // Each of the renamings, and that of the file itself.
    for (int failing = 0; failing < 5; ++failing) {
        SystemCalls calls;
        int count = 0;
        calls.onRename = [&] { return count++ == failing ? EIO : 0; };
        const std::string said = written(m_File.path(), "fifth");
        EXPECT_EQ(said, failing < 4 ? "x.ali: was not written, because its old version cannot be "
                                      "kept: Input/output error"
                                    : "x.ali: cannot be written: Input/output error")
            << failing;
        EXPECT_EQ(textsBeside(m_File.path()), before) << failing;
    }
}

TEST_F(Backups, KeepAFileFromBeingWrittenInAFolderThatTakesNone)
{
    const fs::path folder = m_File.path().parent_path();
    fs::permissions(m_File.path(), fs::perms(0666));
    fs::permissions(folder, fs::perms(0555));
    EXPECT_EQ(asOrdinaryUser([&] {
                  ReplacementFile file(m_File.path());
                  file.keepBackups();
                  file.write("new");
                  return file.complete() && file.putInPlace() ? std::string()
                                                              : file.outcome().error().message();
              }),
              "x.ali: was not written, because its old version cannot be kept: Permission denied");
    fs::permissions(folder, fs::perms(0755));
    EXPECT_EQ(textsBeside(m_File.path()), (Texts{{"x.ali", "first"}}));
}

// The rename of a file in a folder of all users fails, which is found out late.
TEST_F(Backups, AreMadeOnceWhenAFileTurnsOutNotToBeReplaceable)
{
    SystemCalls calls;
    int count = 0;
    // After that of the version.
    calls.onRename = [&] { return count++ == 1 ? EPERM : 0; };
    EXPECT_EQ(written(m_File.path(), "new"),
              "x.ali: was written in place, because its folder does not let it be replaced");
    EXPECT_EQ(textsBeside(m_File.path()), (Texts{{"x.ali", "new"}, {"x.ali.1.bak~", "first"}}));
}

TEST_F(Backups, StayWhenTheFileIsDamaged)
{
    fs::create_hard_link(m_File.path(), m_File.path().parent_path() / "second.ali");
    SystemCalls calls;
    calls.onSync = [&](int file) {
        return pathOf(file) == fs::canonical(m_File.path()).string() ? EIO : 0;
    };
    const std::string said = written(m_File.path(), "longer than it was");
    EXPECT_NE(said.find("the file is damaged now"), std::string::npos) << said;
    EXPECT_EQ(textsBeside(m_File.path()).at("x.ali.1.bak~"), "first");
}

} // namespace BackupFilesTest
} // namespace TAMBO::formats
