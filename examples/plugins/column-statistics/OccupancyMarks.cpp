// SPDX-License-Identifier: GPL-3.0-or-later
#include "OccupancyMarks.h"

#include "StatisticsModel.h"

#include <AlignmentWindow.h>

#include <QPainter>

OccupancyMarks::OccupancyMarks(TAMBO::AlignmentWindow &window, const StatisticsModel &model)
    : CellOverlay(window, TAMBO::WindowArea::Header), m_Model(model)
{
    refresh();
}

void OccupancyMarks::refresh() const
{
    if (window())
        repaint(window()->visibleCells());
}

void OccupancyMarks::paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
                           const TAMBO::OverlayExposure &exposed)
{
    constexpr int kThickness = 2;
    for (unsigned long col = exposed.cells.colBegin; col < exposed.cells.colEnd; ++col) {
        if (!m_Model.isSparse(col))
            continue;
        // The lower edge, next to the cells: the rest of the header has texts.
        const QRect column =
            window.blockRect({0, window.rows(), col, col + 1}, TAMBO::WindowArea::Header);
        painter.fillRect(column.left(), column.bottom() + 1 - kThickness, column.width(),
                         kThickness, QColor(kSparseColor));
    }
}
