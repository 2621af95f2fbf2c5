// SPDX-License-Identifier: GPL-3.0-or-later
// Fills Space with objects of every kind, each with some of what such an object can have.
#pragma once

#include "Alignment.h"
#include "AlignmentTable.h"
#include "DataMaker.h"
#include "ModelPlaces.h"
#include "ObjectFactory.h"
#include "ObjectOperations.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "PluginValues.h"
#include "ResidueHandle.h"
#include "Structure.h"

#include <cmath>
#include <memory>
#include <random>
#include <string>
#include <vector>

class RandomSpace
{
public:
    explicit RandomSpace(unsigned seed) : m_Random(seed) { }

    void fill()
    {
        for (unsigned i = below(3); i > 0; --i)
            addStructure();
        for (unsigned i = 1 + below(5); i > 0; --i)
            addSequence();
        for (unsigned i = below(3); i > 0; --i)
            addFileAlignment();
        for (unsigned i = below(3); i > 0; --i)
            addAlignment();
        for (unsigned i = below(40); i > 0; --i)
            change();
        for (TAMBO::Compound *const object : TAMBO::ObjectSpace::get())
            TAMBO::setObjectLocked(*object, below(4) == 0);
        TAMBO::setObjectLocked(TAMBO::ObjectSpace::get(), below(4) == 0);
    }

private:
    using Peptides = std::vector<TAMBO::Peptide *>;

    // Drawn one after the other, each in a statement of its own: compilers differ in the order in
    // which they make the arguments of a call, and all are to meet the same objects.
    unsigned below(std::size_t limit) { return unsigned(m_Random() % limit); }
    std::string name() { return below(9) == 0 ? "" : "object " + std::to_string(++m_Names); }
    Color color() { return Color::fromArgb(below(3) == 0 ? unsigned(m_Random()) : below(5) * 99); }
    std::string letters(std::size_t most = 150)
    {
        std::string text;
        for (std::size_t i = below(most); i > 0; --i)
            text += "ACDEFGHIKLMNPQRSTVWYXacd"[below(24)];
        return text;
    }
    TAMBO::SequenceNumber number()
    {
        const char letter = below(4) == 0 ? 'B' : ' ';
        return TAMBO::SequenceNumber(int(below(400)) - 50, letter);
    }
    TAMBO::Vertex place()
    {
        const float y = coordinate();
        return {coordinate(), y, -0.0F};
    }
    float coordinate() { return std::ldexp(float(below(1U << 20)) - 500'000.0F, -8); }

    TAMBO::ResidueRecord residue(bool isAminoAcid)
    {
        TAMBO::ResidueRecord residue;
        residue.isAminoAcid = isAminoAcid;
        residue.typeName = below(5) == 0 ? "MSE" : "ALA";
        residue.letter = "AMX"[below(3)];
        residue.number = number();
        for (unsigned i = below(5); i > 0; --i)
            residue.atoms.push_back({below(2) == 0 ? "CA" : "O1'", below(2) == 0 ? "Se" : "C",
                                     below(9) == 0 ? TAMBO::Vertex() : place(),
                                     below(3) == 0 ? 0.0F : coordinate(),
                                     below(3) == 0 ? 0.5F : 1.0F});
        return residue;
    }

    void addStructure()
    {
        TAMBO::StructureRecord record;
        record.name = name();
        record.models = 1 + below(40);
        record.isModel = below(3) == 0;
        for (unsigned chains = below(4); chains > 0; --chains) {
            TAMBO::ChainRecord &chain = record.chains.emplace_back();
            chain.name = std::string(below(2), char('A' + chains));
            for (unsigned i = 1 + below(80); i > 0; --i)
                chain.residues.push_back(residue(below(8) != 0));
        }
        // More than are written in one piece, now and then.
        for (unsigned i = below(9) == 0 ? 9000 + below(9000) : below(5); i > 0; --i) {
            const TAMBO::Vector<float, 3> at = place().coordinates();
            const float factor = coordinate();
            const int number = int(below(9999)) - 50;
            const char letter = " C"[below(2)];
            record.waters.add(std::string(1, "AAAAAAAAB"[below(9)]),
                              {at, factor, number, 0, letter});
        }
        addBonds(record);
        addModels(record);
        TAMBO::Structure *const made = TAMBO::ObjectFactory::adopt(std::move(record));
        if (below(3) == 0)
            TAMBO::renameObject(*made, name());
    }

    void addBonds(TAMBO::StructureRecord &record)
    {
        const auto anyEnd = [&] {
            TAMBO::BondRecord::End end;
            end.chain = below(record.chains.size());
            end.residue = below(record.chains[end.chain].residues.size());
            // There may be no such atom.
            end.atom = below(3);
            return end;
        };
        for (unsigned i = record.chains.empty() ? 0 : below(6); i > 0; --i)
            record.bonds.push_back({anyEnd(), anyEnd(), TAMBO::BondKind(1 + below(4))});
    }

    void addModels(TAMBO::StructureRecord &record)
    {
        std::size_t atoms = 0;
        for (const TAMBO::ChainRecord &chain : record.chains) {
            for (const TAMBO::ResidueRecord &residue : chain.residues)
                atoms += residue.atoms.size();
        }
        for (unsigned i = below(3); i > 0; --i) {
            auto &model = record.furtherModels.emplace_back();
            for (std::size_t k = 0; k < atoms; ++k)
                model.push_back(below(5) == 0 ? TAMBO::ModelPlaces::nowhere()
                                              : TAMBO::ModelPlaces::Place(coordinate(), 0, -0.0F));
        }
    }

    void addSequence()
    {
        auto made = std::make_unique<TAMBO::Peptide>(name(), letters());
        std::size_t next = 0;
        for (TAMBO::Peptide *const chain : chains()) {
            if (below(3) != 0 || next >= made->residueCount())
                continue;
            const std::size_t first = next + below(made->residueCount() - next);
            const std::size_t from = below(chain->residueCount() + 1);
            const std::size_t count =
                std::min(made->residueCount() - first, chain->residueCount() - from);
            made->tie(first, *chain, from, count);
            next = first + count;
        }
        TAMBO::ObjectSpace::get().add(std::move(made));
    }

    Peptides chains() const
    {
        Peptides found;
        for (TAMBO::Compound *const object : TAMBO::ObjectSpace::get()) {
            const auto *const structure = dynamic_cast<const TAMBO::Structure *>(object);
            for (std::size_t i = 0; structure != nullptr && i < structure->objectCount(); ++i)
                found.push_back(structure->chain(i));
        }
        return found;
    }
    Peptides sequences() const
    {
        Peptides found = chains();
        for (TAMBO::Compound *const object : TAMBO::ObjectSpace::get()) {
            if (TAMBO::Peptide *const peptide = TAMBO::Peptide::from(object))
                found.push_back(peptide);
        }
        return found;
    }

    std::string cells(std::size_t residues)
    {
        std::string text;
        while (residues > 0) {
            text.append(below(4), '-');
            text += 'A';
            --residues;
        }
        return text;
    }

    // Some of the residues of sequences that stand elsewhere as well.
    void addAlignment()
    {
        const Peptides all = sequences();
        TAMBO::AlignmentTable::Rows rows;
        for (unsigned i = below(6); i > 0; --i) {
            TAMBO::Peptide &sequence = *all[below(all.size())];
            const std::size_t first = below(sequence.residueCount() + 1);
            TAMBO::GappedSequence row;
            row.append(cells(below(sequence.residueCount() - first + 1)));
            TAMBO::RowLabel label;
            if (below(2) == 0)
                label.name = name();
            if (below(3) == 0)
                label.residueAnnotations.push_back({"SS", letters(30)});
            rows.push_back(
                std::make_unique<TAMBO::AlignmentRow>(sequence, TAMBO::OccupancyRow(row.occupancy),
                                                      std::move(label), std::uint32_t(first)));
        }
        const std::size_t width = below(200);
        TAMBO::ObjectSpace::get().add(TAMBO::AlignmentTable::make(name(), std::move(rows), width));
    }

    // As a file brings it.
    void addFileAlignment()
    {
        TAMBO::AlignmentRecord record;
        record.name = name();
        const std::size_t width = 1 + below(150);
        for (unsigned i = below(6); i > 0; --i) {
            TAMBO::RowRecord &row = record.rows.emplace_back();
            row.name = name();
            std::string text = cells(width);
            text.resize(width);
            row.sequence.append(text);
            if (below(2) == 0)
                row.description = letters(20);
            if (below(3) == 0)
                row.link = TAMBO::StructureLink{"9xyz", "A", "12", "40", "B"};
            if (below(3) == 0)
                row.chainBreaks = {{below(5), std::nullopt}, {5 + below(9), below(width)}};
            if (below(3) == 0)
                row.annotations = {{"AC", "P1"}, {"DR", letters(9)}};
            if (below(3) == 0)
                row.residueAnnotations = {{"SA", std::string(width, '7')}};
        }
        if (below(2) == 0)
            record.annotations = {{"ID", "family"}, {"CC", ""}};
        if (below(2) == 0)
            record.columnAnnotations = {{"RF", std::string(width, 'x')}};
        TAMBO::ObjectFactory::adopt(std::move(record));
    }

    TAMBO::Compound &anyObject()
    {
        TAMBO::ObjectSpace &space = TAMBO::ObjectSpace::get();
        const Peptides all = sequences();
        TAMBO::Peptide &peptide = *all[below(all.size())];
        switch (below(5)) {
        case 0:
            return peptide;
        case 1:
            return peptide.residueCount() == 0 ? peptide
                                               : *peptide.Child(below(peptide.ChildCount()));
        case 2: {
            TAMBO::Compound *child =
                peptide.ChildCount() == 0 ? nullptr : peptide.Child(below(peptide.ChildCount()));
            if (child != nullptr && child->ChildCount() > 0)
                child = child->Child(below(child->ChildCount()));
            return child == nullptr ? peptide : *child;
        }
        case 3:
            return space;
        default:
            return *space.object(below(space.objectCount()));
        }
    }

    void change()
    {
        const Peptides all = sequences();
        TAMBO::Peptide &sequence = *all[below(all.size())];
        const std::size_t count = sequence.residueCount();
        switch (below(9)) {
        case 0:
            anyObject().SetColor(color());
            break;
        case 1:
            anyObject().SetSelected(below(3) != 0);
            break;
        case 2: {
            const bool isLocked = below(3) == 0;
            TAMBO::setObjectLocked(anyObject(), isLocked);
            break;
        }
        case 3: {
            TAMBO::Compound &object = anyObject();
            if (TAMBO::stateOf(object) != nullptr && &object != &TAMBO::ObjectSpace::get()) {
                const std::string value = letters(300) + '\0' + "\xff";
                const std::string key = letters(9) + "k";
                PluginValues::Set(&object, "plug-in " + std::to_string(below(3)), key, value);
            }
            break;
        }
        case 4:
            // Few colours, or more than a palette has.
            for (std::size_t i = 0, some = below(2) * 300; count > 0 && i < some + 3; ++i) {
                const Color drawn = color();
                sequence.setColor(below(count), drawn);
            }
            break;
        case 5:
            for (unsigned i = below(5); count > 0 && i > 0; --i) {
                const TAMBO::SequenceNumber drawn = number();
                sequence.setNumber(below(count), drawn);
            }
            break;
        case 6:
            for (unsigned i = below(5); count > 0 && i > 0; --i) {
                const bool isSelected = below(3) != 0;
                sequence.setSelected(below(count), isSelected);
            }
            break;
        case 7: {
            std::vector<TAMBO::Compound *> residues;
            for (std::size_t i = below(count + 1); i < count && residues.size() < 12; ++i) {
                if (below(6) != 0)
                    residues.push_back(sequence.residue(i));
            }
            if (residues.size() >= 3) {
                const char kind = "HETh"[below(4)];
                TAMBO::DataMaker::makeSSE(&sequence, name(), residues, kind);
            }
            break;
        }
        default:
            changeAlignment();
            break;
        }
    }

    void changeAlignment()
    {
        for (TAMBO::Compound *const object : TAMBO::ObjectSpace::get()) {
            auto *const alignment = dynamic_cast<TAMBO::Alignment *>(object);
            if (alignment == nullptr || alignment->height() == 0)
                continue;
            const unsigned long width = alignment->width();
            switch (below(6)) {
            case 0:
                alignment->remove({below(width), below(width)});
                break;
            case 1:
                alignment->range({below(width + 3), below(width + 3)});
                break;
            case 2: {
                const unsigned gaps = 1 + below(70);
                alignment->insertGapCol(below(width + 1), gaps);
                break;
            }
            case 3: {
                const unsigned target = below(alignment->height());
                alignment->bubbleRow(below(alignment->height()), target);
                break;
            }
            case 4: {
                std::vector<unsigned long> order(alignment->height());
                for (std::size_t i = 0; i < order.size(); ++i)
                    order[i] = order.size() - 1 - i;
                alignment->reorderRows(order);
                break;
            }
            default: {
                const unsigned target = below(width);
                const unsigned column = below(width);
                alignment->moveGap(below(alignment->height()), column, target, true);
                break;
            }
            }
        }
    }

    std::mt19937 m_Random;
    int m_Names = 0;
};
