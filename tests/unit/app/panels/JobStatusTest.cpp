// SPDX-License-Identifier: GPL-3.0-or-later
#include "JobStatus.h"

#include "JobList.h"
#include "support/WaitUntil.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QProcess>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>

#include <gtest/gtest.h>

namespace JobStatusTest {

using TAMBO::app::JobStatus;
using TAMBO::services::JobList;

class JobStatusTest : public testing::Test
{
protected:
    JobStatusTest()
    {
        m_Window.statusBar()->addPermanentWidget(m_Status);
        m_Window.resize(640, 100);
        m_Window.show();
    }

    QAction *menuEntry(const QString &text)
    {
        auto *menu = m_Status->findChild<QMenu *>();
        emit menu->aboutToShow();
        for (QAction *action : menu->actions())
            if (action->text() == text)
                return action;
        ADD_FAILURE() << "no entry " << text.toStdString();
        return nullptr;
    }

    JobList m_Jobs;
    QMainWindow m_Window;
    JobStatus *m_Status = new JobStatus(m_Jobs);
};

TEST_F(JobStatusTest, NothingIsShownWhileNoJobRuns)
{
    EXPECT_FALSE(m_Status->isVisible());
    const auto job = m_Jobs.begin("Kestram");
    EXPECT_TRUE(m_Status->isVisible());
    m_Jobs.end(job);
    EXPECT_FALSE(m_Status->isVisible());
    EXPECT_EQ(m_Status->text(), QString());
}

TEST_F(JobStatusTest, TheLastLineStandsBesideNameAndDuration)
{
    const auto job = m_Jobs.begin("Kestram");
    EXPECT_EQ(m_Status->text(), "Kestram 0:00");
    m_Jobs.say(job, "Modelling loop 3 of 7");
    EXPECT_TRUE(m_Status->text().endsWith(" – Modelling loop 3 of 7"));
}

TEST_F(JobStatusTest, TheDurationGoesOnByItself)
{
    m_Jobs.begin("Kestram");
    waitUntil([this] { return m_Status->text() != "Kestram 0:00"; });
}

TEST_F(JobStatusTest, OfSeveralJobsTheNewestIsShownWithTheirNumber)
{
    const auto first = m_Jobs.begin("Kestram");
    m_Jobs.begin("Malign");
    m_Jobs.say(first, "<b>");
    EXPECT_EQ(m_Status->text(), "2 jobs; Malign 0:00");
    EXPECT_EQ(m_Status->toolTip(), "Malign 0:00<br>Kestram 0:00 – &lt;b&gt;");
}

TEST_F(JobStatusTest, ALongLineIsCutAndLeavesRoomForOthers)
{
    auto *count = new QLabel("6 structures, 1 alignment, 6 sequences");
    m_Window.statusBar()->addPermanentWidget(count);
    m_Jobs.say(m_Jobs.begin("Kestram"), QString(5000, 'x'));
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_Status->isVisible());
    EXPECT_LT(m_Status->width(), 450);
    EXPECT_GE(count->width(), count->sizeHint().width());
    EXPECT_EQ(m_Window.width(), 640);
}

TEST_F(JobStatusTest, AFailureStaysUntilItIsForgotten)
{
    m_Jobs.fail(m_Jobs.begin("Kestram"), "No model was built: out of paper.", {"one", "two"});
    EXPECT_TRUE(m_Status->isVisible());
    EXPECT_EQ(m_Status->text(), "Kestram: No model was built: out of paper.");
    EXPECT_EQ(m_Status->toolTip(), "Kestram: No model was built: out of paper.");
    QSignalSpy asked(m_Status, &JobStatus::failureAsked);
    menuEntry("Kestram: No model was built: out of paper.")->trigger();
    ASSERT_EQ(asked.size(), 1);
    EXPECT_EQ(asked[0][0].toString(), "No model was built: out of paper.");
    EXPECT_EQ(asked[0][1].toStringList(), (QStringList{"one", "two"}));
    menuEntry("Forget Failures")->trigger();
    EXPECT_FALSE(m_Status->isVisible());
}

TEST_F(JobStatusTest, ARunningJobIsShownBeforeAFailure)
{
    m_Jobs.fail(m_Jobs.begin("Other"), "Nothing & <b>.", {});
    m_Jobs.begin("Kestram");
    EXPECT_EQ(m_Status->text(), "Kestram 0:00");
    EXPECT_EQ(m_Status->toolTip(), "Kestram 0:00<br>Other: Nothing &amp; &lt;b&gt;.");
    EXPECT_NE(menuEntry("Other: Nothing && <b>."), nullptr);
}

TEST_F(JobStatusTest, EachJobCanBeCancelledInTheMenu)
{
    QProcess program;
    program.start("sleep", {"1000"});
    ASSERT_TRUE(program.waitForStarted(kPatienceMilliseconds));
    m_Jobs.begin("Fixed");
    m_Jobs.begin("Kestram", program.processId());
    EXPECT_FALSE(menuEntry("Cancel Fixed (0:00)")->isEnabled());
    menuEntry("Cancel Kestram (0:00)")->trigger();
    ASSERT_TRUE(program.waitForFinished(kPatienceMilliseconds));
    EXPECT_EQ(program.exitStatus(), QProcess::CrashExit);
    EXPECT_TRUE(m_Status->text().endsWith(" – is being cancelled"));
    EXPECT_FALSE(menuEntry("Cancel Kestram (0:00)")->isEnabled());
}

TEST_F(JobStatusTest, DurationsReadAsAClock)
{
    EXPECT_EQ(JobStatus::durationText(0), "0:00");
    EXPECT_EQ(JobStatus::durationText(7999), "0:07");
    EXPECT_EQ(JobStatus::durationText(750'000), "12:30");
    EXPECT_EQ(JobStatus::durationText(3'723'000), "1:02:03");
}

} // namespace JobStatusTest
