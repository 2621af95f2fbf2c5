// SPDX-License-Identifier: GPL-3.0-or-later
// Rows and columns by the menus for them and their keys.
#include "CompanionByHand.h"

#include <QFile>

#include <algorithm>

namespace RowsByHandTest {

class RowsByHand : public CompanionByHand
{
protected:
    [[nodiscard]] QPoint name(int number) const
    {
        return {m_Place.left() + 20, cell(number, 0).y()};
    }
    void chooseInMenu(const QString &names)
    {
        m_Screen.pressKey(m_Editor, "shift+F10");
        chooseByKeys(names);
    }
};

TEST_F(RowsByHand, ASelectedRowMovesByKeys)
{
    open();
    m_Screen.click(name(0));
    waitForColor(m_Grid.corner, selectedColorOf(row(0)[0]));
    keys("alt+Down alt+Down");
    waitForLetter(m_Grid.corner, row(1)[0]);
    waitForColor(m_Grid.ground(2, 0), selectedColorOf(row(0)[0]));
    keys("alt+Up");
    waitForColor(m_Grid.ground(1, 0), selectedColorOf(row(0)[0]));
    keys("alt+Home");
    waitForColor(m_Grid.corner, selectedColorOf(row(0)[0]));
    keys("ctrl+z");
    waitForLetter(m_Grid.corner, row(1)[0]);
}

TEST_F(RowsByHand, ASelectedRowHasADarkBarAndIsCopiedByKeys)
{
    open();
    const QRect names(m_Place.left(), m_Grid.corner.y(), m_Grid.corner.x() - m_Place.left(),
                      m_Grid.cell.height());
    const QColor bar(0, 100, 0);
    waitForColorIn(names, bar, false);
    m_Screen.click(name(0));
    waitForColorIn(names, bar);
    keys("ctrl+c");
    waitFor([this] { return m_Screen.clipboardText().startsWith(u'>'); });
    const QStringList lines = m_Screen.clipboardText().split(u'\n', Qt::SkipEmptyParts);
    EXPECT_EQ(lines.filter(QStringLiteral(">")).size(), 1);
    EXPECT_EQ(lines.mid(1).join(QString()).toLatin1(), row(0).replace("-", ""));
    m_Screen.click(name(0));
    waitForColorIn(names, bar, false);
}

TEST_F(RowsByHand, RedundantRowsAreLookedThroughAndRemovedByKeys)
{
    open();
    chooseInMenu("r r");
    const QString dialog = window("Redundant Rows");
    (void)settled([this] { return m_Screen.picture(); });
    m_Screen.pressKey(dialog, "alt+r");
    waitForWindows("Redundant Rows", 0);
    // Each is like the one that is eight rows above it.
    const QStringList rows = save(m_Editor, m_Folder.filePath("left.ali"));
    EXPECT_EQ(rows.size(), 8);
}

// As one that Add Seqs has brought, which begins in the first column.
TEST_F(RowsByHand, ARowIsAlignedToTheRestByMafft)
{
    const QByteArray known = "MKTAYIAKQRQISFVKSHFSRQLEERLGLIEVQAPILSRVGDGTQDNLSGAEKAVQVKV";
    const QByteArray added = known.mid(10);
    const QByteArray gaps(10, '-');
    // Names as long as the others of this example, so that they are clicked at the same place.
    open(">sequence_added_to_the_example\n" + added + gaps + "\n>sequence_one_of_the_example\n" +
             known + "\n>sequence_two_of_the_example\n" + known + '\n',
         QString::fromLatin1(added.left(8)));
    m_Screen.click(name(0));
    waitForColor(m_Grid.corner, selectedColorOf(added[0]));
    chooseInMenu("r e");
    waitFor([this] {
        QFile log(m_Folder.filePath("user/data/tambo.log"));
        return log.open(QIODevice::ReadOnly) &&
               log.readAll().contains(
                   "Aligned sequence_added_to_the_example to the other rows; no ");
    });
    const QStringList rows = save(m_Editor, m_Folder.filePath("added.ali"));
    EXPECT_EQ(rows, QStringList({gaps + added, known, known}));
    keys("ctrl+z");
    waitForColor(m_Grid.corner, selectedColorOf(added[0]));
}

TEST_F(RowsByHand, ColumnsWithGapsGoByTheLineThatCountsThem)
{
    open();
    chooseInMenu("u g");
    m_Screen.typeText(m_Editor, "0");
    m_Screen.pressKey("Return");
    const QStringList rows = save(m_Editor, m_Folder.filePath("narrow.ali"));
    ASSERT_EQ(rows.size(), kRowCount);
    for (const QString &each : rows)
        EXPECT_EQ(each.size(), kColumnCount - 2);
}

} // namespace RowsByHandTest
