// SPDX-License-Identifier: GPL-3.0-or-later
#include "MsfReader.h"

#include "AlignmentParser.h"
#include "FormatSigns.h"
#include "FormatText.h"
#include "MsfChecksum.h"
#include "PiecedRows.h"
#include "Text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace TAMBO::formats {

namespace {

// "Len:  245" somewhere in a line.
std::optional<std::uint64_t> numberAfter(std::string_view line, std::string_view label) noexcept
{
    const std::size_t place = line.find(label);
    if (place == std::string_view::npos)
        return std::nullopt;
    std::string_view text = trimmed(line.substr(place + label.size()));
    return takeNumber<std::uint64_t>(text);
}

bool isRuler(std::string_view line) noexcept
{
    return line.find_first_not_of("0123456789 \t") == std::string_view::npos;
}

class MsfParser : AlignmentParser
{
public:
    explicit MsfParser(TextReader &reader) : AlignmentParser(reader) { }

    Result<FileContents> run();

private:
    bool readNames();
    void addName(std::string_view line);
    void addLine();
    void finish();
    void checkLengths();
    void checkSums();

    PiecedRows m_Rows;
    // What the file says of a row, and what is found.
    struct Claims
    {
        std::optional<std::uint64_t> length;
        std::optional<std::uint64_t> sum;
        MsfChecksum found;
    };
    std::vector<Claims> m_Claims;
};

Result<FileContents> MsfParser::run()
{
    if (readNames()) {
        while (m_Outcome && m_Reader.nextLine())
            addLine();
    }
    if (!m_Reader.outcome())
        return m_Reader.outcome().error();
    if (m_Outcome)
        finish();
    if (!m_Outcome)
        return m_Outcome.error();
    FileContents contents;
    contents.format = formatName(FileFormat::Msf);
    contents.alignments.push_back(std::move(m_Alignment));
    return contents;
}

// What comes before the line with "MSF:" may be any text.
bool MsfParser::readNames()
{
    bool isText = true;
    while (m_Outcome && m_Reader.nextLine()) {
        const std::string line = m_Reader.restOfLine();
        const std::string_view text = trimmed(line);
        if (isText)
            isText = !isMsfLine(text);
        else if (text.starts_with("//"))
            break;
        else if (text.starts_with("Name:"))
            addName(text.substr(5));
    }
    if (!m_Outcome || !m_Reader.outcome())
        return false;
    if (m_Rows.isEmpty())
        fail(std::max<std::uint64_t>(m_Reader.line(), 1),
             "found no row, expected lines like \"Name: a Len: 100 Check: 1234 Weight: 1.00\" and "
             "\"//\"");
    return m_Outcome.has_value();
}

void MsfParser::addName(std::string_view line)
{
    line = trimmed(line);
    const auto end = std::find_if(line.begin(), line.end(), isBlank);
    const std::string_view name = line.substr(0, static_cast<std::size_t>(end - line.begin()));
    if (name.empty())
        return fail(m_Reader.line(), "found a row without a name");
    m_Rows.add(name);
    line.remove_prefix(name.size());
    m_Claims.push_back({numberAfter(line, "Len:"), numberAfter(line, "Check:"), {}});
}

void MsfParser::addLine()
{
    const std::string_view name = m_Reader.nextWord();
    if (name.empty())
        return m_Rows.expect(0);
    const std::optional<std::size_t> row = m_Rows.find(name);
    if (!row) {
        const std::string shownName = shown(name);
        const bool isNumber = isRuler(name);
        if (!isNumber || !isRuler(m_Reader.restOfLine()))
            fail(m_Reader.line(), "found row " + shownName + ", which no \"Name:\" line announces");
        return;
    }
    std::string text = m_Reader.restOfLine();
    m_Claims[*row].found.add(text);
    const std::size_t size = text.size();
    text.resize(size + RowBuilder::kReadAhead);
    const std::size_t count =
        m_Rows.append(*row, std::string_view(text).substr(0, size), m_Reader.line());
    if (count < size)
        fail(m_Reader.line(), "found " + shown(text[count]) + " in row " +
                                  shown(m_Rows.name(*row)) +
                                  ", expected a residue letter or a gap (\".\" or \"~\")");
}

void MsfParser::finish()
{
    checkLengths();
    if (!m_Outcome)
        return;
    checkSums();
    m_Alignment.name = baseName(m_Reader.fileName());
    std::ranges::move(m_Rows.remarks(m_Reader.fileName()), std::back_inserter(m_Alignment.remarks));
    m_Alignment.packed = m_Rows.take(m_Reader);
    m_Outcome = m_Reader.outcome();
}

// A row that ends early and is announced so lacks only gaps. The length of the whole that the file
// gives is often wrong.
void MsfParser::checkLengths()
{
    std::uint64_t longest = 0;
    for (std::size_t row = 0; row < m_Rows.size(); ++row)
        longest = std::max(longest, m_Rows.width(row));
    std::size_t extended = 0;
    std::size_t wrong = 0;
    for (std::size_t row = 0; row < m_Rows.size(); ++row) {
        const std::uint64_t width = m_Rows.width(row);
        const std::optional<std::uint64_t> claimed = m_Claims[row].length;
        if (width == 0)
            return fail(m_Reader.line(),
                        "the file ends without residues of row " + shown(m_Rows.name(row)));
        if (width < longest && claimed != width)
            return fail(m_Rows.line(row), "row " + shown(m_Rows.name(row)) + " ends with " +
                                              counted(width, "column") + ", expected " +
                                              std::to_string(claimed.value_or(longest)));
        wrong += claimed && *claimed != width ? 1 : 0;
        extended += width < longest ? 1 : 0;
    }
    if (wrong > 0)
        remark("\"Len:\" does not fit the columns of " + counted(wrong, "row"));
    if (extended == 0)
        return;
    for (std::size_t row = 0; row < m_Rows.size(); ++row)
        m_Rows.appendGaps(row, longest - m_Rows.width(row));
    remark(counted(extended, "row") +
           (extended == 1 ? " that ends early was" : " that end early were") + " filled with gaps");
}

// 0 is what programs write that do not work them out.
void MsfParser::checkSums()
{
    std::size_t wrong = 0;
    std::string first;
    for (std::size_t row = 0; row < m_Rows.size(); ++row) {
        const Claims &claims = m_Claims[row];
        if (claims.sum.value_or(0) == 0 || *claims.sum == claims.found.ofColumns() ||
            *claims.sum == claims.found.ofResidues())
            continue;
        if (wrong++ == 0)
            first = m_Rows.name(row);
    }
    if (wrong > 0)
        remark("the checksum of " + counted(wrong, "row") +
               " does not fit the residues, first of " + shown(first) +
               "; the file may have been changed by hand");
}

} // namespace

Result<FileContents> readMsf(TextReader &reader)
{
    return MsfParser(reader).run();
}

} // namespace TAMBO::formats
