// SPDX-License-Identifier: GPL-3.0-or-later
// The program is killed in the middle of work, as a user sees what comes after it.
#include "WindowFixture.h"
#include "support/WaitUntil.h"

#include <QDir>

#include <csignal>

namespace RecoveryByHandTest {

constexpr const char *kWorkbench = "Tambo";
constexpr const char *kEditor = "Alignment Editor";
// Of the first row of the example: a gap, and a residue far to its left.
constexpr int kGap = 29;
constexpr int kTarget = 10;
const QString kRow = "IVGGYECRKNSASYQASLQSG---------YHFCGG";

class RecoveryByHand : public WindowFixture
{
protected:
    // When all has come to the disk.
    void die()
    {
        waitUntil([this] { return isSettled() || !isRunning(); });
        send(SIGKILL);
        ASSERT_TRUE(m_Program.waitForFinished(kPatienceMilliseconds));
    }
    // The example, with the residues between target and gap moved by one, and then nothing more.
    void workAndDie()
    {
        start({example()});
        const CellGrid cells = grid(window(kEditor), kRow.left(kTarget));
        m_Screen.drag(cells.middle(0, kGap), cells.middle(0, kTarget));
        waitForColor(cells.ground(0, kTarget), Qt::white);
        die();
        start({});
    }
    [[nodiscard]] QStringList left() const
    {
        return QDir(m_Folder.filePath("user/state/sessions")).entryList(QDir::Files);
    }
};

TEST_F(RecoveryByHand, WhatWasDoneBeforeTheProgramWasKilledIsThereAgain)
{
    workAndDie();
    m_Screen.pressKey(window("Recover"), "Return");
    const QString editor = window(kEditor);
    const CellGrid cells = grid(editor, kRow.left(kTarget));
    waitForColor(cells.ground(0, kTarget), Qt::white);
    m_Screen.pressKey(editor, "ctrl+z");
    waitForColor(cells.ground(0, kTarget), colorOf(kRow[kTarget].toLatin1()));
    m_Screen.pressKey(editor, "ctrl+shift+z");
    waitForColor(cells.ground(0, kTarget), Qt::white);

    // It goes on from there, and can be killed again.
    m_Screen.drag(cells.middle(0, kGap), cells.middle(0, kTarget - 2));
    waitForColor(cells.ground(0, kTarget - 2), Qt::white);
    die();
    start({});
    m_Screen.pressKey(window("Recover"), "Return");
    const CellGrid again = grid(window(kEditor), kRow.left(kTarget - 2));
    waitForColor(again.ground(0, kTarget - 2), Qt::white);
}

TEST_F(RecoveryByHand, NobodyIsAskedAfterAnEndAsItShouldBe)
{
    start({example()});
    grid(window(kEditor), kRow.left(kTarget));
    EXPECT_FALSE(left().isEmpty());
    send(SIGTERM);
    EXPECT_EQ(waitForEnd(), 0);
    EXPECT_EQ(left(), QStringList());
    start({example()});
    grid(window(kEditor), kRow.left(kTarget));
    waitForWindows("Recover", 0);
}

TEST_F(RecoveryByHand, LaterMeansAtTheNextStart)
{
    workAndDie();
    m_Screen.pressKey(window("Recover"), "Escape");
    waitForWindows("Recover", 0);
    send(SIGTERM);
    EXPECT_EQ(waitForEnd(), 0);
    EXPECT_FALSE(left().isEmpty());
    start({});
    window("Recover");
}

TEST_F(RecoveryByHand, WhatIsSavedAsFilesIsThereAndCanBeRecoveredStill)
{
    workAndDie();
    m_Screen.pressKey(window("Recover"), "alt+f");
    const QString question = window("Save as Files", 1);
    m_Screen.typeText(question, m_Folder.path());
    m_Screen.pressKey(question, "Return");
    const auto folders = [this] {
        return QDir(m_Folder.path()).entryList({"recovered-*"}, QDir::Dirs);
    };
    waitUntil([&] { return !folders().isEmpty() || !isRunning(); });
    ASSERT_EQ(folders().size(), 1);
    m_Screen.pressKey(window("Save as Files"), "Return");
    waitForWindows("Save as Files", 0);
    EXPECT_EQ(QDir(m_Folder.filePath(folders().front())).entryList({"*.ali"}).size(), 1);
    m_Screen.pressKey(window("Recover"), "alt+r");
    const CellGrid cells = grid(window(kEditor), kRow.left(kTarget));
    waitForColor(cells.ground(0, kTarget), Qt::white);
}

TEST_F(RecoveryByHand, WhatIsDiscardedIsGone)
{
    workAndDie();
    m_Screen.pressKey(window("Recover"), "alt+d");
    m_Screen.pressKey(window("Discard"), "alt+d");
    waitForWindows("Recover", 0);
    send(SIGTERM);
    EXPECT_EQ(waitForEnd(), 0);
    EXPECT_EQ(left(), QStringList());
}

} // namespace RecoveryByHandTest
