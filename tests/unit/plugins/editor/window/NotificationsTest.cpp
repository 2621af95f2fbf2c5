// SPDX-License-Identifier: GPL-3.0-or-later
// Windows follow what others change: updates, undo, deletions, and several windows on one
// alignment.
#include "WindowFixture.h"

#include "DataDelete.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "QCanvasText.h"
#include "ShownObjects.h"
#include "Space.h"

namespace NotificationsTest {

class Notifications : public WindowFixture
{
protected:
    static void publishUpdate(TAMBO::Alignment &alignment)
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &alignment);
        EXPECT_TRUE(guard.m_good);
    }
    static void destroy(TAMBO::Compound &object)
    {
        const DataDelete<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
        ASSERT_TRUE(guard.m_good);
        TAMBO::DataMaker::Destroy(&object);
    }
    static int cellsOf(const ZEP::KALMO2 &window)
    {
        return static_cast<int>(WindowParts(window).cells->allItems().size());
    }
};

const QString kKilled = QStringLiteral("KALMO2::commDelete(): Did somebody killed my data?");

TEST_F(Notifications, AnUpdateWithoutAChangeOfShapeRebuildsNothing)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    const ZEP::KALMO2 &window = open(shown);
    const MessageRecorder messages;
    publishUpdate(shown);
    EXPECT_EQ(messages.messages(), QStringList());
    EXPECT_EQ(cellsOf(window), 3);
}

TEST_F(Notifications, TheWindowSaysWhatItShows)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    TAMBO::Alignment &other = alignment({"ACD"});
    ZEP::KALMO2 &window = open(shown);
    EXPECT_EQ(ShownObjects::Of(&window), &shown);
    const MessageRecorder quiet;
    window.Populate(&other);
    EXPECT_EQ(ShownObjects::Of(&window), &other);
    window.Clear();
    EXPECT_EQ(ShownObjects::Of(&window), nullptr);
    window.Populate(&shown);
    destroy(shown);
    EXPECT_EQ(ShownObjects::Of(&window), nullptr);
}

TEST_F(Notifications, ANewNameShowsInTheCorner)
{
    TAMBO::Alignment &shown = alignment({"ACD"}, "before");
    const WindowParts parts(open(shown));
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &shown);
        TAMBO::renameObject(shown, "after");
    }
    EXPECT_EQ(parts.corner->text(), "after");
    EXPECT_EQ(parts.corner->toolTip(), "after");
}

TEST_F(Notifications, AnEditElsewhereRebuildsTheDisplay)
{
    TAMBO::Alignment &shown = alignment({"ACD", "AC-"});
    const ZEP::KALMO2 &window = open(shown);
    const MessageRecorder messages;
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &shown);
        guard->insertGapCol(1, 2);
    }
    EXPECT_EQ(messages.messages(), QStringList{"Got Alignment 2 by 5"});
    EXPECT_EQ(cellsOf(window), 10);
}

TEST_F(Notifications, ANewResidueNumberElsewhereShows)
{
    TAMBO::Alignment &shown = alignment({"ACDEFGHIKL"});
    const WindowParts parts(open(shown));
    const MessageRecorder quiet;
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &shown);
        dynamic_cast<TAMBO::Group &>(*shown.getItem(0, 9)).SetSeqId(TAMBO::SequenceNumber("77B"));
    }
    QStringList numbers;
    for (const QCanvasItem *item : parts.headerCanvas->allItems())
        if (item->rtti() == QCanvasText::RTTI)
            numbers.append(static_cast<const QCanvasText *>(item)->text());
    EXPECT_EQ(numbers, QStringList{"77B"});
}

TEST_F(Notifications, UndoShowsInEveryWindow)
{
    TAMBO::Alignment &shown = alignment({"ACD", "AC-"});
    ZEP::KALMO2 &first = open(shown);
    const ZEP::KALMO2 &second = open(shown);
    const MessageRecorder quiet;
    call(first, "RemoveCol", number(0UL));
    EXPECT_EQ(cellsOf(second), 4);
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(cellsOf(first), 6);
    EXPECT_EQ(cellsOf(second), 6);
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(cellsOf(first), 4);
    EXPECT_EQ(cellsOf(second), 4);
}

TEST_F(Notifications, ASilentEditElsewhereShowsAtTheNextNotification)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    TAMBO::Alignment &another = alignment({"ACD"});
    ZEP::KALMO2 &first = open(shown);
    const ZEP::KALMO2 &second = open(shown);
    const MessageRecorder quiet;
    first.AddGapColumn();
    EXPECT_EQ(cellsOf(first), 4);
    EXPECT_EQ(cellsOf(second), 3);
    publishUpdate(another);
    EXPECT_EQ(cellsOf(second), 4);
}

TEST_F(Notifications, ARowDragAfterASilentEditDoesNotHideTheEdit)
{
    TAMBO::Alignment &shown = alignment({"ACD", "EFG"});
    ZEP::KALMO2 &first = open(shown);
    const ZEP::KALMO2 &second = open(shown);
    const MessageRecorder quiet;
    first.AddGapColumn();
    shown.bubbleRow(0, 1);
    emit WindowParts(second).names->ReArrange();
    publishUpdate(shown);
    EXPECT_EQ(cellsOf(second), 8);
}

TEST_F(Notifications, ARowDragNeedsNoRebuildAtTheNextNotification)
{
    TAMBO::Alignment &shown = alignment({"ACD", "EFG"});
    const ZEP::KALMO2 &window = open(shown);
    shown.bubbleRow(0, 1);
    emit WindowParts(window).names->ReArrange();
    const MessageRecorder messages;
    publishUpdate(shown);
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(Notifications, AnAddDoesNothing)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    ZEP::KALMO2 &window = open(shown);
    const MessageRecorder messages;
    alignment({"EFG"});
    window.commAdd();
    EXPECT_EQ(messages.messages(), QStringList());
    EXPECT_EQ(cellsOf(window), 3);
}

TEST_F(Notifications, AnEmptyWindowTakesThemWithoutAWord)
{
    TAMBO::Alignment &other = alignment({"ACD"});
    const ZEP::KALMO2 &window = open();
    const MessageRecorder messages;
    publishUpdate(other);
    destroy(other);
    EXPECT_EQ(messages.messages(), QStringList());
    EXPECT_TRUE(isEmpty(window));
}

TEST_F(Notifications, DeletingTheShownAlignmentEmptiesTheWindow)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    const ZEP::KALMO2 &window = open(shown);
    const ExpectMessage killed(QtDebugMsg, kKilled);
    destroy(shown);
    EXPECT_TRUE(isEmpty(window));
}

TEST_F(Notifications, DeletingSomethingElseOnlyRedraws)
{
    TAMBO::Alignment &shown = alignment({"ACD"}, "shown");
    TAMBO::Alignment &other = alignment({"EFG"}, "other");
    const ZEP::KALMO2 &window = open(shown);
    const MessageRecorder messages;
    destroy(other);
    EXPECT_EQ(messages.messages(), QStringList{kKilled});
    EXPECT_EQ(cellsOf(window), 3);
    EXPECT_EQ(WindowParts(window).corner->text(), "shown");
}

TEST_F(Notifications, DeletingASequenceTakesItsRowFromTheDisplay)
{
    TAMBO::Alignment &shown = alignment({"ACD", "EFG"});
    const ZEP::KALMO2 &window = open(shown);
    const MessageRecorder quiet;
    destroy(*shown.GetSeq(0));
    EXPECT_EQ(rowsOf(shown), Texts{"EFG"});
    EXPECT_EQ(cellsOf(window), 3);
    EXPECT_EQ(WindowParts(window).nameCanvas->allItems().size(), 1);
}

TEST_F(Notifications, AWindowClosedDuringANotificationIsLeftOut)
{
    class Closer : public RecordingSubscriber
    {
    public:
        void commUpdate() override
        {
            if (close)
                close();
        }
        std::function<void()> close;
    };
    TAMBO::Alignment &shown = alignment({"ACD"});
    Closer closer;
    open(shown);
    open(shown);
    closer.close = [this] { closeWindows(); };
    publishUpdate(shown);
    EXPECT_EQ(rowsOf(shown), Texts{"ACD"});
}

TEST_F(Notifications, AWindowOpenedOnAnAlignmentClosesWithoutTouchingIt)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    open(shown);
    const RecordingSubscriber listener;
    closeWindows();
    EXPECT_TRUE(listener.calls.empty());
    EXPECT_EQ(rowsOf(shown), Texts{"ACD"});
}

} // namespace NotificationsTest
