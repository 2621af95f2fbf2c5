// SPDX-License-Identifier: GPL-3.0-or-later
// Runs in a window of the test's own: what is said of them, and what the rest does meanwhile.
#include "ScriptDesk.h"

#include "AppFixture.h"
#include "ChangeScope.h"
#include "ConfigStore.h"
#include "ConsoleInput.h"
#include "ConsoleOutput.h"
#include "ConsolePanel.h"
#include "FakeEngine.h"
#include "Hooks.h"
#include "ScriptMenu.h"
#include "support/LogLines.h"
#include "support/WaitUntil.h"

#include <QApplication>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>

namespace ScriptDeskTest {

using namespace TAMBO;
using namespace TAMBO::app;
using Host = FakeEngine::Host;
using Outcome = FakeEngine::Outcome;
using scripting::OutputKind;

// Counts how often it paints.
class Painted : public QPushButton
{
public:
    int m_Count = 0;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        ++m_Count;
        QPushButton::paintEvent(event);
    }
};

// Counts how often it is asked for.
class Paints : public QObject
{
public:
    explicit Paints(QObject *of = nullptr) : m_Of(of) { }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && (m_Of == nullptr || watched == m_Of))
            ++m_Count;
        return false;
    }

    int m_Count = 0;

private:
    QObject *m_Of;
};

class ScriptDeskTest : public RecordedFixture
{
protected:
    ScriptDeskTest()
    {
        m_Window.setCentralWidget(m_Beside);
        auto *const dock = new QDockWidget("Console");
        dock->setWidget(m_Panel);
        m_Window.addDockWidget(Qt::BottomDockWidgetArea, dock);
        QObject::connect(m_Beside, &QPushButton::clicked, m_Beside, [this] { ++m_Clicks; });
        QObject::connect(m_Panel, &ConsolePanel::said, m_Panel,
                         [this](const QString &text) { m_Said << text; });
        m_Window.resize(600, 400);
        m_Window.show();
        m_Other.show();
        m_Window.activateWindow();
        waitUntil([this] { return m_Beside->m_Count > 0 && m_Other.m_Count > 0; });
    }
    ScriptDesk::Actions actions()
    {
        return {[this](const QString &text) { m_Said << text; },
                [this](const QString &headline, const QStringList &causes) {
                    m_Failures << headline + " " + causes.join(" ");
                },
                {},
                {},
                {}};
    }
    ScriptDesk::Opener opener()
    {
        return [this](Host &host) -> Result<scripting::ScriptEngine *> {
            if (!m_HasEngine)
                return Failure(FailureKind::NotFound, "Scripts need the package python3-tambo.");
            m_Engine.m_Host = &host;
            return &m_Engine;
        };
    }
    template <typename Widget> Widget &part(const char *name)
    {
        return *m_Panel->findChild<Widget *>(name);
    }
    QString output() { return part<ConsoleOutput>("ConsoleOutput").toPlainText(); }
    void run() { EXPECT_TRUE(m_Desk.run({write("sites.py", ""), "1A0J_A 'a b'"})); }
    // The console has been held for it.
    static bool breatheAWhile(Host &host)
    {
        int looks = 0;
        QTimer beside;
        QObject::connect(&beside, &QTimer::timeout, [] { FAIL() << "a timer in the middle"; });
        beside.start(0);
        QObject probe;
        const std::function<void()> next = [&] {
            ++looks;
            QMetaObject::invokeMethod(&probe, next, Qt::QueuedConnection);
        };
        QMetaObject::invokeMethod(&probe, next, Qt::QueuedConnection);
        return FakeEngine::breatheUntil(host, [&] { return looks >= 2; });
    }

    services::ConfigStore m_Settings{QString(), path("tambo.ini")};
    FakeEngine m_Engine;
    bool m_HasEngine = true;
    QStringList m_Said;
    QStringList m_Failures;
    int m_Clicks = 0;
    ScriptDesk m_Desk{m_History, m_Settings, actions(), opener()};
    QMainWindow m_Window;
    Painted *m_Beside = new Painted;
    ConsolePanel *m_Panel = new ConsolePanel(m_Desk);
    Painted m_Other;
};

TEST_F(ScriptDeskTest, AScriptGetsItsArgumentsAndItsOutputIsShown)
{
    m_Engine.m_Act = [](Host &host) {
        host.write("one\ntw", OutputKind::Output);
        host.write("o\n", OutputKind::Output);
        Outcome outcome;
        outcome.steps = 1;
        return outcome;
    };
    run();
    EXPECT_EQ(m_Engine.m_Files, std::vector<std::string>{path("sites.py").toStdString()});
    EXPECT_EQ(m_Engine.m_Arguments, (std::vector<std::string>{"1A0J_A", "a b"}));
    EXPECT_EQ(output(),
              "Running sites.py 1A0J_A 'a b'\none\ntwo\nsites.py is done: one step of undo.");
    EXPECT_EQ(m_Said.last(), "sites.py is done: one step of undo.");
    ASSERT_EQ(m_Desk.recent().scripts().size(), 1U);
    EXPECT_EQ(m_Desk.recent().folder(), m_Folder.path());
}

TEST_F(ScriptDeskTest, WhatWasPutOffBeforeIsDoneBefore)
{
    QStringList order;
    QMetaObject::invokeMethod(
        m_Beside, [&] { order << "put off"; }, Qt::QueuedConnection);
    m_Engine.m_Act = [&](Host &host) {
        order << "script";
        EXPECT_TRUE(breatheAWhile(host));
        return Outcome();
    };
    run();
    EXPECT_EQ(order, (QStringList{"put off", "script"}));
}

TEST_F(ScriptDeskTest, WhatIsPutOffAtTheEndOfAStepIsDoneBeforeTheNext)
{
    QStringList order;
    m_Engine.m_Act = [&](Host &host) {
        QMetaObject::invokeMethod(
            m_Beside, [&] { order << "put off"; }, Qt::QueuedConnection);
        host.stepEnded();
        order << "script";
        return Outcome();
    };
    run();
    EXPECT_EQ(order, (QStringList{"put off", "script"}));
}

TEST_F(ScriptDeskTest, TabsOfDocksThatComeUpWithTheConsoleArePainted)
{
    Paints paints;
    auto *const console = m_Window.findChild<QDockWidget *>();
    auto *const log = new QDockWidget("Log");
    m_Window.addDockWidget(Qt::BottomDockWidgetArea, log);
    m_Window.tabifyDockWidget(log, console);
    console->hide();
    QCoreApplication::processEvents();
    QObject::connect(&m_Desk, &ScriptDesk::consoleAsked, console, [&] {
        console->show();
        console->raise();
    });
    m_Engine.m_Act = [&](Host &host) {
        EXPECT_TRUE(breatheAWhile(host));
        for (QTabBar *const tabs : m_Window.findChildren<QTabBar *>()) {
            tabs->installEventFilter(&paints);
            tabs->update();
        }
        EXPECT_TRUE(FakeEngine::breatheUntil(host, [&] { return paints.m_Count > 0; }));
        return Outcome();
    };
    run();
    EXPECT_GT(paints.m_Count, 0);
}

TEST_F(ScriptDeskTest, AWindowThatIsResizedIsFilledWithItsGround)
{
    m_Engine.m_Act = [&](Host &host) {
        EXPECT_TRUE(breatheAWhile(host));
        const int before = m_Beside->m_Count;
        Paints paints(m_Beside);
        qApp->installEventFilter(&paints);
        m_Window.resize(900, 700);
        EXPECT_TRUE(FakeEngine::breatheUntil(host, [&] { return paints.m_Count > 0; }));
        EXPECT_EQ(m_Beside->m_Count, before);
        return Outcome();
    };
    run();
    const int before = m_Beside->m_Count;
    waitUntil([&] { return m_Beside->m_Count > before; });
}

TEST_F(ScriptDeskTest, AFailureIsOneLineInConsoleStatusLineAndLog)
{
    const LogLines log;
    m_Engine.m_Act = [](Host &) {
        Outcome outcome;
        outcome.end = Outcome::End::Failed;
        outcome.message = "ValueError: no such row";
        outcome.file = "/a/sites.py";
        outcome.line = 12;
        outcome.trace = "Traceback (most recent call last):\n  File \"/a/sites.py\", line 12\n    "
                        "print(1)\nValueError: no such row\n";
        outcome.hasTakenBack = true;
        return outcome;
    };
    run();
    const QString line = "sites.py, line 12: ValueError: no such row";
    EXPECT_EQ(m_Said.last(), line);
    EXPECT_EQ(log.texts(), QStringList{line});
    EXPECT_TRUE(output().endsWith("ValueError: no such row\n" + line +
                                  "\nWhat it had changed is taken back."));
    EXPECT_EQ(part<ConsoleOutput>("ConsoleOutput").kindOf(1), LineKind::Error);
}

TEST_F(ScriptDeskTest, AMissingScriptIsToldAndForgotten)
{
    m_Desk.recent().add({path("gone.py"), ""});
    EXPECT_FALSE(m_Desk.run(m_Desk.recent().scripts().front()));
    EXPECT_EQ(m_Failures,
              QStringList{"gone.py cannot be run. " + path("gone.py") + " is not there."});
    EXPECT_TRUE(m_Desk.recent().scripts().empty());
}

TEST_F(ScriptDeskTest, WithoutTheEngineOneMessageSaysWhatIsMissing)
{
    m_HasEngine = false;
    EXPECT_FALSE(m_Desk.run({write("sites.py", ""), ""}));
    EXPECT_EQ(m_Failures,
              QStringList{"sites.py cannot be run. Scripts need the package python3-tambo."});
    m_Desk.execute("1 + 1");
    EXPECT_EQ(output(), ">>> 1 + 1\nScripts need the package python3-tambo.");
}

TEST_F(ScriptDeskTest, WhatIsTypedIsEchoedWithPromptsAndRun)
{
    m_Engine.m_Act = [](Host &host) {
        host.write("17\n", OutputKind::Output);
        return Outcome();
    };
    QTest::keyClicks(&part<ConsoleInput>("ConsoleInput"), "for a in b:");
    QTest::keyClick(&part<ConsoleInput>("ConsoleInput"), Qt::Key_Return);
    QTest::keyClicks(&part<ConsoleInput>("ConsoleInput"), "print(a)");
    QTest::keyClick(&part<ConsoleInput>("ConsoleInput"), Qt::Key_Return);
    QTest::keyClick(&part<ConsoleInput>("ConsoleInput"), Qt::Key_Return);
    ASSERT_TRUE(waitUntil([this] { return !m_Engine.m_Sources.empty(); }));
    EXPECT_EQ(m_Engine.m_Sources, std::vector<std::string>{"for a in b:\n    print(a)"});
    EXPECT_EQ(output(), ">>> for a in b:\n...     print(a)\n17");
}

TEST_F(ScriptDeskTest, CompletionCountsBytesForTheEngine)
{
    auto &input = part<ConsoleInput>("ConsoleInput");
    input.setPlainText("å = tambo.un");
    input.moveCursor(QTextCursor::End);
    QTest::keyClick(&input, Qt::Key_Tab);
    EXPECT_EQ(m_Engine.m_CompletedAt, 13U);
    EXPECT_EQ(input.toPlainText(), "å = tambo.undo");
}

TEST_F(ScriptDeskTest, OutputIsSeenWhileTheScriptRuns)
{
    QString seen;
    m_Engine.m_Act = [&](Host &host) {
        host.write("halfway\n", OutputKind::Output);
        EXPECT_TRUE(breatheAWhile(host));
        seen = output();
        return Outcome();
    };
    run();
    EXPECT_TRUE(seen.endsWith("halfway"));
}

TEST_F(ScriptDeskTest, NothingElsePaintsOrTakesInputMeanwhile)
{
    m_Engine.m_Act = [&](Host &host) {
        EXPECT_TRUE(breatheAWhile(host));
        const int before = m_Beside->m_Count + m_Other.m_Count;
        m_Beside->update();
        m_Other.update();
        m_Other.repaint();
        QTest::mouseClick(m_Beside, Qt::LeftButton);
        QTest::mouseClick(&m_Other, Qt::LeftButton);
        QTest::keyClick(m_Beside, Qt::Key_Space);
        EXPECT_TRUE(breatheAWhile(host));
        EXPECT_EQ(m_Beside->m_Count + m_Other.m_Count, before);
        return Outcome();
    };
    const int before = m_Beside->m_Count;
    QStringList clicked;
    QObject::connect(&m_Other, &QPushButton::clicked, &m_Other, [&] { clicked << "other"; });
    run();
    EXPECT_EQ(m_Clicks, 0);
    EXPECT_TRUE(clicked.isEmpty());
    EXPECT_TRUE(m_Said.contains("sites.py is still running. Escape stops it."));
    ASSERT_TRUE(waitUntil([&] { return m_Beside->m_Count > before; }));
    QTest::mouseClick(m_Beside, Qt::LeftButton);
    EXPECT_EQ(m_Clicks, 1);
}

TEST_F(ScriptDeskTest, CommandsOfMenusWaitForTheEnd)
{
    int calls = 0;
    m_Window.menuBar()->addMenu("&File")->addAction("&Open", QKeySequence(Qt::CTRL | Qt::Key_O),
                                                    &m_Window, [&] { ++calls; });
    waitUntil([this] { return QApplication::activeWindow() == &m_Window; });
    auto &input = part<ConsoleInput>("ConsoleInput");
    input.setFocus();
    m_Engine.m_Act = [&](Host &host) {
        EXPECT_TRUE(breatheAWhile(host));
        QTest::keyClick(m_Window.windowHandle(), Qt::Key_O, Qt::ControlModifier);
        EXPECT_TRUE(breatheAWhile(host));
        return Outcome();
    };
    run();
    EXPECT_EQ(calls, 0);
    QTest::keyClick(m_Window.windowHandle(), Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(calls, 1);
}

TEST_F(ScriptDeskTest, EscapeStopsTheScript)
{
    m_Engine.m_Act = [&](Host &host) {
        EXPECT_TRUE(breatheAWhile(host));
        QTest::keyClick(&part<ConsoleInput>("ConsoleInput"), Qt::Key_Escape);
        EXPECT_FALSE(host.breathe());
        // A script may go on after the first time.
        EXPECT_TRUE(host.breathe());
        QTest::mouseClick(&part<QToolButton>("ConsoleStop"), Qt::LeftButton);
        for (int i = 0; i < 5; ++i)
            EXPECT_FALSE(host.breathe());
        Outcome outcome;
        outcome.end = Outcome::End::Stopped;
        return outcome;
    };
    run();
    EXPECT_TRUE(output().endsWith("sites.py was stopped. It had changed nothing."));
    EXPECT_EQ(m_Said.last(), "sites.py was stopped.");
    EXPECT_FALSE(part<QToolButton>("ConsoleStop").isEnabled());
}

TEST_F(ScriptDeskTest, ControlCCopiesWhatIsSelectedAndStopsOtherwise)
{
    waitUntil([this] { return QApplication::activeWindow() == &m_Window; });
    m_Engine.m_Act = [&](Host &host) {
        host.write("text\n", OutputKind::Output);
        EXPECT_TRUE(breatheAWhile(host));
        auto &shown = part<ConsoleOutput>("ConsoleOutput");
        shown.setFocus();
        shown.selectAll();
        QTest::keyClick(&shown, Qt::Key_C, Qt::ControlModifier);
        EXPECT_TRUE(host.breathe());
        shown.moveCursor(QTextCursor::End);
        QTest::keyClick(&shown, Qt::Key_C, Qt::ControlModifier);
        EXPECT_FALSE(host.breathe());
        return Outcome();
    };
    run();
}

TEST_F(ScriptDeskTest, LongWorkOfTheModelIsGivenUpWhenTheScriptIsStopped)
{
    int asked = 0;
    const auto before = modelHooks().working;
    modelHooks().working = [&](const char *, double, bool) { return ++asked > 0; };
    m_Engine.m_Act = [&](Host &) {
        EXPECT_TRUE(modelHooks().working("Coloring", 0.5, true));
        m_Desk.stop();
        EXPECT_TRUE(modelHooks().working("Coloring", 0.6, false));
        EXPECT_FALSE(modelHooks().working("Coloring", 0.6, true));
        // The script has not heard of it yet.
        EXPECT_FALSE(m_Engine.m_Host->breathe());
        return Outcome();
    };
    run();
    EXPECT_EQ(asked, 0);
    EXPECT_TRUE(modelHooks().working("Coloring", 0.5, true));
    EXPECT_EQ(asked, 1);
    modelHooks().working = before;
}

TEST_F(ScriptDeskTest, WhatArrivesWaitsForTheEnd)
{
    QStringList order;
    m_Engine.m_Act = [&](Host &host) {
        whenNothingIsPublished([&] { order << "arrived"; });
        EXPECT_TRUE(breatheAWhile(host));
        order << "done";
        return Outcome();
    };
    run();
    EXPECT_EQ(order, (QStringList{"done", "arrived"}));
}

TEST_F(ScriptDeskTest, NothingIsRunInTheMiddleOfAChangeOrOfAnotherRun)
{
    {
        const ChangeScope scope;
        EXPECT_FALSE(m_Desk.run({write("sites.py", ""), ""}));
        EXPECT_EQ(m_Said.last(), "A script cannot be run in the middle of a change.");
    }
    m_Engine.m_Act = [&](Host &) {
        EXPECT_FALSE(m_Desk.run({write("other.py", ""), ""}));
        return Outcome();
    };
    run();
    EXPECT_EQ(m_Engine.m_Files.size(), 1U);
}

TEST_F(ScriptDeskTest, ALotOfOutputIsCutToTheLastLines)
{
    m_Engine.m_Act = [](Host &host) {
        for (int i = 0; i < 200'000; ++i) {
            host.write(std::to_string(i) + '\n', OutputKind::Output);
            host.breathe();
        }
        return Outcome();
    };
    run();
    EXPECT_EQ(part<ConsoleOutput>("ConsoleOutput").blockCount(), ConsoleOutput::kMostLines);
    EXPECT_TRUE(output().endsWith("199999\nsites.py is done; it has changed nothing."));
}

TEST_F(ScriptDeskTest, ControlLEmptiesTheOutput)
{
    run();
    EXPECT_FALSE(output().isEmpty());
    waitUntil([this] { return QApplication::activeWindow() == &m_Window; });
    part<ConsoleInput>("ConsoleInput").setFocus();
    QTest::keyClick(&part<ConsoleInput>("ConsoleInput"), Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(output(), "");
}

TEST_F(ScriptDeskTest, UndoIsTheWorkbenchsUntilSomethingIsTyped)
{
    int undone = 0;
    auto *const undo = new QAction(&m_Window);
    undo->setShortcut(QKeySequence::Undo);
    m_Window.addAction(undo);
    QObject::connect(undo, &QAction::triggered, undo, [&] { ++undone; });
    waitUntil([this] { return QApplication::activeWindow() == &m_Window; });
    auto &input = part<ConsoleInput>("ConsoleInput");
    input.setFocus();
    QTest::keyClick(m_Window.windowHandle(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(undone, 1);
    QTest::keyClicks(&input, "a");
    QTest::keyClick(m_Window.windowHandle(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(undone, 1);
    EXPECT_EQ(input.toPlainText(), "");
}

TEST_F(ScriptDeskTest, ShiftTabLeadsOutOfTheInput)
{
    waitUntil([this] { return QApplication::activeWindow() == &m_Window; });
    auto &input = part<ConsoleInput>("ConsoleInput");
    input.setFocus();
    QTest::keyClick(&input, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), &part<ConsoleOutput>("ConsoleOutput"));
}

TEST_F(ScriptDeskTest, TheMenuRunsTheLastScriptsAgain)
{
    QMenu menu(&m_Window);
    new ScriptMenu(m_Desk, menu);
    m_Desk.recent().add({write("a&b.py", ""), ""});
    run();
    QMenu *const recent = menu.findChild<QMenu *>();
    ASSERT_NE(recent, nullptr);
    emit recent->aboutToShow();
    QStringList texts;
    for (const QAction *action : recent->actions())
        texts << action->text();
    EXPECT_EQ(texts, (QStringList{"sites.py 1A0J_A 'a b'", "a&&b.py", "", "Clear List"}));
    recent->actions()[1]->trigger();
    ASSERT_TRUE(waitUntil([this] { return m_Engine.m_Files.size() == 2; }));
    EXPECT_EQ(m_Engine.m_Files.back(), path("a&b.py").toStdString());
}

} // namespace ScriptDeskTest
