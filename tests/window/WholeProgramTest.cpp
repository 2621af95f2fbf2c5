// SPDX-License-Identifier: GPL-3.0-or-later
// The program as a user sees it: real windows, real mouse and keys, judged by the picture.
#include "FileReader.h"
#include "WindowFixture.h"
#include "support/WaitUntil.h"

#include <QFileInfo>

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace WholeProgramTest {

// The beginnings of the example's rows.
const QStringList kRows = {
    "IVGGYECRKNSASYQASLQSG---------YHFCGG", "IVEGSDAEIGMSPWQVMLFRKSP---Q-EL--LCGA",
    "VVGGEDARPNSWPWQVSLQYD-SSGQ-WRH--TCGG", "IIGGRESRPHSRPYMAYLQIQSP---A-G-QSRCGG",
    "IVGGRRARPHAWPFMVSLQL------RGGH--FCGA", "IVGGTASVRGEWPWQVTLHTTSP--TQ-RH--LCGG"};

constexpr const char *kWorkbench = "Tambo";
constexpr const char *kEditor = "Alignment Editor";
// Of the first row: a gap, and a residue far to its left.
constexpr int kGap = 29;
constexpr int kTarget = 10;

class WholeProgram : public WindowFixture
{
protected:
    // The example, with the residues between target and gap moved by one.
    CellGrid openAndEdit()
    {
        start({example()});
        const CellGrid cells = grid(window(kEditor), kRows[0].left(12));
        m_Screen.drag(cells.middle(0, kGap), cells.middle(0, kTarget));
        waitForColor(cells.ground(0, kTarget), Qt::white);
        return cells;
    }
};

TEST_F(WholeProgram, TheExampleIsPaintedCellByCell)
{
    start({example()});
    const QString editor = window(kEditor);
    const CellGrid grid = this->grid(editor, kRows[0].left(12));
    const QImage image = m_Screen.picture();
    for (int row = 0; row < kRows.size(); ++row) {
        for (int column = 0; column < kRows[row].size(); ++column) {
            const char letter = kRows[row][column].toLatin1();
            const QColor expected = letter == '-' ? QColor(Qt::white) : colorOf(letter);
            EXPECT_EQ(image.pixelColor(grid.ground(row, column)), expected)
                << "row " << row << " column " << column;
        }
    }
}

TEST_F(WholeProgram, AtTheFirstStartTheWindowsStandBesideEachOther)
{
    start({example()});
    const QString editor = window(kEditor);
    const QString workbench = window(kWorkbench);
    grid(editor, kRows[0].left(12));
    const QRect screen(0, 0, 1920, 1080);
    const QRect left = m_Screen.geometryOf(workbench);
    const QRect right = m_Screen.geometryOf(editor);
    EXPECT_TRUE(screen.contains(left));
    EXPECT_TRUE(screen.contains(right));
    EXPECT_LT(left.right(), right.left());
    EXPECT_EQ(left.top(), right.top());
    EXPECT_GE(right.width(), 800);
    EXPECT_GE(right.height(), 400);
}

TEST_F(WholeProgram, TheWorkbenchComesUpBelowTheEditorAndLeavesItTheKeyboard)
{
    start({example()});
    const QString editor = window(kEditor);
    const QString workbench = window(kWorkbench);
    waitUntil([&] { return isSettled() || !isRunning(); });
    EXPECT_EQ(m_Screen.activeWindow(), editor);
    EXPECT_EQ(m_Screen.stackedWindows(), QStringList({workbench, editor}));
}

TEST_F(WholeProgram, AGapIsDraggedAndUndoneWithTheKeys)
{
    start({example()});
    const QString editor = window(kEditor);
    const CellGrid grid = this->grid(editor, kRows[0].left(12));
    waitForColor(grid.ground(0, kTarget), colorOf(kRows[0][kTarget].toLatin1()));
    m_Screen.drag(grid.middle(0, kGap), grid.middle(0, kTarget));
    waitForColor(grid.ground(0, kTarget), Qt::white);
    const QImage image = m_Screen.picture();
    for (int column = kTarget; column < kGap; ++column) {
        const char letter = kRows[0][column].toLatin1();
        EXPECT_EQ(image.pixelColor(grid.ground(0, column + 1)),
                  letter == '-' ? QColor(Qt::white) : colorOf(letter))
            << "column " << column + 1;
    }
    m_Screen.pressKey(editor, "ctrl+z");
    waitForColor(grid.ground(0, kTarget), colorOf(kRows[0][kTarget].toLatin1()));
    m_Screen.pressKey(editor, "ctrl+shift+z");
    waitForColor(grid.ground(0, kTarget), Qt::white);
}

TEST_F(WholeProgram, UndoInTheWorkbenchReachesTheEditor)
{
    const CellGrid grid = openAndEdit();
    m_Screen.pressKey(window(kWorkbench), "ctrl+z");
    waitForColor(grid.ground(0, kTarget), colorOf(kRows[0][kTarget].toLatin1()));
}

TEST_F(WholeProgram, PickingAStructureMarksItsRowInTheEditor)
{
    start({example()});
    const QString editor = window(kEditor);
    const CellGrid grid = this->grid(editor, kRows[0].left(12));
    const QRect workbench = m_Screen.geometryOf(window(kWorkbench));
    // The first row of the tree, below menu bar, tool bar and heading.
    QPoint place(workbench.left() + 100, workbench.top() + 90);
    m_Screen.click(place);
    const QColor plain = colorOf('I');
    const QColor marked = selectedColorOf('I');
    waitUntil(
        [&] { return m_Screen.picture().pixelColor(grid.ground(0, 0)) != plain || !isRunning(); });
    const QColor shown = m_Screen.picture().pixelColor(grid.ground(0, 0));
    EXPECT_NEAR(shown.red(), marked.red(), 1);
    EXPECT_NEAR(shown.green(), marked.green(), 1);
    EXPECT_NEAR(shown.blue(), marked.blue(), 1);
    EXPECT_EQ(m_Screen.picture().pixelColor(grid.ground(1, 0)), colorOf('I'));
}

TEST_F(WholeProgram, ADoubleClickOnAnAlignmentOpensAnotherEditor)
{
    start({write("x.fasta", ">a\nAC-DEFGHIK\n>b\nACCDEFGHIK\n")});
    const QString first = window(kEditor);
    grid(first, "AC");
    const QRect workbench = m_Screen.geometryOf(window(kWorkbench));
    m_Screen.doubleClick(QPoint(workbench.left() + 100, workbench.top() + 90));
    window(kEditor, 2);
    const QStringList editors = m_Screen.findWindows(kEditor);
    ASSERT_EQ(editors.size(), 2);
    for (const QString &editor : editors)
        grid(editor, "AC");
    EXPECT_NE(m_Screen.geometryOf(editors[0]).topLeft(), m_Screen.geometryOf(editors[1]).topLeft());
}

TEST_F(WholeProgram, QuittingAsksAboutAnEditedAlignment)
{
    openAndEdit();
    const QString workbench = window(kWorkbench);
    m_Screen.pressKey(workbench, "ctrl+q");
    m_Screen.pressKey(window(kWorkbench, 2), "Escape");
    waitForWindows(kWorkbench, 1);
    m_Screen.pressKey(workbench, "ctrl+q");
    m_Screen.pressKey(window(kWorkbench, 2), "alt+q");
    EXPECT_EQ(waitForEnd(), 0);
}

TEST_F(WholeProgram, AnInterruptAtTheTerminalAsksAboutAnEditedAlignment)
{
    const CellGrid grid = openAndEdit();
    for (const int signal : {SIGINT, SIGHUP, SIGTERM}) {
        send(signal);
        m_Screen.pressKey(window(kWorkbench, 2), "Escape");
        waitForWindows(kWorkbench, 1);
    }
    waitForColor(grid.ground(0, kTarget), Qt::white);
    send(SIGTERM);
    m_Screen.pressKey(window(kWorkbench, 2), "alt+q");
    EXPECT_EQ(waitForEnd(), 0);
}

TEST_F(WholeProgram, AnInterruptAtTheTerminalEndsItWhenAllIsSaved)
{
    start({example()});
    const QString editor = window(kEditor);
    grid(editor, kRows[0].left(12));
    // A dialog of the editor is no obstacle.
    chooseSave(editor);
    window("Save As");
    send(SIGINT);
    EXPECT_EQ(waitForEnd(), 0);
}

// Holds the program at the first bytes of what it writes into a folder.
class HeldFolder
{
public:
    explicit HeldFolder(QProcess &program)
    {
        QProcessEnvironment environment = program.processEnvironment();
        environment.insert("LD_PRELOAD", HELD_WRITES);
        environment.insert("HELD_FOLDER", QFileInfo(m_Folder.path()).canonicalFilePath());
        environment.insert("HELD_UNTIL", m_Pipe);
        program.setProcessEnvironment(environment);
        EXPECT_EQ(mkfifo(m_Pipe.toLocal8Bit().constData(), 0600), 0);
    }
    ~HeldFolder() { letGo(); }
    HeldFolder(const HeldFolder &) = delete;
    HeldFolder &operator=(const HeldFolder &) = delete;

    [[nodiscard]] QString filePath(const QString &name) const { return m_Folder.filePath(name); }
    // A pipe can be opened like that when somebody reads it: the program, which is held then.
    [[nodiscard]] bool isHolding()
    {
        if (m_End < 0)
            m_End = open(m_Pipe.toLocal8Bit().constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        return m_End >= 0;
    }
    void letGo()
    {
        if (m_End >= 0)
            close(m_End);
        m_End = -1;
    }

private:
    QTemporaryDir m_Folder;
    QTemporaryDir m_PipeFolder;
    QString m_Pipe = m_PipeFolder.filePath("pipe");
    int m_End = -1;
};

// The row is written after the first bytes, and in sight.
TEST_F(WholeProgram, AnExportGoesOnWhileTheAlignmentIsEdited)
{
    constexpr int rows = 30;
    constexpr int edited = 20;
    const QByteArray row = "AC-DEFGHIK" + QByteArray("LMNPQRSTVW").repeated(6000) + '\n';
    QByteArray text;
    for (int i = 0; i < rows; ++i)
        text += ">row" + QByteArray::number(i) + '\n' + row;
    HeldFolder held(m_Program);
    start({write("x.fasta", text)});
    const QString editor = window(kEditor);
    const CellGrid grid = this->grid(editor, "AC");
    m_Screen.pressKey(window(kWorkbench), "ctrl+shift+e");
    const QString file = held.filePath("out.ali");
    const QString dialog = window("Export");
    waitUntil([&] { return isSettled(); });
    // All of the name is selected; those that are offered to complete it take the next key.
    m_Screen.pasteText(dialog, file);
    while (waitUntil([&] { return isSettled(); }) && !m_Screen.findPopups().isEmpty())
        m_Screen.pressKey("Escape");
    m_Screen.pressKey("Return");
    ASSERT_TRUE(waitUntil([&] { return held.isHolding() || !isRunning(); }));
    waitForWindows("Export", 0);
    m_Screen.activate(editor);
    m_Screen.drag(grid.middle(edited, 2), grid.middle(edited, 5));
    waitForColor(grid.ground(edited, 5), Qt::white);
    EXPECT_FALSE(QFileInfo::exists(file));
    held.letGo();
    // It takes its name when it is complete.
    waitUntil([&] { return QFileInfo::exists(file) || !isRunning(); });
    TAMBO::Result<TAMBO::FileContents> written = TAMBO::readFile(file.toStdString());
    ASSERT_TRUE(written.has_value());
    ASSERT_EQ(written->alignments.front().rows.size(), std::size_t(rows));
    for (const TAMBO::RowRecord &record : written->alignments.front().rows)
        EXPECT_EQ(record.sequence.text(), row.trimmed().toStdString());
    EXPECT_EQ(m_Screen.picture().pixelColor(grid.ground(edited, 5)), QColor(Qt::white));
}

TEST_F(WholeProgram, WhatIsSavedReadsBackTheSameAndQuittingAsksNothing)
{
    openAndEdit();
    const QString editor = window(kEditor);

    const QString saved = m_Folder.filePath("saved.ali");
    const QStringList rows = save(editor, saved);
    ASSERT_EQ(rows.size(), kRows.size());
    QString first = kRows[0];
    first.remove(kGap, 1).insert(kTarget, u'-');
    EXPECT_TRUE(rows[0].startsWith(first)) << rows[0].toStdString();
    EXPECT_TRUE(rows[1].startsWith(kRows[1])) << rows[1].toStdString();
    // The rows keep their ties to the structures.
    TAMBO::Result<TAMBO::FileContents> contents = TAMBO::readFile(saved.toStdString());
    ASSERT_TRUE(contents.has_value());
    EXPECT_EQ(contents->alignments.front().rows[0].link->structure, "1A0J_A_superposed.pdb");

    m_Screen.pressKey(window(kWorkbench), "ctrl+q");
    EXPECT_EQ(waitForEnd(), 0);
}

TEST_F(WholeProgram, AnEditedAlignmentGoesBackToItsFileByKeys)
{
    const QString file = m_Folder.filePath("proteases.ali");
    ASSERT_TRUE(QFile::copy(example(), file));
    const auto rows = [&] {
        TAMBO::Result<TAMBO::FileContents> contents = TAMBO::readFile(file.toStdString());
        QStringList texts;
        if (contents.has_value())
            for (const TAMBO::RowRecord &row : contents->alignments.front().rows)
                texts << QString::fromStdString(row.sequence.text());
        return texts;
    };
    const QStringList before = rows();
    start({file});
    const CellGrid cells = grid(window(kEditor), kRows[0].left(12));
    m_Screen.drag(cells.middle(0, kGap), cells.middle(0, kTarget));
    waitForColor(cells.ground(0, kTarget), Qt::white);
    const QString workbench = window(kWorkbench);
    m_Screen.pressKey(workbench, "ctrl+s");
    QStringList edited = before;
    edited[0].remove(kGap, 1).insert(kTarget, u'-');
    waitUntil([&] { return rows() == edited || !isRunning(); });
    EXPECT_EQ(rows(), edited);

    // Changed behind the program's back, it is left alone until the user says otherwise.
    m_Screen.pressKey(workbench, "ctrl+z");
    waitForColor(cells.ground(0, kTarget), colorOf(kRows[0][kTarget].toLatin1()));
    const QByteArray others = ">P1;other\nsequence:other::::::::\nACD*\n";
    write("proteases.ali", others);
    m_Screen.pressKey(workbench, "ctrl+s");
    m_Screen.pressKey(window("Save"), "Escape");
    waitForWindows("Save", 0);
    QFile left(file);
    ASSERT_TRUE(left.open(QIODevice::ReadOnly));
    EXPECT_EQ(left.readAll(), others);
    m_Screen.pressKey(workbench, "ctrl+s");
    m_Screen.pressKey(window("Save"), "alt+o");
    waitUntil([&] { return rows() == before || !isRunning(); });
    EXPECT_EQ(rows(), before);
    m_Screen.pressKey(workbench, "ctrl+q");
    EXPECT_EQ(waitForEnd(), 0) << "nothing is unsaved";
}

TEST_F(WholeProgram, AnAlignmentThatIsClickedInTheTreeIsSavedByTheMenu)
{
    const QString file = write("x.fasta", ">a\nACDE-FGHIK\n>b\nACDEEFGHIK\n");
    const auto firstRow = [&] {
        TAMBO::Result<TAMBO::FileContents> contents = TAMBO::readFile(file.toStdString());
        return contents.has_value() ? contents->alignments.front().rows[0].sequence.text() : "";
    };
    start({file});
    const CellGrid cells = grid(window(kEditor), "ACDE");
    m_Screen.drag(cells.middle(0, 4), cells.middle(0, 2));
    waitForColor(cells.ground(0, 2), Qt::white);
    const QString workbench = window(kWorkbench);
    const QRect place = m_Screen.geometryOf(workbench);
    m_Screen.click(QPoint(place.left() + 100, place.top() + 90));
    m_Screen.pressKey(workbench, "alt+f");
    m_Screen.pressKey("s");
    waitUntil([&] { return firstRow() == "AC-DEFGHIK" || !isRunning(); });
    EXPECT_EQ(firstRow(), "AC-DEFGHIK");
}

// The editor has its own use for the keys.
TEST_F(WholeProgram, TheKeysOfSaveMakeAnAlignmentInTheEditor)
{
    start({example()});
    const QString editor = window(kEditor);
    grid(editor, kRows[0].left(12));
    m_Screen.pressKey(editor, "ctrl+s");
    m_Screen.pressKey(window("sequences"), "Escape");
    waitForWindows("sequences", 0);
}

TEST_F(WholeProgram, QuittingWithoutChangesAsksNothing)
{
    start({example()});
    grid(window(kEditor), kRows[0].left(12));
    m_Screen.pressKey(window(kWorkbench), "ctrl+q");
    EXPECT_EQ(waitForEnd(), 0);
}

TEST_F(WholeProgram, PlacesOfWindowsAreRemembered)
{
    const QString file = write("x.fasta", ">a\nAC-DEFGHIK\n>b\nACCDEFGHIK\n");
    start({file});
    const QString editor = window(kEditor);
    grid(editor, "AC");
    const QRect before = m_Screen.geometryOf(editor);
    m_Screen.moveWindow(editor, before.topLeft() + QPoint(40, 150));
    QRect moved;
    waitUntil([&] {
        moved = m_Screen.geometryOf(editor);
        return moved.left() != before.left() && moved.top() != before.top();
    });
    m_Screen.pressKey(window(kWorkbench), "ctrl+q");
    EXPECT_EQ(waitForEnd(), 0);
    start({file});
    const QString again = window(kEditor);
    grid(again, "AC");
    EXPECT_EQ(m_Screen.geometryOf(again), moved);
}

TEST_F(WholeProgram, ABadFileIsNamedInABoxAndInTheExitStatus)
{
    start({write("bad.ali", ">P1;a\n\nAC#D*\n")});
    m_Screen.pressKey(window(kWorkbench, 2), "Return");
    waitForWindows(kWorkbench, 1);
    m_Screen.pressKey(window(kWorkbench), "ctrl+q");
    EXPECT_EQ(waitForEnd(), 1);
    EXPECT_TRUE(m_Program.readAllStandardError().contains("tambo: bad.ali:3: "));
}

TEST_F(WholeProgram, ThePictureShowsBothWindows)
{
    const QString file = m_Folder.filePath("picture.png");
    start({"--picture", file, example()});
    EXPECT_EQ(waitForEnd(), 0);
    const QImage image(file);
    ASSERT_FALSE(image.isNull());
    EXPECT_GT(image.width(), 1200);
    EXPECT_LT(image.width(), 1920);
    // The cysteine in the column of the first disulfide bridge, in all six rows.
    int cells = 0;
    const QColor cysteine = colorOf('C');
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 1; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == cysteine && image.pixelColor(x - 1, y) != cysteine)
                ++cells;
        }
    }
    EXPECT_GT(cells, 100);
}

TEST_F(WholeProgram, APictureOfABadFileIsNotMade)
{
    const QString file = m_Folder.filePath("picture.png");
    start({"--picture", file, m_Folder.filePath("none.ali")});
    EXPECT_EQ(waitForEnd(), 1);
    EXPECT_FALSE(QFileInfo::exists(file));
    EXPECT_EQ(m_Program.readAllStandardError().count("tambo: "), 1);
}

TEST_F(WholeProgram, APictureThatCannotBeWrittenIsAnError)
{
    start({"--picture", m_Folder.filePath("none/picture.png"), example()});
    EXPECT_EQ(waitForEnd(), 1);
    EXPECT_TRUE(m_Program.readAllStandardError().contains("none/picture.png"));
}

} // namespace WholeProgramTest
