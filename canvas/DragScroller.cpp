// SPDX-License-Identifier: GPL-3.0-or-later
#include "DragScroller.h"

#include "QCanvasView.h"

#include <QTimerEvent>

#include <algorithm>

namespace {

constexpr int kMargin = 12;
constexpr int kStepMilliseconds = 30;
constexpr int kFastest = 64;

// Pixels per step; faster the farther the pointer is out.
int speed(int position, int length) noexcept
{
    const int before = kMargin - position;
    const int behind = position - (length - 1 - kMargin);
    if (before > 0 && before >= behind)
        return -std::min(kFastest, 2 + before / 2);
    return behind > 0 ? std::min(kFastest, 2 + behind / 2) : 0;
}

} // namespace

DragScroller::DragScroller(QCanvasView &view) : m_View(view) { }

void DragScroller::start()
{
    m_Active = true;
    m_Armed = false;
}

void DragScroller::stop()
{
    m_Active = false;
    m_Timer.stop();
}

void DragScroller::pointerAt(const QPoint &point)
{
    if (!m_Active)
        return;
    m_Pointer = point;
    const QPoint step = speedAt(point);
    m_Armed = m_Armed || step.isNull() || !m_View.viewport()->rect().contains(point);
    if (step.isNull() || !m_Armed)
        m_Timer.stop();
    else if (!m_Timer.isActive())
        m_Timer.start(kStepMilliseconds, this);
}

void DragScroller::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_Timer.timerId())
        return;
    const QPoint step = speedAt(m_Pointer);
    QCanvasView &view = m_View.scrolledView();
    view.setContentsPos(view.contentsX() + step.x(), view.contentsY() + step.y());
}

// A direction in which the whole contents are to be seen is not scrolled: names that are dragged
// sideways leave the columns where they are.
QPoint DragScroller::speedAt(const QPoint &point) const
{
    const int width = m_View.visibleWidth();
    const int height = m_View.visibleHeight();
    return {m_View.contentsWidth() > width ? speed(point.x(), width) : 0,
            m_View.contentsHeight() > height ? speed(point.y(), height) : 0};
}
