// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnDrag.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "DataPoint.h"

#include <QMouseEvent>

#include <algorithm>
#include <vector>

namespace companion {

namespace {

constexpr int kScrollMilliseconds = 40;

} // namespace

ColumnDrag::ColumnDrag(TAMBO::AlignmentWindow &window)
    : AlignmentViewObserver(window), CellEventFilter(window, TAMBO::WindowArea::Header)
{
    m_Scrolling.setInterval(kScrollMilliseconds);
    m_Scrolling.callOnTimeout([this] { scrollOn(); });
}

ColumnDrag::~ColumnDrag() = default;

bool ColumnDrag::handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea, QEvent &event)
{
    if (event.type() == QEvent::MouseButtonPress) {
        press(window, static_cast<QMouseEvent &>(event));
    } else if (event.type() == QEvent::MouseMove && m_From) {
        const auto &mouse = static_cast<QMouseEvent &>(event);
        if (mouse.buttons() == Qt::LeftButton)
            moveTo(window, mouse.position().toPoint());
        else
            forget();
    } else if (event.type() == QEvent::MouseButtonRelease) {
        release(window);
    }
    return false;
}

void ColumnDrag::press(TAMBO::AlignmentWindow &window, const QMouseEvent &mouse)
{
    forget();
    if (mouse.buttons() == Qt::LeftButton && mouse.modifiers() == Qt::NoModifier)
        m_From = window.columnAt(int(mouse.position().x()));
}

void ColumnDrag::moveTo(TAMBO::AlignmentWindow &window, const QPoint &point)
{
    m_Pointer = point;
    const int width = window.visibleSize().width();
    const bool isBeside = point.x() < 0 || point.x() >= width;
    if (isBeside && !m_Scrolling.isActive())
        m_Scrolling.start();
    if (!isBeside)
        m_Scrolling.stop();
    const auto column = window.columnAt(std::clamp(point.x(), 0, std::max(0, width - 1)));
    if (column)
        markUpTo(window, *column);
    else if (point.x() > 0 && window.columns() > 0)
        markUpTo(window, window.columns() - 1);
}

void ColumnDrag::scrollOn()
{
    TAMBO::AlignmentWindow *const window = AlignmentViewObserver::window();
    if (window == nullptr || !m_From)
        return;
    const int step = window->cellSize().width();
    window->scrollBy({m_Pointer.x() < 0 ? -step : step, 0});
    moveTo(*window, m_Pointer);
}

void ColumnDrag::markUpTo(TAMBO::AlignmentWindow &window, unsigned long column)
{
    TAMBO::Alignment *const alignment = window.alignment();
    if (alignment == nullptr || (!m_IsDragging && column == *m_From) ||
        (m_IsDragging && column == m_To))
        return;
    if (!m_IsDragging) {
        // What the press has done to the first one; beside the marks it has done nothing.
        const bool isMark = alignment->range() == TAMBO::Alignment::Range(*m_From, *m_From + 1);
        m_Before = alignment->range();
        m_Selects = !isMark || alignment->isColumnSelected(*m_From);
    }
    m_IsDragging = true;
    m_To = column;
    const DataPoint<TAMBO::Alignment> guard(nullptr, alignment);
    if (guard.m_good)
        guard->range({std::min(*m_From, m_To), std::max(*m_From, m_To) + 1});
}

void ColumnDrag::release(TAMBO::AlignmentWindow &window)
{
    TAMBO::Alignment *const alignment = window.alignment();
    const bool wasDragging = m_IsDragging;
    const bool selects = m_Selects;
    forget();
    if (!wasDragging || alignment == nullptr)
        return;
    const TAMBO::Alignment::Range range = alignment->range();
    const DataPoint<TAMBO::Alignment> guard(nullptr, alignment);
    if (!guard.m_good)
        return;
    std::vector<bool> columns(range.second, false);
    std::fill(columns.begin() + std::ptrdiff_t(range.first), columns.end(), true);
    guard->selectCells(std::vector<bool>(alignment->height(), true), columns,
                       selects ? TAMBO::Alignment::Selecting::Add
                               : TAMBO::Alignment::Selecting::Remove);
}

bool ColumnDrag::giveUp()
{
    const bool wasDragging = m_IsDragging;
    forget();
    TAMBO::Alignment *const alignment = AlignmentViewObserver::window()->alignment();
    if (!wasDragging || alignment == nullptr)
        return wasDragging;
    const DataPoint<TAMBO::Alignment> guard(nullptr, alignment);
    if (guard.m_good)
        guard->range(m_Before);
    return true;
}

void ColumnDrag::forget()
{
    m_From.reset();
    m_IsDragging = false;
    m_Scrolling.stop();
}

} // namespace companion
