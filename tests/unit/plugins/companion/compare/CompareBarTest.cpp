// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/plugins/companion/window/CompanionFixture.h"

#include "AlignmentTable.h"
#include "DataAdder.h"
#include "DataDelete.h"
#include "DataMaker.h"
#include "PluginRoutes.h"

#include <QDeadlineTimer>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QToolButton>

namespace CompareBarTest {

using companion::CompareBar;
using companion::CompareChoice;
using companion::Stretch;
using TAMBO::services::PluginCall;
using TAMBO::services::PluginRoutes;

class InTheCompareBar : public AlignmentWindowFixture
{
protected:
    static inline const Texts kRows = {"ACD-EFGH-IK", "ACDDEFGHIIK", "ACD-EFGHIIK"};
    // The same with two differences.
    static inline const Texts kOthers = {"AC-DEFG-HIK", "ACDDEFGHIIK", "ACD-EFGHIIK"};

    InTheCompareBar() { look(alignment(kRows, "family")); }
    ~InTheCompareBar() override
    {
        m_Companion.reset();
        PluginRoutes::instance().removeExecute("Calculate", "Alignment", "Malign");
        PluginRoutes::instance().removeExecute("Data", "OpenFile", "open");
        PluginRoutes::instance().removeExecute("Data", "Alignment", "show");
    }
    void look(TAMBO::Alignment &shown)
    {
        m_Companion.reset();
        m_Shown = &shown;
        m_Window = &show(shown, {900, 400});
        m_Served = &served(*m_Window);
        m_Companion = std::make_unique<Companion>(*m_Served);
    }
    CompareBar &bar() { return m_Companion->compare(); }
    std::string text(const char *name)
    {
        return bar().findChild<QLabel *>(name)->text().toStdString();
    }
    std::string told()
    {
        auto *const line = m_Window->findChild<QToolBar *>("UnderThePointer");
        return line->findChild<QLabel *>()->text().toStdString();
    }
    void settle()
    {
        const QDeadlineTimer late(std::chrono::minutes(2));
        do
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        while (bar().isComparing() && !late.hasExpired());
        QCoreApplication::processEvents();
        EXPECT_FALSE(late.hasExpired());
    }
    // Of the same sequences, with these cells.
    TAMBO::Alignment &laidOut(const Texts &rows)
    {
        TAMBO::AlignmentTable::Rows made;
        for (std::size_t row = 0; row < rows.size(); ++row) {
            std::vector<std::uint64_t> cells(1);
            for (std::size_t column = 0; column < rows[row].size(); ++column)
                cells[0] |= std::uint64_t(rows[row][column] != '-') << column;
            made.push_back(std::make_unique<TAMBO::AlignmentRow>(
                *TAMBO::Peptide::from(m_Shown->GetSeq(row)), TAMBO::OccupancyRow(cells)));
        }
        auto owned = TAMBO::AlignmentTable::make("other", std::move(made), rows.front().size());
        TAMBO::Alignment &result = *owned;
        const DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        TAMBO::ObjectSpace::get().add(std::move(owned));
        return result;
    }
    static void chooseFiles()
    {
        PluginRoutes::instance().registerExecute("Data", "OpenFile", "open",
                                                 [](const PluginCall &call) {
                                                     *static_cast<bool *>(call.data) = true;
                                                     return true;
                                                 });
    }
    void arrives(const std::string &name)
    {
        const DataAdder<TAMBO::Space> arrival(nullptr, TAMBO::Space::instance());
        alignment(kOthers, name, {"s0", "s1", "s2"});
    }
    // Longer than it takes to look at a few alignments.
    static void lookThrough()
    {
        for (int i = 0; i < 20; ++i)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    TAMBO::Alignment &compareWithOther()
    {
        TAMBO::Alignment &other = laidOut(kOthers);
        bar().compareWith(other);
        settle();
        return other;
    }
    template <typename Change> void edit(TAMBO::Alignment &alignment, Change change)
    {
        {
            const DataPoint<TAMBO::Alignment> guard(nullptr, &alignment);
            ASSERT_TRUE(guard.m_good);
            change(alignment);
        }
        settle();
    }
    static Texts rowsOf(const TAMBO::Alignment &alignment)
    {
        Texts rows;
        for (unsigned long row = 0; row < alignment.height(); ++row)
            rows.push_back(alignment.GetSequence(row, false));
        return rows;
    }
    std::vector<Stretch> stretches() { return bar().compared()->comparison.stretches; }

    TAMBO::Alignment *m_Shown = nullptr;
    ZEP::KALMO2 *m_Window = nullptr;
    TAMBO::AlignmentWindow *m_Served = nullptr;
    std::unique_ptr<Companion> m_Companion;
};

TEST_F(InTheCompareBar, TheSharesOfEqualPairsAndColumnsAreTold)
{
    EXPECT_TRUE(bar().isHidden());
    compareWithOther();
    EXPECT_FALSE(bar().isHidden());
    EXPECT_EQ(text("What"), "Compared with other: 2 differences");
    EXPECT_EQ(text("State"),
              "Equal pairs: 88.88 % of those there (SP), 85.71 % of those here. Equal columns: "
              "63.63 % of those there (TC), 70.00 % of those here.");
}

TEST_F(InTheCompareBar, TwoThatAreTheSameHaveNoDifference)
{
    bar().compareWith(laidOut(kRows));
    settle();
    EXPECT_EQ(text("What"), "Compared with other: no difference");
    EXPECT_TRUE(text("State").starts_with("Equal pairs: 100.00 % of those there (SP), 100.00 %"));
    bar().next();
    bar().takeOverAll();
    EXPECT_EQ(history.size(), 1U) << "the other one has come, and nothing else has happened";
}

TEST_F(InTheCompareBar, RowsThatOnlyOneHasAreToldAndLeftOut)
{
    TAMBO::Alignment &other = laidOut({kOthers[0], kOthers[1]});
    bar().compareWith(other);
    settle();
    EXPECT_EQ(text("Only"), "Left out: rows only here 1, only there 0.");
    EXPECT_FALSE(bar().findChild<QLabel *>("Only")->isHidden());
    bar().compareWith(alignment(kRows, "strangers", {"x", "y", "z"}));
    settle();
    EXPECT_EQ(text("State"), "They have fewer than two sequences in common.");
    EXPECT_TRUE(bar().findChild<QLabel *>("Only")->isHidden());
}

TEST_F(InTheCompareBar, RemovedColumnsAreMissingInTheSharesOfThoseThere)
{
    std::vector<bool> columns(m_Shown->width());
    columns[1] = true;
    edit(*m_Shown, [&columns](TAMBO::Alignment &here) { here.removeColumns(columns); });
    bar().compareWithFormer(1);
    settle();
    EXPECT_EQ(text("What"), "Compared with what it was before the last step: no difference in the "
                            "residues that both have");
    EXPECT_EQ(text("State"),
              "Equal pairs: 89.28 % of those there (SP), 100.00 % of those here. Equal columns: "
              "90.00 % of those there (TC), 100.00 % of those here.");
    EXPECT_EQ(text("Only"), "Residues only here 0, only there 3.");
}

TEST_F(InTheCompareBar, OneGoesFromOneDifferenceToTheNextAndAround)
{
    compareWithOther();
    ASSERT_EQ(stretches(), (std::vector<Stretch>{{2, 4, 2, 4}, {7, 9, 7, 9}}));
    bar().next();
    EXPECT_EQ(text("What"), "Compared with other: difference 1 of 2, columns 3–4");
    bar().next();
    EXPECT_EQ(text("What"), "Compared with other: difference 2 of 2, columns 8–9");
    bar().next();
    EXPECT_EQ(bar().present(), 0U);
    bar().previous();
    EXPECT_EQ(bar().present(), 1U);
}

TEST_F(InTheCompareBar, ADifferenceIsTakenOverInOneStepThatIsUndone)
{
    compareWithOther();
    const std::size_t before = history.size();
    bar().takeOver();
    EXPECT_EQ(history.size(), before) << "at none";
    bar().next();
    bar().takeOver();
    EXPECT_EQ(history.size(), before + 1);
    EXPECT_EQ(history.undoLabel(), "Take over columns 3–4 in family");
    EXPECT_EQ(m_Shown->GetSequence(0, false), "AC-DEFGH-IK");
    settle();
    EXPECT_EQ(text("What"), "Compared with other: 1 difference");
    ASSERT_TRUE(history.undo());
    settle();
    EXPECT_EQ(rowsOf(*m_Shown), kRows);
    EXPECT_EQ(text("What"), "Compared with other: 2 differences");
    ASSERT_TRUE(history.redo());
    EXPECT_EQ(m_Shown->GetSequence(0, false), "AC-DEFGH-IK");
}

TEST_F(InTheCompareBar, AllIsTakenOverInOneStep)
{
    compareWithOther();
    bar().takeOverAll();
    EXPECT_EQ(rowsOf(*m_Shown), kOthers);
    EXPECT_EQ(history.undoLabel(), "Take over columns 3–9 in family");
    settle();
    EXPECT_EQ(text("What"), "Compared with other: no difference");
}

TEST_F(InTheCompareBar, TheRowsOfTheBlockAloneAreTakenOver)
{
    TAMBO::Alignment &other = laidOut({"AC-DEFG-HIK", "ACDDEFGHIIK", "AC-DEFGHIIK"});
    bar().compareWith(other);
    settle();
    bar().takeOverInBlock();
    EXPECT_EQ(rowsOf(*m_Shown), kRows) << "without a cursor there is no block";
    m_Companion->cursor().toggle();
    bar().takeOverInBlock();
    EXPECT_EQ(rowsOf(*m_Shown), kRows) << "both are the same at the cursor";
    QKeyEvent right(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
    for (int i = 0; i < 2; ++i)
        QCoreApplication::sendEvent(m_Served->areaWidget(WindowArea::Cells), &right);
    bar().takeOverInBlock();
    EXPECT_EQ(rowsOf(*m_Shown), (Texts{"AC-DEFGH-IK", kRows[1], kRows[2]}));
}

TEST_F(InTheCompareBar, EditsOfBothAreFollowed)
{
    TAMBO::Alignment &other = compareWithOther();
    edit(*m_Shown, [](TAMBO::Alignment &here) { here.moveGap(0, 3, 2, true); });
    EXPECT_EQ(text("What"), "Compared with other: 1 difference");
    edit(other, [](TAMBO::Alignment &there) { there.moveGap(0, 7, 8, true); });
    EXPECT_EQ(text("What"), "Compared with other: no difference");
}

TEST_F(InTheCompareBar, WhatItWasBeforeTheLastStepsIsCompared)
{
    edit(*m_Shown, [](TAMBO::Alignment &here) { here.moveGap(0, 3, 2, true); });
    edit(*m_Shown, [](TAMBO::Alignment &here) { here.moveGap(0, 8, 7, true); });
    bar().compareWithFormer(1);
    settle();
    EXPECT_EQ(text("What"), "Compared with what it was before the last step: 1 difference");
    bar().compareWithFormer(2);
    settle();
    EXPECT_EQ(text("What"), "Compared with what it was before the last 2 steps: 2 differences");
    bar().next();
    bar().takeOver();
    EXPECT_EQ(m_Shown->GetSequence(0, false), "ACD-EFG-HIK");
    settle();
    bar().takeOverAll();
    EXPECT_EQ(rowsOf(*m_Shown), kRows);
    bar().compareWithFormer(99);
    EXPECT_EQ(rowsOf(*m_Shown), kRows);
}

TEST_F(InTheCompareBar, AFormerStateIsShownAsAnAlignment)
{
    edit(*m_Shown, [](TAMBO::Alignment &here) { here.moveGap(0, 3, 2, true); });
    bar().compareWithFormer(1);
    settle();
    TAMBO::Alignment *opened = nullptr;
    PluginRoutes::instance().registerExecute(
        "Data", "Alignment", "show", [&opened](const PluginCall &call) {
            opened = static_cast<TAMBO::Alignment *>(call.data);
            return true;
        });
    const std::size_t before = history.size();
    bar().showOther();
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(opened->Name(), "family (compared)");
    EXPECT_EQ(rowsOf(*opened), kRows);
    EXPECT_EQ(history.size(), before + 1);
    settle();
    EXPECT_EQ(text("What"), "Compared with family (compared): 1 difference");
    EXPECT_EQ(m_Shown->GetSequence(0, false), "AC-DEFGH-IK");
}

TEST_F(InTheCompareBar, RowsOfAFormerStateThatAreNotHereAnyMoreAreTold)
{
    edit(*m_Shown, [](TAMBO::Alignment &here) { here.moveGap(0, 3, 2, true); });
    edit(*m_Shown, [](TAMBO::Alignment &here) { here.removeRows({false, false, true}); });
    bar().compareWithFormer(2);
    settle();
    bar().showOther();
    EXPECT_EQ(told(),
              "Rows of the former state that are left out, since they are not here any more: 1.");
    settle();
    EXPECT_EQ(text("What"), "Compared with family (compared): 1 difference");
}

TEST_F(InTheCompareBar, WhatTheAlignerMakesOfACopyIsCompared)
{
    PluginRoutes::instance().registerExecute(
        "Calculate", "Alignment", "Malign", [](const PluginCall &call) {
            auto &copy = *static_cast<TAMBO::Alignment *>(call.data);
            EXPECT_EQ(copy.range(), TAMBO::Alignment::Range(0, copy.width()));
            copy.moveGap(0, 3, 2, true);
            return true;
        });
    const std::size_t before = history.size();
    bar().compareWithAligner();
    settle();
    EXPECT_EQ(text("What"), "Compared with family (aligned): 1 difference");
    EXPECT_EQ(rowsOf(*m_Shown), kRows);
    EXPECT_EQ(history.size(), before + 1);
    EXPECT_EQ(history.undoLabel().substr(0, 22), "Align a copy of family");
    ASSERT_TRUE(history.undo());
    EXPECT_TRUE(bar().isHidden()) << "the copy is gone";
}

TEST_F(InTheCompareBar, AnAlignerThatFailsLeavesNothing)
{
    PluginRoutes::instance().registerExecute("Calculate", "Alignment", "Malign",
                                             [](const PluginCall &) { return false; });
    bar().compareWithAligner();
    EXPECT_TRUE(bar().isHidden());
    EXPECT_EQ(companion::allAlignments(), std::vector<TAMBO::Alignment *>{m_Shown});
}

TEST_F(InTheCompareBar, AChosenFileThatComesLaterIsComparedByNamesAndResidues)
{
    bool chooses = false;
    PluginRoutes::instance().registerExecute("Data", "OpenFile", "open",
                                             [&chooses](const PluginCall &call) {
                                                 *static_cast<bool *>(call.data) = chooses;
                                                 return true;
                                             });
    bar().compareWithFile();
    arrives("not asked for");
    settle();
    EXPECT_TRUE(bar().isHidden()) << "none was chosen";
    chooses = true;
    bar().compareWithFile();
    QCoreApplication::processEvents();
    EXPECT_TRUE(bar().isHidden()) << "it is being read";
    arrives("of the file");
    const QDeadlineTimer late(std::chrono::minutes(2));
    while (bar().isHidden() && !late.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    settle();
    EXPECT_EQ(text("What"), "Compared with of the file: 2 differences");
}

TEST_F(InTheCompareBar, AnArrivalWithoutAnAlignmentEndsTheWaitForAFile)
{
    chooseFiles();
    bar().compareWithFile();
    lookThrough();
    {
        const DataAdder<TAMBO::Space> arrival(nullptr, TAMBO::Space::instance());
        peptide("lonely", "ACDEF");
    }
    lookThrough();
    EXPECT_EQ(told(), "No alignment has come that could be compared.");
    arrives("later");
    lookThrough();
    settle();
    EXPECT_TRUE(bar().isHidden());
}

TEST_F(InTheCompareBar, AskingAnewEndsTheWaitForAFile)
{
    chooseFiles();
    bar().compareWithFile();
    lookThrough();
    bar().ask();
    arrives("later");
    lookThrough();
    settle();
    EXPECT_TRUE(bar().isHidden());
}

TEST_F(InTheCompareBar, ItEndsWhenTheOtherOneGoes)
{
    TAMBO::Alignment &other = compareWithOther();
    {
        const DataDelete<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        TAMBO::DataMaker::Destroy(&other);
    }
    EXPECT_TRUE(bar().isHidden());
    EXPECT_EQ(bar().compared(), nullptr);
    bar().next();
    bar().takeOver();
    EXPECT_EQ(rowsOf(*m_Shown), kRows);
}

TEST_F(InTheCompareBar, ItEndsByEscape)
{
    compareWithOther();
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(&bar(), &escape);
    EXPECT_TRUE(bar().isHidden());
    EXPECT_EQ(bar().compared(), nullptr);
}

TEST_F(InTheCompareBar, BothWindowsMarkTheirColumnsAndResidues)
{
    TAMBO::Alignment &other = laidOut(kOthers);
    ZEP::KALMO2 &otherWindow = show(other, {900, 400});
    TAMBO::AlignmentWindow &otherServed = served(otherWindow);
    const auto look = [](TAMBO::AlignmentWindow &window, const TAMBO::CellIndex &cell) {
        const QRect header = window.blockRect({0, 1, cell.col, cell.col + 1}, WindowArea::Header);
        const QRect place = window.cellRect(cell);
        const auto isMarked = [](const QImage &picture, const QPoint &at) {
            return picture.pixelColor(at) == QColor(192, 0, 96);
        };
        return std::pair(isMarked(pictureOf(window.areaWidget(WindowArea::Header)),
                                  {header.center().x(), header.bottom() - 1}),
                         isMarked(pictureOf(window.areaWidget(WindowArea::Cells)),
                                  {place.left() + 2, place.bottom() - 2}));
    };
    using Marked = std::pair<bool, bool>;
    EXPECT_EQ(look(*m_Served, {0, 2}), Marked(false, false));
    bar().compareWith(other);
    settle();
    EXPECT_EQ(look(*m_Served, {0, 1}), Marked(false, false));
    EXPECT_EQ(look(*m_Served, {0, 2}), Marked(true, true));
    EXPECT_EQ(look(*m_Served, {1, 2}), Marked(true, false));
    EXPECT_EQ(look(otherServed, {1, 3}), Marked(true, true));
    EXPECT_EQ(look(otherServed, {0, 3}), Marked(true, false));
    EXPECT_EQ(look(otherServed, {0, 4}), Marked(false, false));
    bar().end();
    EXPECT_EQ(look(*m_Served, {0, 2}), Marked(false, false));
    EXPECT_EQ(look(otherServed, {1, 3}), Marked(false, false));
}

TEST_F(InTheCompareBar, AWindowThatShowsAThirdOneIsNeitherMarkedNorScrolled)
{
    TAMBO::Alignment &other = laidOut(kOthers);
    ZEP::KALMO2 &otherWindow = show(other, {300, 300});
    TAMBO::AlignmentWindow &otherServed = served(otherWindow);
    bar().compareWith(other);
    settle();
    TAMBO::Alignment &third = large();
    otherWindow.Populate(&third);
    otherServed.showCell({0, third.width() - 1});
    settle();
    const auto picture = [&otherServed] {
        return pictureOf(otherServed.areaWidget(WindowArea::Cells));
    };
    const TAMBO::CellBlock seen = otherServed.visibleCells();
    ASSERT_GT(seen.colBegin, 10U);
    bar().next();
    QCoreApplication::processEvents();
    EXPECT_EQ(bar().present(), 0U);
    EXPECT_EQ(otherServed.visibleCells().colBegin, seen.colBegin);
    otherServed.showCell({0, 0});
    const QImage marked = picture();
    bar().end();
    EXPECT_EQ(marked, picture());
}

TEST_F(InTheCompareBar, TakingOverCanBeCancelledAndThenNothingChanges)
{
    compareWithOther();
    const WithoutMoment withoutMoment;
    const CancelledProgress cancel(bar());
    bar().takeOverAll();
    EXPECT_EQ(cancel.count(), 1);
    EXPECT_EQ(rowsOf(*m_Shown), kRows);
}

TEST_F(InTheCompareBar, ALockedAlignmentStaysAsItIs)
{
    compareWithOther();
    TAMBO::setObjectLocked(*m_Shown, true);
    bar().takeOverAll();
    EXPECT_EQ(rowsOf(*m_Shown), kRows);
    TAMBO::setObjectLocked(*m_Shown, false);
}

// ---- Choosing

TEST_F(InTheCompareBar, TheDialogListsAlignmentsAndFormerStates)
{
    TAMBO::Alignment &other = laidOut(kOthers);
    alignment({"AC", "DE"}, "strangers", {"x", "y"});
    edit(*m_Shown, [](TAMBO::Alignment &here) { here.moveGap(0, 3, 2, true); });
    edit(*m_Shown, [](TAMBO::Alignment &here) { here.insertGapCol(0, 1); });
    companion::CompareDialog &dialog = *bar().ask();
    while (dialog.isLooking())
        QCoreApplication::processEvents();
    const auto *const list = dialog.findChild<QListWidget *>();
    QStringList texts;
    for (int row = 0; row < list->count(); ++row)
        texts << list->item(row)->text();
    EXPECT_EQ(texts.join("\n").toStdString(),
              "other\nWhat the aligner makes of a copy\nA file…\n"
              "Before the last step: insert column in family\n"
              "Before the last 2 steps: move gap in family (as it was opened, made or saved last)");
    EXPECT_EQ(list->currentRow(), 0);
    EXPECT_FALSE(list->accessibleName().isEmpty());
    dialog.accept();
    settle();
    EXPECT_TRUE(text("What").starts_with("Compared with other: "));
    EXPECT_FALSE(rowsOf(other).empty());
}

TEST_F(InTheCompareBar, TheDialogTellsAlignmentsOfOneNameApart)
{
    alignment({kOthers[0] + "-", kOthers[1] + "-", kOthers[2] + "-"}, "family");
    laidOut(kOthers);
    companion::CompareDialog &dialog = *bar().ask();
    while (dialog.isLooking())
        QCoreApplication::processEvents();
    const auto *const list = dialog.findChild<QListWidget *>();
    QStringList texts;
    for (int row = 0; row < 2; ++row)
        texts << list->item(row)->text();
    texts.sort();
    EXPECT_EQ(texts.join("\n").toStdString(), "family (3 × 12)\nother");
}

TEST_F(InTheCompareBar, ALongLineOfTheDialogIsWrappedAndNotCut)
{
    QString name;
    while (name.size() < 200)
        name += "a long name ";
    alignment(kOthers, name.toStdString());
    companion::CompareDialog &dialog = *bar().ask();
    while (dialog.isLooking())
        QCoreApplication::processEvents();
    const auto *const list = dialog.findChild<QListWidget *>();
    const QRect shown = list->visualItemRect(list->item(0));
    EXPECT_LE(shown.width(), list->viewport()->width());
    EXPECT_GT(shown.height(), list->visualItemRect(list->item(1)).height());
}

TEST_F(InTheCompareBar, TheDialogComparesNothingWhenTheWindowShowsAnotherAlignment)
{
    laidOut(kOthers);
    TAMBO::Alignment &third = alignment(kOthers, "third");
    companion::CompareDialog &dialog = *bar().ask();
    while (dialog.isLooking())
        QCoreApplication::processEvents();
    m_Window->Populate(&third);
    dialog.accept();
    settle();
    EXPECT_TRUE(bar().isHidden());
    EXPECT_EQ(told(), "The window does not show family any more. Nothing was compared.");
}

TEST_F(InTheCompareBar, TheDialogFollowsWhatComesGoesAndChanges)
{
    companion::CompareDialog &dialog = *bar().ask();
    const auto count = [&dialog] {
        while (dialog.isLooking())
            QCoreApplication::processEvents();
        return dialog.findChild<QListWidget *>()->count();
    };
    EXPECT_EQ(count(), 2);
    TAMBO::Alignment &other = laidOut(kOthers);
    {
        const DataAdder<TAMBO::Space> arrival(nullptr, TAMBO::Space::instance());
    }
    EXPECT_EQ(count(), 3);
    edit(*m_Shown, [](TAMBO::Alignment &here) { here.insertGapCol(0, 1); });
    EXPECT_EQ(count(), 4);
    {
        const DataDelete<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        TAMBO::DataMaker::Destroy(&other);
    }
    EXPECT_EQ(count(), 3);
}

TEST_F(InTheCompareBar, AllControlsHaveNamesAndNoTextMakesTheWindowWider)
{
    m_Window->resize(420, 400);
    QCoreApplication::processEvents();
    const int before = m_Window->width();
    compareWithOther();
    EXPECT_EQ(m_Window->width(), before);
    for (const QToolButton *const button : bar().findChildren<QToolButton *>())
        EXPECT_FALSE(button->accessibleName().isEmpty()) << button->text().toStdString();
}

} // namespace CompareBarTest
