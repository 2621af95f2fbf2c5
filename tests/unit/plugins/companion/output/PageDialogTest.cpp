// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageDialog.h"

#include "../window/CompanionFixture.h"
#include "PageFormat.h"
#include "support/Answering.h"
#include "support/PrintedFile.h"

#include <QPrinter>
#include <QProgressDialog>
#include <QPushButton>

namespace PageDialogTest {

using companion::PageChoices;
using companion::PageColumns;
using companion::PageDialog;
using companion::PageOrder;
using companion::PageRows;
using companion::Track;

class DialogOfPages : public AlignmentCompanion
{
protected:
    DialogOfPages() { WorkbenchValues::Remove("companion", "pages"); }
    ~DialogOfPages() override { WorkbenchValues::Remove("companion", "pages"); }

    PageDialog &ask() { return *m_Companion->askForPages(PageDialog::For::Export); }
    PageOrder orderOf(const PageChoices &choices) const
    {
        return companion::orderOf(choices, m_Shown, m_Served->visibleCells(),
                                  {{Track::Occupancy}, {}});
    }
    static QStringList shownTexts(const PageDialog &dialog)
    {
        QStringList texts;
        for (const QLabel *const label : dialog.findChildren<QLabel *>())
            texts << label->text();
        return texts;
    }
    QString path(const QString &name) const { return m_Folder.filePath(name); }

    QTemporaryDir m_Folder;
};

TEST_F(DialogOfPages, AllOfTheAlignmentIsTakenAtFirst)
{
    const PageOrder order = orderOf(ask().choices());
    EXPECT_EQ(order.rows.size(), m_Shown.height());
    EXPECT_EQ(order.colBegin, 0U);
    EXPECT_EQ(order.colEnd, m_Shown.width());
    EXPECT_TRUE(order.tracks.empty());
    EXPECT_EQ(order.title, "large");
}

TEST_F(DialogOfPages, SelectedRowsARangeOrWhatIsInSightAreTaken)
{
    PageChoices choices = ask().choices();
    choices.rows = PageRows::Selected;
    EXPECT_TRUE(orderOf(choices).rows.empty());
    m_Shown.selectInRow(5, {0, m_Shown.width()});
    m_Shown.selectInRow(7, {0, m_Shown.width()});
    m_Shown.selectInRow(9, {0, 10});
    EXPECT_EQ(orderOf(choices).rows, (std::vector<unsigned long>{5, 7}));

    choices.columns = PageColumns::Range;
    choices.colBegin = 20;
    choices.colEnd = 1'000'000;
    EXPECT_EQ(orderOf(choices).colBegin, 20U);
    EXPECT_EQ(orderOf(choices).colEnd, m_Shown.width());

    m_Served->scrollTo({500, 300});
    const TAMBO::CellBlock seen = m_Served->visibleCells();
    choices.rows = PageRows::InSight;
    choices.columns = PageColumns::InSight;
    const PageOrder order = orderOf(choices);
    EXPECT_EQ(order.rows.front(), seen.rowBegin);
    EXPECT_EQ(order.rows.back(), seen.rowEnd - 1);
    EXPECT_EQ(order.colBegin, seen.colBegin);
    EXPECT_EQ(order.colEnd, seen.colEnd);
}

TEST_F(DialogOfPages, TracksInSightAreTaken)
{
    EXPECT_FALSE(ask().choices().hasTracks);
    m_Companion->tracks().toggle();
    EXPECT_TRUE(ask().choices().hasTracks);
}

TEST_F(DialogOfPages, PaperStandsUprightOrOnItsSide)
{
    PageChoices choices;
    EXPECT_EQ(orderOf(choices).paper, QSizeF(595, 842));
    choices.isLandscape = true;
    EXPECT_EQ(orderOf(choices).paper, QSizeF(842, 595));
}

TEST_F(DialogOfPages, ChoicesAreKeptButForThoseOfOneAlignment)
{
    PageDialog &dialog = ask();
    PageChoices chosen = dialog.choices();
    chosen.rows = PageRows::InSight;
    chosen.paper = QPageSize::A3;
    chosen.isLandscape = true;
    chosen.hasBreaks = false;
    chosen.fontSize = 11.5;
    chosen.mostColumns = 60;
    chosen.hasRuler = false;
    chosen.hasColors = false;
    chosen.resolution = 300;
    dialog.setChoices(chosen);
    EXPECT_TRUE(dialog.exportTo(path("out.svg")));
    const PageChoices now = ask().choices();
    EXPECT_EQ(now.rows, PageRows::All);
    EXPECT_EQ(now.paper, QPageSize::A3);
    EXPECT_TRUE(now.isLandscape);
    EXPECT_FALSE(now.hasBreaks);
    EXPECT_EQ(now.fontSize, 11.5);
    EXPECT_EQ(now.mostColumns, 60U);
    EXPECT_TRUE(now.hasNames);
    EXPECT_FALSE(now.hasRuler);
    EXPECT_TRUE(now.hasNumbers);
    EXPECT_FALSE(now.hasColors);
    EXPECT_EQ(now.resolution, 300);
}

TEST_F(DialogOfPages, BadKeptChoicesAreThoseOfTheStart)
{
    for (const char *const bad :
         {"", "x", "9999 2 3 4 5 6 7 8 9 0", "-1 1 1 1e9 1 1 1 1 1 99999999"}) {
        WorkbenchValues::Set("companion", "pages", bad);
        const PageChoices choices = PageChoices::kept();
        EXPECT_EQ(choices.paper, QPageSize::A4);
        EXPECT_GE(choices.fontSize, 2);
        EXPECT_LE(choices.fontSize, 40);
        EXPECT_EQ(choices.resolution, 150);
    }
}

TEST_F(DialogOfPages, TheFileIsCalledAfterTheAlignment)
{
    EXPECT_EQ(QFileInfo(ask().suggestedFile()).fileName(), "large.pdf");
    m_Window->Populate(&alignment({"AC"}, "../a/b"));
    EXPECT_EQ(QFileInfo(ask().suggestedFile()).fileName(), "_a_b.pdf");
}

TEST_F(DialogOfPages, EveryFilterHasItsEnding)
{
    QStringList endings;
    for (const QString &filter : companion::pageFilters()) {
        endings << companion::endingOf(filter);
        EXPECT_TRUE(companion::pageFormatOf("x." + endings.back()).has_value());
    }
    EXPECT_EQ(endings, QStringList({"pdf", "svg", "png", "html"}));
    EXPECT_TRUE(companion::pageFormatOf("X.PDF").has_value());
    EXPECT_FALSE(companion::pageFormatOf("pdf").has_value());
}

TEST_F(DialogOfPages, WritesTheFileAndCloses)
{
    PageDialog &dialog = ask();
    EXPECT_TRUE(dialog.exportTo(path("out.pdf")));
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_GT(PrintedFile(path("out.pdf")).pageCount(), 1);
}

TEST_F(DialogOfPages, TellsOnceWhatGoesWrong)
{
    PageDialog &dialog = ask();
    EXPECT_FALSE(dialog.exportTo(path("none/out.pdf")));
    EXPECT_TRUE(shownTexts(dialog).contains(path("none/out.pdf") +
                                            " was not written: No such file or directory."));
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(DialogOfPages, ReturnDoesWhatTheCommandIsFor)
{
    const auto defaultOf = [this](PageDialog::For what) {
        const PageDialog &dialog = *m_Companion->askForPages(what);
        for (const QPushButton *const button : dialog.findChildren<QPushButton *>())
            if (button->isDefault())
                return button->text();
        return QString();
    };
    EXPECT_EQ(defaultOf(PageDialog::For::Export), "&Export…");
    EXPECT_EQ(defaultOf(PageDialog::For::Print), "&Print…");
}

TEST_F(DialogOfPages, SaysHowManyPagesThereWillBe)
{
    PageDialog &dialog = ask();
    PageChoices chosen = dialog.choices();
    chosen.mostColumns = 40;
    dialog.setChoices(chosen);
    // A block of 120 rows takes two pages.
    EXPECT_TRUE(shownTexts(dialog).contains("20 pages, up to 40 columns in a block"))
        << shownTexts(dialog).join('|').toStdString();
    chosen.hasBreaks = false;
    dialog.setChoices(chosen);
    EXPECT_TRUE(shownTexts(dialog).contains("One sheet, up to 40 columns in a block"));
}

TEST_F(DialogOfPages, WhatCannotBeOnPagesIsToldAndNotOffered)
{
    PageDialog &dialog = ask();
    PageChoices chosen = dialog.choices();
    chosen.rows = PageRows::Selected;
    dialog.setChoices(chosen);
    EXPECT_TRUE(shownTexts(dialog).contains("No rows are chosen."));
    int disabled = 0;
    for (const QPushButton *const button : dialog.findChildren<QPushButton *>())
        disabled += !button->isEnabled();
    EXPECT_EQ(disabled, 2);
}

TEST_F(DialogOfPages, CancelLeavesNoFile)
{
    m_Window->Populate(&large(2000, 4000));
    PageDialog &dialog = ask();
    bool isAsked = false;
    answering<QProgressDialog>([&isAsked](QProgressDialog &progress) {
        isAsked = true;
        progress.cancel();
    });
    EXPECT_FALSE(dialog.exportTo(path("out.pdf")));
    EXPECT_TRUE(isAsked);
    EXPECT_TRUE(shownTexts(dialog).contains("Cancelled. Nothing was written."));
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(
        QDir(m_Folder.path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

TEST_F(DialogOfPages, ThePrintersPaperIsTaken)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path("printed.pdf"));
    printer.setPageSize(QPageSize(QPageSize::A5));
    printer.setPageOrientation(QPageLayout::Landscape);
    PageDialog &dialog = ask();
    EXPECT_TRUE(dialog.printOn(printer));
    EXPECT_FALSE(dialog.isVisible());
    const PrintedFile pdf(path("printed.pdf"));
    EXPECT_NEAR(pdf.pageSize().width(), 595, 1);
    EXPECT_NEAR(pdf.pageSize().height(), 420, 1);
    EXPECT_TRUE(pdf.text(0).contains("s0"));
}

TEST_F(DialogOfPages, GoesWithItsAlignment)
{
    const QPointer<PageDialog> dialog(&ask());
    m_Window->Populate(&alignment({"ACDEF"}, "other"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(dialog == nullptr || !dialog->isVisible());
    m_Window->Clear();
    EXPECT_EQ(m_Companion->askForPages(PageDialog::For::Print), nullptr);
}

TEST_F(DialogOfPages, ColumnsThatAreAddedAreTakenToo)
{
    PageDialog &dialog = ask();
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
        m_Shown.insertGapCol(0, 5);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(dialog.choices().colEnd, m_Shown.width());
}

} // namespace PageDialogTest
