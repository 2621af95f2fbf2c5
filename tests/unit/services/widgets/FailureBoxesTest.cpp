// SPDX-License-Identifier: GPL-3.0-or-later
#include "FailureBoxes.h"

#include <QAbstractButton>
#include <QDialog>
#include <QMainWindow>
#include <QMessageBox>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace FailureBoxesTest {

using TAMBO::services::FailureBoxes;

class FailureBoxesTest : public testing::Test
{
protected:
    static void activate(QWidget &window)
    {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    static QMessageBox *boxOver(const QWidget &window)
    {
        return window.findChild<QMessageBox *>("FailureBox", Qt::FindDirectChildrenOnly);
    }
    // The window that holds the only box there is.
    QWidget *place()
    {
        m_Boxes.show("The file could not be saved.", {"x.ali: cannot be written"});
        QWidget *found = nullptr;
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (window->objectName() == "FailureBox") {
                EXPECT_EQ(found, nullptr);
                found = window->parentWidget();
                delete window;
            }
        }
        return found;
    }

    QMainWindow m_Main;
    QMainWindow m_Editor;
    FailureBoxes m_Boxes{m_Main};
};

TEST_F(FailureBoxesTest, TheBoxNamesWhatFailedAndWhyAndNobodyWaitsForIt)
{
    activate(m_Main);
    m_Boxes.show("The alignment could not be saved.", {"x.ali: cannot be written: no room"});
    QMessageBox *box = boxOver(m_Main);
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->isVisible());
    EXPECT_EQ(box->windowTitle(), "Tambo");
    EXPECT_EQ(box->text(), "The alignment could not be saved.");
    EXPECT_EQ(box->informativeText(), "x.ali: cannot be written: no room");
    EXPECT_EQ(box->icon(), QMessageBox::Warning);
    EXPECT_EQ(box->windowModality(), Qt::WindowModal);
    const QPointer<QMessageBox> gone(box);
    box->button(QMessageBox::Ok)->click();
    EXPECT_TRUE(QTest::qWaitFor([&] { return gone.isNull(); }, 60'000));
}

TEST_F(FailureBoxesTest, TheBoxStandsOverTheWindowInUse)
{
    activate(m_Main);
    EXPECT_EQ(place(), &m_Main);
    activate(m_Editor);
    EXPECT_EQ(place(), &m_Editor);
}

TEST_F(FailureBoxesTest, TheBoxStandsOverADialogThatWaits)
{
    activate(m_Main);
    QDialog dialog;
    dialog.setModal(true);
    activate(dialog);
    EXPECT_EQ(place(), &dialog) << "nothing else can be clicked meanwhile";
}

TEST_F(FailureBoxesTest, TheBoxStandsOverTheWindowWhoseDialogHasJustGone)
{
    activate(m_Main);
    activate(m_Editor);
    auto dialog = std::make_unique<QDialog>(&m_Editor);
    activate(*dialog);
    dialog.reset();
    EXPECT_EQ(place(), &m_Editor);
}

TEST_F(FailureBoxesTest, TheBoxStandsOverTheMainWindowWhenTheWindowInUseHasGone)
{
    activate(m_Main);
    auto window = std::make_unique<QMainWindow>();
    activate(*window);
    window.reset();
    EXPECT_EQ(place(), &m_Main);
}

TEST_F(FailureBoxesTest, MarkupInNamesIsShownAsItStands)
{
    activate(m_Main);
    m_Boxes.show("<b>x</b>", {"a<br>b.ali: <i>broken</i>"});
    const std::unique_ptr<QMessageBox> box(boxOver(m_Main));
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->textFormat(), Qt::PlainText);
    EXPECT_EQ(box->informativeText(), "a<br>b.ali: <i>broken</i>");
}

TEST_F(FailureBoxesTest, ManyCausesFitOnTheScreen)
{
    activate(m_Main);
    QStringList causes;
    for (int i = 0; i < 300; ++i)
        causes << QStringLiteral("%1.pdb: there is no such file").arg(i);
    m_Boxes.show("300 files could not be opened.", causes);
    const std::unique_ptr<QMessageBox> box(boxOver(m_Main));
    ASSERT_NE(box, nullptr);
    const QStringList lines = box->informativeText().split('\n');
    ASSERT_EQ(lines.size(), 13);
    EXPECT_EQ(lines[11], causes[11]);
    EXPECT_EQ(lines[12], "and 288 more, all of them in the log");
}

} // namespace FailureBoxesTest
