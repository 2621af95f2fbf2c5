// SPDX-License-Identifier: GPL-3.0-or-later
// The line that says how well the structures lie on each other, in a window.
#include "guide/GuidedFamily.h"

#include "Commands.h"
#include "Refit.h"

namespace RefitLineTest {

using TAMBO::StructureFits;

class LineOfSuperposed : public GuidedFamily
{
protected:
    companion::RefitLine &line() { return m_Companion->refit(); }
    void settleLine()
    {
        do
            QCoreApplication::processEvents();
        while (!line().isSettled());
    }
    void run(const QString &text)
    {
        const auto &all = companion::commands();
        const auto command = std::ranges::find(all, text, &companion::Command::text);
        ASSERT_NE(command, all.end());
        command->run(*m_Companion);
        settleLine();
    }
    QString expected()
    {
        double least = 1e9;
        double most = 0;
        for (unsigned long row = 1; row < 4; ++row) {
            const double rmsd = StructureFits::measure(*m_Shown, 0, row).rmsd;
            least = std::min(least, rmsd);
            most = std::max(most, rmsd);
        }
        const auto two = [](double value) { return QString::number(value, 'f', 2); };
        return "3 structures lie on m0_A: RMSD " +
               (two(least) == two(most) ? two(least) : two(least) + " to " + two(most)) + " Å";
    }

    companion::Refit m_Refit;
};

TEST_F(LineOfSuperposed, IsThereWhileTheyAreKeptSuperposed)
{
    look(family());
    EXPECT_FALSE(line().isShown());
    run("&Keep Superposed");
    EXPECT_TRUE(line().isShown());
    EXPECT_EQ(line().text(), expected() + " over 24 pairs of CA atoms");
    EXPECT_EQ(history.size(), 1U);
    run("&Keep Superposed");
    EXPECT_FALSE(line().isShown());
    history.undo();
    settleLine();
    EXPECT_TRUE(line().isShown());
    history.undo();
    settleLine();
    EXPECT_FALSE(line().isShown());
}

TEST_F(LineOfSuperposed, FollowsAGapThatIsDraggedAndItsUndo)
{
    look(family());
    run("&Keep Superposed");
    const QString before = line().text();
    hold(1, kGap, 3, Qt::MiddleButton);
    release(cells(), Qt::MiddleButton, middle(1, 3));
    settleLine();
    EXPECT_NE(line().text(), before);
    EXPECT_TRUE(line().text().startsWith(expected())) << qPrintable(line().text());
    EXPECT_EQ(history.size(), 2U);
    history.undo();
    settleLine();
    EXPECT_EQ(line().text(), before);
}

TEST_F(LineOfSuperposed, IsOfTheAlignmentThatIsShown)
{
    look(family());
    run("&Keep Superposed");
    m_Window->Populate(&large());
    settleLine();
    EXPECT_FALSE(line().isShown());
    m_Window->Populate(m_Shown);
    settleLine();
    EXPECT_TRUE(line().isShown());
    EXPECT_TRUE(line().text().startsWith(expected()));
}

TEST_F(LineOfSuperposed, SaysWhenAnotherAlignmentHasMovedAStructureAndWhenItIsOffAgain)
{
    TAMBO::Alignment &shown = family();
    TAMBO::Alignment *other = nullptr;
    {
        const DataPointBase guard(nullptr, Publisher::Add);
        other = shown.duplicate(shown.height());
    }
    TAMBO::renameObject(*other, "other");
    look(shown);
    run("&Keep Superposed");
    const QString alone = line().text();
    ASSERT_TRUE(companion::setRefitted(*other, true));
    settleLine();
    EXPECT_EQ(line().text(), alone) << "both want the same";
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, other);
        for (int i = 0; i < 3; ++i)
            other->insertGap(1, other->columnOfResidue(1, 8));
    }
    settleLine();
    EXPECT_TRUE(line().text().contains("Å away, for the alignment other keeps "))
        << qPrintable(line().text());
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, other);
        TAMBO::renameObject(*other, "another");
    }
    settleLine();
    EXPECT_TRUE(line().text().contains("for the alignment another keeps "))
        << qPrintable(line().text());
    ASSERT_TRUE(companion::setRefitted(*other, false));
    settleLine();
    EXPECT_FALSE(line().text().contains("keeps")) << qPrintable(line().text());
}

TEST_F(LineOfSuperposed, ALockedAlignmentStaysAsItIs)
{
    look(family());
    TAMBO::setObjectLocked(*m_Shown, true);
    run("&Keep Superposed");
    EXPECT_FALSE(line().isShown());
    EXPECT_FALSE(companion::isRefitted(*m_Shown));
    TAMBO::setObjectLocked(*m_Shown, false);
}

} // namespace RefitLineTest
