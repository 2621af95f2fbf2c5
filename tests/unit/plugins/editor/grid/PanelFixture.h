// SPDX-License-Identifier: GPL-3.0-or-later
// A panel over names and column marks, driven by mouse events.
#pragma once

#include "CanvasFixture.h"
#include "ColItem.h"
#include "IdItem.h"
#include "QCanvas.h"
#include "QCanvasRectangle.h"
#include "RowItem.h"
#include "View.h"
#include "support/ExpectMessage.h"

#include <QMouseEvent>
#include <QPainter>
#include <QTest>

#include <memory>

class PanelFixture : public CanvasFixture
{
protected:
    static constexpr int kWidth = 20;
    static constexpr int kHeight = 24;
    static constexpr Qt::MouseButton kLeft = Qt::LeftButton;
    static constexpr Qt::MouseButton kRight = Qt::RightButton;
    static constexpr Qt::MouseButton kMiddle = Qt::MiddleButton;

    // A name panel 8 cells wide, as in the window.
    void showNames(TAMBO::Alignment &alignment)
    {
        m_Alignment = &alignment;
        const unsigned long rows = alignment.height();
        m_Canvas.resize(8 * kWidth, (static_cast<int>(rows) + 1) * kHeight);
        for (unsigned long row = 0; row < rows; ++row) {
            auto *item = new RowItem(&alignment, row, m_Font, &m_Canvas, 7 * kWidth,
                                     static_cast<double>(row) * kHeight);
            item->setZ(3.0);
            item->show();
        }
        openPanel(8 * kWidth, 6 * kHeight);
    }
    // A header panel 4 cells high, as in the window.
    void showHeader(TAMBO::Alignment &alignment)
    {
        m_Alignment = &alignment;
        const unsigned long columns = alignment.width();
        m_Canvas.resize((static_cast<int>(columns) + 1) * kWidth, 4 * kHeight);
        for (unsigned long col = 0; col < columns; ++col) {
            const int x = static_cast<int>(col) * kWidth + kWidth / 2;
            (new IdItem(&alignment, col, m_Font, &m_Canvas, x, 2 * kHeight))->show();
            auto *mark = new ColItem(&alignment, col, m_Font, &m_Canvas, x, 3 * kHeight);
            mark->setZ(3.0);
            mark->show();
        }
        openPanel(400, 4 * kHeight);
        m_Marker = new QCanvasRectangle(0, 3 * kHeight, 1, 1, &m_Canvas);
        m_Panel->setMarker(m_Marker);
        m_Panel->SetRange(alignment.range().first, alignment.range().second);
        m_Marker->show();
    }
    [[nodiscard]] QPoint nameAt(unsigned long row) const
    {
        return m_Panel->contentsToViewport(
            {7 * kWidth - 8, static_cast<int>(row) * kHeight + kHeight / 2 - 3});
    }
    [[nodiscard]] QPoint markAt(unsigned long col) const
    {
        return m_Panel->contentsToViewport(
            {static_cast<int>(col) * kWidth + kWidth / 2, 3 * kHeight + kHeight / 2 - 3});
    }
    // With just this button held.
    void press(Qt::MouseButton button, const QPoint &at, Qt::KeyboardModifiers keys = {})
    {
        send(QEvent::MouseButtonPress, at, button, button, keys);
    }
    void release(Qt::MouseButton button, const QPoint &at)
    {
        send(QEvent::MouseButtonRelease, at, button, Qt::NoButton, {});
    }
    void send(QEvent::Type type, const QPoint &at, Qt::MouseButton button, Qt::MouseButtons held,
              Qt::KeyboardModifiers keys)
    {
        QMouseEvent event(type, at, m_Panel->viewport()->mapToGlobal(at), button, held, keys);
        QCoreApplication::sendEvent(m_Panel->viewport(), &event);
    }
    QStringList takeSignals() { return std::exchange(m_Signals, {}); }
    [[nodiscard]] std::pair<unsigned long, unsigned long> range() const
    {
        return {m_Panel->begin(), m_Panel->end()};
    }

    TAMBO::Alignment *m_Alignment = nullptr;
    QCanvas m_Canvas;
    std::unique_ptr<Panel> m_Panel;
    QCanvasRectangle *m_Marker = nullptr;
    QStringList m_Signals;

private:
    void openPanel(int width, int height)
    {
        m_Panel = std::make_unique<Panel>(m_Canvas, nullptr, "panel", 0);
        m_Panel->setCellSizeSource([] { return QSize(kWidth, kHeight); });
        m_Panel->setHScrollBarMode(QCanvasView::AlwaysOff);
        m_Panel->setVScrollBarMode(QCanvasView::AlwaysOff);
        m_Panel->resize(width, height);
        m_Panel->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_Panel.get()));
        connectAll();
    }
    void connectAll()
    {
        Panel *panel = m_Panel.get();
        const auto note = [this](const QString &text) { m_Signals.append(text); };
        QObject::connect(panel, &Panel::ReArrange, [note] { note(QStringLiteral("ReArrange")); });
        QObject::connect(panel, &Panel::Update, [note] { note(QStringLiteral("Update")); });
        QObject::connect(panel, &Panel::RemoveRow, [note](unsigned long row) {
            note(QStringLiteral("RemoveRow %1").arg(row));
        });
        QObject::connect(panel, &Panel::RemoveCol, [note](unsigned long col) {
            note(QStringLiteral("RemoveCol %1").arg(col));
        });
        QObject::connect(panel, &Panel::InsertCol, [note](unsigned long col) {
            note(QStringLiteral("InsertCol %1").arg(col));
        });
        QObject::connect(panel, &Panel::ReRange, [note](unsigned long begin, unsigned long end) {
            note(QStringLiteral("ReRange %1 %2").arg(begin).arg(end));
        });
    }
};
