// SPDX-License-Identifier: GPL-3.0-or-later
// How plug-ins' observers, overlays and filters come to their window, and leave it.
#include "WindowUsers.h"

#include "AlignmentWindow.h"

#include <QWidget>

namespace TAMBO {

AlignmentViewObserver::AlignmentViewObserver(AlignmentWindow &window)
    : m_Window(window.m_Users->isClosed ? nullptr : &window)
{
    if (m_Window != nullptr)
        m_Window->m_Users->observers.add(this);
}

AlignmentViewObserver::~AlignmentViewObserver()
{
    if (m_Window != nullptr)
        m_Window->m_Users->observers.remove(this);
}

void AlignmentViewObserver::alignmentShown() { }

void AlignmentViewObserver::layoutRebuilt() { }

void AlignmentViewObserver::cellSizeChanged() { }

void AlignmentViewObserver::visibleSizeChanged() { }

void AlignmentViewObserver::scrolled() { }

void AlignmentViewObserver::gapDragBegan(const GapDrag &) { }

void AlignmentViewObserver::gapDragMoved(const GapDrag &) { }

void AlignmentViewObserver::gapDragEnded(const GapDrag &) { }

CellOverlay::CellOverlay(AlignmentWindow &window, WindowAreas areas, int z)
    : m_Window(window.m_Users->isClosed ? nullptr : &window), m_Areas(areas), m_Z(z)
{
    if (m_Window == nullptr)
        return;
    m_Window->m_Users->overlays.add(
        this, [](const CellOverlay &a, const CellOverlay &b) { return a.z() < b.z(); });
    m_Window->m_Users->tellOfChange();
}

CellOverlay::~CellOverlay()
{
    if (m_Window == nullptr)
        return;
    m_Window->m_Users->overlays.remove(this);
    for (const WindowArea area :
         {WindowArea::Cells, WindowArea::Names, WindowArea::Header, WindowArea::Corner}) {
        if (m_Areas.testFlag(area))
            m_Window->repaint(area, m_Window->areaWidget(area)->rect());
    }
    m_Window->m_Users->tellOfChange();
}

void CellOverlay::repaint(const CellBlock &cells, int margin) const
{
    if (m_Window == nullptr || cells.isEmpty())
        return;
    for (const WindowArea area :
         {WindowArea::Cells, WindowArea::Names, WindowArea::Header, WindowArea::Corner}) {
        if (m_Areas.testFlag(area))
            m_Window->repaint(
                area, m_Window->blockRect(cells, area).adjusted(-margin, -margin, margin, margin));
    }
}

CellEventFilter::CellEventFilter(AlignmentWindow &window, WindowAreas areas, int order)
    : m_Window(window.m_Users->isClosed ? nullptr : &window), m_Areas(areas), m_Order(order)
{
    if (m_Window == nullptr)
        return;
    m_Window->m_Users->filters.add(this, [](const CellEventFilter &a, const CellEventFilter &b) {
        return a.order() <= b.order();
    });
    m_Window->m_Users->tellOfChange();
}

CellEventFilter::~CellEventFilter()
{
    if (m_Window == nullptr)
        return;
    if (m_Window->m_Users->holder == this)
        m_Window->m_Users->holder = nullptr;
    m_Window->m_Users->filters.remove(this);
    m_Window->m_Users->tellOfChange();
}

} // namespace TAMBO
