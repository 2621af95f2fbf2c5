// SPDX-License-Identifier: GPL-3.0-or-later
#include "StyleCommands.h"

#include <algorithm>

namespace structures {

namespace {

// Angstrom, around atoms that are in the middle of what is to be seen.
constexpr float kAroundSelection = 6;

} // namespace

StyleCommands::StyleCommands(StructureScene &scene) : m_Scene(scene) { }

StyleCommands::Residues StyleCommands::selected() const
{
    Residues all;
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

StyleCommands::Residues StyleCommands::residuesOf(const ListedPart &part) const
{
    Residues residues;
    for (const auto &structure : m_Scene.structures()) {
        const bool isThis = residues.size() == part.structure;
        std::vector<bool> own(structure->molecule().residues.size(), isThis && part.chain == kNone);
        if (isThis && part.chain < structure->molecule().chains.size()) {
            const MoleculeChain &chain = structure->molecule().chains[part.chain];
            std::fill_n(own.begin() + std::ptrdiff_t(chain.firstResidue), chain.residueCount, true);
        }
        residues.push_back(std::move(own));
    }
    return residues;
}

bool StyleCommands::isThere(const ListedPart &part) const
{
    return part.structure < m_Scene.structures().size() &&
           (part.chain == kNone ||
            part.chain < m_Scene.structures()[part.structure]->molecule().chains.size());
}

void StyleCommands::setHidden(const ListedPart &part, bool isHidden)
{
    ViewedStructure &structure = *m_Scene.structures()[part.structure];
    const MoleculeChain &chain = structure.molecule().chains[part.chain];
    std::vector<bool> hidden = structure.hidden();
    hidden.resize(structure.molecule().residues.size());
    std::fill_n(hidden.begin() + std::ptrdiff_t(chain.firstResidue), chain.residueCount, isHidden);
    structure.setHidden(std::move(hidden));
}

void StyleCommands::show(const ListedPart &part)
{
    if (!isThere(part))
        return;
    ViewedStructure &structure = *m_Scene.structures()[part.structure];
    structure.setVisible(true);
    if (part.chain == kNone)
        structure.setHidden({});
    else
        setHidden(part, false);
    emit changed();
}

void StyleCommands::setShown(const ListedPart &part, bool isShown)
{
    if (!isThere(part))
        return;
    if (part.chain == kNone)
        m_Scene.structures()[part.structure]->setVisible(isShown);
    else
        setHidden(part, !isShown);
    emit changed();
}

void StyleCommands::showOnly(const ListedPart &part)
{
    if (!isThere(part))
        return;
    for (std::size_t s = 0; s < m_Scene.structures().size(); ++s) {
        ViewedStructure &structure = *m_Scene.structures()[s];
        structure.setVisible(s == part.structure);
        if (s != part.structure || part.chain == kNone)
            continue;
        for (std::uint32_t c = 0; c < structure.molecule().chains.size(); ++c)
            setHidden({s, c}, c != part.chain);
    }
    show(part);
}

void StyleCommands::setStyle(Style style, const Residues &chosen)
{
    for (std::size_t i = 0; i < m_Scene.structures().size(); ++i)
        m_Scene.structures()[i]->setStyle(style, chosen.empty() ? std::vector<bool>() : chosen[i]);
    emit changed();
}

void StyleCommands::setSideChains(bool shown, const Residues &chosen)
{
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
    hideSelected(false);
}

void StyleCommands::hideOthers()
{
    hideSelected(true);
}

void StyleCommands::hideSelected(bool others)
{
    const Residues chosen = selected();
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

void StyleCommands::setWatersShown(bool shown)
{
    m_Scene.setWatersShown(shown);
    emit changed();
}

void StyleCommands::setModels(const ModelChoice &choice)
{
    m_Scene.setModels(choice);
    emit changed();
}

void StyleCommands::showRowsOf(TAMBO::Alignment *alignment)
{
    m_Scene.setRowsOf(alignment);
    m_Scene.refresh();
    emit changed();
}

void StyleCommands::stepModel(bool forward)
{
    const std::size_t count = m_Scene.modelCount();
    if (count < 2)
        return;
    const ModelChoice now = m_Scene.models();
    const std::size_t index = std::min(now.all ? 0 : now.index, count - 1);
    setModels({false, (index + (forward ? 1 : count - 1)) % count});
}

std::optional<Bounds> StyleCommands::boundsOf(const Residues &chosen) const
{
    std::vector<Vec3> places;
    for (std::size_t s = 0; s < chosen.size() && s < m_Scene.structures().size(); ++s) {
        const ViewedStructure &structure = *m_Scene.structures()[s];
        for (std::uint32_t i = 0; i < chosen[s].size(); ++i)
            if (chosen[s][i])
                places.push_back(structure.positionOf(i) - m_Scene.origin());
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
