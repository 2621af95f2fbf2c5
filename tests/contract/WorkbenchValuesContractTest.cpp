// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on when the workbench keeps values for them from one run to the next.
#include "WorkbenchValues.h"

#include "Directories.h"
#include "support/LogLines.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace WorkbenchValuesContractTest {

class WorkbenchValuesContract : public testing::Test
{
protected:
    WorkbenchValuesContract() : m_Before(qgetenv("TAMBO_USER_DIR")) { useFolder(m_Folder.path()); }
    ~WorkbenchValuesContract() override
    {
        if (m_Before.isEmpty())
            qunsetenv("TAMBO_USER_DIR");
        else
            qputenv("TAMBO_USER_DIR", m_Before);
    }

    static void useFolder(const QString &folder)
    {
        qputenv("TAMBO_USER_DIR", QFile::encodeName(folder));
    }
    // As a new run does, the file is read anew.
    void beginAnotherRun()
    {
        const QTemporaryDir elsewhere;
        useFolder(elsewhere.path());
        EXPECT_THAT(WorkbenchValues::Plugins(), IsEmpty());
        useFolder(m_Folder.path());
    }

    QTemporaryDir m_Folder;

private:
    QByteArray m_Before;
};

TEST_F(WorkbenchValuesContract, AValueIsFoundByPluginAndKeyInLaterRuns)
{
    EXPECT_EQ(WorkbenchValues::Get("column statistics", "window"), std::nullopt);
    EXPECT_TRUE(WorkbenchValues::Set("column statistics", "window", "7"));
    EXPECT_TRUE(WorkbenchValues::Set("another", "window", "8"));
    EXPECT_EQ(WorkbenchValues::Get("column statistics", "window"), "7");
    beginAnotherRun();
    EXPECT_EQ(WorkbenchValues::Get("column statistics", "window"), "7");
    EXPECT_EQ(WorkbenchValues::Get("another", "window"), "8");
    EXPECT_EQ(WorkbenchValues::Get("column statistics", "other"), std::nullopt);
}

TEST_F(WorkbenchValuesContract, AnyBytesAndAnyNamesComeBackAsTheyWere)
{
    std::string bytes;
    for (int i = 0; i < 256; ++i)
        bytes += char(i);
    const std::string name = "[a] = \"b\"; # \xc3\xa4 %41";
    for (const std::string &value : {bytes, std::string(), std::string(" blank "), name}) {
        EXPECT_TRUE(WorkbenchValues::Set(name, name, value));
        beginAnotherRun();
        EXPECT_EQ(WorkbenchValues::Get(name, name), value);
    }
    EXPECT_THAT(WorkbenchValues::Plugins(), ElementsAre(name));
    EXPECT_THAT(WorkbenchValues::Keys(name), ElementsAre(name));
}

TEST_F(WorkbenchValuesContract, PluginsAndKeysAreListedInTheirOrder)
{
    for (const char *plugin : {"b", "a"})
        for (const char *key : {"2", "1", "3"})
            EXPECT_TRUE(WorkbenchValues::Set(plugin, key, "x"));
    EXPECT_TRUE(WorkbenchValues::Remove("a", "3"));
    EXPECT_TRUE(WorkbenchValues::Remove("a", "was never there"));
    beginAnotherRun();
    EXPECT_THAT(WorkbenchValues::Plugins(), ElementsAre("a", "b"));
    EXPECT_THAT(WorkbenchValues::Keys("a"), ElementsAre("1", "2"));
    EXPECT_THAT(WorkbenchValues::Keys("nobody"), IsEmpty());
    EXPECT_TRUE(WorkbenchValues::Remove("a", "1"));
    EXPECT_TRUE(WorkbenchValues::Remove("a", "2"));
    EXPECT_THAT(WorkbenchValues::Plugins(), ElementsAre("b"));
}

TEST_F(WorkbenchValuesContract, TheFileStandsInTheFolderOfTheUsersData)
{
    EXPECT_TRUE(WorkbenchValues::Set("a", "b", "c"));
    EXPECT_TRUE(QFileInfo::exists(TAMBO::services::Directories::data() + "/values.ini"));
}

TEST_F(WorkbenchValuesContract, WhatIsTooMuchIsRefusedWithOneLine)
{
    const auto isRefused = [](const std::string &plugin, const std::string &key,
                              const std::string &value) {
        const LogLines log;
        return !WorkbenchValues::Set(plugin, key, value) && log.count() == 1;
    };
    EXPECT_TRUE(isRefused("", "key", "x"));
    EXPECT_TRUE(isRefused("plug-in", "", "x"));
    EXPECT_TRUE(isRefused(std::string(101, 'a'), "key", "x"));
    EXPECT_TRUE(isRefused("plug-in", std::string(201, 'a'), "x"));
    EXPECT_TRUE(isRefused("plug-in", "two\nlines", "x"));
    EXPECT_TRUE(isRefused("plug-in", "\xff", "x"));
    EXPECT_TRUE(isRefused("plug-in", "key", std::string(WorkbenchValues::kLongestValue + 1, 'x')));
    EXPECT_THAT(WorkbenchValues::Plugins(), IsEmpty());

    const std::string big(WorkbenchValues::kLongestValue - 1, 'x');
    for (const char *key : {"1", "2", "3", "4"})
        EXPECT_TRUE(WorkbenchValues::Set("plug-in", key, big)) << key;
    EXPECT_TRUE(isRefused("plug-in", "5", "x"));
    EXPECT_TRUE(WorkbenchValues::Set("plug-in", "4", "smaller"));
    EXPECT_TRUE(WorkbenchValues::Set("plug-in", "5", "x"));
    EXPECT_TRUE(WorkbenchValues::Set("another", "5", big)) << "each has room of its own";
}

TEST_F(WorkbenchValuesContract, AFileThatCannotBeWrittenIsSaidAndTheValueKept)
{
    // Whoever may write everywhere is stopped by a folder that stands in the file's place.
    QDir().mkpath(TAMBO::services::Directories::data() + "/values.ini/full");
    const LogLines log;
    EXPECT_FALSE(WorkbenchValues::Set("a", "b", "c"));
    EXPECT_GE(log.count(), 1);
    EXPECT_EQ(WorkbenchValues::Get("a", "b"), "c");
}

} // namespace WorkbenchValuesContractTest
