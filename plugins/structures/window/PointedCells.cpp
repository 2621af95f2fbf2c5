// SPDX-License-Identifier: GPL-3.0-or-later
#include "PointedCells.h"

#include "RowSources.h"

#include "AlignmentWindow.h"
#include "CellOverlay.h"

#include <QPainter>

#include <algorithm>

namespace structures {

namespace {

constexpr int kThickness = 2;

class CellFrame final : public TAMBO::CellOverlay
{
public:
    CellFrame(TAMBO::AlignmentWindow &window, const TAMBO::CellIndex &cell)
        : CellOverlay(window, TAMBO::WindowArea::Cells), m_Cell(cell)
    {
        repaint(TAMBO::CellBlock::of(cell), kThickness);
    }

    void paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
               const TAMBO::OverlayExposure &) override
    {
        // To be seen on any color.
        const QRect cell = window.cellRect(m_Cell);
        painter.setPen(QPen(Qt::white, kThickness + 2));
        painter.drawRect(cell);
        painter.setPen(QPen(Qt::black, kThickness));
        painter.drawRect(cell);
    }

private:
    TAMBO::CellIndex m_Cell;
};

} // namespace

PointedCells::PointedCells() = default;
PointedCells::~PointedCells() = default;

const PointedCells::Places &PointedCells::placesIn(const TAMBO::Alignment &alignment)
{
    const auto known = m_Known.find(&alignment);
    if (known != m_Known.end() && known->second.revision == alignment.layoutRevision())
        return known->second.places;
    Known &found = m_Known[&alignment];
    found = {alignment.layoutRevision(), {}};
    forEachSource(alignment, [&found](unsigned long row, std::size_t residue,
                                      const TAMBO::ResidueSource &source) {
        found.places.emplace(Residue(source.chain, source.child), Place(row, residue));
    });
    return found.places;
}

void PointedCells::show(const TAMBO::Compound *chain, std::uint32_t child)
{
    if (m_Shown == Residue(chain, child))
        return;
    clear();
    m_Shown = {chain, child};
    for (TAMBO::AlignmentWindow *const window : TAMBO::AlignmentWindow::All())
        for (const TAMBO::CellIndex &cell : cellsIn(*window, m_Shown))
            m_Frames.push_back(std::make_unique<CellFrame>(*window, cell));
}

void PointedCells::bringIntoSight(const TAMBO::Compound *chain, std::uint32_t child)
{
    for (TAMBO::AlignmentWindow *const window : TAMBO::AlignmentWindow::All()) {
        const std::vector<TAMBO::CellIndex> cells = cellsIn(*window, {chain, child});
        const QRect sight(QPoint(), window->visibleSize());
        const bool isSeen =
            std::any_of(cells.begin(), cells.end(), [&](const TAMBO::CellIndex &cell) {
                return sight.contains(window->cellRect(cell));
            });
        // With what stands around it.
        if (!cells.empty() && !isSeen)
            window->showCell(cells.front(), TAMBO::AlignmentWindow::Placement::Centred);
    }
}

std::vector<TAMBO::CellIndex> PointedCells::cellsIn(const TAMBO::AlignmentWindow &window,
                                                    const Residue &residue)
{
    std::vector<TAMBO::CellIndex> cells;
    const TAMBO::Alignment *const alignment = window.alignment();
    if (alignment == nullptr)
        return cells;
    const auto [begin, end] = placesIn(*alignment).equal_range(residue);
    for (auto place = begin; place != end; ++place) {
        const auto [row, index] = place->second;
        const unsigned long column = alignment->columnOfResidue(row, index);
        if (row < window.rows() && column < window.columns())
            cells.push_back({row, column});
    }
    return cells;
}

void PointedCells::clear()
{
    m_Frames.clear();
    m_Shown = {nullptr, 0};
}

void PointedCells::forget()
{
    clear();
    m_Known.clear();
}

} // namespace structures
