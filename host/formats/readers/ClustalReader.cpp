// SPDX-License-Identifier: GPL-3.0-or-later
#include "ClustalReader.h"

#include "AlignmentParser.h"
#include "FormatSigns.h"
#include "FormatText.h"
#include "LinePart.h"
#include "PiecedRows.h"
#include "TextParts.h"

#include <algorithm>
#include <utility>

namespace TAMBO::formats {

namespace {

void addClustalLine(TextReader &reader, RowLines &lines)
{
    const char first = reader.ahead().front();
    if (first == '\n')
        lines.addBlank(reader.line());
    else if (isBlank(first))
        lines.addText(reader.line(), {}, reader.restOfLine());
    else
        lines.addRow(reader, reader.nextWord());
}

using ClustalPart = LinePart<addClustalLine>;

class ClustalParser : AlignmentParser
{
public:
    explicit ClustalParser(TextReader &reader) : AlignmentParser(reader) { }

    Result<FileContents> run();

    // ---- Of the parts

    void merge(const ClustalPart &part);
    [[nodiscard]] bool isFine() const noexcept { return m_Outcome.has_value(); }

private:
    void addLine(const RowLine &line);
    void addMarks(const RowLine &line);
    void addRow(const RowLine &line);
    void finishBlock();
    void finishAlignment();

    FileContents m_Contents;
    // The line that says what the file is.
    bool m_HasHeader = false;
    std::uint64_t m_LineOfEnd = 0;
    PiecedRows m_Rows;
    // Of the block under way.
    std::size_t m_RowsInBlock = 0;
    std::uint64_t m_FirstRowsPiece = 0;
    std::uint64_t m_LastLine = 0;
    bool m_IsFirstBlock = true;
};

Result<FileContents> ClustalParser::run()
{
    readInParts<ClustalPart>(m_Reader, std::nullopt, *this);
    if (m_Outcome && !m_Reader.outcome())
        m_Outcome = m_Reader.outcome();
    if (m_Outcome)
        finishAlignment();
    if (!m_Outcome)
        return m_Outcome.error();
    std::vector<AlignmentRecord> &alignments = m_Contents.alignments;
    for (std::size_t i = 0; i < alignments.size(); ++i) {
        alignments[i].name = baseName(m_Reader.fileName());
        if (alignments.size() > 1)
            alignments[i].name += '_' + std::to_string(i + 1);
    }
    m_Contents.format = formatName(FileFormat::Clustal);
    return std::move(m_Contents);
}

void ClustalParser::merge(const ClustalPart &part)
{
    part.lines().forEach([this](const RowLine &line) {
        addLine(line);
        return m_Outcome.has_value();
    });
    m_LineOfEnd = part.lastLine();
    if (m_Outcome)
        m_Outcome = part.outcome();
}

void ClustalParser::addLine(const RowLine &line)
{
    // Blank lines may come before the line that says what follows.
    if (!m_HasHeader) {
        m_HasHeader = line.kind == RowLine::Kind::Row || !trimmed(line.rest).empty();
        return;
    }
    if (line.kind == RowLine::Kind::Blank)
        return finishBlock();
    if (line.kind == RowLine::Kind::Text)
        return addMarks(line);
    // Another alignment begins, unless a row is called so.
    const bool isBetweenBlocks = !m_IsFirstBlock && m_RowsInBlock == 0;
    if (isBetweenBlocks && isClustalWord(line.word) && !m_Rows.find(line.word)) {
        m_LineOfEnd = line.number;
        return finishAlignment();
    }
    addRow(line);
}

// Marks of conservation or a ruler; residues there have lost their name.
void ClustalParser::addMarks(const RowLine &line)
{
    finishBlock();
    if (std::any_of(line.rest.begin(), line.rest.end(), isLetter))
        fail(line.number, "found " + shown(line.rest) +
                              " without a name before it, expected a row or a line of marks");
}

void ClustalParser::addRow(const RowLine &line)
{
    std::optional<std::size_t> row;
    if (m_IsFirstBlock) {
        row = m_Rows.add(line.word);
    } else {
        row = m_Rows.find(line.word);
        if (!row)
            return fail(line.number,
                        "found row " + shown(line.word) + ", which the first block does not have");
    }
    m_Rows.append(*row, line);
    const std::uint64_t piece = line.cells.width;
    // The residues so far may be counted behind the row.
    if (line.end != '\n' &&
        (line.end < '0' || line.end > '9' ||
         trimmed(line.rest).find_first_not_of("0123456789") != std::string_view::npos))
        return fail(line.number, "found " + shown(line.end) + " in row " +
                                     shown(m_Rows.name(*row)) +
                                     ", expected a residue letter or a gap (\"-\")");
    if (piece == 0)
        return fail(line.number, "found no residues after " + shown(m_Rows.name(*row)) +
                                     ", expected at least one");
    if (m_RowsInBlock == 0)
        m_FirstRowsPiece = piece;
    else if (piece != m_FirstRowsPiece)
        return fail(line.number, "row " + shown(m_Rows.name(*row)) + " has " +
                                     counted(piece, "column") +
                                     " here, the first row of the block has " +
                                     std::to_string(m_FirstRowsPiece));
    ++m_RowsInBlock;
    m_LastLine = line.number;
}

void ClustalParser::finishBlock()
{
    if (m_RowsInBlock == 0)
        return;
    if (m_RowsInBlock != m_Rows.size())
        fail(m_LastLine, "the block ends after " + counted(m_RowsInBlock, "row") +
                             ", the first block has " + std::to_string(m_Rows.size()));
    m_IsFirstBlock = false;
    m_RowsInBlock = 0;
    m_Rows.expect(0);
}

void ClustalParser::finishAlignment()
{
    finishBlock();
    if (m_Rows.isEmpty())
        return fail(std::max<std::uint64_t>(m_LineOfEnd, 1), "the file ends before the first row");
    // Only a row that comes twice in a block and another that is missing there get this far.
    if (const std::optional<std::size_t> uneven = m_Rows.firstUneven())
        return fail(m_Rows.line(*uneven), "row " + shown(m_Rows.name(*uneven)) + " ends with " +
                                              counted(m_Rows.width(*uneven), "column") + ", row " +
                                              shown(m_Rows.name(0)) + " has " +
                                              std::to_string(m_Rows.width(0)));
    m_Alignment.remarks = m_Rows.remarks(m_Reader.fileName());
    m_Alignment.packed = m_Rows.take(m_Reader, m_Reader.isWorthThreads());
    if (!m_Reader.outcome())
        m_Outcome = m_Reader.outcome();
    m_Contents.alignments.push_back(std::exchange(m_Alignment, {}));
    m_IsFirstBlock = true;
}

} // namespace

Result<FileContents> readClustal(TextReader &reader)
{
    return ClustalParser(reader).run();
}

} // namespace TAMBO::formats
