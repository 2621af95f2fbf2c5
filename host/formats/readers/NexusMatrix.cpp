// SPDX-License-Identifier: GPL-3.0-or-later
#include "NexusMatrix.h"

#include "CellReader.h"
#include "FormatText.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace TAMBO::formats {

Result<AlignmentRecord> NexusMatrix::read(const std::optional<std::uint64_t> &rows)
{
    if (!m_Head.columns)
        fail(m_Text.line(),
             "found MATRIX, expected DIMENSIONS with NCHAR, the number of columns, before it");
    if (!m_Head.hasLabels && m_Names.size() == 0)
        fail(m_Text.line(), "found MATRIX without names of its rows (NOLABELS), expected TAXLABELS "
                            "before it");
    m_Table = m_Head.symbols.table();
    m_IsPlain = m_Table == NexusSymbols().table();
    while (m_Outcome && m_Text.outcome()) {
        const std::optional<char> next = m_Text.passLines();
        if (!next)
            fail(std::max<std::uint64_t>(m_Text.line(), 1),
                 "the file ends within the matrix, expected \";\" behind the last row");
        else if (*next == ';')
            break;
        else
            readRowLine();
    }
    if (m_Outcome && m_Text.outcome())
        finish(rows);
    m_Text.pass();
    if (!m_Outcome)
        return m_Outcome.error();
    return std::move(m_Alignment);
}

void NexusMatrix::readRowLine()
{
    if (!m_OpenRow)
        m_RowsLine = m_Text.line();
    const std::optional<std::size_t> row = m_OpenRow ? m_OpenRow : rowHere();
    if (!row)
        return;
    const std::uint64_t line = m_Text.line();
    const char end = readRowCells(*row);
    if (!m_Text.outcome())
        return;
    if (end != '\n' && end != ';')
        return failAt(end, *row);
    m_Rows.append(*row,
                  {RowLine::Kind::Row, line, {}, {}, m_Builder.cells(), m_Builder.stops(), end});
    m_Builder.begin();
    const std::uint64_t width = m_Rows.width(*row);
    if (width > *m_Head.columns)
        return fail(line,
                    "row " + shown(m_Rows.name(*row)) +
                        (m_OpenRow ? ", which begins in line " + std::to_string(m_RowsLine) + ","
                                   : std::string()) +
                        " has " + counted(width, "column") +
                        " up to here, DIMENSIONS says NCHAR=" + std::to_string(*m_Head.columns));
    m_OpenRow.reset();
    if (!m_Head.isInterleaved && width < *m_Head.columns)
        m_OpenRow = row;
}

// The row whose name comes next, behind it. Nothing after a failure.
std::optional<std::size_t> NexusMatrix::rowHere()
{
    if (m_Head.hasLabels) {
        const std::optional<std::string> name = nameHere();
        return name ? namedRow(*name) : std::nullopt;
    }
    if (m_NextRow == m_Names.size() && m_Head.isInterleaved)
        m_NextRow = 0;
    if (m_NextRow == m_Names.size()) {
        fail(m_Text.line(),
             "found more rows than the " + std::to_string(m_Names.size()) + " names of TAXLABELS");
        return std::nullopt;
    }
    const std::size_t row = m_NextRow++;
    if (row == m_Rows.size())
        m_Rows.add(m_Names[row]);
    return row;
}

std::optional<std::string> NexusMatrix::nameHere()
{
    const NexusWord word = m_Text.nameWord();
    if (!m_Text.outcome())
        return std::nullopt;
    std::string name = word.name();
    if (m_Names.size() == 0 || m_Names.has(name))
        return name;
    // One may write a blank as it is, in quotation marks, the other as "_".
    for (const auto &[from, to] : {std::pair(' ', '_'), std::pair('_', ' ')}) {
        std::string other = name;
        std::ranges::replace(other, from, to);
        if (m_Names.has(other))
            return other;
    }
    // Rows may be called by their place among the names.
    const auto place = isAllDigits(name) ? numberIn<std::uint64_t>(name) : std::nullopt;
    if (place && *place >= 1 && *place <= m_Names.size())
        return std::string(m_Names[*place - 1]);
    fail(m_Text.line(), "found row " + shown(name) + ", which TAXLABELS does not have");
    return std::nullopt;
}

std::optional<std::size_t> NexusMatrix::namedRow(const std::string &name)
{
    const std::optional<std::size_t> known = m_Rows.find(name);
    if (m_Head.isInterleaved) {
        if (known == std::size_t(0))
            m_IsFirstSection = false;
        if (!m_IsFirstSection) {
            if (!known)
                fail(m_Text.line(),
                     "found row " + shown(name) + ", which the first block of rows does not have");
            return known;
        }
    }
    if (known) {
        fail(m_Text.line(), "found row " + shown(name) + " a second time, first in line " +
                                std::to_string(m_Rows.line(*known)));
        return std::nullopt;
    }
    return m_Rows.add(name);
}

// Up to the line's end, or the character that is returned.
char NexusMatrix::readRowCells(std::size_t row)
{
    for (;;) {
        const std::string_view text = m_Reader.ahead();
        m_Reader.skip(m_IsPlain ? appendPlain(text) : appendMeant(text, row));
        const char next = m_Text.here();
        if (next == '[')
            m_Text.passComment();
        else if (next == '(' || next == '{') {
            if (!appendSet(row))
                return next;
        } else if (next == '\n' || m_Table[static_cast<unsigned char>(next)] == kForeign ||
                   (m_Table[static_cast<unsigned char>(next)] == kSameAsFirstRow &&
                    m_Rows.width(row) + m_Builder.width() >= m_FirstRow.size()))
            return next;
        if (!m_Text.outcome())
            return '\n';
    }
}

// A dot may mean a gap or "as in the first row", and nobody has said which.
std::size_t NexusMatrix::appendPlain(std::string_view text)
{
    constexpr std::size_t pieceSize = 4096;
    const std::string_view piece = text.substr(0, pieceSize);
    const std::string_view line = piece.substr(0, piece.find('\n'));
    return appendCells(line.substr(0, line.find('.')), m_Builder);
}

std::size_t NexusMatrix::appendMeant(std::string_view text, std::size_t row)
{
    constexpr std::size_t pieceSize = 4096;
    const std::uint64_t begin = m_Rows.width(row) + m_Builder.width();
    m_Piece.clear();
    std::size_t count = 0;
    for (; count < text.size() && m_Piece.size() < pieceSize; ++count) {
        char meant = m_Table[static_cast<unsigned char>(text[count])];
        if (meant == kForeign)
            break;
        if (meant == kSameAsFirstRow) {
            const std::uint64_t column = begin + m_Piece.size();
            if (row == 0 || column >= m_FirstRow.size())
                break;
            meant = m_FirstRow[column];
        }
        if (meant != ' ')
            m_Piece += meant;
    }
    const std::size_t size = m_Piece.size();
    if (row == 0 && m_Head.symbols.match) {
        m_FirstRow += m_Piece;
        // A stop is a gap.
        std::replace(m_FirstRow.begin() + static_cast<std::ptrdiff_t>(begin), m_FirstRow.end(), '*',
                     '-');
    }
    m_Piece.resize(size + RowBuilder::kReadAhead);
    (void)appendCells(std::string_view(m_Piece).substr(0, size), m_Builder);
    return count;
}

// "{DN}" and "(DN)": one of several residues, or several.
bool NexusMatrix::appendSet(std::size_t row)
{
    const char end = m_Text.here() == '(' ? ')' : '}';
    while (m_Text.here() != '\n' && m_Text.here() != end)
        m_Text.pass();
    if (m_Text.here() == '\n')
        return false;
    m_Text.pass();
    if (row == 0 && m_Head.symbols.match)
        m_FirstRow += 'X';
    m_Builder.appendLetter('X');
    if (m_Sets++ == 0)
        m_SetsLine = m_Text.line();
    return true;
}

void NexusMatrix::failAt(char found, std::size_t row)
{
    const std::string place = " in row " + shown(m_Rows.name(row));
    if (m_Table[static_cast<unsigned char>(found)] == kSameAsFirstRow)
        return fail(m_Text.line(), "found " + shown(found) + place +
                                       ", where the first row has nothing that it could stand "
                                       "for");
    if (found == '.')
        return fail(m_Text.line(),
                    "found \".\"" + place + ", of which FORMAT says neither GAP=. nor MATCHCHAR=.");
    if (found == '\n' || found == '(' || found == '{')
        return fail(m_Text.line(),
                    "found " + shown(found) + place + " without its end in the same line");
    fail(m_Text.line(),
         "found " + shown(found) + place + ", expected a residue letter or a gap (\"-\")");
}

void NexusMatrix::finish(const std::optional<std::uint64_t> &rows)
{
    const std::uint64_t columns = *m_Head.columns;
    for (std::size_t row = 0; row < m_Rows.size(); ++row) {
        if (m_Rows.width(row) != columns)
            return fail(m_Rows.line(row), "row " + shown(m_Rows.name(row)) + " ends with " +
                                              counted(m_Rows.width(row), "column") +
                                              ", DIMENSIONS says NCHAR=" + std::to_string(columns));
    }
    if (m_Rows.isEmpty() || (rows && *rows != m_Rows.size()))
        return fail(m_Text.line(), "the matrix ends after " + counted(m_Rows.size(), "row") +
                                       ", expected " +
                                       (rows ? std::to_string(*rows) : "at least one"));
    if (m_Sets > 0)
        remark(m_SetsLine,
               counted(m_Sets, "set of several residues was", "sets of several residues were") +
                   " read as \"X\"");
    std::ranges::move(m_Rows.remarks(m_Reader.fileName()), std::back_inserter(m_Alignment.remarks));
    m_Alignment.name = m_Head.title;
    m_Alignment.packed = m_Rows.take(m_Reader, m_Reader.isWorthThreads());
}

} // namespace TAMBO::formats
