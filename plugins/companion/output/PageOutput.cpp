// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageOutput.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "PageFileRun.h"
#include "PagedPages.h"
#include "Printouts.h"
#include "Texts.h"

#include <QMainWindow>
#include <QPointer>
#include <QPrinter>
#include <QProgressDialog>

#include <utility>

namespace companion {

namespace {

constexpr auto kOutputSlice = std::chrono::milliseconds(6);
constexpr int kBeforeOutputShown = 300;
constexpr int kOutputSteps = 1000;

// Goes on until goOn says that nothing is left; false when the user has given up, or the alignment
// has gone, of which nobody else knows.
template <typename GoOn, typename Done>
bool runWithProgress(TAMBO::AlignmentWindow &window, const QString &text, const GoOn &goOn,
                     const Done &done)
{
    const QPointer<TAMBO::AlignmentWindow> alive(&window);
    const TAMBO::Alignment *const alignment = window.alignment();
    QProgressDialog progress(text, tr("Cancel"), 0, kOutputSteps, window.mainWindow());
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(kBeforeOutputShown);
    progress.setAutoReset(false);
    progress.setAutoClose(false);
    while (goOn(kOutputSlice)) {
        progress.setValue(int(done() * kOutputSteps));
        if (progress.wasCanceled() || !alive || alive->alignment() != alignment)
            return false;
    }
    return true;
}

OutputOutcome writePages(TAMBO::AlignmentWindow &window, const PagePlan &plan, const QString &file,
                         std::optional<PageFormat> format, double dotsOfInch)
{
    PageFileRun run(*window.alignment(), plan, file, format, dotsOfInch);
    const bool isWhole = runWithProgress(
        window, tr("Writing %1…").arg(file),
        [&run](std::chrono::microseconds most) { return run.goOn(most); },
        [&run] { return run.done(); });
    if (!run.error().isEmpty())
        return {OutputEnd::Failed, run.error()};
    if (!isWhole)
        return {OutputEnd::GivenUp, {}};
    Printouts::Written(file);
    return {};
}

// Those that the printer's dialog asks for.
std::pair<std::size_t, std::size_t> printedPages(const QPrinter &printer, std::size_t pages)
{
    if (printer.printRange() != QPrinter::PageRange || printer.fromPage() < 1)
        return {0, pages};
    const auto first = std::size_t(printer.fromPage() - 1);
    const auto end = printer.toPage() < 1 ? pages : std::size_t(printer.toPage());
    return {std::min(first, pages), std::min(end, pages)};
}

} // namespace

OutputOutcome writePages(TAMBO::AlignmentWindow &window, const PagePlan &plan, const QString &file,
                         double dotsOfInch)
{
    return writePages(window, plan, file, pageFormatOf(file), dotsOfInch);
}

OutputOutcome printPages(TAMBO::AlignmentWindow &window, PageOrder order, QPrinter &printer)
{
    order.paper = printer.pageLayout().fullRect(QPageLayout::Point).size();
    order.hasBreaks = true;
    const TAMBO::Alignment &alignment = *window.alignment();
    const PagePlan plan(std::move(order), alignment);
    if (!printer.outputFileName().isEmpty())
        return writePages(window, plan, printer.outputFileName(), PageFormat::Pdf, kPointsOfInch);
    if (!plan.layout.obstacle().isEmpty())
        return {OutputEnd::Failed, plan.layout.obstacle()};
    printer.setFullPage(true);
    printer.setDocName(plan.order.title);
    const QString refused =
        tr("The printer \"%1\" did not take the pages.").arg(printer.printerName());
    PagedPages pages(plan, printer, printer.resolution());
    if (pages.hasFailed())
        return {OutputEnd::Failed, refused};
    const auto [first, end] = printedPages(printer, plan.layout.pages());
    PageRun run(alignment, plan, pages, first, end);
    const unsigned long revision = alignment.layoutRevision();
    bool isSame = true;
    const bool isWhole = runWithProgress(
        window, tr("Printing %1…").arg(plan.order.title),
        [&](std::chrono::microseconds most) {
            isSame = alignment.layoutRevision() == revision;
            return isSame && run.goOn(most) && !pages.hasFailed();
        },
        [&run] { return run.done(); });
    if (!isWhole || !isSame) {
        printer.abort();
        return isSame ? OutputOutcome{OutputEnd::GivenUp, {}}
                      : OutputOutcome{OutputEnd::Failed,
                                      tr("Nothing was printed: the alignment has been changed "
                                         "meanwhile.")};
    }
    static_cast<void>(pages.finish({}));
    if (pages.hasFailed())
        return {OutputEnd::Failed, refused};
    Printouts::Sent(printer.printerName());
    return {};
}

} // namespace companion
