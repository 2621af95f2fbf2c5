// SPDX-License-Identifier: GPL-3.0-or-later
// The list of files opened last.
#include "RecentFiles.h"

#include "AppFixture.h"
#include "ConfigStore.h"

#include <QSignalSpy>

namespace RecentFilesTest {

using TAMBO::app::RecentFiles;
using TAMBO::services::ConfigStore;

class RecentFilesTest : public AppFixture
{
protected:
    QString m_File = m_Folder.filePath("tambo.ini");
    ConfigStore m_Store{QString(), m_File};
    RecentFiles m_Recent{m_Store};
};

TEST_F(RecentFilesTest, TheLatestComesFirstAndEachOnce)
{
    m_Recent.add({"/a", "/b"});
    m_Recent.add({"/c"});
    m_Recent.add({"/b"});
    EXPECT_EQ(m_Recent.files(), QStringList({"/b", "/c", "/a"}));
}

TEST_F(RecentFilesTest, OnlyTheLatestTenAreKept)
{
    for (int i = 0; i < 15; ++i)
        m_Recent.add({QStringLiteral("/%1").arg(i)});
    EXPECT_EQ(m_Recent.files().size(), RecentFiles::kMost);
    EXPECT_EQ(m_Recent.files().front(), "/14");
}

TEST_F(RecentFilesTest, TheyOutliveTheProgram)
{
    m_Recent.add({"/with blanks and = signs; äö"});
    ASSERT_TRUE(m_Store.save());
    ConfigStore store(QString(), m_File);
    EXPECT_EQ(RecentFiles(store).files(), QStringList{"/with blanks and = signs; äö"});
}

TEST_F(RecentFilesTest, TheListCanBeCleared)
{
    m_Recent.add({"/a", "/b"});
    const QSignalSpy changed(&m_Recent, &RecentFiles::changed);
    m_Recent.remove("/a");
    EXPECT_EQ(m_Recent.files(), QStringList{"/b"});
    m_Recent.clear();
    EXPECT_TRUE(m_Recent.files().isEmpty());
    EXPECT_EQ(changed.count(), 2);
}

} // namespace RecentFilesTest
