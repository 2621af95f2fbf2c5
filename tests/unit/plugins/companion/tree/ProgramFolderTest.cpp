// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgramFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ProgramFolderTest {

using companion::ProgramFolder;

class FolderOfAProgram : public testing::Test
{
protected:
    FolderOfAProgram() { qputenv("TMPDIR", m_Temporary.path().toLocal8Bit()); }
    ~FolderOfAProgram() override
    {
        if (m_Before.isNull())
            qunsetenv("TMPDIR");
        else
            qputenv("TMPDIR", m_Before);
    }
    QString made(const QString &name)
    {
        EXPECT_TRUE(QDir(m_Temporary.path()).mkpath(name));
        const QString folder = m_Temporary.filePath(name);
        QFile file(folder + "/rows.fasta");
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return folder;
    }
    // Of long ago.
    static void makeOld(const QString &folder)
    {
        const timespec times[] = {{1000, 0}, {1000, 0}};
        EXPECT_EQ(utimensat(AT_FDCWD, QFile::encodeName(folder).constData(), times, 0), 0);
    }

    const QByteArray m_Before = qgetenv("TMPDIR");
    QTemporaryDir m_Temporary;
};

TEST_F(FolderOfAProgram, GoesWithIt)
{
    QString path;
    {
        const ProgramFolder folder;
        ASSERT_TRUE(folder.isValid());
        path = folder.path();
        EXPECT_EQ(QFileInfo(path).path(), m_Temporary.path());
        EXPECT_TRUE(QFileInfo(path).isDir());
    }
    EXPECT_FALSE(QFileInfo::exists(path));
}

TEST_F(FolderOfAProgram, OfAProcessThatWasKilledIsRemovedAndThatOfOneThatRunsStays)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
        const ProgramFolder folder;
        const QByteArray path = folder.path().toLocal8Bit();
        if (write(ends[1], path.constData(), std::size_t(path.size())) < 0)
            _exit(1);
        for (;;)
            pause();
    }
    ASSERT_GT(child, 0);
    char text[4096];
    const ssize_t size = read(ends[0], text, sizeof text);
    close(ends[0]);
    close(ends[1]);
    ASSERT_GT(size, 0);
    const QString folder = QString::fromLocal8Bit(text, size);
    makeOld(folder);
    ProgramFolder::removeLeftBehind();
    EXPECT_TRUE(QFileInfo(folder).isDir());
    kill(child, SIGKILL);
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    EXPECT_TRUE(QFileInfo(folder).isDir());
    ProgramFolder::removeLeftBehind();
    EXPECT_FALSE(QFileInfo::exists(folder));
}

TEST_F(FolderOfAProgram, OfSomethingElseAndOneThatIsJustBeingMadeStay)
{
    const QString left = made("tambo-fasttree-left");
    const QString young = made("tambo-fasttree-young");
    const QString other = made("tambo-something");
    const QString target = made("target");
    ASSERT_TRUE(QFile::link(target, m_Temporary.filePath("tambo-fasttree-link")));
    for (const QString &folder : {left, other, target})
        makeOld(folder);
    ProgramFolder::removeLeftBehind();
    EXPECT_FALSE(QFileInfo::exists(left));
    for (const QString &folder : {young, other, target})
        EXPECT_TRUE(QFileInfo::exists(folder + "/rows.fasta")) << folder.toStdString();
}

} // namespace ProgramFolderTest
