// SPDX-License-Identifier: GPL-3.0-or-later
#include "PositionEdit.h"

#include "Atom.h"
#include "ChangeScope.h"
#include "MotionEdit.h"
#include "Peptide.h"
#include "Structure.h"
#include "StructureExtras.h"
#include "StructureLock.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace TAMBO {

bool moveStructures(const std::vector<StructureMotion> &motions)
{
    std::vector<Structure *> structures;
    for (const StructureMotion &moved : motions) {
        const Compound *const locked = lockWithin(*moved.structure);
        if (locked != nullptr && !mayChange(*locked))
            return false;
        structures.push_back(moved.structure);
    }
    if (structures.empty())
        return true;
    const ChangeScope scope(Publisher::Update);
    auto inverse = std::make_unique<PositionEdit>(std::move(structures));
    for (const StructureMotion &moved : motions)
        PositionEdit::move(moved);
    recordInverse(std::move(inverse));
    // What is kept as the file has it goes along by a number or two, however much there is.
    for (const StructureMotion &moved : motions) {
        if (const StructureExtras *const extras = moved.structure->extras())
            recordInverse(
                MotionEdit(*moved.structure, extras->motion.followedBy(moved.motion)).apply());
    }
    return true;
}

void PositionEdit::updateChains(const Structure &structure)
{
    for (std::size_t i = 0; i < structure.objectCount(); ++i)
        structure.chain(i)->updatePositions();
}

template <typename Visit> void PositionEdit::forEachAtom(const Structure &structure, Visit visit)
{
    std::vector<Compound *> atoms;
    for (std::size_t i = 0; i < structure.objectCount(); ++i) {
        atoms.clear();
        structure.chain(i)->appendAtoms(atoms);
        for (Compound *atom : atoms) {
            auto &found = static_cast<Atom &>(*atom);
            if (found.m_Position.isDefined())
                visit(found);
        }
    }
}

PositionEdit::PositionEdit(std::vector<Structure *> structures)
    : m_Structures(std::move(structures))
{
    for (const Structure *structure : m_Structures)
        forEachAtom(*structure,
                    [&](const Atom &atom) { m_Places.push_back(atom.m_Position.coordinates()); });
    m_Places.shrink_to_fit();
}

PositionEdit::~PositionEdit() = default;

void PositionEdit::move(const StructureMotion &moved)
{
    forEachAtom(*moved.structure,
                [&](Atom &atom) { atom.m_Position = moved.motion(atom.m_Position); });
    updateChains(*moved.structure);
}

std::unique_ptr<Edit> PositionEdit::apply()
{
    exchange();
    auto inverse = std::make_unique<PositionEdit>(std::vector<Structure *>());
    inverse->m_Structures = std::move(m_Structures);
    inverse->m_Places = std::move(m_Places);
    return inverse;
}

void PositionEdit::exchange()
{
    std::size_t next = 0;
    for (const Structure *structure : m_Structures) {
        forEachAtom(*structure, [&](Atom &atom) {
            const Vector<float, 3> place = m_Places[next];
            m_Places[next++] = atom.m_Position.coordinates();
            atom.m_Position = Vertex(place[0], place[1], place[2]);
        });
        updateChains(*structure);
    }
}

std::size_t PositionEdit::bytes() const
{
    return sizeof(*this) + m_Structures.capacity() * sizeof(void *) +
           m_Places.capacity() * sizeof(m_Places[0]);
}

Compound *PositionEdit::subject() const
{
    return m_Structures.front();
}

void PositionEdit::appendSubjects(std::vector<const Compound *> &out) const
{
    out.insert(out.end(), m_Structures.begin(), m_Structures.end());
}

void PositionEdit::store(EditWriter &out) const
{
    out.tag(EditTag::Places);
    out.number(m_Structures.size());
    for (const Structure *structure : m_Structures)
        out.reference(*structure);
    out.number(m_Places.size());
    for (const Vector<float, 3> &place : m_Places) {
        for (std::size_t i = 0; i < 3; ++i)
            out.real(place[i]);
    }
}

void PositionEdit::storeInverse(EditWriter &out) const
{
    PositionEdit(m_Structures).store(out);
}

bool PositionEdit::fits() const
{
    std::size_t atoms = 0;
    for (const Structure *structure : m_Structures)
        forEachAtom(*structure, [&](const Atom &) { ++atoms; });
    return atoms == m_Places.size();
}

LoadedEdit PositionEdit::load(EditReader &in)
{
    auto edit = std::make_unique<PositionEdit>(std::vector<Structure *>());
    for (std::size_t count = in.count(); count > 0; --count) {
        auto *const structure = in.reference<Structure>();
        if (std::ranges::find(edit->m_Structures, structure) != edit->m_Structures.end())
            in.fail("a structure is moved twice");
        edit->m_Structures.push_back(structure);
    }
    if (edit->m_Structures.empty())
        in.fail("nothing is moved");
    edit->m_Places.resize(in.count(3 * sizeof(float)));
    for (Vector<float, 3> &place : edit->m_Places) {
        for (std::size_t i = 0; i < 3; ++i) {
            place[i] = in.real32();
            if (!std::isfinite(place[i]))
                in.fail("a place is nowhere");
        }
    }
    if (in.failed())
        return in.failure();
    return LoadedEdit(std::move(edit));
}

const Compound *PositionEdit::guarded() const
{
    for (const Structure *structure : m_Structures) {
        if (const Compound *const locked = lockWithin(*structure))
            return locked;
    }
    return m_Structures.front();
}

} // namespace TAMBO
