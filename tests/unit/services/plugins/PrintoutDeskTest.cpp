// SPDX-License-Identifier: GPL-3.0-or-later
// Which folder is offered for a printed file.
#include "PrintoutDesk.h"

#include "ObjectSpace.h"
#include "Space.h"
#include "support/ScopedSettings.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace PrintoutDeskTest {

using TAMBO::services::PrintoutDesk;

class PrintoutDeskTest : public testing::Test
{
protected:
    QString makeFolder(const QString &name) const
    {
        EXPECT_TRUE(QDir(m_Folder.path()).mkpath(name));
        return m_Folder.filePath(name);
    }
    QString folder() const { return m_Desk.folderFor(*TAMBO::Space::instance()); }

    const ScopedSettings m_Settings{""};
    const QTemporaryDir m_Folder;
    PrintoutDesk m_Desk;
};

TEST_F(PrintoutDeskTest, WithoutAnyOtherItIsTheWorkingFolder)
{
    EXPECT_EQ(folder(), QDir::currentPath());
    m_Desk.setFolderOf([](const auto &) { return QString(); });
    EXPECT_EQ(folder(), QDir::currentPath());
}

TEST_F(PrintoutDeskTest, TheLastOneComesBeforeThatOfTheObject)
{
    const QString own = makeFolder("own");
    const QString other = makeFolder("other");
    m_Desk.setFolderOf([own](const auto &) { return own; });
    EXPECT_EQ(folder(), own);
    m_Desk.noteWritten(other + "/x.ps");
    EXPECT_EQ(folder(), other);
    // It is a setting, so that the next session knows it.
    PrintoutDesk later;
    EXPECT_EQ(later.folderFor(*TAMBO::Space::instance()), other);
}

TEST_F(PrintoutDeskTest, FoldersThatAreNotThereAreNotOffered)
{
    const QString own = makeFolder("own");
    m_Desk.setFolderOf([own](const auto &) { return own; });
    m_Desk.noteWritten(m_Folder.filePath("gone/x.ps"));
    EXPECT_EQ(folder(), own);
    ASSERT_TRUE(QDir(own).removeRecursively());
    EXPECT_EQ(folder(), QDir::currentPath());
}

} // namespace PrintoutDeskTest
