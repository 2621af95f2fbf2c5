// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "GridPointer.h"
#include "PointedCells.h"
#include "StructureScene.h"

#include <QObject>

#include <string>
#include <vector>

class QLabel;

namespace structures {

class StructureView;

// What the pointer does over the picture: it names what is there, with its cell in alignments, and
// selects.
class SelectionTool final : public QObject
{
    Q_OBJECT

public:
    // named: shows what is pointed at. All of them outlive this.
    SelectionTool(StructureScene &scene, StructureView &view, QLabel &named);

    // Cells of alignments may be others than before.
    void forgetCells();

    // Whether clicks select. They do at first.
    void setSelecting(bool on) noexcept { m_Selects = on; }
    void selectAll() const;

private:
    [[nodiscard]] std::string nameOf(Pick pick) const;
    void point(Pick pick);
    // What the pointer is over in the grid of an alignment.
    void pointInGrid(const TAMBO::Compound *chain, std::uint32_t child);
    void click(Pick pick, Qt::KeyboardModifiers modifiers);
    void selectFramed(const std::vector<Pick> &picks, Qt::KeyboardModifiers modifiers) const;
    // Everything of a chain between the residue that was clicked last and this one.
    [[nodiscard]] std::vector<TAMBO::Compound *>
    stretchTo(const StructureScene::Place &place) const;
    // In the windows that show alignments.
    void bringIntoSight(const StructureScene::Place &place);

    StructureScene &m_Scene;
    StructureView &m_View;
    QLabel &m_Named;
    PointedCells m_Cells;
    GridPointer m_Grid;
    bool m_Selects = true;
    // Where a stretch begins: a structure and the number of a residue of it.
    const TAMBO::Compound *m_StretchStructure = nullptr;
    std::uint32_t m_StretchResidue = kNone;
};

} // namespace structures
