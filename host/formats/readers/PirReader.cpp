// SPDX-License-Identifier: GPL-3.0-or-later
#include "PirReader.h"

#include "AlignmentParser.h"
#include "FormatSigns.h"
#include "FormatText.h"
#include "RowBuilder.h"
#include "TextParts.h"

#include <algorithm>
#include <array>
#include <utility>

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

    // ---- As a parser of one part

    void parse();
    void merge(PirParser &next);
    [[nodiscard]] bool isFine() const noexcept { return m_Outcome.has_value(); }

private:
    enum class Place { BeforeFirst, InRow, AfterRow };

    void beginRow();
    void addText(std::string_view text);
    void addPunctuation(char character);
    void addForeignText(std::string_view text);
    void finishRow();
    void finish();

    RowBuilder m_Row;
    // Of the row under way.
    std::string m_Name;
    Rare<RowLabel> m_Label;
    Place m_Place = Place::BeforeFirst;
    std::uint64_t m_HeaderLine = 0;
    std::uint64_t m_FirstPunctuationLine = 0;
    bool m_HasForeignText = false;
    // Of the narrowest and the widest row.
    std::pair<std::uint64_t, std::uint64_t> m_Widths{~std::uint64_t{}, 0};
    bool m_HasGaps = false;
};

void PirParser::parse()
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
        m_Outcome = m_Reader.outcome();
}

void PirParser::merge(PirParser &next)
{
    mergeRows(next);
    if (m_FirstPunctuationLine == 0)
        m_FirstPunctuationLine = next.m_FirstPunctuationLine;
    m_Widths = {std::min(m_Widths.first, next.m_Widths.first),
                std::max(m_Widths.second, next.m_Widths.second)};
    m_HasGaps |= next.m_HasGaps;
}

Result<FileContents> PirParser::run()
{
    readInParts<PirParser>(m_Reader, '>', *this);
    if (m_Outcome && !m_Reader.outcome())
        m_Outcome = m_Reader.outcome();
    if (!m_Outcome)
        return m_Outcome.error();
    if (m_Alignment.packed.empty())
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
    m_Name = cleanText(trimmed(std::string_view(header).substr(4)));
    if (m_Name.empty())
        remark(m_HeaderLine, "a sequence without a name");
    if (!m_Reader.nextLine())
        return fail(m_HeaderLine, "the file ends after " + shown(header) +
                                      ", expected a title line and residues");
    if (m_Reader.ahead().front() == '>')
        return fail(m_Reader.line(), "found " + shown(m_Reader.restOfLine()) +
                                         ", expected the title line of " + shown(header));
    const std::string title = m_Reader.restOfLine();
    m_Label = Rare<RowLabel>();
    std::string description = cleanText(trimmed(title));
    StructureLink link = parseLink(title, m_Name);
    if (looksLikeResidues(description))
        remark(m_Reader.line(),
               "the title of " + shown(m_Name) + " looks like residues; it was read as the title");
    if (!description.empty())
        m_Label.change().description = std::move(description);
    if (!(link == StructureLink()))
        m_Label.change().link = std::move(link);
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
        m_Label.change().chainBreaks.push_back({m_Row.letterCount(), column});
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
               shown(text) + " after the \"*\" that ends " + shown(m_Name) + " was left out");
}

void PirParser::finishRow()
{
    if (m_Place == Place::BeforeFirst)
        return;
    if (m_Row.width() == 0)
        return fail(m_HeaderLine,
                    "found no residues for " + shown(m_Name) + ", expected at least one");
    m_Widths.first = std::min(m_Widths.first, m_Row.width());
    m_Widths.second = std::max(m_Widths.second, m_Row.width());
    m_HasGaps |= m_Row.letterCount() < m_Row.width();
    m_Alignment.packed.add(m_Row.pack(m_Name)).label = std::move(m_Label);
}

void PirParser::finish()
{
    m_Alignment.name = baseName(m_Reader.fileName());
    if (m_FirstPunctuationLine != 0)
        remark(m_FirstPunctuationLine, "punctuation between residues was read as gaps");
    m_Alignment.isAligned = m_Widths.first == m_Widths.second;
    if (!m_Alignment.isAligned && m_HasGaps)
        m_Alignment.remarks.push_back(
            describeUneven(m_Reader.fileName(), m_Widths.first, m_Widths.second));
}

} // namespace

Result<FileContents> readPir(TextReader &reader)
{
    return PirParser(reader).run();
}

} // namespace TAMBO::formats
