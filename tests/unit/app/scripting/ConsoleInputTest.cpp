// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConsoleInput.h"

#include "AppFixture.h"
#include "ConsoleHistory.h"
#include "FakeEngine.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QCompleter>
#include <QSignalSpy>
#include <QTest>

namespace ConsoleInputTest {

using namespace TAMBO::app;

class ConsoleInputTest : public AppFixture
{
protected:
    ConsoleInputTest()
    {
        m_Input.resize(400, 40);
        m_Input.show();
        m_Input.activateWindow();
        m_Input.setFocus();
        QCoreApplication::processEvents();
    }
    ConsoleInput::Language language()
    {
        return {[this](const QString &source) { return m_Engine.isComplete(source.toStdString()); },
                [this](const QString &source, qsizetype cursor) {
                    const auto found = m_Engine.complete(source.toStdString(), std::size_t(cursor));
                    ConsoleInput::Completion completion;
                    completion.start = qsizetype(found.start);
                    for (const std::string &word : found.words)
                        completion.words << QString::fromStdString(word);
                    return completion;
                }};
    }
    void type(const char *text) { QTest::keyClicks(&m_Input, text); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&m_Input, key, modifiers);
    }
    [[nodiscard]] QWidget &list() const { return *m_Input.completer().popup(); }
    [[nodiscard]] QStringList words() const
    {
        QStringList words;
        const QAbstractItemModel *const model = m_Input.completer().completionModel();
        for (int i = 0; i < model->rowCount(); ++i)
            words << model->index(i, 0).data().toString();
        return words;
    }
    [[nodiscard]] QStringList entered() const
    {
        QStringList sources;
        for (const QVariantList &one : m_Entered)
            sources << one[0].toString();
        return sources;
    }

    FakeEngine m_Engine;
    ConsoleHistory m_History{path("history")};
    ConsoleInput m_Input{m_History, language()};
    QSignalSpy m_Entered{&m_Input, &ConsoleInput::entered};
};

TEST_F(ConsoleInputTest, EnterHandsOverTheLineAndEmptiesIt)
{
    type("a = 1");
    key(Qt::Key_Return);
    EXPECT_EQ(entered(), QStringList{"a = 1"});
    EXPECT_EQ(m_Input.toPlainText(), "");
    // Nothing is nothing.
    key(Qt::Key_Return);
    EXPECT_EQ(entered().size(), 1);
}

TEST_F(ConsoleInputTest, ABlockGoesOnIndentedAndEndsWithAnEmptyLine)
{
    type("for x in y:");
    key(Qt::Key_Return);
    EXPECT_EQ(m_Input.toPlainText(), "for x in y:\n    ");
    type("print(x)");
    key(Qt::Key_Return);
    EXPECT_EQ(m_Input.toPlainText(), "for x in y:\n    print(x)\n    ");
    EXPECT_TRUE(entered().isEmpty());
    key(Qt::Key_Return);
    EXPECT_EQ(entered(), QStringList{"for x in y:\n    print(x)"});
}

TEST_F(ConsoleInputTest, ShiftEnterBeginsALine)
{
    type("a = 1");
    key(Qt::Key_Return, Qt::ShiftModifier);
    type("b = 2");
    EXPECT_TRUE(entered().isEmpty());
    EXPECT_GT(m_Input.height(), 2 * m_Input.fontMetrics().lineSpacing());
    key(Qt::Key_Return);
    EXPECT_EQ(entered(), QStringList{"a = 1\nb = 2"});
}

TEST_F(ConsoleInputTest, EnterInTheMiddleBeginsALine)
{
    type("a = 1");
    key(Qt::Key_Return, Qt::ShiftModifier);
    type("b = 2");
    key(Qt::Key_Up);
    key(Qt::Key_End);
    key(Qt::Key_Return);
    EXPECT_EQ(m_Input.toPlainText(), "a = 1\n\nb = 2");
    EXPECT_TRUE(entered().isEmpty());
}

TEST_F(ConsoleInputTest, UpAndDownShowWhatWasTypedBefore)
{
    for (const char *line : {"a = 1", "b = 2"}) {
        type(line);
        key(Qt::Key_Return);
    }
    key(Qt::Key_Up);
    EXPECT_EQ(m_Input.toPlainText(), "b = 2");
    key(Qt::Key_Up);
    EXPECT_EQ(m_Input.toPlainText(), "a = 1");
    key(Qt::Key_Up);
    EXPECT_EQ(m_Input.toPlainText(), "a = 1");
    key(Qt::Key_Down);
    EXPECT_EQ(m_Input.toPlainText(), "b = 2");
    key(Qt::Key_Down);
    EXPECT_EQ(m_Input.toPlainText(), "");
    key(Qt::Key_Up);
    key(Qt::Key_Return);
    EXPECT_EQ(entered().last(), "b = 2");
}

TEST_F(ConsoleInputTest, TabPutsInWhatAllWordsBeginWithAndLists)
{
    type("tambo.al");
    key(Qt::Key_Tab);
    EXPECT_EQ(m_Input.toPlainText(), "tambo.alignment");
    EXPECT_TRUE(list().isVisible());
    EXPECT_EQ(words(), (QStringList{"alignments", "alignment"}));
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(m_Input.toPlainText(), "tambo.alignments");
    EXPECT_FALSE(list().isVisible());
    EXPECT_TRUE(entered().isEmpty());
}

TEST_F(ConsoleInputTest, TabPutsInTheOnlyWord)
{
    type("tambo.un");
    key(Qt::Key_Tab);
    EXPECT_EQ(m_Input.toPlainText(), "tambo.undo");
    EXPECT_FALSE(list().isVisible());
}

TEST_F(ConsoleInputTest, TheListFollowsWhatIsTypedAndEscapeClosesIt)
{
    type("tambo.");
    key(Qt::Key_Tab);
    EXPECT_EQ(words().size(), 4);
    QTest::keyClick(&list(), Qt::Key_O);
    EXPECT_EQ(m_Input.toPlainText(), "tambo.o");
    EXPECT_EQ(words(), QStringList{"open"});
    QTest::keyClick(&list(), Qt::Key_Escape);
    EXPECT_FALSE(list().isVisible());
    EXPECT_EQ(m_Input.toPlainText(), "tambo.o");
}

TEST_F(ConsoleInputTest, TheListIsAsHighAsItsLines)
{
    type("tambo.");
    key(Qt::Key_Tab);
    const QAbstractItemView &view = *m_Input.completer().popup();
    const QAbstractItemModel *const model = view.model();
    const QRect last = view.visualRect(model->index(model->rowCount() - 1, 0));
    EXPECT_GE(last.height(), view.fontMetrics().height() + 2);
    EXPECT_EQ(view.viewport()->height(), last.bottom() + 1);
}

TEST_F(ConsoleInputTest, TabAtTheBeginOfALineIndents)
{
    key(Qt::Key_Tab);
    EXPECT_EQ(m_Input.toPlainText(), "    ");
    key(Qt::Key_Backspace);
    EXPECT_EQ(m_Input.toPlainText(), "");
}

TEST_F(ConsoleInputTest, SeveralLinesArePastedAndRunTogether)
{
    QGuiApplication::clipboard()->setText("a = 1\r\nb = 2");
    m_Input.paste();
    EXPECT_EQ(m_Input.toPlainText(), "a = 1\nb = 2");
    EXPECT_TRUE(entered().isEmpty());
    key(Qt::Key_Return);
    EXPECT_EQ(entered(), QStringList{"a = 1\nb = 2"});
}

TEST_F(ConsoleInputTest, APastedSessionLosesItsPromptsAndResults)
{
    EXPECT_EQ(ConsoleInput::withoutPrompts(
                  ">>> import tambo\n>>> for a in b:\n...     print(a)\n...\n17\n>>> c\n'c'\n"),
              "import tambo\nfor a in b:\n    print(a)\n\nc");
    EXPECT_EQ(ConsoleInput::withoutPrompts("a = 1\n>>> b"), "a = 1\n>>> b");
}

TEST_F(ConsoleInputTest, WhileSomethingRunsNothingIsTaken)
{
    m_Input.setBusy(true, "Running");
    type("a = 1");
    key(Qt::Key_Return);
    key(Qt::Key_Tab);
    key(Qt::Key_Up);
    EXPECT_EQ(m_Input.toPlainText(), "");
    EXPECT_TRUE(entered().isEmpty());
    m_Input.setBusy(false, "");
    type("a");
    EXPECT_EQ(m_Input.toPlainText(), "a");
}

} // namespace ConsoleInputTest
