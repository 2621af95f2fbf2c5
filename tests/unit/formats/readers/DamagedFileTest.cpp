// SPDX-License-Identifier: GPL-3.0-or-later
// Files cut short or changed at random: whatever a reader gets, it gives whole contents or a
// message, and never fails otherwise.
#include "ClustalReader.h"
#include "FastaReader.h"
#include "MmcifReader.h"
#include "MsfReader.h"
#include "NexusReader.h"
#include "PdbReader.h"
#include "PhylipReader.h"
#include "PirReader.h"
#include "StockholmReader.h"
#include "TestFiles.h"

#include <gtest/gtest.h>

#include <random>

namespace TAMBO::formats {
namespace DamagedFileTest {

const std::vector<std::string> kFiles = {
    "alignments/pir/ferredoxin_two_rows.pir",
    "alignments/pir/cytochrome_c_unaligned.pir",
    "malformed/alignments/pir_unicode_and_case.ali",
    "malformed/alignments/pir_annotation_lines_before_sequence.pir",
    "alignments/fasta/easel_afa_1.fasta",
    "alignments/fasta/easel_a2m_1.a2m",
    "alignments/clustal/names_with_pipes.aln",
    "alignments/clustal/easel_clustal_1.aln",
    "alignments/stockholm/simple.sto",
    "alignments/stockholm/cbs_domain_with_gr_lines.sto",
    "alignments/msf/globins.msf",
    "alignments/nexus/ferredoxins_by_hand.nex",
    "alignments/phylip/globins_two_alignments.phy",
    "alignments/phylip/sequential.phy",
    "structures/six_residue_peptide_5e5z.pdb",
    "structures/ubiquitin_1ubi_ca_only.pdb",
    "malformed/structures/insertion_codes_dummy.pdb",
    "structures/altloc_edge_case.cif",
    "structures/quoting_difficult.cif",
};

void expectContentsOrMessage(const std::string &bytes)
{
    const TemporaryFile file("x", bytes);
    const Result<FileContents> result = readFile(file.path());
    if (!result) {
        EXPECT_TRUE(result.error().message().starts_with("x:")) << result.error().message();
        EXPECT_EQ(result.error().message().find('\n'), std::string::npos);
        return;
    }
    EXPECT_GE(result.value().alignments.size() + result.value().structures.size(), 1U);
    for (const AlignmentRecord &alignment : result.value().alignments) {
        ASSERT_FALSE(alignment.rows.empty());
        for (const Annotation &said : alignment.columnAnnotations)
            EXPECT_EQ(said.text.size(), alignment.rows.front().sequence.width);
        for (const RowRecord &row : alignment.rows) {
            const std::string text = row.sequence.text();
            EXPECT_EQ(text.size(), row.sequence.width);
            EXPECT_GT(row.sequence.width, 0U);
            for (const Annotation &said : row.residueAnnotations)
                EXPECT_EQ(said.text.size(), row.sequence.width);
            if (alignment.isAligned) {
                EXPECT_EQ(row.sequence.width, alignment.rows.front().sequence.width);
            }
            for (const char c : row.sequence.letters)
                EXPECT_TRUE((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'));
        }
    }
    for (const StructureRecord &structure : result.value().structures)
        for (const ChainRecord &chain : structure.chains) {
            EXPECT_FALSE(chain.residues.empty());
            for (const ResidueRecord &residue : chain.residues) {
                EXPECT_FALSE(residue.atoms.empty());
                EXPECT_TRUE(residue.letter >= 'A' && residue.letter <= 'Z');
            }
        }
}

TEST(DamagedFile, CutShortAnywhereGivesContentsOrAMessage)
{
    for (const std::string &name : kFiles) {
        SCOPED_TRACE(name);
        const std::string bytes = bytesOf(dataFile(name));
        for (std::size_t length = 0; length < bytes.size(); length += 97) {
            SCOPED_TRACE(length);
            expectContentsOrMessage(bytes.substr(0, length));
        }
    }
}

TEST(DamagedFile, ChangedBytesGiveContentsOrAMessage)
{
    std::mt19937 random(2718);
    for (const std::string &name : kFiles) {
        SCOPED_TRACE(name);
        const std::string bytes = bytesOf(dataFile(name));
        for (unsigned round = 0; round < 150; ++round) {
            SCOPED_TRACE(round);
            std::string changed = bytes;
            for (unsigned change = 0; change <= round % 8; ++change)
                changed[random() % changed.size()] = static_cast<char>(random());
            expectContentsOrMessage(changed);
        }
    }
}

// Lines and pieces of lines in another order: more often well-formed than changed bytes are.
TEST(DamagedFile, ShuffledPiecesGiveContentsOrAMessage)
{
    std::mt19937 random(31415);
    for (const std::string &name : kFiles) {
        SCOPED_TRACE(name);
        const std::string bytes = bytesOf(dataFile(name));
        for (unsigned round = 0; round < 100; ++round) {
            SCOPED_TRACE(round);
            std::string changed = bytes;
            const std::size_t from = random() % changed.size();
            const std::size_t length = random() % 400;
            const std::string piece = changed.substr(from, length);
            if (round % 2 == 0)
                changed.erase(from, length);
            changed.insert(random() % (changed.size() + 1), piece);
            expectContentsOrMessage(changed);
        }
    }
}

TEST(DamagedFile, RandomBytesGiveAMessage)
{
    std::mt19937 random(1618);
    for (unsigned round = 0; round < 200; ++round) {
        std::string bytes(random() % 4096 + 1, '\0');
        for (char &byte : bytes)
            byte = static_cast<char>(random());
        expectContentsOrMessage(bytes);
    }
}

TEST(DamagedFile, NoReaderTakesATextWithoutAnything)
{
    using Reader = Result<FileContents> (*)(TextReader &);
    for (const Reader reader : {readClustal, readFasta, readMmcif, readMsf, readNexus, readPdb,
                                readPhylip, readPir, readPlainRows, readStockholm}) {
        for (const char *text : {"", "\n", " \n\n"}) {
            const TemporaryFile file("x", text);
            const ReadProgress noProgress;
            ByteSource source(file.path(), noProgress);
            TextReader lines(source);
            const Result<FileContents> result = reader(lines);
            ASSERT_FALSE(result) << '"' << text << '"';
            EXPECT_TRUE(result.error().message().starts_with("x:")) << result.error().message();
        }
    }
}

} // namespace DamagedFileTest
} // namespace TAMBO::formats
