// SPDX-License-Identifier: GPL-3.0-or-later
#include "FastaReader.h"

#include "AlignmentParser.h"
#include "Bits.h"
#include "DotlessRows.h"
#include "FormatText.h"
#include "RowBuilder.h"
#include "StopCount.h"

#include <algorithm>
#include <functional>

namespace TAMBO::formats {

namespace {

// The first line of some A3M files.
constexpr std::string_view kA3mMark = "#A3M#";

// The names of records in which programs that write A3M tell the secondary structure.
bool isSaidOfColumns(std::string_view name) noexcept
{
    return name == "ss_pred" || name == "ss_conf" || name == "ss_dssp" || name == "sa_dssp";
}

class FastaParser : AlignmentParser
{
public:
    explicit FastaParser(TextReader &reader) : AlignmentParser(reader) { }

    Result<FileContents> run();

private:
    void beginRecord();
    void addLine();
    void addPrologue();
    void addResidues();
    void finishRow();
    void finish();
    void dropUnfitLines(std::uint64_t columns);
    void remarkOnLines();
    bool isDotlessA2m() const;
    void dropStopColumn();

    RowBuilder m_Row;
    enum class Place { BeforeFirst, InRow, InLine };
    Place m_Place = Place::BeforeFirst;
    std::uint64_t m_HeaderLine = 0;
    // What is said of the columns, and where.
    std::vector<Annotation> m_Lines;
    std::vector<std::uint64_t> m_LineOfLines;
    // Per row, the columns that are capitals or dashes: what A2M calls columns.
    std::vector<std::uint64_t> m_MatchColumns;
    std::size_t m_RowsWithStop = 0;
    // At the ends of rows, and elsewhere.
    StopCount m_LastStops;
    StopCount m_InnerStops;
    // Of the row under way.
    std::uint64_t m_FirstStopLine = 0;
    std::uint64_t m_LastStopLine = 0;
    bool m_EndsWithStop = false;
    bool m_HasOtherGaps = false;
    bool m_HasLowerCase = false;
    bool m_HasPrologue = false;
    bool m_IsA3m = false;
};

Result<FileContents> FastaParser::run()
{
    while (m_Outcome && m_Reader.nextLine()) {
        const char first = m_Reader.ahead().front();
        if (first == '>') {
            finishRow();
            beginRecord();
        } else if (first != ';') {
            addLine();
        }
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
    contents.format = formatName(m_IsA3m ? FileFormat::A3m : FileFormat::Fasta);
    contents.alignments.push_back(std::move(m_Alignment));
    return contents;
}

void FastaParser::beginRecord()
{
    m_Place = Place::InRow;
    m_HeaderLine = m_Reader.line();
    const std::string header = m_Reader.restOfLine();
    std::string_view text = trimmed(std::string_view(header).substr(1));
    const std::size_t nameEnd = std::min(
        static_cast<std::size_t>(std::find_if(text.begin(), text.end(), isBlank) - text.begin()),
        text.size());
    if (isSaidOfColumns(text.substr(0, nameEnd))) {
        m_Place = Place::InLine;
        m_Lines.push_back({std::string(text.substr(0, nameEnd)), {}});
        m_LineOfLines.push_back(m_HeaderLine);
        return;
    }
    RowRecord row;
    row.name = cleanText(text.substr(0, nameEnd));
    row.description = cleanText(trimmed(text.substr(nameEnd)));
    if (row.name.empty())
        remark(m_HeaderLine, "a sequence without a name");
    appendRow(m_Alignment.rows, std::move(row));
}

void FastaParser::addLine()
{
    switch (m_Place) {
    case Place::InRow:
        return addResidues();
    case Place::InLine:
        for (const char character : m_Reader.restOfLine()) {
            if (!isBlank(character))
                m_Lines.back().text += character > ' ' && character < '\x7f' ? character : '.';
        }
        return;
    case Place::BeforeFirst:
        return addPrologue();
    }
}

void FastaParser::addPrologue()
{
    const std::string line = m_Reader.restOfLine();
    if (trimmed(line) == kA3mMark) {
        m_IsA3m = true;
        return;
    }
    if (m_HasPrologue || trimmed(line).empty())
        return;
    m_HasPrologue = true;
    remark(m_Reader.line(), "text before the first \">\" was left out");
}

// The line is found to end where its residues do, without looking for the end first.
void FastaParser::addResidues()
{
    for (;;) {
        const std::string_view text = m_Reader.ahead();
        const std::size_t count = m_Row.append(text);
        m_Reader.skip(count);
        if (count > 0)
            m_EndsWithStop = false;
        if (count == text.size()) {
            if (!m_Reader.fill())
                return;
            continue;
        }
        const char character = text[count];
        if (character == '\n')
            return;
        if (character == '*') {
            if (m_Row.stops() == 0)
                m_FirstStopLine = m_Reader.line();
            m_LastStopLine = m_Reader.line();
            m_Row.appendStop();
            m_EndsWithStop = true;
        } else if (character == '?') {
            m_Row.appendLetter('X');
            m_EndsWithStop = false;
        } else if (!isBlank(character)) {
            return fail(m_Reader.line(),
                        "found " + shown(character) +
                            ", expected a residue letter or a gap (\"-\", \".\" or \"~\")");
        }
        m_Reader.skip(1);
    }
}

void FastaParser::finishRow()
{
    if (m_Place != Place::InRow)
        return;
    RowRecord &row = m_Alignment.rows.back();
    if (m_Row.width() == 0)
        return fail(m_HeaderLine,
                    "found no residues after " + shown('>' + row.name) + ", expected at least one");
    m_MatchColumns.push_back(m_Row.width() - m_Row.lowerCaseCount());
    m_HasLowerCase |= m_Row.lowerCaseCount() > 0;
    m_HasOtherGaps |= m_Row.hasOtherGaps();
    const std::uint64_t last = m_EndsWithStop ? 1 : 0;
    m_RowsWithStop += last;
    m_LastStops.add(last, m_LastStopLine, row.name);
    m_InnerStops.add(m_Row.stops() - last, m_FirstStopLine, row.name);
    m_EndsWithStop = false;
    row.sequence = m_Row.take();
}

void FastaParser::finish()
{
    std::vector<RowRecord> &rows = m_Alignment.rows;
    m_Alignment.name = baseName(m_Reader.fileName());
    if (m_RowsWithStop == rows.size())
        dropStopColumn();
    else
        m_InnerStops.add(m_LastStops);
    if (!m_InnerStops.isEmpty())
        m_Alignment.remarks.push_back(m_InnerStops.remark(m_Reader.fileName()));
    const auto [least, most] =
        std::minmax_element(rows.begin(), rows.end(), [](const RowRecord &a, const RowRecord &b) {
            return a.sequence.width < b.sequence.width;
        });
    const std::uint64_t shortest = least->sequence.width;
    const std::uint64_t longest = most->sequence.width;
    m_Alignment.isAligned = shortest == longest;
    // Rows of one length are A3M only if the file says so: residues in small letters are no rarity.
    if ((m_IsA3m || !m_Alignment.isAligned) && isDotlessA2m()) {
        dropUnfitLines(m_MatchColumns.front());
        m_IsA3m = openDotlessRows(rows, m_Lines);
        m_Alignment.isAligned |= m_IsA3m;
    } else if (m_Alignment.isAligned) {
        dropUnfitLines(longest);
    }
    remarkOnLines();
    if (m_Alignment.isAligned) {
        m_Alignment.columnAnnotations = std::move(m_Lines);
        return;
    }
    const bool hasGaps = std::any_of(rows.begin(), rows.end(), [](const RowRecord &row) {
        return row.sequence.letters.size() < row.sequence.width;
    });
    if (hasGaps)
        m_Alignment.remarks.push_back(describeUneven(m_Reader.fileName(), shortest, longest));
}

void FastaParser::dropUnfitLines(std::uint64_t columns)
{
    for (std::size_t i = m_Lines.size(); i > 0; --i) {
        if (m_Lines[i - 1].text.size() == columns)
            continue;
        remark(m_LineOfLines[i - 1], shown(m_Lines[i - 1].tag) + " was left out, because it has " +
                                         counted(m_Lines[i - 1].text.size(), "character") +
                                         " for " + counted(columns, "column"));
        m_Lines.erase(m_Lines.begin() + static_cast<std::ptrdiff_t>(i - 1));
        m_LineOfLines.erase(m_LineOfLines.begin() + static_cast<std::ptrdiff_t>(i - 1));
    }
}

// In A3M files they are what everybody expects; elsewhere they may be rows that are called so.
void FastaParser::remarkOnLines()
{
    if (m_IsA3m)
        return;
    for (std::size_t i = 0; i < m_Lines.size(); ++i)
        remark(m_LineOfLines[i],
               shown(m_Lines[i].tag) +
                   (m_Alignment.isAligned
                        ? " was read as annotation of the columns, not as a row"
                        : " was left out: it is annotation of columns, and there are none"));
}

bool FastaParser::isDotlessA2m() const
{
    return m_HasLowerCase && !m_HasOtherGaps && m_MatchColumns.front() > 0 &&
           std::adjacent_find(m_MatchColumns.begin(), m_MatchColumns.end(),
                              std::not_equal_to<>()) == m_MatchColumns.end();
}

// Where every row ends in a stop, that column says nothing.
void FastaParser::dropStopColumn()
{
    for (RowRecord &row : m_Alignment.rows) {
        GappedSequence &sequence = row.sequence;
        --sequence.width;
        sequence.occupancy.resize(bits::wordsFor(sequence.width));
    }
    for (std::uint64_t &columns : m_MatchColumns)
        --columns;
}

} // namespace

Result<FileContents> readFasta(TextReader &reader)
{
    return FastaParser(reader).run();
}

} // namespace TAMBO::formats
