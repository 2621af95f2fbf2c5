// SPDX-License-Identifier: GPL-3.0-or-later
#include "PirReader.h"

#include "AlignmentParser.h"
#include "FormatSigns.h"
#include "FormatText.h"
#include "RowBuilder.h"

#include <algorithm>
#include <array>

namespace TAMBO::formats {

namespace {

// "C; comment", "A;Title: ...", "F;2-105/Product: ...": what databases say about an entry.
bool isAnnotation(std::string_view line) noexcept
{
    return line.size() >= 2 && line[0] >= 'A' && line[0] <= 'Z' && line[1] == ';';
}

// Marks between residues whose order or neighbourhood was uncertain.
bool isPunctuation(char character) noexcept
{
    return std::string_view("(),=[]").find(character) != std::string_view::npos;
}

// "structureX:5fd1:1    :A:106  :A:ferredoxin:...": what the row is tied to.
StructureLink parseLink(std::string_view title, const std::string &rowName)
{
    std::array<std::string, 6> fields;
    std::size_t count = 0;
    for (std::string &field : fields) {
        const std::size_t end = std::min(title.find(':'), title.size());
        field = cleanText(trimmed(title.substr(0, end)));
        ++count;
        if (end == title.size())
            break;
        title.remove_prefix(end + 1);
    }
    const bool isStructure = fields[0].starts_with("structure") && fields[0].size() <= 10;
    if (count < 2 || (!isStructure && fields[0] != "sequence"))
        return {};
    StructureLink link;
    if (isStructure)
        link.structure = fields[1].empty() ? rowName : fields[1];
    link.first = fields[2];
    link.chain = fields[3];
    link.last = fields[4];
    link.lastChain = fields[5];
    return link;
}

bool looksLikeResidues(std::string_view title) noexcept
{
    constexpr std::size_t tooLongForAWord = 30;
    return title.size() >= tooLongForAWord && std::all_of(title.begin(), title.end(), [](char c) {
               return (c >= 'A' && c <= 'Z') || c == '-' || c == '*';
           });
}

class PirParser : AlignmentParser
{
public:
    explicit PirParser(TextReader &reader) : AlignmentParser(reader) { }

    Result<FileContents> run();

private:
    enum class Place { BeforeFirst, InRow, AfterRow };

    void beginRow();
    void addText(std::string_view text);
    void addPunctuation(char character);
    void addForeignText(std::string_view text);
    void finishRow();
    void finish();
    RowRecord &row() { return m_Alignment.rows.back(); }

    RowBuilder m_Row;
    Place m_Place = Place::BeforeFirst;
    std::uint64_t m_HeaderLine = 0;
    std::uint64_t m_FirstPunctuationLine = 0;
    bool m_HasForeignText = false;
};

Result<FileContents> PirParser::run()
{
    while (m_Outcome && m_Reader.nextLine()) {
        const std::string_view start = m_Reader.ahead();
        if (start.front() == '>') {
            finishRow();
            if (m_Outcome)
                beginRow();
            continue;
        }
        if (isAnnotation(start))
            continue;
        std::string_view piece;
        while (m_Outcome && m_Reader.nextPiece(piece))
            addText(piece);
    }
    if (m_Outcome)
        finishRow();
    if (!m_Reader.outcome())
        return m_Reader.outcome().error();
    if (!m_Outcome)
        return m_Outcome.error();
    if (m_Alignment.rows.empty())
        return failureOf(m_Reader.fileName(), "holds no sequences");
    finish();
    FileContents contents;
    contents.format = formatName(FileFormat::Pir);
    contents.alignments.push_back(std::move(m_Alignment));
    return contents;
}

void PirParser::beginRow()
{
    m_HeaderLine = m_Reader.line();
    const std::string header = m_Reader.restOfLine();
    if (!isPirStart(header))
        return fail(m_HeaderLine, "found " + shown(header) +
                                      ", expected the start of a record like \">P1;name\"");
    RowRecord row;
    row.name = cleanText(trimmed(std::string_view(header).substr(4)));
    if (row.name.empty())
        remark(m_HeaderLine, "a sequence without a name");
    if (!m_Reader.nextLine())
        return fail(m_HeaderLine, "the file ends after " + shown(header) +
                                      ", expected a title line and residues");
    if (m_Reader.ahead().front() == '>')
        return fail(m_Reader.line(), "found " + shown(m_Reader.restOfLine()) +
                                         ", expected the title line of " + shown(header));
    const std::string title = m_Reader.restOfLine();
    row.description = cleanText(trimmed(title));
    row.link = parseLink(title, row.name);
    if (looksLikeResidues(row.description))
        remark(m_Reader.line(), "the title of " + shown(row.name) +
                                    " looks like residues; it was read as the title");
    appendRow(m_Alignment.rows, std::move(row));
    m_Place = Place::InRow;
    m_HasForeignText = false;
}

void PirParser::addText(std::string_view text)
{
    while (!text.empty()) {
        if (m_Place != Place::InRow)
            return addForeignText(text);
        text.remove_prefix(m_Row.append(text));
        if (text.empty())
            break;
        const char character = text.front();
        text.remove_prefix(1);
        if (character == '*')
            m_Place = Place::AfterRow;
        else if (character == '/' || isPunctuation(character))
            addPunctuation(character);
        else if (character == '?')
            m_Row.appendLetter('X');
        else if (!isBlank(character))
            return fail(m_Reader.line(),
                        "found " + shown(character) +
                            ", expected a residue letter, a gap (\"-\", \".\" or \"~\") or \"*\"");
    }
}

// Punctuation has a column of its own in the file, and rows stay in step only when it keeps it.
void PirParser::addPunctuation(char character)
{
    const std::uint64_t column = m_Row.width();
    m_Row.appendGap();
    if (character == '/')
        row().chainBreaks.push_back({m_Row.letterCount(), column});
    else if (m_FirstPunctuationLine == 0)
        m_FirstPunctuationLine = m_Reader.line();
}

void PirParser::addForeignText(std::string_view text)
{
    if (m_HasForeignText || trimmed(text).empty())
        return;
    m_HasForeignText = true;
    if (m_Place == Place::BeforeFirst)
        remark(m_Reader.line(), "text before the first record was left out");
    else
        remark(m_Reader.line(),
               shown(text) + " after the \"*\" that ends " + shown(row().name) + " was left out");
}

void PirParser::finishRow()
{
    if (m_Place == Place::BeforeFirst)
        return;
    if (m_Row.width() == 0)
        return fail(m_HeaderLine,
                    "found no residues for " + shown(row().name) + ", expected at least one");
    row().sequence = m_Row.take();
}

void PirParser::finish()
{
    const std::vector<RowRecord> &rows = m_Alignment.rows;
    m_Alignment.name = baseName(m_Reader.fileName());
    if (m_FirstPunctuationLine != 0)
        remark(m_FirstPunctuationLine, "punctuation between residues was read as gaps");
    const auto [least, most] =
        std::minmax_element(rows.begin(), rows.end(), [](const RowRecord &a, const RowRecord &b) {
            return a.sequence.width < b.sequence.width;
        });
    m_Alignment.isAligned = least->sequence.width == most->sequence.width;
    const bool hasGaps = std::any_of(rows.begin(), rows.end(), [](const RowRecord &row) {
        return row.sequence.letters.size() < row.sequence.width;
    });
    if (!m_Alignment.isAligned && hasGaps)
        m_Alignment.remarks.push_back(
            describeUneven(m_Reader.fileName(), least->sequence.width, most->sequence.width));
}

} // namespace

Result<FileContents> readPir(TextReader &reader)
{
    return PirParser(reader).run();
}

} // namespace TAMBO::formats
