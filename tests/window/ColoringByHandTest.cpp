// SPDX-License-Identifier: GPL-3.0-or-later
// Colouring and searching as a user does it, from the menu to the picture.
#include "WindowFixture.h"

#include <QFile>

namespace ColoringByHandTest {

const QString kFirstRow = "IVGGYECRKNSA";
const QString kThirdRow = "VVGGEDARPNSW";
constexpr const char *kEditor = "Alignment Editor";
constexpr int kSelectMenu = 3;
constexpr int kColorMenu = 4;
constexpr int kSubSequence = 1;
constexpr int kByProperty = 3;

class ColoringByHand : public WindowFixture
{
protected:
    // The lowest or the highest colour of a map of the installation.
    static QColor endOfMap(const QString &name, bool isHighest)
    {
        QFile file(QStringLiteral(SOURCE_DIR "/share/colormaps/") + name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        QStringList lines = QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
        lines.removeIf([](const QString &line) { return line.startsWith('#'); });
        const QStringList parts =
            (isHighest ? lines.last() : lines.first()).simplified().split(' ');
        return {parts.at(1).toInt(), parts.at(2).toInt(), parts.at(3).toInt()};
    }
};

TEST_F(ColoringByHand, APropertyColoursTheCellsAndIsUndone)
{
    start({example()});
    const QString editor = window(kEditor);
    const CellGrid grid = this->grid(editor, kFirstRow);
    choose(editor, kColorMenu, kByProperty);
    const QString dialog = window("Color Residues");
    // From "White" to the first scale, the hydropathy: isoleucine highest, arginine lowest.
    m_Screen.pressKey(dialog, "Down");
    m_Screen.pressKey("Return");
    waitForWindows("Color Residues", 0);
    const QColor highest = endOfMap("BlueOrange.cm", true);
    const QColor lowest = endOfMap("BlueOrange.cm", false);
    waitForColor(grid.ground(0, 0), highest);
    waitForColor(grid.ground(0, int(kFirstRow.indexOf('R'))), lowest);
    waitForColor(grid.ground(2, int(kThirdRow.indexOf('R'))), lowest);
    m_Screen.pressKey(editor, "ctrl+z");
    waitForColor(grid.ground(0, 0), colorOf('I'));
    waitForColor(grid.ground(0, int(kFirstRow.indexOf('R'))), colorOf('R'));
}

TEST_F(ColoringByHand, ASearchTintsWhatItFinds)
{
    start({example()});
    const QString editor = window(kEditor);
    const CellGrid grid = this->grid(editor, kFirstRow);
    choose(editor, kSelectMenu, kSubSequence);
    m_Screen.typeText(window("Select"), "GG");
    m_Screen.pressKey("Return");
    waitForWindows("Select", 0);
    for (const int row : {0, 2}) {
        waitForColor(grid.ground(row, 2), selectedColorOf('G'));
        waitForColor(grid.ground(row, 3), selectedColorOf('G'));
    }
    EXPECT_EQ(m_Screen.picture().pixelColor(grid.ground(0, 1)), colorOf('V'));
    EXPECT_EQ(m_Screen.picture().pixelColor(grid.ground(0, 4)), colorOf('Y'));
    // "IVEG": one alone is not found.
    EXPECT_EQ(m_Screen.picture().pixelColor(grid.ground(1, 3)), colorOf('G'));
}

} // namespace ColoringByHandTest
