// SPDX-License-Identifier: GPL-3.0-or-later
// Scripts and the console as a user meets them: from the menu, by keys, on what is loaded.
#include "WindowFixture.h"
#include "support/WaitUntil.h"

#include <QFile>

#include <csignal>

namespace ScriptsByHandTest {

constexpr const char *kWorkbench = "Tambo";
// Of the first two rows of the example.
const QString kRow = "IVGGYECRKN";
constexpr const char *kRows = "IV";

class ScriptsByHand : public WindowFixture
{
protected:
    void open()
    {
        start({example()});
        m_Editor = window("Alignment Editor");
        m_Cells = grid(m_Editor, kRow);
        m_Main = window(kWorkbench);
    }
    void runScript(const QString &name, const QByteArray &text)
    {
        const QString file = write(name, text);
        chooseInMenu("alt+t", "u");
        enterFile("Run Script", file);
    }
    void openConsole() { chooseInMenu("alt+v", "c"); }
    void chooseInMenu(const char *menu, const char *entry)
    {
        m_Screen.pressKey(m_Main, menu);
        waitUntil([&] { return !m_Screen.findPopups().isEmpty() || !isRunning(); });
        m_Screen.pressKey(entry);
        waitUntil([&] { return m_Screen.findPopups().isEmpty() || !isRunning(); });
    }
    void clickInput()
    {
        const QRect area = m_Screen.geometryOf(m_Main);
        m_Screen.click({area.center().x(), area.bottom() - 46});
    }
    void enterLine(const QString &text)
    {
        m_Screen.typeText(m_Main, text);
        m_Screen.pressKey("Return");
    }
    // What stands in the console, by way of the clipboard. It is the lower part of the window.
    QString output()
    {
        const QRect area = m_Screen.geometryOf(m_Main);
        m_Screen.click({area.center().x(), area.bottom() - 130});
        m_Screen.pressKey("ctrl+a ctrl+c");
        waitUntil([&] { return isSettled() || !isRunning(); });
        QProcess clipboard;
        clipboard.setProcessEnvironment(m_Program.processEnvironment());
        clipboard.start("xclip", {"-selection", "clipboard", "-out"});
        clipboard.waitForFinished(kPatienceMilliseconds);
        // As it was.
        m_Screen.pressKey("Home");
        return QString::fromUtf8(clipboard.readAllStandardOutput());
    }
    void waitForOutput(const QString &text)
    {
        QString last;
        waitUntil([&] {
            last = output();
            return last.contains(text) || !isRunning();
        });
        EXPECT_TRUE(last.contains(text)) << last.toStdString();
    }
    void waitForFile(const QString &name)
    {
        waitUntil([&] { return QFile::exists(m_Folder.filePath(name)) || !isRunning(); });
    }
    // Whether the first cells of the first rows have their letters, or are gaps.
    void waitForGaps(bool areThere)
    {
        for (int row = 0; row < 2; ++row)
            waitForColor(m_Cells.ground(row, 0), areThere ? QColor(Qt::white) : colorOf(kRows[0]));
    }

    QString m_Main;
    QString m_Editor;
    CellGrid m_Cells;
};

TEST_F(ScriptsByHand, AScriptFromTheMenuChangesTheAlignmentInOneStep)
{
    open();
    runScript("shift.py", "import sys\n"
                          "import tambo\n"
                          "family = tambo.alignments()[0]\n"
                          "print('of', len(family), 'rows', sys.argv[1:])\n"
                          "for row in range(2):\n"
                          "    family.insert_gaps(row=row, column=0, count=1)\n");
    waitForGaps(true);
    const QString said = output();
    EXPECT_EQ(said, "Running shift.py\nof 6 rows []\nshift.py is done: one step of undo.");
    m_Screen.pressKey(m_Main, "ctrl+z");
    waitForGaps(false);
    m_Screen.pressKey(m_Main, "ctrl+shift+z");
    waitForGaps(true);
}

TEST_F(ScriptsByHand, WhatIsTypedIsCompletedAndKeptForTheNextRun)
{
    open();
    openConsole();
    enterLine("family = tambo.alignments()[0]");
    m_Screen.typeText(m_Main, "family.sha");
    m_Screen.pressKey("Tab Return");
    waitForOutput(">>> family.shape\n(6, 303)");
    m_Screen.pressKey(m_Main, "ctrl+q");
    EXPECT_EQ(waitForEnd(), 0);

    // The console is where it was.
    open();
    clickInput();
    enterLine("1+1");
    m_Screen.pressKey("Up Up");
    m_Screen.pressKey("Return");
    waitForOutput(">>> 1+1\n2\n>>> family.shape\nTraceback");
}

TEST_F(ScriptsByHand, AnEndlessScriptHoldsEditsAndIsStoppedByEscape)
{
    open();
    runScript("endless.py", "import tambo\n"
                            "tambo.alignments()[0].insert_gaps(row=0, column=0, count=1)\n"
                            "open(__file__ + '.begun', 'w').close()\n"
                            "while True:\n"
                            "    pass\n");
    waitForFile("endless.py.begun");
    // Would insert a gap, select, and undo.
    m_Screen.click(m_Cells.middle(1, 0), 2);
    m_Screen.click(m_Cells.middle(2, 3));
    m_Screen.pressKey(m_Main, "ctrl+z");
    m_Screen.pressKey(m_Main, "Escape");
    waitForOutput("endless.py was stopped. What it had changed is taken back.");
    waitForGaps(false);
    waitForColor(m_Cells.ground(2, 3), colorOf('G'));
    // The workbench goes on: a step, of which the next undo is the first.
    m_Screen.click(m_Cells.middle(1, 0), 2);
    waitForColor(m_Cells.ground(1, 0), Qt::white);
    m_Screen.pressKey(m_Main, "ctrl+z");
    waitForGaps(false);
}

TEST_F(ScriptsByHand, AnExceptionShowsItsLineAndTakesTheStepBack)
{
    open();
    runScript("wrong.py", "import tambo\n"
                          "tambo.alignments()[0].insert_gaps(row=0, column=0, count=1)\n"
                          "raise ValueError('no such site')\n");
    waitForOutput("ValueError: no such site\nwrong.py, line 3: ValueError: no such site\n"
                  "What it had changed is taken back.");
    waitForGaps(false);
}

TEST_F(ScriptsByHand, WhatWasDoneBeforeAScriptTookTheWorkbenchAlongIsRecovered)
{
    open();
    runScript("shift.py", "import tambo\n"
                          "tambo.alignments()[0].insert_gaps(row=0, column=4, count=1)\n");
    waitForColor(m_Cells.ground(0, 4), Qt::white);
    waitUntil([this] { return isSettled() || !isRunning(); });
    runScript("crash.py", "import os\n"
                          "import time\n"
                          "import tambo\n"
                          "tambo.alignments()[0].insert_gaps(row=0, column=6, count=1)\n"
                          "open(__file__ + '.begun', 'w').close()\n"
                          "while not os.path.exists(__file__ + '.go'):\n"
                          "    time.sleep(0.02)\n"
                          "os.abort()\n");
    waitForFile("crash.py.begun");
    write("crash.py.go", "");
    ASSERT_TRUE(m_Program.waitForFinished(kPatienceMilliseconds));
    EXPECT_EQ(m_Program.exitStatus(), QProcess::CrashExit);

    start({});
    m_Screen.pressKey(window("Recover"), "Return");
    m_Cells = grid(window("Alignment Editor"), kRow.left(4));
    waitForColor(m_Cells.ground(0, 4), Qt::white);
    waitForColor(m_Cells.ground(0, 5), colorOf(kRow[4].toLatin1()));
    waitForColor(m_Cells.ground(0, 6), colorOf(kRow[5].toLatin1()));
}

TEST_F(ScriptsByHand, WhoEndsTheWorkbenchFromOutsideEndsTheScriptFirst)
{
    open();
    runScript("stubborn.py", "open(__file__ + '.begun', 'w').close()\n"
                             "while True:\n"
                             "    try:\n"
                             "        while True:\n"
                             "            pass\n"
                             "    except KeyboardInterrupt:\n"
                             "        pass\n");
    waitForFile("stubborn.py.begun");
    send(SIGTERM);
    EXPECT_EQ(waitForEnd(), 0);
}

// Whatever stands in files: not even what runs scripts is opened.
TEST_F(ScriptsByHand, NoFileThatIsOpenedStartsAScript)
{
    const QString trace = m_Folder.filePath("trace");
    const QByteArray line = "__import__('os').system('touch " + trace.toLocal8Bit() + "')";
    const QString rows = write("rows.fasta", ">" + line + "\nACDEFGHIKL\n>two\nACDEFGHIKL\n");
    const QString remarks =
        write("remarks.sto", "# STOCKHOLM 1.0\n#=GF CC " + line + "\n#=GS one DE " + line +
                                 "\none ACDEF\ntwo ACDEF\n//\n");
    const QString structure =
        write("structure.pdb",
              "REMARK   1 " + line + "\nATOM      1  CA  ALA A   1       0.000   0.000   0.000\n");
    const auto mappings = [this] {
        QFile file(QStringLiteral("/proc/%1/maps").arg(m_Program.processId()));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    };
    start({rows, remarks, structure});
    m_Main = window(kWorkbench);
    waitUntil([&] { return isSettled() || !isRunning(); });
    EXPECT_TRUE(mappings().contains("libtambo-core.so"));
    EXPECT_FALSE(mappings().contains("libtambo-scripting.so"));
    EXPECT_FALSE(QFile::exists(trace));
    // As a session, too.
    const QString session = m_Folder.filePath("work.tambo");
    m_Screen.pressKey(m_Main, "ctrl+alt+s");
    enterFile("Save Session", session);
    send(SIGTERM);
    EXPECT_EQ(waitForEnd(), 0);
    start({session});
    window("work.tambo – Tambo");
    EXPECT_FALSE(mappings().contains("libtambo-scripting.so"));
    EXPECT_FALSE(QFile::exists(trace));
}

} // namespace ScriptsByHandTest
