// SPDX-License-Identifier: GPL-3.0-or-later
// Every alignment file of tests/data against what is known about it.
#include "TestFiles.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

namespace TAMBO::formats {
namespace AlignmentFactsTest {

// Files that hold a row that the facts, taken from the bare text, do not count, or whose rows are
// read as something else than their text. They have tests of their own.
const std::set<std::string> kSpecialFiles = {
    "alignments/fasta/easel_a2m_1.a2m",
    "malformed/alignments/fasta_utf8_bom_unequal_lengths.fasta",
    "alignments/msf/hla_doa.msf",
};

// Files that are no alignment that could be shown: see the messages below.
const std::map<std::string, std::string> kMessages = {
    {"malformed/alignments/empty_file.ali", "empty_file.ali: is empty"},
    {"malformed/alignments/only_newlines.fasta", "only_newlines.fasta: holds nothing but blanks"},
    {"malformed/alignments/fasta_digit_in_sequence.fasta",
     "fasta_digit_in_sequence.fasta:2: found \"1\", expected a residue letter or a gap (\"-\", "
     "\".\" or \"~\")"},
    {"malformed/alignments/fasta_truncated_name.fasta",
     "fasta_truncated_name.fasta:1: found no residues after \">truncated_nam\", expected at least "
     "one"},
    {"malformed/alignments/random_bytes.aln",
     "random_bytes.aln: is no text file of a known format; " + kKnownFormats},
    {"malformed/alignments/text_with_nul_byte.txt",
     "text_with_nul_byte.txt: begins with \"ggtaccgctggccgagcatctgctcgatcaccaccagccg...\"; " +
         kKnownFormats},
    {"malformed/alignments/stockholm_bad_1.sto",
     "stockholm_bad_1.sto: begins with \"missing Stockholm header\"; " + kKnownFormats},
    {"malformed/alignments/stockholm_bad_2.sto",
     "stockholm_bad_2.sto:4: row \"seq2\" ends with 20 columns, row \"seq1\" has 40"},
    {"malformed/alignments/stockholm_bad_4.sto",
     "stockholm_bad_4.sto:4: the file ends before the \"//\" that ends an alignment"},
    {"malformed/alignments/stockholm_bad_5.sto",
     "stockholm_bad_5.sto:4: found \"//\", expected at least one row before it"},
    {"malformed/alignments/phylip_bad_1.phy",
     "phylip_bad_1.phy:2: row \"Turkey\" has 21 columns, expected 20"},
    {"malformed/alignments/phylip_bad_2.phy",
     "phylip_bad_2.phy: begins with \"x  2    20\"; " + kKnownFormats},
    {"malformed/alignments/phylip_bad_3.phy",
     "phylip_bad_3.phy: begins with \"2    x\"; " + kKnownFormats},
    {"malformed/alignments/phylip_bad_4.phy",
     "phylip_bad_4.phy: begins with \"2\"; " + kKnownFormats},
    {"malformed/alignments/phylip_bad_5.phy",
     "phylip_bad_5.phy:2: the file ends after 0 lines, expected 2 rows"},
    {"malformed/alignments/phylip_bad_6.phy",
     "phylip_bad_6.phy:3: found \"2\" in row \"seq1\", expected a residue letter or a gap (\"-\")"},
    {"alignments/one_alignment_many_formats/balibase_BB11001.rsf",
     "balibase_BB11001.rsf: begins with \"!!RICH_SEQUENCE 1.0\"; " + kKnownFormats},
    {"alignments/one_alignment_many_formats/balibase_BB11001.xml",
     "balibase_BB11001.xml: begins with \"<?xml version=\"1.0\"?>\"; " + kKnownFormats},
};

// Plain rows are what is left of Stockholm without its markup.
const std::map<std::string, std::string> kOtherNames = {{"pfam", "stockholm"}};

// Files with more than one alignment; the facts are about the first.
const std::map<std::string, std::size_t> kSeveral = {
    {"alignments/stockholm/three_alignments_14_3_3.sto", 3},
};

// Punctuation between residues has a column and no residue, but is no gap character.
const std::map<std::string, unsigned> kPunctuation = {
    {"alignments/pir/antibody_two_chains.ali", 2},
    {"alignments/pir/cytochrome_c_unaligned.pir", 24},
    {"alignments/pir/emboss_punctuation.pir", 7},
};

unsigned number(const std::string &text)
{
    return static_cast<unsigned>(std::stoul(text));
}

void expectFacts(const Fact &fact, const AlignmentRecord &alignment)
{
    const std::vector<RowRecord> &rows = alignment.rows;
    ASSERT_EQ(rows.size(), number(fact.at("rows")));
    const auto [least, most] =
        std::minmax_element(rows.begin(), rows.end(), [](const RowRecord &a, const RowRecord &b) {
            return a.sequence.width < b.sequence.width;
        });
    const std::string shortest = std::to_string(least->sequence.width);
    const std::string longest = std::to_string(most->sequence.width);
    EXPECT_EQ(shortest == longest ? shortest : shortest + ".." + longest, fact.at("columns"));
    EXPECT_EQ(alignment.isAligned, shortest == longest);
    EXPECT_EQ(rows.front().name, fact.at("first_name"));
    EXPECT_EQ(rows.back().name, fact.at("last_name"));
    EXPECT_EQ(rows.front().sequence.letters.size(), number(fact.at("letters_in_first_row")));

    std::size_t gaps = 0;
    std::size_t lowerCase = 0;
    std::set<std::string> names;
    for (const RowRecord &row : rows) {
        gaps += row.sequence.width - row.sequence.letters.size();
        lowerCase += static_cast<std::size_t>(
            std::count_if(row.sequence.letters.begin(), row.sequence.letters.end(),
                          [](char c) { return c >= 'a' && c <= 'z'; }));
        names.insert(row.name);
        EXPECT_EQ(row.sequence.occupancy.size(), (row.sequence.width + 63) / 64);
    }
    const auto punctuation = kPunctuation.find(fact.at("file"));
    EXPECT_EQ(gaps, number(fact.at("gap_characters")) +
                        (punctuation == kPunctuation.end() ? 0 : punctuation->second));
    EXPECT_EQ(lowerCase, number(fact.at("lower_case_letters")));
    EXPECT_EQ(rows.size() - names.size(), number(fact.at("repeated_names")));
}

TEST(AlignmentFacts, EveryFileIsReadAsItIs)
{
    unsigned tested = 0;
    for (const Fact &fact : facts("facts_alignments.tsv")) {
        const std::string &file = fact.at("file");
        if (kSpecialFiles.count(file) > 0 || kMessages.count(file) > 0)
            continue;
        SCOPED_TRACE(file);
        const FileContents contents = contentsOf(dataFile(file));
        const auto name = kOtherNames.find(fact.at("format"));
        EXPECT_EQ(contents.format, name == kOtherNames.end() ? fact.at("format") : name->second);
        EXPECT_TRUE(contents.structures.empty());
        const auto several = kSeveral.find(file);
        ASSERT_EQ(contents.alignments.size(), several == kSeveral.end() ? 1U : several->second);
        expectFacts(fact, contents.alignments.front());
        ++tested;
    }
    EXPECT_EQ(tested, 71U);
}

TEST(AlignmentFacts, FilesThatHoldNoAlignmentGiveOneClearMessage)
{
    for (const auto &[file, message] : kMessages)
        EXPECT_EQ(messageOf(dataFile(file)), message);
}

// The same alignment, whatever the format.
void expectSameRows(const AlignmentRecord &one, const AlignmentRecord &other)
{
    EXPECT_EQ(rowNames(one), rowNames(other));
    EXPECT_EQ(rowTexts(one), rowTexts(other));
}

TEST(AlignmentFacts, GlobinsAreTheSameInClustalMsfAndPhylip)
{
    const AlignmentRecord clustal =
        contentsOf(dataFile("alignments/clustal/globins.aln")).alignments.at(0);
    const AlignmentRecord msf = contentsOf(dataFile("alignments/msf/globins.msf")).alignments.at(0);
    const FileContents phylip =
        contentsOf(dataFile("alignments/phylip/globins_two_alignments.phy"));
    ASSERT_EQ(phylip.alignments.size(), 2U);
    expectSameRows(clustal, msf);
    expectSameRows(clustal, phylip.alignments[0]);
    EXPECT_EQ(clustal.rows.size(), 7U);
    EXPECT_EQ(clustal.rows[0].sequence.width, 164U);
    EXPECT_EQ(phylip.alignments[1].rows.size(), 7U);
    EXPECT_EQ(phylip.alignments[1].rows[0].sequence.width, 167U);
}

TEST(AlignmentFacts, NexusOfAnotherProgramHasTheRowsOfStockholm)
{
    const AlignmentRecord stockholm =
        contentsOf(dataFile("alignments/stockholm/globins45.sto")).alignments.at(0);
    const AlignmentRecord nexus =
        contentsOf(dataFile("alignments/nexus/globins45_biopython.nex")).alignments.at(0);
    EXPECT_EQ(rowTexts(nexus), rowTexts(stockholm));
    EXPECT_EQ(rowNames(nexus), rowNames(stockholm));
}

TEST(AlignmentFacts, NexusByHandHasTheRowsOfPir)
{
    const AlignmentRecord pir =
        contentsOf(dataFile("alignments/pir/ferredoxin_two_rows.pir")).alignments.at(0);
    const AlignmentRecord nexus =
        contentsOf(dataFile("alignments/nexus/ferredoxins_by_hand.nex")).alignments.at(0);
    EXPECT_EQ(rowNames(nexus), (std::vector<std::string>{"Azotobacter's 5fd1",
                                                         "Peptococcus_aerogenes", "third_row"}));
    EXPECT_EQ(rowTexts(nexus).at(0), rowTexts(pir).at(0));
    EXPECT_EQ(rowTexts(nexus).at(1), rowTexts(pir).at(1));
}

TEST(AlignmentFacts, PhylipIsTheSameInterleavedAndSequential)
{
    const AlignmentRecord interleaved =
        contentsOf(dataFile("alignments/phylip/interlaced.phy")).alignments.at(0);
    EXPECT_EQ(rowNames(interleaved),
              (std::vector<std::string>{"CYS1_DICDI", "ALEU_HORVU", "CATH_HUMAN"}));
    for (const char *other : {"sequential", "easel_phylip_3"})
        expectSameRows(interleaved,
                       contentsOf(dataFile("alignments/phylip/" + std::string(other) + ".phy"))
                           .alignments.at(0));
}

TEST(AlignmentFacts, FourteenThreeThreeProteinsAreTheSameInMsfStockholmAndPlainRows)
{
    const std::string folder = "alignments/one_alignment_many_formats/";
    const AlignmentRecord msf =
        contentsOf(dataFile(folder + "fourteen_three_three.msf")).alignments.at(0);
    expectSameRows(msf,
                   contentsOf(dataFile(folder + "fourteen_three_three.pfam")).alignments.at(0));
    const FileContents stockholm =
        contentsOf(dataFile("alignments/stockholm/three_alignments_14_3_3.sto"));
    ASSERT_EQ(stockholm.alignments.size(), 3U);
    for (const AlignmentRecord &alignment : stockholm.alignments)
        expectSameRows(msf, alignment);
}

TEST(AlignmentFacts, BaliBaseRowsAreTheSameWithAndWithoutGaps)
{
    const std::string folder = "alignments/one_alignment_many_formats/";
    const auto letters = [](const AlignmentRecord &alignment) {
        std::map<std::string, std::string> rows;
        for (const RowRecord &row : alignment.rows)
            rows[row.name] = row.sequence.letters;
        return rows;
    };
    const AlignmentRecord msf =
        contentsOf(dataFile(folder + "balibase_BB11001.msf")).alignments.at(0);
    EXPECT_EQ(letters(msf),
              letters(contentsOf(dataFile(folder + "balibase_BB11001.fasta")).alignments.at(0)));
    EXPECT_EQ(letters(msf),
              letters(contentsOf(dataFile(folder + "balibase_BB11001.aln")).alignments.at(0)));
    expectSameRows(
        msf,
        contentsOf(dataFile("malformed/alignments/msf_no_final_newline.msf")).alignments.at(0));
}

TEST(AlignmentFacts, RowsOfAnMsfFileThatEndEarlyAreFilledWithGaps)
{
    const AlignmentRecord alignment =
        contentsOf(dataFile("alignments/msf/hla_doa.msf")).alignments.at(0);
    ASSERT_EQ(alignment.rows.size(), 12U);
    EXPECT_TRUE(alignment.isAligned);
    EXPECT_EQ(alignment.rows.front().name, "DOA*01:01:01");
    EXPECT_EQ(alignment.rows.front().sequence.letters.size(), 250U);
    const RowRecord &last = alignment.rows.back();
    EXPECT_EQ(last.name, "DOA*01:04N");
    EXPECT_EQ(last.sequence.width, 250U);
    EXPECT_EQ(last.sequence.text().substr(62), std::string(188, '-'));
    EXPECT_EQ(alignment.remarks,
              std::vector<std::string>{"hla_doa.msf: 1 row that ends early was filled with gaps"});
}

TEST(AlignmentFacts, AlignmentsAreNamedAfterTheirFiles)
{
    EXPECT_EQ(contentsOf(dataFile("alignments/fasta/kunitz_large.fasta.gz")).alignments[0].name,
              "kunitz_large");
    EXPECT_EQ(contentsOf(dataFile("families/g6pd/g6pd_templates.ali")).alignments[0].name,
              "g6pd_templates");
}

} // namespace AlignmentFactsTest
} // namespace TAMBO::formats
