// SPDX-License-Identifier: GPL-3.0-or-later
// A user's hands on a shown editor window.
#pragma once

#include "WindowFixture.h"

#include <QMouseEvent>
#include <QPointer>

class Hands
{
public:
    static constexpr Qt::MouseButton kLeft = Qt::LeftButton;
    static constexpr Qt::MouseButton kRight = Qt::RightButton;
    static constexpr Qt::MouseButton kMiddle = Qt::MiddleButton;

    explicit Hands(const ZEP::KALMO2 &window)
        : m_View(WindowParts(window).view),
          m_Header(WindowParts(window).header),
          m_Names(WindowParts(window).names),
          m_Cell(m_Names->contentsWidth() / 8, m_Header->contentsHeight() / 4)
    { }

    [[nodiscard]] const QSize &cellSize() const { return m_Cell; }

    void press(Qt::MouseButton button, int row, int col) const
    {
        send(m_View, QEvent::MouseButtonPress, button, cell(row, col));
    }
    // A window may close while the button is let go; then the hands hold nothing any more.
    void release(Qt::MouseButton button, int row, int col) const
    {
        send(m_View, QEvent::MouseButtonRelease, button, cell(row, col));
    }
    void drag(Qt::MouseButton button, int row, int from, int to) const
    {
        press(button, row, from);
        release(button, row, to);
    }
    void clickCell(Qt::MouseButton button, int row, int col) const { drag(button, row, col, col); }
    void clickMark(Qt::MouseButton button, int col, Qt::KeyboardModifiers keys = {}) const
    {
        const QPoint place((col * 2 + 1) * m_Cell.width() / 2, m_Cell.height() * 7 / 2 - 2);
        send(m_Header, QEvent::MouseButtonPress, button, place, keys);
        send(m_Header, QEvent::MouseButtonRelease, button, place, keys);
    }
    void clickName(Qt::MouseButton button, int row, Qt::KeyboardModifiers keys = {}) const
    {
        send(m_Names, QEvent::MouseButtonPress, button, name(row), keys);
        send(m_Names, QEvent::MouseButtonRelease, button, name(row), keys);
    }
    void pressName(int row) const { send(m_Names, QEvent::MouseButtonPress, kLeft, name(row)); }
    void releaseName(int row) const { send(m_Names, QEvent::MouseButtonRelease, kLeft, name(row)); }
    void dragName(int from, int to) const
    {
        pressName(from);
        releaseName(to);
    }

private:
    [[nodiscard]] QPoint cell(int row, int col) const
    {
        return {(col * 2 + 1) * m_Cell.width() / 2, (row * 2 + 1) * m_Cell.height() / 2};
    }
    // On the mark behind the name.
    [[nodiscard]] QPoint name(int row) const
    {
        return {7 * m_Cell.width() - 4, (row * 2 + 1) * m_Cell.height() / 2 - 2};
    }
    static void send(const QPointer<QCanvasView> &view, QEvent::Type type, Qt::MouseButton button,
                     const QPoint &contents, Qt::KeyboardModifiers keys = {})
    {
        if (!view)
            return;
        const QPoint at = view->contentsToViewport(contents);
        const auto held = type == QEvent::MouseButtonPress ? button : Qt::NoButton;
        QMouseEvent event(type, at, view->viewport()->mapToGlobal(at), button, held, keys);
        QCoreApplication::sendEvent(view->viewport(), &event);
    }

    QPointer<QCanvasView> m_View;
    QPointer<QCanvasView> m_Header;
    QPointer<QCanvasView> m_Names;
    QSize m_Cell;
};
