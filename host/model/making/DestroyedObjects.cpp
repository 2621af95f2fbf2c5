// SPDX-License-Identifier: GPL-3.0-or-later
#include "DestroyedObjects.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "ChangeScope.h"
#include "DataMaker.h"
#include "ObjectSpace.h"
#include "ObjectsEdit.h"
#include "Peptide.h"
#include "PointerSet.h"
#include "Structure.h"
#include "TableChanges.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace TAMBO {

namespace {

using GoingSequences = PointerSet<Peptide>;

GoingSequences sequencesOf(Compound &object)
{
    GoingSequences sequences;
    if (const Peptide *const peptide = Peptide::from(&object)) {
        sequences.insert(peptide);
    } else if (const auto *const structure = dynamic_cast<const Structure *>(&object)) {
        for (std::size_t i = 0; i < structure->objectCount(); ++i)
            sequences.insert(structure->chain(i));
    }
    return sequences;
}

void refuseToDestroy(const Compound &object, const Alignment &locked)
{
    refuse("\"" + object.GetFQName() + "\" was not deleted: the locked alignment \"" +
           locked.Name() + "\" holds its sequence.");
}

// Calls visit(sequence, alignment) for those of the sequences that locked alignments show.
template <typename Visit> void forEachLocked(const GoingSequences &sequences, const Visit &visit)
{
    if (sequences.empty())
        return;
    for (const Alignment *const alignment : ObjectSpace::get().referrers<Alignment>()) {
        const AlignmentTable &table = alignment->table();
        for (std::size_t row = 0; alignment->IsLocked() && row < table.rowCount(); ++row) {
            if (sequences.contains(&table.row(row).sequence()))
                visit(table.row(row).sequence(), *alignment);
        }
    }
}

void detach(const GoingSequences &sequences)
{
    if (sequences.empty())
        return;
    for (Alignment *const alignment : ObjectSpace::get().referrers<Alignment>()) {
        if (removeRowsOf(alignment->table(), sequences))
            publishAtEnd(Publisher::Update);
    }
    for (Peptide *const tied : ObjectSpace::get().referrers<Peptide>()) {
        std::vector<const Peptide *> going;
        tied->forEachTiedChain([&](const Peptide &chain) {
            if (sequences.contains(&chain) && std::ranges::find(going, &chain) == going.end())
                going.push_back(&chain);
        });
        for (const Peptide *const chain : going)
            tied->untieFrom(*chain);
    }
}

void destroySequences(const GoingSequences &asked)
{
    GoingSequences kept;
    forEachLocked(asked, [&](const Peptide &sequence, const Alignment &locked) {
        if (kept.insert(&sequence))
            refuseToDestroy(sequence, locked);
    });
    ObjectSpace &space = ObjectSpace::get();
    std::vector<std::size_t> indices;
    GoingSequences going(asked.size());
    for (std::size_t i = 0; i < space.objectCount() && going.size() < asked.size(); ++i) {
        const Peptide *const sequence = Peptide::from(space.object(i));
        if (sequence == nullptr || !asked.contains(sequence) || kept.contains(sequence) ||
            !mayChange(*sequence))
            continue;
        indices.push_back(i);
        going.insert(sequence);
    }
    if (indices.empty())
        return;
    detach(going);
    publishAtEnd(Publisher::Delete);
    ObjectContainer::Objects taken = space.takeObjects(indices);
    recordInverse(
        std::make_unique<ObjectsEdit>(space, std::move(indices), "delete", std::move(taken)));
}

} // namespace

void destroyObjects(const std::vector<Compound *> &objects)
{
    const ChangeScope scope;
    GoingSequences sequences(objects.size());
    for (Compound *const object : objects) {
        const Peptide *const sequence = Peptide::from(object);
        // DataMaker says why nothing can be deleted now.
        if (sequence != nullptr && object->Parent() == Space::instance() &&
            !Publisher::isPublishing())
            sequences.insert(sequence);
        else
            DataMaker::Destroy(object);
    }
    destroySequences(sequences);
}

bool detachSequencesOf(Compound &object)
{
    const GoingSequences sequences = sequencesOf(object);
    const Alignment *locked = nullptr;
    forEachLocked(sequences, [&](const Peptide &, const Alignment &alignment) {
        locked = locked == nullptr ? &alignment : locked;
    });
    if (locked != nullptr) {
        refuseToDestroy(object, *locked);
        return false;
    }
    detach(sequences);
    return true;
}

} // namespace TAMBO
