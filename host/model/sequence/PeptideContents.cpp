// SPDX-License-Identifier: GPL-3.0-or-later
// The part of a peptide that comes from a structure file: atoms, groups and elements.
#include "AminoAcids.h"
#include "Atom.h"
#include "Element.h"
#include "NumberEdit.h"
#include "Peptide.h"
#include "ResidueGroup.h"
#include "ResidueSelection.h"
#include "Revisions.h"
#include "StructureContents.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace TAMBO {

Peptide::Peptide(ChainRecord &&record)
{
    std::string letters;
    std::size_t atomCount = 0;
    std::size_t residues = 0;
    for (const ResidueRecord &residue : record.residues) {
        if (residue.isAminoAcid) {
            atomCount += residue.atoms.size();
            ++residues;
        }
    }
    StructureContents &inside = ownContents();
    inside.atoms = std::make_unique<Atom[]>(atomCount);
    inside.atomStarts.reserve(residues + 1);
    inside.atomStarts.push_back(0);
    letters.reserve(residues);
    ResidueNumbers numbers;
    for (ResidueRecord &residue : record.residues) {
        if (!residue.isAminoAcid) {
            insertObject(objectCount(), std::make_unique<ResidueGroup>(std::move(residue)));
            continue;
        }
        const std::size_t index = letters.size();
        letters.push_back(residue.letter);
        numbers.append(index, residue.number);
        if (residue.typeName != aminoAcidName(residue.letter))
            inside.typeNames.emplace_back(static_cast<std::uint32_t>(index),
                                          std::move(residue.typeName));
        std::uint32_t next = inside.atomStarts.back();
        for (const AtomRecord &atom : residue.atoms)
            inside.atoms[next++].fill(atom, *this, index);
        inside.atomStarts.push_back(next);
    }
    m_Text = SequenceText(record.name, letters);
    if (!numbers.isDefault())
        extras().numbers = std::make_unique<NumberSlot>(NumberSlot{std::move(numbers)});
    updatePositions();
}

void Peptide::updatePositions()
{
    if (contents() == nullptr || contents()->atomStarts.empty())
        return;
    StructureContents &inside = ownContents();
    inside.positions.assign(residueCount(), Vertex());
    for (std::size_t i = 0; i < residueCount(); ++i) {
        const Atom *const begin = inside.atoms.get() + inside.atomStarts[i];
        const Atom *const end = inside.atoms.get() + inside.atomStarts[i + 1];
        const Atom *const alpha = std::find_if(
            begin, end, [](const Atom &candidate) { return candidate.name() == "CA"; });
        if (alpha != end)
            inside.positions[i] = alpha->place();
    }
}

StructureContents &Peptide::ownContents()
{
    std::unique_ptr<StructureContents> &slot = extras().contents;
    if (slot == nullptr)
        slot = std::make_unique<StructureContents>();
    return *slot;
}

std::size_t Peptide::objectCount() const noexcept
{
    return contents() == nullptr ? 0 : contents()->objects.size();
}

Compound *Peptide::object(std::size_t index) const noexcept
{
    return index < objectCount() ? contents()->objects[index].get() : nullptr;
}

bool Peptide::canHold(const Compound &object) const
{
    if (object.Kind() == CompoundKind::Group)
        return true;
    const auto *const element = dynamic_cast<const Element *>(&object);
    return element != nullptr && element->residueEnd() <= residueCount();
}

void Peptide::insertObject(std::size_t index, std::unique_ptr<Compound> object)
{
    StoredObject *const stored = StoredObject::from(object.get());
    if (stored == nullptr)
        return;
    StructureContents &inside = ownContents();
    stored->setParent(this);
    index = std::min(index, inside.objects.size());
    inside.objects.insert(inside.objects.begin() + std::ptrdiff_t(index), std::move(object));
    listElements();
}

std::unique_ptr<Compound> Peptide::takeObject(std::size_t index)
{
    if (index >= objectCount())
        return nullptr;
    auto &objects = ownContents().objects;
    std::unique_ptr<Compound> taken = std::move(objects[index]);
    objects.erase(objects.begin() + std::ptrdiff_t(index));
    StoredObject::from(taken.get())->setParent(nullptr);
    listElements();
    return taken;
}

void Peptide::listElements()
{
    StructureContents &inside = ownContents();
    inside.elements.clear();
    for (const std::unique_ptr<Compound> &object : inside.objects) {
        if (auto *const element = dynamic_cast<Element *>(object.get()))
            inside.elements.push_back(element);
    }
    growNumberingRevision();
}

std::span<Atom> Peptide::ownAtoms() const noexcept
{
    if (!hasOwnAtoms())
        return {};
    return {contents()->atoms.get(), contents()->atomStarts.back()};
}

const ModelPlaces &Peptide::models() const noexcept
{
    static const ModelPlaces none;
    return contents() == nullptr ? none : contents()->models;
}

void Peptide::presetModels(ModelPlaces models)
{
    ownContents().models = std::move(models);
}

// A later element covers an earlier one, so the last comes first and each residue is found once.
std::vector<char> Peptide::elementTypes() const
{
    std::vector<char> types(residueCount(), '\0');
    if (contents() == nullptr || contents()->elements.empty())
        return types;
    // The first residue from here on that has no type yet, as far as it is known.
    std::vector<std::uint32_t> next(residueCount() + 1);
    std::iota(next.begin(), next.end(), 0U);
    const auto freeFrom = [&next](std::size_t index) {
        while (next[index] != index)
            index = next[index] = next[next[index]];
        return index;
    };
    const std::vector<Element *> &elements = contents()->elements;
    for (auto element = elements.rbegin(); element != elements.rend(); ++element) {
        (*element)->forEachRun([&](std::size_t first, std::size_t end) {
            for (std::size_t i = freeFrom(first); i < end; i = freeFrom(i)) {
                types[i] = (*element)->TypeCode();
                next[i] = static_cast<std::uint32_t>(i + 1);
            }
        });
    }
    return types;
}

void Peptide::appendAtoms(std::vector<Compound *> &out) const
{
    for (std::size_t i = 0; i < residueCount(); ++i) {
        const std::size_t count = atomCount(i);
        for (std::size_t k = 0; k < count; ++k)
            out.push_back(atom(i, k));
    }
    for (std::size_t i = 0; i < objectCount(); ++i)
        StoredObject::from(object(i))->collectAtoms(out, false);
}

void Peptide::collectAtoms(std::vector<Compound *> &out, bool isAsked) const
{
    if (isAsked || !hasTies())
        appendAtoms(out);
}

std::size_t Peptide::bytes() const noexcept
{
    return sizeof(*this) + m_Text.bytes() + (m_Extras ? m_Extras->bytes() : 0);
}

} // namespace TAMBO
