// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/CompanionFixture.h"

#include "CommandLists.h"
#include "GapColumnsBar.h"
#include "PluginRoutes.h"
#include "WorkbenchCommands.h"

#include <QDoubleSpinBox>

namespace ColumnToolsTest {

class InTheColumns : public AlignmentCompanion
{
protected:
    TAMBO::Alignment &shown(const Texts &rows)
    {
        m_Companion.reset();
        TAMBO::Alignment &made = alignment(rows, "rows");
        m_Window = &show(made, {700, 400});
        m_Served = &served(*m_Window);
        m_Companion = std::make_unique<Companion>(*m_Served);
        return made;
    }
    [[nodiscard]] std::string told() const
    {
        auto *const bar = m_Window->findChild<QToolBar *>("UnderThePointer");
        return bar->findChild<QLabel *>()->text().toStdString();
    }
    [[nodiscard]] companion::GapColumnsBar &bar() const { return m_Companion->columns().gaps(); }
    void count() const
    {
        QCoreApplication::processEvents();
        while (bar().isCounting())
            QCoreApplication::processEvents();
    }
    [[nodiscard]] std::string stepName() const
    {
        return history.undoLabel().substr(0, history.undoLabel().rfind(" in "));
    }
};

TEST_F(InTheColumns, ThoseWithoutResiduesGoInOneStep)
{
    TAMBO::Alignment &rows = shown({"-A--C-", "---DC-"});
    m_Companion->columns().removeEmpty();
    EXPECT_EQ(rowsOf(rows), (Texts{"A-C", "-DC"}));
    EXPECT_EQ(told(), "3 columns without residues removed.");
    EXPECT_EQ(history.position(), 1U);
    EXPECT_EQ(stepName(), "Remove empty columns");
    m_Companion->columns().removeEmpty();
    EXPECT_EQ(told(), "No column is removed: there is none without residues.");
    EXPECT_EQ(history.position(), 1U);
    history.undo();
    EXPECT_EQ(rowsOf(rows), (Texts{"-A--C-", "---DC-"}));
}

TEST_F(InTheColumns, EmptyOnesOfManyRowsAreThoseOfAPlainSearch)
{
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
        for (const unsigned long col : {0UL, 7UL, 7UL, 200UL, 399UL})
            m_Shown.insertGapCol(col, 1);
    }
    ASSERT_EQ(m_Shown.width(), 405U);
    const std::size_t position = history.position();
    m_Companion->columns().removeEmpty();
    EXPECT_EQ(m_Shown.width(), 400U);
    EXPECT_EQ(told(), "5 columns without residues removed.");
    EXPECT_EQ(history.position(), position + 1);
}

TEST_F(InTheColumns, NothingButGapsKeepsItsColumns)
{
    TAMBO::Alignment &rows = shown({"---", "---"});
    const unsigned long width = rows.width();
    m_Companion->columns().removeEmpty();
    EXPECT_EQ(rows.width(), width);
    EXPECT_EQ(history.position(), 0U);
    EXPECT_TRUE(told().starts_with("No column is removed: ")) << told();
}

TEST_F(InTheColumns, TheLineCountsColumnsAndResiduesAndRemovesThem)
{
    TAMBO::Alignment &rows = shown({"AC-D-", "AC---", "A---F", "A----"});
    m_Companion->columns().askForGaps();
    count();
    EXPECT_TRUE(bar().isVisible());
    EXPECT_EQ(bar().limit().value(), 90);
    EXPECT_EQ(bar().stateText(), "1 of 5 columns would go, with 0 residues");
    bar().limit().setValue(50);
    EXPECT_EQ(bar().stateText(), "3 of 5 columns would go, with 2 residues");
    bar().limit().setValue(75);
    EXPECT_EQ(bar().stateText(), "1 of 5 columns would go, with 0 residues");
    bar().limit().setValue(49);
    EXPECT_TRUE(bar().apply());
    EXPECT_EQ(rowsOf(rows), (Texts{"A", "A", "A", "A"}));
    EXPECT_EQ(told(), "4 columns with more than 49 % gaps removed.");
    EXPECT_EQ(stepName(), "Remove columns with gaps");
    count();
    EXPECT_EQ(bar().stateText(), "0 of 1 columns would go, with 0 residues");
    EXPECT_FALSE(bar().apply());
    EXPECT_EQ(told(), "No column is removed: there is none with more than 49 % gaps.");
    EXPECT_EQ(history.position(), 1U);
    history.undo();
    count();
    EXPECT_EQ(bar().stateText(), "4 of 5 columns would go, with 4 residues");
}

TEST_F(InTheColumns, OneColumnHasToStay)
{
    TAMBO::Alignment &rows = shown({"A-", "-C"});
    m_Companion->columns().askForGaps();
    bar().limit().setValue(10);
    EXPECT_FALSE(bar().apply());
    EXPECT_EQ(rows.width(), 2U);
    EXPECT_EQ(told(),
              "No column is removed: all are with more than 10 % gaps, and one has to stay.");
}

TEST_F(InTheColumns, CountingToTheEndCanBeCancelledAndGoesOn)
{
    TAMBO::Alignment &many = large(600, 300);
    ZEP::KALMO2 &window = show(many, {700, 400});
    Companion other(served(window));
    other.columns().askForGaps();
    companion::GapColumnsBar &line = other.columns().gaps();
    ASSERT_TRUE(line.isCounting());
    const WithoutMoment withoutMoment;
    const CancelledProgress cancel(line);
    EXPECT_FALSE(line.apply());
    EXPECT_EQ(cancel.count(), 1);
    EXPECT_EQ(many.width(), 300U);
    EXPECT_TRUE(line.isCounting());
}

TEST_F(InTheColumns, ALockedAlignmentStaysAsItIs)
{
    TAMBO::Alignment &rows = shown({"A-", "A-"});
    lockAll();
    m_Companion->columns().removeEmpty();
    EXPECT_EQ(rows.width(), 2U);
    EXPECT_EQ(told(), "No column is removed: the alignment cannot be changed now.");
}

TEST_F(InTheColumns, ABlockBecomesAnAlignmentThatIsToldApart)
{
    TAMBO::Alignment &rows = shown({"AC-D-", "-CE--", "A---F"});
    m_Companion->columns().newAlignmentOfBlock(TAMBO::CellBlock{1, 3, 1, 4});
    ASSERT_EQ(alignments().size(), 3U);
    TAMBO::Alignment &made = *alignments().back();
    EXPECT_EQ(rowsOf(made), (Texts{"CE-", "---"}));
    EXPECT_EQ(made.Name(), "rows (rows 2-3, columns 2-4)");
    EXPECT_EQ(told(), "New alignment “rows (rows 2-3, columns 2-4)”, 2 rows × 3 columns: it "
                      "stands in the list of objects.");
    EXPECT_EQ(rowsOf(rows), (Texts{"AC-D-", "-CE--", "A---F"}));
    EXPECT_EQ(history.position(), 1U);
    m_Companion->columns().newAlignmentOfBlock(TAMBO::CellBlock{0, 1, 0, 1});
    EXPECT_EQ(alignments().back()->Name(), "rows (row 1, column 1)");
    m_Companion->columns().newAlignmentOfBlock(std::nullopt);
    EXPECT_EQ(told(), "No alignment is made: there is no block.");
    EXPECT_EQ(history.position(), 2U);
}

TEST_F(InTheColumns, TheCommandTakesTheBlockAndNotACellAlone)
{
    shown({"AC-D-", "-CE--", "A---F"});
    const companion::Command command = companion::columnCommands().back();
    command.run(*m_Companion);
    EXPECT_EQ(told(), "No alignment is made: there is no block.");
    m_Companion->cursor().set(TAMBO::CellIndex{1, 1});
    command.run(*m_Companion);
    EXPECT_EQ(told(), "No alignment is made: there is no block.");
    m_Companion->cursor().setBlock({2, 0}, {1, 4});
    command.run(*m_Companion);
    EXPECT_EQ(alignments().back()->Name(), "rows (rows 2-3, columns 1-5)");
    EXPECT_EQ(rowsOf(*alignments().back()), (Texts{"-CE--", "A---F"}));
}

TEST_F(InTheColumns, TheLinesHaveAccessibleNamesAndDoNotWidenTheWindow)
{
    m_Window->resize(420, 400);
    QCoreApplication::processEvents();
    const int before = m_Window->width();
    m_Companion->columns().askForGaps();
    m_Companion->rows().askForGroups();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_Window->width(), before);
    for (const char *const name : {"GapColumns", "GroupRows"}) {
        auto *const line = m_Window->findChild<QToolBar *>(name);
        ASSERT_NE(line, nullptr);
        for (const QWidget *const each : line->findChildren<QWidget *>())
            EXPECT_TRUE(each->focusPolicy() == Qt::NoFocus || !each->accessibleName().isEmpty())
                << each->metaObject()->className();
    }
}

// ---- Realigning

TEST_F(InTheColumns, RealigningAllIsTheWorkbenchsAndToldInTheLine)
{
    TAMBO::Alignment &rows = shown({"-A--C-", "---DC-"});
    std::vector<const TAMBO::Alignment *> realigned;
    auto &routes = TAMBO::services::PluginRoutes::instance();
    routes.registerExecute("Calculate", "Alignment", "RealignAll", [&](const PluginCall &call) {
        auto *const request = static_cast<TAMBO::RealignRequest *>(call.data);
        realigned.push_back(request->alignment);
        request->told = realigned.size() == 1 ? "Realigned" : QString();
        return true;
    });
    m_Companion->columns().realignAll();
    EXPECT_EQ(told(), "Realigned");
    m_Companion->tell("Something else");
    m_Companion->columns().realignAll();
    EXPECT_EQ(told(), "Something else") << "a box has told it";
    EXPECT_EQ(realigned, std::vector<const TAMBO::Alignment *>(2, &rows));
    shown({"ACD"});
    m_Companion->columns().realignAll();
    EXPECT_EQ(told(), "Nothing is realigned: the alignment has fewer than two rows.");
    m_Window->Clear();
    m_Companion->columns().realignAll();
    EXPECT_EQ(told(), "No alignment is shown.");
    EXPECT_EQ(realigned.size(), 2U);
    routes.removeExecute("Calculate", "Alignment", "RealignAll");
}

} // namespace ColumnToolsTest
