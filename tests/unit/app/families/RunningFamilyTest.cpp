// SPDX-License-Identifier: GPL-3.0-or-later
// The program that builds models, with a script in its place.
#include "RunningFamily.h"

#include "FamilyFiles.h"
#include "JobList.h"
#include "support/WaitUntil.h"

#include <QFile>
#include <QSignalSpy>

#include <sys/stat.h>

#include <csignal>

namespace RunningFamilyTest {

using namespace TAMBO;
using app::RunningFamily;
using app::RunOrder;
using services::JobList;

class RunningFamilyTest : public FamilyFiles
{
protected:
    ~RunningFamilyTest() override { JobList::instance().forgetFailures(); }

    QString program(const QByteArray &script)
    {
        QFile file(write("tambo", "#!/bin/bash\n" + script));
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        return file.fileName();
    }
    static const std::vector<JobList::Job> &jobs() { return JobList::instance().jobs(); }
    const std::filesystem::path m_Models = makeFolder({"a"}).path();
};

TEST_F(RunningFamilyTest, IsCalledForItsFolderAndStandsInTheListOfJobs)
{
    const QString words = path("words");
    RunningFamily run(program("echo \"$@\" > '" + words.toUtf8() +
                              "'\necho '[1/1] a on known: ok'\nread -r _ < go\n"),
                      m_Models, "globins");
    ASSERT_EQ(mkfifo((m_Models / "go").c_str(), 0600), 0);
    ASSERT_TRUE(run.start({RunOrder::Where::Here, 3, {}}));
    EXPECT_TRUE(run.isRunning());
    ASSERT_EQ(jobs().size(), 1U);
    EXPECT_EQ(jobs().front().title, "Models of globins");
    EXPECT_FALSE(run.start({})) << "it runs";
    waitUntil([&] { return !jobs().empty() && jobs().front().lastLine == "[1/1] a on known: ok"; });
    EXPECT_EQ(bytesOf(words), "models --continue " + QByteArray::fromStdString(m_Models.string()) +
                                  " --jobs 3 --pool\n");
    write("models/go", "\n");
    waitUntil([&] { return !run.isRunning(); });
    EXPECT_TRUE(jobs().empty());
    EXPECT_TRUE(JobList::instance().failures().empty());
}

TEST_F(RunningFamilyTest, WhatItSaidLastIsToldWhenItFails)
{
    RunningFamily run(program("echo '[1/1] a on known: failed, no backbone'\nexit 1\n"), m_Models,
                      "globins");
    ASSERT_TRUE(run.start({}));
    waitUntil([&] { return !run.isRunning(); });
    ASSERT_EQ(JobList::instance().failures().size(), 1U);
    EXPECT_EQ(JobList::instance().failures().front().what, "Not all models of globins were built.");
    EXPECT_EQ(JobList::instance().failures().front().lastLines,
              QStringList("[1/1] a on known: failed, no backbone"));
}

TEST_F(RunningFamilyTest, IsAskedToEndAndTellsNobodyThatItHas)
{
    ASSERT_EQ(mkfifo((m_Models / "go").c_str(), 0600), 0);
    RunningFamily run(program("trap 'echo ended > ended; exit 143' TERM\necho up\n"
                              "read -r _ < go\n"),
                      m_Models, "globins");
    ASSERT_TRUE(run.start({}));
    waitUntil([&] { return bytesOf(path("models/run.log")) == "up\n"; });
    run.stop();
    EXPECT_TRUE(run.isStopping());
    waitUntil([&] { return !run.isRunning(); });
    EXPECT_FALSE(run.isStopping());
    EXPECT_EQ(bytesOf(path("models/ended")), "ended\n");
    EXPECT_TRUE(JobList::instance().failures().empty());
    EXPECT_TRUE(jobs().empty());
}

TEST_F(RunningFamilyTest, GoesOnWhenTheWorkbenchEnds)
{
    ASSERT_EQ(mkfifo((m_Models / "go").c_str(), 0600), 0);
    {
        RunningFamily run(program("echo up\nread -r _ < go\necho on\n"), m_Models, "globins");
        ASSERT_TRUE(run.start({}));
    }
    EXPECT_TRUE(jobs().empty());
    write("models/go", "\n");
    waitUntil([&] { return bytesOf(path("models/run.log")) == "up\non\n"; });
}

TEST_F(RunningFamilyTest, AProgramThatIsNotThereIsAFailure)
{
    RunningFamily run(path("none"), m_Models, "globins");
    const auto started = run.start({});
    ASSERT_FALSE(started);
    EXPECT_NE(started.error().message().find("none could not be started"), std::string::npos);
    EXPECT_FALSE(run.isRunning());
    EXPECT_TRUE(jobs().empty());
}

} // namespace RunningFamilyTest
