// SPDX-License-Identifier: GPL-3.0-or-later
// Whole files: written, read back, compared, and only then in place of the old one.
#include "FileWriter.h"

#include "RecordBuilder.h"
#include "TestFiles.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

namespace TAMBO::formats {
namespace FileWriterTest {

namespace fs = std::filesystem;

Result<void> write(const fs::path &path, const AlignmentRecord &record, const WriteOptions &options)
{
    return writeFile(path, std::span(&record, 1), options);
}

std::string messageOf(const Result<void> &written)
{
    return written ? std::string("it was written") : written.error().message();
}

const std::vector<std::string> kRowFormats = {"pir", "fasta", "a2m"};

TEST(FileWriter, WhatIsWrittenReadsBackTheSame)
{
    AlignmentRecord record = recordOf({{"a", "AC-DEFaz"}, {"b b", "--CDEF--"}, {"", "--------"}});
    record.rows[0].description = "Trypsin, chain A";
    for (const std::string &format : kRowFormats) {
        const TemporaryFile file("x." + format, "");
        ASSERT_EQ(complaintOf(write(file.path(), record, optionsOf(format))), "") << format;
        const AlignmentRecord readBack = contentsOf(file.path()).alignments.at(0);
        EXPECT_EQ(complaintOf(FittedAlignment(record, optionsOf(format)).checkSame(readBack)), "")
            << format;
        EXPECT_EQ(rowTexts(readBack),
                  (std::vector<std::string>{"AC-DEFaz", "--CDEF--", "--------"}))
            << format;
        EXPECT_EQ(readBack.rows[0].description, "Trypsin, chain A") << format;
    }
}

TEST(FileWriter, ACompressedFileReadsBackTheSame)
{
    const AlignmentRecord record = recordOf({{"a", "AC-D"}, {"b", "--CD"}});
    const TemporaryFile file("x.fasta.gz", "");
    ASSERT_EQ(complaintOf(write(file.path(), record, optionsOf("fasta"))), "");
    EXPECT_TRUE(bytesOf(file.path()).starts_with("\x1f\x8b"));
    EXPECT_EQ(rowTexts(contentsOf(file.path()).alignments.at(0)),
              (std::vector<std::string>{"AC-D", "--CD"}));
}

TEST(FileWriter, SequencesThatAreNotAlignedStaySo)
{
    AlignmentRecord record = recordOf({{"a", "ACD"}, {"b", "A"}});
    record.isAligned = false;
    for (const char *format : {"pir", "fasta"}) {
        const TemporaryFile file(std::string("x.") + format, "");
        ASSERT_EQ(complaintOf(write(file.path(), record, optionsOf(format))), "") << format;
        const AlignmentRecord readBack = contentsOf(file.path()).alignments.at(0);
        EXPECT_FALSE(readBack.isAligned);
        EXPECT_EQ(rowTexts(readBack), (std::vector<std::string>{"ACD", "A"}));
    }
}

// Such a file could be A2M without dots; what it says of the sequences is right all the same.
TEST(FileWriter, SequencesThatLookLikeInsertionsAreWritten)
{
    AlignmentRecord record = recordOf({{"a", "ACd"}, {"b", "AC"}});
    record.isAligned = false;
    const TemporaryFile file("x.fasta", "");
    ASSERT_EQ(complaintOf(write(file.path(), record, optionsOf("fasta"))), "");
    EXPECT_EQ(bytesOf(file.path()), ">a\nACd\n>b\nAC\n");
}

TEST(FileWriter, WhatCannotBeHeldIsRefusedAndTheOldFileStays)
{
    AlignmentRecord record = recordOf({{"a", "ACD"}, {"b", "A"}});
    record.isAligned = false;
    const TemporaryFile file("x.sto", "old");
    EXPECT_EQ(messageOf(write(file.path(), record, optionsOf("stockholm"))),
              "x.sto: The sequences are not aligned, and a Stockholm file holds alignments only.");
    EXPECT_EQ(messageOf(write(file.path(), AlignmentRecord(), optionsOf("pir"))),
              "x.sto: There is nothing to write: the alignment has no residues.");
    EXPECT_EQ(bytesOf(file.path()), "old");
}

TEST(FileWriter, SeveralAlignmentsNeedAFormatThatHoldsThem)
{
    const std::vector<AlignmentRecord> records(2, recordOf({{"a", "AC"}}));
    const TemporaryFile file("x.fasta", "old");
    EXPECT_EQ(messageOf(writeFile(file.path(), records, optionsOf("fasta"))),
              "x.fasta: a FASTA file holds one alignment, not 2");
    EXPECT_EQ(messageOf(writeFile(file.path(), std::span<const AlignmentRecord>(),
                                  optionsOf("stockholm"))),
              "x.fasta: a Stockholm file holds one alignment, not 0");
    EXPECT_EQ(bytesOf(file.path()), "old");
}

TEST(FileWriter, AFileThatCannotBeWrittenIsNamedWithTheCause)
{
    const AlignmentRecord record = recordOf({{"a", "AC"}});
    const TemporaryFile beside("x.ali", "");
    EXPECT_EQ(messageOf(write(beside.path() / "y.ali", record, {})),
              "y.ali: cannot be written: Not a directory");
    EXPECT_EQ(messageOf(write("/dev/full", record, {})),
              "full: cannot be written: No space left on device");
}

TEST(FileWriter, AFileThatIsWrittenOtherwiseThanUsualIsRemarkedOn)
{
    const AlignmentRecord record = recordOf({{"a", "AC"}});
    const TemporaryFile file("x.fasta", "old");
    int asked = 0;
    WriteAids aids{[&] {
                       ++asked;
                       return file.path().parent_path();
                   },
                   {}};
    EXPECT_EQ(complaintOf(writeFile(file.path(), std::span(&record, 1), optionsOf("fasta"), &aids)),
              "");
    EXPECT_EQ(aids.remarks, std::vector<std::string>{});
    // Nothing is made for files that need no copy.
    EXPECT_EQ(asked, 0);
    const fs::path second = file.path().parent_path() / "second";
    fs::create_hard_link(file.path(), second);
    EXPECT_EQ(complaintOf(writeFile(file.path(), std::span(&record, 1), optionsOf("pir"), &aids)),
              "");
    EXPECT_EQ(aids.remarks, std::vector<std::string>{
                                "x.fasta: was written in place, because it has several links"});
    EXPECT_GT(asked, 0);
    EXPECT_EQ(bytesOf(second), ">P1;a\nsequence:a::::::::\nAC*\n\n");
}

// Names that only a damaged memory could hold show what reading back is for.
TEST(FileWriter, AFileThatReadsBackDifferentlyIsNotPutInPlace)
{
    AlignmentRecord record = recordOf({{"a", "AC-D"}});
    // The occupancy says three letters, there are four.
    record.rows[0].sequence.letters = "ACDE";
    const TemporaryFile file("x.fasta", "old");
    EXPECT_EQ(messageOf(write(file.path(), record, optionsOf("fasta"))),
              "x.fasta: was not written, because reading it back gave something else: row 1, "
              "\"a\", has other letters");
    EXPECT_EQ(bytesOf(file.path()), "old");
    unsigned files = 0;
    for (const auto &entry : fs::directory_iterator(file.path().parent_path()))
        files += entry.is_regular_file() ? 1 : 0;
    EXPECT_EQ(files, 1U);
}

TEST(FileWriter, EveryKindOfDifferenceIsFound)
{
    const AlignmentRecord record = recordOf({{"a", "AC-D"}, {"b", "-C-D"}});
    const FittedAlignment fitted(record, {});
    const auto differenceTo = [&](AlignmentRecord changed) {
        // As the title lines are read.
        for (RowRecord &row : changed.rows)
            if (row.description.empty())
                row.description = "sequence:" + row.name + "::::::::";
        return complaintOf(fitted.checkSame(changed));
    };
    EXPECT_EQ(differenceTo(record), "");
    EXPECT_EQ(differenceTo(recordOf({{"a", "AC-D"}})), "it has 1 rows instead of 2");
    EXPECT_EQ(differenceTo(recordOf({{"a", "AC-D"}, {"c", "-C-D"}})),
              "row 2, \"b\", has the name \"c\"");
    EXPECT_EQ(differenceTo(recordOf({{"a", "AC-D"}, {"b", "-C-E"}})),
              "row 2, \"b\", has other letters");
    EXPECT_EQ(differenceTo(recordOf({{"a", "AC-D"}, {"b", "--CD"}})),
              "row 2, \"b\", has its gaps at other places");
    EXPECT_EQ(differenceTo(recordOf({{"a", "AC-D-"}, {"b", "-C-D-"}})),
              "row 1, \"a\", has its gaps at other places");
    AlignmentRecord described = record;
    described.rows[0].description = "else";
    EXPECT_EQ(differenceTo(described), "row 1, \"a\", has another description");
    AlignmentRecord broken = record;
    broken.rows[1].chainBreaks = {{1, 2}};
    EXPECT_EQ(differenceTo(broken), "row 2, \"b\", has its chain breaks at other places");
}

TEST(FileWriter, ABreakInAnotherColumnOfTheSameGapIsADifference)
{
    AlignmentRecord record = recordOf({{"a", "AC---D"}});
    record.rows[0].description = "title";
    record.rows[0].chainBreaks = {{2, 4}};
    AlignmentRecord moved = record;
    moved.rows[0].chainBreaks = {{2, 2}};
    EXPECT_EQ(complaintOf(FittedAlignment(record, {}).checkSame(record)), "");
    EXPECT_EQ(complaintOf(FittedAlignment(record, {}).checkSame(moved)),
              "row 1, \"a\", has its chain breaks at other places");
}

} // namespace FileWriterTest
} // namespace TAMBO::formats
