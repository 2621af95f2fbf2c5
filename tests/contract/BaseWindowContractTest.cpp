// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of BaseWindow: opening, closing, and the place of windows.
#include "BaseWindow.h"

#include <QCloseEvent>
#include <QDialog>
#include <QLayout>
#include <QPointer>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include <gmock/gmock.h>

#include <functional>
#include <memory>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace BaseWindowContractTest {

// Notes what Kill() gets.
class RecordingWindow : public BaseWindow
{
public:
    explicit RecordingWindow(const QString &caption = "Recording", const QSize &size = {700, 500},
                             const QString &placeKey = QString(), bool fixedSize = false)
        : BaseWindow(caption, size, placeKey, fixedSize, nullptr, "name")
    { }

    void Kill(BaseWindow *window) override { m_Killed.push_back(window); }
    [[nodiscard]] const std::vector<BaseWindow *> &killed() const { return m_Killed; }

private:
    std::vector<BaseWindow *> m_Killed;
};

// Deletes itself in Kill(), as windows of plug-ins do.
class MortalWindow : public BaseWindow
{
public:
    explicit MortalWindow(int &kills)
        : BaseWindow("Mortal", QSize(700, 500), QString(), false, nullptr, nullptr), m_Kills(kills)
    { }

    void Kill(BaseWindow *window) override
    {
        ++m_Kills;
        delete window;
    }

private:
    int &m_Kills;
};

class StubbornWindow : public RecordingWindow
{
protected:
    void closeEvent(QCloseEvent *event) override { event->ignore(); }
};

// Asks on its stack, and lets what happens meanwhile happen.
int ask(QWidget &parent, const std::function<void(QDialog &)> &meanwhile)
{
    QDialog dialog(&parent);
    QTimer::singleShot(0, &dialog, [&] { meanwhile(dialog); });
    return dialog.exec();
}

// As the window system does for a click on the frame.
void clickOnFrame(BaseWindow &window)
{
    window.close();
}

TEST(BaseWindowContract, TakesCaptionSizeAndName)
{
    const RecordingWindow window("Alignment Editor", QSize(500, 150));
    EXPECT_EQ(window.windowTitle(), "Alignment Editor");
    EXPECT_EQ(window.size(), QSize(500, 150));
    EXPECT_EQ(window.objectName(), "name");
    EXPECT_EQ(window.parent(), nullptr);
}

// Notes how large its window is when the window system hears of it.
class FirstSizeNote : public QObject
{
public:
    explicit FirstSizeNote(QWidget &window) : m_Window(window) { window.installEventFilter(this); }
    [[nodiscard]] QSize size() const { return m_Size; }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::WinIdChange && m_Size.isEmpty())
            m_Size = m_Window.size();
        return false;
    }

private:
    QWidget &m_Window;
    QSize m_Size;
};

TEST(BaseWindowContract, AWindowThatAsksForLittleHasAComfortableSizeFromTheFirstMomentOn)
{
    RecordingWindow window("Little", QSize(200, 150));
    const FirstSizeNote note(window);
    window.show();
    EXPECT_GT(window.width(), 400);
    EXPECT_EQ(note.size(), window.size());
}

TEST(BaseWindowContract, WhatTheLayoutHasAskedForMeanwhileIsNoChoiceOfASize)
{
    RecordingWindow window("Grown by its layout", QSize(200, 150));
    auto *const content = new QWidget;
    window.setCentralWidget(content);
    content->setMinimumSize(250, 180);
    window.layout()->activate();
    ASSERT_EQ(window.size(), QSize(250, 180));
    content->setMinimumSize(10, 10);
    window.show();
    RecordingWindow other("Not grown", QSize(200, 150));
    other.show();
    EXPECT_EQ(window.size(), other.size());
    EXPECT_GT(window.width(), 400);
}

TEST(BaseWindowContract, CloseCallsKillAtOnceWithTheWindowItself)
{
    RecordingWindow window;
    window.show();
    EXPECT_TRUE(window.close(false));
    EXPECT_THAT(window.killed(), ElementsAre(&window));
    EXPECT_FALSE(window.isVisible());
    QCoreApplication::processEvents();
    EXPECT_EQ(window.killed().size(), 1U);
}

TEST(BaseWindowContract, CloseOfAWindowThatWasNeverShownCallsKill)
{
    RecordingWindow window;
    EXPECT_TRUE(window.close(false));
    EXPECT_THAT(window.killed(), ElementsAre(&window));
}

TEST(BaseWindowContract, AWindowThatDeletesItselfInKillIsGoneWhenCloseReturns)
{
    int kills = 0;
    QPointer<BaseWindow> window = new MortalWindow(kills);
    window->show();
    EXPECT_TRUE(window->close(false));
    EXPECT_TRUE(window.isNull());
    EXPECT_EQ(kills, 1);
}

TEST(BaseWindowContract, AClosingWindowFirstEndsItsWaitingDialogsAndLeavesThemToTheirCallers)
{
    int kills = 0;
    const QPointer<BaseWindow> window = new MortalWindow(kills);
    window->show();
    const int answer = ask(*window, [&](QDialog &outer) {
        EXPECT_EQ(ask(outer,
                      [&](QDialog &inner) {
                          window->close(false);
                          EXPECT_TRUE(window.isNull());
                          EXPECT_FALSE(inner.isVisible());
                          EXPECT_FALSE(outer.isVisible());
                          EXPECT_EQ(outer.parent(), nullptr);
                      }),
                  QDialog::Rejected);
    });
    EXPECT_EQ(answer, QDialog::Rejected);
    EXPECT_EQ(kills, 1);
}

TEST(BaseWindowContract, AWindowThatIsDeletedLeavesWaitingDialogsToTheirCallersToo)
{
    auto window = std::make_unique<RecordingWindow>();
    window->show();
    EXPECT_EQ(ask(*window, [&](QDialog &) { window.reset(); }), QDialog::Rejected);
}

TEST(BaseWindowContract, ADialogThatHasItsAnswerKeepsItWhenTheWindowGoesBeforeItReturns)
{
    auto window = std::make_unique<RecordingWindow>();
    window->show();
    const int answer = ask(*window, [&](QDialog &dialog) {
        dialog.accept();
        window.reset();
    });
    EXPECT_EQ(answer, QDialog::Accepted);
}

TEST(BaseWindowContract, ARefusedCloseLeavesTheDialogWaiting)
{
    StubbornWindow window;
    window.show();
    const int answer = ask(window, [&](QDialog &dialog) {
        EXPECT_FALSE(window.close(false));
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(dialog.parent(), &window);
        dialog.accept();
    });
    EXPECT_EQ(answer, QDialog::Accepted);
}

TEST(BaseWindowContract, DialogsThatWaitForNobodyGoWithTheirWindow)
{
    auto window = std::make_unique<RecordingWindow>();
    const QPointer<QDialog> free = new QDialog(window.get());
    const QPointer<QDialog> told = new QDialog(window.get());
    told->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
    free->show();
    told->open();
    window.reset();
    EXPECT_TRUE(free.isNull());
    EXPECT_TRUE(told.isNull());
}

TEST(BaseWindowContract, AClickOnTheFrameCallsKillFromTheEventLoop)
{
    RecordingWindow window;
    window.show();
    clickOnFrame(window);
    EXPECT_THAT(window.killed(), IsEmpty());
    EXPECT_FALSE(window.isVisible());
    QCoreApplication::processEvents();
    EXPECT_THAT(window.killed(), ElementsAre(&window));
}

TEST(BaseWindowContract, TwoClicksOnTheFrameCallKillOnce)
{
    RecordingWindow window;
    window.show();
    QCloseEvent first;
    QCloseEvent second;
    QCoreApplication::sendEvent(&window, &first);
    QCoreApplication::sendEvent(&window, &second);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.killed().size(), 1U);
}

TEST(BaseWindowContract, AWindowClosedAtTheFrameCanBeShownAndClosedAgain)
{
    RecordingWindow window;
    for (std::size_t times = 1; times <= 2; ++times) {
        window.show();
        clickOnFrame(window);
        QCoreApplication::processEvents();
        EXPECT_EQ(window.killed().size(), times);
    }
}

TEST(BaseWindowContract, CleaningUpBetweenAClickOnTheFrameAndItsHandlingDeletesOnce)
{
    int kills = 0;
    QPointer<BaseWindow> window = new MortalWindow(kills);
    window->show();
    clickOnFrame(*window);
    ASSERT_FALSE(window.isNull());
    EXPECT_TRUE(window->close(false));
    EXPECT_TRUE(window.isNull());
    QCoreApplication::processEvents();
    EXPECT_EQ(kills, 1);
}

TEST(BaseWindowContract, CleaningUpInBetweenLeavesNoSecondKillBehind)
{
    RecordingWindow window;
    window.show();
    clickOnFrame(window);
    EXPECT_TRUE(window.close(false));
    QCoreApplication::processEvents();
    EXPECT_EQ(window.killed().size(), 1U);
}

TEST(BaseWindowContract, DeletingAWindowThatWasClosedAtTheFrameDropsItsKill)
{
    int kills = 0;
    auto window = std::make_unique<MortalWindow>(kills);
    window->show();
    clickOnFrame(*window);
    window.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(kills, 0);
}

TEST(BaseWindowContract, AWindowThatRefusesToCloseIsNotKilled)
{
    StubbornWindow window;
    window.show();
    EXPECT_FALSE(window.close(false));
    QCoreApplication::processEvents();
    EXPECT_THAT(window.killed(), IsEmpty());
    EXPECT_TRUE(window.isVisible());
}

TEST(BaseWindowContract, CloseWithDeletionDeletesAWindowThatKillLeavesAlone)
{
    QPointer<BaseWindow> window = new RecordingWindow;
    EXPECT_TRUE(window->close(true));
    EXPECT_TRUE(window.isNull());
    QPointer<BaseWindow> plain = new BaseWindow("Plain", {}, {}, false, nullptr, nullptr);
    EXPECT_TRUE(plain->close(false));
    ASSERT_FALSE(plain.isNull());
    EXPECT_TRUE(plain->close(true));
    EXPECT_TRUE(plain.isNull());
}

TEST(BaseWindowContract, CloseWithDeletionDeletesOnceWhatKillDeletes)
{
    int kills = 0;
    BaseWindow *window = new MortalWindow(kills);
    EXPECT_TRUE(window->close(true));
    EXPECT_EQ(kills, 1);
}

TEST(BaseWindowContract, SetFontIsVirtual)
{
    class FontWindow : public RecordingWindow
    {
    public:
        void setFont(const QFont &font) override { m_Given = font; }
        QFont m_Given;
    };
    FontWindow window;
    BaseWindow &base = window;
    base.setFont(QFont("DejaVu Serif", 31));
    EXPECT_EQ(window.m_Given.pointSize(), 31);
    EXPECT_NE(window.font().pointSize(), 31);
    RecordingWindow plain;
    plain.setFont(QFont("DejaVu Serif", 31));
    EXPECT_EQ(plain.font().pointSize(), 31);
}

TEST(BaseWindowContract, AWindowThatAsksForLittleOpensComfortably)
{
    RecordingWindow window("Little", QSize(500, 150));
    window.show();
    const QSize screen = window.screen()->availableSize();
    EXPECT_GE(window.height(), screen.height() / 2);
    EXPECT_LE(window.height(), screen.height());
    EXPECT_GE(window.width(), 500);
}

TEST(BaseWindowContract, ASizeSetBeforeShowingIsKept)
{
    RecordingWindow window("Set", QSize(500, 150));
    window.resize(510, 160);
    window.show();
    EXPECT_EQ(window.size(), QSize(510, 160));
}

TEST(BaseWindowContract, AFixedSizeIsWhatWasAskedFor)
{
    RecordingWindow window("Fixed", QSize(200, 100), QString(), true);
    window.show();
    EXPECT_EQ(window.size(), QSize(200, 100));
    EXPECT_EQ(window.minimumSize(), window.maximumSize());
}

TEST(BaseWindowContract, SizeAndPlaceComeBackUnderTheCaption)
{
    {
        RecordingWindow window("Remembered");
        window.show();
        window.setGeometry(40, 50, 610, 420);
        window.close(false);
    }
    RecordingWindow again("Remembered");
    again.show();
    EXPECT_EQ(again.geometry(), QRect(40, 50, 610, 420));
    RecordingWindow other("Another");
    other.show();
    EXPECT_NE(other.geometry(), again.geometry());
}

TEST(BaseWindowContract, SizeAndPlaceComeBackUnderTheKeyWhenOneIsGiven)
{
    {
        RecordingWindow window("A caption", QSize(700, 500), "the key");
        window.show();
        window.setGeometry(20, 30, 444, 333);
        clickOnFrame(window);
        QCoreApplication::processEvents();
    }
    RecordingWindow again("Another caption", QSize(700, 500), "the key");
    again.show();
    EXPECT_EQ(again.geometry(), QRect(20, 30, 444, 333));
}

TEST(BaseWindowContract, ASecondWindowOfAKindDoesNotHideTheFirst)
{
    RecordingWindow first("Twins", QSize(600, 400));
    RecordingWindow second("Twins", QSize(600, 400));
    first.move(0, 0);
    second.move(0, 0);
    first.show();
    second.show();
    EXPECT_EQ(first.pos(), QPoint(0, 0));
    EXPECT_NE(second.pos(), first.pos());
    EXPECT_TRUE(second.screen()->availableGeometry().contains(second.frameGeometry()));
}

TEST(BaseWindowContract, ASecondWindowStepsAsideOfOneThatIsSomePixelsBeside)
{
    RecordingWindow first("Neighbors", QSize(600, 400));
    first.show();
    // As window managers do, which count the frame in another way.
    first.move(104, 123);
    RecordingWindow second("Neighbors", QSize(600, 400));
    second.move(100, 100);
    second.show();
    const QPoint distance = second.pos() - first.pos();
    EXPECT_TRUE(std::abs(distance.x()) >= 20 || std::abs(distance.y()) >= 20);
}

TEST(BaseWindowContract, WindowsThatNobodyHasPlacedStandBesideEachOther)
{
    std::vector<std::unique_ptr<RecordingWindow>> windows;
    for (int i = 0; i < 12; ++i) {
        windows.push_back(std::make_unique<RecordingWindow>("Family", QSize(600, 400)));
        windows.back()->show();
        if (i == 0)
            windows.back()->move(40, 50);
    }
    const QRect room = windows.front()->screen()->availableGeometry();
    for (const auto &one : windows) {
        EXPECT_TRUE(room.contains(one->pos()));
        for (const auto &other : windows)
            EXPECT_TRUE(one == other || one->pos() != other->pos());
    }
}

TEST(BaseWindowContract, ManyLargeWindowsCanAllBeTakenHoldOf)
{
    std::vector<std::unique_ptr<RecordingWindow>> windows;
    for (int i = 0; i < 40; ++i) {
        windows.push_back(std::make_unique<RecordingWindow>("Crowd", QSize(780, 700)));
        windows.back()->show();
        if (i == 0)
            windows.back()->move(0, 0);
    }
    const QRect room = windows.front()->screen()->availableGeometry();
    for (const auto &one : windows)
        EXPECT_TRUE(room.contains(QRect(one->pos(), QSize(120, 40))))
            << one->pos().x() << ' ' << one->pos().y();
}

TEST(BaseWindowContract, ASecondWindowStepsAsideWhateverStandsBehindTheCaption)
{
    RecordingWindow first("Captions", QSize(600, 400));
    first.move(30, 30);
    first.show();
    first.setWindowTitle("Captions – and more");
    RecordingWindow second("Captions", QSize(600, 400));
    second.show();
    EXPECT_EQ(second.placeKey(), first.placeKey());
    EXPECT_EQ(second.pos(), first.pos() + QPoint(28, 28));
}

} // namespace BaseWindowContractTest
