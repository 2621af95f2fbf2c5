// SPDX-License-Identifier: GPL-3.0-or-later
#include "HitMarks.h"

#include "Alignment.h"
#include "AlignmentWindow.h"

#include <QPainter>

#include <algorithm>

namespace companion {

namespace {

constexpr int kThin = 1;
constexpr int kThick = 3;
constexpr QColor kHit(0, 0, 0);
constexpr QColor kPresent(208, 0, 112);

} // namespace

HitMarks::HitMarks(TAMBO::AlignmentWindow &window)
    : CellOverlay(window, TAMBO::WindowArea::Cells | TAMBO::WindowArea::Names, 5)
{ }

HitMarks::~HitMarks() = default;

void HitMarks::setRun(const FindRun *run)
{
    m_Run = run;
    m_Present.reset();
    refresh();
}

void HitMarks::setPresent(std::optional<std::size_t> hit)
{
    m_Present = hit;
    refresh();
}

void HitMarks::refresh() const
{
    if (window() != nullptr)
        repaint(window()->visibleCells(), kThick);
}

void HitMarks::paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
                     const TAMBO::OverlayExposure &exposed)
{
    if (m_Run == nullptr || window.alignment() == nullptr)
        return;
    const std::vector<Hit> &hits = m_Run->hits();
    auto hit = std::ranges::lower_bound(hits, exposed.cells.rowBegin, {}, &Hit::row);
    for (; hit != hits.end() && hit->row < exposed.cells.rowEnd; ++hit) {
        if (hit->isName() != (exposed.area == TAMBO::WindowArea::Names))
            continue;
        const auto columns =
            hit->isName() ? std::pair(0UL, 1UL) : columnsOf(*window.alignment(), *hit);
        const bool isPresent = m_Present == static_cast<std::size_t>(hit - hits.begin());
        const int thickness = isPresent ? kThick : kThin;
        painter.setPen(QPen(isPresent ? kPresent : kHit, thickness));
        const QRect place =
            window.blockRect({hit->row, hit->row + 1, columns.first, columns.second}, exposed.area);
        painter.drawRect(place.adjusted(0, 0, -1, -1));
    }
}

} // namespace companion
