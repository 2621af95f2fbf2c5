// SPDX-License-Identifier: GPL-3.0-or-later
// The program is killed in the middle of work, as a user sees what comes after it.
#include "WindowFixture.h"
#include "support/WaitUntil.h"

#include <QDateTime>
#include <QDir>
#include <QImage>

#include <algorithm>
#include <csignal>
#include <vector>

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

// ---- Several windows

class WindowsByHand : public RecoveryByHand
{
protected:
    // An editor window as it is seen when nothing is in front of it.
    struct Look
    {
        QRect place;
        QImage picture;

        friend bool operator==(const Look &, const Look &) = default;
    };

    // Of the workbench, below menu bar, tool bar and heading.
    static constexpr QPoint kTreeRow{100, 90};

    // More than a window shows, of letters that are others in each place.
    QString family()
    {
        const QString letters = "ACDEFGHIKLMNPQRSTVWY";
        QByteArray text;
        for (int row = 0; row < 150; ++row) {
            text += QString(">row%1\n").arg(row).toLatin1();
            for (int column = 0; column < 400; ++column) {
                const int letter = column + (row * row + column / 17) % 7;
                text += letters[letter % letters.size()].toLatin1();
            }
            text += '\n';
        }
        return write("family.fasta", text);
    }
    Look look(const QString &editor)
    {
        m_Screen.activate(editor);
        m_Screen.moveMouse({1919, 1079});
        const QImage picture = settled([&] { return m_Screen.picture(); });
        const QRect place = m_Screen.geometryOf(editor);
        return {place, picture.copy(place)};
    }
    void moveTo(const QString &editor, QPoint place)
    {
        const QRect before = m_Screen.geometryOf(editor);
        m_Screen.moveWindow(editor, place);
        waitUntil([&] { return m_Screen.geometryOf(editor) != before || !isRunning(); });
    }
    // With the wheel, so many notches each.
    void scroll(const QString &editor, int down, int right)
    {
        const Look before = look(editor);
        const QPoint middle = before.place.center();
        for (int i = 0; i < down; ++i)
            m_Screen.click(middle, 5);
        for (int i = 0; i < right; ++i)
            m_Screen.click(middle, 7);
        EXPECT_NE(look(editor).picture, before.picture);
    }
    // The latest change of what would be recovered.
    [[nodiscard]] QDateTime written() const
    {
        QDateTime latest;
        const QDir folder(m_Folder.filePath("user/state/sessions"));
        for (const QFileInfo &file : folder.entryInfoList(QDir::Files))
            latest = std::max(latest, file.lastModified());
        return latest;
    }
    // What windows show is written now and then; once more after this window has been moved.
    void waitUntilWritten(const QString &editor, QPoint place)
    {
        const QDateTime now = QDateTime::currentDateTime();
        moveTo(editor, place);
        waitUntil([&] { return written() > now || !isRunning(); });
    }
};

TEST_F(WindowsByHand, StandWhereTheyStoodAndShowTheSamePlacesAfterTheProgramWasKilled)
{
    start({family()});
    window(kEditor);
    const QString workbench = window(kWorkbench);
    for (const int count : {2, 3}) {
        m_Screen.activate(workbench);
        m_Screen.doubleClick(m_Screen.geometryOf(workbench).topLeft() + kTreeRow);
        window(kEditor, count);
    }
    const QStringList editors = m_Screen.findWindows(kEditor);
    ASSERT_EQ(editors.size(), 3);
    moveTo(editors[0], {20, 60});
    moveTo(editors[1], {400, 200});
    scroll(editors[0], 3, 5);
    scroll(editors[1], 9, 2);
    const Look unselected = look(editors[1]);
    m_Screen.click(unselected.place.center(), 1);
    const std::vector<Look> before = {look(editors[0]), look(editors[1])};
    EXPECT_NE(before[1].picture, unselected.picture);
    EXPECT_NE(before[0].place, before[1].place);
    waitUntilWritten(editors[2], {700, 300});
    die();

    start({});
    m_Screen.pressKey(window("Recover"), "Return");
    window(kEditor, 3);
    std::vector<Look> after;
    for (const QString &editor : m_Screen.findWindows(kEditor))
        after.push_back(look(editor));
    for (const Look &one : before) {
        EXPECT_EQ(std::ranges::count(after, one.place, &Look::place), 1);
        EXPECT_EQ(std::ranges::count(after, one), 1) << "it shows something else";
    }
}

} // namespace RecoveryByHandTest
