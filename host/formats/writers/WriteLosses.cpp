// SPDX-License-Identifier: GPL-3.0-or-later
#include "WriteLosses.h"

#include "FittedAlignment.h"
#include "FormatText.h"
#include "PirTitle.h"
#include "Text.h"

#include <algorithm>
#include <set>

namespace TAMBO {

namespace {

using namespace formats;

template <typename Property> std::size_t countRows(const AlignmentSource &alignment, Property has)
{
    std::size_t count = 0;
    for (std::size_t row = 0; row < alignment.rowCount(); ++row)
        count += has(alignment.row(row)) ? 1 : 0;
    return count;
}

// "ID, AC, DE": each once, in the order of the file.
class TagList
{
public:
    void add(const std::vector<Annotation> &annotations)
    {
        for (const Annotation &said : annotations) {
            ++m_Count;
            if (m_Known.insert(said.tag).second)
                m_Tags.push_back(said.tag);
        }
    }
    // Nothing without an annotation.
    void addSentence(const std::string &subject, std::vector<std::string> &sentences) const
    {
        constexpr std::size_t mostTags = 6;
        if (m_Count == 0)
            return;
        std::string tags;
        for (std::size_t i = 0; i < std::min(m_Tags.size(), mostTags); ++i)
            tags += (i == 0 ? "" : ", ") + m_Tags[i];
        if (m_Tags.size() > mostTags)
            tags += ", ...";
        sentences.push_back(subject + " is left out: " + counted(m_Count, "line", "lines") + " (" +
                            tags + ").");
    }

private:
    std::size_t m_Count = 0;
    std::vector<std::string> m_Tags;
    std::set<std::string> m_Known;
};

void addAnnotationLosses(const AlignmentSource &alignment, std::vector<std::string> &sentences)
{
    TagList ofAlignment;
    TagList ofColumns;
    TagList ofSequences;
    TagList ofResidues;
    ofAlignment.add(alignment.whole().annotations);
    ofColumns.add(alignment.whole().columnAnnotations);
    for (std::size_t row = 0; row < alignment.rowCount(); ++row) {
        ofSequences.add(alignment.row(row).annotations);
        ofResidues.add(alignment.row(row).residueAnnotations);
    }
    ofAlignment.addSentence("What is said of the alignment", sentences);
    ofSequences.addSentence("What is said of sequences", sentences);
    ofColumns.addSentence("What is said of columns", sentences);
    ofResidues.addSentence("What is said of residues", sentences);
}

void addBreakLosses(const AlignmentSource &alignment, FileFormat format,
                    std::vector<std::string> &sentences)
{
    if (!holds(format, Content::ChainBreaks)) {
        const std::size_t rows =
            countRows(alignment, [](const RowRecord &row) { return !row.chainBreaks.empty(); });
        if (rows > 0)
            sentences.push_back("The breaks between chains (\"/\") in " +
                                counted(rows, "row", "rows") + " are written as gaps.");
        return;
    }
    std::size_t lost = 0;
    for (std::size_t i = 0; i < alignment.rowCount(); ++i) {
        const std::vector<ChainBreak> &breaks = alignment.row(i).chainBreaks;
        lost += static_cast<std::size_t>(std::count_if(
            breaks.begin(), breaks.end(), [](const ChainBreak &one) { return !one.column; }));
    }
    if (lost > 0)
        sentences.push_back(counted(lost, "break between chains is", "breaks between chains are") +
                            " left out: there is no gap where \"/\" could stand.");
}

// The numbers of a row that is tied to its structure no longer go with the tie.
void addNumberLosses(const AlignmentSource &alignment, FileFormat format,
                     std::vector<std::string> &sentences)
{
    const std::size_t numbered = countRows(alignment, [format](const RowRecord &row) {
        return row.hasOwnNumbers &&
               (holds(format, Content::ResidueNumbers) ? !row.areNumbersInHeader
                                                       : row.link->structure.empty());
    });
    if (numbered == 0)
        return;
    const std::string start =
        "The residue numbers of " + counted(numbered, "row", "rows") + " are left out: ";
    sentences.push_back(
        start + (holds(format, Content::ResidueNumbers)
                     ? fileOf(format) + " has those of structures, and counts other residues."
                     : "without a structure they count from 1 when the file is opened."));
}

// What is known of residues, and only structure files say.
void addStructureLosses(const AlignmentSource &alignment, std::vector<std::string> &sentences)
{
    const std::size_t withElements =
        countRows(alignment, [](const RowRecord &row) { return row.hasElements; });
    if (withElements > 0)
        sentences.push_back("The secondary structure of " + counted(withElements, "row", "rows") +
                            " is left out: only a structure file has helices, strands and turns.");
    const std::size_t withModel =
        countRows(alignment, [](const RowRecord &row) { return row.hasModel; });
    if (withModel > 0)
        sentences.push_back(counted(withModel, "row is", "rows are") +
                            " not tied to a model any more when the file is opened; the model can "
                            "be written as a structure.");
}

// Fields are kept apart by colons, and a header of another kind gives way to that of a structure.
void addTitleLosses(const AlignmentSource &alignment, std::vector<std::string> &sentences)
{
    const std::size_t rows =
        countRows(alignment, [](const RowRecord &row) { return !isTitleKept(row); });
    if (rows > 0)
        sentences.push_back("The titles of " + counted(rows, "row", "rows") +
                            " are changed: they become a field of the header that names the "
                            "structure.");
}

void addTagLosses(const AlignmentSource &alignment, std::vector<std::string> &sentences)
{
    const auto repeated = [](const std::vector<Annotation> &lines) {
        std::set<std::string> tags;
        return static_cast<std::size_t>(
            std::count_if(lines.begin(), lines.end(), [&tags](const Annotation &line) {
                return !tags.insert(line.tag).second;
            }));
    };
    std::size_t lines = repeated(alignment.whole().columnAnnotations);
    for (std::size_t row = 0; row < alignment.rowCount(); ++row)
        lines += repeated(alignment.row(row).residueAnnotations);
    if (lines > 0)
        sentences.push_back(counted(lines, "line of annotation is", "lines of annotation are") +
                            " called like another one: a number is put behind the "
                            "name.");
}

} // namespace

Result<void> checkWritable(const AlignmentSource &alignment, const WriteOptions &options)
{
    const FileFormat format = options.format;
    if (isStructureFormat(format))
        return unwritable("An alignment cannot be written as " + fileOf(format) + '.');
    bool isEmpty = alignment.rowCount() == 0;
    for (std::size_t row = 0; row < alignment.rowCount() && !isEmpty; ++row)
        isEmpty = alignment.cells(row).width == 0;
    if (isEmpty)
        return unwritable("There is nothing to write: the alignment has no residues.");
    if (!alignment.whole().isAligned && !holds(format, Content::Unaligned))
        return unwritable("The sequences are not aligned, and " + fileOf(format) +
                          " holds alignments only.");
    return {};
}

std::vector<std::string> lossesOf(const AlignmentSource &alignment, const WriteOptions &options)
{
    if (!checkWritable(alignment, options))
        return {};
    const FileFormat format = options.format;
    std::vector<std::string> sentences = FittedAlignment(alignment, options).changes();
    if (!holds(format, Content::Descriptions)) {
        const std::size_t rows = countRows(
            alignment, [](const RowRecord &row) { return !plainDescription(row).empty(); });
        if (rows > 0)
            sentences.push_back("The descriptions of " + counted(rows, "row", "rows") +
                                " are left out.");
    }
    if (!holds(format, Content::StructureTies)) {
        const std::size_t rows =
            countRows(alignment, [](const RowRecord &row) { return !row.link->structure.empty(); });
        if (rows > 0)
            sentences.push_back(counted(rows, "row is", "rows are") +
                                " not tied to the structure any more when the file is opened.");
    }
    if (holds(format, Content::StructureTies))
        addTitleLosses(alignment, sentences);
    addNumberLosses(alignment, format, sentences);
    addStructureLosses(alignment, sentences);
    addBreakLosses(alignment, format, sentences);
    if (holds(format, Content::Annotation))
        addTagLosses(alignment, sentences);
    else
        addAnnotationLosses(alignment, sentences);
    return sentences;
}

std::vector<std::string> looksLostOf(const AlignmentSource &alignment)
{
    const std::size_t rows =
        countRows(alignment, [](const RowRecord &row) { return row.hasOwnColors; });
    if (rows == 0)
        return {};
    return {"The colors given to residues of " + counted(rows, "row", "rows") + " are left out."};
}

Result<void> checkWritable(const AlignmentRecord &alignment, const WriteOptions &options)
{
    return checkWritable(RecordSource(alignment), options);
}

std::vector<std::string> lossesOf(const AlignmentRecord &alignment, const WriteOptions &options)
{
    return lossesOf(RecordSource(alignment), options);
}

std::vector<std::string> looksLostOf(const AlignmentRecord &alignment)
{
    return looksLostOf(RecordSource(alignment));
}

} // namespace TAMBO
