// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureWindow.h"

#include "PartMenu.h"
#include "Selecting.h"

#include "OpenView.h"
#include "contract/FakeAlignmentWindow.h"

#include "DataAdder.h"
#include "DataDelete.h"
#include "DataPoint.h"
#include "Space.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QIcon>
#include <QLabel>
#include <QStatusBar>
#include <QTest>
#include <QTreeWidget>

extern "C" {
void Execute0();
bool IsDone();
void Cleanup();
}

namespace StructureWindowTest {

using namespace structures;

class StructureWindowOfModel : public OpenView
{
};

TEST_F(StructureWindowOfModel, ShowsEverythingAtFirst)
{
    placeOfResidue(0);
    placeOfResidue(12);
    placeOfResidue(23);
}

TEST_F(StructureWindowOfModel, PointingAtAResidueNamesIt)
{
    QTest::mouseMove(&view(), placeOfResidue(12));
    const auto *const label = m_Window->statusBar()->findChild<QLabel *>();
    EXPECT_TRUE(waitUntil([&] { return !label->text().isEmpty(); }));
    EXPECT_EQ(label->text(),
              "1abc, chain A, " + QString::fromStdString(m_Structure->Child(0)->Child(12)->Name()));
    QTest::mouseMove(&view(), {1, 1});
    EXPECT_TRUE(waitUntil([&] { return label->text().isEmpty(); }));
}

TEST_F(StructureWindowOfModel, WhatIsPointedAtHasAnOutline)
{
    const QPoint place = placeOfResidue(12);
    const QImage plain = view().picture().copy();
    QTest::mouseMove(&view(), place);
    EXPECT_TRUE(waitUntil([&] { return view().picture() != plain; }));
    QTest::mouseMove(&view(), {1, 1});
    EXPECT_TRUE(waitUntil([&] { return view().picture() == plain; }));
}

TEST_F(StructureWindowOfModel, AClickSelectsAndWithCtrlAddsAndTakesAway)
{
    const QPoint five = placeOfResidue(5);
    const QPoint nine = placeOfResidue(9);
    QTest::mouseClick(&view(), Qt::LeftButton, {}, five);
    EXPECT_EQ(selected(), std::vector<std::size_t>({5}));
    QTest::mouseClick(&view(), Qt::LeftButton, Qt::ControlModifier, nine);
    EXPECT_EQ(selected(), std::vector<std::size_t>({5, 9}));
    QTest::mouseClick(&view(), Qt::LeftButton, Qt::ControlModifier, five);
    EXPECT_EQ(selected(), std::vector<std::size_t>({9}));
    QTest::mouseClick(&view(), Qt::LeftButton, {}, {1, 1});
    EXPECT_TRUE(selected().empty());
}

TEST_F(StructureWindowOfModel, AClickWithShiftSelectsTheStretchInBetween)
{
    QTest::mouseClick(&view(), Qt::LeftButton, {}, placeOfResidue(5));
    QTest::mouseClick(&view(), Qt::LeftButton, Qt::ShiftModifier, placeOfResidue(9));
    EXPECT_EQ(selected(), std::vector<std::size_t>({5, 6, 7, 8, 9}));
}

TEST_F(StructureWindowOfModel, DraggingWithShiftSelectsWhatIsToBeSeenThere)
{
    QTest::mousePress(&view(), Qt::LeftButton, Qt::ShiftModifier, {1, 1});
    QTest::mouseMove(&view(), {50, 50});
    QTest::mouseMove(&view(), view().rect().bottomRight());
    QTest::mouseRelease(&view(), Qt::LeftButton, Qt::ShiftModifier, view().rect().bottomRight());
    // Some may be behind others.
    EXPECT_GT(selected().size(), 16U);
}

TEST_F(StructureWindowOfModel, DraggingTurnsAndLessThanFourPixelsIsAClick)
{
    const Camera before = view().camera();
    const QPoint place = placeOfResidue(12);
    QTest::mousePress(&view(), Qt::LeftButton, {}, place);
    QTest::mouseMove(&view(), place + QPoint(2, 1));
    QTest::mouseRelease(&view(), Qt::LeftButton, {}, place + QPoint(2, 1));
    EXPECT_EQ(view().camera(), before);
    EXPECT_FALSE(selected().empty());
    QTest::mousePress(&view(), Qt::LeftButton, {}, place);
    QTest::mouseMove(&view(), place + QPoint(20, 0));
    QTest::mouseMove(&view(), place + QPoint(60, 0));
    QTest::mouseRelease(&view(), Qt::LeftButton, {}, place + QPoint(60, 0));
    EXPECT_FALSE(view().camera().rotation == before.rotation);
    EXPECT_EQ(view().camera().target, before.target);
}

TEST_F(StructureWindowOfModel, TheWheelKeepsWhatIsUnderThePointer)
{
    const QPoint place = placeOfResidue(20);
    const Camera before = view().camera();
    const Projection projection(before, float(view().width()), float(view().height()));
    const Vec3 there =
        projection.fromView(projection.toViewAt(float(place.x()), float(place.y()), 0));
    QWheelEvent wheel(place, view().mapToGlobal(place), {}, {0, 120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&view(), &wheel);
    EXPECT_LT(view().camera().height, before.height);
    const auto now = view().placeOf(there);
    ASSERT_TRUE(now);
    EXPECT_NEAR(now->x(), place.x(), 0.1);
    EXPECT_NEAR(now->y(), place.y(), 0.1);
}

TEST_F(StructureWindowOfModel, CentringBringsTheSelectionToTheMiddle)
{
    QTest::mouseClick(&view(), Qt::LeftButton, {}, placeOfResidue(12));
    QTest::keyClick(m_Window, Qt::Key_C);
    const StructureScene::Place place{m_Window->scene().structures().front().get(), {12, kNone}};
    ASSERT_TRUE(waitUntil([&] {
        return distance(view().camera().target, m_Window->scene().positionOf(place)) < 0.1F;
    }));
}

TEST_F(StructureWindowOfModel, HidingAndShowingAgain)
{
    QTest::mouseClick(&view(), Qt::LeftButton, {}, placeOfResidue(12));
    QTest::keyClick(m_Window, Qt::Key_H);
    waitForPicture();
    const Molecule &molecule = m_Window->scene().structures().front()->molecule();
    const auto isSeen = [&] {
        for (int y = 0; y < view().height(); ++y)
            for (int x = 0; x < view().width(); ++x)
                if (view().pickAt({x, y}) == pickOfResidue(molecule, 12))
                    return true;
        return false;
    };
    EXPECT_FALSE(isSeen());
    QTest::keyClick(m_Window, Qt::Key_A);
    waitForPicture();
    EXPECT_TRUE(isSeen());
}

TEST_F(StructureWindowOfModel, TheListHidesAStructure)
{
    auto *const list = m_Window->findChild<QTreeWidget *>();
    ASSERT_EQ(list->topLevelItemCount(), 1);
    EXPECT_EQ(list->topLevelItem(0)->text(0), "1abc");
    EXPECT_EQ(list->topLevelItem(0)->child(1)->text(0), "Chain B");
    list->topLevelItem(0)->setCheckState(0, Qt::Unchecked);
    waitForPicture();
    EXPECT_EQ(view().pickAt(view().rect().center()), 0U);
}

TEST_F(StructureWindowOfModel, TheMenuOfTheListChangesAChainAndSelectsNothing)
{
    auto *const list = m_Window->findChild<QTreeWidget *>();
    list->expandAll();
    const QPoint place = list->visualItemRect(list->topLevelItem(0)->child(0)).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, list->viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(list->viewport(), &event);
    auto *const menu = m_Window->findChild<PartMenu *>();
    ASSERT_NE(menu, nullptr);
    const auto choose = [menu](const QString &text) {
        for (QAction *const action : menu->actions())
            if (action->text().remove('&') == text)
                action->trigger();
    };
    const ViewedStructure &structure = *m_Window->scene().structures().front();
    choose("Spheres");
    EXPECT_EQ(structure.styles()[0].style, Style::Spheres);
    EXPECT_EQ(structure.styles()[24].style, Style::BallsAndSticks);
    choose("Show Side Chains");
    EXPECT_TRUE(structure.styles()[7].hasSideChain);
    choose("Show Only This");
    EXPECT_TRUE(structure.isChainHidden(1));
    EXPECT_FALSE(structure.isChainHidden(0));
    choose("Hide");
    EXPECT_TRUE(structure.isChainHidden(0));
    choose("Show");
    EXPECT_FALSE(structure.isChainHidden(0));
    EXPECT_TRUE(selected().empty());
    menu->close();
}

TEST_F(StructureWindowOfModel, ADeletedStructureIsGoneFromThePicture)
{
    {
        DataDelete<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        TAMBO::DataMaker::Destroy(m_Structure);
    }
    QTest::mouseMove(&view(), view().rect().center());
    QTest::mouseClick(&view(), Qt::LeftButton, {}, view().rect().center());
    waitForPicture();
    EXPECT_EQ(m_Window->findChild<QTreeWidget *>()->topLevelItemCount(), 0);
    EXPECT_EQ(view().pickAt(view().rect().center()), 0U);
}

TEST_F(StructureWindowOfModel, AStructureThatArrivesIsShownWithTheOthers)
{
    {
        DataAdder<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        MadeStructure::make("2xyz", 60);
    }
    auto *const list = m_Window->findChild<QTreeWidget *>();
    ASSERT_TRUE(waitUntil([&] { return list->topLevelItemCount() == 2; }));
    ASSERT_TRUE(waitUntil([&] { return view().isComplete() && view().camera().height > 50; }));
}

TEST_F(StructureWindowOfModel, TheListTellsStructuresOfOneNameApart)
{
    {
        DataAdder<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        MadeStructure::make("1abc", 60);
    }
    auto *const list = m_Window->findChild<QTreeWidget *>();
    ASSERT_TRUE(waitUntil([&] { return list->topLevelItemCount() == 2; }));
    const QString first = list->topLevelItem(0)->text(0);
    const QString second = list->topLevelItem(1)->text(0);
    EXPECT_TRUE(first.startsWith("1abc (")) << first.toStdString();
    EXPECT_TRUE(second.startsWith("1abc (")) << second.toStdString();
    EXPECT_NE(first, second);
    EXPECT_EQ(list->topLevelItem(1)->toolTip(0), second);
}

TEST_F(StructureWindowOfModel, EveryViewHasTheIconOfStructuresHoweverItWasOpened)
{
    for (QAction *const action : m_Window->findChildren<QAction *>())
        if (action->text().remove('&') == "New View")
            action->trigger();
    ASSERT_EQ(StructureWindow::opened().size(), 2);
    StructureWindow::opened().back()->restore(m_Window->state());
    const QImage expected =
        QIcon(SOURCE_DIR "/share/icons/kind-structure.svg").pixmap(32).toImage();
    ASSERT_FALSE(expected.isNull());
    for (const StructureWindow *const window : StructureWindow::opened())
        EXPECT_EQ(window->windowIcon().pixmap(32).toImage(), expected);
}

TEST_F(StructureWindowOfModel, EachCallOpensAViewAndAllAreClosedInTheEnd)
{
    EXPECT_FALSE(IsDone());
    Execute0();
    EXPECT_EQ(StructureWindow::opened().size(), 2);
    StructureWindow::opened().front()->close(false);
    EXPECT_FALSE(IsDone());
    Cleanup();
    EXPECT_TRUE(IsDone());
}

class WithoutAView : public ModelFixture
{
};

TEST_F(WithoutAView, NothingIsReadAndNothingListensInGrids)
{
    using TAMBO::WindowArea;
    const ScopedSettings settings("");
    const FakeAlignmentWindow grid;
    // Nor does one that has been closed.
    Execute0();
    Cleanup();
    const std::size_t before = StructureScene::readings();
    TAMBO::Compound *structure = nullptr;
    {
        DataAdder<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        structure = MadeStructure::make("1abc");
    }
    ASSERT_TRUE(select({structure->Child(0)->Child(5)}, Selecting::Only));
    {
        DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        structure->SetColor(Color(0xff0000U));
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(StructureScene::readings(), before);
    EXPECT_FALSE(grid.hasFilters(WindowArea::Cells));
    EXPECT_FALSE(grid.hasOverlays(WindowArea::Cells));
    Execute0();
    EXPECT_EQ(StructureScene::readings(), before + 1);
    EXPECT_TRUE(grid.hasFilters(WindowArea::Cells));
    Cleanup();
    EXPECT_FALSE(grid.hasFilters(WindowArea::Cells));
}

} // namespace StructureWindowTest
