// SPDX-License-Identifier: GPL-3.0-or-later
#include "HelpWindow.h"

#include "HelpPages.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>

#include <gtest/gtest.h>

using TAMBO::services::HelpPages;
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
    // A page of a plug-in, which this process has from now on.
    QString addPage(const QString &title, const QString &name, const QByteArray &text)
    {
        QFile file(m_Folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        HelpPages::instance().add({title, "Counts/" + name, file.fileName()});
        return file.fileName();
    }
    [[nodiscard]] QString page() const { return m_Window.document().fileName(); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    QTemporaryDir m_Folder;
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

TEST_F(HelpWindowTest, TheContentsLeadToThePagesOfPlugins)
{
    const QString file = addPage("Counts & <more>", "counts.html", "<p>How letters are counted");
    m_Window.showDocument("editor.html");
    m_Window.showDocument(QString());
    EXPECT_EQ(page(), "index.html");
    EXPECT_TRUE(m_Pages->toPlainText().contains("Plug-ins\nCounts & <more>"))
        << m_Pages->toPlainText().toStdString();
    EXPECT_TRUE(m_Pages->toHtml().contains(QUrl::fromLocalFile(file).toString()));
    emit m_Pages->anchorClicked(QUrl::fromLocalFile(file));
    EXPECT_EQ(m_Window.document(), QUrl::fromLocalFile(file));
    EXPECT_TRUE(m_Pages->toPlainText().contains("How letters are counted"));
    emit m_Pages->anchorClicked(QUrl("editor.html"));
    EXPECT_EQ(page(), "editor.html");
}

TEST_F(HelpWindowTest, APluginFindsItsPagesByName)
{
    const QString file = addPage("Sums", "sums.html", "<a name='x'></a><p>Sums");
    m_Window.showDocument("sums.html#x");
    EXPECT_EQ(m_Window.document().toLocalFile(), file);
    EXPECT_EQ(m_Window.document().fragment(), "x");
    m_Window.showDocument(QString());
    m_Window.showDocument("Counts/sums.html");
    EXPECT_EQ(m_Window.document().toLocalFile(), file);
}

TEST_F(HelpWindowTest, PagesOfPluginsLeadToTheirNeighborsAndNowhereElse)
{
    const QString file = addPage("Sums", "sums.html", "<p>Sums");
    const QTemporaryDir elsewhere;
    for (const QString &other : {m_Folder.filePath("more.html"), m_Folder.filePath("more.txt"),
                                 elsewhere.filePath("more.html")}) {
        QFile page(other);
        ASSERT_TRUE(page.open(QIODevice::WriteOnly));
        page.write("<p>More");
    }
    m_Window.showDocument("sums.html");
    emit m_Pages->anchorClicked(QUrl("more.html"));
    EXPECT_EQ(m_Window.document().toLocalFile(), m_Folder.filePath("more.html"));
    for (const QString &other : {m_Folder.filePath("more.txt"), elsewhere.filePath("more.html")}) {
        m_Window.showDocument("sums.html");
        emit m_Pages->anchorClicked(QUrl::fromLocalFile(other));
        EXPECT_EQ(page(), "index.html") << other.toStdString();
    }
}

TEST_F(HelpWindowTest, PagesOfPluginsLookLikeAllOthers)
{
    addPage("Heads", "heads.html",
            "<html><head><link rel='stylesheet' type='text/css' href='style.css'></head>"
            "<body><h1>Heads</h1></body></html>");
    const auto headColor = [this] {
        QTextBlock block = m_Pages->document()->begin();
        while (block.isValid() && block.blockFormat().headingLevel() != 1)
            block = block.next();
        return block.begin().fragment().charFormat().foreground().color();
    };
    m_Window.showDocument("editor.html");
    const QColor usual = headColor();
    ASSERT_TRUE(usual.isValid());
    ASSERT_NE(usual, QColor(Qt::black));
    m_Window.showDocument("heads.html");
    EXPECT_EQ(headColor(), usual);
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
