// SPDX-License-Identifier: GPL-3.0-or-later
// A workbench that recovers what another one has left behind.
#include "AppFixture.h"
#include "Directories.h"
#include "MainWindow.h"
#include "ObjectOperations.h"
#include "ObjectTree.h"
#include "ObjectTreeModel.h"
#include "RecoveryDialog.h"
#include "SessionFolder.h"
#include "StoreReader.h"
#include "StoredObject.h"
#include "UndoCommands.h"
#include "Workbench.h"
#include "support/Answering.h"
#include "support/WaitUntil.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTreeWidget>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace RecoveredWorkTest {

using namespace TAMBO;
using app::LeftSession;
using app::LoadReport;
using app::RecoveryDialog;
using app::SessionFolder;
using app::Workbench;
using sessions::StoreReader;

class RecoveredWorkTest : public AppFixture
{
protected:
    RecoveredWorkTest() { begin(); }
    ~RecoveredWorkTest() override
    {
        end();
        QDir(folder()).removeRecursively();
    }

    static QString folder() { return services::Directories::state() + "/sessions"; }
    void begin()
    {
        m_Workbench = std::make_unique<Workbench>(Workbench::Attendance::User, withoutPlugins());
        QObject::connect(m_Workbench.get(), &Workbench::opened, m_Workbench.get(),
                         [this](const LoadReport &report) { m_Report = report; });
    }
    void end()
    {
        m_Workbench->undo().history().clear();
        m_Workbench.reset();
        space().reset();
    }
    void open(const QString &file)
    {
        m_Workbench->open({file});
        waitUntil([this] { return !m_Workbench->loader().isBusy(); });
    }
    // As it is on the disk at this moment; nothing when that cannot be read.
    std::optional<LeftSession> left()
    {
        const QString copy = m_Folder.filePath("left");
        QDir(copy).removeRecursively();
        QDir().mkpath(copy);
        for (const QFileInfo &file : QDir(folder()).entryInfoList(QDir::Files)) {
            if (!QFile::copy(file.filePath(), copy + u'/' + file.fileName()))
                return std::nullopt;
        }
        const std::vector<LeftSession> found = SessionFolder(copy).leftBehind();
        return found.empty() ? std::nullopt : std::optional(found.front());
    }
    // Of what left() has found.
    [[nodiscard]] bool hasValue(std::string_view wanted) const
    {
        bool isThere = false;
        const QDir copy(m_Folder.filePath("left"));
        for (const QFileInfo &file : copy.entryInfoList({"*.session"}, QDir::Files)) {
            const auto store =
                StoreReader::open(file.filePath().toStdString(), StoreReader::Kind::LeftBehind);
            const auto look = [&](std::string_view name, std::string_view content) {
                isThere = isThere || (name == wanted && !content.empty());
                return Result<void>();
            };
            if (!store || !store.value()->forEachValue(look))
                return false;
        }
        return isThere;
    }
    // The workbench ends without a word where left() has looked last, and the next one recovers it.
    void killAndRecover()
    {
        end();
        const QString copy = m_Folder.filePath("left");
        for (const QFileInfo &file : QDir(copy).entryInfoList(QDir::Files))
            ASSERT_TRUE(QFile::copy(file.filePath(), folder() + u'/' + file.fileName()));
        begin();
        answering<RecoveryDialog>([this](RecoveryDialog &dialog) {
            m_Listed = dialog.findChild<QTreeWidget *>("LeftSessions")->topLevelItem(0)->text(2);
            dialog.findChild<QPushButton *>("Recover")->click();
        });
        m_Workbench->keepWork();
    }

    std::unique_ptr<Workbench> m_Workbench;
    LoadReport m_Report;
    // What the dialog said of the session.
    QString m_Listed;
};

TEST_F(RecoveredWorkTest, SaveGoesBackToTheFile)
{
    m_Workbench->keepWork();
    const QString file = write("family.fasta", ">a\nAC-D\n>b\nACCD\n");
    open(file);
    std::uint64_t changes = 0;
    waitUntil([&] {
        const std::optional<LeftSession> session = left();
        changes = session ? session->changes : 0;
        return changes > 0 && hasValue("files");
    });
    m_Report.alignments.back()->moveGap(0, 2, 1, true);
    waitUntil([&] {
        const std::optional<LeftSession> session = left();
        return session && session->changes > changes && hasValue("files");
    });
    killAndRecover();
    Compound *const family = space().object(space().objectCount() - 1);
    app::MainWindow &window = m_Workbench->window();
    window.tree().selectionModel()->select(window.objects().indexOf(family),
                                           QItemSelectionModel::ClearAndSelect |
                                               QItemSelectionModel::Rows);
    for (QAction *entry : window.menuBar()->actions().front()->menu()->actions()) {
        if (entry->text().remove(u'&') == "Save")
            entry->trigger();
    }
    QFile saved(file);
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
    EXPECT_EQ(saved.readAll(), ">a\nA-CD\n>b\nACCD\n");
}

TEST_F(RecoveredWorkTest, WhatIsSelectedAndLockedAndRangesAreThere)
{
    m_Workbench->keepWork();
    open(write("family.fasta", ">a\nAC-D\n>b\nACCD\n"));
    Alignment &family = *m_Report.alignments.back();
    family.range({1, 3});
    setObjectLocked(family, true);
    Compound &sequence = *space().object(0);
    sequence.SetSelected(true);
    const std::uint32_t number = identityOf(sequence);
    ASSERT_EQ(space().object(space().objectCount() - 1), &family);
    waitUntil([&] { return left() && hasValue("alignment-marks") && hasValue("marks"); });
    killAndRecover();
    auto *const recovered = dynamic_cast<Alignment *>(space().object(space().objectCount() - 1));
    ASSERT_NE(recovered, nullptr);
    EXPECT_TRUE(recovered->IsLocked());
    EXPECT_EQ(recovered->range(), Alignment::Range(1, 3));
    EXPECT_EQ(identityOf(*space().object(0)), number);
    EXPECT_TRUE(space().object(0)->IsSelected());
}

TEST_F(RecoveredWorkTest, WhatIsNotedOfObjectsIsThere)
{
    const app::ObjectNote note{"Model of globins", {{"Identity (%)", "35.2"}}};
    m_Workbench->keepWork();
    open(write("family.fasta", ">a\nAC-D\n>b\nACCD\n"));
    m_Workbench->notes().set(*m_Report.alignments.back(), note);
    waitUntil([&] { return left() && hasValue("notes"); });
    killAndRecover();
    const app::ObjectNote *const found =
        m_Workbench->notes().of(*space().object(space().objectCount() - 1));
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(*found, note);
}

TEST_F(RecoveredWorkTest, AFileThatWasBeingOpenedIsNamedAndOpenedAgain)
{
    m_Workbench->keepWork();
    // Nobody writes the end of it yet.
    const QString file = m_Folder.filePath("coming.fasta");
    ASSERT_EQ(mkfifo(file.toUtf8().constData(), 0600), 0);
    m_Workbench->open({file});
    waitUntil([&] {
        const std::optional<LeftSession> session = left();
        return session && session->objects == "was being opened: coming.fasta";
    });
    m_Workbench->loader().cancel();
    const int pipe = ::open(file.toUtf8().constData(), O_WRONLY);
    ASSERT_GE(pipe, 0);
    ::close(pipe);
    waitUntil([this] { return !m_Workbench->loader().isBusy(); });
    ASSERT_TRUE(QFile::remove(file));
    write("coming.fasta", ">a\nAC-D\n");
    killAndRecover();
    EXPECT_EQ(m_Listed, "was being opened: coming.fasta");
    waitUntil([this] { return !m_Workbench->loader().isBusy(); });
    EXPECT_EQ(topLevelNames().back(), "coming");
}

TEST_F(RecoveredWorkTest, AFileThatIsThereIsNamedNoMore)
{
    m_Workbench->keepWork();
    open(write("family.fasta", ">a\nAC-D\n"));
    waitUntil([&] {
        const std::optional<LeftSession> session = left();
        return session && session->objects == "family, a";
    });
}

} // namespace RecoveredWorkTest
