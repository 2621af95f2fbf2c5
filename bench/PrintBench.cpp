// SPDX-License-Identifier: GPL-3.0-or-later
// How long an alignment takes from the call to the finished PDF and PostScript file. The cost of a
// cell is the same in small and in large alignments.
#include "ConfigStore.h"
#include "DataPoint.h"
#include "KALMO2.h"
#include "MadeAlignment.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"
#include "PageFile.h"

#include <QApplication>
#include <QFileInfo>
#include <QPainter>
#include <QPrinter>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>
#include <utility>

namespace {

constexpr double kBar = 1.2;
constexpr int kRuns = 3;
// More are painted once, and not converted: nobody prints thousands of pages as PostScript.
constexpr double kManyCells = 1e6;

[[noreturn]] void fail(const char *what)
{
    std::fprintf(stderr, "bench_print: %s\n", what);
    std::exit(1);
}

// Of this process alone, so that others on the computer do not count.
double processorMilliseconds()
{
    return double(std::clock()) * 1000 / CLOCKS_PER_SEC;
}

class PrintBench
{
public:
    PrintBench(unsigned long rows, unsigned long columns) : m_Rows(rows), m_Columns(columns)
    {
        TAMBO::AlignmentRecord record = madeAlignment(rows, columns);
        TAMBO::Alignment *alignment = nullptr;
        {
            const DataPointBase guard(nullptr, Publisher::Add);
            alignment = TAMBO::ObjectFactory::adopt(std::move(record));
        }
        m_Window = std::make_unique<ZEP::KALMO2>();
        m_Window->Populate(alignment);
    }
    ~PrintBench()
    {
        m_Window.reset();
        TAMBO::ObjectSpace::get().reset();
    }
    PrintBench(const PrintBench &) = delete;
    PrintBench &operator=(const PrintBench &) = delete;

    // Nanoseconds a cell for the painting of the pages.
    double measure(ZEP::KALMO2::PrintStyle style, const char *name)
    {
        const double cells = double(m_Rows) * double(m_Columns);
        const QString pdf = m_Folder.filePath(QStringLiteral("out.pdf"));
        const int runs = cells > kManyCells ? 1 : kRuns;
        double painting = paint(style, pdf);
        for (int run = 1; run < runs; ++run)
            painting = std::min(painting, paint(style, pdf));
        const double perCell = painting * 1e6 / cells;
        std::printf("  %6lu x %-6lu %-4s %10.0f %8.0f %8.1f", m_Rows, m_Columns, name, painting,
                    perCell, double(QFileInfo(pdf).size()) / cells);
        if (cells > kManyCells)
            std::printf(" %10s %8s %8s", "-", "-", "-");
        else
            convert(pdf, cells);
        return perCell;
    }

private:
    void convert(const QString &pdf, double cells)
    {
        const QString ps = m_Folder.filePath(QStringLiteral("out.ps"));
        const double start = processorMilliseconds();
        if (!Pages::writePageFile(pdf, {ps, {}, {}}).isEmpty())
            fail("the PostScript was not written");
        const double taken = processorMilliseconds() - start;
        std::printf(" %10.0f %8.0f %8.1f", taken, taken * 1e6 / cells,
                    double(QFileInfo(ps).size()) / cells);
    }
    double paint(ZEP::KALMO2::PrintStyle style, const QString &pdf)
    {
        QPrinter printer(QPrinter::ScreenResolution);
        // As high as the rows of one block, but no smaller than usual.
        constexpr double kPointsPerRow = 14;
        const QSizeF size(595, std::max(842.0, double(m_Rows + 6) * kPointsPerRow));
        printer.setPageSize(QPageSize(size, QPageSize::Point));
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(pdf);
        const double start = processorMilliseconds();
        QPainter painter(&printer);
        m_Window->drawIt(&painter, style);
        painter.end();
        const double taken = processorMilliseconds() - start;
        if (!Pages::isCompletePdf(pdf) || QFileInfo(pdf).size() < qint64(m_Rows * m_Columns))
            fail("the pages were not painted");
        return taken;
    }

    unsigned long m_Rows;
    unsigned long m_Columns;
    QTemporaryDir m_Folder;
    std::unique_ptr<ZEP::KALMO2> m_Window;
};

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // What the editor tells the log is not what is measured.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const QApplication application(argc, argv);
    const QTemporaryDir directory;
    TAMBO::services::ConfigStore::setInstance(std::make_unique<TAMBO::services::ConfigStore>(
        QString(), directory.filePath(QStringLiteral("settings.ini"))));

    std::printf("  %-20s %10s %8s %8s %10s %8s %8s %8s\n", "rows x columns", "pages ms", "ns/cell",
                "B/cell", ".ps ms", "ns/cell", "B/cell", "of first");
    constexpr std::pair<unsigned long, unsigned long> kSizes[] = {
        {50, 500}, {100, 2000}, {1000, 5000}};
    bool isFlat = true;
    for (const auto &[style, name] :
         {std::pair(ZEP::KALMO2::Fat, "fat"), std::pair(ZEP::KALMO2::BlackAndWhite, "bw")}) {
        double first = 0;
        for (const auto &[rows, columns] : kSizes) {
            const double perCell = PrintBench(rows, columns).measure(style, name);
            first = first > 0 ? first : perCell;
            isFlat = isFlat && perCell <= kBar * first;
            std::printf(" %8.2f\n", perCell / first);
            std::fflush(stdout);
        }
    }
    std::printf("  bar: the cost of a cell at most %.1f of the first: %s\n", kBar,
                isFlat ? "kept" : "MISSED");
    TAMBO::services::ConfigStore::setInstance(nullptr);
    return isFlat ? 0 : 1;
}
