// SPDX-License-Identifier: GPL-3.0-or-later
// The three functions by which the workbench drives the editor, and the ways windows close.
#include "DialogDriver.h"
#include "WindowFixture.h"

#include <QAction>
#include <QMenuBar>
#include <QPointer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

extern "C" {
void Execute0();
bool IsDone();
void Cleanup();
}

namespace EntryPointsTest {

class EntryPoints : public WindowFixture
{
protected:
    ~EntryPoints() override { Cleanup(); }

    // The window that this call has opened.
    static ZEP::KALMO2 *openOne()
    {
        const QWidgetList before = QApplication::topLevelWidgets();
        Execute0();
        ZEP::KALMO2 *opened = nullptr;
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (auto *window = qobject_cast<ZEP::KALMO2 *>(widget); !before.contains(widget))
                opened = window != nullptr ? window : opened;
        return opened;
    }
    static int windowCount()
    {
        int count = 0;
        for (const QWidget *widget : QApplication::topLevelWidgets())
            count += qobject_cast<const ZEP::KALMO2 *>(widget) != nullptr ? 1 : 0;
        return count;
    }
    void note(ZEP::KALMO2 *window, const QString &name)
    {
        QObject::connect(window, &QObject::destroyed, [this, name] { m_Closed.append(name); });
    }

    QStringList m_Closed;
};

class CloseWatch : public QObject
{
protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Close)
            std::fputs("closed", stderr);
        return false;
    }
};

const QString kUndead = QStringLiteral("ZEP::KALMO2::Kill() Undead");

TEST_F(EntryPoints, TheEditorIsDoneBeforeAnyWindowAndAfterTheLast)
{
    EXPECT_TRUE(IsDone());
    ZEP::KALMO2 *window = openOne();
    ASSERT_NE(window, nullptr);
    EXPECT_FALSE(IsDone());
    EXPECT_FALSE(IsDone()) << "asking changes nothing";
    EXPECT_TRUE(window->close(false));
    EXPECT_TRUE(IsDone());
}

TEST_F(EntryPoints, ExecuteShowsOneNewEmptyWindow)
{
    ASSERT_EQ(windowCount(), 0);
    ZEP::KALMO2 *window = openOne();
    EXPECT_EQ(windowCount(), 1);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(isEmpty(*window));
    EXPECT_STREQ(window->metaObject()->className(), "ZEP::KALMO2");
}

TEST_F(EntryPoints, TheNewWindowIsKnownBeforeItIsShownAndRaisedAfterwards)
{
    class Watch : public QObject
    {
    public:
        QStringList m_Events;

    protected:
        bool eventFilter(QObject *watched, QEvent *event) override
        {
            if (qobject_cast<ZEP::KALMO2 *>(watched) == nullptr)
                return false;
            if (event->type() == QEvent::Show)
                m_Events.append(IsDone() ? "shown unknown" : "shown");
            if (event->type() == QEvent::ZOrderChange)
                m_Events.append("raised");
            return false;
        }
    };
    Watch watch;
    qApp->installEventFilter(&watch);
    Execute0();
    EXPECT_EQ(watch.m_Events, (QStringList{"shown", "raised"}));
}

using EntryPointsDeathTest = EntryPoints;

TEST_F(EntryPointsDeathTest, TheEndOfTheProcessLeavesOpenWindowsAlone)
{
    const auto endWithAWindow = [] {
        ZEP::KALMO2 *window = openOne();
        QObject::connect(window, &QObject::destroyed, [] { std::fputs("destroyed", stderr); });
        window->installEventFilter(new CloseWatch);
        std::fputs("leaving ", stderr);
        std::exit(0);
    };
    EXPECT_EXIT(endWithAWindow(), testing::ExitedWithCode(0), "leaving $");
}

TEST_F(EntryPoints, ThereIsNoLimitToTheWindows)
{
    for (int i = 0; i < 50; ++i)
        Execute0();
    EXPECT_EQ(windowCount(), 50);
    Cleanup();
    EXPECT_EQ(windowCount(), 0);
    EXPECT_TRUE(IsDone());
}

TEST_F(EntryPoints, CleanupClosesInTheOrderOfOpening)
{
    for (const QString name : {"1", "2", "3"})
        note(openOne(), name);
    Cleanup();
    EXPECT_EQ(m_Closed, (QStringList{"1", "2", "3"}));
    EXPECT_TRUE(IsDone());
}

TEST_F(EntryPoints, CleanupWithoutWindowsReturnsAtOnce)
{
    const MessageRecorder messages;
    Cleanup();
    EXPECT_TRUE(messages.messages().isEmpty());
}

TEST_F(EntryPoints, ClosingOneLeavesTheOthersInTheirOrder)
{
    note(openOne(), "a");
    ZEP::KALMO2 *b = openOne();
    note(b, "b");
    note(openOne(), "c");
    b->close(false);
    EXPECT_EQ(m_Closed, QStringList{"b"});
    Cleanup();
    EXPECT_EQ(m_Closed, (QStringList{"b", "a", "c"}));
}

TEST_F(EntryPoints, TheSecondWindowWorksOnWhenTheFirstIsClosed)
{
    TAMBO::Alignment &shown = alignment({"AC"});
    ZEP::KALMO2 *first = openOne();
    ZEP::KALMO2 *second = openOne();
    first->close(false);
    const MessageRecorder quiet;
    second->Populate(&shown);
    EXPECT_FALSE(isEmpty(*second));
    EXPECT_FALSE(IsDone());
}

TEST_F(EntryPoints, AClickOnTheFrameClosesFromTheEventLoop)
{
    const QPointer<ZEP::KALMO2> window(openOne());
    EXPECT_TRUE(window->QWidget::close());
    ASSERT_FALSE(window.isNull());
    EXPECT_FALSE(IsDone());
    QCoreApplication::processEvents();
    EXPECT_TRUE(window.isNull());
    EXPECT_TRUE(IsDone());
}

TEST_F(EntryPoints, CleanupAfterAClickOnTheFrameDeletesOnce)
{
    note(openOne(), "window");
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (qobject_cast<ZEP::KALMO2 *>(widget) != nullptr)
            widget->QWidget::close();
    const MessageRecorder messages;
    Cleanup();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_Closed, QStringList{"window"});
    EXPECT_EQ(messages.count(kUndead), 0);
}

TEST_F(EntryPoints, ExitClosesTheWindow)
{
    const QPointer<ZEP::KALMO2> window(openOne());
    QMenu *file = window->menuBar()->actions().front()->menu();
    ASSERT_EQ(file->actions().back()->text(), "Exit");
    file->actions().back()->trigger();
    QCoreApplication::processEvents();
    EXPECT_TRUE(window.isNull());
    EXPECT_TRUE(IsDone());
}

TEST_F(EntryPoints, ClosingAPopulatedWindowLeavesTheAlignment)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    ZEP::KALMO2 *window = openOne();
    {
        const MessageRecorder quiet;
        window->Populate(&shown);
        window->close(false);
    }
    EXPECT_EQ(alignments(), std::vector<TAMBO::Alignment *>{&shown});
    EXPECT_EQ(rowsOf(shown), (Texts{"AC-D", "A-CD"}));
}

TEST_F(EntryPoints, ClosingDestroysEverythingThatTheWindowOwns)
{
    ZEP::KALMO2 *window = openOne();
    const MessageRecorder quiet;
    window->Populate(&alignment({"AC-D", "A-CD"}));
    QList<QPointer<QObject>> owned;
    for (QObject *child : window->findChildren<QObject *>())
        owned.append(child);
    ASSERT_FALSE(owned.isEmpty());
    window->close(false);
    EXPECT_TRUE(std::ranges::all_of(owned, [](const auto &child) { return child.isNull(); }));
}

TEST_F(EntryPoints, KillWorksOnItsArgumentAlone)
{
    const QPointer<ZEP::KALMO2> a(openOne());
    const QPointer<ZEP::KALMO2> b(openOne());
    a->Kill(b);
    EXPECT_TRUE(b.isNull());
    EXPECT_FALSE(a.isNull());
    EXPECT_FALSE(IsDone());
}

TEST_F(EntryPoints, ASecondKillOnlySaysSo)
{
    ZEP::KALMO2 &other = open();
    ZEP::KALMO2 *window = openOne();
    note(window, "window");
    other.Kill(window);
    const ExpectMessage undead(QtDebugMsg, kUndead);
    other.Kill(window);
    EXPECT_EQ(m_Closed, QStringList{"window"});
}

TEST_F(EntryPoints, KillOfNullOnlySaysSo)
{
    ZEP::KALMO2 *window = openOne();
    const ExpectMessage undead(QtDebugMsg, kUndead);
    window->Kill(nullptr);
    EXPECT_EQ(windowCount(), 1);
}

TEST_F(EntryPoints, AWindowThatWasNotOpenedByExecuteIsLeftAlone)
{
    const QPointer<ZEP::KALMO2> window(&open());
    {
        const ExpectMessage undead(QtDebugMsg, kUndead);
        window->close(false);
    }
    EXPECT_FALSE(window.isNull());
    const MessageRecorder messages;
    closeWindows();
    EXPECT_TRUE(messages.messages().isEmpty()) << "the destructor does not look into the registry";
}

TEST_F(EntryPoints, KillIsReachedThroughTheVirtualTable)
{
    const QPointer<ZEP::KALMO2> window(openOne());
    BaseWindow *base = window;
    base->Kill(base);
    EXPECT_TRUE(window.isNull());
}

} // namespace EntryPointsTest
