// SPDX-License-Identifier: GPL-3.0-or-later
// Jobs that run, fail and are cancelled.
#include "JobList.h"

#include "support/WaitUntil.h"

#include <QProcess>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace JobListTest {

using TAMBO::services::JobList;

class JobListTest : public testing::Test
{
protected:
    // In the shell's language; says something when it is ready.
    void start(const QString &script)
    {
        m_Program.start("/bin/sh", {"-c", script});
        ASSERT_TRUE(m_Program.waitForReadyRead(kPatienceMilliseconds));
    }

    JobList m_Jobs;
    QProcess m_Program;
};

TEST_F(JobListTest, AJobThatFailsLeavesTheListAndIsKeptAmongTheFailures)
{
    QSignalSpy failed(&m_Jobs, &JobList::failed);
    const auto job = m_Jobs.begin("Kestram");
    m_Jobs.fail(job, "No model was built: out of paper.", {"one", "two"});
    EXPECT_TRUE(m_Jobs.jobs().empty());
    ASSERT_EQ(m_Jobs.failures().size(), 1U);
    EXPECT_EQ(m_Jobs.failures()[0].title, "Kestram");
    EXPECT_EQ(m_Jobs.failures()[0].what, "No model was built: out of paper.");
    EXPECT_EQ(m_Jobs.failures()[0].lastLines, (QStringList{"one", "two"}));
    ASSERT_EQ(failed.size(), 1);
    EXPECT_EQ(failed[0][0].toString(), "No model was built: out of paper.");
    m_Jobs.fail(job, "again", {});
    EXPECT_EQ(m_Jobs.failures().size(), 1U) << "it is in the list no more";
    m_Jobs.forgetFailures();
    EXPECT_TRUE(m_Jobs.failures().empty());
}

TEST_F(JobListTest, ANewJobOfTheTitleTakesThePlaceOfTheFailure)
{
    m_Jobs.fail(m_Jobs.begin("Kestram"), "No model was built.", {});
    m_Jobs.fail(m_Jobs.begin("Other"), "Nothing.", {});
    m_Jobs.begin("Kestram");
    ASSERT_EQ(m_Jobs.failures().size(), 1U);
    EXPECT_EQ(m_Jobs.failures()[0].title, "Other");
}

TEST_F(JobListTest, CancellingAsksTheProgramToEnd)
{
    start("trap 'echo tidy; exit 3' TERM; echo up; while :; do sleep 0.05; done");
    const auto job = m_Jobs.begin("Kestram", m_Program.processId());
    m_Jobs.cancel(job);
    EXPECT_EQ(m_Jobs.jobs().at(0).lastLine, "is being cancelled");
    ASSERT_TRUE(m_Program.waitForFinished(kPatienceMilliseconds));
    EXPECT_EQ(m_Program.exitCode(), 3);
    EXPECT_EQ(m_Program.readAllStandardOutput(), "up\ntidy\n");
}

TEST_F(JobListTest, AProgramThatDoesNotEndIsEnded)
{
    start("trap '' TERM; echo up; while :; do sleep 0.05; done");
    m_Jobs.cancel(m_Jobs.begin("Kestram", m_Program.processId()));
    QSignalSpy finished(&m_Program, &QProcess::finished);
    ASSERT_TRUE(waitUntil([&] { return !finished.isEmpty(); }));
    EXPECT_EQ(m_Program.exitStatus(), QProcess::CrashExit);
}

TEST_F(JobListTest, OfACancelledJobNobodyIsTold)
{
    start("echo up; exec sleep 1000");
    QSignalSpy failed(&m_Jobs, &JobList::failed);
    const auto job = m_Jobs.begin("Kestram", m_Program.processId());
    m_Jobs.cancel(job);
    m_Jobs.say(job, "still here");
    EXPECT_EQ(m_Jobs.jobs().at(0).lastLine, "is being cancelled");
    m_Jobs.fail(job, "No model was built: ended by signal 15.", {});
    EXPECT_TRUE(m_Jobs.jobs().empty());
    EXPECT_TRUE(m_Jobs.failures().empty());
    EXPECT_TRUE(failed.isEmpty());
    ASSERT_TRUE(m_Program.waitForFinished(kPatienceMilliseconds));
}

TEST_F(JobListTest, AJobWithoutAProgramIsNotCancelled)
{
    const auto job = m_Jobs.begin("Kestram");
    m_Jobs.cancel(job);
    m_Jobs.cancel(job + 1);
    EXPECT_FALSE(m_Jobs.jobs().at(0).isCancelled);
}

} // namespace JobListTest
