// SPDX-License-Identifier: GPL-3.0-or-later
#include "GridPointer.h"

#include "Alignment.h"
#include "AlignmentDetails.h"
#include "AlignmentWindow.h"
#include "CellEventFilter.h"
#include "StructureDetails.h"

#include <QMouseEvent>

#include <cstdint>
#include <vector>

namespace structures {

// Of one window. It looks, and takes nothing.
class GridPointer::Listener final : public TAMBO::CellEventFilter
{
public:
    Listener(TAMBO::AlignmentWindow &window, GridPointer &pointer)
        : CellEventFilter(window, TAMBO::WindowArea::Cells), m_Pointer(pointer)
    { }

    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea, QEvent &event) override
    {
        if (event.type() == QEvent::Leave) {
            m_Pointer.show({});
        } else if (event.type() == QEvent::MouseMove) {
            const auto &mouse = static_cast<const QMouseEvent &>(event);
            const TAMBO::Alignment *const alignment = window.alignment();
            const auto cell = window.cellAt(mouse.position().toPoint());
            if (mouse.buttons() == Qt::NoButton && alignment != nullptr && cell)
                m_Pointer.point(*alignment, cell->row, cell->col);
            else
                m_Pointer.show({});
        }
        return false;
    }

private:
    GridPointer &m_Pointer;
};

GridPointer::GridPointer()
{
    for (TAMBO::AlignmentWindow *const window : TAMBO::AlignmentWindow::All())
        m_Listeners.push_back(std::make_unique<Listener>(*window, *this));
}

GridPointer::~GridPointer() = default;

void GridPointer::windowOpened(TAMBO::AlignmentWindow &window)
{
    m_Listeners.push_back(std::make_unique<Listener>(window, *this));
}

void GridPointer::windowGoing(TAMBO::AlignmentWindow &window)
{
    std::erase_if(m_Listeners, [&](const auto &own) { return own->window() == &window; });
    show({});
}

void GridPointer::forget()
{
    m_Sequence = nullptr;
    m_Residues.clear();
    show({});
}

void GridPointer::point(const TAMBO::Alignment &alignment, unsigned long row, unsigned long column)
{
    if (row >= alignment.height() || column >= alignment.width() || !alignment.hasPositions(row) ||
        alignment.residueCount(row, column + 1) == alignment.residueCount(row, column))
        return show({});
    const TAMBO::Compound *const sequence = alignment.GetSeq(row);
    if (sequence != m_Sequence) {
        m_Sequence = sequence;
        m_Residues.clear();
        for (const TAMBO::ResidueSource &source : TAMBO::StructureDetails::sources(sequence))
            m_Residues.push_back({source.chain, source.child});
    }
    const std::vector<std::uint32_t> shown = TAMBO::AlignmentDetails::shownResidues(alignment, row);
    const std::uint32_t residue = shown[alignment.residueCount(row, column)];
    show(residue < m_Residues.size() && m_Residues[residue].chain != nullptr ? m_Residues[residue]
                                                                             : Residue());
}

void GridPointer::show(const Residue &residue)
{
    if (residue == m_Shown)
        return;
    m_Shown = residue;
    emit pointed(residue.chain, residue.child);
}

} // namespace structures

#include "moc_GridPointer.cpp"
