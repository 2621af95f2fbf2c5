// SPDX-License-Identifier: GPL-3.0-or-later
// A panel over sequence names.
#include "PanelFixture.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <optional>

namespace NamePanelTest {

class NamePanel : public PanelFixture
{
protected:
    struct Report
    {
        QString title;
        QString text;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        bool hasParent = true;
        qsizetype buttons = 0;
    };

    // Presses while the report, if one comes, is read and closed.
    std::optional<Report> reportOf(Qt::MouseButton button, unsigned long row,
                                   Qt::KeyboardModifiers keys = {})
    {
        std::optional<Report> report;
        QTimer reader;
        QObject::connect(&reader, &QTimer::timeout, [&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (box == nullptr)
                return;
            report = {box->windowTitle(), box->text(), box->icon(), box->parentWidget() != nullptr,
                      box->buttons().size()};
            box->accept();
        });
        reader.start(0);
        press(button, nameAt(row), keys);
        return report;
    }
    Texts names() const { return namesOf(*m_Alignment); }
};

TEST_F(NamePanel, PressTogglesTheRowsSelection)
{
    showNames(makeAlignment({"AC-D", "ACDE", "ACDE"}));
    press(kLeft, nameAt(1));
    EXPECT_EQ(selectionOf(*m_Alignment, 1), "xxxx");
    EXPECT_EQ(selectionOf(*m_Alignment, 0), "oo-o");
    EXPECT_EQ(takeSignals(), QStringList{"Update"});
    release(kLeft, nameAt(1));
    EXPECT_EQ(takeSignals(), QStringList{"Update"});
    press(kLeft, nameAt(1));
    EXPECT_EQ(selectionOf(*m_Alignment, 1), "oooo");
}

TEST_F(NamePanel, DragMovesTheRow)
{
    showNames(makeAlignment({"A", "C", "D"}, {"a", "b", "c"}));
    press(kLeft, nameAt(0));
    takeSignals();
    release(kLeft, nameAt(2));
    EXPECT_EQ(names(), (Texts{"b", "c", "a"}));
    EXPECT_EQ(takeSignals(), (QStringList{"ReArrange", "Update"}));
    press(kLeft, nameAt(2));
    release(kLeft, nameAt(1));
    EXPECT_EQ(names(), (Texts{"b", "a", "c"}));
}

TEST_F(NamePanel, AnyButtonLetsARowGo)
{
    showNames(makeAlignment({"A", "C", "D"}, {"a", "b", "c"}));
    press(kLeft, nameAt(0));
    release(kRight, nameAt(1));
    EXPECT_EQ(names(), (Texts{"b", "a", "c"}));
}

TEST_F(NamePanel, MiddleAloneAndShiftLeftToggleAndDragToo)
{
    showNames(makeAlignment({"A", "C", "D"}, {"a", "b", "c"}));
    press(kMiddle, nameAt(0));
    EXPECT_EQ(selectionOf(*m_Alignment, 0), "x");
    release(kMiddle, nameAt(1));
    EXPECT_EQ(names(), (Texts{"b", "a", "c"}));
    press(kLeft, nameAt(2), Qt::ShiftModifier);
    EXPECT_EQ(selectionOf(*m_Alignment, 2), "x");
    release(kLeft, nameAt(0));
    EXPECT_EQ(names(), (Texts{"c", "b", "a"}));
}

TEST_F(NamePanel, DragReleasedOverItsOwnRowMovesNothing)
{
    showNames(makeAlignment({"A", "C"}, {"a", "b"}));
    press(kLeft, nameAt(1));
    takeSignals();
    release(kLeft, nameAt(1));
    EXPECT_EQ(names(), (Texts{"a", "b"}));
    EXPECT_EQ(takeSignals(), QStringList{"Update"});
}

TEST_F(NamePanel, MovingARowIsNotPublished)
{
    showNames(makeAlignment({"A", "C"}, {"a", "b"}));
    press(kLeft, nameAt(0));
    CountingSubscriber others;
    release(kLeft, nameAt(1));
    EXPECT_EQ(names(), (Texts{"b", "a"}));
    EXPECT_EQ(others.m_Updates, 0);
}

TEST_F(NamePanel, DragReleasedBesideTheNamesDoesNothingAndLeavesThePanelIdle)
{
    showNames(makeAlignment({"A", "C"}, {"a", "b"}));
    press(kLeft, nameAt(0));
    release(kLeft, nameAt(2));
    release(kLeft, nameAt(1));
    EXPECT_EQ(names(), (Texts{"a", "b"}));
    EXPECT_EQ(takeSignals(), (QStringList{"Update", "Update", "Update"}));
}

TEST_F(NamePanel, DragReleasedOutsideThePanelDoesNothingThoughANameIsHiddenThere)
{
    showNames(makeAlignment(Texts(20, "A")));
    press(kLeft, nameAt(0));
    const Texts before = names();
    release(kLeft, nameAt(10));
    ASSERT_FALSE(m_Panel->isInSight(m_Panel->viewportToContents(nameAt(10))));
    EXPECT_EQ(names(), before);
    release(kLeft, nameAt(1));
    EXPECT_EQ(names(), before);
}

TEST_F(NamePanel, PressOnEmptySpaceEndsADragAndOnlyUpdates)
{
    showNames(makeAlignment({"A", "C"}, {"a", "b"}));
    press(kLeft, nameAt(0));
    press(kLeft, QPoint(5, 5 * kHeight));
    release(kLeft, nameAt(1));
    EXPECT_EQ(names(), (Texts{"a", "b"}));
    EXPECT_EQ(takeSignals(), (QStringList{"Update", "Update", "Update"}));
}

TEST_F(NamePanel, ReleaseHandlesEveryNameUnderThePointerFromTheTopOne)
{
    showNames(makeAlignment({"A", "C", "D"}, {"a", "b", "c"}));
    auto *above = new RowItem(m_Alignment, 2, m_Font, &m_Canvas, 7 * kWidth, kHeight);
    above->setZ(4.0);
    above->show();
    press(kLeft, nameAt(0));
    takeSignals();
    release(kLeft, nameAt(1));
    // The first row went to the end, then what had become the first into the middle.
    EXPECT_EQ(names(), (Texts{"c", "b", "a"}));
    EXPECT_EQ(takeSignals(), (QStringList{"ReArrange", "ReArrange", "Update"}));
}

TEST_F(NamePanel, RemovalStopsAtTheTopNameUnderThePointer)
{
    showNames(makeAlignment({"A", "C", "D"}));
    auto *above = new RowItem(m_Alignment, 2, m_Font, &m_Canvas, 7 * kWidth, kHeight);
    above->setZ(4.0);
    above->show();
    const MessageRecorder recorder;
    press(kMiddle, nameAt(1), Qt::ShiftModifier);
    EXPECT_EQ(takeSignals(), (QStringList{"RemoveRow 2", "Update"}));
}

TEST_F(NamePanel, AfterADragTheNextReleaseOnlyUpdates)
{
    showNames(makeAlignment({"A", "C", "D"}, {"a", "b", "c"}));
    press(kLeft, nameAt(0));
    release(kLeft, nameAt(1));
    takeSignals();
    release(kLeft, nameAt(2));
    EXPECT_EQ(takeSignals(), QStringList{"Update"});
    EXPECT_EQ(names(), (Texts{"b", "a", "c"}));
}

TEST_F(NamePanel, OtherButtonsWithOtherKeysToggleAndDragToo)
{
    showNames(makeAlignment({"A", "C", "D"}, {"a", "b", "c"}));
    const std::pair<Qt::MouseButton, Qt::KeyboardModifiers> combinations[] = {
        {kMiddle, Qt::ControlModifier},
        {kMiddle, Qt::AltModifier | Qt::ShiftModifier},
        {kRight, Qt::ControlModifier | Qt::ShiftModifier},
        {Qt::BackButton, Qt::ShiftModifier}};
    for (const auto &[button, keys] : combinations) {
        const std::string before = names().front();
        const std::string selection = selectionOf(*m_Alignment, 0);
        EXPECT_FALSE(reportOf(button, 0, keys));
        EXPECT_NE(selectionOf(*m_Alignment, 0), selection);
        release(button, nameAt(2));
        EXPECT_EQ(names().back(), before);
    }
    EXPECT_TRUE(m_Menus.empty());
}

TEST_F(NamePanel, ReleaseWithoutADragOnlyUpdates)
{
    showNames(makeAlignment({"A", "C"}, {"a", "b"}));
    release(kLeft, nameAt(1));
    EXPECT_EQ(takeSignals(), QStringList{"Update"});
    EXPECT_EQ(names(), (Texts{"a", "b"}));
}

TEST_F(NamePanel, ShiftMiddleAsksForTheRowsRemoval)
{
    showNames(makeAlignment({"A", "C"}));
    const MessageRecorder recorder;
    press(kMiddle, nameAt(1), Qt::ShiftModifier);
    EXPECT_EQ(takeSignals(), (QStringList{"RemoveRow 1", "Update"}));
    EXPECT_EQ(recorder.messages(), QStringList{"Removing row"});
    EXPECT_EQ(selectionOf(*m_Alignment, 1), "o");
}

TEST_F(NamePanel, ItemsMayGoWhileARowIsRemoved)
{
    showNames(makeAlignment({"A", "C"}));
    const MessageRecorder recorder;
    QObject::connect(m_Panel.get(), &Panel::RemoveRow, [this](unsigned long row) {
        m_Canvas.clear();
        m_Alignment->removeRow(row);
    });
    press(kMiddle, nameAt(0), Qt::ShiftModifier);
    EXPECT_EQ(m_Alignment->height(), 1U);
}

TEST_F(NamePanel, ShiftRightOpensTheSequencesMenu)
{
    showNames(makeAlignment({"A", "C"}));
    press(kRight, nameAt(1), Qt::ShiftModifier);
    EXPECT_EQ(m_Menus, (std::vector{m_Alignment->GetSeq(1)}));
    EXPECT_EQ(takeSignals(), QStringList{"Update"});
    EXPECT_EQ(selectionOf(*m_Alignment, 1), "o");
}

TEST_F(NamePanel, RightButtonReportsTheIdentityWithTheFirstRow)
{
    showNames(makeAlignment({"ACDE", "AC-E"}, {"ref", "other"}));
    const std::optional<Report> report = reportOf(kRight, 1);
    ASSERT_TRUE(report);
    EXPECT_EQ(report->title, QStringLiteral("Percentage identity"));
    EXPECT_EQ(report->text, QStringLiteral("Percentage identity between 'ref' and 'other':\n"
                                           "identicals 3\tdifferent 0\n"
                                           "pairs 3: \t  1.00\n"
                                           "seq lenghts 4, 3 :  75.00, 100.00\n"
                                           "align lenght 4 (with hangs 4) :  75.00 (  75.00 )"));
    EXPECT_EQ(report->icon, QMessageBox::Information);
    EXPECT_FALSE(report->hasParent);
    EXPECT_EQ(report->buttons, 1);
    EXPECT_EQ(takeSignals(), QStringList{"Update"});
    EXPECT_EQ(selectionOf(*m_Alignment, 1), "oo-o");
}

TEST_F(NamePanel, RightButtonOnTheFirstNameReportsNothing)
{
    showNames(makeAlignment({"ACDE", "AC-E"}));
    EXPECT_FALSE(reportOf(kRight, 0));
    EXPECT_EQ(takeSignals(), QStringList{"Update"});
}

TEST_F(NamePanel, RightButtonOnAnEmptySequenceReportsNothing)
{
    showNames(makeAlignment({"ACDE", "----"}));
    EXPECT_FALSE(reportOf(kRight, 1));
}

TEST_F(NamePanel, ControlRightTogglesAndDragsInsteadOfReporting)
{
    showNames(makeAlignment({"A", "C", "D"}, {"a", "b", "c"}));
    EXPECT_FALSE(reportOf(kRight, 1, Qt::ControlModifier));
    EXPECT_EQ(selectionOf(*m_Alignment, 1), "x");
    release(kRight, nameAt(2));
    EXPECT_EQ(names(), (Texts{"a", "c", "b"}));
}

TEST_F(NamePanel, TwoButtonsAtOnceAreTheDefaultCase)
{
    showNames(makeAlignment({"AC", "AC"}));
    send(QEvent::MouseButtonPress, nameAt(1), kRight, Qt::LeftButton | Qt::RightButton, {});
    EXPECT_EQ(selectionOf(*m_Alignment, 1), "xx");
}

TEST_F(NamePanel, RefusedSelectionStillBeginsADrag)
{
    showNames(makeAlignment({"A", "C"}, {"a", "b"}));
    setLocked(true);
    press(kLeft, nameAt(0));
    EXPECT_EQ(selectionOf(*m_Alignment, 0), "o");
    setLocked(false);
    release(kLeft, nameAt(1));
    EXPECT_EQ(names(), (Texts{"b", "a"}));
}

TEST_F(NamePanel, DragShowsInThePointer)
{
    showNames(makeAlignment({"A", "C"}));
    press(kLeft, nameAt(0));
    EXPECT_EQ(m_Panel->viewport()->cursor().shape(), Qt::ClosedHandCursor);
    release(kLeft, nameAt(0));
    EXPECT_EQ(m_Panel->viewport()->cursor().shape(), Qt::ArrowCursor);
}

} // namespace NamePanelTest
