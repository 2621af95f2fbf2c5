// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnFrame.h"

#include <AlignmentWindow.h>

#include <QPainter>

namespace {

constexpr int kThickness = 2;

} // namespace

ColumnFrame::ColumnFrame(TAMBO::AlignmentWindow &window, unsigned long column)
    : CellOverlay(window, TAMBO::WindowArea::Cells), m_Column(column)
{
    repaint({0, window.rows(), column, column + 1}, kThickness);
}

void ColumnFrame::paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
                        const TAMBO::OverlayExposure &)
{
    // On the edge of the cells, where no letter is.
    painter.setPen(QPen(Qt::black, kThickness));
    painter.drawRect(window.blockRect({0, window.rows(), m_Column, m_Column + 1}));
}
