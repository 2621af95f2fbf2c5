// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginFolders.h"

#include "Directories.h"
#include "LogBook.h"
#include "support/LogLines.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace TAMBO::services;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace PluginFoldersTest {

class PluginFoldersTest : public ::testing::Test
{
protected:
    ~PluginFoldersTest() override
    {
        qunsetenv("TAMBO_PLUGIN_DIR");
        qputenv("TAMBO_SYSTEM_PLUGIN_DIRS", "");
    }
    // Full path of "folder/name".
    QString put(const QString &file)
    {
        const QString path = m_Folder.filePath(file);
        EXPECT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        EXPECT_TRUE(QFile(path).open(QIODevice::WriteOnly));
        return path;
    }
    // Of those that count.
    QStringList libraries(const std::vector<PluginFolders::Folder> &folders)
    {
        QStringList files;
        for (const PluginFolders::Library &library : PluginFolders(folders).libraries())
            if (library.counts.isEmpty())
                files << library.file;
        return files;
    }
    QString path(const QString &name) const { return m_Folder.filePath(name); }

    QTemporaryDir m_Folder;
    LogLines m_Log;
};

TEST_F(PluginFoldersTest, AddUpInTheirOrder)
{
    const QString last = put("a/libA.so.0");
    const QString second = put("b/c.so");
    const QString first = put("b/b.so");
    put("b/b.plugin");
    put("b/note.txt");
    EXPECT_EQ(libraries({{path("b")}, {path("a")}}), (QStringList{first, second, last}));
    EXPECT_EQ(m_Log.count(), 0);
}

TEST_F(PluginFoldersTest, OfTwoFilesOfOneNameTheFirstCounts)
{
    const QString first = put("a/libX.so.0");
    const QString second = put("b/libX.so");
    const auto found = PluginFolders({{path("a")}, {path("b")}}).libraries();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].file, first);
    EXPECT_EQ(found[0].counts, "");
    EXPECT_EQ(found[1].file, second);
    EXPECT_EQ(found[1].counts, first);
}

TEST_F(PluginFoldersTest, ALibraryThatIsReachedTwiceIsThereOnce)
{
    const QString file = put("a/libX.so.0");
    QFile::link(file, path("a/libY.so"));
    QFile::link(path("a"), path("b"));
    EXPECT_EQ(PluginFolders({{path("a")}, {path("b")}, {path("a/")}}).libraries().size(), 1U);
}

TEST_F(PluginFoldersTest, ANamedFolderThatIsMissingIsTold)
{
    const QString file = put("a/x.so");
    EXPECT_EQ(libraries({{path("none"), true}, {path("a")}}), QStringList(file));
    EXPECT_EQ(m_Log.texts(), QStringList("The folder of plug-ins " + path("none") +
                                         " cannot be read: No such file or directory"));
}

TEST_F(PluginFoldersTest, AllOthersThatAreMissingAreOneLineForDevelopers)
{
    EXPECT_THAT(libraries({{path("none")}, {path("nothing")}}), IsEmpty());
    EXPECT_EQ(m_Log.texts(), QStringList());
    const auto entries = LogBook::instance().entries();
    ASSERT_FALSE(entries.empty());
    EXPECT_TRUE(entries.back().isForDevelopers);
    EXPECT_EQ(entries.back().text,
              "There is no folder of plug-ins " + path("none") + ", " + path("nothing"));
}

TEST_F(PluginFoldersTest, OneThatCannotBeReadIsToldWhoeverNamedIt)
{
    QFile::link(path("loop"), path("loop"));
    const QString file = put("file");
    EXPECT_THAT(libraries({{path("loop")}, {file}}), IsEmpty());
    EXPECT_EQ(m_Log.texts(),
              (QStringList{"The folder of plug-ins " + path("loop") +
                               " cannot be read: Too many levels of symbolic links",
                           "The folder of plug-ins " + file + " cannot be read: Not a directory"}));
}

TEST_F(PluginFoldersTest, TheUsersComeBeforeThoseOfTheSystemAndTheProgram)
{
    qputenv("TAMBO_PLUGIN_DIR", "/one::/two/");
    qunsetenv("TAMBO_SYSTEM_PLUGIN_DIRS");
    const PluginFolders folders = PluginFolders::standard();
    EXPECT_EQ(folders.paths(), (QStringList{"/one", "/two", Directories::data() + "/plugins",
                                            "/usr/local/lib/tambo/plugins",
                                            "/usr/lib/tambo/plugins", Directories::plugins()}));
    for (const PluginFolders::Folder &folder : folders.folders())
        EXPECT_EQ(folder.isNamed, folder.path == "/one" || folder.path == "/two")
            << folder.path.toStdString();
}

TEST_F(PluginFoldersTest, ThoseOfTheSystemCanBeOthersOrNone)
{
    qputenv("TAMBO_SYSTEM_PLUGIN_DIRS", "/opt/plugins");
    EXPECT_EQ(
        PluginFolders::standard().paths(),
        (QStringList{Directories::data() + "/plugins", "/opt/plugins", Directories::plugins()}));
    qputenv("TAMBO_SYSTEM_PLUGIN_DIRS", "");
    EXPECT_EQ(PluginFolders::standard().paths(),
              (QStringList{Directories::data() + "/plugins", Directories::plugins()}));
}

TEST_F(PluginFoldersTest, ARelativeOneIsBelowTheFolderOfTheCall)
{
    EXPECT_EQ(PluginFolders({{"plugs"}}).paths(),
              QStringList(QDir::current().absoluteFilePath("plugs")));
}

} // namespace PluginFoldersTest
