// SPDX-License-Identifier: GPL-3.0-or-later
#include "CompanionFixture.h"

#include "Commands.h"
#include "Companions.h"
#include "WindowCommands.h"
#include "support/Contrast.h"

#include <QLabel>
#include <QMenu>
#include <QToolBar>

namespace CompanionTest {

class LongNames : public AlignmentCompanion
{
protected:
    static constexpr const char *kLong =
        "<b>a_name_that_is_much_longer_than_a_third_of_the_window_is_wide/1-100";

    LongNames()
    {
        m_Companion.reset();
        m_Window = &show(alignment({"ACDEF", "ACDEF"}, "long", {"s0", kLong}), {700, 400});
        m_Served = &served(*m_Window);
        m_OwnWidth = m_Served->nameWidth();
        m_Companion = std::make_unique<Companion>(*m_Served);
    }

    int m_OwnWidth = 0;
};

TEST_F(AlignmentCompanion, TheWheelZoomsAndWhatIsUnderThePointerStays)
{
    m_Served->showCell({60, 200}, TAMBO::AlignmentWindow::Placement::Centred);
    const QPoint place = m_Served->cellRect({60, 200}).center();
    for (const int notches : {-1, -3, 2, 5, -2}) {
        const QSize before = m_Served->cellSize();
        wheel(WindowArea::Cells, place, notches);
        EXPECT_EQ(notches > 0, m_Served->cellSize().width() > before.width());
        const auto cell = m_Served->cellAt(place);
        ASSERT_TRUE(cell);
        EXPECT_EQ(cell->row, 60U);
        EXPECT_EQ(cell->col, 200U);
    }
}

TEST_F(AlignmentCompanion, TheWheelWithoutCtrlScrolls)
{
    const QSize before = m_Served->cellSize();
    QWidget *const cells = m_Served->areaWidget(WindowArea::Cells);
    QWheelEvent event({10, 10}, cells->mapToGlobal(QPointF(10, 10)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(cells, &event);
    EXPECT_EQ(m_Served->cellSize(), before);
    EXPECT_GT(m_Served->scrollPosition().y(), 0);
}

TEST_F(AlignmentCompanion, TheSizeOfCellsStaysForTheNextWindow)
{
    m_Companion->zoom().out();
    m_Companion->zoom().out();
    const QSize size = m_Served->cellSize();
    m_Companion.reset();
    ZEP::KALMO2 &next = show(m_Shown, {700, 400});
    const Companion other(served(next));
    EXPECT_EQ(served(next).cellSize(), size);
}

TEST_F(AlignmentCompanion, TheNormalSizeIsKeptAsNone)
{
    m_Companion->zoom().out();
    m_Companion->zoom().reset();
    EXPECT_EQ(m_Served->cellSize(), m_Served->ownCellSize());
    m_Companion.reset();
    EXPECT_EQ(WorkbenchValues::Get("companion", "cell-width"), "0");
}

TEST_F(AlignmentCompanion, AllColumnsAndAllRowsCanBeInSight)
{
    m_Companion->zoom().showAllColumns();
    EXPECT_EQ(m_Served->visibleCells().colEnd, m_Served->columns());
    EXPECT_LT(m_Served->visibleCells().rowEnd, m_Served->rows());
    m_Companion->zoom().showAll();
    EXPECT_EQ(m_Served->visibleCells(), (TAMBO::CellBlock{0, m_Served->rows(), 0, 400}));
}

TEST_F(AlignmentCompanion, TheBorderOfTheNamesCanBeDragged)
{
    QWidget *const names = m_Served->areaWidget(WindowArea::Names);
    const int before = m_Served->nameWidth();
    const QPoint border(names->width() - 2, 30);
    press(names, Qt::LeftButton, border);
    move(names, Qt::LeftButton, border + QPoint(50, 0));
    release(names, Qt::LeftButton, border + QPoint(50, 0));
    EXPECT_EQ(m_Served->nameWidth(), before + 50);
    EXPECT_FALSE(m_Shown.isRowSelected(1));
}

TEST_F(LongNames, OfSelectedRowsHaveABarThatIsSeenBesideTheLightLetters)
{
    QWidget *const names = m_Served->areaWidget(WindowArea::Names);
    // In all lines of a row that is selected, and in none of the other one.
    const auto darkLines = [&](unsigned long row) {
        QCoreApplication::processEvents();
        const QRect place = m_Served->blockRect({row, row + 1, 0, 1}, WindowArea::Names);
        const QImage picture = pictureOf(names).copy(place);
        const int x = m_Served->nameWidth() - 3 * (m_Served->ownCellSize().width() / 3) / 2;
        int dark = 0;
        for (int y = 0; y < picture.height(); ++y)
            dark += contrastOf(picture.pixelColor(x, y), Qt::white) >= kReadableContrast ? 1 : 0;
        return std::pair(dark, picture.height());
    };
    EXPECT_EQ(darkLines(1).first, 0);
    {
        TAMBO::Alignment &alignment = *m_Served->alignment();
        const DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
        alignment.selectInRow(1, {0, alignment.width()});
    }
    for (int zoom = 0; zoom < 3; ++zoom, m_Companion->zoom().out()) {
        EXPECT_EQ(darkLines(1).first, darkLines(1).second);
        EXPECT_EQ(darkLines(0).first, 0);
    }
}

TEST_F(LongNames, HaveRoomUpToAThirdOfTheWindowWhenTheyAreShown)
{
    EXPECT_GT(m_Served->nameWidth(), m_OwnWidth);
    EXPECT_LE(m_Served->nameWidth(), 700 / 3);
}

TEST_F(LongNames, AreWholeAfterADoubleClickOnTheBorder)
{
    QWidget *const names = m_Served->areaWidget(WindowArea::Names);
    mouse(names, QEvent::MouseButtonDblClick, Qt::LeftButton, {names->width() - 2, 30},
          Qt::LeftButton);
    const QFontMetrics metrics(*m_Served->nameFont());
    EXPECT_GE(m_Served->nameWidth(), metrics.horizontalAdvance(QString(kLong)));
    m_Companion->names().reset();
    EXPECT_EQ(m_Served->nameWidth(), m_OwnWidth);
}

TEST_F(LongNames, AreCutInTheMiddleAndWholeInTheToolTip)
{
    QWidget *const names = m_Served->areaWidget(WindowArea::Names);
    QCoreApplication::processEvents();
    const QRect place = m_Served->blockRect({1, 2, 0, 1}, WindowArea::Names);
    const QImage cut = pictureOf(names).copy(place);
    EXPECT_EQ(toolTipAt(names, place.center()), QString(kLong).toHtmlEscaped());
    // Its beginning is seen, which the window alone has cut off.
    m_Companion.reset();
    const QImage own = pictureOf(names).copy(place);
    EXPECT_NE(cut.copy(0, 0, 40, place.height()), own.copy(0, 0, 40, place.height()));
    EXPECT_EQ(cut.copy(place.width() - 10, 0, 10, place.height()),
              own.copy(place.width() - 10, 0, 10, place.height()));
}

TEST_F(LongNames, ThatAreCutCanBeReadWhenTheirRowIsSelected)
{
    QWidget *const names = m_Served->areaWidget(WindowArea::Names);
    {
        TAMBO::Alignment &alignment = *m_Served->alignment();
        const DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
        alignment.selectInRow(1, {0, alignment.width()});
    }
    QCoreApplication::processEvents();
    const QRect place = m_Served->blockRect({1, 2, 0, 1}, WindowArea::Names);
    const QImage picture =
        pictureOf(names).copy(place.adjusted(0, 0, -2 * m_Served->ownCellSize().width(), 0));
    const QColor ground = picture.pixelColor(0, 0);
    double best = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            best = std::max(best, contrastOf(picture.pixelColor(x, y), ground));
            EXPECT_NE(picture.pixelColor(x, y), Qt::green);
        }
    EXPECT_GE(best, kReadableContrast);
}

// ---- Presses beside names

class BesideNames : public AlignmentCompanion
{
protected:
    BesideNames()
    {
        m_Served->setNameWidth(300);
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QPoint leftOf(unsigned long row) const
    {
        return {3, m_Served->blockRect({row, row + 1, 0, 1}, WindowArea::Names).center().y()};
    }
    [[nodiscard]] QPoint nameOf(unsigned long row) const
    {
        return leftOf(row) + QPoint(300 - 3 * m_Served->ownCellSize().width(), 0);
    }
    [[nodiscard]] QWidget *names() const { return m_Served->areaWidget(WindowArea::Names); }
};

TEST_F(BesideNames, APressLeftOfAShortNameSelectsItsRow)
{
    press(names(), Qt::LeftButton, leftOf(2));
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_Shown.isRowSelected(2));
    release(names(), Qt::LeftButton, leftOf(2));
    EXPECT_TRUE(m_Shown.isRowSelected(2)) << "once";
    // Before the press has been handed on.
    click(names(), Qt::LeftButton, leftOf(3));
    EXPECT_TRUE(m_Shown.isRowSelected(3));
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_Shown.isRowSelected(3)) << "once";
    click(names(), Qt::LeftButton, nameOf(3));
    EXPECT_FALSE(m_Shown.isRowSelected(3)) << "as a press on the name";
}

TEST_F(BesideNames, ARowIsDraggedFromThereAndLetGoThere)
{
    const std::string moved = m_Shown.GetSeqName(2);
    press(names(), Qt::LeftButton, leftOf(2));
    move(names(), Qt::LeftButton, leftOf(4));
    move(names(), Qt::LeftButton, leftOf(5));
    release(names(), Qt::LeftButton, leftOf(5));
    EXPECT_EQ(m_Shown.GetSeqName(5), moved);
    // From the name to a place beside one, and from there to a name.
    press(names(), Qt::LeftButton, nameOf(5));
    release(names(), Qt::LeftButton, leftOf(1));
    EXPECT_EQ(m_Shown.GetSeqName(1), moved);
    press(names(), Qt::LeftButton, leftOf(1));
    QCoreApplication::processEvents();
    release(names(), Qt::LeftButton, nameOf(0));
    EXPECT_EQ(m_Shown.GetSeqName(0), moved);
}

TEST_F(BesideNames, OtherButtonsAndKeysMeanThereWhatTheyMeanAtTheName)
{
    const unsigned long rows = m_Shown.height();
    const std::string next = m_Shown.GetSeqName(3);
    mouse(names(), QEvent::MouseButtonPress, Qt::MiddleButton, leftOf(2), Qt::MiddleButton,
          Qt::ShiftModifier);
    release(names(), Qt::MiddleButton, leftOf(2));
    EXPECT_EQ(m_Shown.height(), rows - 1);
    EXPECT_EQ(m_Shown.GetSeqName(2), next);
}

TEST_F(BesideNames, BelowTheLastRowAPressDoesNothing)
{
    m_Window->Populate(&alignment({"ACD", "ACE"}, "few"));
    QCoreApplication::processEvents();
    m_Served->setNameWidth(300);
    click(names(), Qt::LeftButton, leftOf(1) + QPoint(0, 60));
    QCoreApplication::processEvents();
    for (unsigned long row = 0; row < 2; ++row)
        EXPECT_FALSE(m_Served->alignment()->isRowSelected(row));
}

TEST_F(LongNames, KeepTheWidthThatTheUserHasChosen)
{
    QWidget *const names = m_Served->areaWidget(WindowArea::Names);
    press(names, Qt::LeftButton, {names->width() - 2, 30});
    move(names, Qt::LeftButton, {names->width() - 42, 30});
    release(names, Qt::LeftButton, {names->width() - 42, 30});
    const int chosen = m_Served->nameWidth();
    m_Companion->names().alignmentShown();
    EXPECT_EQ(m_Served->nameWidth(), chosen);
}

TEST_F(AlignmentCompanion, NamesThatHaveRoomLookAsTheWindowPaintsThem)
{
    QWidget *const names = m_Served->areaWidget(WindowArea::Names);
    // Tool bars leave less room.
    const QRect seen = m_Served->blockRect({0, 8, 0, 1}, WindowArea::Names);
    const QImage with = pictureOf(names).copy(seen);
    m_Companion.reset();
    EXPECT_EQ(pictureOf(names).copy(seen), with);
}

TEST_F(AlignmentCompanion, TheLineNamesWhatIsUnderThePointer)
{
    auto *const line = m_Window->findChild<QToolBar *>("UnderThePointer");
    ASSERT_NE(line, nullptr);
    QWidget *const cells = m_Served->areaWidget(WindowArea::Cells);
    move(cells, Qt::NoButton, m_Served->cellRect({2, 1}).center());
    const QString text = shownText(*line);
    EXPECT_TRUE(text.startsWith(QString::fromStdString(m_Shown.GetSeqName(2))))
        << text.toStdString();
    EXPECT_TRUE(text.contains("row 3 of 120")) << text.toStdString();
    EXPECT_TRUE(text.contains("column 2 of 400")) << text.toStdString();
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(cells, &leave);
    EXPECT_EQ(shownText(*line), QString());
}

TEST_F(AlignmentCompanion, TheLineNeverAsksForAWiderWindow)
{
    const int before = m_Window->minimumSizeHint().width();
    move(m_Served->areaWidget(WindowArea::Cells), Qt::NoButton,
         m_Served->cellRect({2, 1}).center());
    EXPECT_EQ(m_Window->minimumSizeHint().width(), before);
}

class GoingTo : public AlignmentCompanion
{
protected:
    void go(const QString &text)
    {
        m_Companion->goTo().ask();
        auto *const line = m_Companion->goTo().findChild<QLineEdit *>();
        line->setText(text);
        emit line->returnPressed();
    }
    bool isInSight(const TAMBO::CellIndex &cell) const
    {
        return m_Served->visibleCells().contains(cell);
    }
};

TEST_F(GoingTo, AColumnKeepsTheRowsInSight)
{
    m_Served->scrollTo({0, 333});
    go("300");
    EXPECT_TRUE(isInSight({m_Served->visibleCells().rowBegin, 299}));
    EXPECT_EQ(m_Served->scrollPosition().y(), 333);
}

TEST_F(GoingTo, ANameKeepsTheColumnsInSight)
{
    m_Served->scrollTo({777, 0});
    go(QString::fromStdString(m_Shown.GetSeqName(100)));
    EXPECT_TRUE(isInSight({100, m_Served->visibleCells().colBegin}));
    EXPECT_EQ(m_Served->scrollPosition().x(), 777);
}

TEST_F(GoingTo, APlaceThatIsNotThereIsToldAndNothingMoves)
{
    go("401");
    EXPECT_EQ(m_Served->scrollPosition(), QPoint(0, 0));
    const QList<QLabel *> labels = m_Companion->goTo().findChildren<QLabel *>();
    EXPECT_EQ(labels.back()->text(), "There are columns 1 to 400.");
}

TEST_F(GoingTo, IsOutOfSightUntilItIsAskedForAndEscapeClosesIt)
{
    EXPECT_TRUE(m_Companion->goTo().isHidden());
    go("1");
    EXPECT_FALSE(m_Companion->goTo().isHidden());
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_Companion->goTo(), &escape);
    EXPECT_TRUE(m_Companion->goTo().isHidden());
}

TEST_F(AlignmentCompanion, AMessageStaysUntilTheCursorMoves)
{
    m_Companion->cursor().toggle();
    const QLabel *const line =
        m_Window->findChild<QToolBar *>("UnderThePointer")->findChild<QLabel *>();
    const QString place = line->text();
    EXPECT_NE(place, "");
    m_Companion->tell("3 columns removed");
    EXPECT_EQ(line->text(), "3 columns removed");
    m_Companion->cursor().toggle();
    m_Companion->cursor().toggle();
    EXPECT_EQ(line->text(), place);
}

TEST_F(AlignmentCompanion, EveryCommandIsInTheMenuAndItsKeysAreInTheWindow)
{
    const companion::WindowCommands keys(*m_Served, *m_Companion);
    QMenu menu;
    companion::fillMenu(menu, [this] { return m_Companion.get(); });
    QStringList texts;
    // Behind a tab stand keys that are the workbench's, or the cells' own.
    const auto add = [&texts](const QAction &action) {
        texts << action.text().section(u'\t', 0, 0);
    };
    for (const QAction *const action : menu.actions())
        if (const QMenu *const submenu = action->menu())
            for (const QAction *const inner : submenu->actions())
                add(*inner);
        else if (!action->isSeparator())
            add(*action);
    EXPECT_EQ(texts.size(), qsizetype(companion::commands().size()));
    for (const companion::Command &command : companion::commands()) {
        EXPECT_TRUE(texts.contains(command.text.section(u'\t', 0, 0)))
            << command.text.toStdString();
        EXPECT_FALSE(command.toolTip.isEmpty()) << command.text.toStdString();
        EXPECT_TRUE(command.keys.isEmpty() || hasAction(m_Window->actions(), command.keys))
            << command.text.toStdString();
    }
}

TEST_F(AlignmentCompanion, WhatIsOnInTheWindowIsTickedInTheMenu)
{
    Companion *target = m_Companion.get();
    QMenu menu;
    companion::fillMenu(menu, [&target] { return target; });
    const auto ticked = [&menu] {
        emit menu.aboutToShow();
        QStringList texts;
        for (const QAction *const action : menu.findChildren<QAction *>())
            if (action->isChecked())
                texts << action->text().remove(u'&');
        emit menu.aboutToHide();
        texts.sort();
        return texts;
    };
    m_Companion->overview().hide();
    m_Companion->tracks().hide();
    EXPECT_EQ(ticked(), QStringList({"Spread While Dragging", "Structure Marks"}));
    m_Companion->marks().toggle();
    m_Companion->guide().toggle();
    m_Companion->overview().toggle();
    m_Companion->tracks().toggle();
    m_Companion->tree().toggle();
    m_Companion->cursor().toggle();
    const QStringList shown{"Cell Cursor", "Overview", "Show Tree", "Tracks"};
    EXPECT_EQ(ticked(), shown);
    // However it went.
    m_Companion->tracks().close();
    EXPECT_EQ(ticked(), shown.mid(0, 3));
    target = nullptr;
    EXPECT_EQ(ticked(), QStringList());
}

TEST_F(AlignmentCompanion, KeysOfTheWorkbenchAreShownInTheMenuAndNotTakenThere)
{
    QMenu menu;
    companion::fillMenu(menu, [this] { return m_Companion.get(); });
    std::size_t shown = 0;
    for (const companion::Command &command : companion::commands()) {
        if (!command.hasKeysOfWorkbench)
            continue;
        for (const QAction *const action : menu.findChildren<QAction *>()) {
            if (action->text().section(u'\t', 0, 0) != command.text)
                continue;
            EXPECT_EQ(action->text().section(u'\t', 1), command.keys.front().toString());
            EXPECT_TRUE(action->shortcuts().isEmpty());
            ++shown;
        }
    }
    EXPECT_EQ(shown, 5U);
}

TEST_F(AlignmentCompanion, KeysAreNoneOfTheWindowsOwn)
{
    const QList<QAction *> own = m_Window->menuBar()->findChildren<QAction *>();
    for (const companion::Command &command : companion::commands()) {
        for (const QKeySequence &keys : command.keys) {
            const bool isTaken = std::ranges::any_of(
                own, [&keys](const QAction *action) { return action->shortcuts().contains(keys); });
            EXPECT_FALSE(isTaken) << keys.toString().toStdString();
        }
    }
}

TEST_F(AlignmentCompanion, TheMenuIsForTheWindowUsedLastAndGreyWithoutOne)
{
    QMenu menu;
    Companion *target = nullptr;
    companion::fillMenu(menu, [&target] { return target; });
    emit menu.aboutToShow();
    EXPECT_FALSE(menu.actions().front()->isEnabled());
    emit menu.aboutToHide();
    menu.actions().front()->trigger();
    target = m_Companion.get();
    menu.actions().front()->trigger();
    EXPECT_FALSE(m_Companion->find().isHidden());
}

TEST_F(AlignmentCompanion, EachWindowHasOneAsLongAsItIsThere)
{
    m_Companion.reset();
    companion::Companions all;
    EXPECT_NE(all.lastUsed(), nullptr);
    ZEP::KALMO2 &next = show(m_Shown, {700, 400});
    EXPECT_NE(next.findChild<QToolBar *>("UnderThePointer"), nullptr);
    next.close(false);
    EXPECT_NE(all.lastUsed(), nullptr);
}

} // namespace CompanionTest
