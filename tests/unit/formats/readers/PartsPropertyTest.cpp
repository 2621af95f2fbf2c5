// SPDX-License-Identifier: GPL-3.0-or-later
// Files read in many small parts by several threads give what they give in one part: the same rows,
// remarks and failures, whatever is wrong with them.
#include "ClustalReader.h"
#include "FastaReader.h"
#include "PirReader.h"
#include "RowPacking.h"
#include "StockholmReader.h"
#include "TestFiles.h"

#include <gtest/gtest.h>

#include <ostream>
#include <random>
#include <string>

namespace TAMBO::formats {
namespace PartsPropertyTest {

using Reader = Result<FileContents> (*)(TextReader &);

enum class Form { Fasta, Pir, Stockholm, Plain, Clustal };

struct Format
{
    const char *name;
    Form form;
    Reader reader;
};

void PrintTo(const Format &format, std::ostream *out)
{
    *out << format.name;
}

// All that a reading says, as text.
std::string told(const std::string &bytes, Reader reader, const PartSizes &sizes)
{
    const TemporaryFile file("x", bytes);
    const ReadProgress noProgress;
    ByteSource source(file.path(), noProgress);
    TextReader text(source, sizes);
    Result<FileContents> contents = reader(text);
    if (!contents)
        return contents.error().message();
    std::string all = contents->format + '\n';
    const auto addAll = [&all](const std::vector<Annotation> &annotations) {
        for (const Annotation &said : annotations)
            all += said.tag + '=' + said.text + '\n';
    };
    for (AlignmentRecord &alignment : contents->alignments) {
        unpackRows(alignment);
        all += alignment.name + (alignment.isAligned ? " aligned\n" : " not aligned\n");
        for (const std::string &remark : alignment.remarks)
            all += remark + '\n';
        addAll(alignment.annotations);
        addAll(alignment.columnAnnotations);
        for (const RowRecord &row : alignment.rows) {
            all += row.name + '|' + row.description + '|' + row.sequence.text() + '|' +
                   row.link->structure + '\n';
            for (const ChainBreak &chainBreak : row.chainBreaks)
                all += std::to_string(chainBreak.column.value_or(0)) + '/';
            addAll(row.annotations);
            addAll(row.residueAnnotations);
        }
    }
    return all;
}

class Maker
{
public:
    Maker(Form form, unsigned seed) : m_Form(form), m_Random(seed) { }

    std::string file()
    {
        std::string text = alignment();
        if ((m_Form == Form::Stockholm || m_Form == Form::Clustal) && roll(4) == 0)
            text += alignment();
        if (roll(3) == 0)
            damage(text);
        return text;
    }

private:
    unsigned roll(std::size_t sides) { return static_cast<unsigned>(m_Random() % sides); }

    std::string cells(std::size_t count)
    {
        std::string text;
        while (text.size() < count)
            text += "ACDEFGHIKLMNPQRSTVWYacd-----.~"[roll(30)];
        if (roll(20) == 0)
            text[roll(count)] = '*';
        return text;
    }
    std::string name(std::size_t row)
    {
        return "row" + std::to_string(roll(60) == 0 ? roll(9) : row);
    }
    std::string end() { return roll(7) == 0 ? "\r\n" : roll(9) == 0 ? " \n" : "\n"; }

    std::string alignment()
    {
        const std::size_t rows = 1 + roll(30);
        const std::size_t width = 1 + roll(150);
        switch (m_Form) {
        case Form::Fasta:
        case Form::Pir:
            return records(rows, width);
        case Form::Stockholm:
            return "# STOCKHOLM 1.0\n#=GF ID x\n" + blocks(rows, width) + "//\n";
        case Form::Plain:
            return blocks(rows, width);
        case Form::Clustal:
            break;
        }
        return "CLUSTAL W (1.83) multiple sequence alignment\n\n" + blocks(rows, width);
    }
    std::string records(std::size_t rows, std::size_t width)
    {
        const bool isPir = m_Form == Form::Pir;
        const std::size_t line = 1 + roll(80);
        std::string text;
        for (std::size_t row = 0; row < rows; ++row) {
            text += (isPir ? ">P1;" : ">") + name(row) + end();
            if (isPir)
                text += "structureX:1abc:" + end();
            const std::string here = cells(roll(30) == 0 ? 1 + roll(150) : width);
            for (std::size_t at = 0; at < here.size(); at += line)
                text += here.substr(at, line) + end();
            if (isPir)
                text += "*" + end();
        }
        return text;
    }
    std::string blocks(std::size_t rows, std::size_t width)
    {
        const std::size_t block = roll(3) == 0 ? width : 1 + roll(80);
        const bool hasCounts = m_Form == Form::Clustal && roll(3) == 0;
        std::string text;
        for (std::size_t at = 0; at < width; at += block) {
            for (std::size_t row = 0; row < rows; ++row) {
                text += name(row) + "   " + cells(std::min(block, width - at)) +
                        (hasCounts ? " 12" : "") + end();
                if (m_Form == Form::Stockholm)
                    text += markup(row, std::min(block, width - at));
            }
            if (m_Form == Form::Clustal && roll(2) == 0)
                text += "        **  : ." + end();
            text += end();
        }
        return text;
    }
    std::string markup(std::size_t row, std::size_t width)
    {
        switch (roll(20)) {
        case 0:
            return "#=GR " + name(row) + " SS " + std::string(width, 'H') + end();
        case 1:
            return "#=GS " + name(row) + " DE a description" + end();
        case 2:
            return "#=GC cons " + std::string(width, 'x') + end();
        case 3:
            return "# a comment" + end();
        case 4:
            return "#=XX what" + end();
        default:
            return {};
        }
    }
    void damage(std::string &text)
    {
        for (unsigned count = 1 + roll(4); count > 0; --count) {
            const std::size_t place = roll(text.size());
            if (roll(2) == 0)
                text[place] = " \n>#*/1!A-"[roll(10)];
            else
                text.insert(place, text.substr(roll(text.size()), roll(100)));
        }
        if (roll(4) == 0)
            text.resize(1 + roll(text.size()));
    }

    Form m_Form;
    std::mt19937 m_Random;
};

class PartsProperty : public testing::TestWithParam<Format>
{
};

TEST_P(PartsProperty, SmallPartsSayWhatTheWholeSays)
{
    const PartSizes whole;
    unsigned failures = 0;
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        const std::string bytes = Maker(GetParam().form, seed).file();
        const std::string expected = told(bytes, GetParam().reader, whole);
        failures += expected.starts_with("x:") ? 1 : 0;
        const PartSizes small{0, 1 + seed % 300, 64 + seed % 3000};
        ASSERT_EQ(told(bytes, GetParam().reader, small), expected) << bytes;
    }
    // Both kinds are there.
    EXPECT_GT(failures, 25U);
    EXPECT_LT(failures, 275U);
}

INSTANTIATE_TEST_SUITE_P(Formats, PartsProperty,
                         testing::Values(Format{"fasta", Form::Fasta, readFasta},
                                         Format{"pir", Form::Pir, readPir},
                                         Format{"stockholm", Form::Stockholm, readStockholm},
                                         Format{"plain", Form::Plain, readPlainRows},
                                         Format{"clustal", Form::Clustal, readClustal}),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace PartsPropertyTest
} // namespace TAMBO::formats
