// SPDX-License-Identifier: GPL-3.0-or-later
#include "BlockDrag.h"

#include "CursorFixture.h"

#include "KeptRegion.h"

namespace BlockDragTest {

using TAMBO::CellBlock;
using TAMBO::CellIndex;

class Drag : public CursorFixture
{
protected:
    Drag()
    {
        m_Rows = &alignment({"ACD--EFGHI---", "AC---DEFGHI--", "ACDE-FGHIK---"}, "rows");
        const MessageRecorder quiet;
        m_Window->Populate(m_Rows);
        QCoreApplication::processEvents();
    }

    [[nodiscard]] Texts rows() const { return rowsOf(*m_Rows); }
    [[nodiscard]] bool isDragging() const { return m_Companion->editing().drag().isDragging(); }
    void begin(const CellIndex &from, const CellIndex &to, Qt::MouseButton button)
    {
        mouse(cells(), QEvent::MouseButtonPress, button, middleOf(from), button);
        mouse(cells(), QEvent::MouseMove, Qt::NoButton, middleOf(to), button);
        QCoreApplication::processEvents();
    }
    void drop(const CellIndex &at, Qt::MouseButton button)
    {
        mouse(cells(), QEvent::MouseButtonRelease, button, middleOf(at), {});
        QCoreApplication::processEvents();
    }

    TAMBO::Alignment *m_Rows = nullptr;
};

// ---- Of a block

TEST_F(Drag, FromAGapMovesTheGapsAroundItInAllRowsOfTheBlock)
{
    cursor().setBlock({0, 3}, {1, 4});
    begin({0, 4}, {0, 6}, Qt::LeftButton);
    EXPECT_TRUE(isDragging());
    EXPECT_EQ(rows(), (Texts{"ACD--EFGHI---", "AC---DEFGHI--", "ACDE-FGHIK---"}));
    drop({0, 6}, Qt::LeftButton);
    EXPECT_EQ(rows(), (Texts{"ACDEF--GHI---", "ACDE---FGHI--", "ACDE-FGHIK---"}));
    // The block goes along, so that they can be dragged on.
    EXPECT_EQ(block(), (CellBlock{0, 2, 5, 7}));
    dragFrom({1, 6}, {1, 4}, Qt::MiddleButton);
    EXPECT_EQ(rows(), (Texts{"ACD--EFGHI---", "AC---DEFGHI--", "ACDE-FGHIK---"}));
    history.undo();
    EXPECT_EQ(rows(), (Texts{"ACDEF--GHI---", "ACDE---FGHI--", "ACDE-FGHIK---"}));
}

TEST_F(Drag, FromAResidueWithTheMiddleButtonPushesAllRowsOfTheBlock)
{
    cursor().setBlock({0, 5}, {2, 5});
    dragFrom({2, 5}, {2, 7}, Qt::MiddleButton);
    EXPECT_EQ(rows(), (Texts{"ACD----EFGHI-", "AC-----DEFGHI", "ACDE---FGHIK-"}));
    EXPECT_EQ(block(), (CellBlock{0, 3, 7, 8}));
    dragFrom({0, 7}, {0, 5}, Qt::MiddleButton);
    EXPECT_EQ(rows(), (Texts{"ACD--EFGHI---", "AC---DEFGHI--", "ACDE-FGHIK---"}));
}

// As the editor has it: the button that is let go decides.
TEST_F(Drag, OfAGapBesideKeptColumnsIsOfTheButtonThatIsLetGo)
{
    companion::keepColumns(*m_Rows, {10, 12});
    begin({0, 4}, {0, 6}, Qt::LeftButton);
    drop({0, 6}, Qt::MiddleButton);
    EXPECT_FALSE(isDragging());
    EXPECT_EQ(rows(), (Texts{"ACDEF--GHI---", "AC---DEFGHI--", "ACDE-FGHIK---"}));
}

TEST_F(Drag, ABlockInWhichNothingMovesStaysWhereItIs)
{
    const Texts before = rows();
    cursor().setBlock({0, 11}, {0, 11});
    dragFrom({0, 11}, {0, 12}, Qt::LeftButton);
    EXPECT_EQ(rows(), before);
    EXPECT_EQ(block(), (CellBlock{0, 1, 11, 12}));
}

TEST_F(Drag, AMiddleClickPutsAGapIntoAllRowsOfTheBlock)
{
    cursor().setBlock({0, 1}, {2, 2});
    dragFrom({1, 1}, {1, 1}, Qt::MiddleButton);
    EXPECT_EQ(rows(), (Texts{"A-CD--EFGHI--", "A-C---DEFGHI-", "A-CDE-FGHIK--"}));
}

TEST_F(Drag, IsRefusedForAllRowsWithTheReasonWhileTheButtonIsHeld)
{
    const Texts before = rows();
    cursor().setBlock({0, 5}, {2, 5});
    QImage without = pictureOf(cells());
    // The third row has one gap before it.
    begin({0, 5}, {0, 3}, Qt::MiddleButton);
    EXPECT_TRUE(line().contains("s2")) << line().toStdString();
    EXPECT_EQ(cells()->cursor().shape(), Qt::ForbiddenCursor);
    EXPECT_NE(pictureOf(cells()), without);
    drop({0, 3}, Qt::MiddleButton);
    EXPECT_EQ(rows(), before);
    EXPECT_TRUE(line().contains("s2")) << line().toStdString();
    EXPECT_EQ(pictureOf(cells()), without);
    EXPECT_FALSE(history.canUndo());
}

TEST_F(Drag, ShowsWhereTheGapsWouldComeAndEscapeGivesItUp)
{
    const Texts before = rows();
    cursor().setBlock({0, 3}, {1, 4});
    const QImage without = pictureOf(cells());
    begin({0, 3}, {0, 5}, Qt::LeftButton);
    const QImage with = pictureOf(cells());
    EXPECT_NE(with, without);
    EXPECT_EQ(line().toStdString(), "To the right by 2, rows: 2");
    // Over their new place, not over the old one.
    EXPECT_NE(with.copy(m_Served->cellRect({0, 6})), without.copy(m_Served->cellRect({0, 6})));
    EXPECT_NE(with.copy(m_Served->cellRect({1, 6})), without.copy(m_Served->cellRect({1, 6})));
    EXPECT_EQ(with.copy(m_Served->cellRect({0, 2})), without.copy(m_Served->cellRect({0, 2})));
    EXPECT_EQ(with.copy(m_Served->cellRect({2, 6})), without.copy(m_Served->cellRect({2, 6})));
    key(Qt::Key_Escape);
    EXPECT_FALSE(isDragging());
    EXPECT_EQ(pictureOf(cells()), without);
    EXPECT_TRUE(cursor().hasBlock());
    drop({0, 5}, Qt::LeftButton);
    EXPECT_EQ(rows(), before);
}

TEST_F(Drag, DoesNothingWhenItIsLetGoOutsideOfTheBlocksRowsOrWhereItBegan)
{
    const Texts before = rows();
    cursor().setBlock({0, 3}, {1, 4});
    dragFrom({0, 3}, {2, 6}, Qt::LeftButton);
    EXPECT_EQ(rows(), before);
    dragFrom({0, 3}, {0, 3}, Qt::LeftButton);
    EXPECT_EQ(rows(), before);
}

TEST_F(Drag, EndsWhenTheAlignmentChangesMeanwhile)
{
    cursor().setBlock({0, 3}, {1, 4});
    begin({0, 3}, {0, 5}, Qt::LeftButton);
    {
        DataPoint<TAMBO::Alignment> change(nullptr, m_Rows);
        m_Rows->insertGap(2, 0);
    }
    QCoreApplication::processEvents();
    EXPECT_FALSE(isDragging());
    const Texts before = rows();
    drop({0, 5}, Qt::LeftButton);
    EXPECT_EQ(rows(), before);
}

TEST_F(Drag, OutsideOfTheBlockIsTheWindows)
{
    cursor().setBlock({0, 3}, {1, 4});
    dragFrom({2, 4}, {2, 6}, Qt::LeftButton);
    EXPECT_EQ(rows(), (Texts{"ACD--EFGHI---", "AC---DEFGHI--", "ACDEFG-HIK---"}));
}

TEST_F(Drag, ThePlainClickOnAResidueInTheBlockIsTheWindows)
{
    cursor().setBlock({0, 0}, {1, 4});
    click(cells(), Qt::LeftButton, middleOf({0, 1}));
    EXPECT_TRUE(m_Rows->getItem(0, 1)->IsSelected());
}

// ---- With kept columns

TEST_F(Drag, OfOneRowIsThatOfTheWindowAsLongAsNothingIsKept)
{
    dragFrom({0, 4}, {0, 6}, Qt::LeftButton);
    EXPECT_EQ(rows().front(), "ACD-EF-GHI---");
}

TEST_F(Drag, OfOneRowHasTheSameMeaningBesideKeptColumns)
{
    companion::keepColumns(*m_Rows, {10, 12});
    dragFrom({0, 4}, {0, 6}, Qt::LeftButton);
    EXPECT_EQ(rows().front(), "ACD-EF-GHI---");
    history.undo();
    dragFrom({0, 4}, {0, 6}, Qt::MiddleButton);
    EXPECT_EQ(rows().front(), "ACDEF--GHI---");
    history.undo();
    dragFrom({0, 5}, {0, 4}, Qt::MiddleButton);
    EXPECT_EQ(rows().front(), "ACD-EFGHI----");
}

TEST_F(Drag, OfOneRowLeavesKeptColumnsWhereTheyAre)
{
    companion::keepColumns(*m_Rows, {6, 8});
    const Texts before = rows();
    // One gap across them.
    dragFrom({0, 4}, {0, 9}, Qt::LeftButton);
    EXPECT_EQ(rows(), before);
    EXPECT_TRUE(line().contains("s0") && line().contains("kept")) << line().toStdString();
    // A gap that is put in uses up one before them.
    dragFrom({0, 1}, {0, 2}, Qt::MiddleButton);
    EXPECT_EQ(rows().front(), "A-CD-EFGHI---");
    dragFrom({0, 2}, {0, 2}, Qt::MiddleButton);
    EXPECT_EQ(rows().front(), "A--CDEFGHI---");
    dragFrom({0, 3}, {0, 3}, Qt::MiddleButton);
    EXPECT_EQ(rows().front(), "A--CDEFGHI---");
    EXPECT_TRUE(line().contains("s0") && line().contains("kept")) << line().toStdString();
}

TEST_F(Drag, SelectingIsTheWindowsWithKeptColumnsAsWell)
{
    companion::keepColumns(*m_Rows, {6, 8});
    click(cells(), Qt::LeftButton, middleOf({0, 7}));
    EXPECT_TRUE(m_Rows->getItem(0, 7)->IsSelected());
}

} // namespace BlockDragTest
