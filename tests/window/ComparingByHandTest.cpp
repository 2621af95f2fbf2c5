// SPDX-License-Identifier: GPL-3.0-or-later
// An alignment is compared with what it was before, and takes that over.
#include "CompanionByHand.h"

namespace ComparingByHandTest {

class ComparingByHand : public CompanionByHand
{
protected:
    // As the line of the comparison and the marks of cells have it.
    static constexpr QColor kDiffers{192, 0, 96};
    static constexpr int kWidenedAt = 4;

    void openAndWiden()
    {
        open();
        keys("F7 Right Right Right Right 2 space");
        waitForLetter(m_Grid.ground(0, kWidenedAt + 4), row(0)[kWidenedAt + 2]);
        keys("Escape Escape");
    }
    void compareWithTheOldestState()
    {
        keys("ctrl+shift+d");
        const QString dialog = window("Compare hand");
        m_Screen.pressKey(dialog, "End Return");
        waitForWindows("Compare hand", 0);
        waitForColorIn(m_Place, kDiffers);
    }
    void choose(const QString &names)
    {
        m_Screen.pressKey(m_Editor, "shift+F10");
        chooseByKeys(names);
    }
    void expectSavedAsOpened(const QString &name)
    {
        const QStringList rows = save(m_Editor, m_Folder.filePath(name));
        ASSERT_EQ(rows.size(), kRowCount);
        for (int i = 0; i < kRowCount; ++i)
            EXPECT_EQ(rows[i], QString::fromLatin1(row(i)));
    }
};

TEST_F(ComparingByHand, AFormerStateIsTakenOverByKeysAndThatIsOneStep)
{
    openAndWiden();
    compareWithTheOldestState();
    keys("F4");
    choose("m t");
    waitForColorIn(m_Place, kDiffers, false);
    // The difference had been brought to the left.
    goHome();
    waitForLetter(m_Grid.ground(0, kWidenedAt + 2), row(0)[kWidenedAt + 2]);
    expectSavedAsOpened("taken.ali");
    keys("ctrl+z");
    waitForLetter(m_Grid.ground(0, kWidenedAt + 4), row(0)[kWidenedAt + 2]);
    waitForColorIn(m_Place, kDiffers);
}

TEST_F(ComparingByHand, MarksFollowEditsUntilThereIsNoDifference)
{
    openAndWiden();
    compareWithTheOldestState();
    keys("ctrl+z");
    waitForColorIn(m_Place, kDiffers, false);
    expectSavedAsOpened("undone.ali");
}

TEST_F(ComparingByHand, TheEndOfTheComparisonTakesTheMarksAway)
{
    openAndWiden();
    compareWithTheOldestState();
    choose("m e");
    waitForColorIn(m_Place, kDiffers, false);
    waitForLetter(m_Grid.ground(0, kWidenedAt + 4), row(0)[kWidenedAt + 2]);
}

} // namespace ComparingByHandTest
