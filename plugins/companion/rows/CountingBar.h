// SPDX-License-Identifier: GPL-3.0-or-later
// A line in which one chooses what a command is for, while it counts what that would be.
#pragma once

#include "AlignmentViewObserver.h"

#include <QTimer>
#include <QToolBar>

#include <chrono>

class QHBoxLayout;
class QLabel;
class QToolButton;

namespace TAMBO {
class Alignment;
}

namespace companion {

// Out of sight until it is asked for. It counts anew with each change of the choice or of the
// alignment, and goes on between events. Enter does what is chosen, Escape closes it.
class CountingBar : public QToolBar, public TAMBO::AlignmentViewObserver
{
    Q_OBJECT

public:
    ~CountingBar() override;

    void ask();
    // What has been chosen, after counting to the end; false when nothing has changed.
    bool apply();

    [[nodiscard]] bool isCounting() const { return m_Slices.isActive(); }
    [[nodiscard]] QString stateText() const;

    void alignmentShown() override;
    void layoutRebuilt() override;

protected:
    // A child of the window's own widget, and gone with it.
    CountingBar(TAMBO::AlignmentWindow &window, const QString &title, const QString &objectName);

    // Above the button, from left to right; the first one gets the keyboard when the line is asked
    // for.
    void addControls(const QList<QWidget *> &controls, const QString &buttonText,
                     const QString &buttonToolTip);
    // The choice has changed.
    void countAnew();
    void showState();
    [[nodiscard]] TAMBO::AlignmentWindow &shownWindow() const;

    // False when there is nothing to count, of which stateText(…) says why.
    virtual bool beginCount() = 0;
    // For about that time; false when nothing is left.
    virtual bool countOn(std::chrono::microseconds most) = 0;
    // Of what the window shows now.
    [[nodiscard]] virtual bool isCounted() const = 0;
    [[nodiscard]] virtual int percent() const = 0;
    // As far as is known.
    [[nodiscard]] virtual QString countText(const TAMBO::Alignment &alignment) const = 0;
    // All is counted.
    virtual bool carryOut(TAMBO::Alignment &alignment) = 0;

    void keyPressEvent(QKeyEvent *event) override;

private:
    void goOn();
    void leave();

    QTimer m_Slices;
    // There is something to count, or it is counted.
    bool m_HasCount = false;
    QWidget *m_First = nullptr;
    QLabel *m_State = nullptr;
};

} // namespace companion
