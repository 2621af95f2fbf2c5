// SPDX-License-Identifier: GPL-3.0-or-later
// Notes which parts of some views are painted.
#pragma once

#include "QCanvasView.h"

#include <QCoreApplication>
#include <QPaintEvent>
#include <QRect>

#include <algorithm>
#include <initializer_list>
#include <utility>
#include <vector>

class PaintWatch : public QObject
{
public:
    using Rects = std::vector<QRect>;

    // What was still to be painted is painted first, and does not count.
    PaintWatch(std::initializer_list<const QCanvasView *> views)
        : m_Views(views), m_Painted(views.size())
    {
        for (const QCanvasView *view : m_Views)
            view->viewport()->installEventFilter(this);
        (void)take();
    }

    // What has been painted since, one rectangle a view; an empty one where nothing was.
    [[nodiscard]] Rects take()
    {
        QCoreApplication::processEvents();
        return std::exchange(m_Painted, Rects(m_Views.size()));
    }
    [[nodiscard]] bool isAnythingPainted()
    {
        const Rects painted = take();
        return std::ranges::any_of(painted, [](const QRect &rect) { return !rect.isEmpty(); });
    }
    // Of every view.
    [[nodiscard]] Rects whole() const
    {
        Rects rects;
        for (const QCanvasView *view : m_Views)
            rects.push_back(view->viewport()->rect());
        return rects;
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        for (std::size_t i = 0; event->type() == QEvent::Paint && i < m_Views.size(); ++i) {
            if (m_Views[i]->viewport() == watched)
                m_Painted[i] |= static_cast<QPaintEvent *>(event)->region().boundingRect();
        }
        return false;
    }

private:
    std::vector<const QCanvasView *> m_Views;
    Rects m_Painted;
};
