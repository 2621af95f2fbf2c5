// SPDX-License-Identifier: GPL-3.0-or-later
// Readers of every alignment format look again and again whether they are to go on: in the file, on
// however many threads, and at the work that is left when all of it has been read.
#include "FileReader.h"
#include "FileWriter.h"
#include "PieceStore.h"
#include "TestFiles.h"
#include "TextReader.h"
#include "WorkLooks.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace TAMBO::formats {
namespace LooksTest {

// Larger than what one thread reads alone.
constexpr std::size_t kRows = 40'000;
constexpr std::size_t kColumns = 120;

struct FileKind
{
    const char *name;
    FileFormat format;
    // Work that is done once all is read: rows of so many pieces, or so many characters.
    std::size_t rowsAtOnce;
    std::size_t charactersAtOnce;
};

// As the test is called.
void PrintTo(const FileKind &kind, std::ostream *out)
{
    *out << kind.name;
}

constexpr FileKind kKinds[] = {
    {"Fasta", FileFormat::Fasta, 0, 0},
    {"A3m", FileFormat::A3m, 0, WorkLooks::kBetween},
    {"Pir", FileFormat::Pir, 0, 0},
    {"Clustal", FileFormat::Clustal, PieceStore::kGroup, 0},
    {"Stockholm", FileFormat::Stockholm, PieceStore::kGroup, 0},
    {"Msf", FileFormat::Msf, PieceStore::kGroup, 0},
    {"Nexus", FileFormat::Nexus, PieceStore::kGroup, 0},
    {"Phylip", FileFormat::Phylip, PieceStore::kGroup, WorkLooks::kBetween},
};

class Looks : public testing::TestWithParam<FileKind>
{
protected:
    static void SetUpTestSuite()
    {
        s_Record = std::make_unique<AlignmentRecord>();
        for (std::size_t row = 0; row < kRows; ++row) {
            RowRecord &made = s_Record->rows.emplace_back();
            made.name = "r" + std::to_string(row);
            std::string cells;
            for (std::size_t column = 0; column < kColumns; ++column)
                cells += "ACDEF-GHIKL-"[(row + column * 7) % 12];
            made.sequence.append(cells);
        }
    }
    static void TearDownTestSuite() { s_Record.reset(); }

    Looks()
    {
        if (GetParam().format == FileFormat::A3m)
            writeInsertions();
        else
            write();
        m_Size = std::filesystem::file_size(m_File.path());
        EXPECT_GE(m_Size, PartSizes().worthAThread);
    }

    void write()
    {
        const Result<void> written =
            writeFile(m_File.path(), std::span(s_Record.get(), 1), {GetParam().format});
        EXPECT_TRUE(written) << written.error().message();
    }
    // Rows that get their columns back when all are known.
    void writeInsertions()
    {
        std::ofstream out(m_File.path());
        for (std::size_t row = 0; row < kRows; ++row)
            out << ">r" << row << '\n'
                << std::string(kColumns / 2, 'A') << std::string(row % 3, 'c')
                << std::string(kColumns / 2, 'D') << '\n';
    }

    // What each look is told, up to the one that is the last; that one cancels.
    std::vector<std::uint64_t> looks(std::size_t last)
    {
        std::vector<std::uint64_t> told;
        const Result<FileContents> read =
            readPackedFile(m_File.path(), [&](std::uint64_t done, std::uint64_t) {
                told.push_back(done);
                return told.size() != last;
            });
        EXPECT_EQ(read.has_value(), told.size() < last);
        if (!read) {
            EXPECT_EQ(read.error().kind, FailureKind::Cancelled) << read.error().message();
        }
        return told;
    }

    static std::unique_ptr<AlignmentRecord> s_Record;
    TemporaryFile m_File{"made", ""};
    std::uint64_t m_Size = 0;
};

std::unique_ptr<AlignmentRecord> Looks::s_Record;

TEST_P(Looks, WorkBetweenThemIsBounded)
{
    constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 18U;
    const std::vector<std::uint64_t> told = looks(~std::size_t{});
    std::uint64_t before = 0;
    std::size_t behind = 0;
    for (const std::uint64_t done : told) {
        EXPECT_LE(done - before, kMostBytes);
        behind += done == m_Size ? 1 : 0;
        before = done;
    }
    EXPECT_EQ(before, m_Size);
    const FileKind &kind = GetParam();
    if (kind.rowsAtOnce > 0) {
        EXPECT_GE(behind, kRows / kind.rowsAtOnce);
    }
    if (kind.charactersAtOnce > 0) {
        EXPECT_GE(behind, 2 * kRows * kColumns / kind.charactersAtOnce);
    }
}

TEST_P(Looks, EachOfThemEndsTheReading)
{
    const std::size_t all = looks(~std::size_t{}).size();
    for (const std::size_t last : {std::size_t{1}, std::size_t{3}, all / 2, all - 1, all})
        EXPECT_EQ(looks(last).size(), last);
}

TEST(LooksAtPackedFiles, TheirNumberGoesByWhatIsInThem)
{
    constexpr std::size_t kText = std::size_t{8} << 20U;
    const TemporaryFile file("made.gz", gzipped(">a\n" + std::string(kText, 'A') + '\n'));
    std::size_t looks = 0;
    EXPECT_TRUE(readPackedFile(file.path(), [&](std::uint64_t, std::uint64_t) {
        ++looks;
        return true;
    }));
    EXPECT_GE(looks, kText >> 18U);
    const std::size_t last = looks - 1;
    looks = 0;
    const Result<FileContents> read =
        readPackedFile(file.path(), [&](std::uint64_t, std::uint64_t) { return ++looks != last; });
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().kind, FailureKind::Cancelled);
    EXPECT_EQ(looks, last);
}

INSTANTIATE_TEST_SUITE_P(Formats, Looks, testing::ValuesIn(kKinds),
                         [](const auto &kind) { return std::string(kind.param.name); });

} // namespace LooksTest
} // namespace TAMBO::formats
