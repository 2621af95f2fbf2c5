// SPDX-License-Identifier: GPL-3.0-or-later
// The edits that views and panels ask the window for, and its connections to them.
#include "Hands.h"
#include "WindowFixture.h"

#include "QCanvasRectangle.h"

#include <QMouseEvent>
#include <QSignalSpy>

namespace WindowEditsTest {

class WindowEdits : public WindowFixture
{
protected:
    static QGenericArgument index(const unsigned long &value) { return number(value); }
    // The window must leave the alignment and itself as they are.
    void expectNothingFrom(ZEP::KALMO2 &window, const char *slot, unsigned long value)
    {
        const MessageRecorder messages;
        call(window, slot, number(value));
        EXPECT_EQ(messages.messages(), QStringList()) << slot << ' ' << value;
    }
};

// A window that counts what it is told.
class ToldWindow : public ZEP::KALMO2
{
public:
    void commUpdate() override
    {
        ++m_Updates;
        KALMO2::commUpdate();
    }
    int m_Updates = 0;
};

const QString kRefused = QStringLiteral("Cannot update CDB!");

TEST_F(WindowEdits, InsertColPutsAGapColumnBeforeTheIndex)
{
    TAMBO::Alignment &shown = alignment({"ACD", "AC-"});
    ZEP::KALMO2 &window = open(shown);
    {
        const ExpectMessage rebuilt(QtDebugMsg, "Got Alignment 2 by 4");
        call(window, "InsertCol", number(1UL));
    }
    EXPECT_EQ(rowsOf(shown), (Texts{"A-CD", "A-C-"}));
    EXPECT_EQ(WindowParts(window).cells->allItems().size(), 8);
    const MessageRecorder quiet;
    call(window, "InsertCol", number(0UL));
    EXPECT_EQ(rowsOf(shown), (Texts{"-A-CD", "-A-C-"}));
}

TEST_F(WindowEdits, InsertColBehindTheLastColumnAppends)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    ZEP::KALMO2 &window = open(shown);
    const MessageRecorder quiet;
    call(window, "InsertCol", number(3UL));
    EXPECT_EQ(rowsOf(shown), Texts{"ACD-"});
}

TEST_F(WindowEdits, InsertColBeyondThatDoesNothing)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    expectNothingFrom(open(shown), "InsertCol", 4);
    expectNothingFrom(open(), "InsertCol", 0);
    EXPECT_EQ(rowsOf(shown), Texts{"ACD"});
    EXPECT_FALSE(history.canUndo());
}

TEST_F(WindowEdits, RemoveColTakesTheColumnOut)
{
    TAMBO::Alignment &shown = alignment({"ACDEF", "A-DEF"});
    ZEP::KALMO2 &window = open(shown);
    const ExpectMessage rebuilt(QtDebugMsg, "Got Alignment 2 by 4");
    call(window, "RemoveCol", number(1UL));
    EXPECT_EQ(rowsOf(shown), (Texts{"ADEF", "ADEF"}));
}

TEST_F(WindowEdits, TheOnlyColumnIsNeverRemoved)
{
    TAMBO::Alignment &one = alignment({"A", "C"});
    expectNothingFrom(open(one), "RemoveCol", 0);
    EXPECT_EQ(rowsOf(one), (Texts{"A", "C"}));
    TAMBO::Alignment &two = alignment({"AC"});
    expectNothingFrom(open(two), "RemoveCol", 2);
    EXPECT_EQ(rowsOf(two), Texts{"AC"});
    expectNothingFrom(open(), "RemoveCol", 0);
}

TEST_F(WindowEdits, RemoveRowTakesTheRowOut)
{
    TAMBO::Alignment &shown = alignment({"AC", "DE", "FG"});
    ZEP::KALMO2 &window = open(shown);
    const ExpectMessage rebuilt(QtDebugMsg, "Got Alignment 2 by 2");
    call(window, "RemoveRow", number(1UL));
    EXPECT_EQ(rowsOf(shown), (Texts{"AC", "FG"}));
}

TEST_F(WindowEdits, TheOnlyRowIsNeverRemoved)
{
    TAMBO::Alignment &one = alignment({"AC"});
    expectNothingFrom(open(one), "RemoveRow", 0);
    EXPECT_EQ(rowsOf(one), Texts{"AC"});
    TAMBO::Alignment &two = alignment({"AC", "DE"});
    expectNothingFrom(open(two), "RemoveRow", 2);
    TAMBO::Alignment &none = alignmentWithoutColumns();
    expectNothingFrom(open(none), "RemoveRow", 0);
    EXPECT_FALSE(history.canUndo());
    expectNothingFrom(open(), "RemoveRow", 0);
}

TEST_F(WindowEdits, ARefusedEditSaysSoAndChangesNothing)
{
    TAMBO::Alignment &shown = alignment({"ACD", "AC-"});
    ZEP::KALMO2 &window = open(shown);
    TAMBO::setObjectLocked(shown, true);
    for (const char *slot : {"InsertCol", "RemoveCol", "RemoveRow"}) {
        const MessageRecorder messages;
        call(window, slot, number(1UL));
        EXPECT_EQ(messages.messages(), QStringList{kRefused}) << slot;
    }
    EXPECT_EQ(rowsOf(shown), (Texts{"ACD", "AC-"}));
    EXPECT_EQ(WindowParts(window).cells->allItems().size(), 6);
    EXPECT_FALSE(history.canUndo());
}

TEST_F(WindowEdits, EachEditIsOneStepBack)
{
    TAMBO::Alignment &shown = alignment({"ACD", "AC-"});
    ZEP::KALMO2 &window = open(shown);
    const MessageRecorder quiet;
    for (const char *slot : {"InsertCol", "RemoveCol", "RemoveRow"}) {
        call(window, slot, number(1UL));
        EXPECT_NE(rowsOf(shown), (Texts{"ACD", "AC-"})) << slot;
        EXPECT_TRUE(history.undo());
        EXPECT_FALSE(history.canUndo()) << slot;
        EXPECT_EQ(rowsOf(shown), (Texts{"ACD", "AC-"})) << slot;
        EXPECT_EQ(WindowParts(window).cells->allItems().size(), 6) << slot;
    }
}

TEST_F(WindowEdits, OtherWindowsHearOfAnEditAfterThisOneIsRebuilt)
{
    TAMBO::Alignment &shown = alignment({"ACD", "AC-"});
    ZEP::KALMO2 &window = open(shown);
    ZEP::KALMO2 &other = open(shown);
    const RecordingSubscriber listener;
    const MessageRecorder messages;
    call(window, "InsertCol", number(1UL));
    EXPECT_EQ(messages.count("Got Alignment 2 by 4"), 2) << "each window once";
    EXPECT_EQ(WindowParts(other).cells->allItems().size(), 8);
    EXPECT_EQ(listener.calls, Texts{"update"});
}

TEST_F(WindowEdits, TheWindowThatEditedIsNotToldOfItAndIsRebuiltBeforeOthersHear)
{
    class Early : public Subscriber
    {
    public:
        explicit Early(const MessageRecorder &messages) : m_Messages(messages) { }
        void commUpdate() override { m_Seen.append(m_Messages.messages()); }
        void commAdd() override { }
        void commDelete() override { }
        QStringList m_Seen;

    private:
        const MessageRecorder &m_Messages;
    };
    for (const char *slot : {"InsertCol", "RemoveCol", "RemoveRow"}) {
        TAMBO::Alignment &shown = alignment({"ACD", "AC-"});
        MessageRecorder messages;
        // Told first of all: it hears what the window had said by then.
        Early early(messages);
        ToldWindow window;
        window.Populate(&shown);
        ToldWindow other;
        other.Populate(&shown);
        messages.clear();
        window.m_Updates = 0;
        other.m_Updates = 0;
        call(window, slot, number(1UL));
        EXPECT_EQ(early.m_Seen.size(), 1) << slot << ": the window alone, and no more";
        // Once by the rebuild, which begins with taking everything away.
        EXPECT_EQ(window.m_Updates, 1) << slot;
        EXPECT_EQ(other.m_Updates, 2) << slot;
    }
}

TEST_F(WindowEdits, AWindowIsToldOfChangesFromItsConstructionOn)
{
    TAMBO::Alignment &any = alignment({"ACD"});
    ToldWindow window;
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &any);
    }
    EXPECT_EQ(window.m_Updates, 1);
}

TEST_F(WindowEdits, AddGapColumnAppendsWithoutTellingAnybody)
{
    TAMBO::Alignment &shown = alignment({"ACDEF"});
    ZEP::KALMO2 &window = open(shown);
    const RecordingSubscriber listener;
    {
        const ExpectMessage rebuilt(QtDebugMsg, "Got Alignment 1 by 6");
        window.AddGapColumn();
    }
    EXPECT_EQ(rowsOf(shown), Texts{"ACDEF-"});
    EXPECT_TRUE(listener.calls.empty());
    EXPECT_EQ(WindowParts(window).cells->allItems().size(), 6);
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(rowsOf(shown), Texts{"ACDEF"});
}

TEST_F(WindowEdits, AddGapColumnOnALockedAlignmentIsRefusedByTheModel)
{
    TAMBO::Alignment &shown = alignment({"AC"});
    ZEP::KALMO2 &window = open(shown);
    TAMBO::setObjectLocked(shown, true);
    const MessageRecorder quiet;
    const LogLines log;
    window.AddGapColumn();
    EXPECT_EQ(rowsOf(shown), Texts{"AC"});
    EXPECT_EQ(log.count(), 1);
}

TEST_F(WindowEdits, ReRangeSetsTheRangeAndDrawsNothing)
{
    TAMBO::Alignment &shown = alignment({"ACDEF"});
    ZEP::KALMO2 &window = open(shown);
    const RecordingSubscriber listener;
    call(window, "ReRange", number(2UL), number(4UL));
    EXPECT_EQ(shown.range(), TAMBO::Alignment::Range(2, 4));
    EXPECT_EQ(WindowParts(window).header->end(), 0U) << "the marker is the panel's own business";
    EXPECT_TRUE(listener.calls.empty());
}

TEST_F(WindowEdits, ARefusedRangePutsTheMarkerBack)
{
    TAMBO::Alignment &shown = alignment({"ACDEF"});
    shown.range({1, 3});
    ZEP::KALMO2 &window = open(shown);
    Panel &header = *WindowParts(window).header;
    const auto expectBack = [&](unsigned long begin, unsigned long end) {
        header.SetRange(begin, end);
        emit header.ReRange(begin, end);
        EXPECT_EQ(shown.range(), TAMBO::Alignment::Range(1, 3));
        EXPECT_EQ(header.begin(), 1U);
        EXPECT_EQ(header.end(), 3U);
    };
    expectBack(5, 6);
    TAMBO::setObjectLocked(shown, true);
    expectBack(2, 4);
    expectBack(2, 6);
}

TEST_F(WindowEdits, ShiftLeftAtAMarkWorksWhenTheRangeIsEmptyBehindTheLastColumn)
{
    TAMBO::Alignment &shown = alignment({"ACDEF"});
    shown.range({5, 5});
    ZEP::KALMO2 &window = show(shown, {600, 300});
    Panel &header = *WindowParts(window).header;
    QSignalSpy ranges(&header, &Panel::ReRange);
    const ExpectMessage said(QtDebugMsg, "Range [2..6)");
    Hands(window).clickMark(Hands::kLeft, 2, Qt::ShiftModifier);
    ASSERT_EQ(ranges.count(), 1);
    EXPECT_EQ(ranges.front().at(0).value<ulong>(), 2U);
    EXPECT_EQ(ranges.front().at(1).value<ulong>(), 6U);
    EXPECT_EQ(shown.range(), TAMBO::Alignment::Range(2, 5));
    QCoreApplication::processEvents();
    EXPECT_EQ(header.begin(), 2U);
    EXPECT_EQ(header.end(), 5U) << "the marker covers what is there";
}

TEST_F(WindowEdits, ReRangeWithoutAnAlignmentIsReported)
{
    ZEP::KALMO2 &window = open();
    const ExpectMessage failed(QtWarningMsg, "ASSERT: \"m_Data\" in KALMO2 (531)");
    call(window, "ReRange", number(1UL), number(2UL));
}

TEST_F(WindowEdits, TheViewsSignalsReachTheWindow)
{
    TAMBO::Alignment &shown = alignment({"ACDEF", "AC-EF"});
    ZEP::KALMO2 &window = open(shown);
    const WindowParts parts(window);
    for (QCanvasView *view :
         {static_cast<QCanvasView *>(parts.view), static_cast<QCanvasView *>(parts.header)}) {
        const ExpectMessage rebuilt(QtDebugMsg, "Got Alignment 2 by 5");
        QMetaObject::invokeMethod(view, "ReArrange");
    }
    const MessageRecorder messages;
    for (QCanvasView *view :
         {static_cast<QCanvasView *>(parts.view), static_cast<QCanvasView *>(parts.header),
          static_cast<QCanvasView *>(parts.names)})
        QMetaObject::invokeMethod(view, "Update");
    EXPECT_EQ(messages.messages(), QStringList()) << "repainting is no rebuild";
}

TEST_F(WindowEdits, TheHeadersSignalsReachTheWindow)
{
    TAMBO::Alignment &shown = alignment({"ACDEF"});
    const WindowParts parts(open(shown));
    const MessageRecorder quiet;
    emit parts.header->ReRange(2, 4);
    EXPECT_EQ(shown.range(), TAMBO::Alignment::Range(2, 4));
    emit parts.header->RemoveCol(1);
    EXPECT_EQ(rowsOf(shown), Texts{"ADEF"});
    emit parts.header->InsertCol(1);
    EXPECT_EQ(rowsOf(shown), Texts{"A-DEF"});
}

TEST_F(WindowEdits, TheNamesSignalsReachTheWindow)
{
    TAMBO::Alignment &shown = alignment({"ACDEFGHIKL", "ACDEFGHIKL"});
    const WindowParts parts(open(shown));
    {
        const MessageRecorder messages;
        emit parts.names->ReArrange();
        EXPECT_EQ(messages.messages(), QStringList()) << "the numbering only, no rebuild";
    }
    const MessageRecorder quiet;
    emit parts.names->RemoveRow(1);
    EXPECT_EQ(shown.height(), 1U);
}

TEST_F(WindowEdits, NobodyListensToThePanelsOtherSignals)
{
    TAMBO::Alignment &shown = alignment({"ACD", "EFG"});
    const WindowParts parts(open(shown));
    const MessageRecorder messages;
    emit parts.header->RemoveRow(1);
    emit parts.names->RemoveCol(1);
    emit parts.names->InsertCol(1);
    emit parts.names->ReRange(1, 2);
    EXPECT_EQ(rowsOf(shown), (Texts{"ACD", "EFG"}));
    EXPECT_EQ(shown.range(), TAMBO::Alignment::Range(0, 0));
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(WindowEdits, TheColouringDialogColoursTheAlignment)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    const WindowParts parts(open(shown));
    std::vector<QColor> colors(21, Qt::red);
    emit parts.colors->colorize(colors.data());
    for (const unsigned long col : {0UL, 1UL, 3UL})
        EXPECT_EQ(shown.getItem(0, col)->OwnColor(), Color(0xff0000));
    for (const unsigned long col : {0UL, 2UL, 3UL})
        EXPECT_EQ(shown.getItem(1, col)->OwnColor(), Color(0xff0000));
}

TEST_F(WindowEdits, ARowDragRenumbersAfterTheNewFirstRow)
{
    TAMBO::Alignment &shown = alignment({"ACDEFGHIKL", "----ACDEFGHIKL"}, "ali", {"a", "b"});
    ZEP::KALMO2 &window = show(shown, {700, 400});
    const WindowParts parts(window);
    const int height = parts.nameCanvas->height() / 3;
    const int width = parts.nameCanvas->width() / 8;
    const auto send = [&](QEvent::Type type, int row) {
        const QPoint at(6 * width, row * height + height / 2);
        const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, at, parts.names->viewport()->mapToGlobal(at), Qt::LeftButton, held,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(parts.names->viewport(), &event);
    };
    const MessageRecorder messages;
    send(QEvent::MouseButtonPress, 1);
    send(QEvent::MouseButtonRelease, 0);
    EXPECT_EQ(shown.GetSeqName(0), "b");
    std::vector<double> numbers;
    for (const QCanvasItem *item : parts.headerCanvas->allItems())
        if (item->rtti() == QCanvasItem::Rtti_Text)
            numbers.push_back(item->x() / width - 0.5);
    EXPECT_EQ(numbers, std::vector<double>{13});
    EXPECT_FALSE(messages.messages().join(' ').contains("Got Alignment"));
}

} // namespace WindowEditsTest
