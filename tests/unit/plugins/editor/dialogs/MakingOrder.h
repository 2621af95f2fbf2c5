// SPDX-License-Identifier: GPL-3.0-or-later
// What the dialogs of the editor are made of, in which order, and what they change of their base.
#pragma once

#include "BaseDialog.h"

#include <QChildEvent>
#include <QCoreApplication>
#include <QPointer>
#include <QStringList>

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>
#include <vector>

// Watches the widgets that come into being, and the tool tips that they get, while it lives.
class MakingOrder : public QObject
{
public:
    MakingOrder() { qApp->installEventFilter(this); }

    // Those that are now children of the dialog itself.
    [[nodiscard]] QStringList of(const QWidget &dialog) const
    {
        QStringList texts;
        for (const auto &[widget, isToolTip] : m_Seen)
            if (widget && widget->parentWidget() == &dialog)
                texts.append((isToolTip ? "tool tip of " : "") +
                             QString(widget->metaObject()->className()));
        return texts;
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::ChildAdded)
            note(static_cast<QChildEvent *>(event)->child(), false);
        if (event->type() == QEvent::ToolTipChange)
            note(watched, true);
        return false;
    }

private:
    void note(QObject *object, bool isToolTip)
    {
        // A child is added when its base is made, so what it is can only be asked later.
        if (object->isWidgetType())
            m_Seen.emplace_back(static_cast<QWidget *>(object), isToolTip);
    }

    std::vector<std::pair<QPointer<QWidget>, bool>> m_Seen;
};

// A member that a class has not declared anew has the type of the base that declares it.
template <typename Dialog> class OverridesOf : public Dialog
{
public:
    static void expectOnlyApply()
    {
        EXPECT_TRUE((std::is_same_v<decltype(&OverridesOf::Apply), void (Dialog::*)()>));
        EXPECT_TRUE((std::is_same_v<decltype(&OverridesOf::Ok), void (BaseDialog::*)()>));
        EXPECT_TRUE((std::is_same_v<decltype(&OverridesOf::Cancel), void (BaseDialog::*)()>));
        EXPECT_TRUE(
            (std::is_same_v<decltype(&OverridesOf::setupTooltips), void (BaseDialog::*)()>));
        EXPECT_TRUE((std::is_same_v<decltype(&OverridesOf::reject), void (BaseDialog::*)()>));
        EXPECT_TRUE((std::is_same_v<decltype(&OverridesOf::done), void (BaseDialog::*)(int)>));
        EXPECT_TRUE((std::is_same_v<decltype(&OverridesOf::closeEvent),
                                    void (BaseDialog::*)(QCloseEvent *)>));
        EXPECT_TRUE((
            std::is_same_v<decltype(&OverridesOf::showEvent), void (BaseDialog::*)(QShowEvent *)>));
        EXPECT_TRUE((std::is_same_v<decltype(&OverridesOf::accept), void (QDialog::*)()>));
        EXPECT_TRUE((std::is_same_v<decltype(&OverridesOf::exec), int (QDialog::*)()>));
        EXPECT_TRUE((
            std::is_same_v<decltype(&OverridesOf::keyPressEvent), void (QDialog::*)(QKeyEvent *)>));
        EXPECT_TRUE(
            (std::is_same_v<decltype(&OverridesOf::paintEvent), void (QWidget::*)(QPaintEvent *)>));
    }
};

template <typename Dialog> void expectOnlyApplyIsOverridden()
{
    OverridesOf<Dialog>::expectOnlyApply();
}
