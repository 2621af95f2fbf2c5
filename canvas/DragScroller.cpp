// SPDX-License-Identifier: GPL-3.0-or-later
#include "DragScroller.h"

#include <QRect>
#include <QTimerEvent>

#include <algorithm>
#include <utility>

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

// A direction in which the whole contents are to be seen is not scrolled: names that are dragged
// sideways leave the columns where they are.
QPoint speedAt(const QPoint &point, const DragScroller::Extent &extent)
{
    const auto &[visible, contents] = extent;
    return {contents.width() > visible.width() ? speed(point.x(), visible.width()) : 0,
            contents.height() > visible.height() ? speed(point.y(), visible.height()) : 0};
}

} // namespace

DragScroller::DragScroller(std::function<Extent()> extent,
                           std::function<void(const QPoint &)> scrollBy)
    : m_Extent(std::move(extent)), m_ScrollBy(std::move(scrollBy))
{ }

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
    const Extent extent = m_Extent();
    const QPoint step = speedAt(point, extent);
    m_Armed = m_Armed || step.isNull() || !QRect(QPoint(0, 0), extent.visible).contains(point);
    if (step.isNull() || !m_Armed)
        m_Timer.stop();
    else if (!m_Timer.isActive())
        m_Timer.start(kStepMilliseconds, this);
}

void DragScroller::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_Timer.timerId())
        return;
    m_ScrollBy(speedAt(m_Pointer, m_Extent()));
}
