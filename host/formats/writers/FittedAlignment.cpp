// SPDX-License-Identifier: GPL-3.0-or-later
#include "FittedAlignment.h"

#include "CellScan.h"
#include "CellText.h"
#include "FittedAnnotation.h"
#include "FormatText.h"
#include "PirTitle.h"

#include <algorithm>
#include <string>

namespace TAMBO::formats {

namespace {

bool areLetters(std::string_view letters)
{
    // No early end within a piece, of which the scan makes a few instructions.
    std::size_t begin = 0;
    for (; begin + kScanWidth <= letters.size(); begin += kScanWidth) {
        if (scanCells(letters.data() + begin).letters != ~std::uint64_t{0})
            return false;
    }
    return std::all_of(letters.begin() + static_cast<std::ptrdiff_t>(begin), letters.end(),
                       isLetter);
}

std::uint64_t smallLetters(std::string_view letters)
{
    return static_cast<std::uint64_t>(
        std::count_if(letters.begin(), letters.end(), [](char c) { return c >= 'a' && c <= 'z'; }));
}

std::string plainText(const GappedView &row)
{
    std::string text;
    CellText(row).append(row.width, '-', text);
    return text;
}

bool isDescription(const Annotation &remark)
{
    return remark.tag == "DE" && !remark.text.empty();
}

// Those that can be written.
std::vector<ChainBreak> placedBreaks(const RowRecord &row)
{
    std::vector<ChainBreak> breaks = row.chainBreaks;
    std::erase_if(breaks, [](const ChainBreak &one) { return !one.column; });
    return breaks;
}

} // namespace

FittedAlignment::FittedAlignment(const AlignmentSource &alignment, const WriteOptions &options)
    : m_Source(alignment), m_Options(options), m_Names(alignment, options)
{
    fit();
}

FittedAlignment::FittedAlignment(const AlignmentRecord &alignment, const WriteOptions &options)
    : m_Record(alignment), m_Source(*m_Record), m_Options(options), m_Names(*m_Record, options)
{
    fit();
}

void FittedAlignment::fit()
{
    fitLetters();
    if (!holds(m_Options.format, Content::SmallLetters))
        fitInsertions();
}

void FittedAlignment::fitLetters()
{
    for (std::size_t i = 0; i < rowCount(); ++i) {
        const GappedView cells = m_Source.cells(i);
        if (areLetters(cells.letters))
            continue;
        GappedSequence changed{std::string(cells.letters),
                               {cells.occupancy.begin(), cells.occupancy.end()},
                               cells.width};
        for (char &character : changed.letters) {
            if (isLetter(character))
                continue;
            if (m_Foreign++ == 0)
                m_FirstForeign = character;
            character = 'X';
        }
        m_Changed.emplace(i, std::move(changed));
    }
}

void FittedAlignment::fitInsertions()
{
    m_Insertions.emplace(m_Source);
    bool areEven = true;
    std::size_t firstLength = 0;
    for (std::size_t i = 0; i < rowCount(); ++i) {
        if (std::optional<GappedSequence> changed = m_Insertions->capitalised(cells(i))) {
            m_Capitalised += smallLetters(cells(i).letters) - smallLetters(changed->letters);
            m_Changed[i] = std::move(*changed);
        }
        if (m_Options.format != FileFormat::A3m || m_Insertions->areNone())
            continue;
        const std::size_t length = m_Insertions->packed(cells(i)).size();
        if (i == 0)
            firstLength = length;
        areEven = areEven && length == firstLength;
    }
    // Packed rows of one length would be taken for columns, so the gaps stay.
    m_IsPacked = m_Options.format == FileFormat::A3m && !m_Insertions->areNone() && !areEven;
    for (std::size_t i = 0; m_IsPacked && !m_MovesInsertions && i < rowCount(); ++i)
        m_MovesInsertions = m_Insertions->unpacked(cells(i)) != plainText(cells(i));
}

GappedView FittedAlignment::cells(std::size_t row) const
{
    if (m_Changed.empty())
        return m_Source.cells(row);
    const auto changed = m_Changed.find(row);
    return changed == m_Changed.end() ? m_Source.cells(row) : GappedView(changed->second);
}

std::string FittedAlignment::insertionText(std::size_t row) const
{
    return m_IsPacked ? m_Insertions->packed(cells(row)) : m_Insertions->dotted(cells(row));
}

std::string FittedAlignment::description(std::size_t index) const
{
    if (m_Options.format == FileFormat::Pir)
        return pirTitle(row(index), name(index));
    if (!hasRemarks(index))
        return {};
    std::string text = holds(m_Options.format, Content::Descriptions) ? plainDescription(row(index))
                                                                      : std::string();
    if (holds(m_Options.format, Content::Annotation) && text.empty()) {
        const std::vector<Annotation> remarks = fittedRemarks(row(index).annotations);
        const auto found = std::find_if(remarks.begin(), remarks.end(), isDescription);
        if (found != remarks.end())
            text = found->text;
    }
    return text;
}

bool FittedAlignment::hasRemarks(std::size_t index) const
{
    const RowRecord &said = row(index);
    return !said.description.empty() || !said.annotations.empty();
}

std::vector<std::string> FittedAlignment::changes() const
{
    std::vector<std::string> sentences = m_Names.changes();
    if (m_Foreign > 0)
        sentences.push_back(
            (m_Foreign == 1 ? "1 residue is" : std::to_string(m_Foreign) + " residues are") +
            " shown as something else than a letter, such as " + shown(m_FirstForeign) +
            ", and written as \"X\".");
    if (m_Capitalised > 0)
        sentences.push_back((m_Capitalised == 1 ? "1 small letter becomes a capital"
                                                : std::to_string(m_Capitalised) +
                                                      " small letters become capitals") +
                            ", because their columns are no insertions: " +
                            fileOf(m_Options.format) + " has small letters in insertions only.");
    if (m_MovesInsertions)
        sentences.emplace_back(
            "Residues in insertions are moved to the left: an A3M file does not say "
            "how they are aligned with each other.");
    return sentences;
}

Result<void> FittedAlignment::checkSame(const AlignmentRecord &readBack, const Step &step) const
{
    if (readBack.rows.size() != rowCount())
        return different("it has " + std::to_string(readBack.rows.size()) + " rows instead of " +
                         std::to_string(rowCount()));
    for (std::size_t i = 0; i < rowCount(); ++i) {
        if (step && !step(i))
            return Failure{FailureKind::Cancelled, {}};
        if (const Result<void> same = checkRow(i, readBack.rows[i]); !same)
            return same;
    }
    if (holds(m_Options.format, Content::Annotation))
        return checkAnnotation(readBack);
    return {};
}

Result<void> FittedAlignment::checkRow(std::size_t index, const RowRecord &readBack) const
{
    const auto differs = [&](const std::string &how) {
        return different("row " + std::to_string(index + 1) + ", " + shown(name(index)) + ", " +
                         how);
    };
    if (readBack.name != name(index))
        return differs("has the name " + shown(readBack.name));
    if (readBack.sequence.letters != cells(index).letters)
        return differs("has other letters");
    if (!hasCells(index, readBack.sequence))
        return differs("has its gaps at other places");
    if (holds(m_Options.format, Content::Descriptions) &&
        readBack.description != trimmed(cleanText(description(index))))
        return differs("has another description");
    if (holds(m_Options.format, Content::ChainBreaks) &&
        placedBreaks(row(index)) != readBack.chainBreaks)
        return differs("has its chain breaks at other places");
    return {};
}

// Sequences that are no alignment may be read as one: rows in A2M without dots.
bool FittedAlignment::hasCells(std::size_t row, const GappedSequence &readBack) const
{
    if (!whole().isAligned)
        return true;
    if (m_IsPacked)
        return readBack.text() == m_Insertions->unpacked(cells(row));
    return readBack.width == width() &&
           std::ranges::equal(readBack.occupancy, cells(row).occupancy);
}

std::vector<Annotation> FittedAlignment::remarks() const
{
    std::vector<Annotation> fitted = fittedRemarks(whole().annotations);
    for (Annotation &said : fitted) {
        if (said.tag == "SQ" && said.text.find_first_not_of("0123456789") == std::string::npos)
            said.text = std::to_string(rowCount());
    }
    return fitted;
}

Result<void> FittedAlignment::checkAnnotation(const AlignmentRecord &readBack) const
{
    if (readBack.annotations != remarks() ||
        readBack.columnAnnotations != fittedLines(whole().columnAnnotations, width()))
        return different("its annotation differs");
    for (std::size_t i = 0; i < rowCount(); ++i) {
        const RowRecord &other = readBack.rows[i];
        if (other.annotations != remarksOn(i) ||
            other.residueAnnotations != fittedLines(row(i).residueAnnotations, cells(i)))
            return different("the annotation of row " + std::to_string(i + 1) + ", " +
                             shown(name(i)) + ", differs");
    }
    return {};
}

// The first remark that is a description is the row's own one when it has none.
std::vector<Annotation> FittedAlignment::remarksOn(std::size_t index) const
{
    std::vector<Annotation> remarks = fittedRemarks(row(index).annotations);
    if (holds(m_Options.format, Content::Annotation) && plainDescription(row(index)).empty()) {
        const auto found = std::find_if(remarks.begin(), remarks.end(), isDescription);
        if (found != remarks.end())
            remarks.erase(found);
    }
    return remarks;
}

} // namespace TAMBO::formats
