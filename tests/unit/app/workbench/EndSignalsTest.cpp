// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndSignals.h"
#include "support/LogLines.h"
#include "support/WaitUntil.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstring>
#include <sys/wait.h>
#include <unistd.h>

namespace TAMBO::app {
namespace EndSignalsTest {

class EndSignalsTest : public testing::TestWithParam<int>
{
protected:
    EndSignalsTest()
    {
        QObject::connect(&m_Signals, &EndSignals::asked, &m_Signals, [this] { ++m_Count; });
    }
    void waitForRequest() const
    {
        waitUntil([this] { return m_Count != 0; });
    }

    EndSignals m_Signals;
    int m_Count = 0;
};

TEST_P(EndSignalsTest, IsARequestThatComesFromTheEventLoop)
{
    std::raise(GetParam());
    EXPECT_EQ(m_Count, 0);
    waitForRequest();
    EXPECT_EQ(m_Count, 1);
    m_Count = 0;
    std::raise(GetParam());
    waitForRequest();
    EXPECT_EQ(m_Count, 1);
}

TEST_P(EndSignalsTest, ManyTogetherAreOneRequest)
{
    // More than the pipe holds.
    for (int i = 0; i < 70000; ++i)
        std::raise(GetParam());
    waitForRequest();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_Count, 1);
}

TEST_P(EndSignalsTest, StandsInTheLogByItsName)
{
    const LogLines log;
    std::raise(GetParam());
    waitForRequest();
    EXPECT_EQ(log.texts(), QStringList{QStringLiteral("Tambo is asked to end, by the signal SIG%1.")
                                           .arg(QLatin1String(::sigabbrev_np(GetParam())))});
}

INSTANTIATE_TEST_SUITE_P(Signals, EndSignalsTest, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST(EndSignals, NobodyReadingTheOutputIsNoEnd)
{
    const EndSignals ends;
    std::array<int, 2> pipes{};
    ASSERT_EQ(pipe(pipes.data()), 0);
    close(pipes[0]);
    EXPECT_EQ(write(pipes[1], "x", 1), -1);
    close(pipes[1]);
}

TEST(EndSignals, WhatWasIgnoredStaysIgnored)
{
    std::signal(SIGHUP, SIG_IGN);
    {
        EndSignals ends;
        int count = 0;
        QObject::connect(&ends, &EndSignals::asked, &ends, [&count] { ++count; });
        std::raise(SIGHUP);
        std::raise(SIGTERM);
        waitUntil([&count] { return count != 0; });
    }
    EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), SIG_IGN);
}

TEST(EndSignals, AfterwardsTheyEndTheProgramAgain)
{
    const pid_t child = fork();
    if (child == 0) {
        {
            const EndSignals ends;
        }
        std::raise(SIGTERM);
        _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGTERM);
}

} // namespace EndSignalsTest
} // namespace TAMBO::app
