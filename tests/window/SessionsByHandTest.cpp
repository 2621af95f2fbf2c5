// SPDX-License-Identifier: GPL-3.0-or-later
// Work is saved as a session and opened again, as a user does it.
#include "FileReader.h"
#include "WindowFixture.h"
#include "support/WaitUntil.h"

#include <QFile>

#include <csignal>

namespace SessionsByHandTest {

constexpr const char *kWorkbench = "Tambo";
constexpr const char *kEditor = "Alignment Editor";
constexpr const char *kSession = "work.tambo – Tambo";
constexpr const char *kChangedSession = "work.tambo\\* – Tambo";
// Of the first row of the example: a gap, and a residue far to its left.
constexpr int kGap = 29;
constexpr int kTarget = 10;
const QString kRow = "IVGGYECRKNSASYQASLQSG---------YHFCGG";

class SessionsByHand : public WindowFixture
{
protected:
    [[nodiscard]] QString session() const { return m_Folder.filePath("work.tambo"); }
    // The example, with the residues between target and gap moved by one.
    void work()
    {
        start({example()});
        const CellGrid cells = grid(window(kEditor), kRow.left(kTarget));
        m_Screen.drag(cells.middle(0, kGap), cells.middle(0, kTarget));
        waitForColor(cells.ground(0, kTarget), Qt::white);
    }
    void saveSession()
    {
        m_Screen.pressKey(window(kWorkbench), "ctrl+alt+s");
        enterFile("Save Session", session());
        window(kSession);
    }
    static QStringList rowsOf(const QString &file)
    {
        TAMBO::Result<TAMBO::FileContents> contents = TAMBO::readFile(file.toStdString());
        EXPECT_TRUE(contents.has_value());
        QStringList rows;
        if (contents.has_value()) {
            for (const auto &row : contents->alignments.front().rows)
                rows.append(QString::fromStdString(row.sequence.text()));
        }
        return rows;
    }
};

TEST_F(SessionsByHand, WhatWasSavedIsThereAgainAndCanBeUndoneToItsBeginning)
{
    work();
    saveSession();
    // Nothing is asked.
    m_Screen.pressKey(window(kSession), "ctrl+q");
    EXPECT_EQ(waitForEnd(), 0);

    start({session()});
    window(kSession);
    const QString editor = window(kEditor);
    const CellGrid cells = grid(editor, kRow.left(kTarget));
    waitForColor(cells.ground(0, kTarget), Qt::white);
    const QStringList moved = save(editor, m_Folder.filePath("moved.ali"));
    m_Screen.pressKey(editor, "ctrl+z");
    waitForColor(cells.ground(0, kTarget), colorOf(kRow[kTarget].toLatin1()));
    window(kChangedSession);
    const QStringList original = save(editor, m_Folder.filePath("original.ali"));
    EXPECT_EQ(original, rowsOf(example()));
    EXPECT_NE(moved, original);
    m_Screen.pressKey(editor, "ctrl+shift+z");
    waitForColor(cells.ground(0, kTarget), Qt::white);
    window(kSession);
    m_Screen.pressKey(window(kSession), "ctrl+q");
    EXPECT_EQ(waitForEnd(), 0);
}

TEST_F(SessionsByHand, ItTakesThePlaceOfWhatIsOpen)
{
    work();
    saveSession();
    const QString editor = window(kEditor);
    m_Screen.pressKey(editor, "ctrl+z");
    const QString changed = window(kChangedSession);
    m_Screen.pressKey(changed, "ctrl+o");
    enterFile("Open", session());
    m_Screen.pressKey(window("Open Session"), "alt+c");
    // It has changes, and is asked about.
    waitForWindows("Open Session", 0);
    m_Screen.pressKey(window(kWorkbench), "alt+c");
    window(kSession);
    const CellGrid cells = grid(window(kEditor), kRow.left(kTarget));
    waitForColor(cells.ground(0, kTarget), Qt::white);
}

TEST_F(SessionsByHand, ItOpensInAWorkbenchBesideTheOne)
{
    work();
    saveSession();
    m_Screen.pressKey(window(kSession), "ctrl+q");
    EXPECT_EQ(waitForEnd(), 0);
    start({example()});
    grid(window(kEditor), kRow.left(kTarget + 1));
    m_Screen.pressKey(window(kWorkbench), "ctrl+o");
    enterFile("Open", session());
    m_Screen.pressKey(window("Open Session"), "Return");
    const QString other = window(kSession);
    window(kWorkbench);
    window(kEditor, 2);
    // It is no child of the first one.
    send(SIGTERM);
    EXPECT_EQ(waitForEnd(), 0);
    m_Screen.pressKey(other, "ctrl+q");
    waitUntil([&] { return m_Screen.findWindows(kSession).isEmpty(); });
}

} // namespace SessionsByHandTest
