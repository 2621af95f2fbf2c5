// SPDX-License-Identifier: GPL-3.0-or-later
#include "HelpWindow.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QStatusBar>
#include <QTest>
#include <QTextBrowser>

#include <gtest/gtest.h>

using TAMBO::services::HelpWindow;

namespace HelpWindowTest {

class HelpWindowTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_Window.show();
        m_Window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_Window));
        m_Pages = m_Window.findChild<QTextBrowser *>();
        m_Search = m_Window.findChild<QLineEdit *>();
        ASSERT_NE(m_Pages, nullptr);
        ASSERT_NE(m_Search, nullptr);
    }
    [[nodiscard]] QString page() const { return m_Window.document().fileName(); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    HelpWindow m_Window;
    QTextBrowser *m_Pages = nullptr;
    QLineEdit *m_Search = nullptr;
};

TEST_F(HelpWindowTest, ShowsThePageAskedFor)
{
    m_Window.showDocument("editor.html");
    EXPECT_EQ(page(), "editor.html");
    EXPECT_EQ(m_Window.windowTitle(), "Help: The alignment editor");
    EXPECT_TRUE(m_Pages->toPlainText().contains("What the window shows"));
}

TEST_F(HelpWindowTest, ShowsThePlaceOnThePageAskedFor)
{
    m_Window.resize(500, 200);
    m_Window.showDocument("editor.html#choosing");
    EXPECT_EQ(m_Window.document().fragment(), "choosing");
}

TEST_F(HelpWindowTest, ShowsTheContentsForAnEmptyOrUnknownDocument)
{
    for (const QString document :
         {"", "nosuch.html", "../defaults.ini", "/etc/passwd", "..", "%"}) {
        m_Window.showDocument("editor.html");
        m_Window.showDocument(document);
        EXPECT_EQ(page(), "index.html") << document.toStdString();
    }
}

TEST_F(HelpWindowTest, GoesBackForwardAndToTheContentsByKeys)
{
    m_Window.showDocument("index.html");
    m_Window.showDocument("editor.html");
    m_Window.showDocument("colors.html");
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(page(), "editor.html");
    press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(page(), "colors.html");
    press(Qt::Key_Home, Qt::AltModifier);
    EXPECT_EQ(page(), "index.html");
}

TEST_F(HelpWindowTest, FollowsLinksInsideTheHelpOnly)
{
    m_Window.showDocument("index.html");
    emit m_Pages->anchorClicked(QUrl("editor.html"));
    EXPECT_EQ(page(), "editor.html");
    emit m_Pages->anchorClicked(QUrl("settings.html#file"));
    EXPECT_EQ(page(), "settings.html");
    EXPECT_EQ(m_Window.document().fragment(), "file");
    emit m_Pages->anchorClicked(QUrl("#places"));
    EXPECT_EQ(page(), "settings.html");
    emit m_Pages->anchorClicked(QUrl("https://example.org/editor.html"));
    EXPECT_EQ(page(), "settings.html");
}

TEST_F(HelpWindowTest, FindsWordsWhileTheyAreTyped)
{
    m_Window.showDocument("editor.html");
    press(Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(m_Search->hasFocus());
    QTest::keyClicks(m_Search, "duplic");
    EXPECT_EQ(m_Pages->textCursor().selectedText().toLower(), "duplic");
    const int first = m_Pages->textCursor().selectionStart();
    QTest::keyClicks(m_Search, "ate");
    EXPECT_EQ(m_Pages->textCursor().selectedText().toLower(), "duplicate");
    EXPECT_EQ(m_Pages->textCursor().selectionStart(), first);
}

TEST_F(HelpWindowTest, GoesFromHitToHitAndRoundThePage)
{
    m_Window.showDocument("editor.html");
    press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(m_Search, "alignment");
    const int first = m_Pages->textCursor().selectionStart();
    press(Qt::Key_Return);
    const int second = m_Pages->textCursor().selectionStart();
    EXPECT_GT(second, first);
    press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(m_Pages->textCursor().selectionStart(), first);
    press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_GT(m_Pages->textCursor().selectionStart(), second);
    press(Qt::Key_F3);
    EXPECT_EQ(m_Pages->textCursor().selectionStart(), first);
}

TEST_F(HelpWindowTest, SaysThatAWordIsNotThere)
{
    m_Window.showDocument("editor.html");
    press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(m_Search, "zzzz");
    const auto labels = m_Window.statusBar()->findChildren<QLabel *>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [](const QLabel *label) {
        return label->text() == "\"zzzz\" is not on this page";
    }));
    press(Qt::Key_Escape);
    EXPECT_TRUE(m_Pages->hasFocus());
    EXPECT_TRUE(m_Window.isVisible());
}

} // namespace HelpWindowTest
