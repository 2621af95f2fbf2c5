// SPDX-License-Identifier: GPL-3.0-or-later
// Every alignment file of tests/data against what is known about it.
#include "TestFiles.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

namespace TAMBO::formats {
namespace {

// Files that hold a row that the facts, taken from the bare text, do not count, or whose rows are
// read as something else than their text. They have tests of their own.
const std::set<std::string> kSpecialFiles = {
    "alignments/fasta/easel_a2m_1.a2m",
    "malformed/alignments/fasta_utf8_bom_unequal_lengths.fasta",
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
     "random_bytes.aln: is no text file of a known format; expected a PDB, mmCIF, PIR or FASTA "
     "file"},
    {"malformed/alignments/text_with_nul_byte.txt",
     "text_with_nul_byte.txt: begins with \"ggtaccgctggccgagcatctgctcgatcaccaccagccg...\"; "
     "expected a PDB, mmCIF, PIR or FASTA file"},
    {"malformed/alignments/stockholm_bad_1.sto",
     "stockholm_bad_1.sto: begins with \"missing Stockholm header\"; expected a PDB, mmCIF, PIR or "
     "FASTA file"},
    {"malformed/alignments/phylip_bad_2.phy",
     "phylip_bad_2.phy: begins with \"x  2    20\"; expected a PDB, mmCIF, PIR or FASTA file"},
    {"malformed/alignments/phylip_bad_3.phy",
     "phylip_bad_3.phy: begins with \"2    x\"; expected a PDB, mmCIF, PIR or FASTA file"},
    {"malformed/alignments/phylip_bad_4.phy",
     "phylip_bad_4.phy: begins with \"2\"; expected a PDB, mmCIF, PIR or FASTA file"},
    {"alignments/one_alignment_many_formats/fourteen_three_three.pfam",
     "fourteen_three_three.pfam: begins with \"1433_LYCES/9-246    REENVYMAKLADRAESDEEM...\"; "
     "expected a PDB, mmCIF, PIR or FASTA file"},
    {"alignments/one_alignment_many_formats/balibase_BB11001.rsf",
     "balibase_BB11001.rsf: begins with \"!!RICH_SEQUENCE 1.0\"; expected a PDB, mmCIF, PIR or "
     "FASTA file"},
    {"alignments/one_alignment_many_formats/balibase_BB11001.xml",
     "balibase_BB11001.xml: begins with \"<?xml version=\"1.0\"?>\"; expected a PDB, mmCIF, PIR or "
     "FASTA file"},
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

TEST(AlignmentFacts, EveryPirAndFastaFileIsReadAsItIs)
{
    unsigned tested = 0;
    for (const Fact &fact : facts("facts_alignments.tsv")) {
        const std::string &file = fact.at("file");
        if ((fact.at("format") != "pir" && fact.at("format") != "fasta") ||
            kSpecialFiles.count(file) > 0 || kMessages.count(file) > 0)
            continue;
        SCOPED_TRACE(file);
        const FileContents contents = contentsOf(dataFile(file));
        EXPECT_EQ(contents.format, fact.at("format"));
        EXPECT_TRUE(contents.structures.empty());
        ASSERT_EQ(contents.alignments.size(), 1U);
        expectFacts(fact, contents.alignments.front());
        ++tested;
    }
    EXPECT_EQ(tested, 33U);
}

TEST(AlignmentFacts, FilesThatHoldNoAlignmentGiveOneClearMessage)
{
    for (const auto &[file, message] : kMessages)
        EXPECT_EQ(messageOf(dataFile(file)), message);
}

TEST(AlignmentFacts, FormatsWithoutAReaderAreNamed)
{
    const std::map<std::string, std::string> names = {{"clustal", "a Clustal"},
                                                      {"stockholm", "a Stockholm"},
                                                      {"msf", "an MSF"},
                                                      {"phylip", "a PHYLIP"}};
    unsigned tested = 0;
    for (const Fact &fact : facts("facts_alignments.tsv")) {
        const auto name = names.find(fact.at("format"));
        const std::string &file = fact.at("file");
        if (name == names.end() || kMessages.count(file) > 0)
            continue;
        EXPECT_EQ(messageOf(dataFile(file)),
                  dataFile(file).filename().string() + ": is " + name->second +
                      " alignment, which cannot be read yet; alignments are read from PIR and "
                      "FASTA files");
        ++tested;
    }
    EXPECT_EQ(tested, 42U);
}

TEST(AlignmentFacts, AlignmentsAreNamedAfterTheirFiles)
{
    EXPECT_EQ(contentsOf(dataFile("alignments/fasta/kunitz_large.fasta.gz")).alignments[0].name,
              "kunitz_large");
    EXPECT_EQ(contentsOf(dataFile("families/g6pd/g6pd_templates.ali")).alignments[0].name,
              "g6pd_templates");
}

} // namespace
} // namespace TAMBO::formats
