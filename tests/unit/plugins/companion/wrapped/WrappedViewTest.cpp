// SPDX-License-Identifier: GPL-3.0-or-later
#include "WrappedView.h"

#include "../window/CompanionFixture.h"
#include "CellLooks.h"
#include "LetterColor.h"
#include "ResidueItem.h"
#include "RowNumbers.h"
#include "Space.h"

#include <QCheckBox>
#include <QScrollBar>

#include <random>

namespace WrappedViewTest {

using companion::WrapLine;
using companion::WrappedView;
using TAMBO::CellIndex;

class WrappedAlignment : public AlignmentCompanion
{
protected:
    WrappedAlignment()
    {
        WorkbenchValues::Remove("companion", "wrapped-numbers-off");
        open();
    }
    ~WrappedAlignment() override { WorkbenchValues::Remove("companion", "wrapped-numbers-off"); }
    void open()
    {
        m_View = &m_Companion->showWrapped().view();
        m_View->QWidget::window()->resize(620, 500);
        QCoreApplication::processEvents();
    }
    QImage seen() const { return pictureOf(m_View->viewport()); }
    // Cells that lie in the view with their whole height.
    std::vector<CellIndex> cellsInSight() const
    {
        std::vector<CellIndex> cells;
        const auto first = std::uint64_t(m_View->verticalScrollBar()->value());
        const int lines = m_View->viewport()->height() / m_View->cellSize().height();
        for (int i = 0; i < lines; ++i) {
            const WrapLine line = m_View->layout().at(first + std::uint64_t(i));
            for (unsigned long col = line.colBegin;
                 line.kind == WrapLine::Kind::Row && col < line.colEnd; ++col)
                cells.push_back({line.row, col});
        }
        return cells;
    }
    // Those of which the pixel in the corner does not have the color that the alignment has.
    std::size_t wrongCells() const
    {
        const QImage image = seen();
        std::size_t wrong = 0;
        for (const CellIndex &cell : cellsInSight()) {
            std::vector<TAMBO::AlignmentCell> read;
            m_Shown.readRow(cell.row, cell.col, cell.col + 1, read);
            const QRect place = m_View->cellRect(cell);
            wrong += image.pixel(place.topLeft()) != companion::groundOf(read.front());
        }
        return wrong;
    }
    void colorAll(const Color &color)
    {
        DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        std::array<Color, 256> colors;
        colors.fill(color);
        m_Shown.colorByLetter(colors);
    }
    void drag(const CellIndex &from, const CellIndex &to)
    {
        QWidget *const view = m_View->viewport();
        press(view, Qt::LeftButton, m_View->cellRect(from).center());
        move(view, Qt::LeftButton, m_View->cellRect(to).center());
        release(view, Qt::LeftButton, m_View->cellRect(to).center());
    }
    bool isSelected(const CellIndex &cell) const
    {
        const TAMBO::Compound *const residue = m_Shown.getItem(cell.row, cell.col);
        return residue != nullptr && residue->IsSelected();
    }

    WrappedView *m_View = nullptr;
};

TEST_F(WrappedAlignment, LooksOfCellsAreThoseOfTheGrid)
{
    std::mt19937 random(3);
    for (int i = 0; i < 20'000; ++i) {
        const TAMBO::AlignmentCell cell{'A', Color::fromArgb(random())};
        const QColor shown = ResidueItem::shownColor(cell.color);
        EXPECT_EQ(companion::groundOf(cell), shown.rgb());
        EXPECT_EQ(companion::hasWhiteLetter(shown.rgb()), ZEP::letterColorOn(shown) == Qt::white);
    }
}

TEST_F(WrappedAlignment, BlocksAreAsWideAsTheView)
{
    const auto wide = m_View->layout().columnsOfBlock();
    EXPECT_GT(wide, 10U);
    const QRect last = m_View->cellRect({0, wide - 1});
    EXPECT_LE(last.right(), m_View->viewport()->width());
    m_View->QWidget::window()->resize(900, 500);
    QCoreApplication::processEvents();
    EXPECT_GT(m_View->layout().columnsOfBlock(), wide);
}

// The grid's own pixels, letters included.
TEST_F(WrappedAlignment, CellsHaveThePixelsOfTheGrid)
{
    colorAll(Color(0x205080));
    m_Shown.selectInRow(1, {0, 3});
    const QImage grid = pictureOf(m_Served->areaWidget(WindowArea::Cells));
    const QImage image = seen();
    ASSERT_EQ(m_View->cellSize(), m_Served->cellSize());
    for (const CellIndex cell : {CellIndex{0, 0}, {0, 1}, {1, 1}, {1, 3}, {3, 2}, {3, 0}, {2, 5}})
        EXPECT_EQ(image.copy(m_View->cellRect(cell)), grid.copy(m_Served->cellRect(cell)))
            << cell.row << ' ' << cell.col;
}

TEST_F(WrappedAlignment, EveryCellInSightHasItsColor)
{
    EXPECT_GT(cellsInSight().size(), 500U);
    EXPECT_EQ(wrongCells(), 0U);
    m_View->verticalScrollBar()->setValue(m_Shown.height() - 4);
    EXPECT_EQ(wrongCells(), 0U);
    m_View->setCellSize({4, 6});
    QCoreApplication::processEvents();
    EXPECT_EQ(wrongCells(), 0U);
}

TEST_F(WrappedAlignment, ColorsSelectionAndEditsAreFollowedAtOnce)
{
    const QImage before = seen();
    colorAll(Color(0x11aa33));
    EXPECT_NE(seen(), before);
    EXPECT_EQ(wrongCells(), 0U);
    const QImage colored = seen();
    {
        DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        m_Shown.selectInRow(0, {0, 10});
    }
    EXPECT_NE(seen(), colored);
    EXPECT_EQ(wrongCells(), 0U);
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
        m_Shown.insertGapCol(2, 30);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(m_View->layout().columns(), m_Shown.width());
    EXPECT_EQ(wrongCells(), 0U);
}

TEST_F(WrappedAlignment, AClickGoesToTheCellAndMarksIt)
{
    m_View->verticalScrollBar()->setValue(m_View->verticalScrollBar()->maximum());
    QCoreApplication::processEvents();
    const CellIndex cell = cellsInSight().back();
    ASSERT_FALSE(m_Served->visibleCells().contains(cell));
    click(m_View->viewport(), Qt::LeftButton, m_View->cellRect(cell).center());
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_Served->visibleCells().contains(cell));
    EXPECT_EQ(m_View->marked(), TAMBO::CellBlock::of(cell));
    EXPECT_FALSE(isSelected(cell));
}

TEST_F(WrappedAlignment, DraggingSelectsTheResiduesAndNoOthers)
{
    drag({2, 3}, {4, 6});
    for (unsigned long row = 0; row < 8; ++row)
        for (unsigned long col = 0; col < 10; ++col) {
            const bool isInside = row >= 2 && row <= 4 && col >= 3 && col <= 6;
            EXPECT_EQ(isSelected({row, col}), isInside && m_Shown.getItem(row, col) != nullptr)
                << row << ' ' << col;
        }
    EXPECT_EQ(wrongCells(), 0U);
}

TEST_F(WrappedAlignment, TheWheelWithControlZoomsAndWithoutItScrolls)
{
    const QSize before = m_View->cellSize();
    const auto turn = [this](int notches, Qt::KeyboardModifiers keys) {
        const QPoint at = m_View->viewport()->rect().center();
        QWheelEvent event(at, m_View->viewport()->mapToGlobal(QPointF(at)), {}, {0, 120 * notches},
                          Qt::NoButton, keys, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_View->viewport(), &event);
    };
    turn(2, Qt::ControlModifier);
    EXPECT_GT(m_View->cellSize().width(), before.width());
    EXPECT_EQ(m_Served->cellSize(), before);
    turn(-60, Qt::ControlModifier);
    EXPECT_EQ(m_View->cellSize(), WrappedView::kSmallestCell);
    turn(60, Qt::ControlModifier);
    EXPECT_GT(m_View->cellSize().width(), before.width());
    EXPECT_EQ(m_View->verticalScrollBar()->value(), 0);
    turn(-1, {});
    EXPECT_GT(m_View->verticalScrollBar()->value(), 0);
}

TEST_F(WrappedAlignment, WhatIsSeenFirstStaysSoWhenTheViewGetsWider)
{
    m_View->verticalScrollBar()->setValue(250);
    const WrapLine first = m_View->layout().at(250);
    ASSERT_EQ(first.kind, WrapLine::Kind::Row);
    m_View->QWidget::window()->resize(900, 500);
    QCoreApplication::processEvents();
    const WrapLine now = m_View->layout().at(std::uint64_t(m_View->verticalScrollBar()->value()));
    EXPECT_EQ(now.row, first.row);
    EXPECT_LE(now.colBegin, first.colBegin);
    EXPECT_GT(now.colEnd, first.colBegin);
}

TEST_F(WrappedAlignment, NumbersAtTheEndsOfRowsAreThoseOfTheLastResidue)
{
    // A gap has none of its own.
    unsigned long gap = 0;
    while (m_Shown.letterAt(0, gap) != '\0')
        ++gap;
    EXPECT_EQ(companion::lastNumber(m_Shown, 0, 0, gap + 1), QString::number(gap));
    EXPECT_EQ(companion::lastNumber(m_Shown, 0, gap, gap + 1), "");
}

TEST_F(WrappedAlignment, NumbersAreSwitchedOffForLaterViewsToo)
{
    const QImage before = seen();
    const auto wide = m_View->layout().columnsOfBlock();
    m_View->QWidget::window()->findChild<QCheckBox *>()->click();
    QCoreApplication::processEvents();
    EXPECT_GT(m_View->layout().columnsOfBlock(), wide);
    EXPECT_NE(seen(), before);
    m_Companion = std::make_unique<Companion>(*m_Served);
    open();
    EXPECT_FALSE(m_View->hasNumbers());
}

TEST_F(WrappedAlignment, EscapeClosesTheWindowAndTheCommandOpensItAgain)
{
    QWidget *const window = m_View->QWidget::window();
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(m_View, &escape);
    EXPECT_FALSE(window->isVisible());
    open();
    EXPECT_EQ(m_View->QWidget::window(), window);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(WrappedAlignment, FollowsTheWindowToAnotherAlignmentAndToNone)
{
    m_Window->Populate(&alignment({"ACDEF", "AC-EF"}, "other"));
    QCoreApplication::processEvents();
    EXPECT_EQ(m_View->layout().rows(), 2U);
    EXPECT_EQ(m_View->layout().columns(), 5U);
    m_Window->Clear();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_View->layout().lines(), 0U);
    click(m_View->viewport(), Qt::LeftButton, {100, 40});
    seen();
}

// What painting costs depends on the size of the view alone.
TEST_F(WrappedAlignment, OnlyCellsInSightAreReadHoweverManyThereAre)
{
    m_Window->Populate(&large(3000, 1000));
    QCoreApplication::processEvents();
    for (const int line : {0, 20'000, m_View->verticalScrollBar()->maximum()}) {
        m_View->verticalScrollBar()->setValue(line);
        const std::size_t before = m_View->cellsRead();
        seen();
        const std::size_t inSight =
            std::size_t(m_View->viewport()->height() / m_View->cellSize().height() + 1) *
            m_View->layout().columnsOfBlock();
        // Once for the change, and once for the picture.
        EXPECT_LE(m_View->cellsRead() - before, 2 * inSight) << line;
        EXPECT_GT(m_View->cellsRead(), before) << line;
    }
}

TEST_F(WrappedAlignment, ToolTipsTellTheCellAndTheWholeName)
{
    EXPECT_TRUE(
        toolTipAt(m_View->viewport(), m_View->cellRect({1, 2}).center()).contains("row 2 of 120"));
    EXPECT_EQ(toolTipAt(m_View->viewport(), {2, m_View->cellRect({1, 2}).center().y()}), "s1");
}

} // namespace WrappedViewTest
