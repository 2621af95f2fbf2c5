// SPDX-License-Identifier: GPL-3.0-or-later
#include "DialogPlaces.h"

#include "BaseDialog.h"
#include "WindowPlaces.h"

#include <QInputDialog>
#include <QMainWindow>
#include <QMessageBox>
#include <QScreen>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

#include <functional>

namespace DialogPlacesTest {

using TAMBO::services::DialogPlaces;
using TAMBO::services::WindowPlaces;

class DialogPlace : public testing::Test
{
protected:
    DialogPlace()
    {
        m_Caller.setGeometry(100, 100, 500, 400);
        m_Caller.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_Caller));
    }

    // How far the middles are apart.
    static QPoint apart(const QWidget &dialog, const QWidget &caller)
    {
        return dialog.frameGeometry().center() - caller.frameGeometry().center();
    }
    static bool isOver(const QWidget &dialog, const QWidget &caller)
    {
        return apart(dialog, caller).manhattanLength() < 10;
    }

    DialogPlaces m_Places;
    QMainWindow m_Caller;
};

TEST_F(DialogPlace, ADialogComesUpOverItsCallerWhereverThatIs)
{
    QDialog dialog(&m_Caller);
    dialog.setObjectName("OverIt");
    dialog.resize(200, 100);
    dialog.show();
    EXPECT_TRUE(isOver(dialog, m_Caller));
    dialog.hide();
    m_Caller.move(180, 160);
    dialog.show();
    EXPECT_TRUE(isOver(dialog, m_Caller));
}

TEST_F(DialogPlace, ADialogThatWasMadeLargeOnAnotherScreenFitsThisOne)
{
    WindowPlaces::rememberDialog("Large", {-300, -200, 5000, 4000});
    QDialog dialog(&m_Caller);
    DialogPlaces::comeUp(dialog, &m_Caller, "Large");
    EXPECT_TRUE(m_Caller.screen()->availableGeometry().contains(dialog.geometry()));
}

TEST_F(DialogPlace, WhereAUserHasMovedItItComesUpAgainBesideItsCallerInItsSize)
{
    const auto show = [this](const std::function<void(QDialog &)> &act) {
        QDialog dialog(&m_Caller);
        dialog.setObjectName("Moved");
        dialog.resize(200, 100);
        dialog.show();
        act(dialog);
        dialog.hide();
    };
    QPoint moved;
    show([&](QDialog &dialog) {
        dialog.move(dialog.pos() + QPoint(-120, 90));
        dialog.resize(260, 170);
        moved = dialog.pos() - m_Caller.pos();
    });
    m_Caller.move(180, 120);
    show([&](QDialog &dialog) {
        EXPECT_EQ(dialog.pos() - m_Caller.pos(), moved);
        EXPECT_EQ(dialog.size(), QSize(260, 170));
    });
}

TEST_F(DialogPlace, ADialogWithoutACallerComesUpOverTheWindowInUse)
{
    m_Caller.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_Caller));
    QInputDialog dialog;
    dialog.show();
    EXPECT_TRUE(isOver(dialog, m_Caller));
    EXPECT_EQ(dialog.windowHandle()->transientParent(), m_Caller.windowHandle());
}

TEST_F(DialogPlace, AQuestionIsAlwaysOverItsCaller)
{
    for (int i = 0; i < 2; ++i) {
        QMessageBox box(&m_Caller);
        box.setObjectName("Question");
        box.setText("Really?");
        box.show();
        EXPECT_TRUE(isOver(box, m_Caller));
        box.move(box.pos() + QPoint(100, 60));
        box.hide();
    }
}

TEST_F(DialogPlace, NoDialogLeavesTheScreen)
{
    const QRect room = m_Caller.screen()->availableGeometry();
    m_Caller.move(room.bottomRight() - QPoint(60, 60));
    QDialog dialog(&m_Caller);
    dialog.setObjectName("AtTheEdge");
    dialog.resize(300, 200);
    dialog.show();
    EXPECT_TRUE(room.contains(dialog.geometry()));
}

TEST_F(DialogPlace, TheDialogsOfTheKitDoTheSameByTheirCaption)
{
    const auto show = [this](const QString &caption, const std::function<void(QDialog &)> &act) {
        BaseDialog dialog(caption, {200, 150}, 3, 3, {}, false, false, &m_Caller, nullptr);
        dialog.show();
        act(dialog);
        dialog.close();
    };
    show("Kit", [&](QDialog &dialog) {
        EXPECT_TRUE(isOver(dialog, m_Caller));
        dialog.move(dialog.pos() + QPoint(100, 60));
    });
    show("Kit", [&](QDialog &dialog) {
        EXPECT_NEAR(apart(dialog, m_Caller).x(), 100, 5);
        EXPECT_NEAR(apart(dialog, m_Caller).y(), 60, 5);
    });
    show("Kit of another caption", [&](QDialog &dialog) { EXPECT_TRUE(isOver(dialog, m_Caller)); });
}

} // namespace DialogPlacesTest
