// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentDetails.h"

#include "Alignment.h"
#include "AlignmentTable.h"

#include <algorithm>
#include <map>

namespace TAMBO {

namespace {

using Column = AlignmentRow::Column;

// Null for a row that the alignment does not have.
const AlignmentRow *rowAt(const Alignment &alignment, unsigned long row)
{
    return row < alignment.height() ? &alignment.table().row(row) : nullptr;
}

std::vector<std::string> tagsOf(const std::vector<Annotation> &lines)
{
    std::vector<std::string> tags;
    tags.reserve(lines.size());
    for (const Annotation &line : lines)
        tags.push_back(line.tag);
    return tags;
}

// Which columns of them there are.
Column countOf(const Alignment &alignment, Column begin, Column end)
{
    end = std::min<Column>(end, alignment.width());
    return end - std::min(begin, end);
}

char capitalOf(char letter) noexcept
{
    return letter >= 'a' && letter <= 'z' ? char(letter - 'a' + 'A') : letter;
}

} // namespace

std::vector<std::string> AlignmentDetails::columnLines(const Alignment &alignment)
{
    const AlignmentAnnotation *const annotation = alignment.table().annotation();
    return annotation == nullptr ? std::vector<std::string>() : annotation->tags();
}

std::string AlignmentDetails::columnText(const Alignment &alignment, std::size_t line,
                                         unsigned long begin, unsigned long end)
{
    const AlignmentAnnotation *const annotation = alignment.table().annotation();
    const Column count = countOf(alignment, begin, end);
    return annotation == nullptr ? std::string() : annotation->text(line, begin, count);
}

std::vector<std::string> AlignmentDetails::residueLines(const Alignment &alignment,
                                                        unsigned long row)
{
    const AlignmentRow *const found = rowAt(alignment, row);
    return found == nullptr || found->label() == nullptr
               ? std::vector<std::string>()
               : tagsOf(found->label()->residueAnnotations);
}

std::string AlignmentDetails::residueText(const Alignment &alignment, unsigned long row,
                                          std::size_t line, unsigned long begin, unsigned long end)
{
    const AlignmentRow *const found = rowAt(alignment, row);
    if (found == nullptr || found->label() == nullptr ||
        line >= found->label()->residueAnnotations.size())
        return {};
    const std::string &said = found->label()->residueAnnotations[line].text;
    const std::uint32_t first = found->label()->firstResidue;
    const Column count = countOf(alignment, begin, end);
    std::string text(count, kNothing);
    found->forEachResidue(begin, begin + count, [&](Column column, std::uint32_t index) {
        // Below zero becomes a large number, which no text reaches.
        const std::uint32_t place = index - first;
        if (place < said.size())
            text[column - begin] = said[place];
    });
    return text;
}

std::string AlignmentDetails::elements(const Alignment &alignment, unsigned long row,
                                       unsigned long begin, unsigned long end)
{
    const AlignmentRow *const found = rowAt(alignment, row);
    if (found == nullptr)
        return {};
    const Column count = countOf(alignment, begin, end);
    std::string types(count, '\0');
    // Those of a chain at once.
    std::map<const Peptide *, std::vector<char>> known;
    const Peptide &sequence = found->sequence();
    found->forEachResidue(begin, begin + count, [&](Column column, std::uint32_t index) {
        const ResiduePlace place = sequence.resolve(index);
        auto chain = known.find(place.peptide);
        if (chain == known.end())
            chain = known.emplace(place.peptide, place.peptide->elementTypes()).first;
        types[column - begin] = chain->second[place.index];
    });
    return types;
}

void AlignmentDetails::readTies(const Alignment &alignment, unsigned long row, unsigned long begin,
                                unsigned long end, std::vector<CellTie> &out)
{
    const AlignmentRow *const found = rowAt(alignment, row);
    if (found == nullptr)
        return;
    const Column count = countOf(alignment, begin, end);
    const std::size_t first = out.size();
    out.resize(first + count);
    const Peptide &sequence = found->sequence();
    if (!sequence.hasTies() && !sequence.hasAtoms())
        return;
    std::vector<Vertex> positions;
    alignment.readPositions(row, begin, begin + count, positions);
    found->forEachResidue(begin, begin + count, [&](Column column, std::uint32_t index) {
        const ResiduePlace place = sequence.resolve(index);
        const bool isTied = place.peptide != &sequence;
        const bool isOfChain = isTied || sequence.hasOwnAtoms();
        const char letter = place.peptide->letter(place.index);
        CellTie &tie = out[first + (column - begin)];
        tie.letter = isOfChain ? letter : '\0';
        if (!positions[column - begin].isDefined())
            tie.kind = CellTie::Kind::NoPosition;
        else if (capitalOf(letter) != capitalOf(sequence.letter(index)))
            tie.kind = CellTie::Kind::OtherLetter;
        else
            tie.kind = CellTie::Kind::Same;
    });
}

std::vector<std::uint32_t> AlignmentDetails::shownResidues(const Alignment &alignment,
                                                           unsigned long row)
{
    std::vector<std::uint32_t> shown;
    if (const AlignmentRow *const found = rowAt(alignment, row)) {
        shown.reserve(found->cells().residues());
        found->forEachResidue(0, alignment.width(),
                              [&shown](Column, std::uint32_t index) { shown.push_back(index); });
    }
    return shown;
}

bool AlignmentDetails::hasSelected(const Alignment &alignment, unsigned long row)
{
    const AlignmentRow *const found = rowAt(alignment, row);
    if (found == nullptr || found->sequence().selectedCount() == 0)
        return false;
    bool has = false;
    found->forEachResidue(0, alignment.width(), [&](Column, std::uint32_t index) {
        has = has || found->sequence().isSelected(index);
    });
    return has;
}

} // namespace TAMBO
