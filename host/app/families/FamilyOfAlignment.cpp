// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyOfAlignment.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "Atom.h"
#include "Peptide.h"
#include "RecordMaker.h"
#include "Structure.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace TAMBO::app {

namespace {

bool isMeasured(const ResiduePlace &place)
{
    const auto *const structure = dynamic_cast<const Structure *>(place.peptide->Parent());
    return structure != nullptr && !structure->isModel();
}

bool hasBackbone(const ResiduePlace &place)
{
    constexpr std::array<std::string_view, 3> kBackbone = {"N", "CA", "C"};
    const std::size_t count = place.peptide->atomCount(place.index);
    return std::ranges::all_of(kBackbone, [&](std::string_view name) {
        for (std::size_t i = 0; i < count; ++i) {
            if (place.peptide->atom(place.index, i)->name() == name)
                return true;
        }
        return false;
    });
}

// Without a look at each residue where none can be in a structure.
bool mayHaveStructure(const Peptide &sequence)
{
    return sequence.hasTies() || dynamic_cast<const Structure *>(sequence.Parent()) != nullptr;
}

bool hasStructure(const AlignmentRow &row, unsigned long width)
{
    const Peptide &sequence = row.sequence();
    if (!mayHaveStructure(sequence))
        return false;
    bool has = false;
    row.forEachResidue(0, width, [&](AlignmentRow::Column, std::uint32_t index) {
        if (has)
            return;
        const ResiduePlace place = sequence.resolve(index);
        has = isMeasured(place) && hasBackbone(place);
    });
    return has;
}

std::string textOfRow(const AlignmentRow &row, unsigned long width)
{
    std::string text(width, '-');
    const std::string_view letters = row.sequence().letters();
    row.forEachResidue(0, width, [&](AlignmentRow::Column column, std::uint32_t index) {
        text[column] = letters[index];
    });
    return text;
}

} // namespace

families::Family familyOf(const Alignment &alignment, const std::filesystem::path &source)
{
    const AlignmentTable &table = alignment.table();
    families::Family family{alignment.Name(), source, {}};
    family.rows.reserve(table.rowCount());
    for (std::size_t i = 0; i < table.rowCount(); ++i) {
        const AlignmentRow &row = table.row(i);
        family.rows.push_back(
            {row.name(), textOfRow(row, table.width()), hasStructure(row, table.width())});
    }
    return family;
}

Result<StructureRecord> templateRecord(const Alignment &alignment, std::size_t row)
{
    const AlignmentTable &table = alignment.table();
    const AlignmentRow &shown = table.row(row);
    StructureRecord record;
    record.name = shown.name();
    ChainRecord &chain = record.chains.emplace_back();
    chain.name.assign(1, 'A');
    int letter = 0;
    shown.forEachResidue(0, table.width(), [&](AlignmentRow::Column, std::uint32_t index) {
        ++letter;
        const ResiduePlace place = shown.sequence().resolve(index);
        if (!isMeasured(place) || !hasBackbone(place))
            return;
        ResidueRecord residue = makeRecord(*place.peptide, place.index);
        residue.number = SequenceNumber(letter);
        chain.residues.push_back(std::move(residue));
    });
    if (chain.residues.empty())
        return Failure{FailureKind::Refused,
                       "no residue of it has a whole backbone (N, CA, C)",
                       {record.name}};
    return record;
}

families::TemplateSource templatesOf(const Alignment &alignment)
{
    return [&alignment](std::size_t row) { return templateRecord(alignment, row); };
}

} // namespace TAMBO::app
