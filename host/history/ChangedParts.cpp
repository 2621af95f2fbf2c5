// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChangedParts.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "HistoryStep.h"
#include "Space.h"
#include "Structure.h"

#include <algorithm>
#include <map>

namespace TAMBO {

namespace {

// What has changed of the sequences, chains and structures that rows may show.
using Changed = std::map<const Compound *, EditParts>;

EditParts partsOf(const Changed &changed, const Compound *object)
{
    const auto found = changed.find(object);
    return found == changed.end() ? EditParts() : found->second;
}

// A row that has no name of its own follows its sequence.
bool followsName(const AlignmentRow &row)
{
    return row.label() == nullptr || row.label()->name.empty();
}

EditParts ofChain(const Changed &changed, const Peptide &chain)
{
    EditParts parts;
    if (partsOf(changed, &chain).has(EditPart::Numbers))
        parts.add(EditPart::HeaderNumbers);
    return parts;
}

EditParts ofRow(const Changed &changed, const AlignmentRow &row)
{
    const Peptide &sequence = row.sequence();
    const EditParts own = partsOf(changed, &sequence);
    const auto *const structure = dynamic_cast<const Structure *>(sequence.Parent());
    const bool isNamedByOther =
        structure != nullptr && partsOf(changed, structure).has(EditPart::Name);
    EditParts parts;
    if (followsName(row) && (own.has(EditPart::Name) || isNamedByOther))
        parts.add(EditPart::RowNames);
    if (structure != nullptr)
        parts.add(ofChain(changed, sequence));
    for (const EditPart part : {EditPart::Numbers, EditPart::Elements}) {
        if (structure == nullptr && own.has(part))
            parts.add(part);
    }
    if (sequence.hasTies())
        sequence.forEachTiedChain(
            [&](const Peptide &chain) { parts.add(ofChain(changed, chain)); });
    return parts;
}

} // namespace

bool ChangedParts::Span::isChangeSince(std::size_t saved) const
{
    return (lastDone && *lastDone >= saved) || (nextUndone && *nextUndone < saved);
}

void ChangedParts::add(const HistoryStep &step, std::size_t index, bool isDone)
{
    step.forEachChange([&](const Compound &holder, EditPart part) {
        Span &span = m_Spans[{&holder, part}];
        if (isDone)
            span.lastDone = std::max(span.lastDone.value_or(index), index);
        else
            span.nextUndone = std::min(span.nextUndone.value_or(index), index);
    });
}

void ChangedParts::forget(const std::set<const Compound *> &freed)
{
    std::erase_if(m_Spans, [&freed](const auto &entry) {
        const Compound *object = entry.first.first;
        while (object != nullptr && !freed.contains(object))
            object = object->Parent();
        return object != nullptr;
    });
}

const Compound *ChangedParts::topOf(const Compound &object)
{
    const Compound *top = &object;
    while (top->Parent() != nullptr && top->Parent() != Space::instance())
        top = top->Parent();
    return top->Parent() != nullptr ? top : nullptr;
}

EditParts ChangedParts::of(const Compound &object, std::size_t saved) const
{
    EditParts parts;
    for (const auto &[key, span] : m_Spans) {
        if (span.isChangeSince(saved) && topOf(*key.first) == &object)
            parts.add(key.second);
    }
    return parts;
}

bool ChangedParts::has(const Compound &object, EditPart part, std::size_t saved) const
{
    const auto found = m_Spans.find({&object, part});
    return found != m_Spans.end() && found->second.isChangeSince(saved);
}

EditParts ChangedParts::ofRows(const Alignment &alignment, std::size_t saved) const
{
    Changed changed;
    for (const auto &[key, span] : m_Spans) {
        if (span.isChangeSince(saved))
            changed[key.first].add(key.second);
    }
    EditParts parts;
    if (changed.empty())
        return parts;
    const AlignmentTable &table = alignment.table();
    for (std::size_t row = 0; row < table.rowCount(); ++row)
        parts.add(ofRow(changed, table.row(row)));
    return parts;
}

std::set<const Compound *> ChangedParts::objects() const
{
    std::set<const Compound *> objects;
    for (const auto &[key, span] : m_Spans) {
        if (const Compound *const top = topOf(*key.first))
            objects.insert(top);
    }
    return objects;
}

} // namespace TAMBO
