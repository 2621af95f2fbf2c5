// SPDX-License-Identifier: GPL-3.0-or-later
// Scrolls while something is dragged and the pointer is at or beyond the edge of its view.
#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QPoint>

class QCanvasView;

class DragScroller : public QObject
{
public:
    explicit DragScroller(QCanvasView &view);

    void start();
    void stop();
    // The pointer moved while the drag is on; in the viewport's coordinates.
    void pointerAt(const QPoint &point);
    [[nodiscard]] bool isScrolling() const { return m_Timer.isActive(); }

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    [[nodiscard]] QPoint speedAt(const QPoint &point) const;

    QCanvasView &m_View;
    QBasicTimer m_Timer;
    QPoint m_Pointer;
    bool m_Active = false;
    // A drag that begins close to the edge must not run off before the pointer has left the edge.
    bool m_Armed = false;
};
