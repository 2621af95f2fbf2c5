// SPDX-License-Identifier: GPL-3.0-or-later
#include "DataMaker.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "ChangeScope.h"
#include "DestroyedObjects.h"
#include "Element.h"
#include "ObjectSpace.h"
#include "ObjectsEdit.h"
#include "Peptide.h"

#include <algorithm>
#include <utility>

namespace TAMBO {

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
    if (!detachSequencesOf(*object))
        return;
    publishAtEnd(Publisher::Delete);
    recordInverse(
        std::make_unique<ObjectsEdit>(*container, index, "delete", container->takeObject(index)));
}

} // namespace TAMBO
