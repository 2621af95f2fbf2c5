// SPDX-License-Identifier: GPL-3.0-or-later
// An editor window and what its tests ask of it.
#pragma once

#include "CanvasFixture.h"
#include "KALMO2.h"
#include "QCanvas.h"
#include "SelectObjectAnswers.h"
#include "View.h"
#include "support/ExpectMessage.h"
#include "support/LogLines.h"
#include "support/ScopedSettings.h"

#include <QApplication>
#include <QLabel>
#include <QMetaObject>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>

class OpenWindow : public CanvasFixture
{
protected:
    OpenWindow() { m_Window = std::make_unique<ZEP::KALMO2>(); }
    ~OpenWindow() override { TAMBO::services::SelectObjectAnswers::clear(); }

    [[nodiscard]] ZEP::KALMO2 &window() { return *m_Window; }
    // In the order of their making.
    [[nodiscard]] QCanvas &canvas() { return *canvases(*m_Window).at(0); }
    [[nodiscard]] QCanvas &nameCanvas() { return *canvases(*m_Window).at(1); }
    [[nodiscard]] QCanvas &headerCanvas() { return *canvases(*m_Window).at(2); }
    [[nodiscard]] View &view() { return *m_Window->findChild<View *>(); }
    [[nodiscard]] Panel &header() { return *m_Window->findChildren<Panel *>().at(0); }
    [[nodiscard]] Panel &names() { return *m_Window->findChildren<Panel *>().at(1); }
    // The only label that is a child of the central widget itself.
    [[nodiscard]] QLabel &corner()
    {
        return *m_Window->centralWidget()->findChild<QLabel *>(QString(),
                                                               Qt::FindDirectChildrenOnly);
    }
    [[nodiscard]] int cellWidth() { return names().minimumWidth() / 8; }
    [[nodiscard]] int cellHeight() { return header().minimumHeight() / 4; }

    static QList<QCanvas *> canvases(const QObject &window)
    {
        return window.findChildren<QCanvas *>(QString(), Qt::FindDirectChildrenOnly);
    }
    static QCanvasItemList itemsOf(QCanvas &canvas, int rtti)
    {
        QCanvasItemList found;
        for (QCanvasItem *item : canvas.allItems()) {
            if (item->rtti() == rtti)
                found.append(item);
        }
        return found;
    }
    [[nodiscard]] bool isEmpty()
    {
        return canvas().allItems().isEmpty() && nameCanvas().allItems().isEmpty() &&
               headerCanvas().allItems().isEmpty() && corner().text().isEmpty();
    }

    template <typename... Arguments> void call(const char *slot, Arguments... arguments)
    {
        EXPECT_TRUE(QMetaObject::invokeMethod(m_Window.get(), slot, arguments...)) << slot;
    }
    static QGenericArgument index(const unsigned long &value)
    {
        return QArgument<unsigned long>("ulong", value);
    }

    // Does something with the next modal dialog once it is open.
    template <typename Dialog = QDialog> static void whenOpen(std::function<void(Dialog &)> act)
    {
        auto *timer = new QTimer;
        QObject::connect(timer, &QTimer::timeout, [timer, act] {
            auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
            if (dialog == nullptr)
                return;
            timer->deleteLater();
            timer->stop();
            act(*dialog);
        });
        timer->start(0);
    }

    ScopedSettings m_Settings{"[KALMO2]\nFont = DejaVu Sans Mono, 11\nIcon = editor.svg\n"};
    std::unique_ptr<ZEP::KALMO2> m_Window;
};

// Notes the notifications of one subscriber in a shared list.
class NotingSubscriber : public Subscriber
{
public:
    NotingSubscriber(QString name, QStringList &notes) : m_Name(std::move(name)), m_Notes(notes) { }

    void commUpdate() override { m_Notes.append(m_Name + QStringLiteral(" update")); }
    void commAdd() override { m_Notes.append(m_Name + QStringLiteral(" add")); }
    void commDelete() override { m_Notes.append(m_Name + QStringLiteral(" delete")); }

private:
    QString m_Name;
    QStringList &m_Notes;
};
