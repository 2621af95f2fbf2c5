// SPDX-License-Identifier: GPL-3.0-or-later
// What people are told before a format loses something.
#include "RecordBuilder.h"
#include "support/Outcome.h"

#include <gmock/gmock.h>

namespace TAMBO::formats {
namespace WriteLossesTest {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::vector<std::string> lossesIn(const std::string &format, const AlignmentRecord &record)
{
    return lossesOf(record, optionsOf(format));
}

const std::vector<std::string> kFormats = {"pir",
                                           "fasta",
                                           "a2m",
                                           "a3m",
                                           "clustal",
                                           "stockholm",
                                           "msf",
                                           "phylip",
                                           "phylip-relaxed",
                                           "phylip-sequential",
                                           "phylip-relaxed-sequential",
                                           "nexus"};

TEST(WriteLosses, PlainRowsLoseNothingAnywhere)
{
    for (const std::string &format : kFormats)
        EXPECT_THAT(lossesIn(format, recordOf({{"a", "AC-D"}, {"b", "--CD"}})), IsEmpty())
            << format;
}

TEST(WriteLosses, DescriptionsAreLostWhereRowsHaveNamesOnly)
{
    AlignmentRecord record = recordOf({{"a", "AC"}, {"b", "AC"}, {"c", "AC"}});
    record.rows[0].description = "first";
    record.rows[1].description = "second";
    record.rows[2].description = "sequence:c::::::::";
    for (const char *format : {"clustal", "msf", "phylip", "phylip-relaxed", "nexus"})
        EXPECT_THAT(lossesIn(format, record),
                    ElementsAre("The descriptions of 2 rows are left out."))
            << format;
    for (const char *format : {"pir", "fasta", "a2m", "a3m", "stockholm"})
        EXPECT_THAT(lossesIn(format, record), IsEmpty()) << format;
}

TEST(WriteLosses, NumbersOfSequencesAreLostEverywhere)
{
    AlignmentRecord record = recordOf({{"a", "AC"}, {"b", "AC"}});
    record.rows[1].hasOwnNumbers = true;
    for (const std::string &format : kFormats)
        EXPECT_THAT(lossesIn(format, record),
                    ElementsAre(format == "pir"
                                    ? "The residue numbers of 1 row are left out: a PIR file has "
                                      "those of structures, and counts other residues."
                                    : "The residue numbers of 1 row are left out: without a "
                                      "structure they count from 1 when the file is opened."))
            << format;
    record.rows[1].areNumbersInHeader = true;
    EXPECT_THAT(lossesIn("pir", record), IsEmpty());
    EXPECT_EQ(lossesIn("fasta", record).size(), 1U);
}

TEST(WriteLosses, SecondaryStructureAndModelsAreLostEverywhere)
{
    AlignmentRecord record = recordOf({{"a", "AC"}, {"b", "AC"}, {"c", "AC"}});
    record.rows[0].hasElements = true;
    record.rows[1].hasModel = true;
    record.rows[2].hasModel = true;
    for (const std::string &format : kFormats)
        EXPECT_THAT(lossesIn(format, record),
                    ElementsAre("The secondary structure of 1 row is left out: only a structure "
                                "file has helices, strands and turns.",
                                "2 rows are not tied to a model any more when the file is opened; "
                                "the model can be written as a structure."))
            << format;
}

TEST(WriteLosses, ColorsAreToldOfButAreNoLoss)
{
    AlignmentRecord record = recordOf({{"a", "AC"}, {"b", "AC"}});
    EXPECT_THAT(looksLostOf(record), IsEmpty());
    record.rows[1].hasOwnColors = true;
    EXPECT_THAT(looksLostOf(record),
                ElementsAre("The colors given to residues of 1 row are left out."));
    for (const std::string &format : kFormats)
        EXPECT_THAT(lossesIn(format, record), IsEmpty()) << format;
}

TEST(WriteLosses, TitlesThatBecomeAFieldOfAHeaderAreChanged)
{
    AlignmentRecord record = recordOf({{"a", "AC"}, {"b", "AC"}, {"c", "AC"}, {"d", "AC"}});
    for (RowRecord &row : record.rows)
        row.link.change().structure = "1abc";
    record.rows[0].description = "ratio 1:2";
    record.rows[1].description = "no colon";
    record.rows[2].description = "structureX:1abc:1:A:2:A:name:bug:1.9:0.2";
    record.rows[3].description = "sequence:1abc:1:A:2:A:name:bug::";
    EXPECT_THAT(lossesIn("pir", record),
                ElementsAre("The titles of 2 rows are changed: they become a field of the header "
                            "that names the structure."));
    EXPECT_THAT(lossesIn("fasta", record), Not(Contains(HasSubstr("titles"))));
}

TEST(WriteLosses, LinesOfAnnotationWithOneNameGetNumbersInStockholmFiles)
{
    AlignmentRecord record = recordOf({{"a", "AC"}, {"b", "AC"}});
    record.columnAnnotations = {{"conf", "12"}, {"conf", "34"}};
    for (RowRecord &row : record.rows)
        row.residueAnnotations = {{"SS", "HH"}};
    EXPECT_THAT(
        lossesIn("stockholm", record),
        ElementsAre("1 line of annotation is called like another one: a number is put behind the "
                    "name."));
}

TEST(WriteLosses, StructureLinksAreLostInAllFormatsButPir)
{
    AlignmentRecord record = recordOf({{"a", "AC"}, {"b", "AC"}});
    record.rows[0].link.change().structure = "1abc";
    EXPECT_THAT(lossesIn("pir", record), IsEmpty());
    for (const std::string &format : kFormats) {
        if (format == "pir")
            continue;
        EXPECT_THAT(lossesIn(format, record),
                    ElementsAre("1 row is not tied to the structure any more when the file is "
                                "opened."))
            << format;
    }
}

TEST(WriteLosses, BreaksBetweenChainsAreLostInAllFormatsButPir)
{
    AlignmentRecord record = recordOf({{"a", "A-C"}, {"b", "AC-"}});
    record.rows[0].chainBreaks = {{1, 1}};
    EXPECT_THAT(lossesIn("fasta", record),
                ElementsAre("The breaks between chains (\"/\") in 1 row are written as gaps."));
    EXPECT_THAT(lossesIn("pir", record), IsEmpty());
    record.rows[1].chainBreaks = {{1, std::nullopt}};
    EXPECT_THAT(lossesIn("pir", record),
                ElementsAre("1 break between chains is left out: there is no gap where \"/\" could "
                            "stand."));
}

TEST(WriteLosses, AnnotationIsLostInAllFormatsButStockholm)
{
    AlignmentRecord record = recordOf({{"a", "AC"}, {"b", "AC"}});
    record.annotations = {{"ID", "x"}, {"CC", "1"}, {"CC", "2"}};
    record.columnAnnotations = {{"SS_cons", "HH"}};
    record.rows[0].annotations = {{"OS", "bug"}};
    record.rows[1].annotations = {{"OS", "bug"}, {"DR", "PDB"}};
    record.rows[1].residueAnnotations = {{"SS", "HH"}};
    EXPECT_THAT(lossesIn("stockholm", record), IsEmpty());
    for (const std::string &format : kFormats) {
        if (format == "stockholm")
            continue;
        EXPECT_THAT(lossesIn(format, record),
                    ElementsAre("What is said of the alignment is left out: 3 lines (ID, CC).",
                                "What is said of sequences is left out: 3 lines (OS, DR).",
                                "What is said of columns is left out: 1 line (SS_cons).",
                                "What is said of residues is left out: 1 line (SS)."))
            << format;
    }
}

TEST(WriteLosses, ManyKindsOfAnnotationAreNotAllNamed)
{
    AlignmentRecord record = recordOf({{"a", "A"}});
    for (const char *tag : {"AC", "BC", "CC", "DC", "EC", "FC", "GC"})
        record.annotations.push_back({tag, "x"});
    EXPECT_THAT(lossesIn("pir", record),
                ElementsAre("What is said of the alignment is left out: 7 lines (AC, BC, CC, DC, "
                            "EC, FC, ...)."));
}

TEST(WriteLosses, CharactersThatAreNoLettersAreLostEverywhere)
{
    for (const std::string &format : kFormats)
        EXPECT_THAT(lossesIn(format, recordOf({{"a", "A*C"}, {"b", "A/C"}})),
                    ElementsAre("2 residues are shown as something else than a letter, such as "
                                "\"*\", and written as \"X\"."))
            << format;
}

TEST(WriteLosses, SmallLettersBesideCapitalsAreLostInA2mAndA3m)
{
    const AlignmentRecord record = recordOf({{"a", "AcD"}, {"b", "ACd"}});
    EXPECT_THAT(lossesIn("a2m", record),
                ElementsAre("2 small letters become capitals, because their columns are no "
                            "insertions: an A2M file has small letters in insertions only."));
    EXPECT_THAT(lossesIn("a3m", record),
                ElementsAre("2 small letters become capitals, because their columns are no "
                            "insertions: an A3M file has small letters in insertions only."));
    EXPECT_THAT(lossesIn("fasta", record), IsEmpty());
}

TEST(WriteLosses, TheOrderWithinInsertionsIsLostInA3m)
{
    const AlignmentRecord record = recordOf({{"a", "A--cD"}, {"b", "Aef-D"}, {"c", "A---D"}});
    EXPECT_THAT(lossesIn("a2m", record), IsEmpty());
    EXPECT_THAT(
        lossesIn("a3m", record),
        ElementsAre("Residues in insertions are moved to the left: an A3M file does not say "
                    "how they are aligned with each other."));
}

TEST(WriteLosses, InsertionsThatStandAtTheLeftAlreadyLoseNothingInA3m)
{
    EXPECT_THAT(lossesIn("a3m", recordOf({{"a", "Ac-D"}, {"b", "AefD"}, {"c", "A--D"}})),
                IsEmpty());
}

TEST(WriteLosses, NamesAreCutAndNumbered)
{
    EXPECT_THAT(lossesIn("phylip", recordOf({{"receptor_1", "A"}, {"receptor_12", "A"}})),
                ElementsAre("1 of 2 names is longer than 10 characters and is cut: \"receptor_12\" "
                            "becomes \"receptor_2\".",
                            "1 of 2 names would be the same as another one and gets a number: "
                            "\"receptor_12\" becomes \"receptor_2\"."));
}

TEST(Obstacles, SequencesThatAreNotAlignedNeedPirOrFasta)
{
    AlignmentRecord record = recordOf({{"a", "AC"}, {"b", "ACD"}});
    record.isAligned = false;
    EXPECT_EQ(complaintOf(checkWritable(record, optionsOf("pir"))), "");
    EXPECT_EQ(complaintOf(checkWritable(record, optionsOf("fasta"))), "");
    EXPECT_EQ(complaintOf(checkWritable(record, optionsOf("clustal"))),
              "The sequences are not aligned, and a Clustal file holds alignments only.");
    EXPECT_EQ(complaintOf(checkWritable(record, optionsOf("a3m"))),
              "The sequences are not aligned, and an A3M file holds alignments only.");
    EXPECT_THAT(lossesIn("clustal", record), IsEmpty());
}

TEST(Obstacles, NothingIsNotWritten)
{
    for (const std::string &format : kFormats) {
        EXPECT_EQ(complaintOf(checkWritable(AlignmentRecord(), optionsOf(format))),
                  "There is nothing to write: the alignment has no residues.");
        EXPECT_EQ(complaintOf(checkWritable(recordOf({{"a", ""}}), optionsOf(format))),
                  "There is nothing to write: the alignment has no residues.");
    }
}

TEST(Obstacles, AnAlignmentIsNoStructure)
{
    EXPECT_EQ(complaintOf(checkWritable(recordOf({{"a", "A"}}), optionsOf("pdb"))),
              "An alignment cannot be written as a PDB file.");
}

} // namespace WriteLossesTest
} // namespace TAMBO::formats
