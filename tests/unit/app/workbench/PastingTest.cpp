// SPDX-License-Identifier: GPL-3.0-or-later
// What is on the clipboard comes into the workbench.
#include "AppFixture.h"
#include "MainWindow.h"
#include "UndoCommands.h"
#include "Workbench.h"
#include "support/WaitUntil.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QUrl>

namespace PastingTest {

using namespace TAMBO;
using app::LoadReport;
using app::Workbench;

class Pasting : public AppFixture
{
protected:
    Pasting()
    {
        m_Workbench = std::make_unique<Workbench>(Workbench::Attendance::User, withoutPlugins());
        QObject::connect(m_Workbench.get(), &Workbench::opened, m_Workbench.get(),
                         [this](const LoadReport &report) { m_Report = report; });
    }
    ~Pasting() override
    {
        QGuiApplication::clipboard()->clear();
        history().clear();
        m_Workbench.reset();
    }

    History &history() { return m_Workbench->undo().history(); }
    void paste(const QString &text)
    {
        QGuiApplication::clipboard()->setText(text);
        paste();
    }
    void paste()
    {
        m_Report = {};
        m_Workbench->paste();
        waitUntil([this] { return !m_Workbench->loader().isBusy(); });
    }
    [[nodiscard]] const Alignment *pasted() const
    {
        return m_Report.alignments.size() == 1 ? m_Report.alignments.front() : nullptr;
    }

    std::unique_ptr<Workbench> m_Workbench;
    LoadReport m_Report;
};

TEST_F(Pasting, TheRowsOfAFastaTextAreAnAlignment)
{
    paste(">a\nAC-D\n>b\nACCD\n");
    ASSERT_NE(pasted(), nullptr);
    EXPECT_EQ(pasted()->Name(), "pasted");
    EXPECT_EQ(pasted()->GetSequence(0, false), "AC-D");
    EXPECT_EQ(pasted()->GetSeqName(1), "b");
}

TEST_F(Pasting, LettersAloneAreASequence)
{
    paste("  MVLSPADKTN\r\nVKAAW\n\n");
    ASSERT_NE(pasted(), nullptr);
    EXPECT_EQ(pasted()->GetSequence(0, false), "MVLSPADKTNVKAAW");
}

TEST_F(Pasting, LettersInVeryManyLinesAreASequence)
{
    constexpr int kLines = 20000;
    paste(QStringLiteral("MVLSPADKTN\n").repeated(kLines));
    ASSERT_NE(pasted(), nullptr);
    EXPECT_EQ(pasted()->height(), 1U);
    EXPECT_EQ(pasted()->width(), 10U * kLines);
}

TEST_F(Pasting, EachHasANameOfItsOwnAndUndoTakesItBack)
{
    paste(">a\nACD\n");
    paste(">a\nACD\n");
    ASSERT_NE(pasted(), nullptr);
    EXPECT_EQ(pasted()->Name(), "pasted_2");
    EXPECT_EQ(Workbench::loadedAlignments().size(), 2U);
    history().undo();
    EXPECT_EQ(Workbench::loadedAlignments().size(), 1U);
}

TEST_F(Pasting, WhatWasPastedIsUnsavedAndNoRecentFile)
{
    paste(">a\nACD\n>b\nACD\n");
    ASSERT_NE(pasted(), nullptr);
    EXPECT_TRUE(history().isModified(*pasted()));
    auto *const recent = m_Workbench->window().menuBar()->actions().front()->menu();
    for (const QAction *const action : recent->findChildren<QAction *>())
        EXPECT_FALSE(action->text().contains("pasted")) << action->text().toStdString();
}

TEST_F(Pasting, CopiedFilesAreOpened)
{
    auto *const data = new QMimeData;
    data->setUrls({QUrl::fromLocalFile(write("family.fasta", ">a\nACD\n>b\nACD\n"))});
    QGuiApplication::clipboard()->setMimeData(data);
    paste();
    ASSERT_NE(pasted(), nullptr);
    EXPECT_EQ(pasted()->Name(), "family");
    EXPECT_FALSE(history().isModified(*pasted()));
}

TEST_F(Pasting, TextThatIsNoSequenceIsToldAndChangesNothing)
{
    paste("It is 3 o'clock.\nWhat a day!");
    EXPECT_EQ(pasted(), nullptr);
    EXPECT_TRUE(Workbench::loadedAlignments().empty());
    const auto boxes = m_Workbench->window().findChildren<QMessageBox *>("FailureBox");
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0]->text(), "What is on the clipboard could not be read.");
    EXPECT_TRUE(boxes[0]->informativeText().startsWith("pasted"))
        << boxes[0]->informativeText().toStdString();
    boxes[0]->accept();
}

TEST_F(Pasting, AnEmptyClipboardIsTold)
{
    paste(" \n");
    EXPECT_EQ(pasted(), nullptr);
    EXPECT_TRUE(Workbench::loadedAlignments().empty());
}

} // namespace PastingTest
