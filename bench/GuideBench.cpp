// SPDX-License-Identifier: GPL-3.0-or-later
// Gaps that are dragged in a family with structures, in an editor window of full-HD size: how long
// the window's thread is busy with each step of the pointer, and until all is known of the place.
// And structures that are kept superposed: how long an edit takes with them.
#include "AlignmentWindow.h"
#include "Companion.h"
#include "ConfigStore.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "History.h"
#include "KALMO2.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"
#include "Refit.h"
#include "Structure.h"
#include "StructureFits.h"

#include <QApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr QSize kFullHd(1920, 1080);
// Of an average structure.
constexpr int kAtomsPerResidue = 8;

// Of the processor, which other programs leave alone.
double now()
{
    std::timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return 1e3 * double(time.tv_sec) + 1e-6 * double(time.tv_nsec);
}

double quantile(std::vector<double> times, double part)
{
    std::ranges::sort(times);
    return times[std::size_t(part * double(times.size() - 1) + 0.5)];
}

void print(const std::string &what, const std::vector<double> &times)
{
    std::printf("  %-52s %8.2f %8.2f %8.2f\n", what.c_str(), quantile(times, 0.5),
                quantile(times, 0.99), quantile(times, 1));
    std::fflush(stdout);
}

class GuideBench
{
public:
    GuideBench(int structures, int residues, int sequences)
    {
        TAMBO::setEditRecorder(&m_History);
        std::vector<TAMBO::Compound *> rows;
        {
            const DataPointBase guard(nullptr, Publisher::Add);
            for (int i = 0; i < structures; ++i)
                rows.push_back(chain(i, residues));
            for (int i = 0; i < sequences; ++i)
                rows.push_back(TAMBO::DataMaker::makeSequence(
                    "s" + std::to_string(i), std::string(std::size_t(residues), 'A')));
            m_Alignment = TAMBO::DataMaker::makeAlignment("family", rows);
            for (unsigned long col = 20; col < static_cast<unsigned long>(residues); col += 40)
                m_Alignment->insertGapCol(col, 4);
            m_Alignment->insertGapCol(m_Alignment->width(), 20);
        }
        m_Window = std::make_unique<ZEP::KALMO2>();
        m_Window->resize(kFullHd);
        m_Window->show();
        m_Window->Populate(m_Alignment);
        m_Companion =
            std::make_unique<companion::Companion>(*TAMBO::AlignmentWindow::Of(m_Window.get()));
        QCoreApplication::processEvents();
        std::printf("\n%d structures of %d residues, %d further rows, %lu columns\n", structures,
                    residues, sequences, m_Alignment->width());
    }
    ~GuideBench()
    {
        m_Companion.reset();
        m_Window.reset();
        TAMBO::setEditRecorder(nullptr);
        m_History.clear();
        TAMBO::ObjectSpace::get().reset();
    }
    GuideBench(const GuideBench &) = delete;
    GuideBench &operator=(const GuideBench &) = delete;

    // Column by column, there and back.
    void drag(const std::string &what, unsigned long from, Qt::MouseButton button,
              unsigned long begin, unsigned long end)
    {
        std::vector<double> steps;
        std::vector<double> turns;
        std::vector<double> known;
        companion::GapGuide &guide = m_Companion->guide();
        guide.gapDragBegan({{1, from}, button, from});
        settle(guide, turns);
        for (unsigned long to = begin; to < end; ++to) {
            const double start = now();
            guide.gapDragMoved({{1, from}, button, to});
            QCoreApplication::processEvents(QEventLoop::AllEvents, 0);
            steps.push_back(now() - start);
            settle(guide, turns);
            known.push_back(now() - start);
        }
        guide.gapDragEnded({{1, from}, button, {}});
        print(what + ", a step", steps);
        print(what + ", a turn of the event loop behind it", turns);
        print(what + ", until all is known", known);
    }
    void firstPass()
    {
        companion::SpreadTable table;
        const double start = now();
        while (table.goOn(*m_Alignment, std::chrono::milliseconds(6))) {
        }
        print("spread of all columns, from nothing", {now() - start});
    }

    double edits(const std::string &what, unsigned long row)
    {
        std::vector<double> times;
        std::vector<double> undos;
        for (int i = 0; i < 30; ++i) {
            double start = now();
            {
                const DataPoint<TAMBO::Alignment> change(nullptr, m_Alignment);
                m_Alignment->insertGap(row, 10 + static_cast<unsigned long>(i));
            }
            times.push_back(now() - start);
            start = now();
            m_History.undo();
            undos.push_back(now() - start);
        }
        print(what, times);
        print(what + ", undo", undos);
        return quantile(times, 0.5);
    }
    void refit()
    {
        edits("a gap in row 2, not kept superposed", 1);
        const companion::Refit refit;
        const double start = now();
        companion::setRefitted(*m_Alignment, true);
        print("to begin to keep all superposed", {now() - start});
        edits("a gap in row 2, kept superposed", 1);
        const double whole = edits("a gap in row 1, kept superposed", 0);
        std::printf("  %-52s %8.1f MB\n", "of the last step, in the history",
                    double(m_History.bytes()) / 1048576);
        {
            const DataPoint<TAMBO::Alignment> change(nullptr, m_Alignment);
            TAMBO::StructureFits::keepChoice(
                *m_Alignment, {0, TAMBO::FitChoice::kAllColumns, TAMBO::FitChoice::kUsualCutoff});
        }
        // The first one takes the new choice over.
        edits("a gap in row 2, distant pairs left out", 1);
        edits("a gap in row 2, distant pairs left out", 1);
        const double core = edits("a gap in row 1, distant pairs left out", 0);
        std::printf("  %-52s %8.2f\n", "times as long as with all pairs", core / whole);
    }

private:
    static TAMBO::Compound *chain(int number, int residues)
    {
        std::mt19937 random{unsigned(number) + 1};
        std::normal_distribution<float> noise(0, 0.5F);
        TAMBO::StructureRecord record;
        record.name = "m" + std::to_string(number);
        TAMBO::ChainRecord &chain = record.chains.emplace_back();
        chain.name = "A";
        // Of every other one the last third has moved away.
        const auto isMoved = [&](int i) { return number % 2 == 1 && 3 * i > 2 * residues; };
        for (int i = 0; i < residues; ++i) {
            const float aside = isMoved(i) ? 25 : 0;
            TAMBO::ResidueRecord &residue = chain.residues.emplace_back();
            residue.typeName = "ALA";
            residue.letter = 'A';
            residue.number = TAMBO::SequenceNumber(i + 1);
            const double turn = 1.75 * i;
            for (int atom = 0; atom < kAtomsPerResidue; ++atom)
                residue.atoms.push_back({atom == 1 ? "CA" : "C" + std::to_string(atom), "C",
                                         TAMBO::Vertex(float(2.3 * std::cos(turn)) + noise(random) +
                                                           10 * std::sin(0.05F * float(i)) + aside,
                                                       float(2.3 * std::sin(turn)) + noise(random),
                                                       0.3F * float(i) + noise(random))});
        }
        for (int first = 10; first + 12 < residues; first += 30)
            record.elements.push_back({"H" + std::to_string(first), 'H', "A",
                                       TAMBO::SequenceNumber(first),
                                       TAMBO::SequenceNumber(first + 12)});
        return TAMBO::ObjectFactory::adopt(std::move(record))->Child(0);
    }
    // The event loop goes on as it does between two moves of the mouse.
    static void settle(const companion::GapGuide &guide, std::vector<double> &turns)
    {
        do {
            const double start = now();
            QCoreApplication::processEvents(QEventLoop::AllEvents, 0);
            turns.push_back(now() - start);
        } while (!guide.isSettled());
    }

    TAMBO::History m_History;
    TAMBO::Alignment *m_Alignment = nullptr;
    std::unique_ptr<ZEP::KALMO2> m_Window;
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
    std::printf("in milliseconds of the processor: p50, p99, most; a frame is 16\n");
    struct Size
    {
        int structures;
        int residues;
        int sequences;
    };
    for (const auto &[structures, residues, sequences] :
         {Size{5, 300, 0}, Size{200, 300, 0}, Size{200, 5000, 0}, Size{5, 200, 1'000'000}}) {
        GuideBench bench(structures, residues, sequences);
        bench.firstPass();
        bench.drag("one gap", 20, Qt::LeftButton, 21, 120);
        bench.drag("a run of gaps", 20, Qt::MiddleButton, 21, 120);
        bench.drag("a residue and what follows", 19, Qt::MiddleButton, 20, 60);
        bench.refit();
    }
    TAMBO::services::ConfigStore::setInstance(nullptr);
    return 0;
}
