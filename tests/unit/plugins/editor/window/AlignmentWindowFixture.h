// SPDX-License-Identifier: GPL-3.0-or-later
// An editor window as other plug-ins see it.
#pragma once

#include "AlignmentWindow.h"
#include "Hands.h"
#include "WindowFixture.h"

#include <QHelpEvent>
#include <QToolTip>

class AlignmentWindowFixture : public WindowFixture
{
protected:
    static TAMBO::AlignmentWindow &served(const ZEP::KALMO2 &window)
    {
        return *TAMBO::AlignmentWindow::Of(&window);
    }
    // Rows and columns enough for both scroll bars, with gaps here and there.
    TAMBO::Alignment &large(unsigned long rows = 120, unsigned long columns = 400)
    {
        Texts texts;
        for (unsigned long row = 0; row < rows; ++row) {
            std::string text;
            for (unsigned long col = 0; col < columns; ++col)
                text += "ACDEFGHIKLMNPQRSTVWY---"[(row * 7 + col * 3) % 23];
            texts.push_back(text);
        }
        return alignment(texts, "large");
    }
    static QImage picture(ZEP::KALMO2 &window)
    {
        QCoreApplication::processEvents();
        return window.grab().toImage();
    }
    static QImage pictureOf(QWidget *widget)
    {
        QCoreApplication::processEvents();
        return widget->grab().toImage();
    }
    static void mouse(QWidget *widget, QEvent::Type type, Qt::MouseButton button, const QPoint &at,
                      Qt::MouseButtons held, Qt::KeyboardModifiers keys = {})
    {
        QMouseEvent event(type, at, widget->mapToGlobal(at), button, held, keys);
        QCoreApplication::sendEvent(widget, &event);
    }
    static void press(QWidget *widget, Qt::MouseButton button, const QPoint &at)
    {
        mouse(widget, QEvent::MouseButtonPress, button, at, button);
    }
    static void move(QWidget *widget, Qt::MouseButtons held, const QPoint &at)
    {
        mouse(widget, QEvent::MouseMove, Qt::NoButton, at, held);
    }
    static void release(QWidget *widget, Qt::MouseButton button, const QPoint &at)
    {
        mouse(widget, QEvent::MouseButtonRelease, button, at, Qt::NoButton);
    }
    static void click(QWidget *widget, Qt::MouseButton button, const QPoint &at)
    {
        press(widget, button, at);
        release(widget, button, at);
    }
    static QString toolTipAt(QWidget *widget, const QPoint &at)
    {
        QHelpEvent event(QEvent::ToolTip, at, widget->mapToGlobal(at));
        QCoreApplication::sendEvent(widget, &event);
        const QString text = QToolTip::text();
        QToolTip::hideText();
        return text;
    }
};
