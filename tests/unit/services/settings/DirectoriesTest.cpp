// SPDX-License-Identifier: GPL-3.0-or-later
#include "Directories.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace TAMBO::services;

namespace DirectoriesTest {

class ScopedVariable
{
public:
    ScopedVariable(const char *name, const QByteArray &value)
        : m_Name(name), m_Before(qgetenv(name))
    {
        qputenv(name, value);
    }
    ~ScopedVariable() { qputenv(m_Name, m_Before); }
    ScopedVariable(const ScopedVariable &) = delete;
    ScopedVariable &operator=(const ScopedVariable &) = delete;

private:
    const char *m_Name;
    QByteArray m_Before;
};

TEST(Directories, SharedFilesAreFoundBesideTheProgram)
{
    const ScopedVariable none("TAMBO_SHARE_DIR", "");
    EXPECT_EQ(Directories::shared(),
              QDir::cleanPath(QCoreApplication::applicationDirPath() + "/../share/tambo"));
}

TEST(Directories, SharedFilesCanBeElsewhere)
{
    const ScopedVariable given("TAMBO_SHARE_DIR", "/somewhere/else/");
    EXPECT_EQ(Directories::shared(), "/somewhere/else");
}

TEST(Directories, APortableInstallationKeepsTheUsersFilesTogether)
{
    const ScopedVariable given("TAMBO_USER_DIR", "/portable");
    EXPECT_EQ(Directories::config(), "/portable/config");
    EXPECT_EQ(Directories::data(), "/portable/data");
    EXPECT_EQ(Directories::scratch(), "/portable/cache/tmp");
}

TEST(Directories, WithoutThatTheyStandWhereTheSystemWantsThem)
{
    const ScopedVariable none("TAMBO_USER_DIR", "");
    EXPECT_TRUE(Directories::config().endsWith("/tambo"));
    EXPECT_TRUE(Directories::data().endsWith("/tambo"));
    EXPECT_NE(Directories::config(), Directories::data());
}

} // namespace DirectoriesTest
