// SPDX-License-Identifier: GPL-3.0-or-later
// How long it takes to compare an alignment with another one: copying its rows in the window's
// thread, row by row; the comparison, in a thread of its own; one look whether it is given up; and
// what it was before a step, and taking all over, which are one piece each.
#include "Comparison.h"
#include "DataPoint.h"
#include "History.h"
#include "MadeAlignment.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"
#include "RowLayouts.h"
#include "RowMatch.h"
#include "TakeOver.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <random>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double milliseconds(Clock::duration time)
{
    return std::chrono::duration<double, std::milli>(time).count();
}

// An alignment and a copy in which some gaps of each tenth row stand elsewhere.
class Two
{
public:
    Two(unsigned long rows, unsigned long columns)
    {
        TAMBO::setEditRecorder(&m_History);
        const DataPointBase guard(nullptr, Publisher::Add);
        m_Here = TAMBO::ObjectFactory::adopt(madeAlignment(rows, columns));
        m_There = m_Here->duplicate(rows);
        std::mt19937 random(3);
        for (unsigned long row = 0; row < rows; row += 10) {
            for (int i = 0; i < 10; ++i) {
                const unsigned long from = random() % columns;
                if (m_There->letterAt(row, from) == '\0')
                    m_There->moveGap(row, from, random() % columns, true);
            }
        }
    }
    ~Two()
    {
        TAMBO::setEditRecorder(nullptr);
        m_History.clear();
        TAMBO::ObjectSpace::get().reset();
    }

    [[nodiscard]] TAMBO::Alignment &here() { return *m_Here; }
    [[nodiscard]] TAMBO::Alignment &there() { return *m_There; }

private:
    TAMBO::History m_History;
    TAMBO::Alignment *m_Here = nullptr;
    TAMBO::Alignment *m_There = nullptr;
};

struct Copied
{
    companion::ComparedLayout here;
    companion::ComparedLayout there;
    std::vector<std::uint32_t> places;
    double longestSlice = 0;
};

Copied copied(Two &two)
{
    companion::RowMatch match(two.here(), &two.there());
    Copied made;
    for (bool isLeft = true; isLeft;) {
        const auto begin = Clock::now();
        isLeft = match.goOn(std::chrono::milliseconds(6));
        made.longestSlice = std::max(made.longestSlice, milliseconds(Clock::now() - begin));
    }
    made.here = match.takeHere();
    made.there = match.takeThere();
    made.places = match.placesHere();
    return made;
}

void copying(benchmark::State &state)
{
    Two two(static_cast<unsigned long>(state.range(0)), static_cast<unsigned long>(state.range(1)));
    double longest = 0;
    for (auto _ : state)
        longest = std::max(longest, copied(two).longestSlice);
    state.counters["longest slice, ms"] = longest;
}

void comparing(benchmark::State &state)
{
    Two two(static_cast<unsigned long>(state.range(0)), static_cast<unsigned long>(state.range(1)));
    const Copied made = copied(two);
    double longest = 0;
    std::size_t stretches = 0;
    for (auto _ : state) {
        auto last = Clock::now();
        const auto found = companion::compare(made.here, made.there, [&](double) {
            const auto now = Clock::now();
            longest = std::max(longest, milliseconds(now - last));
            last = now;
            return true;
        });
        stretches = found->stretches.size();
    }
    state.counters["between looks, ms"] = longest;
    state.counters["stretches"] = double(stretches);
}

void takingAllOver(benchmark::State &state)
{
    Two two(static_cast<unsigned long>(state.range(0)), static_cast<unsigned long>(state.range(1)));
    const Copied made = copied(two);
    const auto found = companion::compare(made.here, made.there, [](double) { return true; });
    for (auto _ : state) {
        companion::TakeOver work({&two.here(), &made.here, &made.there, &made.places,
                                  found->stretches, std::vector<bool>(two.here().height(), true)});
        while (work.goOn(std::chrono::milliseconds(6))) {
        }
        const auto begin = Clock::now();
        {
            const DataPoint<TAMBO::Alignment> change(nullptr, &two.here());
            TAMBO::RowLayouts::place(two.here(), work.range(), work.count(), work.cells());
        }
        state.counters["the edit, ms"] = milliseconds(Clock::now() - begin);
        static_cast<TAMBO::History &>(*TAMBO::editRecorder()).undo();
    }
}

void readingFormer(benchmark::State &state)
{
    Two two(static_cast<unsigned long>(state.range(0)), static_cast<unsigned long>(state.range(1)));
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &two.here());
        two.here().insertGapCol(0, 3);
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(TAMBO::RowLayouts::before(two.here(), 1));
}

// Alignments of their own, as of a file that is read twice, in which all rows have one name.
void matchingOneName(benchmark::State &state)
{
    const auto rows = static_cast<unsigned long>(state.range(0));
    const auto oneName = [&] {
        TAMBO::AlignmentRecord record = madeAlignment(rows, 60);
        for (TAMBO::RowRecord &row : record.rows)
            row.name = "one";
        return TAMBO::ObjectFactory::adopt(std::move(record));
    };
    {
        const DataPointBase guard(nullptr, Publisher::Add);
        const TAMBO::Alignment &here = *oneName();
        TAMBO::Alignment &there = *oneName();
        std::vector<unsigned long> order(rows);
        for (unsigned long row = 0; row < rows; ++row)
            order[row] = rows - 1 - row;
        there.reorderRows(order);
        for (auto _ : state) {
            companion::RowMatch match(here, &there);
            while (match.goOn(std::chrono::milliseconds(6))) {
            }
            state.counters["matched"] = double(match.count());
        }
    }
    TAMBO::ObjectSpace::get().reset();
}

void sizes(benchmark::internal::Benchmark *cases)
{
    cases->Args({1000, 1000})->Args({10'000, 10'000})->Args({1'000'000, 200});
    cases->Unit(benchmark::kMillisecond)->Iterations(1);
}

BENCHMARK(copying)->Apply(sizes);
BENCHMARK(comparing)->Apply(sizes);
BENCHMARK(takingAllOver)->Apply(sizes);
BENCHMARK(matchingOneName)
    ->Args({1000})
    ->Args({10'000})
    ->Args({100'000})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK(readingFormer)->Apply(sizes);

} // namespace

BENCHMARK_MAIN();
