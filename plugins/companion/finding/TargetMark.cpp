// SPDX-License-Identifier: GPL-3.0-or-later
#include "TargetMark.h"

#include "AlignmentWindow.h"

#include <QPainter>

#include <chrono>
#include <utility>

namespace companion {

namespace {

constexpr int kThickness = 4;
constexpr auto kShown = std::chrono::seconds(4);
// Seen on all colors of residues, and on white.
constexpr QColor kOuter(0, 0, 0);
constexpr QColor kInner(255, 221, 0);

} // namespace

TargetMark::TargetMark(TAMBO::AlignmentWindow &window)
    : CellOverlay(window, TAMBO::WindowArea::Cells, 10)
{
    m_End.setSingleShot(true);
    m_End.setInterval(kShown);
    m_End.callOnTimeout([this] { hide(); });
}

TargetMark::~TargetMark() = default;

void TargetMark::show(const TAMBO::CellBlock &cells)
{
    hide();
    m_Cells = cells;
    repaint(m_Cells, kThickness);
    m_End.start();
}

void TargetMark::hide()
{
    m_End.stop();
    if (const TAMBO::CellBlock before = std::exchange(m_Cells, {}); !before.isEmpty())
        repaint(before, kThickness);
}

void TargetMark::paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
                       const TAMBO::OverlayExposure &)
{
    if (m_Cells.isEmpty())
        return;
    const QRect place = window.blockRect(m_Cells);
    painter.setPen(QPen(kOuter, kThickness));
    painter.drawRect(place);
    painter.setPen(QPen(kInner, 2));
    painter.drawRect(place);
}

} // namespace companion
