// SPDX-License-Identifier: GPL-3.0-or-later
// The same with what alignments say of columns and breaks between chains, atoms, groups, values of
// plug-ins, steps with names and those that others add to; and a portrait that two runs of the
// program have in common.
#pragma once

#include "unit/history/RandomChanges.h"

#include "Atom.h"
#include "LetterColors.h"
#include "PluginValues.h"
#include "PositionEdit.h"
#include "ResidueGroup.h"
#include "ResidueSelection.h"
#include "StepFollower.h"
#include "StepName.h"
#include "StructureDetails.h"
#include "TableChanges.h"

#include <algorithm>
#include <sstream>

// Notes with every object that a step changes how often that has happened.
class CountingFollower final : public StepFollower
{
public:
    void stepEnds(const StepChanges &changes) override
    {
        for (const StepChange &change : changes.objects) {
            const std::string times =
                PluginValues::Get(change.object, "counter", "times").value_or("");
            PluginValues::Set(change.object, "counter", "times", times + '|');
        }
    }
};

class AllChanges : public RandomChanges
{
protected:
    using RandomChanges::RandomChanges;

    // By numbers, where two runs have different addresses.
    static std::string lastingPortrait()
    {
        std::ostringstream out;
        for (TAMBO::Compound *object : space())
            draw(*object, out, "");
        return out.str();
    }

    // With a ligand.
    TAMBO::Structure &complex(const std::string &name);
    // With breaks between chains, annotation and rows that begin later.
    TAMBO::Alignment &annotated(const std::string &name);
    void changeAnything();
    void realign(TAMBO::Alignment &alignment);

    // Commands, arrivals that interrupt them, undo and redo to any state, and what is saved.
    void work(int rounds)
    {
        for (int round = 0; round < rounds; ++round)
            ASSERT_NO_FATAL_FAILURE(workOnce());
    }
    void workOnce();

private:
    static void draw(TAMBO::Compound &object, std::ostream &out, const std::string &indent);
    static void drawRows(TAMBO::Alignment &alignment, std::ostream &out);
    static void drawResidues(const TAMBO::Peptide &peptide, std::ostream &out);
    void colorParts(TAMBO::Structure &structure);
};

inline TAMBO::Structure &AllChanges::complex(const std::string &name)
{
    TAMBO::StructureRecord record;
    record.name = name;
    record.chains.push_back(chainRecord("A", letters()));
    TAMBO::ResidueRecord ligand = residueRecord("ATP", 'X', "900", 3);
    ligand.isAminoAcid = false;
    record.chains.back().residues.push_back(std::move(ligand));
    record.waters.add("A", {TAMBO::Vector<float, 3>(1, 2, 3), 20, 901});
    const std::size_t residues = record.chains.back().residues.size();
    record.bonds = {{{0, 0, 0}, {0, std::uint32_t(residues - 1), 0}, TAMBO::BondKind::Metal}};
    record.furtherModels.assign(
        2, std::vector<TAMBO::Vector<float, 3>>(2 * residues, TAMBO::Vector<float, 3>(1, 2, 3)));
    record.waters.add("W", {TAMBO::Vector<float, 3>(-5, 4, 0), 30, 1, 0, 'B'});
    return *TAMBO::ObjectFactory::adopt(std::move(record));
}

inline TAMBO::Alignment &AllChanges::annotated(const std::string &name)
{
    TAMBO::AlignmentTable::Rows rows;
    for (unsigned i = 2 + below(3); i > 0; --i) {
        const std::string end = letters();
        const std::string text = letters() + end;
        TAMBO::Peptide &sequence = peptide(name + std::to_string(i), text);
        const std::uint32_t first = below(3);
        auto cells = TAMBO::OccupancyRow::filled(text.size() - first);
        const unsigned gaps = 1 + below(4);
        cells.insertGaps(2, gaps);
        TAMBO::RowLabel label;
        label.firstResidue = first;
        // One on a gap, and one that has none.
        label.chainBreaks = {{2, 2 + below(gaps)}, {4, {}}};
        label.description = "row " + std::to_string(i);
        rows.push_back(std::make_unique<TAMBO::AlignmentRow>(sequence, std::move(cells),
                                                             std::move(label), first));
    }
    auto made = TAMBO::AlignmentTable::make(name, std::move(rows), 20 + below(10));
    made->table().presetAnnotation(std::make_unique<TAMBO::AlignmentAnnotation>(
        std::vector<TAMBO::Annotation>{{"ID", name}},
        std::vector<TAMBO::Annotation>{{"SS", "HHHEEECCCHH"}, {"RF", "xxxx.xxxx.xxxx"}}));
    return static_cast<TAMBO::Alignment &>(space().add(std::move(made)));
}

// The residues of some columns, anywhere in a few more.
inline void AllChanges::realign(TAMBO::Alignment &alignment)
{
    TAMBO::AlignmentTable &table = alignment.table();
    if (alignment.width() < 3)
        return;
    const unsigned long begin = below(alignment.width() - 2);
    const TAMBO::AlignmentTable::Range range(begin, begin + 1 + below(alignment.width() - begin));
    const unsigned long count = range.second - begin + below(3);
    std::vector<TAMBO::OccupancyRow> rows;
    for (std::size_t i = 0; i < table.rowCount(); ++i) {
        const TAMBO::OccupancyRow &cells = table.row(i).cells();
        const std::uint32_t residues = cells.rank(range.second) - cells.rank(range.first);
        auto row = TAMBO::OccupancyRow::filled(residues);
        if (residues > 0 && residues < count) {
            const unsigned gaps = 1 + below(count - residues);
            row.insertGaps(below(residues), gaps);
        }
        rows.push_back(std::move(row));
    }
    TAMBO::replaceColumns(table, range, rows, count);
}

inline void AllChanges::colorParts(TAMBO::Structure &structure)
{
    TAMBO::Peptide &chain = *structure.chain(0);
    structure.SetColor(Color(below(5)));
    if (chain.atomCount(0) > 0)
        chain.atom(0, 0)->SetColor(Color(below(5)));
    for (std::size_t i = 0; i < chain.objectCount(); ++i) {
        chain.object(i)->SetColor(Color(below(5)));
        if (auto *const group = dynamic_cast<TAMBO::ResidueGroup *>(chain.object(i))) {
            group->Child(0)->SetColor(Color(below(5)));
            group->SetSeqId(TAMBO::SequenceNumber(int(below(1000))));
        }
    }
}

inline void AllChanges::changeAnything()
{
    const std::vector<TAMBO::Structure *> structures = all<TAMBO::Structure>();
    const std::vector<TAMBO::Alignment *> alignments = all<TAMBO::Alignment>();
    const std::vector<TAMBO::Peptide *> peptides = sequences();
    const unsigned kind = below(16);
    if (below(6) == 0)
        const StepName named("step " + std::to_string(made));
    if (kind == 0) {
        complex("complex" + std::to_string(++made));
    } else if (kind == 1) {
        annotated("family" + std::to_string(++made));
    } else if (kind == 2 && !alignments.empty()) {
        realign(*alignments[below(alignments.size())]);
    } else if (kind == 3 && !structures.empty()) {
        const TAMBO::Superposition motion({{{0, 0, 0}, {float(below(9)), 1, 2}},
                                           {{1, 0, 0}, {float(below(9)), 2, 2}},
                                           {{0, 1, 0}, {float(below(9)), 1, 3}}});
        TAMBO::moveStructures({{structures[below(structures.size())], motion}});
    } else if (kind == 4 && !structures.empty()) {
        TAMBO::Structure &structure = *structures[below(structures.size())];
        if (structure.objectCount() > 0)
            colorParts(structure);
    } else if (kind == 5 && space().objectCount() > 0) {
        TAMBO::Compound *const object = *(space().begin() + below(space().objectCount()));
        const std::string key = "key" + std::to_string(below(2));
        for (unsigned i = below(3); i > 0; --i)
            PluginValues::Set(object, "test", key, std::to_string(below(4)));
        if (below(3) == 0)
            PluginValues::Remove(object, "test", key);
    } else if (kind == 6 && !peptides.empty()) {
        TAMBO::Peptide &sequence = *peptides[below(peptides.size())];
        TAMBO::ResidueSelection residues(sequence.residueCount());
        for (std::size_t i = 0; i < sequence.residueCount(); ++i) {
            if (below(4) != 0)
                residues.set(i, i + 1, true);
        }
        sequence.setColors(residues, TAMBO::LetterColors(Color(below(4))));
    } else if (kind == 7 && !peptides.empty()) {
        TAMBO::Peptide &chain = *peptides[below(peptides.size())];
        if (chain.objectCount() > 0)
            TAMBO::DataMaker::Destroy(chain.object(below(chain.objectCount())));
    } else if (kind == 8 && !alignments.empty()) {
        TAMBO::Alignment &alignment = *alignments[below(alignments.size())];
        if (alignment.width() > 0)
            alignment.range({below(alignment.width()), below(alignment.width() + 1)});
    } else {
        changeSomething();
    }
}

inline void AllChanges::workOnce()
{
    if (below(5) == 0) {
        ASSERT_TRUE(history.goTo(below(history.size() + 1)));
        return;
    }
    if (below(8) == 0 && space().objectCount() > 0) {
        TAMBO::Compound &object = **(space().begin() + below(space().objectCount()));
        if (below(2) == 0)
            history.markSaved(object);
        else
            history.markWritten(object);
        return;
    }
    const Guard guard(Publisher::Update, space());
    for (unsigned i = 1 + below(4); i > 0; --i) {
        changeAnything();
        if (below(12) == 0) {
            const TAMBO::ArrivalScope arrival;
            bringSomething();
        }
    }
}

inline void AllChanges::draw(TAMBO::Compound &object, std::ostream &out, const std::string &indent)
{
    out << indent << TAMBO::identityOf(object) << ' ' << object.TypeName() << ' ' << object.Name()
        << ' ' << std::hex << object.OwnColor().argb() << std::dec;
    for (const std::string &plugin : PluginValues::Plugins(&object)) {
        for (const std::string &key : PluginValues::Keys(&object, plugin))
            out << ' ' << key << '=' << PluginValues::Get(&object, plugin, key).value_or("");
    }
    out << '\n';
    if (auto *const alignment = dynamic_cast<TAMBO::Alignment *>(&object)) {
        drawRows(*alignment, out);
        return;
    }
    for (const TAMBO::BondDetails &bond : TAMBO::StructureDetails::bonds(&object))
        out << "  bond " << bond.first << ' ' << bond.second << '\n';
    for (std::size_t i = 1; i < TAMBO::StructureDetails::modelCount(&object); ++i) {
        for (const TAMBO::Vertex &place : TAMBO::StructureDetails::modelPositions(&object, i))
            out << "  model " << place.x() << ' ' << place.y() << ' ' << place.z() << '\n';
    }
    for (const TAMBO::WaterDetails &water : TAMBO::StructureDetails::waters(&object))
        out << "  water " << water.chain << water.number << ' ' << water.position.x() << ' '
            << water.position.y() << ' ' << water.position.z() << '\n';
    const TAMBO::Peptide *const peptide = TAMBO::Peptide::from(&object);
    if (peptide != nullptr)
        drawResidues(*peptide, out);
    const std::size_t first = peptide == nullptr ? 0 : peptide->residueCount();
    for (std::size_t i = first; i < object.ChildCount(); ++i)
        draw(*object.Child(i), out, indent + "  ");
    std::vector<TAMBO::Compound *> atoms;
    if (peptide != nullptr)
        peptide->appendAtoms(atoms);
    for (const TAMBO::Compound *atom : atoms) {
        const auto place = atom->Position().coordinates();
        out << "  " << place[0] << ' ' << place[1] << ' ' << place[2] << ' ' << std::hex
            << atom->OwnColor().argb() << std::dec << '\n';
    }
}

inline void AllChanges::drawRows(TAMBO::Alignment &alignment, std::ostream &out)
{
    const TAMBO::AlignmentTable &table = alignment.table();
    for (std::size_t i = 0; i < table.rowCount(); ++i) {
        const TAMBO::AlignmentRow &row = table.row(i);
        out << "  " << TAMBO::identityOf(row.sequence()) << ' ' << row.name() << ' '
            << alignment.GetSequence(i, false) << ' ';
        for (const TAMBO::ResidueRun &run : row.residueRuns(0, row.cells().residues()))
            out << run.index << '+' << run.count << ' ';
        for (const auto &column : row.breakColumns())
            out << '/' << (column ? std::to_string(*column) : "-");
        out << (row.label() == nullptr ? std::string() : row.label()->description) << '\n';
    }
    if (table.annotation() == nullptr)
        return;
    for (const TAMBO::Annotation &line : table.annotation()->lines(table.width()))
        out << "  " << line.tag << ' ' << line.text << '\n';
}

inline void AllChanges::drawResidues(const TAMBO::Peptide &peptide, std::ostream &out)
{
    for (std::size_t i = 0; i < peptide.residueCount(); ++i) {
        const TAMBO::ResiduePlace place = peptide.resolve(i);
        const TAMBO::Element *const element = peptide.elementAt(i);
        out << "  " << peptide.letter(i) << ' ' << peptide.number(i).getValue() << ' ' << std::hex
            << peptide.ownColor(i).argb() << std::dec << ' ' << TAMBO::identityOf(*place.peptide)
            << ' ' << place.index << ' ' << (element == nullptr ? 0 : TAMBO::identityOf(*element))
            << '\n';
    }
}
