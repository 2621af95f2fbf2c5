// SPDX-License-Identifier: GPL-3.0-or-later
#include "StockholmReader.h"

#include "AlignmentParser.h"
#include "FormatText.h"
#include "LinePart.h"
#include "PiecedRows.h"
#include "Text.h"
#include "TextParts.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <span>
#include <utility>

namespace TAMBO::formats {

namespace {

// What is said of each column or residue, piece by piece.
struct Line
{
    Annotation annotation;
    // Of its last piece.
    std::uint64_t line = 0;
};

Annotation &lineOf(std::vector<Line> &lines, const std::string &tag, std::uint64_t line)
{
    auto found = std::find_if(lines.begin(), lines.end(),
                              [&](const Line &one) { return one.annotation.tag == tag; });
    if (found == lines.end())
        found = lines.insert(lines.end(), Line{{tag, {}}, 0});
    found->line = line;
    return found->annotation;
}

// One character a column is what everybody else expects.
void appendCharacters(std::string &to, std::string_view text)
{
    for (const char character : text)
        to += character > ' ' && character < '\x7f' ? character : '.';
}

// Nothing is said where no residue stands.
void blankGaps(PackedRow &row)
{
    if (row.label.isUsual())
        return;
    for (Annotation &annotation : row.label.change().residueAnnotations) {
        std::string &text = annotation.text;
        for (std::size_t column = 0; column < text.size(); ++column)
            text[column] = row.cells.isResidue(column) ? text[column] : '.';
    }
}

bool isStockholm(std::string_view word) noexcept
{
    return isSameWithoutCase(word, "stockholm");
}

// Comments are no lines, but the one that begins an alignment.
void addStockholmLine(TextReader &reader, RowLines &lines)
{
    const std::string_view start = reader.ahead();
    if (start.front() == '\n')
        return lines.addBlank(reader.line());
    if (start.starts_with("//"))
        return lines.addText(reader.line(), "//", {});
    if (start.front() != '#') {
        const std::string_view name = reader.nextWord();
        return name.empty() ? lines.addBlank(reader.line()) : lines.addRow(reader, name);
    }
    const std::string word(reader.nextWord());
    if (word.starts_with("#="))
        lines.addText(reader.line(), word, reader.restOfLine());
    else if (word == "#" && isStockholm(reader.nextWord()))
        lines.addText(reader.line(), word, {});
}

using StockholmPart = LinePart<addStockholmLine>;

class StockholmParser : AlignmentParser
{
public:
    explicit StockholmParser(TextReader &reader) : AlignmentParser(reader) { }

    Result<FileContents> run();
    // Rows without any markup around them.
    Result<FileContents> runPlain()
    {
        beginAlignment();
        m_IsPlain = true;
        return run();
    }

    // ---- Of the parts

    void merge(const StockholmPart &part);
    [[nodiscard]] bool isFine() const noexcept { return m_Outcome.has_value(); }

private:
    void addLine(const RowLine &line);
    void addMarkup(const RowLine &line);
    void beginAlignment();
    void addOfAlignment(std::string_view text);
    void addOfColumns(std::string_view text, std::uint64_t line);
    void addOfRow(std::string_view text, std::uint64_t line);
    void addOfResidues(std::string_view text, std::uint64_t line);
    void addRow(const RowLine &line);
    [[nodiscard]] std::span<Line> residueLines(std::size_t row)
    {
        return row < m_ResidueLines.size() ? std::span<Line>(m_ResidueLines[row])
                                           : std::span<Line>();
    }
    void finishAlignment(std::uint64_t line);
    bool hasEvenRows();
    bool hasEvenLines();
    void dropAbsentRows();
    void tieRowAnnotations();
    void nameAlignments();

    FileContents m_Contents;
    bool m_IsOpen = false;
    bool m_IsPlain = false;
    bool m_HasUnknownMarkup = false;
    std::uint64_t m_LastLine = 0;

    // Of the alignment under way.
    PiecedRows m_Rows;
    std::vector<Line> m_ColumnLines;
    // By row, up to the last one of which something is said.
    std::vector<std::vector<Line>> m_ResidueLines;
    // These mostly come before the rows.
    struct RowAnnotation
    {
        std::string row;
        Annotation annotation;
        std::uint64_t line = 0;
    };
    std::vector<RowAnnotation> m_RowAnnotations;
};

Result<FileContents> StockholmParser::run()
{
    readInParts<StockholmPart>(m_Reader, std::nullopt, *this);
    if (m_Outcome && !m_Reader.outcome())
        m_Outcome = m_Reader.outcome();
    if (m_IsPlain && m_IsOpen && m_Outcome)
        finishAlignment(m_LastLine);
    if (!m_Outcome)
        return m_Outcome.error();
    // Rows without their last columns look like any others, so this mark is not to be missed.
    if (m_IsOpen)
        return failureAt(m_Reader.fileName(), m_LastLine,
                         "the file ends before the \"//\" that ends an alignment");
    if (m_Contents.alignments.empty())
        return failureAt(m_Reader.fileName(), std::max<std::uint64_t>(m_LastLine, 1),
                         "the file ends before the first alignment");
    nameAlignments();
    m_Contents.format = formatName(FileFormat::Stockholm);
    return std::move(m_Contents);
}

void StockholmParser::merge(const StockholmPart &part)
{
    part.lines().forEach([this](const RowLine &line) {
        addLine(line);
        return m_Outcome.has_value();
    });
    m_LastLine = part.lastLine();
    if (m_Outcome)
        m_Outcome = part.outcome();
}

void StockholmParser::addLine(const RowLine &line)
{
    if (line.kind == RowLine::Kind::Blank)
        m_Rows.expect(0);
    else if (line.kind == RowLine::Kind::Row)
        addRow(line);
    else if (line.word == "//")
        finishAlignment(line.number);
    else
        addMarkup(line);
}

void StockholmParser::addMarkup(const RowLine &line)
{
    const bool isHeader = line.word == "#";
    if (isHeader && m_IsOpen)
        return fail(line.number, "found another alignment, expected the \"//\" that ends the "
                                 "one before");
    if (isHeader)
        return beginAlignment();
    if (!m_IsOpen)
        return;
    if (line.word == "#=GF")
        addOfAlignment(line.rest);
    else if (line.word == "#=GC")
        addOfColumns(line.rest, line.number);
    else if (line.word == "#=GS")
        addOfRow(line.rest, line.number);
    else if (line.word == "#=GR")
        addOfResidues(line.rest, line.number);
    else if (!std::exchange(m_HasUnknownMarkup, true))
        remark(line.number, "unknown markup " + shown(line.word) + " was left out");
}

void StockholmParser::beginAlignment()
{
    m_IsOpen = true;
    m_HasUnknownMarkup = false;
    m_Alignment = {};
    m_Alignment.name = baseName(m_Reader.fileName());
    m_ColumnLines.clear();
    m_ResidueLines.clear();
    m_RowAnnotations.clear();
}

void StockholmParser::addOfAlignment(std::string_view text)
{
    std::string tag = cleanText(takeWord(text));
    if (tag.empty())
        return;
    m_Alignment.annotations.push_back({std::move(tag), cleanText(trimmed(text))});
}

void StockholmParser::addOfColumns(std::string_view text, std::uint64_t line)
{
    const std::string tag = cleanText(takeWord(text));
    if (tag.empty())
        return;
    appendCharacters(lineOf(m_ColumnLines, tag, line).text, trimmed(text));
}

void StockholmParser::addOfRow(std::string_view text, std::uint64_t line)
{
    std::string row(takeWord(text));
    std::string tag = cleanText(takeWord(text));
    if (tag.empty())
        return;
    m_RowAnnotations.push_back({std::move(row), {std::move(tag), cleanText(trimmed(text))}, line});
}

void StockholmParser::addOfResidues(std::string_view text, std::uint64_t line)
{
    const std::string_view name = takeWord(text);
    // It may stand above its row.
    std::optional<std::size_t> row = m_Rows.find(name);
    if (!row && !name.empty())
        row = m_Rows.add(name);
    const std::string tag = cleanText(takeWord(text));
    if (tag.empty())
        return;
    if (m_ResidueLines.size() <= *row)
        m_ResidueLines.resize(*row + 1);
    appendCharacters(lineOf(m_ResidueLines[*row], tag, line).text, trimmed(text));
}

void StockholmParser::addRow(const RowLine &line)
{
    if (!m_IsOpen)
        return fail(line.number,
                    "found " + shown(line.word) + ", expected \"# STOCKHOLM 1.0\" before the rows");
    std::optional<std::size_t> row = m_Rows.find(line.word);
    if (!row)
        row = m_Rows.add(line.word);
    m_Rows.append(*row, line);
    if (line.end != '\n')
        fail(line.number, "found " + shown(line.end) + " in row " + shown(m_Rows.name(*row)) +
                              ", expected a residue letter or a gap (\"-\" or \".\")");
    else if (line.cells.width == 0)
        fail(line.number,
             "found no residues after " + shown(m_Rows.name(*row)) + ", expected at least one");
}

void StockholmParser::finishAlignment(std::uint64_t line)
{
    if (!m_IsOpen)
        return fail(line, "found \"//\", expected \"# STOCKHOLM 1.0\"");
    m_IsOpen = false;
    dropAbsentRows();
    if (m_Rows.isEmpty())
        return fail(line, "found \"//\", expected at least one row before it");
    if (!hasEvenRows() || !hasEvenLines())
        return;
    tieRowAnnotations();
    for (Line &said : m_ColumnLines)
        m_Alignment.columnAnnotations.push_back(std::move(said.annotation));
    for (std::size_t row = 0; row < m_Rows.size(); ++row) {
        for (Line &said : residueLines(row))
            m_Rows.label(row).change().residueAnnotations.push_back(std::move(said.annotation));
    }
    std::ranges::move(m_Rows.remarks(m_Reader.fileName()), std::back_inserter(m_Alignment.remarks));
    m_Alignment.packed = m_Rows.take(m_Reader, m_Reader.isWorthThreads());
    if (!m_Reader.outcome()) {
        m_Outcome = m_Reader.outcome();
        return;
    }
    for (std::size_t row = 0; row < m_Alignment.packed.size(); ++row)
        blankGaps(m_Alignment.packed[row]);
    m_Contents.alignments.push_back(std::move(m_Alignment));
}

// Somebody who takes a row out of the file by hand overlooks what is said of it elsewhere.
void StockholmParser::dropAbsentRows()
{
    std::vector<std::size_t> absent;
    for (std::size_t row = 0; row < m_Rows.size(); ++row) {
        if (m_Rows.width(row) > 0)
            continue;
        absent.push_back(row);
        for (const Line &line : residueLines(row))
            remark(line.line, "what is said of the residues of " + shown(m_Rows.name(row)) +
                                  " was left out, because there is no such row");
    }
    for (auto row = absent.rbegin(); row != absent.rend(); ++row) {
        if (*row < m_ResidueLines.size())
            m_ResidueLines.erase(m_ResidueLines.begin() + static_cast<std::ptrdiff_t>(*row));
    }
    m_Rows.remove(absent);
}

bool StockholmParser::hasEvenRows()
{
    const std::optional<std::size_t> uneven = m_Rows.firstUneven();
    if (uneven)
        fail(m_Rows.line(*uneven), "row " + shown(m_Rows.name(*uneven)) + " ends with " +
                                       counted(m_Rows.width(*uneven), "column") + ", row " +
                                       shown(m_Rows.name(0)) + " has " +
                                       std::to_string(m_Rows.width(0)));
    return !uneven;
}

bool StockholmParser::hasEvenLines()
{
    const auto isEven = [&](const Line &line, const std::string &what) {
        const std::uint64_t width = line.annotation.text.size();
        if (width != m_Rows.width(0))
            fail(line.line, what + ' ' + shown(line.annotation.tag) + " ends with " +
                                counted(width, "column") + ", the rows have " +
                                std::to_string(m_Rows.width(0)));
    };
    for (const Line &line : m_ColumnLines)
        isEven(line, "#=GC");
    for (std::size_t row = 0; row < m_Rows.size(); ++row) {
        for (const Line &line : residueLines(row))
            isEven(line, "#=GR " + shown(m_Rows.name(row)));
    }
    return m_Outcome.has_value();
}

void StockholmParser::tieRowAnnotations()
{
    m_Rows.expect(0);
    std::set<std::string> absent;
    for (RowAnnotation &said : m_RowAnnotations) {
        const std::optional<std::size_t> row = m_Rows.find(said.row);
        if (row && said.annotation.tag == "DE" && m_Rows.label(*row)->description.empty())
            m_Rows.label(*row).change().description = std::move(said.annotation.text);
        else if (row)
            m_Rows.label(*row).change().annotations.push_back(std::move(said.annotation));
        else if (absent.insert(said.row).second)
            remark(said.line, "what is said of " + shown(said.row) +
                                  " was left out, because there is no such row");
    }
}

// Alignments of one file go by their own names, or are counted when these do not tell them apart.
void StockholmParser::nameAlignments()
{
    std::vector<AlignmentRecord> &alignments = m_Contents.alignments;
    if (alignments.size() < 2)
        return;
    std::vector<std::string> names;
    for (const AlignmentRecord &alignment : alignments) {
        const auto id = std::find_if(alignment.annotations.begin(), alignment.annotations.end(),
                                     [](const Annotation &said) { return said.tag == "ID"; });
        if (id != alignment.annotations.end() && !id->text.empty())
            names.push_back(id->text);
    }
    const bool areDistinct = names.size() == alignments.size() &&
                             std::set(names.begin(), names.end()).size() == names.size();
    for (std::size_t i = 0; i < alignments.size(); ++i) {
        std::string &name = alignments[i].name;
        name = areDistinct ? names[i] : name + '_' + std::to_string(i + 1);
    }
}

} // namespace

Result<FileContents> readStockholm(TextReader &reader)
{
    return StockholmParser(reader).run();
}

Result<FileContents> readPlainRows(TextReader &reader)
{
    return StockholmParser(reader).runPlain();
}

} // namespace TAMBO::formats
