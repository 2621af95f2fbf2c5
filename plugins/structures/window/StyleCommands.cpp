// SPDX-License-Identifier: GPL-3.0-or-later
#include "StyleCommands.h"

#include <algorithm>

namespace structures {

namespace {

// Angstrom, around atoms that are in the middle of what is to be seen.
constexpr float kAroundSelection = 6;

} // namespace

StyleCommands::StyleCommands(StructureScene &scene) : m_Scene(scene) { }

std::vector<std::vector<bool>> StyleCommands::selected() const
{
    std::vector<std::vector<bool>> all;
    bool hasAny = false;
    for (const auto &structure : m_Scene.structures()) {
        std::vector<bool> own(structure->molecule().residues.size());
        for (std::uint32_t i = 0; i < own.size(); ++i) {
            const TAMBO::Compound *const residue = structure->residue(i);
            own[i] = residue && residue->IsSelected();
            hasAny = hasAny || own[i];
        }
        all.push_back(std::move(own));
    }
    if (!hasAny)
        all.clear();
    return all;
}

void StyleCommands::setStyle(Style style)
{
    const std::vector<std::vector<bool>> chosen = selected();
    for (std::size_t i = 0; i < m_Scene.structures().size(); ++i)
        m_Scene.structures()[i]->setStyle(style, chosen.empty() ? std::vector<bool>() : chosen[i]);
    emit changed();
}

void StyleCommands::setSideChains(bool shown)
{
    const std::vector<std::vector<bool>> chosen = selected();
    for (std::size_t s = 0; s < m_Scene.structures().size(); ++s) {
        ViewedStructure &structure = *m_Scene.structures()[s];
        std::vector<ResidueStyle> styles = structure.styles();
        for (std::size_t i = 0; i < styles.size(); ++i)
            if (chosen.empty() || chosen[s][i])
                styles[i].hasSideChain = shown;
        structure.setStyles(std::move(styles));
    }
    emit changed();
}

void StyleCommands::hideSelection()
{
    hide(false);
}

void StyleCommands::hideOthers()
{
    hide(true);
}

void StyleCommands::hide(bool others)
{
    const std::vector<std::vector<bool>> chosen = selected();
    if (chosen.empty())
        return;
    for (std::size_t s = 0; s < m_Scene.structures().size(); ++s) {
        ViewedStructure &structure = *m_Scene.structures()[s];
        std::vector<bool> hidden = structure.hidden();
        hidden.resize(structure.molecule().residues.size());
        for (std::size_t i = 0; i < hidden.size(); ++i)
            if (chosen[s][i] != others)
                hidden[i] = true;
        structure.setHidden(std::move(hidden));
    }
    emit changed();
}

void StyleCommands::showAll()
{
    for (const auto &structure : m_Scene.structures()) {
        structure->setVisible(true);
        structure->setHidden({});
    }
    emit changed();
}

std::optional<Bounds> StyleCommands::selectedBounds() const
{
    std::vector<Vec3> places;
    for (const auto &structure : m_Scene.structures())
        for (std::uint32_t i = 0; i < structure->molecule().residues.size(); ++i) {
            const TAMBO::Compound *const residue = structure->residue(i);
            if (residue && residue->IsSelected())
                places.push_back(structure->positionOf(i) - m_Scene.origin());
        }
    if (places.empty())
        return std::nullopt;
    Bounds bounds;
    for (const Vec3 place : places)
        bounds.centre = bounds.centre + place * (1 / float(places.size()));
    for (const Vec3 place : places)
        bounds.radius = std::max(bounds.radius, distance(place, bounds.centre));
    bounds.radius += kAroundSelection;
    return bounds;
}

} // namespace structures

#include "moc_StyleCommands.cpp"
