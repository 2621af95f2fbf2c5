// SPDX-License-Identifier: GPL-3.0-or-later
// Scrolls while something is dragged and the pointer is at or beyond the edge of its view.
#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QPoint>
#include <QSize>

#include <functional>

class DragScroller : public QObject
{
public:
    struct Extent
    {
        // Of the view.
        QSize visible;
        QSize contents;
    };

    // scrollBy moves the contents, as far as they go.
    DragScroller(std::function<Extent()> extent, std::function<void(const QPoint &)> scrollBy);

    void start();
    void stop();
    // The pointer moved while the drag is on; in the viewport's coordinates.
    void pointerAt(const QPoint &point);
    [[nodiscard]] bool isScrolling() const { return m_Timer.isActive(); }

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    std::function<Extent()> m_Extent;
    std::function<void(const QPoint &)> m_ScrollBy;
    QBasicTimer m_Timer;
    QPoint m_Pointer;
    bool m_Active = false;
    // A drag that begins close to the edge must not run off before the pointer has left the edge.
    bool m_Armed = false;
};
