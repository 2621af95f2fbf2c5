// SPDX-License-Identifier: GPL-3.0-or-later
// Every alignment of tests/data through every format that we write, and back.
#include "FileWriter.h"

#include "RecordBuilder.h"
#include "TestFiles.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>

namespace TAMBO::formats {
namespace RoundTripTest {

namespace fs = std::filesystem;

// Formats that hold every letter and gap as it is.
const std::vector<std::string> kExactFormats = {"pir",
                                                "fasta",
                                                "clustal",
                                                "stockholm",
                                                "msf",
                                                "phylip",
                                                "phylip-relaxed",
                                                "phylip-sequential",
                                                "phylip-relaxed-sequential",
                                                "nexus"};

bool isNameLoss(const std::string &sentence)
{
    return sentence.find(" names ") != std::string::npos || sentence.find(" rows ") == 0 ||
           sentence.find("no name") != std::string::npos;
}

AlignmentRecord throughFile(const AlignmentRecord &record, const std::string &format)
{
    const TemporaryFile file("x", "");
    const Result<void> written = writeFile(file.path(), std::span(&record, 1), optionsOf(format));
    EXPECT_EQ(complaintOf(written), "");
    if (!written)
        return {};
    FileContents contents = contentsOf(file.path());
    EXPECT_EQ(contents.alignments.size(), 1U);
    return std::move(contents.alignments.at(0));
}

// All, or where a run is to be short those whose letters take no minutes under the sanitizers: the
// large ones go no other ways.
std::vector<fs::path> alignmentFiles()
{
    constexpr std::uintmax_t kLarge = 300'000;
    const bool isShort = std::getenv("TAMBO_SHORT_TESTS") != nullptr;
    std::set<fs::path> files;
    for (const Fact &fact : facts("facts_alignments.tsv")) {
        const fs::path file = dataFile(fact.at("file"));
        if (!isShort || fs::file_size(file) < kLarge)
            files.insert(file);
    }
    return {files.begin(), files.end()};
}

// With an insertion, which A3M files leave out of the other row.
AlignmentRecord smallAlignment()
{
    return recordOf({{"one", "ACdE"}, {"two", "AC-E"}});
}

StructureRecord smallStructure()
{
    StructureRecord structure;
    ChainRecord &chain = structure.chains.emplace_back();
    chain.name = "A";
    ResidueRecord &residue = chain.residues.emplace_back();
    residue.typeName = "ALA";
    residue.letter = 'A';
    residue.number = SequenceNumber(1);
    residue.atoms.push_back({"CA", "C", Vertex(1, 2, 3)});
    return structure;
}

TEST(Recognition, AFileIsOfTheFormatAsWhichTheTableSaysItIsRead)
{
    const AlignmentRecord alignment = smallAlignment();
    for (const FormatEntry &entry : kFormats) {
        const TemporaryFile file("x", "");
        const WriteOptions options{entry.format};
        const Result<void> written =
            isStructureFormat(entry.format)
                ? writeFile(file.path(), smallStructure(), options)
                : writeFile(file.path(), std::span(&alignment, 1), options);
        ASSERT_EQ(complaintOf(written), "") << entry.name;
        EXPECT_EQ(contentsOf(file.path()).format, formatName(entry.readAs)) << entry.name;
    }
}

class RoundTrip : public testing::TestWithParam<std::string>
{
};

TEST_P(RoundTrip, EveryAlignmentKeepsItsLettersGapsAndNames)
{
    unsigned tested = 0;
    for (const fs::path &file : alignmentFiles()) {
        const Result<FileContents> contents = readFile(file);
        if (!contents)
            continue;
        for (const AlignmentRecord &record : contents.value().alignments) {
            if (!checkWritable(record, optionsOf(GetParam())))
                continue;
            SCOPED_TRACE(file.string() + ", " + record.name);
            const AlignmentRecord readBack = throughFile(record, GetParam());
            EXPECT_EQ(rowTexts(readBack), rowTexts(record));
            const std::vector<std::string> losses = lossesOf(record, optionsOf(GetParam()));
            EXPECT_TRUE(std::any_of(losses.begin(), losses.end(), isNameLoss) ||
                        rowNames(readBack) == rowNames(record));
            ++tested;
        }
    }
    EXPECT_GT(tested, 60U);
}

INSTANTIATE_TEST_SUITE_P(Formats, RoundTrip, testing::ValuesIn(kExactFormats),
                         [](const auto &info) {
                             std::string name = info.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST(RoundTrips, PirAndFastaKeepAllNamesOfTheCollection)
{
    for (const fs::path &file : alignmentFiles()) {
        const Result<FileContents> contents = readFile(file);
        if (!contents)
            continue;
        for (const AlignmentRecord &record : contents.value().alignments) {
            SCOPED_TRACE(file);
            EXPECT_EQ(rowNames(throughFile(record, "pir")), rowNames(record));
        }
    }
}

TEST(RoundTrips, StockholmKeepsAllAnnotation)
{
    unsigned lines = 0;
    for (const fs::path &file : alignmentFiles()) {
        const Result<FileContents> contents = readFile(file);
        if (!contents || contents.value().format != "stockholm")
            continue;
        for (const AlignmentRecord &record : contents.value().alignments) {
            SCOPED_TRACE(file);
            const AlignmentRecord readBack = throughFile(record, "stockholm");
            std::vector<Annotation> expected = record.annotations;
            for (Annotation &said : expected) {
                // Some are parts of larger families.
                if (said.tag == "SQ")
                    said.text = std::to_string(record.rows.size());
            }
            EXPECT_EQ(readBack.annotations, expected);
            EXPECT_EQ(readBack.columnAnnotations, record.columnAnnotations);
            ASSERT_EQ(readBack.rows.size(), record.rows.size());
            for (std::size_t i = 0; i < record.rows.size(); ++i) {
                EXPECT_EQ(readBack.rows[i].description, record.rows[i].description);
                EXPECT_EQ(readBack.rows[i].annotations, record.rows[i].annotations);
                EXPECT_EQ(readBack.rows[i].residueAnnotations, record.rows[i].residueAnnotations);
                lines += unsigned(record.rows[i].annotations.size() +
                                  record.rows[i].residueAnnotations.size());
            }
            lines += unsigned(record.annotations.size() + record.columnAnnotations.size());
        }
    }
    EXPECT_GT(lines, 300U);
}

TEST(RoundTrips, SeveralAlignmentsStayTogether)
{
    for (const char *name : {"alignments/stockholm/three_alignments_14_3_3.sto",
                             "alignments/phylip/globins_two_alignments.phy"}) {
        const FileContents before = contentsOf(dataFile(name));
        ASSERT_GT(before.alignments.size(), 1U);
        for (const char *format : {"stockholm", "phylip", "phylip-relaxed-sequential"}) {
            const TemporaryFile file("x", "");
            const Result<void> written =
                writeFile(file.path(), before.alignments, optionsOf(format));
            ASSERT_EQ(complaintOf(written), "") << format;
            const FileContents after = contentsOf(file.path());
            ASSERT_EQ(after.alignments.size(), before.alignments.size());
            for (std::size_t i = 0; i < before.alignments.size(); ++i)
                EXPECT_EQ(rowTexts(after.alignments[i]), rowTexts(before.alignments[i]));
        }
    }
}

// Letters in insertions may move and their columns have no gaps in A3M, but each row keeps its
// residues, and the columns of capitals stay columns.
TEST(RoundTrips, A2mAndA3mKeepEveryResidue)
{
    unsigned tested = 0;
    const auto inCapitals = [](std::string text) {
        for (char &character : text)
            character = static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
        return text;
    };
    for (const fs::path &file : alignmentFiles()) {
        const Result<FileContents> contents = readFile(file);
        if (!contents)
            continue;
        for (const AlignmentRecord &record : contents.value().alignments) {
            if (!checkWritable(record, optionsOf("a3m")))
                continue;
            SCOPED_TRACE(file);
            const AlignmentRecord a2m = throughFile(record, "a2m");
            const AlignmentRecord a3m = throughFile(record, "a3m");
            ASSERT_EQ(a2m.rows.size(), record.rows.size());
            ASSERT_EQ(a3m.rows.size(), record.rows.size());
            for (std::size_t i = 0; i < record.rows.size(); ++i) {
                EXPECT_EQ(inCapitals(a2m.rows[i].sequence.text()),
                          inCapitals(record.rows[i].sequence.text()));
                EXPECT_EQ(inCapitals(a3m.rows[i].sequence.letters),
                          inCapitals(record.rows[i].sequence.letters));
            }
            ++tested;
        }
    }
    EXPECT_GT(tested, 60U);
}

// One alignment that others wrote in several formats: whichever is read, whatever is written.
TEST(RoundTrips, TheSameAlignmentInSeveralFormatsStaysTheSame)
{
    const std::string folder = "alignments/one_alignment_many_formats/fourteen_three_three";
    const AlignmentRecord first = contentsOf(dataFile(folder + ".pfam")).alignments.at(0);
    for (const char *ending : {".pfam", ".msf"}) {
        const AlignmentRecord record = contentsOf(dataFile(folder + ending)).alignments.at(0);
        for (const std::string &format : kExactFormats) {
            SCOPED_TRACE(ending + (" as " + format));
            EXPECT_EQ(rowTexts(throughFile(record, format)), rowTexts(first));
        }
        // Through one format after the other.
        AlignmentRecord travelling = record;
        for (const std::string &format : kExactFormats)
            travelling = throughFile(travelling, format);
        EXPECT_EQ(rowTexts(travelling), rowTexts(first));
    }
}

// Three programs aligned these sequences in their own ways and wrote them in other orders.
TEST(RoundTrips, TheSameSequencesInSeveralFormatsStayTheSame)
{
    const auto lettersOf = [](const AlignmentRecord &record) {
        std::map<std::string, std::string> letters;
        for (const RowRecord &row : record.rows)
            letters[row.name] = row.sequence.letters;
        return letters;
    };
    const std::string folder = "alignments/one_alignment_many_formats/balibase_BB11001";
    const auto first = lettersOf(contentsOf(dataFile(folder + ".fasta")).alignments.at(0));
    ASSERT_EQ(first.size(), 4U);
    for (const char *ending : {".aln", ".msf"}) {
        const AlignmentRecord record = contentsOf(dataFile(folder + ending)).alignments.at(0);
        for (const std::string &format : kExactFormats)
            EXPECT_EQ(lettersOf(throughFile(record, format)), first) << ending << " as " << format;
    }
}

} // namespace RoundTripTest
} // namespace TAMBO::formats
