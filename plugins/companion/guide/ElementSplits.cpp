// SPDX-License-Identifier: GPL-3.0-or-later
#include "ElementSplits.h"

#include "Texts.h"

#include <algorithm>

namespace companion {

namespace {

// Null for a residue in none, or in a turn.
TAMBO::Compound *elementOf(const TAMBO::Alignment &alignment, unsigned long row,
                           unsigned long residue)
{
    const auto *const found = dynamic_cast<TAMBO::Residue *>(
        alignment.getItem(row, alignment.columnOfResidue(row, residue)));
    TAMBO::Compound *const element = found == nullptr ? nullptr : found->GetSSE();
    if (element == nullptr)
        return nullptr;
    const char type = element->TypeCode();
    const bool isWhole = type == 'H' || type == 'h' || type == 'E' || type == 'e';
    return isWhole ? element : nullptr;
}

QString residueNumberOf(const TAMBO::Alignment &alignment, unsigned long row, unsigned long residue)
{
    const auto *const found = dynamic_cast<TAMBO::Residue *>(
        alignment.getItem(row, alignment.columnOfResidue(row, residue)));
    return found == nullptr ? QString() : QString::fromStdString(found->GetSeqId().getValue());
}

// How many residues stand before the gaps when they have moved.
unsigned long residuesBefore(const TAMBO::Alignment &alignment, const GapMove &move)
{
    return alignment.residueCount(move.row, move.to <= move.from ? move.to : move.to + move.count);
}

} // namespace

std::optional<SplitElement> splitBy(const TAMBO::Alignment &alignment, const GapMove &move)
{
    const unsigned long before = residuesBefore(alignment, move);
    if (before == 0 || before == alignment.residueCount(move.row, alignment.width()))
        return std::nullopt;
    TAMBO::Compound *const element = elementOf(alignment, move.row, before - 1);
    if (element == nullptr || element != elementOf(alignment, move.row, before))
        return std::nullopt;
    return SplitElement{move.row, before, element};
}

std::optional<SplitElement> splitBy(const TAMBO::Alignment &alignment, const GapMoves &moves)
{
    for (const GapMove &move : moves)
        if (const auto split = splitBy(alignment, move))
            return split;
    return std::nullopt;
}

QString splitText(const TAMBO::Alignment &alignment, const SplitElement &split)
{
    const unsigned long all = alignment.residueCount(split.row, alignment.width());
    unsigned long first = split.residue;
    while (first > 0 && elementOf(alignment, split.row, first - 1) == split.element)
        --first;
    unsigned long last = split.residue;
    while (last + 1 < all && elementOf(alignment, split.row, last + 1) == split.element)
        ++last;
    const char type = split.element->TypeCode();
    const bool isHelix = type == 'H' || type == 'h';
    const TAMBO::Compound *const chain = split.element->Parent();
    return (isHelix ? tr("splits helix %1–%2 of chain %3") : tr("splits strand %1–%2 of chain %3"))
        .arg(residueNumberOf(alignment, split.row, first),
             residueNumberOf(alignment, split.row, last),
             chain == nullptr ? QString() : QString::fromStdString(chain->Name()));
}

std::optional<unsigned long> nearestWhole(const TAMBO::Alignment &alignment, const MovesAt &movesAt,
                                          unsigned long column)
{
    const std::size_t rows = std::max<std::size_t>(1, movesAt(column).size());
    const unsigned long farthest = std::max(kLeastFarthest, kFarthestPlace / rows);
    for (unsigned long far = 0; far <= farthest; ++far) {
        if (far <= column && !splitBy(alignment, movesAt(column - far)))
            return column - far;
        if (column + far < alignment.width() && !splitBy(alignment, movesAt(column + far)))
            return column + far;
    }
    return std::nullopt;
}

} // namespace companion
