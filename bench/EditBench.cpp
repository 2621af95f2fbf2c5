// SPDX-License-Identifier: GPL-3.0-or-later
// An editor window of full-HD size: how long edits, their undo and redo, scrolling and other sizes
// of the cells take, from the event or the call to the end of the last paint. Beside the clock's
// time the processor's, which other programs leave alone.
#include "Alignment.h"
#include "AlignmentWindow.h"
#include "ConfigStore.h"
#include "DataPoint.h"
#include "History.h"
#include "KALMO2.h"
#include "MadeAlignment.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"
#include "View.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr QSize kFullHd(1920, 1080);
constexpr double kFrame = 1000.0 / 60;
constexpr int kMoves = 240;
constexpr int kRareEdits = 30;
constexpr int kScrollSteps = 300;

// In milliseconds.
struct Taken
{
    double clock = 0;
    double processor = 0;
};

using Times = std::vector<Taken>;

double processorTime()
{
    std::timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return 1e3 * static_cast<double>(now.tv_sec) + 1e-6 * static_cast<double>(now.tv_nsec);
}

[[noreturn]] void fail(const char *what)
{
    std::fprintf(stderr, "bench_edit: %s\n", what);
    std::exit(1);
}

// Knows when the last paint was over.
class Application : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override
    {
        const QEvent::Type type = event->type();
        const bool result = QApplication::notify(receiver, event);
        if (type == QEvent::Paint || type == QEvent::UpdateRequest) {
            m_LastPaint = Clock::now();
            m_ProcessorAtLastPaint = processorTime();
            m_HasPainted = true;
        }
        return result;
    }
    // Until nothing is left to paint; whether there was anything.
    bool settle()
    {
        bool hasPainted = false;
        do {
            hasPainted |= std::exchange(m_HasPainted, false);
            processEvents();
        } while (m_HasPainted);
        return hasPainted;
    }
    template <typename Action> Taken timeToPaint(Action action)
    {
        settle();
        const Clock::time_point start = Clock::now();
        const double processor = processorTime();
        action();
        if (!settle())
            fail("nothing was painted");
        return {std::chrono::duration<double, std::milli>(m_LastPaint - start).count(),
                m_ProcessorAtLastPaint - processor};
    }

private:
    Clock::time_point m_LastPaint;
    double m_ProcessorAtLastPaint = 0;
    bool m_HasPainted = false;
};

double quantile(Times times, double Taken::*which, double part)
{
    std::ranges::sort(times, {}, which);
    const auto last = static_cast<double>(times.size() - 1);
    return times[static_cast<std::size_t>(part * last + 0.5)].*which;
}

void print(const std::string &what, const Times &times, const std::string &remark = {})
{
    const double middle = quantile(times, &Taken::clock, 0.5);
    const double high = quantile(times, &Taken::clock, 0.99);
    std::printf("  %-32s %5zu %8.2f %8.2f %8.2f %7.2f %7.2f %8.2f  %s\n", what.c_str(),
                times.size(), middle, high, quantile(times, &Taken::clock, 1), middle / kFrame,
                high / kFrame, quantile(times, &Taken::processor, 0.5), remark.c_str());
    std::fflush(stdout);
}

class EditBench
{
public:
    EditBench(Application &application, unsigned long rows, unsigned long columns)
        : m_Application(application)
    {
        TAMBO::setEditRecorder(&m_History);
        TAMBO::AlignmentRecord record = madeAlignment(rows, columns);
        {
            const DataPointBase guard(nullptr, Publisher::Add);
            m_Alignment = TAMBO::ObjectFactory::adopt(std::move(record));
        }
        m_History.clear();
        m_Window = std::make_unique<ZEP::KALMO2>();
        m_Window->resize(kFullHd);
        m_Window->show();
        m_Window->Populate(m_Alignment);
        m_Application.settle();
        m_View = m_Window->findChild<View *>();
        m_Panels = m_Window->findChildren<Panel *>();
        if (m_View == nullptr || m_Panels.size() != 2 || m_Window->size() != kFullHd)
            fail("the window is not as expected");
        std::printf("\n%lu x %lu, window %d x %d, residue view %d x %d\n", rows, columns,
                    m_Window->width(), m_Window->height(), m_View->visibleWidth(),
                    m_View->visibleHeight());
    }
    ~EditBench()
    {
        m_Window.reset();
        TAMBO::setEditRecorder(nullptr);
        m_History.clear();
        TAMBO::ObjectSpace::get().reset();
    }
    EditBench(const EditBench &) = delete;
    EditBench &operator=(const EditBench &) = delete;

    // What edits are held against.
    void repaint()
    {
        Times times;
        for (int i = 0; i < kMoves; ++i)
            times.push_back(m_Application.timeToPaint([&] {
                m_View->viewport()->update();
                for (Panel *panel : std::as_const(m_Panels))
                    panel->viewport()->update();
            }));
        print("all painted anew", times);
    }
    void moveGaps(const std::string &place, bool isFarEnd)
    {
        m_View->setContentsPos(isFarEnd ? m_View->contentsWidth() : 0,
                               isFarEnd ? m_View->contentsHeight() : 0);
        m_Application.settle();
        m_History.clear();
        Times moves;
        Times undos;
        Times redos;
        for (int i = 0; i < kMoves; ++i) {
            const auto [row, col] = gapInSight();
            const unsigned long to = otherColumn(col);
            const std::size_t steps = m_History.size();
            send(m_View, QEvent::MouseButtonPress, Qt::LeftButton, cell(row, col));
            moves.push_back(m_Application.timeToPaint(
                [&] { send(m_View, QEvent::MouseButtonRelease, Qt::LeftButton, cell(row, to)); }));
            if (m_History.size() != steps + 1)
                fail("a gap was not moved");
        }
        const std::size_t bytes = m_History.bytes() / m_History.size();
        while (m_History.canUndo())
            undos.push_back(m_Application.timeToPaint([&] { (void)m_History.undo(); }));
        while (m_History.canRedo())
            redos.push_back(m_Application.timeToPaint([&] { (void)m_History.redo(); }));
        print("move gap, " + place, moves, std::to_string(bytes) + " bytes a step");
        print("  undo", undos);
        print("  redo", redos);
    }
    void moveRows()
    {
        m_View->setContentsPos(0, 0);
        m_Application.settle();
        m_History.clear();
        Panel *names = m_Panels.at(1);
        Times moves;
        Times undos;
        for (int i = 0; i < kMoves; ++i) {
            const auto place = [&](unsigned long row) {
                return QPoint(names->visibleWidth() - 2 * lattice().cellWidth(), cell(row, 0).y());
            };
            const unsigned long from = 4 + m_Random() % 10;
            const unsigned long to = 20 + m_Random() % 10;
            send(names, QEvent::MouseButtonPress, Qt::LeftButton, place(from));
            moves.push_back(m_Application.timeToPaint(
                [&] { send(names, QEvent::MouseButtonRelease, Qt::LeftButton, place(to)); }));
        }
        if (m_History.size() != kMoves)
            fail("a row was not moved");
        while (m_History.canUndo())
            undos.push_back(m_Application.timeToPaint([&] { (void)m_History.undo(); }));
        print("move row", moves);
        print("  undo", undos);
    }
    void rareEdits()
    {
        m_View->setContentsPos(0, 0);
        m_Application.settle();
        m_History.clear();
        Times gaps;
        Times columns;
        Times removed;
        Times rows;
        Panel *header = m_Panels.at(0);
        Panel *names = m_Panels.at(1);
        for (int i = 0; i < kRareEdits; ++i) {
            const auto [row, col] = gapInSight();
            send(m_View, QEvent::MouseButtonPress, Qt::MiddleButton, cell(row, col));
            gaps.push_back(m_Application.timeToPaint([&] {
                send(m_View, QEvent::MouseButtonRelease, Qt::MiddleButton, cell(row, col));
            }));
            const QPoint mark(cell(0, col).x(), 3 * lattice().cellHeight() + 4);
            columns.push_back(m_Application.timeToPaint(
                [&] { send(header, QEvent::MouseButtonPress, Qt::MiddleButton, mark); }));
            send(header, QEvent::MouseButtonRelease, Qt::MiddleButton, mark);
            removed.push_back(m_Application.timeToPaint([&] {
                send(header, QEvent::MouseButtonPress, Qt::MiddleButton, mark, Qt::ShiftModifier);
            }));
            send(header, QEvent::MouseButtonRelease, Qt::MiddleButton, mark, Qt::ShiftModifier);
            const QPoint name(names->visibleWidth() - 2 * lattice().cellWidth(), cell(row, 0).y());
            rows.push_back(m_Application.timeToPaint([&] {
                send(names, QEvent::MouseButtonPress, Qt::MiddleButton, name, Qt::ShiftModifier);
            }));
            send(names, QEvent::MouseButtonRelease, Qt::MiddleButton, name, Qt::ShiftModifier);
        }
        if (m_History.size() != 4 * kRareEdits)
            fail("an edit was not made");
        print("insert gap", gaps);
        print("insert column", columns);
        print("remove column", removed);
        print("remove row", rows);
    }
    // Where columns are edited in sight; each edit is taken back before the next one.
    void columnEdits(const std::string &place, double part)
    {
        const int end = m_View->contentsWidth() - m_View->visibleWidth();
        m_View->setContentsPos(std::max(0, static_cast<int>(part * end)), 0);
        m_Application.settle();
        m_History.clear();
        const auto [first, behind] = columnsInSight();
        const unsigned long column =
            first + static_cast<unsigned long>(part * double(behind - 1 - first));
        Panel *header = m_Panels.at(0);
        const QPoint mark(cell(0, column).x(), 3 * lattice().cellHeight() + 4);
        for (const bool isRemoval : {false, true}) {
            const Qt::KeyboardModifiers keys = isRemoval ? Qt::ShiftModifier : Qt::NoModifier;
            Times edits;
            Times undos;
            for (int i = 0; i < kRareEdits; ++i) {
                edits.push_back(m_Application.timeToPaint(
                    [&] { send(header, QEvent::MouseButtonPress, Qt::MiddleButton, mark, keys); }));
                send(header, QEvent::MouseButtonRelease, Qt::MiddleButton, mark, keys);
                if (m_History.size() != 1)
                    fail("a column was not changed");
                undos.push_back(m_Application.timeToPaint([&] { (void)m_History.undo(); }));
                m_History.clear();
            }
            print((isRemoval ? "remove column, " : "insert column, ") + place, edits);
            print("  undo", undos);
        }
    }
    void scroll(bool isSideways)
    {
        m_View->setContentsPos(0, 0);
        const int step = 3 * (isSideways ? lattice().cellWidth() : lattice().cellHeight());
        QScrollBar *bar = isSideways ? m_View->horizontalScrollBar() : m_View->verticalScrollBar();
        if (bar->maximum() < step)
            return;
        Times times;
        for (int i = 0, by = step; i < kScrollSteps; ++i) {
            if (bar->value() + by > bar->maximum() || bar->value() + by < 0)
                by = -by;
            times.push_back(m_Application.timeToPaint([&] { bar->setValue(bar->value() + by); }));
        }
        print(isSideways ? "scroll right, 3 columns" : "scroll down, 3 rows", times);
    }
    // One step of a zoom, and painting each part anew.
    void zoom(const QSize &size)
    {
        TAMBO::AlignmentWindow &window = *TAMBO::AlignmentWindow::Of(m_Window.get());
        Times steps;
        for (int i = 0; i < kRareEdits; ++i) {
            window.resetCellSize();
            steps.push_back(m_Application.timeToPaint([&] { window.setCellSize(size); }));
        }
        Times frames;
        for (int i = 0; i < kRareEdits; ++i)
            frames.push_back(m_Application.timeToPaint([&] { m_View->viewport()->update(); }));
        Times header;
        for (int i = 0; i < kRareEdits; ++i)
            header.push_back(
                m_Application.timeToPaint([&] { m_Panels.at(0)->viewport()->update(); }));
        Times names;
        for (int i = 0; i < kRareEdits; ++i)
            names.push_back(
                m_Application.timeToPaint([&] { m_Panels.at(1)->viewport()->update(); }));
        const std::string cells =
            std::to_string(size.width()) + " x " + std::to_string(size.height());
        print("zoom to " + cells, steps);
        print("  all cells painted", frames);
        print("  header painted", header);
        print("  names painted", names);
        window.resetCellSize();
    }

private:
    [[nodiscard]] const CellLattice &lattice() const { return m_View->canvas()->lattice(); }
    [[nodiscard]] QPoint cell(unsigned long row, unsigned long col) const
    {
        const int width = lattice().cellWidth();
        const int height = lattice().cellHeight();
        return m_View->contentsToViewport({static_cast<int>(col) * width + width / 2,
                                           static_cast<int>(row) * height + height / 2});
    }
    // Rows and columns that are wholly in sight, away from the edges, where drags scroll.
    [[nodiscard]] std::pair<unsigned long, unsigned long> seen(int from, int length, int cell,
                                                               unsigned long count) const
    {
        constexpr int kEdge = 4;
        const auto begin = static_cast<unsigned long>(from / cell + kEdge);
        const auto end = static_cast<unsigned long>((from + length) / cell - kEdge);
        return {begin, std::min(end, count - kEdge)};
    }
    [[nodiscard]] std::pair<unsigned long, unsigned long> columnsInSight() const
    {
        return seen(m_View->contentsX(), m_View->visibleWidth(), lattice().cellWidth(),
                    m_Alignment->width());
    }
    std::pair<unsigned long, unsigned long> gapInSight()
    {
        const auto [firstCol, endCol] = columnsInSight();
        const auto [firstRow, endRow] = seen(m_View->contentsY(), m_View->visibleHeight(),
                                             lattice().cellHeight(), m_Alignment->height());
        for (;;) {
            const unsigned long row = firstRow + m_Random() % (endRow - firstRow);
            const unsigned long col = firstCol + m_Random() % (endCol - firstCol);
            // A gap between residues, so that every move changes the row.
            if (m_Alignment->letterAt(row, col) == '\0')
                return {row, col};
        }
    }
    unsigned long otherColumn(unsigned long col)
    {
        const auto [first, end] = columnsInSight();
        // Far enough that residues lie between.
        return col + 30 < end ? col + 30 : std::max(first, col - 30);
    }
    static void send(QCanvasView *view, QEvent::Type type, Qt::MouseButton button,
                     const QPoint &point, Qt::KeyboardModifiers keys = {})
    {
        const bool isPress = type == QEvent::MouseButtonPress;
        QMouseEvent event(type, point, view->viewport()->mapToGlobal(point), button,
                          isPress ? Qt::MouseButtons(button) : Qt::MouseButtons(), keys);
        QCoreApplication::sendEvent(view->viewport(), &event);
    }

    Application &m_Application;
    TAMBO::History m_History;
    TAMBO::Alignment *m_Alignment = nullptr;
    std::unique_ptr<ZEP::KALMO2> m_Window;
    View *m_View = nullptr;
    QList<Panel *> m_Panels;
    std::mt19937 m_Random{7};
};

void copyFrames()
{
    QImage from(kFullHd, QImage::Format_RGB32);
    QImage to(kFullHd, QImage::Format_RGB32);
    from.fill(Qt::yellow);
    to.fill(Qt::blue);
    Times times;
    for (int i = 0; i < kMoves; ++i) {
        const Clock::time_point start = Clock::now();
        const double processor = processorTime();
        std::memcpy(to.bits(), from.constBits(), static_cast<std::size_t>(from.sizeInBytes()));
        const auto taken = Clock::now() - start;
        times.push_back({std::chrono::duration<double, std::milli>(taken).count(),
                         processorTime() - processor});
    }
    print("copy of a full-HD frame", times);
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // What the editor tells the log is not what is measured.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    Application application(argc, argv);
    const QTemporaryDir directory;
    TAMBO::services::ConfigStore::setInstance(std::make_unique<TAMBO::services::ConfigStore>(
        QString(), directory.filePath(QStringLiteral("settings.ini"))));

    std::printf("  %-32s %5s %8s %8s %8s %7s %7s %8s\n", "", "times", "p50 ms", "p99 ms", "most ms",
                "p50/fr", "p99/fr", "cpu p50");
    copyFrames();
    constexpr std::pair<unsigned long, unsigned long> kSizes[] = {
        {100, 500}, {1000, 2000}, {10000, 2000}, {10000, 10000}, {1000000, 100}, {1000000, 200}};
    for (const auto &[rows, columns] : kSizes) {
        // With arguments, sizes with that many rows, and columns, alone.
        if ((argc > 1 && std::strtoul(argv[1], nullptr, 10) != rows) ||
            (argc > 2 && std::strtoul(argv[2], nullptr, 10) != columns))
            continue;
        EditBench bench(application, rows, columns);
        if (argc > 3) {
            bench.repaint();
            bench.columnEdits("first", 0);
            bench.columnEdits("middle", 0.5);
            bench.columnEdits("last", 1);
            continue;
        }
        bench.repaint();
        bench.moveGaps("first cells", false);
        bench.moveGaps("last cells", true);
        bench.moveRows();
        bench.rareEdits();
        bench.columnEdits("first", 0);
        bench.columnEdits("middle", 0.5);
        bench.columnEdits("last", 1);
        bench.scroll(false);
        bench.scroll(true);
        for (const QSize &size : {QSize(1, 1), QSize(3, 3), QSize(8, 8), QSize(40, 60)})
            bench.zoom(size);
    }
    TAMBO::services::ConfigStore::setInstance(nullptr);
}
