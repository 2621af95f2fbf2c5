// SPDX-License-Identifier: GPL-3.0-or-later
// Going to places and finding, by real keys.
#include "CompanionByHand.h"

namespace FindingByHandTest {

// Of the frame around a place that one went to, and around the present hit.
const QColor kTarget(255, 221, 0);
const QColor kPresentHit(208, 0, 112);

class FindingByHand : public CompanionByHand
{
protected:
    void goTo(const QString &place)
    {
        keys("ctrl+g");
        m_Screen.typeText(m_Editor, place);
        m_Screen.pressKey("Return");
    }
    void find(const QString &text)
    {
        keys("ctrl+f");
        m_Screen.typeText(m_Editor, text);
    }
    // The frame around the present hit is in the row.
    void waitForHitIn(int row)
    {
        // The rows have other letters before it, which begin below the upper edge of their cell.
        const char before = this->row(row)[kHitColumn - 1];
        waitFor([&] {
            const QImage image = m_Screen.picture(m_Place);
            for (int y = 1; y < image.height(); ++y) {
                for (int x = 3; x < image.width(); ++x) {
                    // The upper left corner of the frame.
                    if (image.pixelColor(x, y) == kPresentHit &&
                        image.pixelColor(x - 1, y) != kPresentHit &&
                        image.pixelColor(x, y - 1) != kPresentHit)
                        return image.pixelColor(x - 3, y + 2) == colorOf(before);
                }
            }
            return false;
        });
    }
};

TEST_F(FindingByHand, AColumnIsGoneToAndEscapeGivesTheKeyboardBack)
{
    open();
    waitForLastColumn(false);
    goTo("150");
    waitForLastColumn(true);
    waitForColorIn(m_Place, kTarget);
    m_Screen.pressKey("Escape");
    waitForColorIn(m_Place, kTarget, false);
    expectKeyboardIsAtTheCells();
}

TEST_F(FindingByHand, AResidueIsGoneToByRowAndNumber)
{
    open();
    // The number counts residues: two gaps stand before it.
    goTo("sequence_30_of_the_example:148");
    waitForLastColumn(true);
    waitForColorIn(m_Place, kTarget);
}

TEST_F(FindingByHand, APartOfANameIsGoneTo)
{
    open();
    const QImage before = settledEditor();
    goTo("ce_59_");
    waitForColorIn(m_Place, kTarget);
    // The last row has come, with white below it; columns have stayed.
    waitForLastColumn(false);
    waitFor([&] { return settledEditor() != before; });
    m_Screen.pressKey("Escape");
    goHome();
    waitFor([&] { return settledEditor() == before; });
}

TEST_F(FindingByHand, APlaceThatIsNotThereMovesNothing)
{
    open();
    goTo("151");
    m_Screen.pressKey("Escape");
    // It would have been shown before the keyboard came back.
    goHome();
    waitForLastColumn(false);
    waitForLetter(m_Grid.corner, row(0)[0]);
}

TEST_F(FindingByHand, TypingFindsAndKeysGoThroughTheHits)
{
    open();
    find("ynyn");
    m_Screen.pressKey("F3");
    waitForHitIn(kHitRows[0]);
    m_Screen.pressKey("F3");
    waitForHitIn(kHitRows[1]);
    m_Screen.pressKey("shift+F3");
    waitForHitIn(kHitRows[0]);
    m_Screen.pressKey("Return");
    waitForHitIn(kHitRows[1]);
    m_Screen.pressKey("Escape");
    waitForColorIn(m_Place, kPresentHit, false);
    expectKeyboardIsAtTheCells();
}

// Who chooses in the menu of the main window types into the editor window's bar.
TEST_F(FindingByHand, AskedForInTheMainWindowTheBarGetsTheKeyboard)
{
    open();
    m_Screen.pressKey(window("Tambo"), "ctrl+f");
    waitFor([this] { return m_Screen.activeWindow() == m_Editor; });
    m_Screen.pressKey("y n y n F3");
    waitForHitIn(kHitRows[0]);
    m_Screen.pressKey("Escape");
    expectKeyboardIsAtTheCells();
    m_Screen.pressKey(window("Tambo"), "ctrl+g");
    waitFor([this] { return m_Screen.activeWindow() == m_Editor; });
    m_Screen.pressKey("1 5 0 Return");
    waitForLastColumn(true);
}

TEST_F(FindingByHand, SelectAllIsReachedByKeys)
{
    open();
    find("ynyn");
    m_Screen.pressKey("Return");
    waitForHitIn(kHitRows[0]);
    // Pattern, place, language, mismatches, selected only, back, forth.
    m_Screen.pressKey("Tab Tab Tab Tab Tab Tab Tab space");
    waitForColorIn(m_Place, selectedColorOf('Y'));
    m_Screen.pressKey(window("Tambo"), "ctrl+shift+a");
    waitForColorIn(m_Place, selectedColorOf('Y'), false);
}

TEST_F(FindingByHand, NamesAreFoundByKeysAlone)
{
    open();
    find("_45_");
    // The list of where to find it.
    m_Screen.pressKey("Tab Down Return");
    m_Screen.pressKey("F3");
    waitForColorIn(m_Place, kPresentHit);
}

// A pattern of residues is none for names, and chosen again when residues are searched.
TEST_F(FindingByHand, NamesAreSearchedAsTextWhenAPatternOfResiduesWasChosen)
{
    open();
    find("_45_");
    m_Screen.pressKey("Tab Tab End Tab");
    // Back to where it is looked for.
    m_Screen.pressKey("shift+Tab shift+Tab Down");
    keys("F3");
    waitForColorIn(m_Place, kPresentHit);
}

// Of two that have one key each would get it in turn.
TEST_F(FindingByHand, TheOpenBarsLeaveTheMenuItsKey)
{
    open();
    keys("ctrl+g");
    m_Screen.pressKey("ctrl+f");
    for (int time = 0; time < 2; ++time) {
        keys("alt+f");
        chooseByKeys("Escape");
    }
    keys("alt+i");
    m_Screen.typeText(m_Editor, "ynyn");
    m_Screen.pressKey("Return");
    waitForHitIn(kHitRows[0]);
}

} // namespace FindingByHandTest
