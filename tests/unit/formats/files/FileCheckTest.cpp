// SPDX-License-Identifier: GPL-3.0-or-later
// A file that another program has changed is noticed; one that it has merely touched is not.
#include "FileCheck.h"

#include "FileWriter.h"
#include "RecordBuilder.h"
#include "TestFiles.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <sys/stat.h>

namespace TAMBO::formats {
namespace FileCheckTest {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

const std::string kText = ">a\nAC-D\n>b\nACCD\n";

FileState stateOfReading(const fs::path &path)
{
    const FileContents contents = contentsOf(path);
    EXPECT_TRUE(contents.state.has_value());
    return contents.state.value_or(FileState());
}

void overwrite(const fs::path &path, const std::string &text)
{
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

// As if somebody had done something to it later, however coarse the clock is.
void touch(const fs::path &path)
{
    fs::last_write_time(path, fs::last_write_time(path) + 10s);
}

class FileCheckTest : public testing::Test
{
protected:
    [[nodiscard]] FileChange change() const { return checkFile(m_File.path(), m_Known).change; }

    const TemporaryFile m_File{"x.fasta", kText};
    FileState m_Known = stateOfReading(m_File.path());
};

TEST_F(FileCheckTest, WhatWasReadIsAsItWas)
{
    EXPECT_TRUE(m_Known.hash.has_value());
    EXPECT_EQ(m_Known.size, kText.size());
    EXPECT_EQ(change(), FileChange::None);
}

TEST_F(FileCheckTest, AnotherContentOfTheSameLengthIsAChange)
{
    overwrite(m_File.path(), ">a\nACD-\n>b\nACCD\n");
    touch(m_File.path());
    EXPECT_EQ(change(), FileChange::Content);
}

TEST_F(FileCheckTest, AnotherLengthIsAChangeThoughItsTimeIsTheSame)
{
    const auto before = fs::last_write_time(m_File.path());
    overwrite(m_File.path(), kText + ">c\nACCD\n");
    fs::last_write_time(m_File.path(), before);
    EXPECT_EQ(change(), FileChange::Content);
}

TEST_F(FileCheckTest, AMereTouchIsNone)
{
    touch(m_File.path());
    const FileCheck check = checkFile(m_File.path(), m_Known);
    EXPECT_EQ(check.change, FileChange::None);
    ASSERT_TRUE(check.now.has_value());
    EXPECT_EQ(check.now->hash, m_Known.hash);
    EXPECT_NE(check.now->changed, m_Known.changed);
}

TEST_F(FileCheckTest, ATouchIsAChangeWhenTheContentIsNotKnown)
{
    m_Known.hash.reset();
    EXPECT_EQ(change(), FileChange::None);
    touch(m_File.path());
    EXPECT_EQ(change(), FileChange::Content);
}

TEST_F(FileCheckTest, AnotherFileOfThatNameIsAChangeUnlessItHoldsTheSame)
{
    const fs::path other = m_File.path().parent_path() / "other";
    // So that no new file gets its inode.
    fs::create_hard_link(m_File.path(), m_File.path().parent_path() / "first");
    overwrite(other, kText);
    fs::rename(other, m_File.path());
    EXPECT_EQ(change(), FileChange::None);
    overwrite(other, ">a\nACD-\n>b\nACCD\n");
    fs::rename(other, m_File.path());
    EXPECT_EQ(change(), FileChange::Replaced);
    fs::remove(m_File.path());
    fs::create_directory(m_File.path());
    EXPECT_EQ(change(), FileChange::Replaced);
}

TEST_F(FileCheckTest, AFileWithoutItsFolderIsGone)
{
    EXPECT_EQ(checkFile(m_File.path() / "x", m_Known).change, FileChange::Gone);
    fs::remove(m_File.path());
    EXPECT_EQ(change(), FileChange::Gone);
}

TEST(FileStateOfReading, CountsWhatHappensMeanwhileAsAChange)
{
    const TemporaryFile file("x.fasta", kText);
    bool isFirst = true;
    const Result<FileContents> contents = readFile(file.path(), [&](std::uint64_t, std::uint64_t) {
        if (std::exchange(isFirst, false)) {
            overwrite(file.path(), kText + ">c\nACCD\n");
            touch(file.path());
        }
        return true;
    });
    ASSERT_EQ(complaintOf(contents), "");
    const FileState known = contents.value().state.value_or(FileState());
    EXPECT_EQ(known.size, kText.size());
    EXPECT_EQ(checkFile(file.path(), known).change, FileChange::Content);
}

TEST(FileStateOfReading, IsThatOfTheBytesOnTheDisk)
{
    const TemporaryFile file("x.fasta.gz", gzipped(kText));
    const FileState known = stateOfReading(file.path());
    EXPECT_EQ(known.size, fs::file_size(file.path()));
    const std::optional<FileState> seen = lookAt(file.path());
    ASSERT_TRUE(seen.has_value());
    EXPECT_EQ(seen->hash, known.hash);
}

TEST(FileStateOfReading, IsNoneOfAPipe)
{
    const TemporaryFile beside("x", "");
    const fs::path pipe = beside.path().parent_path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(lookAt(pipe).has_value());
}

// ---- Writing

class StateOfWriting : public testing::TestWithParam<const char *>
{
};

// All that any reader looks at, so that a touch is none afterwards.
TEST_P(StateOfWriting, IsThatOfTheNewFile)
{
    const TemporaryFile file("x.gz", "old");
    AlignmentRecord record;
    record.rows = {rowOf("a", "AC-D"), rowOf("b", "ACCD")};
    WriteAids aids;
    ASSERT_EQ(
        complaintOf(writeFile(file.path(), RecordSource(record), optionsOf(GetParam()), &aids)),
        "");
    ASSERT_TRUE(aids.written.has_value());
    EXPECT_TRUE(aids.written->hash.has_value());
    touch(file.path());
    EXPECT_EQ(checkFile(file.path(), *aids.written).change, FileChange::None);
    overwrite(file.path(), "another");
    EXPECT_EQ(checkFile(file.path(), *aids.written).change, FileChange::Content);
}

INSTANTIATE_TEST_SUITE_P(OfEachFormat, StateOfWriting,
                         testing::Values("pir", "fasta", "a2m", "a3m", "clustal", "stockholm",
                                         "msf", "phylip", "phylip-relaxed-sequential"));

TEST(WritingWhatIsExpected, LeavesAFileThatAnotherProgramHasChanged)
{
    const TemporaryFile file("x.fasta", kText);
    AlignmentRecord record;
    record.rows = {rowOf("a", "AC-D")};
    WriteAids aids;
    aids.expected = stateOfReading(file.path());
    // While the new one is being made.
    aids.step = [&](WriteStage stage, double) {
        if (stage == WriteStage::Comparing)
            overwrite(file.path(), "another text");
        return true;
    };
    EXPECT_EQ(complaintOf(writeFile(file.path(), RecordSource(record), optionsOf("fasta"), &aids)),
              "x.fasta: was not written, because another program has changed it meanwhile");
    EXPECT_EQ(bytesOf(file.path()), "another text");
    EXPECT_FALSE(aids.written.has_value());
    aids.step = {};
    fs::remove(file.path());
    EXPECT_EQ(complaintOf(writeFile(file.path(), RecordSource(record), optionsOf("fasta"), &aids)),
              "")
        << "what is gone is lost already";
}

} // namespace FileCheckTest
} // namespace TAMBO::formats
