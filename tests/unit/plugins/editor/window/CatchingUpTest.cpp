// SPDX-License-Identifier: GPL-3.0-or-later
// What is published to nobody, row drags, new ranges and appended columns, all the same shows
// rightly in the other windows, and what is done in them is done to what is there.
#include "SeveralWindowsFixture.h"

#include <QAction>
#include <QEventLoop>
#include <QInputDialog>
#include <QMenu>
#include <QTimer>

namespace CatchingUpTest {

class CatchingUp : public SeveralWindows
{
protected:
    CatchingUp() : shown(alignment(kRows)), first(another(shown)), second(another(shown)) { }

    static QAction *command(const ZEP::KALMO2 &window, const QString &text)
    {
        for (const QMenu *menu : window.findChildren<QMenu *>())
            for (QAction *action : menu->actions())
                if (action->text() == text)
                    return action;
        return nullptr;
    }
    // As where another program's window has been moved away.
    static void uncover(const WindowParts &parts, const QRect &rect)
    {
        for (QCanvasView *view :
             std::initializer_list<QCanvasView *>{parts.view, parts.names, parts.header})
            view->viewport()->update(rect);
    }
    QImage fresh() { return screenOf(another(shown)); }
    // Taking hold of the row selects it, which is published; that is painted before it is dropped.
    static void moveRow(ZEP::KALMO2 &window, int from, int to)
    {
        const Hands hands(window);
        hands.pressName(from);
        QCoreApplication::processEvents();
        hands.releaseName(to);
    }
    static void setRange(ZEP::KALMO2 &window, const Range &range)
    {
        QCoreApplication::processEvents();
        Panel &header = *WindowParts(window).header;
        header.SetRange(range.first, range.second);
        emit header.ReRange(range.first, range.second);
    }

    TAMBO::Alignment &shown;
    ZEP::KALMO2 &first;
    ZEP::KALMO2 &second;
    const MessageRecorder quiet;
};

// Ends a waiting event loop when a window paints.
class PaintWaiter : public QObject
{
public:
    explicit PaintWaiter(QObject &painted) { painted.installEventFilter(this); }

    // False when nothing is painted for long.
    bool wait()
    {
        constexpr int kLong = 20000;
        QTimer::singleShot(kLong, &m_Loop, [this] { m_Loop.exit(1); });
        return m_Loop.exec() == 0;
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            m_Loop.exit(0);
        return false;
    }

private:
    QEventLoop m_Loop;
};

TEST_F(CatchingUp, APartThatIsPaintedAfterARowDragElsewhereMixesNoRows)
{
    const QImage before = screenOf(second);
    moveRow(first, 0, 2);
    uncover(WindowParts(second), {0, 0, 60, 12});
    const QImage after = screenOf(second);
    EXPECT_NE(after, before);
    EXPECT_EQ(after, screenOf(first));
    EXPECT_EQ(after, fresh());
}

TEST_F(CatchingUp, APartThatIsPaintedAtOnceMixesNoRowsEither)
{
    moveRow(first, 0, 2);
    WindowParts(second).view->viewport()->repaint(0, 0, 60, 12);
    EXPECT_EQ(screenOf(second), fresh());
}

TEST_F(CatchingUp, APictureOfAWindowShowsWhatIsThere)
{
    moveRow(first, 0, 2);
    first.AddGapColumn();
    const QImage picture = second.grab().toImage();
    EXPECT_EQ(picture, another(shown).grab().toImage());
    EXPECT_EQ(screenOf(second), fresh());
}

TEST_F(CatchingUp, AScrolledWindowStaysWhereItIs)
{
    TAMBO::Alignment &large = alignment(Texts(60, "AC--" + std::string(196, 'D')));
    ZEP::KALMO2 &one = another(large);
    ZEP::KALMO2 &other = another(large);
    const WindowParts parts(other);
    parts.view->setContentsPos(333, 222);
    moveRow(one, 0, 2);
    one.AddGapColumn();
    EXPECT_FALSE(other.grab().isNull());
    QCoreApplication::processEvents();
    EXPECT_EQ(place(parts), QPoint(333, 222));
    EXPECT_EQ(parts.header->contentsX(), 333);
    EXPECT_EQ(parts.names->contentsY(), 222);
    ZEP::KALMO2 &third = another(large);
    WindowParts(third).view->setContentsPos(333, 222);
    EXPECT_EQ(screenOf(other), screenOf(third));
}

TEST_F(CatchingUp, AWindowThatIsOnlyLookedAtPaintsARowDragElsewhere)
{
    moveRow(first, 0, 2);
    PaintWaiter waiter(*WindowParts(second).view->viewport());
    EXPECT_TRUE(waiter.wait());
    EXPECT_EQ(screenOf(second), fresh());
}

TEST_F(CatchingUp, AWindowThatIsOnlyLookedAtPaintsANewRangeElsewhere)
{
    setRange(first, {4, 5});
    PaintWaiter waiter(*WindowParts(second).header->viewport());
    EXPECT_TRUE(waiter.wait());
    EXPECT_EQ(rangeOf(second), Range(4, 5));
    EXPECT_EQ(screenOf(second), fresh());
}

TEST_F(CatchingUp, TheMarkerThatIsPaintedLiesOverTheRangeThatIsUsed)
{
    setRange(first, {4, 5});
    uncover(WindowParts(second), {0, 0, 10, 10});
    EXPECT_EQ(screenOf(second), fresh());
    EXPECT_EQ(rangeOf(second), Range(4, 5));
}

TEST_F(CatchingUp, ShiftExtendsTheRangeThatAnotherWindowSet)
{
    setRange(first, {4, 5});
    Hands(second).clickMark(Hands::kLeft, 7, Qt::ShiftModifier);
    EXPECT_EQ(shown.range(), Range(4, 8));
    EXPECT_EQ(rangeOf(second), Range(4, 8));
}

TEST_F(CatchingUp, AClickMeansTheColumnThatAnotherWindowAppended)
{
    first.AddGapColumn();
    first.AddGapColumn();
    ASSERT_EQ(shown.width(), 17U);
    Hands(second).clickMark(Hands::kMiddle, 16, Qt::ShiftModifier);
    EXPECT_EQ(shown.width(), 16U);
    first.AddGapColumn();
    // Behind the row's last column there was nothing to take hold of.
    Hands(second).drag(Hands::kLeft, 0, 16, 1);
    EXPECT_EQ(rowsOf(shown).front(), "A-C--DEFGHIKLMNP-");
}

TEST_F(CatchingUp, MenuCommandsUseTheRangeThatAnotherWindowSet)
{
    setRange(first, {4, 5});
    QAction *renumber = command(second, "Renumber");
    ASSERT_NE(renumber, nullptr);
    DialogDriver dialogs;
    dialogs.expect([](QDialog &dialog) {
        dynamic_cast<QInputDialog &>(dialog).setTextValue("77");
        dialog.accept();
    });
    dialogs.expectRejected();
    dialogs.expectRejected();
    renumber->trigger();
    EXPECT_EQ(dynamic_cast<TAMBO::Group &>(*shown.getItem(0, 4)).GetSeqId().getValue(), "77");
    EXPECT_EQ(dialogs.titles(), (QStringList{"Renumber s0", "Renumber s1", "Renumber s2"}));
}

TEST_F(CatchingUp, AMenuCommandThatChangesNothingShowsTheRangeAllTheSame)
{
    setRange(first, {4, 5});
    lockAll();
    QAction *duplicate = command(second, "Duplicate");
    ASSERT_NE(duplicate, nullptr);
    duplicate->trigger();
    EXPECT_EQ(rangeOf(second), Range(4, 5));
    setRange(first, {6, 7});
    EXPECT_EQ(shown.range(), Range(4, 5)) << "locked";
    TAMBO::setObjectLocked(TAMBO::ObjectSpace::get(), false);
    setRange(first, {6, 7});
    pressButton(second, 11);
    EXPECT_EQ(rangeOf(second), Range(6, 7));
}

TEST_F(CatchingUp, NothingIsRebuiltWhereNothingHasChanged)
{
    MessageRecorder messages;
    uncover(WindowParts(second), {0, 0, 60, 12});
    Hands(second).clickMark(Hands::kLeft, 4);
    Hands(second).clickCell(Hands::kLeft, 1, 1);
    EXPECT_FALSE(second.grab().isNull());
    QCoreApplication::processEvents();
    EXPECT_EQ(messages.count("Got Alignment 3 by 15"), 0);
    moveRow(second, 0, 2);
    QCoreApplication::processEvents();
    EXPECT_FALSE(first.grab().isNull());
    EXPECT_FALSE(second.grab().isNull());
    EXPECT_EQ(messages.count("Got Alignment 3 by 15"), 1) << "only in the other window";
}

// ---- What is held while the display is made anew

TEST_F(CatchingUp, AGapThatIsHeldWhileAnEditIsUndoneIsLetGo)
{
    const Hands hands(first);
    hands.drag(Hands::kLeft, 0, 2, 5);
    const Texts edited = rowsOf(shown);
    hands.press(Hands::kLeft, 0, 5);
    EXPECT_EQ(WindowParts(first).view->viewport()->cursor().shape(), Qt::ClosedHandCursor);
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(WindowParts(first).view->viewport()->cursor().shape(), Qt::ArrowCursor);
    hands.release(Hands::kLeft, 0, 10);
    EXPECT_EQ(rowsOf(shown), kRows);
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(rowsOf(shown), edited);
}

TEST_F(CatchingUp, GapsThatAreHeldWhileAnotherWindowEditsAreLetGo)
{
    const Hands hands(first);
    for (const Qt::MouseButton button : {Hands::kLeft, Hands::kMiddle}) {
        hands.press(button, 1, 13);
        Hands(second).clickMark(Hands::kMiddle, 3);
        const Texts edited = rowsOf(shown);
        hands.release(button, 1, 5);
        EXPECT_EQ(rowsOf(shown), edited);
    }
    hands.press(Hands::kMiddle, 1, 3);
    call(second, "RemoveRow", number(1UL));
    hands.release(Hands::kMiddle, 1, 3);
    EXPECT_EQ(shown.height(), 2U);
    EXPECT_EQ(rowsOf(shown).back(), "WYA--CDEFGHIKLWYA");
}

TEST_F(CatchingUp, AGapThatIsHeldIsLetGoWhenAnotherWindowMovesItsRow)
{
    const Hands hands(first);
    hands.press(Hands::kLeft, 0, 2);
    Hands(second).dragName(0, 1);
    const Texts moved = rowsOf(shown);
    hands.release(Hands::kLeft, 0, 5);
    EXPECT_EQ(rowsOf(shown), moved);
}

TEST_F(CatchingUp, ARowThatIsHeldIsLetGoWhenAnotherWindowRemovesOne)
{
    const Hands hands(first);
    hands.pressName(0);
    EXPECT_EQ(WindowParts(first).names->viewport()->cursor().shape(), Qt::ClosedHandCursor);
    call(second, "RemoveRow", number(0UL));
    const Texts left = rowsOf(shown);
    EXPECT_EQ(WindowParts(first).names->viewport()->cursor().shape(), Qt::ArrowCursor);
    hands.releaseName(1);
    EXPECT_EQ(rowsOf(shown), left);
}

TEST_F(CatchingUp, WhatIsHeldIsLetGoWhenTheAlignmentIsClosed)
{
    const Hands hands(first);
    hands.press(Hands::kLeft, 0, 2);
    first.Clear();
    hands.release(Hands::kLeft, 0, 5);
    first.Populate(&shown);
    hands.release(Hands::kLeft, 0, 5);
    EXPECT_EQ(rowsOf(shown), kRows);
}

TEST_F(CatchingUp, WhatOnlyPaintsLeavesTheGapInTheHand)
{
    const Hands hands(first);
    hands.press(Hands::kLeft, 0, 2);
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &shown);
        shown.getItem(1, 1)->SetSelected(true);
    }
    hands.release(Hands::kLeft, 0, 5);
    EXPECT_EQ(rowsOf(shown).front(), "AC-DE-FGHIKLMNP");
}

} // namespace CatchingUpTest
