// SPDX-License-Identifier: GPL-3.0-or-later
// A file that is opened while a workbench runs, as by a double click in a folder.
#include "WindowFixture.h"
#include "support/WaitUntil.h"

namespace HandoverByHandTest {

class HandoverByHand : public WindowFixture
{
protected:
    ~HandoverByHand() override
    {
        m_Second.kill();
        m_Second.waitForFinished();
    }

    void startSecond(const QStringList &arguments)
    {
        m_Second.setProcessEnvironment(m_Program.processEnvironment());
        m_Second.start(BUILD_DIR "/bin/tambo", arguments);
        ASSERT_TRUE(m_Second.waitForStarted(kPatienceMilliseconds));
    }

    QProcess m_Second;
};

TEST_F(HandoverByHand, AFileOpensInTheWorkbenchThatRunsAndTheCallEnds)
{
    start({});
    window("Tambo");
    const QString file = write("family.fasta", ">a\nACDEFGHIKL\n>b\nAC-EFGHIKL\n");
    startSecond({file});
    ASSERT_TRUE(m_Second.waitForFinished(kPatienceMilliseconds));
    EXPECT_EQ(m_Second.exitCode(), 0);
    grid(window("Alignment Editor"), "ACDE");
    EXPECT_EQ(m_Screen.findWindows("Tambo").size(), 1);
    EXPECT_TRUE(isRunning());
}

TEST_F(HandoverByHand, ANewWorkbenchOpensWhenItIsAskedFor)
{
    start({});
    window("Tambo");
    startSecond({"--new", example()});
    window("Tambo", 2);
    EXPECT_EQ(m_Second.state(), QProcess::Running);
}

} // namespace HandoverByHandTest
