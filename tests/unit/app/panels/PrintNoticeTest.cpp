// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrintNotice.h"

#include "PrintoutDesk.h"
#include "support/ScopedSettings.h"

#include <QDesktopServices>
#include <QFile>
#include <QLabel>
#include <QMainWindow>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QToolButton>
#include <QUrl>

#include <gtest/gtest.h>

namespace PrintNoticeTest {

using TAMBO::app::PrintNotice;
using TAMBO::services::PrintoutDesk;

// What would be shown to the user, instead of showing it.
class Viewer : public QObject
{
    Q_OBJECT

public:
    Viewer() { QDesktopServices::setUrlHandler("file", this, "open"); }
    ~Viewer() override { QDesktopServices::unsetUrlHandler("file"); }

    QList<QUrl> opened;

public slots:
    void open(const QUrl &url) { opened << url; }
};

class PrintNoticeTest : public testing::Test
{
protected:
    PrintNoticeTest()
    {
        m_Window.statusBar()->addPermanentWidget(m_Notice);
        m_Window.resize(640, 100);
        m_Window.show();
    }

    QString print(const QString &name)
    {
        const QString path = m_Folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        m_Desk.noteWritten(path);
        return path;
    }
    void click(const char *name) const { m_Notice->findChild<QToolButton *>(name)->click(); }
    QWidget &text() const { return *m_Notice->findChild<QWidget *>("PrintedFile"); }

    const ScopedSettings m_Settings{""};
    const QTemporaryDir m_Folder;
    const Viewer m_Viewer;
    PrintoutDesk m_Desk;
    QMainWindow m_Window;
    PrintNotice *m_Notice = new PrintNotice(m_Desk);
};

TEST_F(PrintNoticeTest, NothingIsShownUntilSomethingIsPrinted)
{
    EXPECT_FALSE(m_Notice->isVisible());
    print("x.ps");
    EXPECT_TRUE(m_Notice->isVisible());
    click("DismissPrinted");
    EXPECT_FALSE(m_Notice->isVisible());
    print("x.ps");
    EXPECT_TRUE(m_Notice->isVisible());
}

TEST_F(PrintNoticeTest, WhatWasMadeIsNamedByWhatIsInTheFile)
{
    const auto said = [this] { return m_Notice->findChild<QLabel *>("PrintedFormat")->text(); };
    print("x.ps");
    EXPECT_EQ(said(), "Printed PostScript:");
    print("x.pdf");
    EXPECT_EQ(said(), "Printed PDF:");
    print("x");
    EXPECT_EQ(said(), "Printed:");
    QFile file(m_Folder.filePath("y.ps"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("%PDF-1.4");
    file.close();
    m_Desk.noteWritten(file.fileName());
    EXPECT_EQ(said(), "Printed PDF:");
}

TEST_F(PrintNoticeTest, TheLatestFileIsOpened)
{
    print("x.ps");
    const QString path = print("50% of #2.pdf");
    click("OpenPrinted");
    EXPECT_EQ(m_Viewer.opened, QList<QUrl>{QUrl::fromLocalFile(path)});
}

TEST_F(PrintNoticeTest, ALongNameLeavesRoomForOthers)
{
    const QString path = print(QString(200, 'x') + ".ps");
    EXPECT_LT(text().sizeHint().width(), 400);
    EXPECT_LT(m_Notice->minimumSizeHint().width(), 250);
    EXPECT_TRUE(text().toolTip().contains(path));
}

TEST_F(PrintNoticeTest, NamesAreNoMarkup)
{
    print("a<b>x<b>.ps");
    EXPECT_TRUE(text().toolTip().contains("a&lt;b&gt;x&lt;b&gt;.ps"));
}

TEST_F(PrintNoticeTest, AFileThatHasGoneIsSaid)
{
    const QSignalSpy failed(m_Notice, &PrintNotice::failed);
    const QString path = print("x.ps");
    ASSERT_TRUE(QFile::remove(path));
    click("OpenPrinted");
    ASSERT_EQ(failed.size(), 1);
    EXPECT_EQ(failed[0][0].toString(), path + " is not there any more.");
    EXPECT_TRUE(m_Viewer.opened.isEmpty());
}

} // namespace PrintNoticeTest

#include "PrintNoticeTest.moc"
