// SPDX-License-Identifier: GPL-3.0-or-later
#include "ClustalReader.h"

#include "AlignmentParser.h"
#include "FormatSigns.h"
#include "FormatText.h"
#include "PiecedRows.h"

#include <algorithm>
#include <utility>

namespace TAMBO::formats {

namespace {

class ClustalParser : AlignmentParser
{
public:
    explicit ClustalParser(TextReader &reader) : AlignmentParser(reader) { }

    Result<FileContents> run();

private:
    void addLine();
    void addMarks();
    void addRow(std::string_view name);
    void finishBlock();
    void finishAlignment();

    FileContents m_Contents;
    PiecedRows m_Rows;
    // Of the block under way.
    std::size_t m_RowsInBlock = 0;
    std::uint64_t m_FirstRowsPiece = 0;
    std::uint64_t m_LastLine = 0;
    bool m_IsFirstBlock = true;
};

Result<FileContents> ClustalParser::run()
{
    // Blank lines may come before the line that says what follows.
    while (m_Reader.nextLine() && m_Reader.nextWord().empty()) {
    }
    while (m_Outcome && m_Reader.nextLine())
        addLine();
    if (m_Outcome)
        finishAlignment();
    if (!m_Reader.outcome())
        return m_Reader.outcome().error();
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

void ClustalParser::addLine()
{
    const char first = m_Reader.ahead().front();
    if (first == '\n')
        return finishBlock();
    if (isBlank(first))
        return addMarks();
    const std::string_view name = m_Reader.nextWord();
    // Another alignment begins, unless a row is called so.
    const bool isBetweenBlocks = !m_IsFirstBlock && m_RowsInBlock == 0;
    if (isBetweenBlocks && isClustalWord(name) && !m_Rows.find(name))
        return finishAlignment();
    addRow(name);
}

// Marks of conservation or a ruler; residues there have lost their name.
void ClustalParser::addMarks()
{
    finishBlock();
    const std::string text = m_Reader.restOfLine();
    if (std::any_of(text.begin(), text.end(), isLetter))
        fail(m_Reader.line(), "found " + shown(text) +
                                  " without a name before it, expected a row or a line of marks");
}

void ClustalParser::addRow(std::string_view name)
{
    std::optional<std::size_t> row;
    if (m_IsFirstBlock) {
        row = m_Rows.add(name);
    } else {
        row = m_Rows.find(name);
        if (!row)
            return fail(m_Reader.line(),
                        "found row " + shown(name) + ", which the first block does not have");
    }
    const std::uint64_t before = m_Rows.width(*row);
    const char stop = m_Rows.append(*row, m_Reader);
    const std::string shownName = shown(m_Rows.name(*row));
    // The residues so far may be counted behind the row.
    if (stop != '\n' &&
        (stop < '0' || stop > '9' ||
         trimmed(m_Reader.restOfLine()).find_first_not_of("0123456789") != std::string_view::npos))
        return fail(m_Reader.line(), "found " + shown(stop) + " in row " + shownName +
                                         ", expected a residue letter or a gap (\"-\")");
    const std::uint64_t piece = m_Rows.width(*row) - before;
    if (piece == 0)
        return fail(m_Reader.line(),
                    "found no residues after " + shownName + ", expected at least one");
    if (m_RowsInBlock == 0)
        m_FirstRowsPiece = piece;
    else if (piece != m_FirstRowsPiece)
        return fail(m_Reader.line(), "row " + shownName + " has " + counted(piece, "column") +
                                         " here, the first row of the block has " +
                                         std::to_string(m_FirstRowsPiece));
    ++m_RowsInBlock;
    m_LastLine = m_Reader.line();
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
        return fail(std::max<std::uint64_t>(m_Reader.line(), 1),
                    "the file ends before the first row");
    // Only a row that comes twice in a block and another that is missing there get this far.
    if (const std::optional<std::size_t> uneven = m_Rows.firstUneven())
        return fail(m_Rows.line(*uneven), "row " + shown(m_Rows.name(*uneven)) + " ends with " +
                                              counted(m_Rows.width(*uneven), "column") + ", row " +
                                              shown(m_Rows.name(0)) + " has " +
                                              std::to_string(m_Rows.width(0)));
    m_Alignment.remarks = m_Rows.remarks(m_Reader.fileName());
    m_Alignment.packed = m_Rows.take();
    m_Contents.alignments.push_back(std::exchange(m_Alignment, {}));
    m_IsFirstBlock = true;
}

} // namespace

Result<FileContents> readClustal(TextReader &reader)
{
    return ClustalParser(reader).run();
}

} // namespace TAMBO::formats
