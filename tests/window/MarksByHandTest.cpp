// SPDX-License-Identifier: GPL-3.0-or-later
// What marks residues that do not fit the structure of their row, as a user meets it.
#include "CompanionByHand.h"

namespace MarksByHandTest {

class MarksByHand : public CompanionByHand
{
protected:
    // In the upper right corner of the cell.
    [[nodiscard]] QRgb markedPixel(int column) const
    {
        const QPoint place = m_Grid.corner + QPoint((column + 1) * m_Grid.cell.width() - 2, 0);
        return m_Screen.picture().pixel(place);
    }
    // The size of the tool tip of a cell of the first row.
    [[nodiscard]] QSize toolTipAt(int column)
    {
        m_Screen.moveMouse({1910, 1070});
        waitFor([&] { return m_Screen.findPopups().isEmpty(); });
        m_Screen.moveMouse(cell(0, column));
        m_Screen.moveMouse(cell(0, column) + QPoint(1, 0));
        waitFor([&] { return m_Screen.findPopups().size() == 1; });
        const QStringList found = m_Screen.findPopups();
        return found.isEmpty() ? QSize() : m_Screen.geometryOf(found.front()).size();
    }
};

// Its words are those of a unit test; here it has a line more than those of other cells.
TEST_F(MarksByHand, TheToolTipOfAMarkedCellHasTheReasonAsWell)
{
    openWithAMark();
    waitFor([&] { return markedPixel(kMarked) == QColor(Qt::black).rgb(); });
    EXPECT_NE(markedPixel(kMarked - 1), QColor(Qt::black).rgb());
    (void)settledEditor();
    const QSize plain = toolTipAt(kMarked - 1);
    const QSize marked = toolTipAt(kMarked);
    EXPECT_GT(marked.height(), plain.height());
}

TEST_F(MarksByHand, TheMenuSwitchesTheMarksOffAndOn)
{
    openWithAMark();
    waitFor([&] { return markedPixel(kMarked) == QColor(Qt::black).rgb(); });
    m_Screen.click(corner(), 3);
    chooseByKeys("s");
    waitFor([&] { return markedPixel(kMarked) == colorOf('W').rgb(); });
    m_Screen.pressKey(m_Editor, "Menu");
    chooseByKeys("s");
    waitFor([&] { return markedPixel(kMarked) == QColor(Qt::black).rgb(); });
}

} // namespace MarksByHandTest
