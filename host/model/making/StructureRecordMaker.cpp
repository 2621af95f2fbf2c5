// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureRecordMaker.h"

#include "Atom.h"
#include "Element.h"
#include "Peptide.h"
#include "ResidueGroup.h"
#include "Structure.h"

namespace TAMBO {

namespace {

AtomRecord makeAtom(const Atom &atom)
{
    return {atom.name(), atom.TypeName(), atom.place()};
}

ResidueRecord makeResidue(const Peptide &chain, std::size_t index)
{
    ResidueRecord record;
    record.typeName = chain.typeName(index);
    record.letter = chain.letter(index);
    record.number = chain.number(index);
    record.atoms.reserve(chain.atomCount(index));
    for (std::size_t i = 0; i < chain.atomCount(index); ++i)
        record.atoms.push_back(makeAtom(*chain.atom(index, i)));
    return record;
}

ResidueRecord makeGroup(const ResidueGroup &group)
{
    ResidueRecord record;
    record.typeName = group.TypeName();
    record.letter = group.TypeCode();
    record.number = group.GetSeqId();
    record.isAminoAcid = false;
    for (std::size_t i = 0; i < group.ChildCount(); ++i)
        record.atoms.push_back(makeAtom(dynamic_cast<const Atom &>(*group.Child(i))));
    return record;
}

// Each piece of it.
void addElement(const Peptide &chain, const Element &element, StructureRecord &record)
{
    const char letter = element.TypeCode();
    const bool isSmall = letter >= 'a';
    const char type = isSmall ? char(letter - 'a' + 'A') : letter;
    std::size_t pieces = 0;
    bool isInside = false;
    for (std::size_t i = 0; i < chain.residueCount(); ++i) {
        if (!element.contains(i)) {
            isInside = false;
            continue;
        }
        if (!isInside) {
            ++pieces;
            record.elements.push_back(
                {element.Name(), type, chain.Name(), chain.number(i), {}, isSmall});
        }
        record.elements.back().last = chain.number(i);
        isInside = true;
    }
    if (pieces > 1)
        ++record.brokenElements;
}

bool hasColoredAtoms(const Compound &parent)
{
    for (std::size_t i = 0; i < parent.ChildCount(); ++i) {
        const auto *const atom = dynamic_cast<const Atom *>(parent.Child(i));
        if (atom != nullptr && atom->hasOwnColor())
            return true;
    }
    return false;
}

bool hasOwnColors(const Peptide &chain)
{
    if (chain.state().color || chain.hasOwnColors(0, chain.residueCount()))
        return true;
    for (std::size_t i = 0; i < chain.residueCount(); ++i) {
        for (std::size_t k = 0; k < chain.atomCount(i); ++k)
            if (chain.atom(i, k)->hasOwnColor())
                return true;
    }
    for (std::size_t i = 0; i < chain.objectCount(); ++i) {
        const auto *const group = dynamic_cast<const ResidueGroup *>(chain.object(i));
        const auto *const element = dynamic_cast<const Element *>(chain.object(i));
        if ((group != nullptr && (group->hasOwnColor() || hasColoredAtoms(*group))) ||
            (element != nullptr && element->state().color))
            return true;
    }
    return false;
}

} // namespace

StructureRecord makeRecord(const Structure &structure)
{
    StructureRecord record;
    record.name = structure.Name();
    record.models = structure.modelCount();
    record.isModel = structure.isModel();
    record.hasOwnColors = structure.state().color.has_value();
    for (std::size_t c = 0; const Peptide *const chain = structure.chain(c); ++c) {
        ChainRecord &made = record.chains.emplace_back();
        made.name = chain->Name();
        record.hasOwnColors = record.hasOwnColors || hasOwnColors(*chain);
        for (std::size_t i = 0; i < chain->residueCount(); ++i)
            made.residues.push_back(makeResidue(*chain, i));
        for (std::size_t i = 0; i < chain->objectCount(); ++i) {
            if (const auto *const group = dynamic_cast<const ResidueGroup *>(chain->object(i)))
                made.residues.push_back(makeGroup(*group));
            else if (const auto *const element = dynamic_cast<const Element *>(chain->object(i)))
                addElement(*chain, *element, record);
        }
    }
    return record;
}

} // namespace TAMBO
