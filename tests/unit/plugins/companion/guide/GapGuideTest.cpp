// SPDX-License-Identifier: GPL-3.0-or-later
// What is shown while gaps are dragged in a window, and what is left of it.
#include "guide/GuidedFamily.h"

#include "Commands.h"

#include <QMenu>

namespace GapGuideTest {

using companion::GuidedPlace;
using TAMBO::WindowArea;

class GuidedDrag : public GuidedFamily
{
protected:
    // Without the frames around it and its letter.
    QColor ground(unsigned long row, unsigned long col)
    {
        const QRect cell = m_Served->cellRect({row, col});
        return pictureOf(cells()).pixelColor(cell.topLeft() + QPoint(6, 6));
    }
};

TEST_F(GuidedDrag, NothingChangesUntilItIsLetGoAndThenItIsAsAnnounced)
{
    look(family());
    const Texts before = texts();
    hold(1, kGap, kGap + 4);
    EXPECT_EQ(texts(), before);
    EXPECT_EQ(history.size(), 0U);
    const auto place = guide().place();
    ASSERT_TRUE(place);
    ASSERT_TRUE(place->spread && place->total);
    EXPECT_EQ(place->column, kGap + 4);
    const double announced = *place->spread->total(*place->total).value();
    EXPECT_GT(announced, *place->total->value());
    release(cells(), Qt::LeftButton, middle(1, kGap + 4));
    EXPECT_NE(texts(), before);
    EXPECT_FALSE(guide().place());
    companion::SpreadTable table;
    while (table.goOn(*m_Shown, std::chrono::hours(1))) {
    }
    EXPECT_NEAR(*table.total()->value(), announced, 1e-9 * announced);
}

TEST_F(GuidedDrag, SpreadBeforeAndAfterStandBesideThePointer)
{
    look(family());
    hold(1, kGap, kGap + 4);
    const auto place = guide().place();
    ASSERT_TRUE(place);
    const auto two = [](const std::optional<double> &value) {
        return QString::number(value.value(), 'f', 2);
    };
    const QStringList lines = told();
    ASSERT_GE(lines.size(), 2);
    EXPECT_EQ(lines[0],
              QString("Columns 19–23: %1 → %2 Å")
                  .arg(two(place->spread->before.value()), two(place->spread->after.value())));
    EXPECT_EQ(lines[1], QString("Alignment: %1 → %2 Å")
                            .arg(two(place->total->value()),
                                 two(place->spread->total(*place->total).value())));
    const QRect label = guide().labelRect();
    EXPECT_TRUE(QRect(QPoint(0, 0), m_Served->visibleSize()).contains(label));
    EXPECT_FALSE(label.intersects(m_Served->blockRect({1, 2, 0, m_Shown->width()})));
    release(cells(), Qt::LeftButton, middle(1, kGap));
    EXPECT_TRUE(guide().labelRect().isEmpty());
}

TEST_F(GuidedDrag, MovedCellsHaveTheColorsThatByDistanceGivesThemAfterwards)
{
    look(family());
    m_Served->setCellSize({26, 40});
    QCoreApplication::processEvents();
    const std::vector<QColor> before = {ground(2, 8), ground(2, 20)};
    // The gap goes to the column 2, all between moves to the right.
    hold(2, kGap, 2);
    std::vector<QColor> held;
    for (unsigned long col = 3; col < kGap; ++col)
        held.push_back(ground(2, col));
    EXPECT_EQ(ground(2, 20), before[1]) << "a cell that stays";
    EXPECT_NE(ground(2, 8), before[0]);
    release(cells(), Qt::LeftButton, middle(2, 2));
    ASSERT_TRUE(QMetaObject::invokeMethod(m_Window, "colorDistance"));
    QCoreApplication::processEvents();
    std::vector<QColor> after;
    for (unsigned long col = 3; col < kGap; ++col)
        after.push_back(ground(2, col));
    EXPECT_EQ(held, after);
}

TEST_F(GuidedDrag, EscapeEndsItAndNothingIsLeft)
{
    look(family());
    const QImage before = pictureOf(cells());
    const Texts rows = texts();
    hold(1, kGap, 6, Qt::MiddleButton);
    EXPECT_NE(pictureOf(cells()), before);
    pressKey(Qt::Key_Escape);
    EXPECT_FALSE(guide().isHolding());
    EXPECT_EQ(pictureOf(cells()), before);
    release(cells(), Qt::MiddleButton, middle(1, 6));
    EXPECT_EQ(texts(), rows);
    EXPECT_EQ(history.size(), 0U);
    EXPECT_EQ(pictureOf(cells()), before);
}

TEST_F(GuidedDrag, EscapeWithoutADragIsLeftToOthers)
{
    look(family());
    m_Companion->cursor().toggle();
    ASSERT_TRUE(m_Companion->cursor().place());
    hold(1, kGap, kGap + 3);
    pressKey(Qt::Key_Escape);
    EXPECT_TRUE(m_Companion->cursor().place()) << "it has ended the drag";
    release(cells(), Qt::LeftButton, middle(1, kGap + 3));
    pressKey(Qt::Key_Escape);
    EXPECT_FALSE(m_Companion->cursor().place());
}

TEST_F(GuidedDrag, OverAnotherRowThereIsNothingToBeSaid)
{
    look(family());
    const QImage before = pictureOf(cells());
    hold(1, kGap, 6);
    move(cells(), Qt::LeftButton, middle(2, 6));
    settle();
    EXPECT_FALSE(guide().place());
    EXPECT_EQ(pictureOf(cells()), before);
    move(cells(), Qt::LeftButton, middle(1, 7));
    settle();
    EXPECT_TRUE(guide().place());
    release(cells(), Qt::LeftButton, middle(2, 6));
    EXPECT_EQ(pictureOf(cells()), before);
}

TEST_F(GuidedDrag, AHelixThatWouldBeSplitIsNamedWithTheNearestPlaceThatSplitsNone)
{
    look(family());
    // The residues 5 to 12 stand in the columns 4 to 11, from 0.
    hold(1, kGap, 6);
    const auto place = guide().place();
    ASSERT_TRUE(place);
    ASSERT_TRUE(place->split);
    EXPECT_EQ(place->whole, 4U);
    const QStringList lines = told();
    EXPECT_TRUE(lines.contains("splits helix 5–12 of chain A")) << qPrintable(lines.join('\n'));
    EXPECT_TRUE(lines.contains("column 5 splits nothing")) << qPrintable(lines.join('\n'));
    move(cells(), Qt::LeftButton, middle(1, 10));
    settle();
    EXPECT_EQ(guide().place()->whole, 12U);
    move(cells(), Qt::LeftButton, middle(1, 13));
    settle();
    EXPECT_FALSE(guide().place()->split);
    EXPECT_FALSE(guide().place()->whole);
    pressKey(Qt::Key_Escape);
}

TEST_F(GuidedDrag, ThePlaceOfLeastSpreadIsMarkedAndNamed)
{
    TAMBO::Alignment &shown = family();
    // All others have it three columns to the left.
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &shown);
        for (const unsigned long row : {0UL, 2UL, 3UL})
            shown.moveGap(row, kGap, kGap - 3, false);
    }
    look(shown);
    m_Served->setCellSize({26, 40});
    hold(1, kGap, kGap - 6, Qt::MiddleButton);
    const auto place = guide().place();
    ASSERT_TRUE(place);
    EXPECT_EQ(place->least, kGap - 3);
    EXPECT_TRUE(told().last().startsWith("column 16 has the least spread: "));
    const QRect marked = m_Served->cellRect({1, kGap - 3});
    const QImage picture = pictureOf(cells());
    bool isBlue = false;
    for (int x = marked.left(); x < marked.right(); ++x)
        isBlue = isBlue || picture.pixelColor(x, marked.top() + 1) == QColor(0, 72, 200);
    EXPECT_TRUE(isBlue);
    pressKey(Qt::Key_Escape);
}

TEST_F(GuidedDrag, OfARowWithoutAStructureNothingIsSaid)
{
    look(family());
    const QImage before = pictureOf(cells());
    hold(4, kGap, 6);
    EXPECT_FALSE(guide().place());
    EXPECT_EQ(pictureOf(cells()), before);
    pressKey(Qt::Key_Escape);
    EXPECT_FALSE(guide().isHolding());
    release(cells(), Qt::LeftButton, middle(4, 6));
    EXPECT_EQ(history.size(), 0U);
}

TEST_F(GuidedDrag, AloneAStructureHasAdviceAndNoSpread)
{
    look(family(1));
    hold(0, kGap, 6);
    EXPECT_EQ(told(), (QStringList{"splits helix 5–12 of chain A", "column 5 splits nothing"}));
    pressKey(Qt::Key_Escape);
}

TEST_F(GuidedDrag, CanBeSwitchedOffForThisWindowAndTheNext)
{
    look(family());
    const auto &all = companion::commands();
    const auto command = std::ranges::find_if(
        all, [](const companion::Command &each) { return each.text == "&Spread While Dragging"; });
    ASSERT_NE(command, all.end());
    command->run(*m_Companion);
    EXPECT_FALSE(guide().isOn());
    const QImage before = pictureOf(cells());
    hold(1, kGap, 6);
    EXPECT_FALSE(guide().place());
    EXPECT_EQ(pictureOf(cells()), before);
    release(cells(), Qt::LeftButton, middle(2, 6));
    m_Companion.reset();
    m_Companion = std::make_unique<companion::Companion>(*m_Served);
    EXPECT_FALSE(guide().isOn());
    command->run(*m_Companion);
    hold(1, kGap, 6);
    EXPECT_TRUE(guide().place());
    release(cells(), Qt::LeftButton, middle(2, 6));
}

TEST_F(GuidedDrag, ABlockThatSomebodyElseDragsIsGuidedAsWell)
{
    look(family());
    const QImage before = pictureOf(cells());
    // Two rows at once.
    guide().hold([](unsigned long column) {
        return column == kGap ? companion::GapMoves()
                              : companion::GapMoves{{1, kGap, 1, column}, {2, kGap, 1, column}};
    });
    guide().aim(TAMBO::CellIndex{1, 6});
    settle();
    const auto place = guide().place();
    ASSERT_TRUE(place && place->spread && place->total);
    EXPECT_TRUE(place->split);
    EXPECT_NE(pictureOf(cells()), before);
    guide().letGo();
    EXPECT_EQ(pictureOf(cells()), before);
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, m_Shown);
        m_Shown->moveGaps(1, kGap, 1, 6);
        m_Shown->moveGaps(2, kGap, 1, 6);
    }
    companion::SpreadTable table;
    while (table.goOn(*m_Shown, std::chrono::hours(1))) {
    }
    const double announced = *place->spread->total(*place->total).value();
    EXPECT_NEAR(*table.total()->value(), announced, 1e-9 * announced);
}

TEST_F(GuidedDrag, GapsThatAreDraggedInABlockAreGuidedInAllOfItsRows)
{
    look(family());
    m_Companion->cursor().setBlock({1, kGap}, {2, kGap + 1});
    hold(1, kGap, 6);
    const auto place = guide().place();
    ASSERT_TRUE(place && place->spread && place->total);
    EXPECT_EQ(guide().spread().moves(), (companion::GapMoves{{1, kGap, 2, 6}, {2, kGap, 2, 6}}));
    EXPECT_TRUE(place->split);
    const double announced = *place->spread->total(*place->total).value();
    EXPECT_EQ(history.size(), 0U);
    release(cells(), Qt::LeftButton, middle(1, 6));
    settle();
    EXPECT_FALSE(guide().isHolding());
    EXPECT_EQ(history.size(), 1U);
    companion::SpreadTable table;
    while (table.goOn(*m_Shown, std::chrono::hours(1))) {
    }
    EXPECT_NEAR(*table.total()->value(), announced, 1e-9 * announced);
}

TEST_F(GuidedDrag, AnotherAlignmentEndsIt)
{
    look(family());
    hold(1, kGap, 6);
    m_Window->Populate(&large());
    QCoreApplication::processEvents();
    EXPECT_FALSE(guide().isHolding());
    EXPECT_FALSE(guide().place());
    release(cells(), Qt::LeftButton, middle(1, 6));
}

} // namespace GapGuideTest
