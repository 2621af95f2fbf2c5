// SPDX-License-Identifier: GPL-3.0-or-later
// What holds for files of every format: being found, recognised, unpacked, followed and cancelled.
#include "TestFiles.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <thread>

namespace TAMBO::formats {
namespace FileReaderTest {

using ::testing::ElementsAre;

const std::string kPdbAtom =
    "ATOM      1  CA  ALA A   1       1.000   2.000   3.000  1.00 10.00           C  \n";

TEST(FileReader, FormatIsRecognisedByContentWhateverTheName)
{
    EXPECT_EQ(contentsOf("x.pdb", ">P1;a\n\nAC*\n").format, "pir");
    EXPECT_EQ(contentsOf("x.ali", ">a\nAC\n").format, "fasta");
    EXPECT_EQ(contentsOf("x.fasta", kPdbAtom).format, "pdb");
    EXPECT_EQ(contentsOf("structure", "TARGET free text\n" + kPdbAtom).format, "pdb");
    EXPECT_EQ(contentsOf("x", bytesOf(dataFile("structures/lysozyme_1aki.cif"))).format, "mmcif");
}

TEST(FileReader, MissingFileIsAnError)
{
    EXPECT_EQ(messageOf(std::filesystem::path("/nowhere/at all.ali")),
              "at all.ali: cannot be opened: No such file or directory");
}

TEST(FileReader, AMissingFileIsToldFromABadOne)
{
    EXPECT_EQ(readFile("/nowhere/at all.ali").error().kind, FailureKind::NotFound);
    const TemporaryFile bad("x.ali", ">P1;a\n\nAC#D*\n");
    const Result<FileContents> contents = readFile(bad.path());
    ASSERT_FALSE(contents);
    EXPECT_EQ(contents.error().kind, FailureKind::BadInput);
    EXPECT_EQ(contents.error().place.file, "x.ali");
    EXPECT_EQ(contents.error().place.line, 3U);
}

TEST(FileReader, FolderIsAnError)
{
    const TemporaryFile file("x", "");
    EXPECT_EQ(messageOf(file.path().parent_path()),
              file.path().parent_path().filename().string() + ": is a folder, not a file");
}

TEST(FileReader, EmptyFileIsAnError)
{
    EXPECT_EQ(messageOf("x.ali", ""), "x.ali: is empty");
    EXPECT_EQ(messageOf("x.ali", "\xef\xbb\xbf"), "x.ali: is empty");
    EXPECT_EQ(messageOf("x.ali", " \r\n\t\r\n"), "x.ali: holds nothing but blanks");
    EXPECT_EQ(messageOf("x.ali.gz", gzipped("")), "x.ali.gz: is empty");
}

TEST(FileReader, ArchivesAndOtherEncodingsAreNamed)
{
    EXPECT_EQ(messageOf("x", "BZh91AY&SY"), "x: is a bzip2 archive; unpack it first");
    EXPECT_EQ(messageOf("x", std::string_view("\xfd"
                                              "7zXZ\0\0",
                                              7)),
              "x: is an xz archive; unpack it first");
    EXPECT_EQ(messageOf("x", "PK\x03\x04rest"), "x: is a zip archive; unpack it first");
    EXPECT_EQ(messageOf("x", std::string_view("\xff\xfe>\0a\0\n\0", 8)),
              "x: is UTF-16 text; save it as UTF-8 first");
}

TEST(FileReader, OtherTextIsShownByItsStart)
{
    EXPECT_EQ(messageOf("x", "\n  <!DOCTYPE html>\n<html>\n"),
              "x: begins with \"<!DOCTYPE html>\"; " + kKnownFormats);
}

TEST(FileReader, GzipOfEveryFormatReadsAsThePlainFile)
{
    for (const char *name :
         {"families/serine_proteases/serine_proteases.ali", "alignments/fasta/dhfr_large.a2m",
          "alignments/clustal/hedgehog.aln", "alignments/stockholm/egf_seed.sto",
          "alignments/msf/balibase_BB30013.msf", "alignments/phylip/interlaced.phy",
          "alignments/nexus/globins45_biopython.nex", "structures/lysozyme_1aki.cif",
          "structures/lysozyme_1aki.pdb"}) {
        SCOPED_TRACE(name);
        const std::string bytes = bytesOf(dataFile(name));
        const FileContents plain = contentsOf(dataFile(name));
        const FileContents packed = contentsOf("x.gz", gzipped(bytes));
        EXPECT_EQ(packed.format, plain.format);
        ASSERT_EQ(packed.alignments.size(), plain.alignments.size());
        ASSERT_EQ(packed.structures.size(), plain.structures.size());
        for (std::size_t i = 0; i < plain.alignments.size(); ++i) {
            EXPECT_EQ(packed.alignments[i].name, "x");
            EXPECT_EQ(rowTexts(packed.alignments[i]), rowTexts(plain.alignments[i]));
        }
        for (std::size_t i = 0; i < plain.structures.size(); ++i)
            EXPECT_EQ(sequenceOf(packed.structures[i].chains.at(0)),
                      sequenceOf(plain.structures[i].chains.at(0)));
    }
}

// Sizes at and around those of the buffers, plain and packed.
TEST(FileReader, FilesOfRoundSizesAreReadWhole)
{
    for (const std::size_t size :
         {std::size_t{1} << 12U, std::size_t{1} << 16U, std::size_t{1} << 18U,
          std::size_t{1} << 19U, std::size_t{1} << 20U, std::size_t{3} << 18U}) {
        for (const int off : {-1, 0, 1}) {
            const std::size_t length = size + static_cast<std::size_t>(off + 4) - 4;
            std::string text = ">a\n";
            while (text.size() + 1 < length)
                text += text.size() % 61 == 60 ? '\n' : "ACDEF-GHIK"[text.size() % 10];
            text += '\n';
            std::string residues = text.substr(3);
            residues.erase(std::remove(residues.begin(), residues.end(), '\n'), residues.end());
            ASSERT_EQ(text.size(), length);
            for (const bool packed : {false, true}) {
                const FileContents contents =
                    contentsOf("x", packed ? gzipped(text) : std::string(text));
                ASSERT_EQ(contents.alignments.size(), 1U);
                EXPECT_EQ(contents.alignments[0].rows.at(0).sequence.text(), residues);
            }
        }
    }
}

TEST(FileReader, SeveralPackedPiecesAreOneText)
{
    const std::string packed = gzipped(">a\nAC") + gzipped("DE\n") + std::string(512, '\0');
    EXPECT_THAT(rowTexts(contentsOf("x.gz", packed).alignments.at(0)), ElementsAre("ACDE"));
}

TEST(FileReader, PackedFileThatIsCutShortIsAnError)
{
    const std::string packed = gzipped(bytesOf(dataFile("alignments/fasta/dhfr_large.a2m")));
    for (const std::size_t length :
         {std::size_t{5}, std::size_t{100}, packed.size() / 2, packed.size() - 1})
        EXPECT_EQ(messageOf("x.gz", std::string_view(packed).substr(0, length)),
                  "x.gz: the compressed data stop before their end");
}

TEST(FileReader, PackedFileThatIsDamagedIsAnError)
{
    std::string packed = gzipped(">a\nACDEFGHIKL\n");
    packed[packed.size() - 6] = static_cast<char>(packed[packed.size() - 6] ^ 0x55);
    EXPECT_EQ(messageOf("x.gz", packed),
              "x.gz: the compressed data are damaged (incorrect data check)");
}

TEST(FileReader, ProgressRisesToTheFilesSize)
{
    for (const char *name :
         {"alignments/fasta/dhfr_large.a2m", "alignments/fasta/kunitz_large.fasta.gz",
          "structures/dna_and_protein_1lcd.pdb", "structures/altlocs_4cup.cif"}) {
        SCOPED_TRACE(name);
        std::vector<std::uint64_t> reports;
        const std::uint64_t size = std::filesystem::file_size(dataFile(name));
        const auto result = readFile(dataFile(name), [&](std::uint64_t done, std::uint64_t total) {
            EXPECT_EQ(total, size);
            reports.push_back(done);
            return true;
        });
        EXPECT_TRUE(result);
        ASSERT_GE(reports.size(), 2U);
        EXPECT_TRUE(std::is_sorted(reports.begin(), reports.end()));
        EXPECT_EQ(reports.back(), size);
        for (std::size_t i = 1; i < reports.size(); ++i)
            EXPECT_LE(reports[i] - reports[i - 1], std::uint64_t{1} << 20U);
    }
}

TEST(FileReader, ReadingCanBeCancelledAtEveryReport)
{
    for (const char *name :
         {"alignments/fasta/dhfr_large.a2m", "alignments/fasta/kunitz_large.fasta.gz",
          "families/g6pd/g6pd_templates.ali", "structures/dna_and_protein_1lcd.pdb",
          "structures/altlocs_4cup.cif"}) {
        SCOPED_TRACE(name);
        unsigned all = 0;
        EXPECT_TRUE(readFile(dataFile(name), [&](std::uint64_t, std::uint64_t) {
            ++all;
            return true;
        }));
        for (unsigned last = 1; last <= all; ++last) {
            unsigned reports = 0;
            const auto result = readFile(
                dataFile(name), [&](std::uint64_t, std::uint64_t) { return ++reports < last; });
            ASSERT_FALSE(result);
            EXPECT_EQ(result.error().kind, FailureKind::Cancelled);
            EXPECT_EQ(result.error().message(), "");
            EXPECT_EQ(reports, last);
        }
    }
}

TEST(FileReader, FilesAreReadOnSeveralThreadsAtOnce)
{
    std::vector<std::thread> threads;
    std::vector<std::size_t> rows(4);
    for (std::size_t i = 0; i < rows.size(); ++i)
        threads.emplace_back([&rows, i] {
            const auto result = readFile(dataFile("alignments/fasta/kunitz_large.fasta.gz"));
            rows[i] = result ? result.value().alignments.at(0).rows.size() : 0;
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_THAT(rows, ElementsAre(13600U, 13600U, 13600U, 13600U));
}

} // namespace FileReaderTest
} // namespace TAMBO::formats
