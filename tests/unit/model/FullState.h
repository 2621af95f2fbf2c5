// SPDX-License-Identifier: GPL-3.0-or-later
// Everything of objects that users, plug-ins or files can see, as text with a line for each thing:
// two states are the same when their texts are, and a difference can be read.
#pragma once

#include "Alignment.h"
#include "AlignmentTable.h"
#include "Atom.h"
#include "Element.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "ResidueGroup.h"
#include "Structure.h"
#include "StructureDetails.h"
#include "ValueStore.h"

#include <bit>
#include <cstdint>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

class FullState
{
public:
    // Space with all in it.
    [[nodiscard]] static std::string of(TAMBO::ObjectSpace &space)
    {
        FullState state;
        state.tellCommon(space);
        for (std::size_t i = 0; i < space.objectCount(); ++i)
            state.tell(*space.object(i));
        return state.m_Out.str();
    }
    [[nodiscard]] static std::string of(TAMBO::Compound &object)
    {
        FullState state;
        state.tell(object);
        return state.m_Out.str();
    }

private:
    void tell(TAMBO::Compound &object)
    {
        tellCommon(object);
        if (auto *const peptide = TAMBO::Peptide::from(&object))
            tellPeptide(*peptide);
        else if (auto *const structure = dynamic_cast<TAMBO::Structure *>(&object))
            tellStructure(*structure);
        else if (auto *const alignment = dynamic_cast<TAMBO::Alignment *>(&object))
            tellAlignment(*alignment);
        else if (auto *const element = dynamic_cast<TAMBO::Element *>(&object))
            tellElement(*element);
        else if (auto *const group = dynamic_cast<TAMBO::ResidueGroup *>(&object))
            tellGroup(*group);
    }

    void tellCommon(TAMBO::Compound &object)
    {
        m_Out << "object " << TAMBO::identityOf(object) << " in "
              << (object.Parent() == nullptr ? 0 : TAMBO::identityOf(*object.Parent())) << ' '
              << object.TypeName() << " '" << object.Name() << "' " << int(object.TypeCode())
              << " color " << std::hex << object.OwnColor().argb() << std::dec << " selected "
              << object.IsSelected() << " locked " << object.IsLocked();
        if (const TAMBO::CompoundState *const state = TAMBO::stateOf(object))
            m_Out << " own " << state->isSelected << state->color.has_value() << state->isLocked;
        m_Out << '\n';
        if (const auto *const plugins = TAMBO::ValueStore::get().of(object)) {
            for (const auto &[plugin, values] : *plugins) {
                for (const auto &[key, value] : values)
                    m_Out << "  value " << plugin << ' ' << key << " '" << value << "'\n";
            }
        }
    }

    void tellPlace(const TAMBO::Vertex &place)
    {
        m_Out << " at " << place.isDefined() << std::hex;
        for (std::size_t i = 0; i < 3; ++i)
            m_Out << ' ' << std::bit_cast<std::uint32_t>(place.coordinates()[i]);
        m_Out << std::dec;
    }

    void tellAtom(const TAMBO::Atom &atom)
    {
        m_Out << "    atom " << atom.name() << ' ' << atom.TypeName() << " color " << std::hex
              << atom.OwnColor().argb() << std::dec << ' ' << atom.hasOwnColor() << " selected "
              << atom.IsSelected() << " of " << atom.Parent()->Name() << " B " << atom.bFactor()
              << " occupancy " << atom.occupancy();
        tellPlace(atom.place());
        m_Out << '\n';
    }

    void tellPeptide(TAMBO::Peptide &peptide)
    {
        m_Out << "  letters " << peptide.letters() << " called " << peptide.sequenceName()
              << " ties " << peptide.hasTies() << peptide.wasTied() << " numbers "
              << peptide.hasOwnNumbers() << " atoms " << peptide.hasAtoms() << " colors "
              << peptide.hasOwnColors(0, peptide.residueCount()) << " selected "
              << peptide.selectedCount() << " objects " << peptide.objectCount() << '\n';
        for (std::size_t i = 0; i < peptide.residueCount(); ++i) {
            const TAMBO::ResiduePlace place = peptide.resolve(i);
            m_Out << "  residue " << peptide.letter(i) << ' ' << peptide.typeName(i) << ' '
                  << peptide.number(i).getValue() << " color " << std::hex
                  << peptide.ownColor(i).argb() << std::dec << " selected "
                  << peptide.isSelected(i);
            if (place.peptide != &peptide)
                m_Out << " tied to " << place.peptide->identity() << ' ' << place.index;
            if (const TAMBO::Element *const element = peptide.elementAt(i))
                m_Out << " element " << TAMBO::identityOf(*element);
            tellPlace(peptide.position(i));
            m_Out << '\n';
            for (std::size_t k = 0; k < peptide.atomCount(i); ++k)
                tellAtom(*peptide.atom(i, k));
        }
        for (std::size_t i = 0; i < peptide.objectCount(); ++i)
            tell(*peptide.object(i));
    }

    void tellElement(const TAMBO::Element &element)
    {
        m_Out << "  element " << element.TypeCode() << ' ' << element.residueCount() << " to "
              << element.residueEnd() << ':';
        for (std::size_t i = 0; i < element.residueEnd(); ++i)
            m_Out << element.contains(i);
        m_Out << '\n';
    }

    void tellGroup(const TAMBO::ResidueGroup &group)
    {
        m_Out << "  group " << group.GetSeqId().getValue() << " valid "
              << group.GetSeqId().isValid() << " own color " << group.hasOwnColor() << '\n';
        for (std::size_t i = 0; i < group.ChildCount(); ++i)
            tellAtom(dynamic_cast<const TAMBO::Atom &>(*group.Child(i)));
    }

    void tellStructure(const TAMBO::Structure &structure)
    {
        m_Out << "  structure " << structure.code() << ' ' << structure.modelCount() << ' '
              << structure.isModel() << " chains " << structure.objectCount() << '\n';
        for (std::size_t i = 0; i < structure.objectCount(); ++i)
            tell(*structure.chain(i));
        for (std::size_t i = 1; i < TAMBO::StructureDetails::modelCount(&structure); ++i) {
            m_Out << "  model";
            for (const TAMBO::Vertex &place :
                 TAMBO::StructureDetails::modelPositions(&structure, i))
                tellPlace(place);
            m_Out << '\n';
        }
        for (const TAMBO::BondDetails &bond : TAMBO::StructureDetails::bonds(&structure))
            m_Out << "  bond " << bond.first << ' ' << bond.second << ' ' << int(bond.kind) << '\n';
        for (const TAMBO::WaterDetails &water : TAMBO::StructureDetails::waters(&structure)) {
            m_Out << "  water " << water.chain << ' ' << water.number << water.insertionCode
                  << " B " << water.bFactor;
            tellPlace(water.position);
            m_Out << '\n';
        }
    }

    void tellAnnotations(const char *what, const std::vector<TAMBO::Annotation> &annotations)
    {
        for (const TAMBO::Annotation &annotation : annotations)
            m_Out << "  " << what << ' ' << annotation.tag << " '" << annotation.text << "'\n";
    }

    void tellAlignment(const TAMBO::Alignment &alignment)
    {
        const TAMBO::AlignmentTable &table = alignment.table();
        m_Out << "  alignment " << table.name() << ' ' << alignment.width() << " x "
              << table.rowCount() << ' ' << alignment.height() << " range "
              << alignment.range().first << ' ' << alignment.range().second << '\n';
        if (const TAMBO::AlignmentAnnotation *const annotation = table.annotation()) {
            m_Out << "  annotated\n";
            tellAnnotations("remark", annotation->remarks());
            tellAnnotations("line", annotation->lines(alignment.width()));
        }
        for (std::size_t i = 0; i < table.rowCount(); ++i)
            tellRow(table.row(i), alignment.width());
    }

    void tellRow(const TAMBO::AlignmentRow &row, unsigned long width)
    {
        m_Out << "  row '" << row.name() << "' of " << row.sequence().identity() << ' ';
        for (unsigned long column = 0; column < width; ++column)
            m_Out << (row.cells().isResidue(column) ? 'x' : '-');
        for (const TAMBO::ResidueRun &run : row.residueRuns(0, row.cells().residues()))
            m_Out << ' ' << run.index << '+' << run.count;
        m_Out << '\n';
        const TAMBO::RowLabel *const label = row.label();
        if (label == nullptr)
            return;
        m_Out << "  label '" << label->name << "' '" << label->description << "' '"
              << label->link->structure << "' '" << label->link->chain << "' '"
              << label->link->first << "' '" << label->link->last << "' '" << label->link->lastChain
              << "' " << label->firstResidue << '\n';
        for (const TAMBO::ChainBreak &kept : label->chainBreaks)
            m_Out << "  break " << kept.letters << ' ' << kept.column.value_or(9999) << '\n';
        for (const TAMBO::ChainBreak &shown : row.chainBreaks(width))
            m_Out << "  shown " << shown.letters << ' ' << shown.column.value_or(9999) << '\n';
        tellAnnotations("of row", label->annotations);
        tellAnnotations("of residues", label->residueAnnotations);
    }

    std::ostringstream m_Out;
};
