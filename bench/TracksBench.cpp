// SPDX-License-Identifier: GPL-3.0-or-later
// An editor window of full-HD size with all tracks and marks on: how long each turn of the event
// loop takes while one scrolls and zooms, and until all tracks are there, beside the same without
// tracks. The counted work is that of a test; here it is told beside the times.
#include "AlignmentWindow.h"
#include "Companion.h"
#include "ConfigStore.h"
#include "DataPoint.h"
#include "History.h"
#include "KALMO2.h"
#include "MadeAlignment.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"

#include <QApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr QSize kFullHd(1920, 1080);
constexpr double kFrame = 16;
constexpr int kSteps = 150;

// Of the processor, which other programs leave alone.
double now()
{
    std::timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

double since(double start)
{
    return now() - start;
}

double quantile(std::vector<double> times, double part)
{
    std::ranges::sort(times);
    return times[static_cast<std::size_t>(part * double(times.size() - 1) + 0.5)];
}

TAMBO::AlignmentRecord annotated(unsigned long rows, unsigned long columns)
{
    TAMBO::AlignmentRecord record = madeAlignment(rows, columns);
    std::mt19937 random(5);
    for (const auto &[tag, letters] :
         {std::pair("SS_cons", "HHHHEEEEC."), std::pair("SA_cons", "0123456789"),
          std::pair("PP_cons", "0123456789*"), std::pair("RF", "x.")}) {
        std::string text;
        while (text.size() < columns)
            text.append(1 + random() % 9, letters[random() % std::string(letters).size()]);
        text.resize(columns);
        record.columnAnnotations.push_back({tag, text});
    }
    return record;
}

class TracksBench
{
public:
    TracksBench(unsigned long rows, unsigned long columns)
    {
        TAMBO::AlignmentRecord record = annotated(rows, columns);
        {
            const DataPointBase guard(nullptr, Publisher::Add);
            m_Alignment = TAMBO::ObjectFactory::adopt(std::move(record));
        }
        m_Window = std::make_unique<ZEP::KALMO2>();
        m_Window->resize(kFullHd);
        m_Window->show();
        m_Window->Populate(m_Alignment);
        m_Served = TAMBO::AlignmentWindow::Of(m_Window.get());
        m_Companion = std::make_unique<companion::Companion>(*m_Served);
        settle();
        std::printf("\n%lu x %lu\n", rows, columns);
    }
    ~TracksBench()
    {
        m_Companion.reset();
        m_Window.reset();
        TAMBO::ObjectSpace::get().reset();
    }
    TracksBench(const TracksBench &) = delete;
    TracksBench &operator=(const TracksBench &) = delete;

    void showTracks()
    {
        companion::Tracks &tracks = m_Companion->tracks();
        tracks.toggle();
        for (const companion::Track track : companion::kTracks)
            tracks.canvas().setOn(track, true);
        for (unsigned long row = 0; row < companion::TrackCanvas::kMostRows; ++row)
            m_Alignment->selectInRow(row, {0, m_Alignment->width()});
        tracks.chooseRows();
        settle();
    }
    void scroll(const std::string &what, int width, double cells)
    {
        m_Served->setCellSize({width, 2 * width});
        m_Served->scrollTo({0, 0});
        settle();
        const int step = std::max(1, int(cells * width));
        run(what + ", " + std::to_string(width) + " pixels", [&](int) {
            m_Served->scrollBy({step, 2 * width});
        });
    }
    void zoom(const std::string &what)
    {
        m_Served->scrollTo({20'000, 2'000});
        settle();
        run(what, [&](int i) {
            const int width = 6 + i % 24;
            m_Served->setCellSize({width, 2 * width}, {600, 300});
        });
    }
    void edit(const std::string &what)
    {
        m_Served->setCellSize({6, 12});
        m_Served->scrollTo({0, 0});
        settle();
        run(what, [&](int i) {
            DataPoint<TAMBO::Alignment> change(nullptr, m_Alignment);
            change->insertGap(static_cast<unsigned long>(i), 20);
        });
    }

private:
    bool isComputing() { return m_Companion->tracks().canvas().isComputing(); }
    void settle()
    {
        do
            QCoreApplication::processEvents();
        while (isComputing());
        QCoreApplication::processEvents();
    }
    // Each turn of the event loop by itself: that of the step, which paints, and those that compute
    // what is left.
    void run(const std::string &what, const std::function<void(int)> &step)
    {
        std::vector<double> steps;
        std::vector<double> turns;
        std::vector<double> known;
        const std::size_t before = m_Companion->tracks().canvas().columns().computed();
        for (int i = 0; i < kSteps; ++i) {
            const double start = now();
            step(i);
            QCoreApplication::processEvents(QEventLoop::AllEvents, 0);
            QCoreApplication::sendPostedEvents();
            steps.push_back(since(start));
            while (isComputing()) {
                const double turn = now();
                QCoreApplication::processEvents(QEventLoop::AllEvents, 0);
                turns.push_back(since(turn));
            }
            known.push_back(since(start));
            settle();
        }
        const std::size_t columns = m_Companion->tracks().canvas().columns().computed() - before;
        std::printf("  %-40s step %6.2f %6.2f %6.2f   turn %6.2f %6.2f   all known %7.2f %7.2f   "
                    "%zu columns\n",
                    what.c_str(), quantile(steps, 0.5), quantile(steps, 0.99), quantile(steps, 1),
                    turns.empty() ? 0 : quantile(turns, 0.5),
                    turns.empty() ? 0 : quantile(turns, 1), quantile(known, 0.5),
                    quantile(known, 1), columns);
        std::fflush(stdout);
    }

    TAMBO::Alignment *m_Alignment = nullptr;
    std::unique_ptr<ZEP::KALMO2> m_Window;
    TAMBO::AlignmentWindow *m_Served = nullptr;
    std::unique_ptr<companion::Companion> m_Companion;
};

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const QApplication application(argc, argv);
    const QTemporaryDir directory;
    qputenv("TAMBO_USER_DIR", directory.path().toUtf8());
    TAMBO::services::ConfigStore::setInstance(std::make_unique<TAMBO::services::ConfigStore>(
        QString(), directory.filePath(QStringLiteral("settings.ini"))));
    std::printf("in milliseconds of the processor; a frame is %.0f. step: p50, p99, most; turn: "
                "p50, most; all known: "
                "p50, most\n",
                kFrame);
    for (const auto &[rows, columns] :
         {std::pair(10'000UL, 10'000UL), std::pair(1'000'000UL, 200UL)}) {
        if (argc > 1 && std::strtoul(argv[1], nullptr, 10) != rows)
            continue;
        TracksBench bench(rows, columns);
        for (const char *const kind : {"without tracks", "all tracks"}) {
            for (const int width : {6, 12, 24})
                bench.scroll(std::string("scroll by 3 columns, ") + kind, width, 3);
            bench.scroll(std::string("scroll by a page, ") + kind, 6, 250);
            bench.zoom(std::string("zoom, 6 to 29 pixels, ") + kind);
            bench.edit(std::string("gap in a row, ") + kind);
            if (std::string(kind) == "without tracks")
                bench.showTracks();
        }
    }
    TAMBO::services::ConfigStore::setInstance(nullptr);
    return 0;
}
