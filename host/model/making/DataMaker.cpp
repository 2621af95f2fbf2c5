// SPDX-License-Identifier: GPL-3.0-or-later
#include "DataMaker.h"

#include "Alignment.h"
#include "ChangeScope.h"
#include "Element.h"
#include "ObjectSpace.h"
#include "ObjectsEdit.h"
#include "Peptide.h"
#include "Structure.h"
#include "TableChanges.h"

#include <algorithm>
#include <utility>

namespace TAMBO {

namespace {

std::vector<Peptide *> peptidesOf(Compound &object)
{
    std::vector<Peptide *> peptides;
    if (Peptide *const peptide = Peptide::from(&object))
        peptides.push_back(peptide);
    else if (const auto *const structure = dynamic_cast<const Structure *>(&object)) {
        for (std::size_t i = 0; i < structure->objectCount(); ++i)
            peptides.push_back(structure->chain(i));
    }
    return peptides;
}

// Nothing may refer to a sequence that goes: its rows leave the alignments and ties to it are cut.
// False when a locked object would have to change for it.
bool detachSequences(const std::vector<Peptide *> &peptides, const Compound &object)
{
    if (peptides.empty())
        return true;
    const ObjectSpace &space = ObjectSpace::get();
    const std::vector<Alignment *> alignments = space.referrers<Alignment>();
    const std::vector<Peptide *> tied = space.referrers<Peptide>();
    for (const Alignment *const alignment : alignments) {
        const auto isRow = [&](Peptide *peptide) { return alignment->table().holds(*peptide); };
        if (alignment->IsLocked() && std::ranges::any_of(peptides, isRow)) {
            refuse("\"" + object.GetFQName() + "\" was not deleted: the locked alignment \"" +
                   alignment->Name() + "\" holds its sequence.");
            return false;
        }
    }
    for (Peptide *const peptide : peptides) {
        for (Alignment *const alignment : alignments) {
            if (!alignment->table().holds(*peptide))
                continue;
            removeRowsOf(alignment->table(), *peptide);
            publishAtEnd(Publisher::Update);
        }
        for (Peptide *const sequence : tied)
            sequence->untieFrom(*peptide);
    }
    return true;
}

} // namespace

Alignment *DataMaker::makeAlignment(const std::string &name,
                                    const std::vector<Compound *> &sequences)
{
    const ChangeScope scope;
    std::unique_ptr<Alignment> made = AlignmentTable::make(name, AlignmentTable::rowsOf(sequences));
    Alignment &alignment = *made;
    ObjectSpace::get().add(std::move(made));
    return &alignment;
}

Compound *DataMaker::makeSSE(Compound *parent, const std::string &name,
                             const std::vector<Compound *> &residues, char type)
{
    constexpr std::size_t kFewestResidues = 3;
    const Peptide *const peptide = Peptide::from(parent);
    if (!Element::isType(type)) {
        refuse(std::string("\"") + type + "\" is no type of secondary structure (H, E, T).");
        return nullptr;
    }
    // The indices by the peptide that has the data; a row may be tied to several chains.
    std::vector<std::pair<Peptide *, std::vector<std::uint32_t>>> places;
    std::vector<const Compound *> distinct(residues.begin(), residues.end());
    std::ranges::sort(distinct);
    distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
    for (const Compound *const residue : distinct) {
        const ResiduePlace asked = Peptide::placeOf(residue);
        if (peptide == nullptr || asked.peptide != peptide) {
            refuse("Secondary structure is made of residues of one sequence.");
            return nullptr;
        }
        const ResiduePlace place = peptide->resolve(asked.index);
        auto found =
            std::ranges::find(places, place.peptide, [](auto &entry) { return entry.first; });
        if (found == places.end())
            found = places.insert(found, {place.peptide, {}});
        found->second.push_back(static_cast<std::uint32_t>(place.index));
    }
    if (distinct.size() < kFewestResidues) {
        refuse("Secondary structure needs at least 3 residues.");
        return nullptr;
    }
    if (!std::ranges::all_of(places, [](const auto &entry) { return mayChange(*entry.first); }))
        return nullptr;

    const ChangeScope scope;
    Compound *first = nullptr;
    for (auto &[owner, indices] : places) {
        Compound &made = owner->add(std::make_unique<Element>(name, type, std::move(indices)));
        if (first == nullptr)
            first = &made;
    }
    return first;
}

void DataMaker::Destroy(Compound *object)
{
    if (object == nullptr)
        return;
    if (Publisher::isPublishing()) {
        refuse("\"" + object->GetFQName() + "\" was not deleted: a change is being published.");
        return;
    }
    auto *const container = dynamic_cast<ObjectContainer *>(object->Parent());
    std::size_t index = 0;
    while (container != nullptr && index < container->objectCount() &&
           container->object(index) != object)
        ++index;
    if (container == nullptr || index == container->objectCount()) {
        refuse("\"" + object->GetFQName() + "\" cannot be deleted by itself.");
        return;
    }
    if (!mayChange(*object))
        return;
    const ChangeScope scope;
    if (!detachSequences(peptidesOf(*object), *object))
        return;
    publishAtEnd(Publisher::Delete);
    recordInverse(
        std::make_unique<ObjectsEdit>(*container, index, "delete", container->takeObject(index)));
}

} // namespace TAMBO
