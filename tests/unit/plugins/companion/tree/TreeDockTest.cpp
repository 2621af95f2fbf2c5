// SPDX-License-Identifier: GPL-3.0-or-later
#include "TreeDock.h"

#include "TreeFixture.h"

#include <QFile>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QProgressBar>
#include <QToolButton>

#include <algorithm>
#include <functional>

namespace TreeDockTest {

using namespace companion;
using Rows = std::vector<unsigned long>;
using Texts = std::vector<std::string>;

class TreeOfAWindow : public TreeFixture
{
};

// ---- Making it

TEST_F(TreeOfAWindow, IsMadeByNeighborJoiningWhenItIsAskedFor)
{
    look(alignment(kRows));
    EXPECT_TRUE(dock().isHidden());
    dock().toggle();
    EXPECT_TRUE(dock().isComputing());
    settle();
    EXPECT_TRUE(dock().isVisible());
    ASSERT_TRUE(dock().hasTree());
    EXPECT_EQ(shown().rows().size(), 6u);
    clade({0, 2, 4});
    clade({1, 3, 5});
    EXPECT_EQ(state(), "Neighbor joining, 6 rows · the rows stand in another order");
    dock().toggle();
    EXPECT_TRUE(dock().isHidden());
}

TEST_F(TreeOfAWindow, OfOneRowAndOfEqualRowsIsMadeAsWell)
{
    lookAtTree({"ACD"});
    EXPECT_EQ(shown().rows(), Rows{0});
    lookAtTree({"ACD", "ACD"});
    EXPECT_EQ(shown().rows().size(), 2u);
    view().grab();
    lookAtTree({"ACD", "ACD", "---", "ACD"}, {"same", "same", "same", "same"});
    EXPECT_EQ(shown().rows().size(), 4u);
    EXPECT_EQ(takeComplaint(), "");
    view().grab();
}

TEST_F(TreeOfAWindow, GoesWhenAnotherAlignmentIsShownAndIsMadeOfThatWhileItIsInSight)
{
    lookAtTree(kRows);
    TAMBO::Alignment &other = alignment({"ACD", "WYT", "ACE"}, "other");
    m_Window->Populate(&other);
    EXPECT_FALSE(dock().hasTree());
    EXPECT_TRUE(shown().nodes().empty());
    view().grab();
    settle();
    EXPECT_EQ(shown().rows().size(), 3u);
    dock().toggle();
    m_Window->Populate(m_Rows);
    settle();
    EXPECT_FALSE(dock().hasTree());
    // As a session does.
    dock().show();
    settle();
    EXPECT_EQ(shown().rows().size(), kRows.size());
}

TEST_F(TreeOfAWindow, IsGivenUpByCancelAndByClosingTheWindow)
{
    look(large(400, 300));
    dock().toggle();
    ASSERT_TRUE(dock().isComputing());
    auto *const progress = dock().findChild<QProgressBar *>();
    EXPECT_TRUE(progress->isVisibleTo(&dock()));
    for (QToolButton *const button : dock().findChildren<QToolButton *>()) {
        if (button->text() == "Cancel") {
            EXPECT_TRUE(button->isVisibleTo(&dock()));
            button->click();
        }
    }
    EXPECT_FALSE(dock().isComputing());
    settle();
    EXPECT_FALSE(dock().hasTree());
    EXPECT_FALSE(progress->isVisibleTo(&dock()));
    EXPECT_EQ(takeComplaint(), "") << "who cancels need not be told";
    dock().compute();
    m_Companion.reset();
    closeWindows();
}

TEST_F(TreeOfAWindow, IsOfTheRowsAsTheyAreWhenTheyChangeWhileTheyAreCopied)
{
    look(alignment(kRows));
    dock().compute();
    ASSERT_TRUE(dock().isComputing());
    edit([](TAMBO::Alignment &rows) { rows.removeRow(5); });
    EXPECT_EQ(dock().leaves().size(), 5u);
    EXPECT_EQ(dock().leaves().state(), LeafRows::State::Same);
}

// ---- In step with the rows

TEST_F(TreeOfAWindow, SortsTheRowsInOneNamedStepAndThenStandsBesideThem)
{
    lookAtTree(kRows);
    EXPECT_FALSE(shown().isAtRows());
    dock().sortRows();
    settle();
    EXPECT_EQ(history.position(), 1u);
    EXPECT_EQ(history.undoLabel().substr(0, 17), "Sort rows by tree");
    EXPECT_TRUE(shown().isInOrder());
    EXPECT_TRUE(shown().isAtRows());
    EXPECT_EQ(state(), "Neighbor joining, 6 rows");
    clade({0, 1, 2});
    clade({3, 4, 5});
    history.undo();
    settle();
    EXPECT_EQ(names(), (Texts{"s0", "s1", "s2", "s3", "s4", "s5"}));
    EXPECT_FALSE(shown().isAtRows());
    EXPECT_EQ(dock().leaves().state(), LeafRows::State::Same) << "no row is another";
}

TEST_F(TreeOfAWindow, IsMadeFirstWhenRowsAreToBeSortedByIt)
{
    look(alignment(kRows));
    dock().sortRows();
    settle();
    EXPECT_TRUE(dock().hasTree());
    EXPECT_TRUE(shown().isAtRows());
    EXPECT_EQ(history.position(), 1u);
    dock().sortRows();
    EXPECT_EQ(history.position(), 1u) << "they stand in its order";
}

TEST_F(TreeOfAWindow, LeavesStandAtTheHeightsOfTheirRowsAtAnyZoomAndScrolling)
{
    look(large(200, 40));
    dock().sortRows();
    settle();
    ASSERT_TRUE(shown().isAtRows());
    const auto expectInStep = [this] {
        settle();
        const TreeSight sight = view().sight();
        const TAMBO::CellBlock cells = m_Served->visibleCells();
        for (const ShownNode &each : shown().nodes()) {
            const unsigned long row = shown().rows()[each.firstLeaf];
            if (each.isLeaf() && row >= cells.rowBegin && row < cells.rowEnd)
                EXPECT_NEAR(sight.y(each.line), heightOfRow(row), 1.5) << row;
        }
    };
    expectInStep();
    m_Served->scrollTo({0, 777});
    expectInStep();
    m_Served->setCellSize({5, 4});
    expectInStep();
    m_Served->setCellSize({20, 30});
    m_Served->scrollTo({0, 2000});
    expectInStep();
    m_Served->setCellSize({1, 1});
    expectInStep();
}

TEST_F(TreeOfAWindow, WheelOverItScrollsTheRowsThatItStandsBeside)
{
    look(large(200, 40));
    dock().sortRows();
    settle();
    QWheelEvent event(QPointF(20, 60), view().viewport()->mapToGlobal(QPointF(20, 60)), {},
                      {0, -240}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(view().viewport(), &event);
    settle();
    EXPECT_GT(m_Served->scrollPosition().y(), 0);
}

TEST_F(TreeOfAWindow, HasASizeOfItsOwnWhenItIsAfloat)
{
    look(large(100, 30));
    dock().sortRows();
    settle();
    ASSERT_TRUE(shown().isAtRows());
    dock().setFloating(true);
    settle();
    EXPECT_FALSE(shown().isAtRows());
    view().setPitch(33, 10);
    EXPECT_NEAR(view().sight().pitch, 33, 0.01);
    dock().setFloating(false);
    settle();
    EXPECT_TRUE(shown().isAtRows());
}

TEST_F(TreeOfAWindow, ZoomsAroundThePointerAndScrollsOnItsOwn)
{
    look(large(300, 30));
    dock().toggle();
    settle();
    ASSERT_FALSE(shown().isAtRows());
    const double fitting = view().sight().pitch;
    const auto wheel = [this](int y, int delta, Qt::KeyboardModifiers keys) {
        QWheelEvent event(QPointF(20, y), view().viewport()->mapToGlobal(QPointF(20, y)), {},
                          {0, delta}, Qt::NoButton, keys, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view().viewport(), &event);
    };
    for (int i = 0; i < 6; ++i)
        wheel(100, 120, Qt::ControlModifier);
    const TreeSight near = view().sight();
    EXPECT_GT(near.pitch, 2 * fitting);
    const double line = (100 - near.top) / near.pitch;
    wheel(100, 120, Qt::ControlModifier);
    EXPECT_NEAR((100 - view().sight().top) / view().sight().pitch, line, 0.5);
    const double top = view().sight().top;
    wheel(100, -120, {});
    EXPECT_LT(view().sight().top, top);
    for (int i = 0; i < 20; ++i)
        wheel(100, -120, Qt::ControlModifier);
    EXPECT_NEAR(view().sight().pitch, fitting, 0.01) << "no smaller than all of it";
    wheel(100, 120, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_GT(view().sight().scale, near.scale);
}

// ---- Choosing and collapsing

TEST_F(TreeOfAWindow, ClickOnANodeSelectsTheRowsBelowItAndWithCtrlMore)
{
    lookAtTree(kRows);
    m_Rows->selectInRow(1, {0, 10});
    clickOn(clade({0, 2, 4}));
    EXPECT_EQ(selectedRows(), (Rows{0, 2, 4}));
    clickOn(clade({1, 3}), Qt::ControlModifier);
    EXPECT_EQ(selectedRows(), (Rows{0, 1, 2, 3, 4}));
    clickOn(clade({5}));
    EXPECT_EQ(selectedRows(), Rows{5});
    EXPECT_EQ(history.position(), 0u) << "selecting is no step";
    EXPECT_EQ(names(), (Texts{"s0", "s1", "s2", "s3", "s4", "s5"}));
}

TEST_F(TreeOfAWindow, ClickWhereNothingIsSelectsNothing)
{
    lookAtTree(kRows);
    m_Rows->selectInRow(1, {0, 10});
    click(view().viewport(), Qt::LeftButton, {2, view().viewport()->height() - 3});
    EXPECT_EQ(selectedRows(), Rows{1});
}

TEST_F(TreeOfAWindow, RowsThatHaveMovedWithoutBeingToldAreTheOnesThatAreSelected)
{
    lookAtTree(kRows);
    const std::size_t node = clade({5});
    const QPoint place = placeOf(node);
    // Without a guard, as names are dragged.
    m_Rows->bubbleRow(5, 0);
    press(view().viewport(), Qt::LeftButton, place);
    EXPECT_EQ(selectedRows(), Rows{0});
}

TEST_F(TreeOfAWindow, DoubleClickCollapsesACladeInTheTreeAlone)
{
    lookAtTree(kRows);
    dock().sortRows();
    settle();
    const Texts before = names();
    const std::size_t node = clade({0, 1, 2});
    doubleClickOn(node);
    EXPECT_TRUE(shown().nodes()[node].isCollapsed);
    EXPECT_FALSE(shown().isDrawn(node + 1));
    EXPECT_EQ(names(), before);
    EXPECT_EQ(m_Served->rows(), 6u);
    // Its triangle stands beside its rows, and chooses them.
    const TreeSight sight = view().sight();
    const ShownNode &each = shown().nodes()[node];
    press(view().viewport(), Qt::LeftButton,
          {int(sight.x(each.farthest)) - 2, int(sight.y(each.lastLine))});
    EXPECT_EQ(selectedRows(), (Rows{0, 1, 2}));
    doubleClickOn(node);
    EXPECT_FALSE(shown().nodes()[node].isCollapsed);
}

TEST_F(TreeOfAWindow, KeysMoveSelectAndCollapse)
{
    lookAtTree(kRows);
    dock().sortRows();
    settle();
    key(Qt::Key_Home);
    EXPECT_EQ(view().present(), 0u);
    key(Qt::Key_Right);
    key(Qt::Key_Down);
    const std::size_t node = view().present();
    EXPECT_NE(node, 0u);
    const ShownNode &each = shown().nodes()[node];
    Rows expected(shown().rows().begin() + std::ptrdiff_t(each.firstLeaf),
                  shown().rows().begin() + std::ptrdiff_t(each.leafEnd));
    key(Qt::Key_Return);
    EXPECT_EQ(selectedRows(), expected);
    key(Qt::Key_Up);
    key(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_GT(selectedRows().size(), expected.size());
    key(Qt::Key_Left);
    EXPECT_EQ(view().present(), 0u);
    key(Qt::Key_Space);
    EXPECT_TRUE(shown().nodes()[0].isCollapsed);
    key(Qt::Key_Space);
    EXPECT_FALSE(shown().nodes()[0].isCollapsed);
    key(Qt::Key_Escape);
    EXPECT_FALSE(view().hasFocus());
}

TEST_F(TreeOfAWindow, SaysInWordsWhatThePresentNodeIs)
{
    lookAtTree(kRows, {"a<b", "b", "c", "d", "e", "f"});
    EXPECT_EQ(text(view().accessibleName()), "Tree of the rows");
    view().setPresent(clade({0}));
    EXPECT_EQ(text(view().accessibleDescription()).substr(0, 18), "a<b, branch length");
    view().setPresent(clade({0, 2, 4}));
    EXPECT_EQ(text(view().accessibleDescription()).substr(0, 29), "Clade of 3 rows, branch lengt");
    EXPECT_EQ(text(toolTipAt(view().viewport(), placeOf(clade({0})))).substr(0, 9), "a&lt;b, b");
    for (const QWidget *const widget : dock().findChildren<QToolButton *>())
        if (!widget->objectName().startsWith("qt_"))
            EXPECT_FALSE(widget->accessibleName().isEmpty());
}

TEST_F(TreeOfAWindow, MenuHasWhatCanBeDone)
{
    lookAtTree(kRows);
    const auto isEnabled = [this](const QString &wanted) {
        QMenu menu;
        dock().fillMenu(menu);
        for (const QAction *const action : menu.actions())
            if (action->text().remove(u'&').section(u'\t', 0, 0) == wanted)
                return action->isEnabled();
        ADD_FAILURE() << text(wanted);
        return false;
    };
    view().setPresent(clade({0, 2, 4}));
    EXPECT_TRUE(isEnabled("Collapse"));
    EXPECT_FALSE(isEnabled("Expand All"));
    view().toggleCollapsed(view().present());
    EXPECT_TRUE(isEnabled("Expand"));
    EXPECT_TRUE(isEnabled("Expand All"));
    view().setPresent(clade({1}));
    EXPECT_FALSE(isEnabled("Collapse"));
    EXPECT_TRUE(isEnabled("Branch Lengths"));
    EXPECT_TRUE(isEnabled("Save Newick…"));
}

// ---- After edits

TEST_F(TreeOfAWindow, SaysThatItIsOfAnEarlierStateUntilThatIsBack)
{
    lookAtTree(kRows);
    edit([](TAMBO::Alignment &rows) { rows.insertGap(3, 2); });
    EXPECT_EQ(state().substr(0, 41), "Of an earlier state of the alignment · N");
    bool offersAnew = false;
    for (const QToolButton *const button : dock().findChildren<QToolButton *>())
        offersAnew = offersAnew || (button->text() == "Compute Anew" && button->isEnabled());
    EXPECT_TRUE(offersAnew);
    history.undo();
    settle();
    EXPECT_EQ(dock().leaves().state(), LeafRows::State::Same);
    history.redo();
    settle();
    EXPECT_EQ(dock().leaves().state(), LeafRows::State::Changed);
    dock().compute();
    settle();
    EXPECT_EQ(dock().leaves().state(), LeafRows::State::Same);
}

TEST_F(TreeOfAWindow, IsNotOfAnEarlierStateWhenOnlyColorsAndTheSelectionChange)
{
    lookAtTree(kRows);
    edit([](TAMBO::Alignment &rows) {
        rows.selectInRow(0, {0, 5});
        rows.colorSelected(Color(0xff0000U));
    });
    EXPECT_EQ(dock().leaves().state(), LeafRows::State::Same);
}

TEST_F(TreeOfAWindow, LosesRowsThatAreRemovedAndSaysWhichAreNotInIt)
{
    lookAtTree(kRows);
    dock().sortRows();
    settle();
    edit([](TAMBO::Alignment &rows) { rows.removeRow(1); });
    EXPECT_EQ(shown().rows(), (Rows{0, 1, 2, 3, 4}));
    EXPECT_TRUE(shown().isAtRows());
    EXPECT_EQ(state(), "Of an earlier state of the alignment · 1 row gone · "
                       "Neighbor joining, 6 rows");
    edit([this](TAMBO::Alignment &rows) { rows.addRows({&peptide("new", "ACDEF")}); });
    EXPECT_EQ(shown().rows().size(), 5u);
    EXPECT_NE(state().find("1 row not in it"), std::string::npos);
    dock().sortRows();
    settle();
    EXPECT_EQ(names().back(), "new") << "what is not in it stands behind";
    edit([](TAMBO::Alignment &rows) {
        while (rows.height() > 0)
            rows.removeRow(0);
    });
    EXPECT_TRUE(shown().nodes().empty());
    view().grab();
    history.undo();
    settle();
    EXPECT_EQ(shown().rows().size(), 5u);
}

TEST_F(TreeOfAWindow, StaysInStepWhenRowsMoveByHandAndBack)
{
    lookAtTree(kRows);
    dock().sortRows();
    settle();
    edit([](TAMBO::Alignment &rows) { rows.bubbleRow(0, 5); });
    EXPECT_FALSE(shown().isAtRows());
    EXPECT_EQ(dock().leaves().state(), LeafRows::State::Same);
    edit([](TAMBO::Alignment &rows) { rows.bubbleRow(5, 0); });
    EXPECT_TRUE(shown().isAtRows());
}

TEST_F(TreeOfAWindow, HiddenMeanwhileIsLookedAtWhenItComesBack)
{
    lookAtTree(kRows);
    dock().toggle();
    edit([](TAMBO::Alignment &rows) { rows.removeRow(0); });
    dock().toggle();
    settle();
    EXPECT_EQ(shown().rows().size(), 5u);
    EXPECT_EQ(dock().leaves().state(), LeafRows::State::Changed);
}

TEST_F(TreeOfAWindow, LockedRowsAreNotSortedAndStay)
{
    lookAtTree(kRows);
    const Texts before = names();
    TAMBO::setObjectLocked(*m_Rows, true);
    dock().sortRows();
    EXPECT_EQ(names(), before);
    EXPECT_EQ(text(dock().findChild<QLabel *>()->text()), "The rows cannot be sorted now.");
    TAMBO::setObjectLocked(*m_Rows, false);
}

// ---- Files

class TreeFilesOfAWindow : public TreeFixture
{
protected:
    QString write(const QByteArray &text)
    {
        const QString name = m_Folder.filePath(QStringLiteral("tree.nwk"));
        QFile out(name);
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(text);
        return name;
    }

    QTemporaryDir m_Folder;
};

TEST_F(TreeFilesOfAWindow, AreOpenedForTheRowsWithTheirNames)
{
    look(alignment({"AC", "AD", "WY"}, "rows", {"one", "two", "three"}));
    dock().openFile(write("((three:1,one:2):0.5,two:3);"));
    settle();
    ASSERT_TRUE(dock().hasTree()) << takeComplaint();
    EXPECT_TRUE(dock().isVisible());
    clade({0, 2});
    EXPECT_EQ(state(), "tree.nwk, 3 rows · the rows stand in another order");
    dock().sortRows();
    settle();
    EXPECT_EQ(names(), (Texts{"two", "one", "three"}));
}

TEST_F(TreeFilesOfAWindow, ThatAreNotOfTheRowsSayWhyInOneMessageAndLeaveAllAsItWas)
{
    lookAtTree(kRows);
    const Texts before = names();
    const std::size_t nodes = shown().nodes().size();
    const QString file = write("((s0,s1),\n(s2,nobody));");
    dock().openFile(file);
    settle();
    EXPECT_EQ(takeComplaint(),
              text(file) + ": The tree is not one of these rows. It has leaves that are no row: "
                           "“nobody” (line 2); rows that are no leaf: “s3”, “s4”, “s5”.");
    EXPECT_EQ(takeComplaint(), "");
    EXPECT_TRUE(dock().hasTree());
    EXPECT_EQ(shown().nodes().size(), nodes);
    EXPECT_EQ(names(), before);
    EXPECT_EQ(history.position(), 0u);
    dock().openFile(write("((s0,s1)"));
    settle();
    EXPECT_EQ(takeComplaint(), text(file) + ": line 1, column 9: a ')' is missing: found the end "
                                            "of the text, expected ',' or ')'");
}

TEST_F(TreeFilesOfAWindow, AreSavedWithTheNamesOfTheRowsAndReadAgain)
{
    lookAtTree(kRows, {"one", "two (b)", "three", "four", "five", "six"});
    const QString file = m_Folder.filePath(QStringLiteral("saved.nwk"));
    ASSERT_TRUE(dock().saveTo(file));
    const std::vector<std::size_t> drawn(shown().rows().begin(), shown().rows().end());
    dock().openFile(file);
    settle();
    EXPECT_EQ(takeComplaint(), "");
    EXPECT_EQ(std::vector<std::size_t>(shown().rows().begin(), shown().rows().end()), drawn);
    EXPECT_EQ(state().substr(0, 18), "saved.nwk, 6 rows ");
    EXPECT_FALSE(dock().saveTo(m_Folder.filePath(QStringLiteral("none/saved.nwk"))));
    EXPECT_NE(takeComplaint().find("none/saved.nwk: "), std::string::npos);
}

TEST_F(TreeFilesOfAWindow, HaveLabelsOfCladesBelowTheirBranchesWhereThereIsRoom)
{
    look(alignment({"AC", "AD", "WY"}, "rows", {"one", "two", "three"}));
    const auto picture = [this](const QByteArray &tree) {
        dock().openFile(write(tree));
        settle();
        return view().grab().toImage();
    };
    const QByteArray plain = "((three:1,one:2):5,two:3);";
    const QByteArray labelled = "((three:1,one:2)0.93:5,two:3);";
    EXPECT_NE(picture(labelled), picture(plain));
    // The branch is too short for it.
    EXPECT_EQ(picture("((three:9,one:9)0.93:0.1,two:9);"), picture("((three:9,one:9):0.1,two:9);"));
    // Beside rows that are high enough, and not.
    EXPECT_EQ(picture(plain), picture(plain));
    dock().sortRows();
    settle();
    ASSERT_TRUE(shown().isAtRows());
    EXPECT_NE(picture(labelled), picture(plain));
    while (m_Served->cellSize().height() >= 10)
        m_Companion->zoom().out();
    EXPECT_EQ(picture(labelled), picture(plain));
}

// ---- Much of it

TEST_F(TreeOfAWindow, OfTenThousandRowsPaintsWhatIsInSight)
{
    constexpr unsigned long kMany = 10'000;
    Texts rows;
    Texts names;
    std::string newick;
    for (unsigned long row = 0; row < kMany; ++row) {
        rows.emplace_back("AC");
        names.push_back("n" + std::to_string(row));
    }
    // By halves.
    const std::function<std::string(unsigned long, unsigned long)> half = [&](unsigned long begin,
                                                                              unsigned long end) {
        if (end - begin == 1)
            return names[begin] + ":1";
        const unsigned long middle = (begin + end) / 2;
        return '(' + half(begin, middle) + ',' + half(middle, end) + "):1";
    };
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("many.nwk"));
    QFile out(file);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(QByteArray::fromStdString(half(0, kMany) + ';'));
    out.close();
    look(alignment(rows, "many", names), {700, 500});
    dock().openFile(file);
    settle();
    ASSERT_EQ(takeComplaint(), "");
    ASSERT_TRUE(shown().isAtRows());
    const auto painted = [this] {
        view().grab();
        return view().painted();
    };
    // Rows in sight, and as many nodes as lead to them.
    EXPECT_LT(painted(), 200u);
    m_Served->scrollTo({0, 60'000});
    settle();
    EXPECT_LT(painted(), 200u);
    EXPECT_GT(painted(), 20u);
    m_Served->setCellSize({1, 1});
    settle();
    EXPECT_LT(painted(), 2500u);
    // All of it at once: what is below a pixel is one line.
    dock().setFloating(true);
    dock().resize(400, 500);
    settle();
    EXPECT_LT(painted(), 3000u);
    EXPECT_GT(painted(), 300u);
    view().setPresent(clade(Rows{77}));
    key(Qt::Key_Return);
    EXPECT_EQ(selectedRows(), Rows{77});
    view().setPitch(20, 0);
    key(Qt::Key_Up);
    EXPECT_LT(painted(), 200u);
    clickOn(clade(Rows{76}));
    EXPECT_EQ(selectedRows(), Rows{76});
}

} // namespace TreeDockTest
