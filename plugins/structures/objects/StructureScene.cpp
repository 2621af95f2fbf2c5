// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureScene.h"

#include "Space.h"
#include "StructureDetails.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace structures {

namespace {

// Angstrom.
constexpr float kAroundAtoms = 2;

std::size_t s_Readings = 0;

std::vector<TAMBO::Compound *> loadedStructures()
{
    std::vector<TAMBO::Compound *> found;
    TAMBO::Space *const space = TAMBO::Space::instance();
    for (auto object = space->begin(); object != space->end(); ++object)
        if ((*object)->Kind() == TAMBO::CompoundKind::Structure)
            found.push_back(*object);
    return found;
}

} // namespace

StructureScene::StructureScene(std::function<void()> changed) : m_Changed(std::move(changed))
{
    refresh();
}

std::size_t StructureScene::readings() noexcept
{
    return s_Readings;
}

StructureScene::Changes StructureScene::refresh()
{
    read();
    return std::exchange(m_Changes, {});
}

void StructureScene::read()
{
    const std::vector<TAMBO::Compound *> loaded = loadedStructures();
    // Colors and marks are no reason to read anything again.
    const std::uint64_t revision = TAMBO::StructureDetails::revision();
    const bool isCurrent = revision == m_Revision;
    m_Revision = revision;
    std::vector<std::unique_ptr<ViewedStructure>> structures;
    for (TAMBO::Compound *const object : loaded) {
        const auto known =
            std::find_if(m_Structures.begin(), m_Structures.end(),
                         [object](const auto &own) { return own && own->object() == object; });
        if (known != m_Structures.end()) {
            if (!isCurrent) {
                m_Changes.places = (*known)->update() || m_Changes.places;
                ++s_Readings;
            }
            structures.push_back(std::move(*known));
        } else {
            structures.push_back(std::make_unique<ViewedStructure>(*object));
            structures.back()->setWatersShown(m_AreWatersShown);
            structures.back()->setModels(m_Models);
            m_Changes.structures = true;
            ++s_Readings;
        }
    }
    m_Changes.structures = m_Changes.structures || structures.size() != m_Structures.size();
    if (m_Structures.empty() && !structures.empty())
        m_Origin = structures.front()->molecule().centre;
    m_Structures = std::move(structures);
    m_Changes.places = m_Rows.refresh() || m_Changes.places;
    leaveOutChains();
    listChains();
}

void StructureScene::listChains()
{
    m_Chains.clear();
    for (const auto &structure : m_Structures)
        for (std::uint32_t i = 0; i < structure->molecule().chains.size(); ++i)
            m_Chains.emplace(structure->chain(i), std::pair(structure.get(), i));
}

void StructureScene::leaveOutChains()
{
    for (const auto &structure : m_Structures) {
        std::vector<bool> leftOut;
        if (m_Rows.alignment() != nullptr)
            for (std::uint32_t i = 0; i < structure->molecule().chains.size(); ++i)
                leftOut.push_back(!m_Rows.shows(structure->chain(i)));
        structure->setLeftOut(std::move(leftOut));
    }
}

Pick StructureScene::firstPickOf(const ViewedStructure &structure) const noexcept
{
    std::size_t first = 0;
    for (const auto &own : m_Structures) {
        if (own.get() == &structure)
            break;
        first += own->pickCount();
    }
    return Pick(first);
}

std::shared_ptr<const PictureScene> StructureScene::picture()
{
    auto scene = std::make_shared<PictureScene>();
    constexpr float kLimit = std::numeric_limits<float>::max();
    Vec3 least{kLimit, kLimit, kLimit};
    Vec3 most = -least;
    const auto forEachAtom = [this](const auto &visit) {
        for (const auto &structure : m_Structures)
            if (structure->isInPicture())
                for (const MoleculeAtom &atom : structure->molecule().atoms)
                    visit(atom.position + (structure->molecule().centre - m_Origin));
        for (const auto &structure : m_Structures) {
            const Vec3 shift = structure->molecule().centre - m_Origin;
            if (m_AreWatersShown && structure->isInPicture())
                for (const Vec3 water : structure->molecule().waters)
                    visit(water + shift);
            if (m_Models.all && structure->isInPicture())
                for (const Sphere &sphere : structure->shapes()->spheres)
                    visit(sphere.centre + shift);
        }
    };
    for (const auto &structure : m_Structures) {
        if (!structure->isInPicture() || structure->molecule().isEmpty())
            continue;
        scene->shapes.push_back(structure->shapes());
        scene->parts.push_back({scene->shapes.back().get(), firstPickOf(*structure),
                                structure->molecule().centre - m_Origin});
    }
    if (scene->parts.empty())
        return scene;
    forEachAtom([&](Vec3 place) {
        least = {std::min(least.x, place.x), std::min(least.y, place.y),
                 std::min(least.z, place.z)};
        most = {std::max(most.x, place.x), std::max(most.y, place.y), std::max(most.z, place.z)};
    });
    scene->bounds.centre = (least + most) * 0.5F;
    forEachAtom([&](Vec3 place) {
        scene->bounds.radius =
            std::max(scene->bounds.radius, distance(place, scene->bounds.centre));
    });
    // Spheres and ribbons reach beyond the middles of atoms.
    scene->bounds.radius += kAroundAtoms;
    return scene;
}

std::string StructureScene::remark() const
{
    if (m_Structures.empty())
        return "No structure is loaded";
    std::string bare;
    for (const auto &structure : m_Structures) {
        if (!structure->molecule().isEmpty()) {
            if (structure->isInPicture())
                return {};
            continue;
        }
        bare += (bare.empty() ? "" : ", ") + structure->object()->Name();
    }
    return bare.empty() ? "All structures are hidden" : bare + ": no atom has a place";
}

Palette StructureScene::palette(Coloring coloring) const
{
    std::size_t count = 1;
    for (const auto &structure : m_Structures)
        count += structure->pickCount();
    Palette palette;
    palette.colors.resize(count);
    palette.marks.resize(count);
    Pick first = 0;
    for (const auto &structure : m_Structures) {
        structure->paint(coloring, palette, first);
        first += Pick(structure->pickCount());
    }
    return palette;
}

std::optional<StructureScene::Place> StructureScene::placeOf(Pick pick) const noexcept
{
    for (const auto &structure : m_Structures) {
        if (pick <= structure->pickCount()) {
            const ViewedStructure::Place place = structure->placeOf(pick);
            if (place.residue == kNone)
                return std::nullopt;
            return Place{structure.get(), place};
        }
        pick -= Pick(structure->pickCount());
    }
    return std::nullopt;
}

std::optional<StructureScene::Place> StructureScene::placeOf(const TAMBO::Compound *chain,
                                                             std::uint32_t child) const
{
    const auto known = m_Chains.find(chain);
    if (known == m_Chains.end())
        return std::nullopt;
    const auto [structure, index] = known->second;
    const std::uint32_t residue = structure->residueAt(index, child);
    if (residue == kNone)
        return std::nullopt;
    return Place{structure, {residue, kNone}};
}

std::optional<StructureScene::WaterPlace> StructureScene::waterOf(Pick pick) const noexcept
{
    for (const auto &structure : m_Structures) {
        if (pick <= structure->pickCount()) {
            const std::uint32_t water = structure->waterOf(pick);
            if (water == kNone)
                return std::nullopt;
            return WaterPlace{structure.get(), water};
        }
        pick -= Pick(structure->pickCount());
    }
    return std::nullopt;
}

void StructureScene::setWatersShown(bool shown)
{
    m_AreWatersShown = shown;
    for (const auto &structure : m_Structures)
        structure->setWatersShown(shown);
}

void StructureScene::setModels(const ModelChoice &choice)
{
    m_Models = choice;
    for (const auto &structure : m_Structures)
        structure->setModels(choice);
}

std::size_t StructureScene::modelCount() const noexcept
{
    std::size_t most = 0;
    for (const auto &structure : m_Structures)
        most = std::max(most, structure->modelCount());
    return most;
}

Vec3 StructureScene::positionOf(const Place &place) const
{
    const Molecule &molecule = place.structure->molecule();
    if (place.place.atom != kNone)
        return molecule.atoms[place.place.atom].position + (molecule.centre - m_Origin);
    return place.structure->positionOf(place.place.residue) - m_Origin;
}

void StructureScene::commUpdate()
{
    m_Changed();
}

void StructureScene::commAdd()
{
    m_Changed();
}

void StructureScene::commDelete()
{
    // Nothing that has gone may be asked any more, be it a structure or one of its chains.
    read();
    m_Changed();
}

} // namespace structures
