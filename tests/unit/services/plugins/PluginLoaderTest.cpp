// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginLoader.h"

#include "plugins/RecordCall.h"
#include "support/LogLines.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace TAMBO::services;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace PluginLoaderTest {

std::vector<std::string> s_Calls;

QString plugin(const char *name)
{
    return QStringLiteral(PLUGIN_DIR "/") + name + ".so";
}

class PluginLoaderTest : public ::testing::Test
{
protected:
    void SetUp() override { s_Calls.clear(); }

    PluginLoader m_Loader;
    LogLines m_Log;
};

TEST_F(PluginLoaderTest, AGoodOneIsLoadedAndCalled)
{
    const PluginRecord &record = m_Loader.load(plugin("FirstGood"));
    EXPECT_EQ(record.state, PluginState::Loaded) << record.reason.toStdString();
    EXPECT_TRUE(record.isUsable());
    EXPECT_TRUE(record.reason.isEmpty());
    EXPECT_EQ(record.name, "FirstGood.so");
    EXPECT_EQ(record.file, plugin("FirstGood"));
    EXPECT_EQ(m_Loader.isDone(record), true);
    EXPECT_TRUE(m_Loader.execute(record));
    EXPECT_EQ(m_Loader.isDone(record), false);
    EXPECT_TRUE(m_Loader.shutDown());
    EXPECT_THAT(s_Calls, ElementsAre("FirstGood IsDone", "FirstGood Execute0", "FirstGood IsDone",
                                     "FirstGood IsDone", "FirstGood Cleanup", "FirstGood IsDone"));
    EXPECT_EQ(m_Log.count(), 0);
}

TEST_F(PluginLoaderTest, TheLastOneLoadedIsClosedFirst)
{
    const PluginRecord &first = m_Loader.load(plugin("FirstGood"));
    const PluginRecord &second = m_Loader.load(plugin("SecondGood"));
    ASSERT_TRUE(m_Loader.execute(first));
    ASSERT_TRUE(m_Loader.execute(second));
    s_Calls.clear();
    EXPECT_TRUE(m_Loader.shutDown());
    EXPECT_THAT(s_Calls, ElementsAre("SecondGood IsDone", "SecondGood Cleanup", "SecondGood IsDone",
                                     "FirstGood IsDone", "FirstGood Cleanup", "FirstGood IsDone"));
}

TEST_F(PluginLoaderTest, ADoneOneNeedsNoCleaningUp)
{
    m_Loader.load(plugin("FirstGood"));
    EXPECT_TRUE(m_Loader.shutDown());
    EXPECT_THAT(s_Calls, ElementsAre("FirstGood IsDone"));
}

TEST_F(PluginLoaderTest, LoadingAgainGivesTheSameRecord)
{
    const PluginRecord &record = m_Loader.load(plugin("FirstGood"));
    EXPECT_EQ(&m_Loader.load(plugin("FirstGood")), &record);
    EXPECT_EQ(&m_Loader.load(QStringLiteral(PLUGIN_DIR "/../loaded/FirstGood.so")), &record);
    EXPECT_EQ(m_Loader.records().size(), 1U);
    EXPECT_EQ(m_Loader.find("FirstGood.so"), &record);
    EXPECT_EQ(m_Loader.find("SecondGood.so"), nullptr);
}

TEST_F(PluginLoaderTest, AMissingFileIsARecordWithItsReasonAndOneLogLine)
{
    const PluginRecord &record = m_Loader.load("/nowhere/libNone.so.0");
    EXPECT_EQ(record.state, PluginState::MissingFile);
    EXPECT_EQ(record.reason, "/nowhere/libNone.so.0: there is no such file");
    EXPECT_FALSE(m_Loader.execute(record));
    EXPECT_EQ(m_Loader.isDone(record), std::nullopt);
    EXPECT_EQ(m_Log.texts(), QStringList("The plug-in cannot be used: " + record.reason));
    EXPECT_EQ(m_Loader.records().size(), 1U);
}

TEST_F(PluginLoaderTest, AMissingFileIsTriedAgain)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath("Late.so");
    const PluginRecord &record = m_Loader.load(path);
    EXPECT_EQ(record.state, PluginState::MissingFile);
    ASSERT_TRUE(QFile::copy(plugin("NeverDone"), path));
    EXPECT_EQ(&m_Loader.load(path), &record);
    EXPECT_EQ(record.state, PluginState::Loaded) << record.reason.toStdString();
    EXPECT_TRUE(record.reason.isEmpty());
    EXPECT_EQ(m_Loader.records().size(), 1U);
}

TEST_F(PluginLoaderTest, AFileThatIsNoLibraryIsBroken)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath("text.so");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("this is no library, but it is longer than a header of one would have to be\n");
    file.close();
    const PluginRecord &record = m_Loader.load(path);
    EXPECT_EQ(record.state, PluginState::Broken);
    EXPECT_TRUE(record.reason.contains("text.so")) << record.reason.toStdString();
    EXPECT_EQ(m_Log.count(), 1);
}

TEST_F(PluginLoaderTest, ASymbolThatNobodySuppliesIsNamedAtOnce)
{
    const PluginRecord &record = m_Loader.load(plugin("Unresolved"));
    EXPECT_EQ(record.state, PluginState::UnresolvedSymbol);
    EXPECT_TRUE(record.reason.contains("nobodyHasThisFunction")) << record.reason.toStdString();
    EXPECT_TRUE(record.reason.contains("Unresolved.so")) << record.reason.toStdString();
}

TEST_F(PluginLoaderTest, OneWithoutAllThreeFunctionsIsNotUsed)
{
    const PluginRecord &record = m_Loader.load(plugin("WithoutCleanup"));
    EXPECT_EQ(record.state, PluginState::LacksFunction);
    EXPECT_EQ(record.reason, "WithoutCleanup.so has no function Cleanup");
    EXPECT_FALSE(m_Loader.execute(record));
}

TEST_F(PluginLoaderTest, AnExceptionWhileLoadingStaysInside)
{
    const PluginRecord &record = m_Loader.load(plugin("ThrowsOnLoad"));
    EXPECT_EQ(record.state, PluginState::ThrewOnLoad);
    EXPECT_EQ(record.reason, "ThrowsOnLoad.so failed while it was loaded: no licence file");
    EXPECT_FALSE(m_Loader.execute(record));
    EXPECT_TRUE(m_Loader.load(plugin("FirstGood")).isUsable()) << "others can still be loaded";
}

TEST_F(PluginLoaderTest, AnExceptionInACallStaysInsideAndEndsTheUse)
{
    const PluginRecord &record = m_Loader.load(plugin("ThrowsInCall"));
    ASSERT_TRUE(record.isUsable());
    EXPECT_FALSE(m_Loader.execute(record));
    EXPECT_EQ(record.state, PluginState::ThrewInCall);
    EXPECT_EQ(record.reason, "ThrowsInCall.so failed in Execute0: no window today");
    EXPECT_FALSE(m_Loader.execute(record));
    EXPECT_EQ(m_Loader.isDone(record), std::nullopt);
    EXPECT_EQ(m_Log.count(), 1);
    EXPECT_TRUE(m_Loader.shutDown());
}

TEST_F(PluginLoaderTest, OneThatThrowsSomethingElseIsCaughtToo)
{
    const PluginRecord &record = m_Loader.load(plugin("ThrowsInCall"));
    EXPECT_EQ(m_Loader.isDone(record), std::nullopt);
    EXPECT_EQ(record.reason, "ThrowsInCall.so failed in IsDone: an unknown exception");
}

TEST_F(PluginLoaderTest, OneThatIsNeverDoneHoldsNobodyUp)
{
    m_Loader.load(plugin("NeverDone"));
    m_Loader.load(plugin("FirstGood"));
    EXPECT_FALSE(m_Loader.shutDown());
    EXPECT_EQ(m_Log.texts(), QStringList("NeverDone.so has not finished"));
}

TEST_F(PluginLoaderTest, WithoutAnythingLoadedThereIsNothingToShutDown)
{
    EXPECT_TRUE(m_Loader.shutDown());
    EXPECT_THAT(m_Loader.records(), IsEmpty());
}

} // namespace PluginLoaderTest

void recordCall(const char *call)
{
    PluginLoaderTest::s_Calls.emplace_back(call);
}
