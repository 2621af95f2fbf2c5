// SPDX-License-Identifier: GPL-3.0-or-later
// What a user meets between the windows: where dialogs come up, what they say, and keys that take
// back a selection.
#include "WindowFixture.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>

namespace DialogsByHandTest {

constexpr const char *kEditor = "Alignment Editor";

class DialogsByHand : public WindowFixture
{
protected:
    QString open()
    {
        start({write("hand.fasta", ">a\nACD-EFGHIK\n>b\nACDDEFGHIK\n")});
        QString editor = window(kEditor);
        m_Grid = grid(editor, "AC");
        return editor;
    }
    // When the dialog can be used.
    void accept(const QString &dialog)
    {
        waitUntil([this] { return isSettled() || !isRunning(); });
        m_Screen.pressKey(dialog, "Return");
    }
    QByteArray waitForFile(const QString &name)
    {
        QFile file(m_Folder.filePath(name));
        EXPECT_TRUE(waitUntil([&] { return file.exists() || !isRunning(); }));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    CellGrid m_Grid;
};

TEST_F(DialogsByHand, SaveIsOfferedInTheFolderThatTheAlignmentCameFrom)
{
    const QString editor = open();
    chooseSave(editor);
    accept(window("Save As"));
    EXPECT_TRUE(waitForFile("hand.ali").startsWith(">P1;"));
}

TEST_F(DialogsByHand, SaveIsOfferedInTheFolderThatTheAlignmentWasSavedToLast)
{
    const QString editor = open();
    ASSERT_TRUE(QDir(m_Folder.path()).mkdir("other"));
    const QString file = m_Folder.filePath("other/hand.ali");
    save(editor, file);
    ASSERT_TRUE(QFile::remove(file));
    chooseSave(editor);
    accept(window("Save As"));
    EXPECT_TRUE(waitForFile("other/hand.ali").startsWith(">P1;"));
}

TEST_F(DialogsByHand, PrintSaysThatItMakesPostScriptAndDoes)
{
    const QString editor = open();
    choose(editor, 0, 8);
    accept(window("Print – PostScript file"));
    EXPECT_TRUE(waitForFile("hand.ps").startsWith("%!PS"));
}

TEST_F(DialogsByHand, ADialogComesUpOverTheEditor)
{
    const QString editor = open();
    const QRect place = m_Screen.geometryOf(editor);
    chooseSave(editor);
    const QString dialog = window("Save As");
    waitUntil([this] { return isSettled() || !isRunning(); });
    EXPECT_TRUE(place.intersects(m_Screen.geometryOf(dialog)));
    EXPECT_LT((m_Screen.geometryOf(dialog).center() - place.center()).manhattanLength(), 80);
    m_Screen.pressKey(dialog, "Escape");
    waitForWindows("Save As", 0);
}

TEST_F(DialogsByHand, EscapeAndCtrlShiftATakeTheSelectionBackInAnEditorAndAKeyBringsItBack)
{
    const QString editor = open();
    m_Screen.click(m_Grid.middle(0, 1));
    for (const char *const keys : {"Escape", "ctrl+shift+a"}) {
        waitForColor(m_Grid.ground(0, 1), selectedColorOf('C'));
        m_Screen.pressKey(editor, keys);
        waitForColor(m_Grid.ground(0, 1), colorOf('C'));
        m_Screen.pressKey(keys[0] == 'E' ? editor : window("Tambo"), "ctrl+shift+l");
        waitForColor(m_Grid.ground(0, 1), selectedColorOf('C'));
    }
    EXPECT_TRUE(isRunning());
}

} // namespace DialogsByHandTest
