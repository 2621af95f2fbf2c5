// SPDX-License-Identifier: GPL-3.0-or-later
// Files so large that they are parsed in several parts at once give what one pass over them gives.
#include "TestFiles.h"

#include "TextReader.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace TAMBO::formats {
namespace RecordPartsTest {

constexpr std::size_t kLarge = std::size_t{7} << 20;

struct Row
{
    std::string name;
    std::string text;
    std::uint64_t line = 0;
};

// Records of very different lengths, in lines of very different lengths.
class Records
{
public:
    explicit Records(bool isPir) : m_IsPir(isPir) { }

    void add(std::size_t length)
    {
        Row &row = rows.emplace_back();
        row.name = "row" + std::to_string(rows.size());
        row.line = m_Line;
        put(m_IsPir ? ">P1;" + row.name : '>' + row.name);
        if (m_IsPir)
            put("sequence:" + row.name);
        while (row.text.size() < length) {
            std::string piece;
            for (std::size_t left = 1 + m_Random() % 90; left > 0; --left)
                piece += "ACDEFGHIKLMNPQRSTVWY--"[m_Random() % 22];
            row.text += piece;
            put(piece);
        }
        if (m_IsPir)
            put("*");
    }
    void put(const std::string &line)
    {
        text += line + (m_Line % 3 == 0 ? "\r\n" : "\n");
        ++m_Line;
    }
    [[nodiscard]] std::uint64_t line() const { return m_Line; }

    std::string text;
    std::vector<Row> rows;

private:
    bool m_IsPir;
    std::uint64_t m_Line = 1;
    std::mt19937 m_Random{11};
};

class RecordParts : public testing::TestWithParam<bool>
{
protected:
    Records m_Records{GetParam()};
    std::string m_Name = GetParam() ? "x.ali" : "x.fasta";

    void fill(std::size_t size)
    {
        std::mt19937 random(3);
        while (m_Records.text.size() < size)
            m_Records.add(1 + random() % 700);
    }
    void expectRows()
    {
        const FileContents contents = contentsOf(m_Name, m_Records.text);
        ASSERT_EQ(contents.alignments.size(), 1U);
        const std::vector<RowRecord> &rows = contents.alignments[0].rows;
        ASSERT_EQ(rows.size(), m_Records.rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            ASSERT_EQ(rows[i].name, m_Records.rows[i].name);
            ASSERT_EQ(rows[i].sequence.text(), m_Records.rows[i].text);
        }
    }
};

TEST_P(RecordParts, GiveAllRowsInTheirOrder)
{
    fill(kLarge);
    expectRows();
}

TEST_P(RecordParts, HoldARecordThatIsLongerThanAPart)
{
    m_Records.add(10);
    m_Records.add(std::size_t{5} << 20);
    m_Records.add(10);
    fill(m_Records.text.size() + kLarge);
    m_Records.add(std::size_t{5} << 20);
    expectRows();
}

TEST_P(RecordParts, TellOfTheFirstDefectWithItsLine)
{
    fill(kLarge / 3);
    m_Records.put(GetParam() ? ">P1;first" : ">first");
    m_Records.put("sequence:first");
    const std::uint64_t line = m_Records.line();
    m_Records.put("AC#D");
    fill(2 * kLarge);
    m_Records.put("AC$D");
    const std::string message = messageOf(m_Name, m_Records.text);
    const std::string place =
        m_Name + ':' + std::to_string(GetParam() ? line : line - 1) + ": found ";
    EXPECT_EQ(message.substr(0, place.size()), place);
}

TEST_P(RecordParts, TellOfARowWithoutResiduesAtTheVeryEnd)
{
    fill(kLarge);
    const std::uint64_t line = m_Records.line();
    m_Records.put(GetParam() ? ">P1;empty" : ">empty");
    if (GetParam())
        m_Records.put("title");
    const std::string message = messageOf(m_Name, m_Records.text);
    EXPECT_TRUE(message.starts_with(m_Name + ':' + std::to_string(line) + ": found no residues"))
        << message;
}

INSTANTIATE_TEST_SUITE_P(Formats, RecordParts, testing::Bool(), [](const auto &info) {
    return std::string(info.param ? "pir" : "fasta");
});

TEST(RecordParts, StopsOfAllPartsAreOneRemarkWithTheFirstLine)
{
    Records records(false);
    std::mt19937 random(4);
    std::uint64_t first = 0;
    std::size_t stops = 0;
    while (records.text.size() < kLarge) {
        records.add(1 + random() % 700);
        if (records.text.size() > kLarge / 2 && random() % 100 == 0) {
            first = first == 0 ? records.line() : first;
            records.put("*AC");
            ++stops;
        }
    }
    const FileContents contents = contentsOf("x.fasta", records.text);
    const std::vector<std::string> &remarks = contents.alignments.at(0).remarks;
    ASSERT_FALSE(remarks.empty());
    EXPECT_TRUE(remarks[0].starts_with("x.fasta:" + std::to_string(first) + ": a stop"))
        << remarks[0];
    EXPECT_TRUE(remarks[0].ends_with("so were " + std::to_string(stops - 1) + " more further down"))
        << remarks[0];
}

TEST(TextParts, AreTheTextWithItsLinesAndEndBeforeARecord)
{
    Records records(false);
    std::mt19937 random(5);
    while (records.text.size() < kLarge)
        records.add(1 + random() % 5000);
    const TemporaryFile file("x.fasta", records.text);
    const ReadProgress progress;
    ByteSource source(file.path(), progress);
    TextReader reader(source);
    std::string all;
    std::uint64_t lines = 0;
    std::size_t parts = 0;
    while (const std::unique_ptr<TextReader> part = reader.takePart('>')) {
        ++parts;
        while (part->nextLine()) {
            ASSERT_EQ(part->line(), ++lines);
            const std::string line = part->restOfLine();
            ASSERT_TRUE(!all.empty() || line.starts_with('>'));
            all += line + '\n';
        }
    }
    std::erase(records.text, '\r');
    EXPECT_EQ(all, records.text);
    EXPECT_GT(parts, 2U);
}

TEST(TextParts, DoNotEndBetweenTwoLinesThatBothBeginWithTheMark)
{
    std::string text;
    while (text.size() < kLarge)
        text += ">a\n>b\nA\n";
    const TemporaryFile file("x.fasta", text);
    const ReadProgress progress;
    ByteSource source(file.path(), progress);
    TextReader reader(source);
    std::size_t parts = 0;
    while (const std::unique_ptr<TextReader> part = reader.takePart('>')) {
        ++parts;
        ASSERT_TRUE(part->nextLine());
        ASSERT_EQ(part->restOfLine(), ">a");
    }
    EXPECT_GT(parts, 2U);
}

} // namespace RecordPartsTest
} // namespace TAMBO::formats
