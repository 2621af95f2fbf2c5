// SPDX-License-Identifier: GPL-3.0-or-later
#include "FastaReader.h"

#include "AlignmentParser.h"
#include "DotlessRows.h"
#include "FormatText.h"
#include "RowBuilder.h"
#include "StopCount.h"
#include "TextParts.h"
#include "WorkLooks.h"

#include <algorithm>
#include <iterator>

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

    // ---- As a parser of one part

    void parse();
    void merge(FastaParser &next);
    [[nodiscard]] bool isFine() const noexcept { return m_Outcome.has_value(); }

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
    std::string m_Name;
    std::string m_Description;
    // Over all rows.
    struct Span
    {
        void add(std::uint64_t count) noexcept
        {
            least = std::min(least, count);
            most = std::max(most, count);
        }
        void add(const Span &other) noexcept
        {
            least = std::min(least, other.least);
            most = std::max(most, other.most);
        }
        void shrink() noexcept
        {
            --least;
            --most;
        }
        std::uint64_t least = ~std::uint64_t{};
        std::uint64_t most = 0;
    };
    Span m_Widths;
    // Of the columns that are capitals or dashes: what A2M calls columns.
    Span m_MatchColumns;
    bool m_HasGaps = false;
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

void FastaParser::parse()
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
        m_Outcome = m_Reader.outcome();
}

void FastaParser::merge(FastaParser &next)
{
    mergeRows(next);
    std::ranges::move(next.m_Lines, std::back_inserter(m_Lines));
    std::ranges::move(next.m_LineOfLines, std::back_inserter(m_LineOfLines));
    m_Widths.add(next.m_Widths);
    m_MatchColumns.add(next.m_MatchColumns);
    m_HasGaps |= next.m_HasGaps;
    m_RowsWithStop += next.m_RowsWithStop;
    m_LastStops.add(next.m_LastStops);
    m_InnerStops.add(next.m_InnerStops);
    m_HasOtherGaps |= next.m_HasOtherGaps;
    m_HasLowerCase |= next.m_HasLowerCase;
    m_IsA3m |= next.m_IsA3m;
}

Result<FileContents> FastaParser::run()
{
    readInParts<FastaParser>(m_Reader, '>', *this);
    if (m_Outcome && !m_Reader.outcome())
        m_Outcome = m_Reader.outcome();
    if (!m_Outcome)
        return m_Outcome.error();
    if (m_Alignment.packed.empty())
        return failureOf(m_Reader.fileName(), "holds no sequences");
    finish();
    if (!m_Reader.outcome())
        return m_Reader.outcome().error();
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
    m_Name = cleanText(text.substr(0, nameEnd));
    m_Description = cleanText(trimmed(text.substr(nameEnd)));
    if (m_Name.empty())
        remark(m_HeaderLine, "a sequence without a name");
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
    if (m_Row.width() == 0)
        return fail(m_HeaderLine,
                    "found no residues after " + shown('>' + m_Name) + ", expected at least one");
    m_MatchColumns.add(m_Row.width() - m_Row.lowerCaseCount());
    m_Widths.add(m_Row.width());
    m_HasGaps |= m_Row.letterCount() < m_Row.width();
    m_HasLowerCase |= m_Row.lowerCaseCount() > 0;
    m_HasOtherGaps |= m_Row.hasOtherGaps();
    const std::uint64_t last = m_EndsWithStop ? 1 : 0;
    m_RowsWithStop += last;
    m_LastStops.add(last, m_LastStopLine, m_Name);
    m_InnerStops.add(m_Row.stops() - last, m_FirstStopLine, m_Name);
    m_EndsWithStop = false;
    PackedRow &row = m_Alignment.packed.add(m_Row.pack(m_Name));
    if (!m_Description.empty())
        row.label.change().description = std::move(m_Description);
}

void FastaParser::finish()
{
    PackedRows &rows = m_Alignment.packed;
    m_Alignment.name = baseName(m_Reader.fileName());
    if (m_RowsWithStop == rows.size())
        dropStopColumn();
    else
        m_InnerStops.add(m_LastStops);
    if (!m_InnerStops.isEmpty())
        m_Alignment.remarks.push_back(m_InnerStops.remark(m_Reader.fileName()));
    const std::uint64_t shortest = m_Widths.least;
    const std::uint64_t longest = m_Widths.most;
    m_Alignment.isAligned = shortest == longest;
    // Rows of one length are A3M only if the file says so: residues in small letters are no rarity.
    if ((m_IsA3m || !m_Alignment.isAligned) && isDotlessA2m()) {
        dropUnfitLines(m_MatchColumns.least);
        WorkLooks looks(m_Reader);
        m_IsA3m = openDotlessRows(rows, m_Lines, looks);
        m_Alignment.isAligned |= m_IsA3m;
    } else if (m_Alignment.isAligned) {
        dropUnfitLines(longest);
    }
    remarkOnLines();
    if (m_Alignment.isAligned) {
        m_Alignment.columnAnnotations = std::move(m_Lines);
        return;
    }
    if (m_HasGaps)
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
    return m_HasLowerCase && !m_HasOtherGaps && m_MatchColumns.least > 0 &&
           m_MatchColumns.least == m_MatchColumns.most;
}

// Where every row ends in a stop, that column says nothing.
void FastaParser::dropStopColumn()
{
    m_HasGaps = false;
    for (std::size_t i = 0; i < m_Alignment.packed.size(); ++i) {
        PackedRow &row = m_Alignment.packed[i];
        --row.width;
        m_HasGaps |= row.cells.residues() < row.width;
    }
    m_Widths.shrink();
    m_MatchColumns.shrink();
}

} // namespace

Result<FileContents> readFasta(TextReader &reader)
{
    return FastaParser(reader).run();
}

} // namespace TAMBO::formats
