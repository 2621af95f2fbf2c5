// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrivateDirectory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace TAMBO::services;

namespace PrivateDirectoryTest {

unsigned int modeOf(const QString &path)
{
    struct stat facts
    {
    };
    EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &facts), 0);
    return facts.st_mode & 07777U;
}

std::string failureOf(const QString &path, uid_t owner)
{
    const auto made = makePrivateDirectory(path, owner);
    return made ? "no failure" : made.error().message();
}

TEST(PrivateDirectory, IsMadeForItsOwnerOnly)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath("a/b/private");
    const auto made = makePrivateDirectory(path, ::geteuid());
    ASSERT_TRUE(made.has_value()) << made.error().message();
    EXPECT_EQ(made.value(), path);
    EXPECT_EQ(modeOf(path), 0700U);
}

TEST(PrivateDirectory, AnExistingOneLosesTheRightsOfOthers)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath("private");
    ASSERT_TRUE(QDir().mkpath(path));
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0777), 0);
    ASSERT_TRUE(makePrivateDirectory(path, ::geteuid()).has_value());
    EXPECT_EQ(modeOf(path), 0700U);
}

TEST(PrivateDirectory, IsRefusedWhenSomebodyElseOwnsIt)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath("private");
    ASSERT_TRUE(QDir().mkpath(path));
    const uid_t somebodyElse = ::geteuid() + 1;
    const unsigned int before = modeOf(path);
    EXPECT_EQ(failureOf(path, somebodyElse), path.toStdString() + ": belongs to another user");
    EXPECT_EQ(modeOf(path), before);
}

TEST(PrivateDirectory, IsRefusedWhenALinkOrAFileStandsThere)
{
    const QTemporaryDir directory;
    ASSERT_TRUE(QDir(directory.path()).mkdir("real"));
    const QString link = directory.filePath("link");
    ASSERT_TRUE(QFile::link(directory.filePath("real"), link));
    EXPECT_NE(failureOf(link, ::geteuid()), "no failure");

    QFile file(directory.filePath("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_NE(failureOf(file.fileName(), ::geteuid()), "no failure");
}

TEST(PrivateDirectory, IsRefusedWhereNothingCanBeMade)
{
    EXPECT_EQ(failureOf("/dev/null/a/b", ::geteuid()),
              "/dev/null/a/b: the directory above it cannot be made");
}

TEST(PrivateDirectory, ThePersonalOneStaysTheSameAndComesBackWhenItWasRemoved)
{
    const QString first = personalScratchDirectory();
    EXPECT_EQ(modeOf(first), 0700U);
    EXPECT_EQ(personalScratchDirectory(), first);
    ASSERT_TRUE(QDir().rmdir(first));
    EXPECT_EQ(personalScratchDirectory(), first);
    EXPECT_TRUE(QFileInfo(first).isDir());
}

} // namespace PrivateDirectoryTest
