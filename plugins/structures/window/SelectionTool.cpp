// SPDX-License-Identifier: GPL-3.0-or-later
#include "SelectionTool.h"

#include "Compound.h"
#include "Selecting.h"
#include "StructureView.h"

#include <QLabel>

#include <algorithm>

namespace structures {

SelectionTool::SelectionTool(StructureScene &scene, StructureView &view, QLabel &named)
    : m_Scene(scene), m_View(view), m_Named(named)
{
    connect(&view, &StructureView::pointed, this, &SelectionTool::point);
    connect(&view, &StructureView::clicked, this, &SelectionTool::click);
    connect(&view, &StructureView::framed, this, &SelectionTool::selectFramed);
    connect(&m_Grid, &GridPointer::pointed, this, &SelectionTool::pointInGrid);
}

void SelectionTool::forgetCells()
{
    m_Cells.forget();
    m_Grid.forget();
}

void SelectionTool::pointInGrid(const TAMBO::Compound *chain, std::uint32_t child)
{
    std::vector<Pick> picks;
    QString text = QString::fromStdString(m_Scene.remark());
    if (const auto place = m_Scene.placeOf(chain, child)) {
        const Molecule &molecule = place->structure->molecule();
        const std::uint32_t index = place->place.residue;
        const MoleculeResidue &residue = molecule.residues[index];
        text = QString::fromStdString(place->structure->describe(place->place));
        // However it is drawn.
        const Pick first = m_Scene.firstPickOf(*place->structure);
        picks.push_back(first + pickOfResidue(molecule, index));
        for (std::uint32_t a = 0; a < residue.atomCount; ++a)
            picks.push_back(first + pickOfAtom(residue.firstAtom + a));
    }
    m_Named.setText(text);
    m_View.outline(std::move(picks));
}

void SelectionTool::selectAll() const
{
    std::vector<TAMBO::Compound *> all;
    for (const auto &structure : m_Scene.structures())
        all.push_back(structure->object());
    select(all, Selecting::Only);
}

void SelectionTool::point(Pick pick)
{
    const auto place = m_Scene.placeOf(pick);
    m_Named.setText(QString::fromStdString(nameOf(pick)));
    if (!place)
        return m_Cells.clear();
    const std::uint32_t residue = place->place.residue;
    m_Cells.show(place->structure->chain(place->structure->molecule().residues[residue].chain),
                 place->structure->childOf(residue));
}

std::string SelectionTool::nameOf(Pick pick) const
{
    if (const auto place = m_Scene.placeOf(pick))
        return place->structure->describe(place->place);
    if (const auto water = m_Scene.waterOf(pick))
        return water->structure->describeWater(water->water);
    return m_Scene.remark();
}

std::vector<TAMBO::Compound *> SelectionTool::stretchTo(const StructureScene::Place &place) const
{
    const Molecule &molecule = place.structure->molecule();
    std::uint32_t from = place.place.residue;
    std::uint32_t to = from;
    if (m_StretchStructure == place.structure->object() &&
        m_StretchResidue < molecule.residues.size() &&
        molecule.residues[m_StretchResidue].chain == molecule.residues[from].chain) {
        from = std::min(m_StretchResidue, from);
        to = std::max(m_StretchResidue, to);
    }
    std::vector<TAMBO::Compound *> stretch;
    for (std::uint32_t i = from; i <= to; ++i)
        if (TAMBO::Compound *const residue = place.structure->residue(i))
            stretch.push_back(residue);
    return stretch;
}

void SelectionTool::click(Pick pick, Qt::KeyboardModifiers modifiers)
{
    if (!m_Selects)
        return;
    // A water is no object that could be selected: it is named, and nothing else happens.
    if (m_Scene.waterOf(pick)) {
        m_Named.setText(QString::fromStdString(nameOf(pick)));
        return;
    }
    const auto place = m_Scene.placeOf(pick);
    if (!place) {
        if (!(modifiers & (Qt::ControlModifier | Qt::ShiftModifier)))
            select({}, Selecting::Only);
        return;
    }
    if (modifiers & Qt::ShiftModifier) {
        select(stretchTo(*place), Selecting::Add);
        bringIntoSight(*place);
        return;
    }
    m_StretchStructure = place->structure->object();
    m_StretchResidue = place->place.residue;
    if (TAMBO::Compound *const residue = place->structure->residue(place->place.residue))
        select({residue}, modifiers & Qt::ControlModifier ? Selecting::Toggle : Selecting::Only);
    bringIntoSight(*place);
}

void SelectionTool::bringIntoSight(const StructureScene::Place &place)
{
    const std::uint32_t index = place.place.residue;
    const TAMBO::Compound *const residue = place.structure->residue(index);
    // One that was taken away from the selection is not what is looked for.
    if (residue == nullptr || !residue->IsSelected())
        return;
    m_Cells.bringIntoSight(
        place.structure->chain(place.structure->molecule().residues[index].chain),
        place.structure->childOf(index));
}

void SelectionTool::selectFramed(const std::vector<Pick> &picks,
                                 Qt::KeyboardModifiers modifiers) const
{
    std::vector<TAMBO::Compound *> residues;
    for (const Pick pick : picks)
        if (const auto place = m_Scene.placeOf(pick))
            if (TAMBO::Compound *const residue = place->structure->residue(place->place.residue))
                residues.push_back(residue);
    std::sort(residues.begin(), residues.end());
    residues.erase(std::unique(residues.begin(), residues.end()), residues.end());
    select(residues, modifiers & Qt::ControlModifier ? Selecting::Add : Selecting::Only);
}

} // namespace structures

#include "moc_SelectionTool.cpp"
