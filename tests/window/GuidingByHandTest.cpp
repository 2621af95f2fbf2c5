// SPDX-License-Identifier: GPL-3.0-or-later
// A gap that is dragged in a family with structures, by a real mouse and real keys.
#include "WindowFixture.h"
#include "support/WaitUntil.h"

namespace GuidingByHandTest {

constexpr const char *kEditor = "Alignment Editor";
// Of the first row of the example: a gap, and two residues far to its left.
constexpr int kGap = 29;
constexpr int kTarget = 10;
constexpr int kBetween = 15;
const QString kRow = "IVGGYECRKNSASYQASLQSG---------YHFCGG";

class GuidingByHand : public WindowFixture
{
protected:
    void open()
    {
        start({example()});
        m_Editor = window(kEditor);
        m_Cells = grid(m_Editor, kRow.left(kTarget));
    }
    [[nodiscard]] QColor shownBetween() const
    {
        return m_Screen.picture().pixelColor(m_Cells.ground(0, kBetween));
    }
    [[nodiscard]] static QColor colorBetween() { return colorOf(kRow[kBetween].toLatin1()); }
    void hold()
    {
        m_Screen.moveMouse(m_Cells.middle(0, kGap));
        m_Screen.press(1);
        m_Screen.moveMouse(m_Cells.middle(0, kTarget));
        waitUntil([this] { return shownBetween() != colorBetween() || !isRunning(); });
    }

    QString m_Editor;
    CellGrid m_Cells;
};

TEST_F(GuidingByHand, ADragShowsTheCellsAsTheyWouldStandUntilEscapeEndsIt)
{
    open();
    waitForColor(m_Cells.ground(0, kBetween), colorBetween());
    hold();
    EXPECT_NE(shownBetween(), colorBetween());
    m_Screen.pressKey("Escape");
    waitForColor(m_Cells.ground(0, kBetween), colorBetween());
    m_Screen.release(1);
    waitForColor(m_Cells.ground(0, kTarget), colorOf(kRow[kTarget].toLatin1()));
}

TEST_F(GuidingByHand, LettingGoMovesTheGapAndLeavesTheColorsAsTheyWere)
{
    open();
    hold();
    m_Screen.release(1);
    waitForColor(m_Cells.ground(0, kTarget), Qt::white);
    waitForColor(m_Cells.ground(0, kBetween), colorOf(kRow[kBetween - 1].toLatin1()));
}

} // namespace GuidingByHandTest
