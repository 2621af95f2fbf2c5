// SPDX-License-Identifier: GPL-3.0-or-later
// The legend of an editor window's colors, by keys of the menu.
#include "CompanionByHand.h"

namespace LegendByHandTest {

// The strongest shade of By Conservation, which no column in sight deserves, and the color of B and
// Z, which are in no row: both are seen in the legend alone.
const QColor kConserved(0x1f, 0x5f, 0xa8);
// What all columns in sight deserve.
const QColor kLessConserved(0xb3, 0xd3, 0xee);
const QColor kAmbiguous(0xe5, 0x9a, 0x8f);

class LegendByHand : public CompanionByHand
{
protected:
    void chooseInMenu(const QString &names)
    {
        // Two clicks at one place within a moment are a double click.
        keys("shift+F10");
        chooseByKeys(names);
    }
    void waitForLegend(const QColor &color, bool isThere = true)
    {
        waitForColorIn(lowerPart(), color, isThere);
    }
};

TEST_F(LegendByHand, ComesWithItsColorsAndFollowsUndoAndRedo)
{
    open();
    // Colors by Column, By Conservation.
    chooseInMenu("y o");
    waitForLegend(kConserved);
    waitForColor(m_Grid.ground(0, 0), kLessConserved);
    keys("ctrl+z");
    waitForLegend(kConserved, false);
    waitForLetter(m_Grid.ground(0, 0), row(0)[0]);
    keys("ctrl+shift+z");
    waitForLegend(kConserved);
}

TEST_F(LegendByHand, OfTheColorsAsLoadedComesAndGoesByItsCommand)
{
    open();
    waitForLegend(kAmbiguous, false);
    chooseInMenu("w");
    waitForLegend(kAmbiguous);
    chooseInMenu("y o");
    waitForLegend(kAmbiguous, false);
    keys("ctrl+z");
    waitForLegend(kAmbiguous);
    chooseInMenu("w");
    waitForLegend(kAmbiguous, false);
}

} // namespace LegendByHandTest
