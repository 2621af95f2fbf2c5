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

void addElement(const Peptide &chain, const Element &element, std::vector<ElementRecord> &out)
{
    const char letter = element.TypeCode();
    const char type = letter >= 'a' ? char(letter - 'a' + 'A') : letter;
    bool isInside = false;
    for (std::size_t i = 0; i < chain.residueCount(); ++i) {
        if (!element.contains(i)) {
            isInside = false;
            continue;
        }
        if (!isInside)
            out.push_back({element.Name(), type, chain.Name(), chain.number(i), {}});
        out.back().last = chain.number(i);
        isInside = true;
    }
}

} // namespace

StructureRecord makeRecord(const Structure &structure)
{
    StructureRecord record;
    record.name = structure.Name();
    record.models = structure.modelCount();
    for (std::size_t c = 0; const Peptide *const chain = structure.chain(c); ++c) {
        ChainRecord &made = record.chains.emplace_back();
        made.name = chain->Name();
        for (std::size_t i = 0; i < chain->residueCount(); ++i)
            made.residues.push_back(makeResidue(*chain, i));
        for (std::size_t i = 0; i < chain->objectCount(); ++i) {
            if (const auto *const group = dynamic_cast<const ResidueGroup *>(chain->object(i)))
                made.residues.push_back(makeGroup(*group));
            else if (const auto *const element = dynamic_cast<const Element *>(chain->object(i)))
                addElement(*chain, *element, record.elements);
        }
    }
    return record;
}

} // namespace TAMBO
