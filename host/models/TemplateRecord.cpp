// SPDX-License-Identifier: GPL-3.0-or-later
#include "TemplateRecord.h"

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

namespace TAMBO {

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

} // namespace

bool hasTemplate(const AlignmentRow &row, unsigned long width)
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

} // namespace TAMBO
