// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConfigStore.h"

#include "support/LogLines.h"

#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace TAMBO::services;

namespace ConfigStoreTest {

class ConfigStoreTest : public ::testing::Test
{
protected:
    static void write(const QString &path, const QByteArray &text)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

    QTemporaryDir m_Directory;
    QString m_Defaults = m_Directory.filePath("defaults.ini");
    QString m_User = m_Directory.filePath("deep/er/tambo.ini");
};

TEST_F(ConfigStoreTest, TheUsersValueStandsOverTheDefault)
{
    write(m_Defaults, "[A]\none = 1\ntwo = 2\n");
    const QString user = m_Directory.filePath("tambo.ini");
    write(user, "[A]\ntwo = 22\n");
    const ConfigStore store(m_Defaults, user);
    EXPECT_EQ(store.value("A", "one"), "1");
    EXPECT_EQ(store.value("A", "two"), "22");
    EXPECT_EQ(store.defaultValue("A", "two"), "2");
    EXPECT_FALSE(store.value("A", "three"));
}

TEST_F(ConfigStoreTest, DefaultsOfAPluginStandBelowTheUsersValues)
{
    write(m_Defaults, "[A]\none = 1\n");
    const QString user = m_Directory.filePath("tambo.ini");
    write(user, "[B]\ntwo = 22\n");
    ConfigStore store(m_Defaults, user);
    const QSignalSpy changes(&store, &ConfigStore::changed);
    const LogLines log;
    store.addDefaults(IniFile::parse("[B]\ntwo = 2\nthree = 3\n", "x").value(), "X.so");
    EXPECT_EQ(store.value("B", "two"), "22");
    EXPECT_EQ(store.defaultValue("B", "two"), "2");
    EXPECT_EQ(store.value("B", "three"), "3");
    ASSERT_EQ(changes.size(), 1) << "the user's value is the same as before";
    EXPECT_EQ(changes[0], (QList<QVariant>{"B", "three"}));
    EXPECT_FALSE(store.hasUnsavedChanges());
    EXPECT_EQ(log.count(), 0);
}

TEST_F(ConfigStoreTest, ADefaultThatIsThereStaysAndTheLogSaysSo)
{
    write(m_Defaults, "[A]\none = 1\ntwo = 2\n");
    ConfigStore store(m_Defaults, m_User);
    const LogLines log;
    store.addDefaults(IniFile::parse("[A]\none = 9\ntwo = 2\nthree = 3\n", "x").value(), "X.so");
    store.addDefaults(IniFile::parse("[A]\nthree = 33\n", "y").value(), "Y.so");
    EXPECT_EQ(store.value("A", "one"), "1");
    EXPECT_EQ(store.value("A", "three"), "3");
    EXPECT_EQ(log.texts(),
              (QStringList{"X.so: the setting A/one has a default already, which stays: 1",
                           "Y.so: the setting A/three has a default already, which stays: 3"}));
}

TEST_F(ConfigStoreTest, MissingFilesAreNoReasonToComplain)
{
    const LogLines log;
    const ConfigStore store(m_Defaults, m_User);
    EXPECT_FALSE(store.value("A", "one"));
    EXPECT_EQ(log.count(), 0);
}

TEST_F(ConfigStoreTest, ABrokenUserFileIsOneLogLineAndTheDefaults)
{
    write(m_Defaults, "[A]\none = 1\n");
    const QString user = m_Directory.filePath("tambo.ini");
    write(user, "[A]\none = 11\nrubbish\nrubbish\n");
    const LogLines log;
    const ConfigStore store(m_Defaults, user);
    EXPECT_EQ(store.value("A", "one"), "1");
    ASSERT_EQ(log.count(), 1);
    EXPECT_EQ(log.texts().first(),
              user + ":3: expected [section] or key = value; the default settings are used");
}

TEST_F(ConfigStoreTest, SavedValuesAreThereNextTime)
{
    {
        ConfigStore store(m_Defaults, m_User);
        store.setValue("A", "one", "1");
        EXPECT_TRUE(store.hasUnsavedChanges());
        EXPECT_FALSE(QFile::exists(m_User)) << "nothing is written before save()";
        EXPECT_TRUE(store.save());
        EXPECT_FALSE(store.hasUnsavedChanges());
    }
    EXPECT_EQ(ConfigStore(m_Defaults, m_User).value("A", "one"), "1");
}

TEST_F(ConfigStoreTest, AResetValueGoesBackToTheDefault)
{
    write(m_Defaults, "[A]\none = 1\n");
    ConfigStore store(m_Defaults, m_User);
    store.setValue("A", "one", "2");
    ASSERT_TRUE(store.save());
    store.reset("A", "one");
    EXPECT_EQ(store.value("A", "one"), "1");
    ASSERT_TRUE(store.save());
    EXPECT_EQ(ConfigStore(m_Defaults, m_User).value("A", "one"), "1");
}

TEST_F(ConfigStoreTest, TwoRunningWorkbenchesKeepEachOthersChanges)
{
    ConfigStore one(m_Defaults, m_User);
    ConfigStore other(m_Defaults, m_User);
    one.setValue("A", "one", "1");
    other.setValue("A", "other", "2");
    ASSERT_TRUE(one.save());
    ASSERT_TRUE(other.save());
    const ConfigStore next(m_Defaults, m_User);
    EXPECT_EQ(next.value("A", "one"), "1");
    EXPECT_EQ(next.value("A", "other"), "2");
    EXPECT_EQ(other.value("A", "one"), "1");
}

TEST_F(ConfigStoreTest, SavingKeepsTheUsersCommentsAndABrokenFileAside)
{
    const QString user = m_Directory.filePath("tambo.ini");
    write(user, "# mine\n[A]\none = 1\n");
    ConfigStore store(m_Defaults, user);
    store.setValue("A", "one", "2");
    ASSERT_TRUE(store.save());
    EXPECT_EQ(read(user), "# mine\n[A]\none = 2\n");

    write(user, "rubbish\n");
    store.setValue("A", "two", "3");
    ASSERT_TRUE(store.save());
    EXPECT_EQ(read(user), "# mine\n[A]\none = 2\ntwo = 3\n");
    EXPECT_EQ(read(user + ".broken"), "rubbish\n");
}

TEST_F(ConfigStoreTest, AFileThatCannotBeWrittenIsOneLogLineAndLosesNothing)
{
    const QString blocked = m_Directory.filePath("blocked");
    write(blocked, "a file where a directory is needed");
    ConfigStore store(m_Defaults, blocked + "/tambo.ini");
    store.setValue("A", "one", "1");
    const TAMBO::Result<void> saved = store.save();
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().kind, TAMBO::FailureKind::System);
    EXPECT_EQ(saved.error().place.file, (blocked + "/tambo.ini").toStdString());
    const LogLines log;
    store.saveOrLog();
    EXPECT_EQ(log.count(), 1);
    EXPECT_TRUE(store.hasUnsavedChanges());
    EXPECT_EQ(store.value("A", "one"), "1");
}

TEST_F(ConfigStoreTest, OnlyAChangeIsTold)
{
    write(m_Defaults, "[A]\none = 1\n");
    ConfigStore store(m_Defaults, m_User);
    const QSignalSpy changes(&store, &ConfigStore::changed);
    store.setValue("A", "one", "1");
    EXPECT_EQ(changes.count(), 0);
    store.setValue("A", "one", "2");
    store.reset("A", "one");
    store.reset("A", "one");
    ASSERT_EQ(changes.count(), 2);
    EXPECT_EQ(changes.first().at(0).toString(), "A");
    EXPECT_EQ(changes.first().at(1).toString(), "one");
}

} // namespace ConfigStoreTest
