// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/CompanionFixture.h"

#include "CommandLists.h"
#include "GroupBar.h"
#include "IdentityDistances.h"
#include "PluginRoutes.h"
#include "RowOrders.h"
#include "SelectObject.h"
#include "WindowCommands.h"
#include "WorkbenchCommands.h"
#include "support/Answering.h"
#include "support/LogLines.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QProgressDialog>
#include <QTimer>

#include <numeric>

namespace RowToolsTest {

using companion::RowMove;

class InTheRows : public AlignmentCompanion
{
protected:
    TAMBO::Alignment &shown(const Texts &rows, const Texts &names = {})
    {
        m_Companion.reset();
        TAMBO::Alignment &made = alignment(rows, "rows", names);
        m_Window = &show(made, {700, 400});
        m_Served = &served(*m_Window);
        m_Companion = std::make_unique<Companion>(*m_Served);
        return made;
    }
    static void select(TAMBO::Alignment &alignment, std::initializer_list<unsigned long> rows,
                       TAMBO::Alignment::Range columns = {0, 1000})
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
        for (const unsigned long row : rows)
            alignment.selectInRow(row, columns);
    }
    static Texts namesOf(const TAMBO::Alignment &alignment)
    {
        Texts names;
        for (unsigned long row = 0; row < alignment.height(); ++row)
            names.push_back(alignment.GetSeqName(row));
        return names;
    }
    [[nodiscard]] std::string told() const
    {
        auto *const bar = m_Window->findChild<QToolBar *>("UnderThePointer");
        return bar->findChild<QLabel *>()->text().toStdString();
    }
    [[nodiscard]] std::string stepName() const
    {
        return history.undoLabel().substr(0, history.undoLabel().rfind(" in "));
    }
    void count() const
    {
        while (m_Companion->rows().groups().isCounting())
            QCoreApplication::processEvents();
    }
};

TEST_F(InTheRows, WholeRowsMoveAndOthersWithSelectedResiduesStay)
{
    TAMBO::Alignment &rows = shown({"ACD", "ACD", "A-D", "ACD", "---"});
    select(rows, {2, 3});
    select(rows, {0}, {0, 1});
    m_Companion->rows().move(RowMove::Up);
    EXPECT_EQ(namesOf(rows), (Texts{"s0", "s2", "s3", "s1", "s4"}));
    EXPECT_EQ(told(), "Moved up: 2 rows.");
    EXPECT_EQ(history.position(), 1U);
    EXPECT_EQ(stepName(), "Move rows up");
    m_Companion->rows().move(RowMove::Down);
    m_Companion->rows().move(RowMove::Down);
    EXPECT_EQ(namesOf(rows), (Texts{"s0", "s1", "s4", "s2", "s3"}));
    EXPECT_EQ(history.position(), 3U);
    EXPECT_TRUE(history.goTo(0));
    EXPECT_EQ(namesOf(rows), (Texts{"s0", "s1", "s2", "s3", "s4"}));
}

TEST_F(InTheRows, WithoutAWholeRowThoseWithSelectedResiduesMoveAndThatIsSaid)
{
    TAMBO::Alignment &rows = shown({"ACD", "ACD", "A-D", "ACD"});
    select(rows, {2}, {0, 1});
    m_Companion->rows().move(RowMove::ToTop);
    EXPECT_EQ(namesOf(rows), (Texts{"s2", "s0", "s1", "s3"}));
    EXPECT_EQ(told(), "Moved to the top: “s2” with selected residues.");
    EXPECT_EQ(stepName(), "Move rows to the top");
}

TEST_F(InTheRows, MovingIsRefusedWithTheReasonAndIsNoStep)
{
    TAMBO::Alignment &rows = shown({"ACD", "ACD", "---"});
    const LogLines log;
    m_Companion->rows().move(RowMove::Up);
    EXPECT_EQ(told(), "Nothing is moved: no row has selected residues.");
    select(rows, {0});
    m_Companion->rows().move(RowMove::ToTop);
    EXPECT_EQ(told(), "Nothing is moved: “s0” at the top already.");
    select(rows, {1});
    m_Companion->rows().move(RowMove::Up);
    EXPECT_EQ(told(), "Nothing is moved: 2 rows at the top already.");
    EXPECT_EQ(log.count(), 3);
    lockAll();
    m_Companion->rows().move(RowMove::Down);
    EXPECT_EQ(told(), "Nothing is moved: the alignment cannot be changed now.");
    EXPECT_EQ(history.position(), 0U);
}

TEST_F(InTheRows, TheWindowFollowsARowThatMoves)
{
    select(m_Shown, {100}, {0, 400});
    m_Served->scrollTo({0, 0});
    m_Companion->rows().move(RowMove::Up);
    EXPECT_EQ(m_Shown.GetSeqName(99), "s100");
    const TAMBO::CellBlock seen = m_Served->visibleCells();
    EXPECT_TRUE(seen.rowBegin <= 99 && 99 < seen.rowEnd);
    EXPECT_EQ(m_Served->scrollPosition().x(), 0);
}

TEST_F(InTheRows, NamesSortByTheirNumbersInOneStep)
{
    TAMBO::Alignment &rows =
        shown({"ACD", "AC-", "A--", "ACE"}, {"seq10", "seq9", "Seq1", "other"});
    m_Companion->rows().sortByName();
    EXPECT_EQ(namesOf(rows), (Texts{"other", "Seq1", "seq9", "seq10"}));
    EXPECT_EQ(rowsOf(rows), (Texts{"ACE", "A--", "AC-", "ACD"}));
    EXPECT_EQ(told(), "4 rows sorted by name.");
    EXPECT_EQ(stepName(), "Sort rows by name");
    m_Companion->rows().sortByName();
    EXPECT_EQ(told(), "The rows stay as they are: they are sorted by name already.");
    EXPECT_EQ(history.position(), 1U);
    history.undo();
    EXPECT_EQ(namesOf(rows), (Texts{"seq10", "seq9", "Seq1", "other"}));
}

TEST_F(InTheRows, TheLongestComeFirstAndEqualOnesKeepTheirOrder)
{
    TAMBO::Alignment &rows = shown({"A--", "ACD", "-C-", "AC-", "WCD"});
    m_Companion->rows().sortByLength();
    EXPECT_EQ(namesOf(rows), (Texts{"s1", "s4", "s3", "s0", "s2"}));
    EXPECT_EQ(stepName(), "Sort rows by length");
}

TEST_F(InTheRows, TheMostIdenticalComeBehindTheRowThatTheyAreComparedWith)
{
    for (const unsigned long reference : {0UL, 70UL}) {
        const Texts texts = rowsOf(m_Shown);
        const Texts names = namesOf(m_Shown);
        const auto distances =
            companion::identityDistances(texts, companion::IdentityOf::AlignedPairs);
        std::vector<unsigned long> expected(texts.size());
        std::iota(expected.begin(), expected.end(), 0UL);
        std::ranges::stable_sort(expected, {}, [&](unsigned long row) {
            return row == reference ? -1 : distances->at(reference, row);
        });
        m_Companion->rows().sortByIdentity(reference);
        for (unsigned long row = 0; row < texts.size(); ++row)
            ASSERT_EQ(m_Shown.GetSeqName(row), names[expected[row]]);
        EXPECT_EQ(told(), "120 rows sorted by identity to “" + names[reference] +
                              "”, of aligned pairs of residues.");
    }
    EXPECT_EQ(history.position(), 2U);
    m_Companion->rows().sortByIdentity(std::nullopt);
    EXPECT_EQ(told(), "The rows stay as they are: there is no cell cursor in a row.");
}

TEST_F(InTheRows, TheRowOfTheCellCursorIsTheOneToCompareWith)
{
    TAMBO::Alignment &rows = shown({"ACDE", "WWWW", "AWWW"});
    for (const companion::Command &command : companion::rowCommands()) {
        if (!command.text.contains("Cursor"))
            continue;
        command.run(*m_Companion);
        EXPECT_EQ(told(), "The rows stay as they are: there is no cell cursor in a row.");
        m_Companion->cursor().set(TAMBO::CellIndex{1, 2});
        command.run(*m_Companion);
    }
    EXPECT_EQ(namesOf(rows), (Texts{"s1", "s2", "s0"}));
}

TEST_F(InTheRows, SortingCanBeCancelledAndThenNothingChanges)
{
    TAMBO::Alignment &many = large(600, 300);
    ZEP::KALMO2 &window = show(many, {700, 400});
    Companion other(served(window));
    const Texts before = namesOf(many);
    const WithoutMoment withoutMoment;
    const CancelledProgress cancel(window);
    other.rows().sortByIdentity(5);
    EXPECT_EQ(cancel.count(), 1);
    EXPECT_EQ(namesOf(many), before);
    EXPECT_EQ(history.position(), 0U);
}

TEST_F(InTheRows, LongWorkThatIsNotCancelledComesToTheSameEnd)
{
    const WithoutMoment withoutMoment;
    TAMBO::Alignment &rows = shown({"A--", "ACD", "-C-", "AC-"}, {"d", "c", "b", "a"});
    m_Companion->rows().sortByName();
    EXPECT_EQ(namesOf(rows), (Texts{"a", "b", "c", "d"}));
    m_Companion->rows().sortByLength();
    EXPECT_EQ(namesOf(rows), (Texts{"c", "a", "b", "d"}));
}

// Which goes on with its own work behind the command.
TEST_F(InTheRows, TheMenuOfTheCornerIsStillThereWhenACommandOfItHasShownProgress)
{
    const WithoutMoment withoutMoment;
    const companion::WindowCommands commands(*m_Served, *m_Companion);
    QWidget &corner = *m_Served->areaWidget(WindowArea::Corner);
    QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, corner.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&corner, &event);
    QPointer<QMenu> menu;
    for (QMenu *const each : m_Window->findChildren<QMenu *>())
        if (each->title() == companion::rowCommands().front().menu)
            menu = each;
    ASSERT_NE(menu, nullptr);
    menu->popup(corner.mapToGlobal(QPoint(20, 20)));
    bool isSeen = false;
    QTimer looks;
    QObject::connect(&looks, &QTimer::timeout, &looks, [&] {
        isSeen = isSeen || m_Window->findChild<QProgressDialog *>() != nullptr;
    });
    looks.start(0);
    QTest::keyClick(menu, Qt::Key_F);
    EXPECT_TRUE(told().starts_with("120 rows sorted by identity")) << told();
    EXPECT_TRUE(isSeen);
    EXPECT_NE(menu, nullptr);
}

// ---- Grouping

TEST_F(InTheRows, RowsWithLikeNamesComeTogetherAtTheFirstOne)
{
    TAMBO::Alignment &rows = shown({"A", "C", "D", "E", "F"}, {"x", "hsp_1", "y", "HSP_2", "z"});
    m_Companion->rows().askForGroups();
    companion::GroupBar &bar = m_Companion->rows().groups();
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(bar.stateText(), "");
    EXPECT_FALSE(bar.apply());
    bar.name().setText("hsp");
    count();
    EXPECT_EQ(bar.stateText(), "2 of 5 rows");
    EXPECT_TRUE(bar.apply());
    EXPECT_EQ(namesOf(rows), (Texts{"x", "hsp_1", "HSP_2", "y", "z"}));
    EXPECT_EQ(told(), "Grouped by name: 2 of 5 rows.");
    EXPECT_EQ(stepName(), "Group rows by name");
    QCoreApplication::processEvents();
    count();
    EXPECT_FALSE(bar.apply());
    EXPECT_EQ(told(), "The rows stay as they are: they stand together already.");
    bar.name().setText("nobody");
    EXPECT_FALSE(bar.apply());
    EXPECT_EQ(told(), "The rows stay as they are: no name is like “nobody”.");
    EXPECT_EQ(history.position(), 1U);
}

TEST_F(InTheRows, APartInParenthesesMakesAGroupOfEachText)
{
    TAMBO::Alignment &rows =
        shown({"A", "C", "D", "E", "F", "G"}, {"a_1", "b_1", "none", "a_2", "c_1", "b_2"});
    m_Companion->rows().askForGroups();
    companion::GroupBar &bar = m_Companion->rows().groups();
    bar.language().setCurrentIndex(2);
    bar.name().setText("^(\\w)_");
    count();
    EXPECT_EQ(bar.stateText(), "5 of 6 rows in 3 groups");
    EXPECT_TRUE(bar.apply());
    EXPECT_EQ(namesOf(rows), (Texts{"a_1", "a_2", "b_1", "b_2", "none", "c_1"}));
    bar.name().setText("^(\\w");
    EXPECT_TRUE(bar.stateText().startsWith("Character ")) << bar.stateText().toStdString();
    EXPECT_FALSE(bar.apply());
}

TEST_F(InTheRows, EnterGroupsAndEscapeClosesTheLine)
{
    TAMBO::Alignment &rows = shown({"A", "C", "D"}, {"p1", "q", "p2"});
    m_Companion->rows().askForGroups();
    companion::GroupBar &bar = m_Companion->rows().groups();
    bar.name().setText("p");
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(&bar.name(), &enter);
    EXPECT_EQ(namesOf(rows), (Texts{"p1", "p2", "q"}));
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(&bar, &escape);
    EXPECT_TRUE(bar.isHidden());
    EXPECT_FALSE(bar.isCounting());
}

// ---- New alignments

TEST_F(InTheRows, AnAlignmentOfTheSelectedRowsHasNoColumnThatWouldBeEmpty)
{
    TAMBO::Alignment &rows = shown({"AC-D-", "-CE--", "A---F", "-W--F"});
    select(rows, {1, 3});
    const LogLines log;
    m_Companion->rows().newAlignmentOfSelected();
    ASSERT_EQ(alignments().size(), 3U);
    TAMBO::Alignment &made = *alignments().back();
    EXPECT_EQ(made.Name(), "rows (2 rows)");
    EXPECT_EQ(rowsOf(made), (Texts{"CE-", "W-F"}));
    EXPECT_EQ(namesOf(made), (Texts{"s1", "s3"}));
    EXPECT_EQ(told(), "New alignment “rows (2 rows)”, 2 rows × 3 columns: it stands in the list "
                      "of objects.");
    EXPECT_EQ(log.count(), 1);
    EXPECT_EQ(rowsOf(rows), (Texts{"AC-D-", "-CE--", "A---F", "-W--F"}));
    EXPECT_EQ(history.position(), 1U);
    EXPECT_EQ(history.undoLabel().substr(0, 23), "New alignment of a part");
    m_Companion->rows().newAlignmentOfSelected();
    EXPECT_EQ(alignments().back()->Name(), "rows (2 rows) 2");
    EXPECT_TRUE(history.goTo(0));
    EXPECT_EQ(alignments().size(), 2U);
}

TEST_F(InTheRows, WithoutSelectedRowsNoAlignmentIsMade)
{
    shown({"ACD", "ACD"});
    m_Companion->rows().newAlignmentOfSelected();
    EXPECT_EQ(told(), "No alignment is made: no row has selected residues.");
    EXPECT_EQ(alignments().size(), 2U);
    EXPECT_EQ(history.position(), 0U);
}

// ---- Adding

class AddingRows : public InTheRows
{
protected:
    AddingRows() : m_Rows(shown({"ACD", "ACD"}, {"first", "second"}))
    {
        auto &routes = TAMBO::services::PluginRoutes::instance();
        routes.registerExecute(
            "Calculate", "Alignment", "AddSequences", [this](const PluginCall &call) {
                auto *const request = static_cast<TAMBO::AddSequencesRequest *>(call.data);
                m_Alignment = request->alignment;
                for (const TAMBO::Compound *const sequence : request->sequences)
                    m_Added.push_back(sequence->Name());
                request->told = m_Answer;
                return true;
            });
        routes.registerExecute("Calculate", "Alignment", "AddFiles",
                               [this](const PluginCall &call) {
                                   m_Files = *static_cast<TAMBO::AddFilesRequest *>(call.data);
                                   return true;
                               });
    }
    ~AddingRows() override
    {
        auto &routes = TAMBO::services::PluginRoutes::instance();
        routes.removeExecute("Calculate", "Alignment", "AddSequences");
        routes.removeExecute("Calculate", "Alignment", "AddFiles");
    }
    void press(QKeyCombination key)
    {
        const companion::WindowCommands keys(*m_Served, *m_Companion);
        for (QAction *const action : m_Window->actions())
            if (action->shortcut() == QKeySequence(key))
                action->trigger();
    }

    TAMBO::Alignment &m_Rows;
    const TAMBO::Alignment *m_Alignment = nullptr;
    Texts m_Added;
    QString m_Answer = "Added";
    TAMBO::AddFilesRequest m_Files{};
};

TEST_F(AddingRows, TheOnlyMatchOfTheFilterIsAddedByEnter)
{
    alignment({"ACDE"}, "other", {"neuroglobin"});
    answering<TAMBO::SelectObject>([](TAMBO::SelectObject &dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Sequences to align and to add");
        dialog.findChild<QLineEdit *>()->setText("neuro");
        dialog.accept();
    });
    press(Qt::CTRL | Qt::Key_J);
    EXPECT_EQ(m_Added, Texts{"neuroglobin"});
    EXPECT_EQ(m_Alignment, &m_Rows);
    EXPECT_EQ(told(), "Added");
}

TEST_F(AddingRows, WhoGivesUpTheDialogAddsNothingAndWhatABoxHasToldIsNotTold)
{
    answering<TAMBO::SelectObject>([](TAMBO::SelectObject &dialog) { dialog.reject(); });
    m_Companion->tell("Before");
    m_Companion->rows().addAndAlign();
    EXPECT_EQ(m_Alignment, nullptr);
    EXPECT_EQ(told(), "Before");
    m_Answer.clear();
    answering<TAMBO::SelectObject>([](TAMBO::SelectObject &dialog) {
        dialog.findChild<QLineEdit *>()->setText("first");
        dialog.accept();
    });
    m_Companion->rows().addAndAlign();
    EXPECT_EQ(m_Added, Texts{"first"});
    EXPECT_EQ(told(), "Before");
}

TEST_F(AddingRows, AnAlignmentThatGoesWhileTheDialogAsksGetsNothing)
{
    answering<TAMBO::SelectObject>([this](TAMBO::SelectObject &dialog) {
        m_Window->Clear();
        dialog.findChild<QLineEdit *>()->setText("first");
        dialog.accept();
    });
    m_Companion->rows().addAndAlign();
    EXPECT_EQ(m_Alignment, nullptr);
    EXPECT_EQ(told(), "No alignment is shown.");
    m_Companion->rows().addAndAlign();
    m_Companion->rows().addFileAndAlign();
    EXPECT_EQ(m_Files.alignment, nullptr);
}

TEST_F(AddingRows, WhatHasComeOfFilesIsToldWhenTheyComeAndTheLastRowIsInSight)
{
    TAMBO::Alignment &many = shown(Texts(100, "ACDEF"));
    press(Qt::CTRL | Qt::SHIFT | Qt::Key_J);
    ASSERT_EQ(m_Files.alignment, &many);
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &many);
        many.addRows({m_Rows.GetSeq(0)});
    }
    m_Files.tell("Added first");
    EXPECT_EQ(told(), "Added first");
    EXPECT_TRUE(m_Served->visibleCells().contains({100, 0}));
    const auto tell = m_Files.tell;
    m_Companion.reset();
    tell("Nobody hears it");
}

} // namespace RowToolsTest
