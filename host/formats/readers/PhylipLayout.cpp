// SPDX-License-Identifier: GPL-3.0-or-later
#include "PhylipLayout.h"

#include "FormatSigns.h"
#include "FormatText.h"
#include "WorkLooks.h"

#include <algorithm>
#include <array>

namespace TAMBO::formats {

namespace {

constexpr std::size_t kFixedName = 10;

enum class Kind : unsigned char { Other, Blank, Cell };

constexpr std::array<Kind, 256> makeKinds() noexcept
{
    std::array<Kind, 256> kinds{};
    for (const char blank : {' ', '\t', '\v', '\f'})
        kinds[static_cast<unsigned char>(blank)] = Kind::Blank;
    for (const char cell : {'-', '.', '~', '_', '*', '?'})
        kinds[static_cast<unsigned char>(cell)] = Kind::Cell;
    for (unsigned char letter = 'A'; letter <= 'Z'; ++letter) {
        kinds[letter] = Kind::Cell;
        kinds[letter - 'A' + 'a'] = Kind::Cell;
    }
    return kinds;
}

constexpr std::array<Kind, 256> kKinds = makeKinds();

bool isEmptyLine(std::string_view line) noexcept
{
    return trimmed(line).empty();
}

class Attempt
{
public:
    Attempt(const std::vector<std::string_view> &lines, std::size_t begin, const PhylipSize &size,
            const PhylipManner &manner, WorkLooks &looks)
        : m_Lines(lines),
          m_Next(begin),
          m_Size(size),
          m_Manner(manner),
          m_Looks(looks),
          m_Widths(size.rows)
    { }

    PhylipLayout run()
    {
        if (m_Manner.isInterleaved)
            readBlocks();
        else
            readRows();
        if (m_Layout.fits())
            expectEnd();
        m_Layout.end = m_Next;
        return std::move(m_Layout);
    }

private:
    void readRows();
    void readBlocks();
    void readBlock(bool isFirst);
    // Past empty lines to the next one; false when there is none.
    bool findLine();
    std::string_view readName(std::string_view line);
    void addPiece(std::size_t row, std::string_view text);
    void expectEnd();
    void fail(std::size_t line, std::string cause)
    {
        if (!m_Layout.fits())
            return;
        m_Layout.cause = std::move(cause);
        m_Layout.causeLine = line;
    }
    [[nodiscard]] std::size_t lastLineOf(std::size_t row) const
    {
        const auto &pieces = m_Layout.pieces;
        return std::find_if(pieces.rbegin(), pieces.rend(),
                            [row](const auto &piece) { return piece.row == row; })
            ->line;
    }
    [[nodiscard]] std::string shownRow(std::size_t row) const
    {
        return "row " + shown(trimmed(m_Layout.names[row]));
    }

    const std::vector<std::string_view> &m_Lines;
    std::size_t m_Next;
    PhylipSize m_Size;
    PhylipManner m_Manner;
    WorkLooks &m_Looks;
    std::vector<std::uint64_t> m_Widths;
    PhylipLayout m_Layout;
};

void Attempt::readRows()
{
    for (std::size_t row = 0; row < m_Size.rows && m_Layout.fits(); ++row) {
        for (bool isFirst = true; isFirst || m_Widths[row] < m_Size.columns; isFirst = false) {
            const std::size_t before = m_Next;
            if (!findLine())
                return fail(before, "the file ends after " +
                                        std::to_string(isFirst ? row : row + 1) + " of " +
                                        std::to_string(m_Size.rows) + " rows" +
                                        (isFirst ? "" : ", the last one too short"));
            // Nothing separates the lines of one row.
            m_Layout.oddities += !isFirst && m_Next > before ? 1 : 0;
            const std::string_view line = m_Lines[m_Next];
            addPiece(row, isFirst ? readName(line) : line);
            if (!m_Layout.fits())
                return;
            ++m_Next;
        }
        if (m_Widths[row] > m_Size.columns)
            return fail(lastLineOf(row), shownRow(row) + " has " +
                                             counted(m_Widths[row], "column") + ", expected " +
                                             std::to_string(m_Size.columns));
    }
}

void Attempt::readBlocks()
{
    readBlock(true);
    while (m_Layout.fits() && m_Widths.front() < m_Size.columns)
        readBlock(false);
    for (std::size_t row = 0; row < m_Size.rows && m_Layout.fits(); ++row) {
        if (m_Widths[row] != m_Size.columns)
            fail(lastLineOf(row), shownRow(row) + " has " + counted(m_Widths[row], "column") +
                                      ", expected " + std::to_string(m_Size.columns));
    }
}

void Attempt::readBlock(bool isFirst)
{
    std::uint64_t firstPiece = 0;
    for (std::size_t row = 0; row < m_Size.rows; ++row) {
        const std::size_t before = m_Next;
        if (!findLine())
            return fail(before, "the file ends where " +
                                    (isFirst ? "row " + std::to_string(row + 1) + " of " +
                                                   std::to_string(m_Size.rows)
                                             : shownRow(row) + " goes on") +
                                    " is expected");
        // Nothing separates the rows of one block.
        m_Layout.oddities += row > 0 && m_Next > before ? 1 : 0;
        const std::string_view line = m_Lines[m_Next];
        const std::uint64_t width = m_Widths[row];
        addPiece(row, isFirst ? readName(line) : line);
        if (!m_Layout.fits())
            return;
        const std::uint64_t piece = m_Widths[row] - width;
        if (row == 0)
            firstPiece = piece;
        else if (piece != firstPiece)
            return fail(m_Next, shownRow(row) + " has " + counted(piece, "column") +
                                    " here, the first row of the block has " +
                                    std::to_string(firstPiece));
        ++m_Next;
    }
}

bool Attempt::findLine()
{
    std::size_t next = m_Next;
    while (next < m_Lines.size() && isEmptyLine(m_Lines[next]))
        ++next;
    if (next == m_Lines.size())
        return false;
    m_Next = next;
    return true;
}

// What is left of the line.
std::string_view Attempt::readName(std::string_view line)
{
    // Names begin at the margin; what stands further in goes on with a row.
    m_Layout.oddities += isBlank(line.front()) ? 1 : 0;
    std::string_view name = line.substr(0, std::min(line.size(), kFixedName));
    if (m_Manner.hasFixedNames) {
        line.remove_prefix(name.size());
    } else {
        line = trimmed(line);
        const auto end = std::find_if(line.begin(), line.end(), isBlank);
        name = line.substr(0, static_cast<std::size_t>(end - line.begin()));
        line.remove_prefix(name.size());
    }
    m_Layout.names.push_back(name);
    if (isEmptyLine(name))
        fail(m_Next, "found a row without a name");
    return line;
}

void Attempt::addPiece(std::size_t row, std::string_view text)
{
    if (!m_Layout.fits())
        return;
    if (!m_Looks.goesOn(text.size()))
        return fail(m_Next, "cancelled");
    std::uint64_t cells = 0;
    for (const char character : text) {
        const Kind kind = kKinds[static_cast<unsigned char>(character)];
        if (kind == Kind::Other)
            return fail(m_Next, "found " + shown(character) + " in " + shownRow(row) +
                                    ", expected a residue letter or a gap (\"-\")");
        cells += kind == Kind::Cell ? 1 : 0;
    }
    if (cells == 0 && m_Manner.isInterleaved)
        return fail(m_Next, "found no residues of " + shownRow(row));
    m_Widths[row] += cells;
    m_Layout.pieces.push_back({row, text, m_Next});
}

void Attempt::expectEnd()
{
    if (!findLine() || isPhylipHeader(m_Lines[m_Next]))
        return;
    fail(m_Next, "found " + shown(m_Lines[m_Next]) + " after " + counted(m_Size.rows, "row") +
                     " of " + counted(m_Size.columns, "column") + ", expected the end");
}

} // namespace

PhylipLayout layOut(const std::vector<std::string_view> &lines, std::size_t begin,
                    const PhylipSize &size, const PhylipManner &manner, WorkLooks &looks)
{
    return Attempt(lines, begin, size, manner, looks).run();
}

} // namespace TAMBO::formats
