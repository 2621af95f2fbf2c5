// SPDX-License-Identifier: GPL-3.0-or-later
// A dock with the whole alignment of a window, and a frame around what of it is in sight.
#pragma once

#include "AlignmentViewObserver.h"
#include "OverviewPicture.h"
#include "Subscriber.h"

#include <QDockWidget>
#include <QTimer>

class QKeyEvent;

namespace companion {

// Out of sight until it is asked for, and without work as long as it is. Pressing and dragging in
// the picture scrolls the window there, and keys move the frame when the picture has the keyboard.
class Overview : public QDockWidget, public TAMBO::AlignmentViewObserver, public Subscriber
{
    Q_OBJECT

public:
    // A child of the window's own widget, and gone with it.
    explicit Overview(TAMBO::AlignmentWindow &window);
    ~Overview() override;

    void toggle() { setVisible(isHidden()); }
    [[nodiscard]] const OverviewPicture &picture() const noexcept { return m_Picture; }
    // Of the picture's widget, around the cells that are in sight.
    [[nodiscard]] QRect frame() const;
    [[nodiscard]] QWidget &view() noexcept { return *m_View; }

    void alignmentShown() override;
    void layoutRebuilt() override;
    void cellSizeChanged() override;
    void visibleSizeChanged() override;
    void scrolled() override;
    void commUpdate() override;
    void commAdd() override { }
    void commDelete() override { }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void begin();
    void goOn();
    void paintView();
    void scrollTo(const QPoint &place);
    // By a part of what is in sight, a page, or to an end; false for a key that does none of it.
    bool scrollBy(const QKeyEvent &key);
    // What the frame is around, for those who do not see it.
    void describe();

    OverviewPicture m_Picture;
    QWidget *m_View;
    QTimer m_Lines;
    // Colors change many times a second while somebody drags a slider.
    QTimer m_Later;
};

} // namespace companion
