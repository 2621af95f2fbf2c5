// SPDX-License-Identifier: GPL-3.0-or-later
// A new file takes the old one's place when it is complete, and not before.
#include "ReplacementFile.h"

#include "ByteSource.h"
#include "SystemCalls.h"
#include "TestFiles.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace TAMBO::formats {
namespace ReplacementFileTest {

namespace fs = std::filesystem;

std::vector<std::string> filesBeside(const fs::path &file)
{
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(file.parent_path()))
        names.push_back(entry.path().filename().string());
    return names;
}

// Limits the size of files that this process writes, as a full disk does.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_Before);
        const rlimit limit{bytes, m_Before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
        m_Handler = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_Before);
        std::signal(SIGXFSZ, m_Handler);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    rlimit m_Before{};
    void (*m_Handler)(int) = nullptr;
};

TEST(ReplacementFile, TheOldFileStaysUntilTheNewOneIsPutInPlace)
{
    const TemporaryFile old("x.sto", "old");
    ReplacementFile file(old.path());
    file.write("new");
    ASSERT_TRUE(file.complete());
    EXPECT_EQ(bytesOf(old.path()), "old");
    EXPECT_EQ(bytesOf(file.path()), "new");
    EXPECT_EQ(file.path().parent_path(), old.path().parent_path());
    EXPECT_EQ(file.path().extension(), ".sto");
    ASSERT_TRUE(file.putInPlace());
    EXPECT_EQ(bytesOf(old.path()), "new");
    EXPECT_EQ(filesBeside(old.path()), std::vector<std::string>{"x.sto"});
}

TEST(ReplacementFile, AFileThatIsGivenUpLeavesNothingBehind)
{
    const TemporaryFile old("x.ali", "old");
    {
        ReplacementFile file(old.path());
        file.write("new");
        ASSERT_TRUE(file.complete());
    }
    EXPECT_EQ(bytesOf(old.path()), "old");
    EXPECT_EQ(filesBeside(old.path()), std::vector<std::string>{"x.ali"});
}

TEST(ReplacementFile, ANameThatEndsInGzIsCompressed)
{
    const TemporaryFile old("x.sto.gz", "old");
    std::string text;
    for (int i = 0; i < 200000; ++i)
        text += std::to_string(i) + '\n';
    ReplacementFile file(old.path());
    EXPECT_TRUE(file.path().string().ends_with(".sto.gz"));
    for (std::size_t at = 0; at < text.size(); at += 1000)
        file.write(std::string_view(text).substr(at, 1000));
    ASSERT_TRUE(file.complete() && file.putInPlace());
    EXPECT_LT(fs::file_size(old.path()), text.size() / 2);
    const ReadProgress silent;
    ByteSource source(old.path(), silent);
    std::string readBack(text.size() + 1, '\0');
    std::size_t size = 0;
    for (std::size_t got = 1; got > 0; size += got)
        got = source.read(readBack.data() + size, readBack.size() - size);
    readBack.resize(size);
    EXPECT_EQ(complaintOf(source.outcome()), "");
    EXPECT_TRUE(readBack == text);
}

TEST(ReplacementFile, APieceLargerThanTheBufferIsWrittenWhole)
{
    const TemporaryFile old("x", "");
    const std::string large(1 << 20, 'A');
    ReplacementFile file(old.path());
    file.write("a");
    file.write(large);
    file.write("b");
    ASSERT_TRUE(file.complete() && file.putInPlace());
    EXPECT_TRUE(bytesOf(old.path()) == 'a' + large + 'b');
}

TEST(ReplacementFile, PermissionsOfTheOldFileAreKept)
{
    const TemporaryFile old("x.ali", "old");
    fs::permissions(old.path(), fs::perms(0604));
    ReplacementFile file(old.path());
    ASSERT_TRUE(file.complete() && file.putInPlace());
    EXPECT_EQ(fs::status(old.path()).permissions(), fs::perms(0604));
}

struct stat statusOf(const fs::path &path)
{
    struct stat status
    {
    };
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status;
}

// What a case sees of a new text at a path; "" when all went well and there is nothing to say.
std::string written(const fs::path &path, const std::string &text,
                    const ReplacementFile::Scratch &scratch = {})
{
    ReplacementFile file(path, scratch);
    file.write(text);
    const bool isWritten = file.complete() && file.putInPlace();
    if (!isWritten)
        return file.outcome() ? "no failure" : file.outcome().error().message();
    return file.remark().value_or("");
}

TEST(ReplacementFile, OwnerAndGroupOfTheOldFileAreKept)
{
    const TemporaryFile old("x.ali", "old");
    // Only root can give files away.
    if (geteuid() == 0) {
        ASSERT_EQ(chown(old.path().c_str(), 12345, 23456), 0);
    }
    fs::permissions(old.path(), fs::perms(0640));
    const struct stat before = statusOf(old.path());
    std::vector<std::pair<uid_t, gid_t>> asked;
    SystemCalls calls;
    calls.onChown = [&](int, uid_t user, gid_t group) {
        asked.emplace_back(user, group);
        return 0;
    };
    EXPECT_EQ(written(old.path(), "new"), "");
    const struct stat after = statusOf(old.path());
    EXPECT_NE(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(asked, (std::vector<std::pair<uid_t, gid_t>>{{before.st_uid, before.st_gid}}));
}

TEST(ReplacementFile, TheGroupIsKeptWhereTheOwnerCannotBe)
{
    const TemporaryFile old("x.ali", "old");
    if (geteuid() == 0) {
        ASSERT_EQ(chown(old.path().c_str(), 12345, 23456), 0);
    }
    fs::permissions(old.path(), fs::perms(04664));
    const gid_t group = statusOf(old.path()).st_gid;
    SystemCalls calls;
    calls.onChown = [](int, uid_t user, gid_t) {
        return user == static_cast<uid_t>(-1) ? 0 : EPERM;
    };
    EXPECT_EQ(written(old.path(), "new"), "");
    EXPECT_EQ(statusOf(old.path()).st_gid, group);
    EXPECT_EQ(statusOf(old.path()).st_uid, geteuid());
    // Run as another user is what nobody asked for.
    EXPECT_EQ(statusOf(old.path()).st_mode & 07777U, 0664U);
}

TEST(ReplacementFile, RightsOfAGroupThatCannotBeKeptGoToNoOtherGroup)
{
    const TemporaryFile old("x.ali", "old");
    fs::permissions(old.path(), fs::perms(0664));
    SystemCalls calls;
    calls.onChown = [](int, uid_t, gid_t) { return EPERM; };
    EXPECT_EQ(written(old.path(), "new"), "");
    EXPECT_EQ(bytesOf(old.path()), "new");
    EXPECT_EQ(statusOf(old.path()).st_mode & 07777U, 0644U);
}

TEST(ReplacementFile, WhatReplacesAPrivateFileIsPrivateFromTheBeginning)
{
    const TemporaryFile old("x.ali", "old");
    fs::permissions(old.path(), fs::perms(0600));
    const ReplacementFile file(old.path());
    EXPECT_EQ(statusOf(file.path()).st_mode & 07777U, 0600U);
}

TEST(ReplacementFile, TheFolderIsOnTheDiskToo)
{
    const TemporaryFile old("x.ali", "old");
    std::vector<std::string> synced;
    SystemCalls calls;
    calls.onSync = [&](int file) {
        synced.push_back(pathOf(file));
        // The name is new already when the folder's turn comes.
        if (synced.size() == 2) {
            EXPECT_EQ(bytesOf(old.path()), "new");
        }
        return 0;
    };
    EXPECT_EQ(written(old.path(), "new"), "");
    ASSERT_EQ(synced.size(), 2U);
    EXPECT_EQ(synced[1], fs::canonical(old.path().parent_path()).string());
}

TEST(ReplacementFile, AFolderThatTheDiskDoesNotTakeIsSaid)
{
    const TemporaryFile old("x.ali", "old");
    SystemCalls calls;
    int count = 0;
    calls.onSync = [&](int) { return ++count == 2 ? EIO : 0; };
    EXPECT_EQ(written(old.path(), "new"),
              "x.ali: was written, but may not outlast a sudden end of the system: "
              "Input/output error");
    EXPECT_EQ(bytesOf(old.path()), "new");
    // A file system that cannot do it is no news.
    count = 0;
    calls.onSync = [&](int) { return ++count == 2 ? EINVAL : 0; };
    EXPECT_EQ(written(old.path(), "newer"), "");
}

TEST(ReplacementFile, ANewFileHasTheUsualPermissions)
{
    const TemporaryFile beside("x.ali", "");
    const fs::path path = beside.path().parent_path() / "new.ali";
    const mode_t mask = umask(0027);
    {
        ReplacementFile file(path);
        EXPECT_TRUE(file.complete() && file.putInPlace());
    }
    umask(mask);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
}

TEST(ReplacementFile, TheFileThatALinkLeadsToIsReplaced)
{
    const TemporaryFile old("x.ali", "old");
    const TemporaryFile link("link.ali", "");
    fs::remove(link.path());
    fs::create_symlink(old.path(), link.path());
    ReplacementFile file(link.path());
    file.write("new");
    ASSERT_TRUE(file.complete() && file.putInPlace());
    EXPECT_TRUE(fs::is_symlink(link.path()));
    EXPECT_EQ(bytesOf(old.path()), "new");
}

TEST(ReplacementFile, WhatADanglingLinkLeadsToIsMade)
{
    const TemporaryFile beside("x.ali", "");
    const fs::path folder = beside.path().parent_path();
    fs::create_directory(folder / "deep");
    // Relative links start where they are.
    fs::create_symlink("deep/second", folder / "first");
    fs::create_symlink("made.ali", folder / "deep" / "second");
    EXPECT_EQ(written(folder / "first", "new"), "");
    EXPECT_TRUE(fs::is_symlink(folder / "first"));
    EXPECT_TRUE(fs::is_symlink(folder / "deep" / "second"));
    EXPECT_EQ(bytesOf(folder / "deep" / "made.ali"), "new");
    EXPECT_EQ(bytesOf(folder / "first"), "new");
}

TEST(ReplacementFile, ALinkThatLeadsNowhereStaysAndIsAFailure)
{
    const TemporaryFile beside("x.ali", "");
    const fs::path folder = beside.path().parent_path();
    fs::create_symlink("none/x.ali", folder / "link");
    EXPECT_EQ(written(folder / "link", "new"),
              "link: cannot be written: No such file or directory");
    fs::create_symlink("circle", folder / "circle");
    EXPECT_EQ(written(folder / "circle", "new"),
              "circle: cannot be written: Too many levels of symbolic links");
    EXPECT_EQ(fs::read_symlink(folder / "link"), "none/x.ali");
    EXPECT_EQ(fs::read_symlink(folder / "circle"), "circle");
}

// A folder for the copies, and a file in another one that has a second name.
class FileWithTwoNames : public ::testing::Test
{
protected:
    FileWithTwoNames()
    {
        fs::create_hard_link(m_File.path(), m_Second);
        fs::create_directory(m_Scratch);
    }

    [[nodiscard]] std::string write(const std::string &text) const
    {
        return written(m_File.path(), text, [this] { return m_Scratch; });
    }
    [[nodiscard]] std::vector<fs::path> copies() const
    {
        std::vector<fs::path> found;
        for (const auto &entry : fs::directory_iterator(m_Scratch))
            found.push_back(entry.path());
        std::sort(found.begin(), found.end());
        return found;
    }
    // Makes the disk fail when it is to take the file itself, so many times.
    void failToSync(SystemCalls &calls, int times) const
    {
        calls.onSync = [this, times](int file) mutable {
            return pathOf(file) == fs::canonical(m_File.path()).string() && times-- > 0 ? EIO : 0;
        };
    }

    const TemporaryFile m_File{"x.ali", "the old text"};
    const fs::path m_Second = m_File.path().parent_path() / "second.ali";
    const fs::path m_Scratch = m_File.path().parent_path() / "scratch";
};

TEST_F(FileWithTwoNames, StaysOneFileUnderBoth)
{
    for (const std::string text : {"a new text that is longer", "short"}) {
        EXPECT_EQ(write(text), "x.ali: was written in place, because it has several links");
        EXPECT_EQ(bytesOf(m_File.path()), text);
        EXPECT_EQ(bytesOf(m_Second), text);
        EXPECT_TRUE(copies().empty());
    }
    EXPECT_EQ(fs::hard_link_count(m_Second), 2U);
}

TEST_F(FileWithTwoNames, IsCopiedToTheScratchFolderFirst)
{
    ReplacementFile file(m_File.path(), [this] { return m_Scratch; });
    file.write("new");
    ASSERT_TRUE(file.complete());
    EXPECT_EQ(file.path().parent_path(), m_Scratch);
    EXPECT_EQ(statusOf(file.path()).st_mode & 07777U, 0600U);
    EXPECT_EQ(bytesOf(file.path()), "new");
    EXPECT_EQ(bytesOf(m_File.path()), "the old text");
}

TEST_F(FileWithTwoNames, GetsItsOldTextBackWhenWritingFails)
{
    SystemCalls calls;
    failToSync(calls, 1);
    EXPECT_EQ(write("a new text that is longer"), "x.ali: cannot be written: Input/output error");
    EXPECT_EQ(bytesOf(m_Second), "the old text");
    EXPECT_TRUE(copies().empty());
}

TEST_F(FileWithTwoNames, IsKeptInTwoCopiesWhenItsOldTextDoesNotComeBack)
{
    SystemCalls calls;
    failToSync(calls, 2);
    const std::string said = write("new");
    const std::vector<fs::path> kept = copies();
    ASSERT_EQ(kept.size(), 2U) << said;
    EXPECT_EQ(bytesOf(kept[0]), "new");
    EXPECT_EQ(bytesOf(kept[1]), "the old text");
    EXPECT_EQ(said, "x.ali: cannot be written: Input/output error; the file is damaged now, what "
                    "it held is in " +
                        kept[1].string() + ", what was to be written is in " + kept[0].string());
}

TEST_F(FileWithTwoNames, IsLeftAloneWhenNoCopyCanBeMade)
{
    fs::remove(m_Scratch);
    EXPECT_EQ(write("new"), "x.ali: cannot be written: No such file or directory");
    EXPECT_EQ(bytesOf(m_Second), "the old text");
}

TEST(ReplacementFile, AFileInAFolderThatTakesNoneIsWrittenInPlace)
{
    const TemporaryFile old("x.ali", "old");
    const fs::path folder = old.path().parent_path();
    fs::permissions(old.path(), fs::perms(0666));
    fs::permissions(folder, fs::perms(0555));
    const auto before = statusOf(old.path()).st_ino;
    EXPECT_EQ(asOrdinaryUser([&] { return written(old.path(), "new"); }),
              "x.ali: was written in place, because nothing can be made in its folder");
    // A new file has nowhere to go.
    EXPECT_EQ(asOrdinaryUser([&] { return written(folder / "y.ali", "new"); }),
              "y.ali: cannot be written: Permission denied");
    EXPECT_EQ(bytesOf(old.path()), "new");
    EXPECT_EQ(statusOf(old.path()).st_ino, before);
    fs::permissions(folder, fs::perms(0755));
}

TEST(ReplacementFile, AFileThatItsFolderKeepsIsWrittenInPlace)
{
    const TemporaryFile old("x.ali", "old");
    SystemCalls calls;
    // As in a folder of all users, where only a file's owner may replace it.
    calls.onRename = [] { return EPERM; };
    EXPECT_EQ(written(old.path(), "new"),
              "x.ali: was written in place, because its folder does not let it be replaced");
    EXPECT_EQ(bytesOf(old.path()), "new");
    EXPECT_EQ(filesBeside(old.path()), std::vector<std::string>{"x.ali"});
    calls.onRename = [] { return EIO; };
    EXPECT_EQ(written(old.path(), "newer"), "x.ali: cannot be written: Input/output error");
    EXPECT_EQ(bytesOf(old.path()), "new");
}

TEST(ReplacementFile, ANameThatIsAllEndingCanBeWritten)
{
    const TemporaryFile beside("x.ali", "");
    const fs::path folder = beside.path().parent_path();
    for (const std::string &name :
         {"x." + std::string(250, 'y'), "x." + std::string(245, 'y') + ".gz"}) {
        EXPECT_EQ(written(folder / name, "new"), "");
        EXPECT_TRUE(fs::exists(folder / name));
    }
}

TEST(ReplacementFile, AFileThatMayNotBeWrittenIsNotReplacedEither)
{
    const TemporaryFile old("x.ali", "old");
    fs::permissions(old.path().parent_path(), fs::perms::all);
    fs::permissions(old.path(), fs::perms(0444));
    EXPECT_EQ(asOrdinaryUser([&] { return written(old.path(), "new"); }),
              "x.ali: cannot be written: Permission denied");
    EXPECT_EQ(bytesOf(old.path()), "old");
}

TEST(ReplacementFile, AFolderIsNotReplaced)
{
    const TemporaryFile beside("x.ali", "");
    const fs::path folder = beside.path().parent_path() / "folder.ali";
    fs::create_directory(folder);
    ReplacementFile file(folder);
    ASSERT_FALSE(file.outcome());
    EXPECT_EQ(complaintOf(file.outcome()), "folder.ali: cannot be written: it is a folder");
    EXPECT_FALSE(file.complete());
    EXPECT_FALSE(file.putInPlace());
    EXPECT_TRUE(fs::is_directory(folder));
}

TEST(ReplacementFile, AFolderThatIsNotThereIsNamedAsTheCause)
{
    const TemporaryFile beside("x.ali", "");
    ReplacementFile file(beside.path().parent_path() / "none" / "x.ali");
    ASSERT_FALSE(file.outcome());
    EXPECT_EQ(complaintOf(file.outcome()), "x.ali: cannot be written: No such file or directory");
}

TEST(ReplacementFile, AFullDiskKeepsTheOldFile)
{
    for (const char *name : {"x.ali", "x.ali.gz"}) {
        const TemporaryFile old(name, "old");
        std::string noise(600000, '\0');
        unsigned state = 7;
        for (char &byte : noise)
            byte = static_cast<char>((state = state * 1664525U + 1013904223U) >> 24U);
        {
            const FileSizeLimit limit(100000);
            ReplacementFile file(old.path());
            file.write(noise);
            EXPECT_FALSE(file.complete());
            EXPECT_FALSE(file.putInPlace());
            ASSERT_FALSE(file.outcome());
            EXPECT_EQ(complaintOf(file.outcome()),
                      std::string(name) + ": cannot be written: File too large");
        }
        EXPECT_EQ(bytesOf(old.path()), "old");
        EXPECT_EQ(filesBeside(old.path()), std::vector<std::string>{name});
    }
}

TEST(ReplacementFile, APipeGetsTheTextWhenItIsComplete)
{
    const TemporaryFile beside("x", "");
    const fs::path pipe = beside.path().parent_path() / "pipe.ali";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::string received;
    std::thread reader([&] { received = bytesOf(pipe); });
    {
        ReplacementFile file(pipe);
        file.write("text");
        EXPECT_TRUE(file.complete());
        EXPECT_EQ(bytesOf(file.path()), "text");
        EXPECT_TRUE(file.putInPlace());
    }
    reader.join();
    EXPECT_EQ(received, "text");
    EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST(ReplacementFile, ADeviceThatTakesNothingIsAFailure)
{
    ReplacementFile file("/dev/full");
    file.write("text");
    EXPECT_TRUE(file.complete());
    EXPECT_FALSE(file.putInPlace());
    ASSERT_FALSE(file.outcome());
    EXPECT_EQ(complaintOf(file.outcome()), "full: cannot be written: No space left on device");
}

} // namespace ReplacementFileTest
} // namespace TAMBO::formats
