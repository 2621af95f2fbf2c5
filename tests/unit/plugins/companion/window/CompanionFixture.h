// SPDX-License-Identifier: GPL-3.0-or-later
// A real editor window with all that is added to it.
#pragma once

#include "Companion.h"
#include "SlicedWork.h"
#include "window/AlignmentWindowFixture.h"

#include "WorkbenchValues.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>
#include <QToolBar>
#include <QWheelEvent>

#include <algorithm>
#include <memory>

using companion::Companion;
using TAMBO::WindowArea;

// Work that is finished shows how far it is at once, and after each of its smallest parts.
class WithoutMoment
{
public:
    WithoutMoment() { companion::paceOfFinishing() = {{}, {}}; }
    ~WithoutMoment() { companion::paceOfFinishing() = m_Before; }
    WithoutMoment(const WithoutMoment &) = delete;
    WithoutMoment &operator=(const WithoutMoment &) = delete;

private:
    companion::Pace m_Before = companion::paceOfFinishing();
};

// Cancels what long work over the widget shows, as a user would.
class CancelledProgress
{
public:
    explicit CancelledProgress(QWidget &over)
    {
        QObject::connect(&m_Looks, &QTimer::timeout, &m_Looks, [this, &over] {
            auto *const progress = over.findChild<QProgressDialog *>();
            if (progress == nullptr || !progress->isVisible() || progress->wasCanceled())
                return;
            progress->findChild<QPushButton *>()->click();
            ++m_Count;
        });
        m_Looks.start(0);
    }
    [[nodiscard]] int count() const noexcept { return m_Count; }

private:
    QTimer m_Looks;
    int m_Count = 0;
};

class AlignmentCompanion : public AlignmentWindowFixture
{
protected:
    AlignmentCompanion()
    {
        WorkbenchValues::Remove("companion", "cell-width");
        forgetDocks();
        m_Window = &show(m_Shown, {700, 400});
        m_Served = &served(*m_Window);
        m_Companion = std::make_unique<Companion>(*m_Served);
    }
    // Before the window.
    ~AlignmentCompanion() override
    {
        m_Companion.reset();
        forgetDocks();
    }
    static void forgetDocks()
    {
        WorkbenchValues::Remove("companion", "dock-Tracks");
        WorkbenchValues::Remove("companion", "dock-Overview");
    }

    void wheel(WindowArea area, const QPoint &at, int notches)
    {
        QWidget *const widget = m_Served->areaWidget(area);
        QWheelEvent event(at, widget->mapToGlobal(QPointF(at)), {}, {0, 120 * notches},
                          Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(widget, &event);
    }
    static bool hasAction(const QList<QAction *> &actions, const QList<QKeySequence> &keys)
    {
        return std::ranges::any_of(
            actions, [&keys](const QAction *action) { return action->shortcuts() == keys; });
    }
    static QString shownText(QWidget &bar) { return bar.findChild<QLabel *>()->text(); }

    TAMBO::Alignment &m_Shown = large();
    ZEP::KALMO2 *m_Window = nullptr;
    TAMBO::AlignmentWindow *m_Served = nullptr;
    std::unique_ptr<Companion> m_Companion;
};
