// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellCursor.h"

#include "CursorFixture.h"

#include "AlignmentDetails.h"
#include "support/WaitUntil.h"

#include <QKeyEvent>

#include <random>

namespace CellCursorTest {

using TAMBO::CellBlock;
using TAMBO::CellIndex;
using Cursor = CursorFixture;

// ---- Coming and going

TEST_F(Cursor, IsNotThereUntilAKeyIsUsed)
{
    EXPECT_FALSE(cursor().place());
    EXPECT_FALSE(cursor().block());
    const QImage before = pictureOf(cells());
    key(Qt::Key_Right);
    EXPECT_EQ(place(), (CellIndex{0, 0}));
    EXPECT_NE(pictureOf(cells()), before);
    key(Qt::Key_Right);
    EXPECT_EQ(place(), (CellIndex{0, 1}));
}

TEST_F(Cursor, BeginsAtTheFirstCellInSight)
{
    m_Served->scrollTo(m_Served->cellRect({30, 50}).topLeft() + QPoint(1, 1));
    QCoreApplication::processEvents();
    key(Qt::Key_Down);
    EXPECT_EQ(place(), (CellIndex{30, 50}));
}

TEST_F(Cursor, BeginsAtTheCellThatWasClickedLast)
{
    click(cells(), Qt::LeftButton, middleOf({4, 7}));
    EXPECT_FALSE(cursor().place());
    key(Qt::Key_Left);
    EXPECT_EQ(place(), (CellIndex{4, 7}));
}

TEST_F(Cursor, DoesNotComeWithAKeyThatIsNotItsOwn)
{
    key(Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_FALSE(cursor().place());
}

TEST_F(Cursor, ComesBackWhereItWas)
{
    cursor().set(CellIndex{2, 6});
    keys({Qt::Key_Right, Qt::Key_Escape, Qt::Key_Down});
    EXPECT_EQ(place(), (CellIndex{2, 7}));
}

TEST_F(Cursor, BeginsInSightWhenTheCellThatWasClickedHasGoneOutOfIt)
{
    click(cells(), Qt::LeftButton, middleOf({0, 1}));
    m_Served->showCell({119, 399});
    QCoreApplication::processEvents();
    key(Qt::Key_Up);
    EXPECT_EQ(place(),
              (CellIndex{m_Served->visibleCells().rowBegin, m_Served->visibleCells().colBegin}));
}

TEST_F(Cursor, AKeyThatGoesFarMovesItAtOnce)
{
    key(Qt::Key_End);
    EXPECT_EQ(place(), (CellIndex{0, 399}));
}

TEST_F(Cursor, KeysThatDoNotMoveItDoNotBringIt)
{
    for (const int each : {Qt::Key_Space, Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_1,
                           Qt::Key_Return, Qt::Key_Escape, Qt::Key_A})
        key(each);
    EXPECT_FALSE(cursor().place());
}

TEST_F(Cursor, EscapeDropsTheBlockAndThenTheCursor)
{
    key(Qt::Key_Right);
    const QImage without = pictureOf(cells());
    key(Qt::Key_Down, Qt::ShiftModifier);
    ASSERT_TRUE(cursor().hasBlock());
    key(Qt::Key_Escape);
    EXPECT_FALSE(cursor().hasBlock());
    EXPECT_EQ(place(), (CellIndex{1, 0}));
    key(Qt::Key_Up);
    EXPECT_EQ(pictureOf(cells()), without);
    key(Qt::Key_Escape);
    EXPECT_FALSE(cursor().place());
    EXPECT_TRUE(line().isEmpty()) << line().toStdString();
}

TEST_F(Cursor, EscapeDropsTheBlockThenDeselectsThenTakesTheCursorAway)
{
    cursor().setBlock({0, 0}, {1, 3});
    key(Qt::Key_Space, Qt::ControlModifier);
    ASSERT_TRUE(TAMBO::AlignmentDetails::hasSelected(m_Shown, 0));
    key(Qt::Key_Escape);
    EXPECT_FALSE(cursor().hasBlock());
    EXPECT_TRUE(TAMBO::AlignmentDetails::hasSelected(m_Shown, 0));
    key(Qt::Key_Escape);
    EXPECT_TRUE(cursor().place());
    EXPECT_FALSE(TAMBO::AlignmentDetails::hasSelected(m_Shown, 0));
    key(Qt::Key_Escape);
    EXPECT_FALSE(cursor().place());
}

TEST_F(Cursor, EscapeDeselectsAtOnceAndSaysHowToSelectAgain)
{
    click(cells(), Qt::LeftButton, middleOf({0, 0}));
    click(cells(), Qt::LeftButton, middleOf({3, 1}));
    ASSERT_TRUE(TAMBO::AlignmentDetails::hasSelected(m_Shown, 0));
    key(Qt::Key_Escape);
    EXPECT_FALSE(TAMBO::AlignmentDetails::hasSelected(m_Shown, 0));
    EXPECT_FALSE(TAMBO::AlignmentDetails::hasSelected(m_Shown, 3));
    EXPECT_EQ(line(), "Deselected 2 residues; Ctrl+Shift+L selects them again.");
    EXPECT_EQ(history.size(), 0U) << "the selection is no step of undo";
    m_Companion->selectAgain();
    EXPECT_TRUE(m_Shown.getItem(0, 0)->IsSelected());
    EXPECT_TRUE(m_Shown.getItem(3, 1)->IsSelected());
    EXPECT_EQ(line(), "Selected 2 residues again.");
}

TEST_F(Cursor, EscapeThatIsHeldDownDoesOneThing)
{
    click(cells(), Qt::LeftButton, middleOf({0, 0}));
    cursor().setBlock({0, 0}, {1, 3});
    key(Qt::Key_Escape);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(&view(), &held);
    EXPECT_FALSE(cursor().hasBlock());
    EXPECT_TRUE(TAMBO::AlignmentDetails::hasSelected(m_Shown, 0));
    key(Qt::Key_Escape);
    QCoreApplication::sendEvent(&view(), &held);
    EXPECT_FALSE(TAMBO::AlignmentDetails::hasSelected(m_Shown, 0));
    EXPECT_TRUE(cursor().place());
}

TEST_F(Cursor, SelectAgainFindsItsResiduesAfterEditsOfRowsAndColumns)
{
    const std::string name = m_Shown.GetSeqName(3);
    cursor().setBlock({2, 0}, {3, 3});
    key(Qt::Key_Space, Qt::ControlModifier);
    std::vector<TAMBO::Compound *> selected;
    for (unsigned long row = 2; row < 4; ++row)
        for (unsigned long col = 0; col < 4; ++col)
            if (TAMBO::Compound *const residue = m_Shown.getItem(row, col))
                selected.push_back(residue);
    ASSERT_FALSE(selected.empty());
    ASSERT_TRUE(m_Companion->selectNothing());
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &m_Shown);
        m_Shown.insertGapCol(0, 5);
        m_Shown.removeRow(3);
        m_Shown.bubbleRow(2, 10);
    }
    m_Companion->selectAgain();
    for (const TAMBO::Compound *const residue : selected)
        EXPECT_TRUE(residue->IsSelected()) << "also of a row that is not shown any more";
    history.undo();
    EXPECT_EQ(m_Shown.GetSeqName(3), name);
    EXPECT_TRUE(TAMBO::AlignmentDetails::hasSelected(m_Shown, 3));
    m_Companion->selectAgain();
    EXPECT_EQ(line(), "Nothing of what was deselected last is left to be selected again.");
}

TEST_F(Cursor, DeselectingNothingKeepsWhatWasSelectedBefore)
{
    click(cells(), Qt::LeftButton, middleOf({0, 0}));
    EXPECT_TRUE(m_Companion->selectNothing());
    EXPECT_EQ(line(), "Deselected 1 residue; Ctrl+Shift+L selects it again.");
    EXPECT_FALSE(m_Companion->selectNothing());
    EXPECT_EQ(line(), "Nothing is selected.");
    m_Companion->selectAgain();
    EXPECT_TRUE(m_Shown.getItem(0, 0)->IsSelected());
    EXPECT_EQ(line(), "Selected 1 residue again.");
}

TEST_F(Cursor, SelectAgainAddsToWhatIsSelectedMeanwhileAndIsSeenInEveryWindow)
{
    click(cells(), Qt::LeftButton, middleOf({0, 0}));
    QWidget *const other = served(show(m_Shown, {700, 400})).areaWidget(TAMBO::WindowArea::Cells);
    const QImage before = pictureOf(other);
    key(Qt::Key_Escape);
    EXPECT_NE(pictureOf(other), before);
    m_Companion->selectAgain();
    EXPECT_EQ(pictureOf(other), before);
    key(Qt::Key_Escape);
    click(cells(), Qt::LeftButton, middleOf({5, 0}));
    m_Companion->selectAgain();
    EXPECT_TRUE(m_Shown.getItem(0, 0)->IsSelected());
    EXPECT_TRUE(m_Shown.getItem(5, 0)->IsSelected());
}

TEST_F(Cursor, EscapeEndsTheDrawingOfABlockAndKeepsWhatIsSelected)
{
    click(cells(), Qt::LeftButton, middleOf({0, 0}));
    mouse(cells(), QEvent::MouseButtonPress, Qt::LeftButton, middleOf({2, 2}), Qt::LeftButton,
          Qt::AltModifier);
    mouse(cells(), QEvent::MouseMove, Qt::NoButton, middleOf({4, 6}), Qt::LeftButton,
          Qt::AltModifier);
    ASSERT_TRUE(cursor().hasBlock());
    key(Qt::Key_Escape);
    EXPECT_FALSE(cursor().hasBlock());
    mouse(cells(), QEvent::MouseMove, Qt::NoButton, middleOf({5, 7}), Qt::LeftButton,
          Qt::AltModifier);
    EXPECT_FALSE(cursor().hasBlock());
    release(cells(), Qt::LeftButton, middleOf({5, 7}));
    EXPECT_TRUE(TAMBO::AlignmentDetails::hasSelected(m_Shown, 0));
}

TEST_F(Cursor, ItsCommandSwitchesItOnAndOff)
{
    const QImage before = pictureOf(cells());
    cursor().toggle();
    EXPECT_EQ(QApplication::focusWidget(), &view());
    EXPECT_EQ(place(), (CellIndex{0, 0}));
    EXPECT_NE(pictureOf(cells()), before);
    cursor().toggle();
    EXPECT_FALSE(cursor().place());
    EXPECT_EQ(pictureOf(cells()), before);
}

TEST_F(Cursor, IsNotInAnEmptyWindow)
{
    destroyAlignment();
    key(Qt::Key_Right);
    cursor().toggle();
    EXPECT_FALSE(cursor().place());
}

// ---- Going by keys

TEST_F(Cursor, GoesByCellsPagesAndEnds)
{
    cursor().toggle();
    key(Qt::Key_Left);
    key(Qt::Key_Up);
    EXPECT_EQ(place(), (CellIndex{0, 0}));
    keys({Qt::Key_Right, Qt::Key_Right, Qt::Key_Down});
    EXPECT_EQ(place(), (CellIndex{1, 2}));
    key(Qt::Key_End);
    EXPECT_EQ(place(), (CellIndex{1, 399}));
    EXPECT_TRUE(m_Served->visibleCells().contains({1, 399}));
    key(Qt::Key_Right);
    EXPECT_EQ(place(), (CellIndex{1, 399}));
    key(Qt::Key_PageDown);
    EXPECT_GT(place().row, 2U);
    EXPECT_EQ(place().col, 399U);
    key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(place(), (CellIndex{119, 399}));
    key(Qt::Key_PageUp);
    EXPECT_LT(place().row, 119U);
    key(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(place(), (CellIndex{0, 0}));
    EXPECT_EQ(m_Served->scrollPosition(), QPoint(0, 0));
}

TEST_F(Cursor, GoesByTheKeypadAsWell)
{
    key(Qt::Key_Right, Qt::KeypadModifier);
    key(Qt::Key_Right, Qt::KeypadModifier);
    EXPECT_EQ(place(), (CellIndex{0, 1}));
    key(Qt::Key_End, Qt::KeypadModifier | Qt::ControlModifier);
    EXPECT_EQ(place(), (CellIndex{119, 399}));
}

// The plain way to say where a key has to lead to: cells of one line, as gaps or not.
unsigned long behindNextChange(const std::vector<bool> &gaps, unsigned long from)
{
    for (unsigned long at = from + 1; at < gaps.size(); ++at)
        if (gaps[at] != gaps[at - 1])
            return at;
    return gaps.size() - 1;
}

unsigned long behindChangeBefore(const std::vector<bool> &gaps, unsigned long from)
{
    for (unsigned long at = from; at-- > 1;)
        if (gaps[at] != gaps[at - 1])
            return at;
    return 0;
}

TEST_F(Cursor, CtrlAndAnArrowGoToTheNextChangeBetweenGapAndResidue)
{
    std::mt19937 random(5);
    for (int time = 0; time < 60; ++time) {
        const CellIndex from{random() % 120, random() % 400};
        std::vector<bool> row;
        for (unsigned long col = 0; col < 400; ++col)
            row.push_back(isGap({from.row, col}));
        std::vector<bool> column;
        for (unsigned long at = 0; at < 120; ++at)
            column.push_back(isGap({at, from.col}));
        const std::pair<int, CellIndex> wanted[] = {
            {Qt::Key_Right, {from.row, behindNextChange(row, from.col)}},
            {Qt::Key_Left, {from.row, behindChangeBefore(row, from.col)}},
            {Qt::Key_Down, {behindNextChange(column, from.row), from.col}},
            {Qt::Key_Up, {behindChangeBefore(column, from.row), from.col}}};
        for (const auto &[arrow, to] : wanted) {
            cursor().set(from);
            key(arrow, Qt::ControlModifier);
            EXPECT_EQ(place(), to) << arrow << " from " << from.row << ' ' << from.col;
        }
    }
}

TEST_F(Cursor, SaysInTheLineWhatIsThere)
{
    cursor().toggle();
    key(Qt::Key_Down);
    EXPECT_TRUE(line().startsWith("s1")) << line().toStdString();
    // The pointer has it again as soon as it moves.
    move(cells(), Qt::NoButton, middleOf({4, 4}));
    EXPECT_TRUE(line().startsWith("s4")) << line().toStdString();
    key(Qt::Key_Down);
    EXPECT_TRUE(line().startsWith("s2")) << line().toStdString();
}

TEST_F(Cursor, StaysInWhatIsLeftOfTheAlignment)
{
    cursor().setBlock({100, 380}, {119, 399});
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
        m_Shown.remove({300, 400});
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(place(), (CellIndex{119, 299}));
    EXPECT_EQ(block(), (CellBlock{100, 120, 299, 300}));
}

TEST_F(Cursor, StaysWhereItIsAndScrollsNothingWhenTheAlignmentChanges)
{
    cursor().set(CellIndex{0, 0});
    m_Served->showCell({119, 399});
    QCoreApplication::processEvents();
    const QPoint before = m_Served->scrollPosition();
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
        m_Shown.insertGap(3, 5);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(m_Served->scrollPosition(), before);
    EXPECT_EQ(place(), (CellIndex{0, 0}));
}

// ---- The block

TEST_F(Cursor, IsABlockOfOneCell)
{
    cursor().set(CellIndex{3, 4});
    EXPECT_EQ(block(), (CellBlock{3, 4, 4, 5}));
    EXPECT_FALSE(cursor().hasBlock());
}

TEST_F(Cursor, ShiftAndAKeyExtendTheBlock)
{
    cursor().set(CellIndex{3, 4});
    key(Qt::Key_Right, Qt::ShiftModifier);
    key(Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(block(), (CellBlock{3, 6, 4, 6}));
    EXPECT_EQ(place(), (CellIndex{5, 5}));
    // To the other side of where it was begun.
    for (int time = 0; time < 4; ++time)
        key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(block(), (CellBlock{1, 4, 4, 6}));
    key(Qt::Key_Home, Qt::ShiftModifier);
    EXPECT_EQ(block(), (CellBlock{1, 4, 0, 5}));
    key(Qt::Key_End, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(block(), (CellBlock{3, 120, 4, 400}));
    key(Qt::Key_PageUp, Qt::ShiftModifier);
    EXPECT_EQ(block().rowBegin, 3U);
    EXPECT_LT(block().rowEnd, 120U);
    key(Qt::Key_Left);
    EXPECT_FALSE(cursor().hasBlock());
}

TEST_F(Cursor, CtrlShiftAndAnArrowExtendTheBlockToTheNextChange)
{
    cursor().set(CellIndex{0, 0});
    key(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    std::vector<bool> row;
    for (unsigned long col = 0; col < 400; ++col)
        row.push_back(isGap({0, col}));
    EXPECT_EQ(block(), (CellBlock{0, 1, 0, behindNextChange(row, 0) + 1}));
}

TEST_F(Cursor, TheBlockIsSeenAndItsSizeIsInTheLine)
{
    cursor().set(CellIndex{1, 2});
    const QImage before = pictureOf(cells());
    key(Qt::Key_Right, Qt::ShiftModifier);
    key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(line().toStdString(), "Block of 2 × 2 cells: rows 2 to 3, columns 3 to 4");
    EXPECT_NE(pictureOf(cells()), before);
    key(Qt::Key_Escape);
    EXPECT_TRUE(line().startsWith("s2")) << line().toStdString();
    cursor().set(CellIndex{1, 2});
    EXPECT_EQ(pictureOf(cells()), before);
}

TEST_F(Cursor, ItsFrameIsPaintedAroundABlockThatIsMuchLargerThanTheWindow)
{
    cursor().setBlock({0, 0}, {119, 399});
    m_Served->scrollTo({300, 300});
    const QImage seen = pictureOf(cells());
    // No side of it is in sight, and all cells are tinted.
    cursor().set(CellIndex{119, 399});
    m_Served->scrollTo({300, 300});
    const QImage plain = pictureOf(cells());
    ASSERT_EQ(seen.size(), plain.size());
    EXPECT_NE(seen.pixelColor(0, 0), plain.pixelColor(0, 0));
    EXPECT_NE(seen.pixelColor(seen.width() / 2, seen.height() / 2),
              plain.pixelColor(seen.width() / 2, seen.height() / 2));
    const auto isTinted = [&](int x) { return seen.pixelColor(x, 0) != QColor(0, 40, 140); };
    for (int x = 0; x < seen.width(); ++x)
        ASSERT_TRUE(isTinted(x)) << x;
}

TEST_F(Cursor, ADragWithAltDrawsABlock)
{
    dragFrom({2, 3}, {5, 9}, Qt::LeftButton, Qt::AltModifier);
    EXPECT_EQ(block(), (CellBlock{2, 6, 3, 10}));
    EXPECT_EQ(place(), (CellIndex{5, 9}));
    // The window has not taken it for a click.
    EXPECT_FALSE(m_Shown.IsSelected());
    for (unsigned long row = 0; row < 10; ++row)
        for (unsigned long col = 0; col < 20; ++col)
            if (const TAMBO::Compound *const residue = m_Shown.getItem(row, col))
                ASSERT_FALSE(residue->IsSelected());
    dragFrom({8, 8}, {7, 2}, Qt::LeftButton, Qt::AltModifier);
    EXPECT_EQ(block(), (CellBlock{7, 9, 2, 9}));
    EXPECT_EQ(place(), (CellIndex{7, 2}));
}

TEST_F(Cursor, ADragWithCtrlAndShiftDrawsABlock)
{
    dragFrom({2, 3}, {5, 9}, Qt::LeftButton, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(block(), (CellBlock{2, 6, 3, 10}));
}

TEST_F(Cursor, ADragBeyondTheEdgeGoesOnWhileTheButtonIsHeld)
{
    const QPoint beside(cells()->width() + 30, 10);
    mouse(cells(), QEvent::MouseButtonPress, Qt::LeftButton, middleOf({0, 3}), Qt::LeftButton,
          Qt::AltModifier);
    mouse(cells(), QEvent::MouseMove, Qt::NoButton, beside, Qt::LeftButton, Qt::AltModifier);
    waitUntil([&] { return place().col == 399; });
    EXPECT_EQ(block(), (CellBlock{0, 1, 3, 400}));
    mouse(cells(), QEvent::MouseButtonRelease, Qt::LeftButton, beside, {}, Qt::AltModifier);
    move(cells(), Qt::NoButton, middleOf({4, 395}));
    EXPECT_EQ(block(), (CellBlock{0, 1, 3, 400}));
}

TEST_F(Cursor, AClickIsTheWindowsAndTakesTheCursorAlong)
{
    cursor().setBlock({0, 0}, {3, 3});
    CellIndex residue{5, 5};
    while (isGap(residue))
        ++residue.col;
    click(cells(), Qt::LeftButton, middleOf(residue));
    EXPECT_TRUE(m_Shown.getItem(residue.row, residue.col)->IsSelected());
    EXPECT_EQ(place(), residue);
    EXPECT_FALSE(cursor().hasBlock());
}

// ---- Selecting

TEST_F(Cursor, CtrlAndSpaceSelectTheResidueAtTheCursorAndDeselectIt)
{
    cursor().set(CellIndex{0, 0});
    ASSERT_FALSE(isGap({0, 0}));
    key(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_TRUE(m_Shown.getItem(0, 0)->IsSelected());
    key(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_FALSE(m_Shown.getItem(0, 0)->IsSelected());
}

TEST_F(Cursor, CtrlAndSpaceSelectTheResiduesOfTheBlockAndDeselectThem)
{
    const auto selected = [&] {
        std::vector<std::pair<unsigned long, unsigned long>> cells;
        for (unsigned long row = 0; row < 20; ++row)
            for (unsigned long col = 0; col < 40; ++col)
                if (const TAMBO::Compound *const residue = m_Shown.getItem(row, col))
                    if (residue->IsSelected())
                        cells.emplace_back(row, col);
        return cells;
    };
    // The cursor may be at a gap.
    CellIndex corner{6, 20};
    while (!isGap(corner))
        ++corner.col;
    cursor().setBlock({3, 5}, corner);
    std::vector<std::pair<unsigned long, unsigned long>> wanted;
    for (unsigned long row = 3; row < 7; ++row)
        for (unsigned long col = 5; col <= corner.col; ++col)
            if (!isGap({row, col}))
                wanted.emplace_back(row, col);
    key(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(selected(), wanted);
    key(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_TRUE(selected().empty());
}

TEST_F(Cursor, AnotherAlignmentHasNoCursorUntilAKeyIsUsed)
{
    cursor().setBlock({0, 0}, {3, 3});
    destroyAlignment();
    EXPECT_FALSE(cursor().place());
}

} // namespace CellCursorTest
