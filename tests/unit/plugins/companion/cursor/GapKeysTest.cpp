// SPDX-License-Identifier: GPL-3.0-or-later
#include "GapKeys.h"

#include "CursorFixture.h"

#include "Commands.h"
#include "KeptRegion.h"

#include <QMenu>

namespace GapKeysTest {

using companion::GapEdit;
using TAMBO::CellBlock;
using TAMBO::CellIndex;

// Over rows of its own instead of the large ones.
class GapsByKeys : public CursorFixture
{
protected:
    GapsByKeys() { use({"ACDEFGHIKL----", "AC--DEFGHI----", "A-CD--EFGH----"}); }

    void use(const Texts &rows)
    {
        m_Rows = &alignment(rows, "rows");
        const MessageRecorder quiet;
        m_Window->Populate(m_Rows);
        QCoreApplication::processEvents();
        QApplication::setActiveWindow(m_Window);
        view().setFocus();
    }
    [[nodiscard]] std::string row(unsigned long number) const
    {
        return m_Rows->GetSequence(number, false);
    }
    [[nodiscard]] Texts rows() const { return rowsOf(*m_Rows); }
    // Nothing has changed, and the line says of which row, and something of why.
    void expectRefusal(const Texts &before, const QString &name, const QString &reason)
    {
        EXPECT_EQ(rows(), before);
        EXPECT_TRUE(line().contains(name)) << line().toStdString();
        EXPECT_TRUE(line().contains(reason)) << line().toStdString();
    }

    TAMBO::Alignment *m_Rows = nullptr;
};

TEST_F(GapsByKeys, SpacePutsAGapInAndTheCursorStaysOnItsResidue)
{
    cursor().set(CellIndex{0, 2});
    key(Qt::Key_Space);
    EXPECT_EQ(row(0), "AC-DEFGHIKL---");
    EXPECT_EQ(place(), (CellIndex{0, 3}));
    key(Qt::Key_Space);
    EXPECT_EQ(row(0), "AC--DEFGHIKL--");
    EXPECT_EQ(place(), (CellIndex{0, 4}));
    EXPECT_EQ(row(1), "AC--DEFGHI----");
}

TEST_F(GapsByKeys, ACountIsGoneWithAClickACommandsKeyAndACommand)
{
    cursor().set(CellIndex{0, 2});
    keys({Qt::Key_5, Qt::Key_0});
    mouse(cells(), QEvent::MouseButtonPress, Qt::LeftButton, middleOf({0, 2}), Qt::LeftButton);
    mouse(cells(), QEvent::MouseButtonRelease, Qt::LeftButton, middleOf({0, 2}), {});
    key(Qt::Key_Space);
    EXPECT_EQ(row(0), "AC-DEFGHIKL---");
    keys({Qt::Key_5, Qt::Key_0});
    key(Qt::Key_Control);
    EXPECT_FALSE(line().contains("50")) << line().toStdString();
    key(Qt::Key_Backspace);
    EXPECT_EQ(row(0), "ACDEFGHIKL----");
    keys({Qt::Key_5, Qt::Key_0});
    m_Companion->editing().keys().edit(GapEdit::Kind::Insert, 1);
    key(Qt::Key_Backspace);
    EXPECT_EQ(row(0), "ACDEFGHIKL----");
}

TEST_F(GapsByKeys, BackspaceTakesOutWhatSpaceHasPutIn)
{
    const Texts before = rows();
    cursor().set(CellIndex{0, 2});
    key(Qt::Key_Space);
    key(Qt::Key_Backspace);
    EXPECT_EQ(rows(), before);
    EXPECT_EQ(place(), (CellIndex{0, 2}));
}

TEST_F(GapsByKeys, DeleteTakesOutTheGapAtTheCursorWhichStays)
{
    cursor().set(CellIndex{1, 2});
    key(Qt::Key_Delete);
    EXPECT_EQ(row(1), "AC-DEFGHI-----");
    EXPECT_EQ(place(), (CellIndex{1, 2}));
}

TEST_F(GapsByKeys, ACountIsTypedBefore)
{
    cursor().set(CellIndex{0, 1});
    key(Qt::Key_1);
    key(Qt::Key_2);
    EXPECT_TRUE(line().startsWith("12 ")) << line().toStdString();
    key(Qt::Key_Space);
    EXPECT_EQ(row(0), "A------------CDEFGHIKL");
    EXPECT_EQ(place(), (CellIndex{0, 13}));
    EXPECT_TRUE(m_Served->visibleCells().contains({0, 13}));
    key(Qt::Key_1, Qt::KeypadModifier);
    key(Qt::Key_0, Qt::KeypadModifier);
    key(Qt::Key_Backspace);
    EXPECT_EQ(place(), (CellIndex{0, 3}));
    EXPECT_EQ(row(0).substr(0, 12), "A--CDEFGHIKL");
    cursor().set(CellIndex{0, 1});
    key(Qt::Key_2);
    key(Qt::Key_Delete);
    EXPECT_EQ(row(0).substr(0, 10), "ACDEFGHIKL");
}

TEST_F(GapsByKeys, ACountIsNotBegunWithZero)
{
    cursor().set(CellIndex{0, 1});
    key(Qt::Key_0);
    key(Qt::Key_Space);
    EXPECT_EQ(row(0), "A-CDEFGHIKL---");
}

TEST_F(GapsByKeys, EscapeDropsTheCountAndNothingElse)
{
    cursor().setBlock({0, 1}, {1, 1});
    key(Qt::Key_3);
    key(Qt::Key_Escape);
    EXPECT_FALSE(line().startsWith("3")) << line().toStdString();
    EXPECT_TRUE(cursor().hasBlock());
    key(Qt::Key_Space);
    EXPECT_EQ(row(0), "A-CDEFGHIKL---");
    EXPECT_EQ(row(1), "A-C--DEFGHI---");
}

TEST_F(GapsByKeys, AnyOtherKeyDropsTheCount)
{
    cursor().set(CellIndex{0, 1});
    key(Qt::Key_3);
    key(Qt::Key_Right);
    EXPECT_EQ(place(), (CellIndex{0, 2}));
    key(Qt::Key_Space);
    EXPECT_EQ(row(0), "AC-DEFGHIKL---");
}

TEST_F(GapsByKeys, AreForAllRowsOfTheBlock)
{
    cursor().setBlock({0, 2}, {2, 4});
    key(Qt::Key_2);
    key(Qt::Key_Space);
    EXPECT_EQ(rows(), (Texts{"AC--DEFGHIKL--", "AC----DEFGHI--", "A---CD--EFGH--"}));
    EXPECT_EQ(block(), (CellBlock{0, 3, 4, 7}));
    history.undo();
    EXPECT_EQ(rows(), (Texts{"ACDEFGHIKL----", "AC--DEFGHI----", "A-CD--EFGH----"}));
}

TEST_F(GapsByKeys, AreRefusedForAllRowsWhenOneCannot)
{
    const Texts before = rows();
    // Before column 3 only two rows have a gap.
    cursor().setBlock({1, 3}, {2, 3});
    key(Qt::Key_Backspace);
    expectRefusal(before, "s2", "gap");
    EXPECT_EQ(block(), (CellBlock{1, 3, 3, 4}));
    EXPECT_FALSE(history.canUndo());
}

TEST_F(GapsByKeys, AltAndAnArrowSlideTheResiduesBetweenTwoGaps)
{
    cursor().set(CellIndex{2, 3});
    key(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(row(2), "A--CD-EFGH----");
    EXPECT_EQ(place(), (CellIndex{2, 4}));
    key(Qt::Key_2);
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(row(2), "ACD---EFGH----");
    EXPECT_EQ(place(), (CellIndex{2, 2}));
    const Texts before = rows();
    key(Qt::Key_Left, Qt::AltModifier);
    expectRefusal(before, "s2", "gap");
}

TEST_F(GapsByKeys, EnterRepeatsTheLastEditWhereTheCursorIs)
{
    cursor().set(CellIndex{0, 1});
    key(Qt::Key_2);
    key(Qt::Key_Space);
    cursor().set(CellIndex{1, 1});
    key(Qt::Key_Return);
    EXPECT_EQ(row(1), "A--C--DEFGHI--");
    cursor().set(CellIndex{2, 1});
    key(Qt::Key_3);
    key(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(row(2), "A----CD--EFGH-");
}

TEST_F(GapsByKeys, EnterKnowsTheWayThatResiduesSlid)
{
    cursor().set(CellIndex{2, 6});
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(row(2), "A-CD-EFGH-----");
    cursor().set(CellIndex{1, 4});
    key(Qt::Key_2);
    key(Qt::Key_Return);
    EXPECT_EQ(row(1), "ACDEFGHI------");
}

TEST_F(GapsByKeys, EnterSaysWhenThereIsNothingToRepeat)
{
    const Texts before = rows();
    cursor().set(CellIndex{0, 1});
    key(Qt::Key_Return);
    EXPECT_EQ(rows(), before);
    EXPECT_TRUE(line().contains("no edit")) << line().toStdString();
}

TEST_F(GapsByKeys, NeedTheCursor)
{
    const Texts before = rows();
    for (const int each : {Qt::Key_Space, Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_Return})
        key(each);
    key(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(rows(), before);
    m_Companion->editing().keys().edit(GapEdit::Kind::Insert, 1);
    EXPECT_EQ(rows(), before);
    EXPECT_TRUE(line().contains("cursor")) << line().toStdString();
}

TEST_F(GapsByKeys, ChangeNothingOfALockedAlignment)
{
    const Texts before = rows();
    cursor().set(CellIndex{0, 1});
    lockAll();
    key(Qt::Key_Space);
    EXPECT_EQ(rows(), before);
    EXPECT_EQ(place(), (CellIndex{0, 1}));
}

TEST_F(GapsByKeys, LeaveKeptColumnsWhereTheyAre)
{
    companion::keepColumns(*m_Rows, {6, 9});
    cursor().set(CellIndex{1, 1});
    const Texts before = rows();
    key(Qt::Key_2);
    key(Qt::Key_Space);
    EXPECT_EQ(row(1), "A--CDEFGHI----");
    key(Qt::Key_Space);
    EXPECT_EQ(row(1), "A--CDEFGHI----");
    EXPECT_TRUE(line().contains("s1") && line().contains("kept")) << line().toStdString();
}

TEST_F(GapsByKeys, AreCommandsAsWell)
{
    QMenu menu;
    companion::fillMenu(menu, [this] { return m_Companion.get(); });
    const auto run = [&](const QString &text) {
        for (const QMenu *const each : menu.findChildren<QMenu *>())
            for (QAction *const action : each->actions())
                if (action->text().remove('&').section('\t', 0, 0) == text)
                    return action->trigger();
        ADD_FAILURE() << text.toStdString();
    };
    cursor().setBlock({0, 2}, {1, 5});
    run("Insert Gap");
    EXPECT_EQ(row(0), "AC-DEFGHIKL---");
    EXPECT_EQ(row(1), "AC---DEFGHI---");
    run("Remove Gap Before");
    EXPECT_EQ(row(1), "AC--DEFGHI----");
    cursor().set(CellIndex{1, 2});
    run("Remove Gap Behind");
    EXPECT_EQ(row(1), "AC-DEFGHI-----");
    run("Repeat");
    EXPECT_EQ(row(1), "ACDEFGHI------");
    cursor().set(CellIndex{2, 2});
    run("Slide Right");
    EXPECT_EQ(row(2), "A--CD-EFGH----");
    run("Slide Left");
    EXPECT_EQ(row(2), "A-CD--EFGH----");
    cursor().setBlock({2, 1}, {2, 5});
    run("Push to the Right");
    EXPECT_EQ(row(2), "A---CDEFGH----");
    cursor().setBlock({2, 1}, {2, 5});
    run("Push to the Left");
    EXPECT_EQ(row(2), "ACD---EFGH----");
}

} // namespace GapKeysTest
