// SPDX-License-Identifier: GPL-3.0-or-later
#include "Selections.h"

#include "ChangeScope.h"
#include "CompoundState.h"
#include "ObjectIndex.h"
#include "ObjectOperations.h"
#include "Peptide.h"
#include "Space.h"
#include "StoredObject.h"
#include "Structure.h"

#include <cstdint>
#include <vector>

namespace TAMBO {

namespace {

// Of the last time when something was deselected; 0 before the first one.
std::uint32_t s_Time = 0;
// The objects that were selected themselves then. One that is gone leaves it by itself: the next
// session may have another one of its number.
ObjectIndex &keptObjects()
{
    // Never destroyed, as objects may be that leave it.
    static ObjectIndex &kept = *new ObjectIndex;
    return kept;
}

template <typename Visit> void forEachPeptide(Visit visit)
{
    for (Compound *const object : *Space::instance()) {
        if (auto *const peptide = dynamic_cast<Peptide *>(object)) {
            visit(*peptide);
        } else if (const auto *const structure = dynamic_cast<const Structure *>(object)) {
            for (std::size_t i = 0; i < structure->ChildCount(); ++i)
                visit(*structure->chain(i));
        }
    }
}

// Calls visit(object, state) for each that is selected by a mark of its own: a sequence, and a
// structure, is when all of its residues are.
template <typename Visit> void forEachOwnMark(Visit visit)
{
    for (Compound *const object : *Space::instance()) {
        StoredObject *const stored = StoredObject::from(object);
        CompoundState *const state = stored == nullptr ? nullptr : stored->ownState();
        if (state != nullptr && dynamic_cast<Peptide *>(object) == nullptr)
            visit(*stored, *state);
    }
}

} // namespace

SelectedCount Selections::deselectAll()
{
    const ChangeScope scope;
    SelectedCount count;
    std::vector<StoredObject *> objects;
    // Before any sequence is deselected: its residues may be those of a chain.
    forEachPeptide([&](Peptide &peptide) { count.residues += peptide.keepDeselected(s_Time + 1); });
    forEachOwnMark([&](StoredObject &object, const CompoundState &state) {
        if (state.isSelected)
            objects.push_back(&object);
    });
    count.objects = objects.size();
    for (Compound *const object : *Space::instance())
        object->SetSelected(false);
    if (count.isNone())
        return count;
    ++s_Time;
    keptObjects().clear();
    for (StoredObject *const object : objects)
        keptObjects().add(*object);
    forEachPeptide([](Peptide &peptide) { peptide.forgetKept(s_Time); });
    return count;
}

SelectedCount Selections::selectAgain()
{
    const ChangeScope scope;
    SelectedCount count;
    forEachPeptide([&](Peptide &peptide) { count.residues += peptide.selectKept(s_Time); });
    ObjectIndex &kept = keptObjects();
    if (kept.size() == 0)
        return count;
    forEachOwnMark([&](StoredObject &object, CompoundState &state) {
        if (kept.find(object.identity()) == nullptr)
            return;
        assignSelected(object.asCompound(), state.isSelected, true);
        ++count.objects;
        kept.erase(object.identity());
    });
    return count;
}

} // namespace TAMBO
