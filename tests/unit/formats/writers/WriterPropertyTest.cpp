// SPDX-License-Identifier: GPL-3.0-or-later
// Random alignments with everything that makes files hard to read, through every format.
#include "FileWriter.h"

#include "RecordBuilder.h"
#include "TestFiles.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <random>
#include <set>

namespace TAMBO::formats {
namespace WriterPropertyTest {

// Names that mean something in one format or another.
constexpr auto kNames = std::to_array<const char *>({"a",
                                                     "seq1",
                                                     "1433_LYCES/9-246",
                                                     "A BAD ID",
                                                     "",
                                                     " ",
                                                     "CLUSTAL",
                                                     "clustalw",
                                                     "CLUSTAL W (1.83)",
                                                     "#",
                                                     "#=GF",
                                                     "# STOCKHOLM 1.0",
                                                     "//",
                                                     "P1;x",
                                                     ">P1;x",
                                                     "sp|P12345|X_Y",
                                                     "Name:",
                                                     "MSF:",
                                                     "Len:",
                                                     "1",
                                                     "12 34",
                                                     "3 384",
                                                     "ATOM",
                                                     "HEADER",
                                                     "ACDEFGHIKL",
                                                     "MKVLAAGIVG",
                                                     "a_name_of_many_letters_that_goes_on_and_on",
                                                     "data_x",
                                                     "M\xc3\xbcller",
                                                     "(a,b):1;",
                                                     "[x]",
                                                     "*",
                                                     "**:.",
                                                     "-",
                                                     "...",
                                                     "PileUp",
                                                     "!!AA_MULTIPLE_ALIGNMENT",
                                                     "loop_",
                                                     "0123456789",
                                                     "B_subtilis",
                                                     "B_subtilis",
                                                     "B_subtilis_2",
                                                     "receptor_1",
                                                     "receptor_12",
                                                     "receptor_13",
                                                     "\ttab",
                                                     "x\ny",
                                                     "a;b",
                                                     "\xff\xfe"});

constexpr auto kDescriptions = std::to_array<const char *>(
    {"", "", "", "a description", "CLUSTAL W multiple sequence alignment", ">P1;x",
     "structureX:1abc", "structureX:1abc:1:A:9:A:x:y:1.0:0.1",
     "sequence:x::::::::", " blanks  around ", "a:b:c", "//", "# STOCKHOLM 1.0",
     "MSF: 3  Type: P  Check: 0 ..", "C; comment", "ends in *", "\xc3\xa9t\xc3\xa9"});

// Blocks are ten, fifty, sixty and seventy-five columns wide.
constexpr auto kWidths =
    std::to_array<std::size_t>({1,  2,  9,  10, 11, 49,  50,  51,  59,  60,  61,  63,
                                64, 65, 74, 75, 76, 100, 119, 120, 121, 150, 180, 300});

class Maker
{
    template <typename Choices> typename Choices::value_type pick(const Choices &choices)
    {
        return choices[roll(choices.size())];
    }

public:
    explicit Maker(unsigned seed) : m_Random(seed) { }

    AlignmentRecord alignment()
    {
        AlignmentRecord record;
        record.name = "x";
        const std::size_t width = pick(kWidths);
        const std::size_t rows = 1 + roll(roll(4) == 0 ? 40 : 6);
        m_LowerCase = roll(3) == 0 ? roll(100) : 0;
        for (std::size_t i = 0; i < rows; ++i)
            record.rows.push_back(row(width));
        if (roll(2) == 0)
            annotate(record, width);
        return record;
    }

private:
    unsigned roll(std::size_t sides) { return static_cast<unsigned>(m_Random() % sides); }

    RowRecord row(std::size_t width)
    {
        const unsigned gaps = roll(5) == 0 ? 100 : roll(100);
        std::string text;
        for (std::size_t i = 0; i < width; ++i) {
            const char letter = static_cast<char>('A' + roll(26));
            const bool isSmall = roll(100) < m_LowerCase;
            text += roll(100) < gaps ? '-' : isSmall ? static_cast<char>(letter + 32) : letter;
        }
        RowRecord row = rowOf(pick(kNames), text);
        row.description = pick(kDescriptions);
        if (roll(8) == 0)
            row.link = {"1abc.pdb", "A", "1", "9", "A"};
        std::uint64_t letters = 0;
        for (std::size_t column = 0; column < width; ++column) {
            if (text[column] != '-')
                ++letters;
            else if (roll(20) == 0)
                row.chainBreaks.push_back({letters, column});
        }
        return row;
    }

    void annotate(AlignmentRecord &record, std::size_t width)
    {
        record.annotations = {{"ID", "x"}, {"CC", ""}, {"CC", "// and # and \ttabs"}, {"A B", "x"}};
        record.columnAnnotations = {{"SS_cons", line(width)}, {"SS_cons", line(width)}};
        for (RowRecord &row : record.rows) {
            if (roll(2) == 0)
                row.annotations = {{"DE", "another"}, {"OS", "a bug"}, {"", "lost"}};
            if (roll(2) == 0)
                row.residueAnnotations = {{"SS", line(width)}, {"pAS", line(width / 2)}};
        }
    }

    std::string line(std::size_t width)
    {
        std::string text;
        for (std::size_t i = 0; i < width; ++i)
            text += "HE.-*x \t~#"[roll(10)];
        return text;
    }

    std::mt19937 m_Random;
    unsigned m_LowerCase = 0;
};

std::string inCapitals(std::string text)
{
    for (char &character : text)
        character = static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
    return text;
}

// FNV-1a.
class Digest
{
public:
    void add(const std::string &bytes)
    {
        for (const char byte : bytes) {
            m_Value ^= static_cast<unsigned char>(byte);
            m_Value *= 0x100000001b3U;
        }
    }
    [[nodiscard]] std::uint64_t value() const noexcept { return m_Value; }

private:
    std::uint64_t m_Value = 0xcbf29ce484222325U;
};

// Of all that is written below. Files of users are not to change by themselves, in no byte of them.
const std::map<std::string, std::uint64_t> kDigests = {
    {"pir", 0x488577aef6ea20adU},
    {"fasta", 0x9587f5e336ffbc6fU},
    {"a2m", 0xc2500298f4fbae1fU},
    {"a3m", 0x4bb317bca8fab32bU},
    {"clustal", 0xd287daabc4d9e12aU},
    {"stockholm", 0x8bc17a48465557b6U},
    {"msf", 0x5bfd82bcd429d997U},
    {"phylip", 0xb0ab874389889a8cU},
    {"phylip-relaxed", 0xd777f02ef01ab604U},
    {"phylip-sequential", 0xc69d901ec243e12aU},
    {"phylip-relaxed-sequential", 0x0b6455a50684a71aU},
    {"nexus", 0x59bc362eee5f1634U},
};

class WriterProperty : public testing::TestWithParam<std::string>
{
};

TEST_P(WriterProperty, RandomAlignmentsReadBackAsTheFormatCanHoldThem)
{
    Digest digest;
    const bool isExact = GetParam() != "a2m" && GetParam() != "a3m";
    for (unsigned seed = 0; seed < 400; ++seed) {
        const AlignmentRecord record = Maker(seed).alignment();
        WriteOptions options = optionsOf(GetParam());
        if (seed % 3 == 0)
            options.lineLength = 1 + seed % 90;
        const TemporaryFile file(seed % 10 == 0 ? "x.gz" : "x", "");
        const Result<void> written = writeFile(file.path(), std::span(&record, 1), options);
        ASSERT_EQ(complaintOf(written), "") << "seed " << seed;
        // How it is compressed is the library's affair.
        if (seed % 10 != 0)
            digest.add(bytesOf(file.path()));
        const FileContents contents = contentsOf(file.path());
        ASSERT_EQ(contents.alignments.size(), 1U) << "seed " << seed;
        const std::vector<RowRecord> &rows = contents.alignments[0].rows;
        ASSERT_EQ(rows.size(), record.rows.size());
        std::set<std::string> names;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", row " + std::to_string(i));
            names.insert(rows[i].name);
            EXPECT_EQ(inCapitals(rows[i].sequence.letters),
                      inCapitals(record.rows[i].sequence.letters));
            EXPECT_TRUE(!isExact || rows[i].sequence.text() == record.rows[i].sequence.text());
            EXPECT_TRUE(GetParam() != "pir" || rows[i].chainBreaks == record.rows[i].chainBreaks);
        }
        const bool mustDiffer = isExact && GetParam() != "pir" && GetParam() != "fasta";
        EXPECT_TRUE(!mustDiffer || names.size() == rows.size()) << "seed " << seed;
    }
    EXPECT_EQ(digest.value(), kDigests.at(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Formats, WriterProperty,
                         testing::Values("pir", "fasta", "a2m", "a3m", "clustal", "stockholm",
                                         "msf", "phylip", "phylip-relaxed", "phylip-sequential",
                                         "phylip-relaxed-sequential", "nexus"),
                         [](const auto &info) {
                             std::string name = info.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

} // namespace WriterPropertyTest
} // namespace TAMBO::formats
