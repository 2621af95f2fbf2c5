// SPDX-License-Identifier: GPL-3.0-or-later
// What keeping the work in a store costs the window's thread, in its processor time: each edit,
// what comes after a large arrival, the whole state. How long it is until an edit is on the disk,
// and how long it takes to load it all again.
#include "MadeAlignment.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "ChangeScope.h"
#include "FileWriter.h"
#include "History.h"
#include "Hooks.h"
#include "LiveSession.h"
#include "ObjectFactory.h"
#include "ObjectIndex.h"
#include "ObjectSpace.h"
#include "SessionContent.h"
#include "SessionFile.h"
#include "SessionLoader.h"
#include "SessionReading.h"
#include "StoreReader.h"
#include "StoreWriter.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace TAMBO;
using namespace TAMBO::sessions;
using Clock = std::chrono::steady_clock;

constexpr auto kPatience = std::chrono::minutes(5);

// Of this thread, in milliseconds.
double processorTime()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) * 1e-6;
}

double share(std::vector<double> values, double part)
{
    if (values.empty())
        return 0;
    std::ranges::sort(values);
    return values[std::min(values.size() - 1, std::size_t(double(values.size()) * part))];
}

void report(benchmark::State &state, const char *name, const std::vector<double> &values)
{
    state.counters[std::string(name) + "_p50"] = share(values, 0.5);
    state.counters[std::string(name) + "_p99"] = share(values, 0.99);
    state.counters[std::string(name) + "_max"] = share(values, 1);
}

// Measures what another journal takes of each step.
class TimedJournal final : public StepJournal
{
public:
    explicit TimedJournal(StepJournal &journal) : m_Journal(journal) { setStepJournal(this); }
    ~TimedJournal() override { setStepJournal(&m_Journal); }

    void changeBegins() override
    {
        timed([&] { m_Journal.changeBegins(); });
    }
    void changeGoesOn() override
    {
        timed([&] { m_Journal.changeGoesOn(); });
    }
    void rowChanges(const Compound &alignment, std::size_t row) override
    {
        timed([&] { m_Journal.rowChanges(alignment, row); });
    }
    void rowMoves(const Compound &alignment, std::size_t from, std::size_t to) override
    {
        timed([&] { m_Journal.rowMoves(alignment, from, to); });
    }
    std::string store(const Edit &inverse) override
    {
        std::string stored;
        timed([&] { stored = m_Journal.store(inverse); });
        return stored;
    }
    void stepEnds(StoredStep &&step) override
    {
        timed([&] { m_Journal.stepEnds(std::move(step)); });
    }
    void travelled(std::size_t steps) override
    {
        timed([&] { m_Journal.travelled(steps); });
    }
    void forgotten(bool isFirst) override
    {
        timed([&] { m_Journal.forgotten(isFirst); });
    }
    void cleared() override { m_Journal.cleared(); }
    void marked(const Compound &object, const StateMark &mark) override
    {
        timed([&] { m_Journal.marked(object, mark); });
    }

    // Since the last call.
    [[nodiscard]] double take() { return std::exchange(m_Time, 0); }

private:
    template <typename Call> void timed(const Call &call)
    {
        const double begin = processorTime();
        call();
        m_Time += processorTime() - begin;
    }

    StepJournal &m_Journal;
    double m_Time = 0;
};

// An alignment, a history, and a store in a folder of its own.
class Work
{
public:
    explicit Work(const benchmark::State &state)
        : m_Rows(std::size_t(state.range(0))), m_Columns(std::size_t(state.range(1)))
    {
        setEditRecorder(&m_History);
        std::string pattern = (std::filesystem::temp_directory_path() / "benchXXXXXX").string();
        m_Folder = mkdtemp(pattern.data());
    }
    ~Work()
    {
        m_Session.reset();
        m_Writer.reset();
        m_History.clear();
        setEditRecorder(nullptr);
        ObjectSpace::get().reset();
        std::filesystem::remove_all(m_Folder);
    }
    Work(const Work &) = delete;
    Work &operator=(const Work &) = delete;

    void bring()
    {
        const ChangeScope scope;
        ObjectFactory::adopt(madeAlignment(m_Rows, m_Columns));
        const ObjectSpace &space = ObjectSpace::get();
        for (std::size_t i = space.objectCount(); i > 0 && m_Alignment == nullptr; --i)
            m_Alignment = dynamic_cast<Alignment *>(space.object(i - 1));
    }
    void keep()
    {
        m_Writer = std::make_unique<StoreWriter>(file());
        m_Session =
            std::make_unique<LiveSession>(ObjectSpace::get(), m_History, [this](StoreEntry entry) {
                m_Writer->put(std::move(entry));
            });
    }
    [[nodiscard]] std::filesystem::path file() const { return m_Folder / "work.session"; }
    void waitForDisk()
    {
        if (!m_Writer->waitUntilDurable(kPatience))
            std::abort();
    }
    void endProgram()
    {
        m_Session->finish();
        waitForDisk();
        m_Session.reset();
        m_Writer.reset();
        m_History.clear();
        ObjectSpace::get().reset();
        m_Alignment = nullptr;
    }

    // One step each.
    void moveGap()
    {
        const std::size_t before = m_History.size() + m_History.position();
        while (m_History.size() + m_History.position() == before) {
            const std::size_t row = m_Random() % m_Alignment->height();
            const std::size_t from = m_Random() % m_Alignment->width();
            const std::size_t to = m_Random() % m_Alignment->width();
            if (!m_Alignment->table().row(row).cells().isResidue(from))
                m_Alignment->moveGap(row, from, to, true);
        }
    }
    void moveRow()
    {
        const std::size_t from = m_Random() % m_Alignment->height();
        m_Alignment->bubbleRow(from, m_Random() % m_Alignment->height());
    }
    void editColumn() { m_Alignment->insertGapCol(m_Random() % m_Alignment->width(), 1); }
    void undo() { m_History.undo(); }

    [[nodiscard]] LiveSession &session() { return *m_Session; }
    [[nodiscard]] History &history() { return m_History; }

private:
    std::size_t m_Rows;
    std::size_t m_Columns;
    std::mt19937 m_Random{1};
    Alignment *m_Alignment = nullptr;
    History m_History;
    std::filesystem::path m_Folder;
    std::unique_ptr<StoreWriter> m_Writer;
    std::unique_ptr<LiveSession> m_Session;
};

using Step = void (Work::*)();

void edits(benchmark::State &state, Step step, std::size_t count)
{
    Work work(state);
    work.bring();
    work.keep();
    work.session().finish();
    work.waitForDisk();
    if (step == &Work::undo) {
        for (std::size_t i = 0; i < count; ++i)
            work.moveGap();
    }
    std::vector<double> costs;
    std::vector<double> untilDurable;
    TimedJournal journal(work.session());
    for (auto run : state) {
        for (std::size_t i = 0; i < count; ++i) {
            (work.*step)();
            costs.push_back(journal.take());
        }
        work.waitForDisk();
        // One by one, as by hand.
        for (std::size_t i = 0; i < std::min<std::size_t>(count, 200); ++i) {
            (work.*step)();
            const Clock::time_point begin = Clock::now();
            work.waitForDisk();
            untilDurable.push_back(
                std::chrono::duration<double, std::milli>(Clock::now() - begin).count());
        }
    }
    report(state, "store_ms", costs);
    report(state, "disk_ms", untilDurable);
}

void gapEdits(benchmark::State &state)
{
    edits(state, &Work::moveGap, 2000);
}
void rowMoves(benchmark::State &state)
{
    edits(state, &Work::moveRow, 1000);
}
void columnEdits(benchmark::State &state)
{
    edits(state, &Work::editColumn, 100);
}
void undos(benchmark::State &state)
{
    edits(state, &Work::undo, 1000);
}

// Gaps are moved right after the alignment has come, and slices are written in between.
void editsAfterArrival(benchmark::State &state)
{
    std::vector<double> costs;
    std::vector<double> slices;
    double arrival = 0;
    int lacking = 0;
    for (auto run : state) {
        Work work(state);
        work.keep();
        work.session().finish();
        {
            TimedJournal journal(work.session());
            work.bring();
            arrival = journal.take();
            for (std::size_t i = 0; i < 1000; ++i) {
                work.moveGap();
                costs.push_back(journal.take());
                const double begin = processorTime();
                work.session().writeMore(std::size_t(128) << 10);
                slices.push_back(processorTime() - begin);
                lacking += work.session().lacksChanges() ? 1 : 0;
            }
        }
        work.endProgram();
    }
    state.counters["arrival_ms"] = arrival;
    state.counters["lacking"] = lacking;
    report(state, "store_ms", costs);
    report(state, "slice_ms", slices);
}

void wholeState(benchmark::State &state)
{
    for (auto run : state) {
        Work work(state);
        work.bring();
        const Clock::time_point begin = Clock::now();
        const double processor = processorTime();
        work.keep();
        std::vector<double> slices;
        for (bool isMore = true; isMore;) {
            const double slice = processorTime();
            isMore = work.session().writeMore(std::size_t(128) << 10);
            slices.push_back(processorTime() - slice);
        }
        report(state, "slice_ms", slices);
        state.counters["thread_ms"] = processorTime() - processor;
        work.waitForDisk();
        state.counters["disk_ms"] =
            std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
        state.counters["mb"] = double(std::filesystem::file_size(work.file())) / 1e6;
    }
}

void replaying(benchmark::State &state, Step step, std::size_t count)
{
    Work work(state);
    work.bring();
    work.keep();
    work.session().finish();
    for (std::size_t i = 0; i < count; ++i)
        (work.*step)();
    work.endProgram();
    double stateTime = 0;
    for (auto run : state) {
        const double begin = processorTime();
        auto reader = StoreReader::open(work.file(), StoreReader::Kind::LeftBehind);
        if (!reader)
            return state.SkipWithError("the store cannot be opened");
        SessionLoading options;
        options.step = [&](std::uint64_t changes) {
            if (changes == 1)
                stateTime = processorTime();
            return true;
        };
        const auto loaded =
            loadSession(*reader.value(), ObjectSpace::get(), work.history(), options);
        if (!loaded || loaded.value().problem || loaded.value().changes != count)
            return state.SkipWithError("the store cannot be loaded");
        const double end = processorTime();
        state.counters["thread_ms"] = end - begin;
        if (count > 0)
            state.counters["us_a_record"] = (end - stateTime) * 1e3 / double(count);
        work.history().clear();
        ObjectSpace::get().reset();
    }
}

void load(benchmark::State &state)
{
    replaying(state, &Work::moveGap, 0);
}
void loadAndReplay(benchmark::State &state)
{
    replaying(state, &Work::moveGap, 100'000);
}

// Time between two looks at whether the user gives it up, in the window's thread.
class Looks
{
public:
    Looks() : m_Last(processorTime())
    {
        modelHooks().working = [this](const char *, double, bool) {
            note();
            return true;
        };
    }
    ~Looks() { modelHooks().working = {}; }
    Looks(const Looks &) = delete;
    Looks &operator=(const Looks &) = delete;

    [[nodiscard]] double longest()
    {
        note();
        return m_Longest;
    }

private:
    void note()
    {
        const double now = processorTime();
        m_Longest = std::max(m_Longest, now - std::exchange(m_Last, now));
    }

    double m_Last;
    double m_Longest = 0;
};

// A session's file, written and read.
void sessionFile(benchmark::State &state)
{
    for (auto run : state) {
        Work work(state);
        work.bring();
        {
            Looks looks;
            const double begin = processorTime();
            auto content = takeSession(ObjectSpace::get(), work.history(), {}, {});
            state.counters["take_ms"] = processorTime() - begin;
            state.counters["take_look_ms"] = looks.longest();
            WriteAids aids;
            const Clock::time_point wall = Clock::now();
            if (!content || !writeSession(std::move(content.value()), work.file(), aids))
                return state.SkipWithError("the session cannot be written");
            state.counters["write_ms"] =
                std::chrono::duration<double, std::milli>(Clock::now() - wall).count();
            state.counters["mb"] = double(std::filesystem::file_size(work.file())) / 1e6;
        }
        work.history().clear();
        ObjectSpace::get().reset();
        ObjectIndex index;
        const double begin = processorTime();
        auto reader = openSession(work.file());
        if (!reader)
            return state.SkipWithError("the session cannot be opened");
        state.counters["open_ms"] = processorTime() - begin;
        Looks looks;
        if (!readSession(*reader.value(), ObjectSpace::get(), work.history(), index))
            return state.SkipWithError("the session cannot be read");
        state.counters["read_ms"] = processorTime() - begin;
        state.counters["read_look_ms"] = looks.longest();
    }
}

// Going through all rows of an alignment, again and again.
void replayColumns(benchmark::State &state)
{
    replaying(state, &Work::editColumn, 100);
}

#define TAMBO_BOTH_SIZES(name)                                                                     \
    BENCHMARK(name)                                                                                \
        ->Args({10'000, 10'000})                                                                   \
        ->Args({1'000'000, 200})                                                                   \
        ->Iterations(1)                                                                            \
        ->Unit(benchmark::kMillisecond)

TAMBO_BOTH_SIZES(gapEdits);
TAMBO_BOTH_SIZES(rowMoves);
TAMBO_BOTH_SIZES(columnEdits);
TAMBO_BOTH_SIZES(undos);
TAMBO_BOTH_SIZES(editsAfterArrival);
TAMBO_BOTH_SIZES(wholeState);
TAMBO_BOTH_SIZES(load);
TAMBO_BOTH_SIZES(sessionFile);
TAMBO_BOTH_SIZES(replayColumns);
BENCHMARK(loadAndReplay)->Args({1000, 1000})->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
