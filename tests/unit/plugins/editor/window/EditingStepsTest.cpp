// SPDX-License-Identifier: GPL-3.0-or-later
// What the hands do in an editor window as steps of the history, and on a locked alignment.
#include "Hands.h"
#include "WindowFixture.h"

#include "QCanvasRectangle.h"

#include <functional>

namespace EditingStepsTest {

using Range = TAMBO::Alignment::Range;

class EditingSteps : public WindowFixture
{
protected:
    EditingSteps() : window(show(shown, {700, 400})), parts(window), hands(window)
    {
        TAMBO::modelHooks().refused = [this](const TAMBO::Compound &locked) {
            m_Refused.push_back(locked.Name());
        };
    }

    static std::string selectionOf(const TAMBO::Alignment &alignment)
    {
        std::string text;
        for (unsigned long row = 0; row < alignment.height(); ++row)
            for (unsigned long col = 0; col < alignment.width(); ++col) {
                const TAMBO::Compound *residue = alignment.getItem(row, col);
                text += residue == nullptr ? '-' : residue->IsSelected() ? 'x' : 'o';
            }
        return text;
    }
    // The columns under the range marker.
    Range marker() const
    {
        for (const QCanvasItem *item : parts.headerCanvas->allItems()) {
            if (item->rtti() != QCanvasItem::Rtti_Rectangle)
                continue;
            const QRect rect = static_cast<const QCanvasRectangle *>(item)->rect();
            const int width = hands.cellSize().width();
            return {rect.left() / width, (rect.right() + 1) / width};
        }
        return {};
    }
    void lock() { TAMBO::setObjectLocked(shown, true); }

    const Texts kRows = {"AC--DE", "ACDE--", "ACDEFG"};
    TAMBO::Alignment &shown = alignment(kRows, "SeqAli");
    ZEP::KALMO2 &window;
    WindowParts parts;
    Hands hands;
    std::vector<std::string> m_Refused;
};

TEST_F(EditingSteps, EveryEditOfTheHandsIsOneStepWithItsName)
{
    const std::vector<std::pair<std::function<void()>, std::string>> edits = {
        {[&] { hands.drag(Hands::kLeft, 0, 2, 4); }, "move gap in SeqAli"},
        {[&] { hands.drag(Hands::kMiddle, 1, 4, 2); }, "move gap in SeqAli"},
        {[&] { hands.clickCell(Hands::kMiddle, 2, 3); }, "insert gap in SeqAli"},
        {[&] { hands.clickMark(Hands::kMiddle, 2); }, "insert column in SeqAli"},
        {[&] { hands.clickMark(Hands::kMiddle, 1, Qt::ShiftModifier); },
         "remove columns in SeqAli"},
        {[&] { hands.clickName(Hands::kMiddle, 2, Qt::ShiftModifier); }, "remove row in SeqAli"},
        {[&] { hands.dragName(0, 1); }, "move row in SeqAli"},
    };
    const MessageRecorder quiet;
    std::vector<Texts> states = {rowsOf(shown)};
    for (const auto &[edit, label] : edits) {
        edit();
        EXPECT_EQ(history.size(), states.size()) << label;
        EXPECT_EQ(history.undoLabel(), label);
        EXPECT_NE(rowsOf(shown), states.back()) << label;
        states.push_back(rowsOf(shown));
    }
    for (std::size_t left = edits.size(); left-- > 0;) {
        EXPECT_TRUE(history.undo());
        EXPECT_EQ(rowsOf(shown), states[left]);
    }
    EXPECT_FALSE(history.canUndo());
}

TEST_F(EditingSteps, SelectingAndTheRangeAreNone)
{
    const MessageRecorder quiet;
    hands.clickCell(Hands::kLeft, 0, 0);
    hands.clickName(Hands::kLeft, 1);
    hands.clickMark(Hands::kLeft, 4);
    hands.clickMark(Hands::kLeft, 2, Qt::ShiftModifier);
    EXPECT_EQ(selectionOf(shown), "xo--xoxxxx--ooooxo");
    EXPECT_EQ(shown.range(), Range(2, 5));
    EXPECT_EQ(history.size(), 0U);
}

TEST_F(EditingSteps, AnEditThatChangesNothingIsNone)
{
    const MessageRecorder quiet;
    hands.drag(Hands::kLeft, 0, 2, 3);
    hands.dragName(1, 1);
    EXPECT_EQ(history.size(), 0U);
}

TEST_F(EditingSteps, ALockedAlignmentIsNotEditedAndTheEditorSaysSo)
{
    lock();
    const QStringList refused{"Cannot update CDB!"};
    const std::vector<std::pair<std::function<void()>, QStringList>> edits = {
        {[&] { hands.drag(Hands::kLeft, 0, 2, 4); }, refused},
        {[&] { hands.drag(Hands::kMiddle, 0, 2, 4); }, refused},
        {[&] { hands.clickCell(Hands::kMiddle, 2, 3); },
         QStringList{"Drag terminal gap to here"} + refused},
        {[&] { hands.clickMark(Hands::kMiddle, 2); }, refused},
        {[&] { hands.clickMark(Hands::kMiddle, 1, Qt::ShiftModifier); }, refused},
        {[&] { hands.clickName(Hands::kMiddle, 2, Qt::ShiftModifier); },
         QStringList{"Removing row"} + refused},
    };
    for (const auto &[edit, expected] : edits) {
        m_Refused.clear();
        const MessageRecorder messages;
        edit();
        EXPECT_EQ(messages.messages(), expected);
        EXPECT_EQ(m_Refused, Texts{"SeqAli"}) << "for the status line of the workbench";
    }
    EXPECT_EQ(rowsOf(shown), kRows);
    EXPECT_EQ(history.size(), 0U);
}

TEST_F(EditingSteps, SelectingOnALockedAlignmentIsRefusedWithoutAWord)
{
    lock();
    const MessageRecorder messages;
    hands.clickName(Hands::kLeft, 1);
    hands.clickMark(Hands::kLeft, 4);
    EXPECT_EQ(selectionOf(shown), "oo--oooooo--oooooo");
    EXPECT_EQ(messages.messages(), QStringList());
    // The row; the column and its range.
    EXPECT_EQ(m_Refused, (Texts{"SeqAli", "SeqAli", "SeqAli"}));
}

TEST_F(EditingSteps, TheRangeOfALockedAlignmentStaysAndTheWorkbenchHearsWhy)
{
    lock();
    const MessageRecorder messages;
    hands.clickMark(Hands::kLeft, 4, Qt::ShiftModifier);
    EXPECT_EQ(messages.messages(), QStringList{"Range [0..5)"});
    EXPECT_EQ(m_Refused, Texts{"SeqAli"});
    EXPECT_EQ(shown.range(), Range(0, 0));
}

TEST_F(EditingSteps, ARowOfALockedAlignmentStaysWhereItIsWithALineInTheLog)
{
    lock();
    const LogLines log;
    const MessageRecorder messages;
    hands.dragName(0, 2);
    EXPECT_EQ(rowsOf(shown), kRows);
    EXPECT_EQ(log.texts(), QStringList{"\"SeqAli\" is locked and was not changed."});
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(EditingSteps, TheMarkerOfALockedAlignmentStaysOverItsRange)
{
    const MessageRecorder quiet;
    hands.clickMark(Hands::kLeft, 1);
    hands.clickMark(Hands::kLeft, 2, Qt::ShiftModifier);
    ASSERT_EQ(shown.range(), Range(1, 3));
    ASSERT_EQ(marker(), Range(1, 3));
    lock();
    for (const bool withShift : {false, true}) {
        hands.clickMark(Hands::kLeft, 5, withShift ? Qt::ShiftModifier : Qt::NoModifier);
        EXPECT_EQ(shown.range(), Range(1, 3));
        EXPECT_EQ(parts.header->begin(), 1U);
        EXPECT_EQ(parts.header->end(), 3U);
        EXPECT_EQ(marker(), Range(1, 3));
    }
}

TEST_F(EditingSteps, TheMarkerStaysOverTheRangeWhateverIsEdited)
{
    const MessageRecorder quiet;
    hands.clickMark(Hands::kLeft, 3);
    hands.drag(Hands::kLeft, 0, 2, 4);
    EXPECT_EQ(marker(), Range(3, 4));
    hands.clickMark(Hands::kMiddle, 1);
    EXPECT_EQ(shown.range(), Range(4, 5));
    EXPECT_EQ(marker(), Range(4, 5));
    hands.clickMark(Hands::kLeft, 5, Qt::ShiftModifier);
    EXPECT_EQ(shown.range(), Range(4, 6)) << "the panel goes on from there";
    history.undo();
    EXPECT_EQ(marker(), shown.range());
}

} // namespace EditingStepsTest
