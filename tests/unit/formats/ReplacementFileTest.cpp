// SPDX-License-Identifier: GPL-3.0-or-later
// A new file takes the old one's place when it is complete, and not before.
#include "ReplacementFile.h"

#include "ByteSource.h"
#include "TestFiles.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace TAMBO::formats {
namespace {

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
    EXPECT_EQ(source.failure(), std::nullopt);
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

TEST(ReplacementFile, AFolderIsNotReplaced)
{
    const TemporaryFile beside("x.ali", "");
    const fs::path folder = beside.path().parent_path() / "folder.ali";
    fs::create_directory(folder);
    ReplacementFile file(folder);
    ASSERT_TRUE(file.failure().has_value());
    EXPECT_EQ(file.failure()->message, "folder.ali: cannot be written: it is a folder");
    EXPECT_FALSE(file.complete());
    EXPECT_FALSE(file.putInPlace());
    EXPECT_TRUE(fs::is_directory(folder));
}

TEST(ReplacementFile, AFolderThatIsNotThereIsNamedAsTheCause)
{
    const TemporaryFile beside("x.ali", "");
    ReplacementFile file(beside.path().parent_path() / "none" / "x.ali");
    ASSERT_TRUE(file.failure().has_value());
    EXPECT_EQ(file.failure()->message, "x.ali: cannot be written: No such file or directory");
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
            ASSERT_TRUE(file.failure().has_value());
            EXPECT_EQ(file.failure()->message,
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
    ASSERT_TRUE(file.failure().has_value());
    EXPECT_EQ(file.failure()->message, "full: cannot be written: No space left on device");
}

} // namespace
} // namespace TAMBO::formats
