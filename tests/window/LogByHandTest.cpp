// SPDX-License-Identifier: GPL-3.0-or-later
// Lines of the log that are folded into one, opened and folded by mouse and keys.
#include "WindowFixture.h"
#include "support/WaitUntil.h"

namespace LogByHandTest {

// From the lower left corner of the main window to the first line of the log, and to what unfolds
// it.
constexpr QPoint kFirstLine(100, -201);
constexpr QPoint kFold(13, -201);
constexpr QPoint kNextLine(0, 18);
// The example has so many structures beside the alignment.
constexpr int kLines = 7;

class LogByHand : public WindowFixture
{
protected:
    void open()
    {
        start({example()});
        window("Alignment Editor");
        m_Workbench = window("Tambo");
        m_Screen.activate(m_Workbench);
        m_Corner = m_Screen.geometryOf(m_Workbench).bottomLeft();
    }
    [[nodiscard]] QStringList copied()
    {
        m_Screen.pressKey("ctrl+c");
        return m_Screen.clipboardText().split(u'\n', Qt::SkipEmptyParts);
    }
    // Once the log's lines that are picked are so many.
    void waitForCopied(int count)
    {
        waitUntil([&] { return copied().size() == count || !isRunning(); });
        EXPECT_EQ(copied().size(), count) << copied().join('\n').toStdString();
    }
    // The line below the first one is one of those that were folded, or there is none.
    void expectUnfolded(bool isUnfolded)
    {
        m_Screen.pressKey("Home Down");
        waitForCopied(isUnfolded ? 1 : kLines);
        m_Screen.pressKey("Home");
        waitForCopied(kLines);
    }

    QString m_Workbench;
    QPoint m_Corner;
};

TEST_F(LogByHand, AFoldOpensAndClosesByKeys)
{
    open();
    m_Screen.click(m_Corner + kFirstLine);
    waitForCopied(kLines);
    expectUnfolded(false);
    m_Screen.pressKey("Right");
    expectUnfolded(true);
    m_Screen.pressKey("Left");
    expectUnfolded(false);
    m_Screen.pressKey("Return");
    expectUnfolded(true);
    m_Screen.pressKey("Return");
    expectUnfolded(false);
}

TEST_F(LogByHand, AFoldOpensAndClosesByClicks)
{
    open();
    m_Screen.click(m_Corner + kFirstLine);
    waitForCopied(kLines);
    m_Screen.click(m_Corner + kFold);
    m_Screen.click(m_Corner + kFirstLine + kNextLine);
    waitForCopied(1);
    m_Screen.click(m_Corner + kFold);
    m_Screen.click(m_Corner + kFirstLine);
    expectUnfolded(false);
    m_Screen.doubleClick(m_Corner + kFirstLine);
    expectUnfolded(true);
    m_Screen.doubleClick(m_Corner + kFirstLine);
    expectUnfolded(false);
}

} // namespace LogByHandTest
