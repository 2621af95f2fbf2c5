// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginLoader.h"

#include "plugins/RecordCall.h"
#include "support/LogLines.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <utility>

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
    EXPECT_TRUE(record.reason.startsWith("Unresolved.so needs nobodyHasThisFunction, "))
        << record.reason.toStdString();
}

TEST_F(PluginLoaderTest, AClassWithoutMocIsNamed)
{
    const PluginRecord &record = m_Loader.load(plugin("WithoutMoc"));
    EXPECT_EQ(record.state, PluginState::UnresolvedSymbol);
    EXPECT_TRUE(record.reason.startsWith("WithoutMoc.so needs vtable for Counter, "))
        << record.reason.toStdString();
    EXPECT_TRUE(record.reason.contains("AUTOMOC")) << record.reason.toStdString();
}

TEST_F(PluginLoaderTest, FunctionsOfCppAreToldFromMissingOnes)
{
    const PluginRecord &record = m_Loader.load(plugin("Mangled"));
    EXPECT_EQ(record.state, PluginState::LacksFunction);
    EXPECT_EQ(record.reason,
              "Mangled.so has no function Execute0 that can be found by this name, but one of C++, "
              "_Z8Execute0v: it has to be declared extern \"C\"");
}

TEST_F(PluginLoaderTest, OneWithoutAllThreeFunctionsIsNotUsed)
{
    const PluginRecord &record = m_Loader.load(plugin("WithoutCleanup"));
    EXPECT_EQ(record.state, PluginState::LacksFunction);
    EXPECT_EQ(record.reason,
              "WithoutCleanup.so has no function Cleanup; a plug-in exports Execute0, IsDone and "
              "Cleanup, declared extern \"C\" and TAMBO_API");
    EXPECT_FALSE(m_Loader.execute(record));
}

// Copies of a library whose code leaves a trace as soon as it is opened, each with a descriptor.
class DescribedPluginTest : public PluginLoaderTest
{
protected:
    const PluginRecord &load(const QString &name, const QByteArray &descriptor)
    {
        EXPECT_TRUE(QFile::copy(plugin("LeavesTrace"), m_Folder.filePath(name + ".so.0")));
        if (!descriptor.isNull()) {
            QFile file(m_Folder.filePath(name + ".plugin"));
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(descriptor);
        }
        return m_Kit.load(m_Folder.filePath(name + ".so.0"));
    }
    static bool hasRun() { return !std::exchange(s_Calls, {}).empty(); }

    PluginLoader m_Kit{KitNumber{2, 3}};
    QTemporaryDir m_Folder;
};

TEST_F(DescribedPluginTest, OneThatFitsIsOpened)
{
    EXPECT_TRUE(load("Fits", "[Plugin]\nKit = 2.3\nTitle = It Fits\n").isUsable());
    EXPECT_TRUE(hasRun());
    EXPECT_EQ(m_Kit.records().front().descriptor.title, "It Fits");
    EXPECT_TRUE(load("OlderMinor", "[Plugin]\nKit = 2.0\n").isUsable());
    EXPECT_TRUE(hasRun());
    EXPECT_EQ(m_Log.count(), 0);
}

TEST_F(DescribedPluginTest, OneWithoutADescriptorIsAToolOfThisVersion)
{
    const PluginRecord &record = load("libPlain", {});
    EXPECT_TRUE(record.isUsable());
    EXPECT_TRUE(hasRun());
    EXPECT_EQ(record.descriptor.name, "Plain");
    EXPECT_EQ(record.descriptor.role, PluginRole::Tool);
    EXPECT_FALSE(record.showsAlignments());
    EXPECT_EQ(m_Log.count(), 0);
}

TEST_F(DescribedPluginTest, OneOfANewerMinorVersionIsRefusedUnopened)
{
    const PluginRecord &record = load("Newer", "[Plugin]\nKit = 2.4\n");
    EXPECT_EQ(record.state, PluginState::WrongVersion);
    EXPECT_EQ(record.reason,
              "Newer.so.0 was built against version 2.4 of the plug-in kit, and this "
              "workbench has 2.3: use a newer workbench, or build it against the kit "
              "of this one");
    EXPECT_EQ(m_Log.texts(), QStringList("The plug-in cannot be used: " + record.reason));
    EXPECT_FALSE(m_Kit.execute(record));
    EXPECT_FALSE(m_Kit.open(record).isUsable());
    EXPECT_FALSE(hasRun());
}

TEST_F(DescribedPluginTest, OneOfAnotherMajorVersionIsRefusedUnopened)
{
    const PluginRecord &older = load("Older", "[Plugin]\nKit = 1.9\n");
    EXPECT_EQ(older.state, PluginState::WrongVersion);
    EXPECT_EQ(older.reason, "Older.so.0 was built against version 1.9 of the plug-in kit, and this "
                            "workbench has 2.3: build it anew against the kit of this workbench");
    EXPECT_EQ(load("Newest", "[Plugin]\nKit = 3.0\nRole = unheard of\n").state,
              PluginState::WrongVersion);
    EXPECT_FALSE(hasRun());
}

TEST_F(DescribedPluginTest, OneWithABrokenDescriptorIsRefusedUnopened)
{
    const PluginRecord &record = load("Broken", "[Plugin]\nKit = 2.3\nRole = x\n");
    EXPECT_EQ(record.state, PluginState::BrokenDescriptor);
    EXPECT_EQ(record.reason,
              m_Folder.filePath("Broken.plugin") +
                  ":3: expected Role = tool, Role = alignments or Role = background");
    EXPECT_EQ(m_Log.count(), 1);
    EXPECT_FALSE(hasRun());
}

TEST_F(DescribedPluginTest, FindingOneOpensNothing)
{
    EXPECT_TRUE(QFile::copy(plugin("LeavesTrace"), m_Folder.filePath("x.so")));
    const PluginRecord &record = m_Kit.add(m_Folder.filePath("x.so"));
    EXPECT_EQ(record.state, PluginState::Found);
    EXPECT_TRUE(record.isPromising());
    EXPECT_FALSE(record.isUsable());
    EXPECT_FALSE(m_Kit.execute(record));
    EXPECT_TRUE(m_Kit.shutDown());
    EXPECT_FALSE(hasRun());
    EXPECT_TRUE(m_Kit.open(record).isUsable());
    EXPECT_TRUE(hasRun());
}

TEST_F(DescribedPluginTest, OneWhoseNameIsTakenIsNotOpened)
{
    EXPECT_TRUE(QFile::copy(plugin("LeavesTrace"), m_Folder.filePath("x.so")));
    const PluginRecord &record = m_Kit.addOverruled(m_Folder.filePath("x.so"), "/first/x.so");
    EXPECT_EQ(record.state, PluginState::Overruled);
    EXPECT_EQ(record.reason, m_Folder.filePath("x.so") +
                                 " is not used, since /first/x.so has its name and was found "
                                 "before it");
    EXPECT_EQ(m_Log.texts(), QStringList(record.reason));
    EXPECT_FALSE(m_Kit.open(record).isUsable());
    EXPECT_FALSE(hasRun());
}

TEST_F(DescribedPluginTest, TheDescriptorStandsBesideTheLibraryOrItsLink)
{
    EXPECT_TRUE(QFile::copy(plugin("LeavesTrace"), m_Folder.filePath("libReal.so.0")));
    QFile file(m_Folder.filePath("Linked.plugin"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Plugin]\nKit = 2.3\nTitle = By Its Link\n");
    file.close();
    QFile::link(m_Folder.filePath("libReal.so.0"), m_Folder.filePath("Linked.so"));
    EXPECT_EQ(m_Kit.add(m_Folder.filePath("Linked.so")).descriptor.title, "By Its Link");
}

TEST_F(DescribedPluginTest, AMissingPageIsALineOfTheLogAlone)
{
    EXPECT_TRUE(load("Helpless", "[Plugin]\nKit = 2.3\nHelp = no.html\n").isUsable());
    EXPECT_EQ(m_Log.texts(), QStringList(m_Folder.filePath("Helpless.plugin") +
                                         ":3: there is no help page no.html beside this file"));
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
