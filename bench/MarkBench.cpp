// SPDX-License-Identifier: GPL-3.0-or-later
// What keeping selection, locks and ranges takes: while something is selected, and at rest.
#include "Alignment.h"
#include "KeptValues.h"
#include "MadeAlignment.h"
#include "ObjectFactory.h"
#include "ObjectIndex.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "SessionMarks.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <optional>

namespace {

using TAMBO::Alignment;
using TAMBO::ObjectSpace;
using TAMBO::sessions::KeptValues;
using TAMBO::sessions::SessionMarks;

class Rows
{
public:
    explicit Rows(unsigned long count)
        : m_Alignment(*TAMBO::ObjectFactory::adopt(madeAlignment(count, 200)))
    { }
    ~Rows() { ObjectSpace::get().reset(); }
    Rows(const Rows &) = delete;
    Rows &operator=(const Rows &) = delete;

    [[nodiscard]] Alignment &alignment() noexcept { return m_Alignment; }

private:
    Alignment &m_Alignment;
};

// The columns of all rows, with (1) and without (0) somebody who keeps that.
void selectColumns(benchmark::State &state)
{
    Rows rows(static_cast<unsigned long>(state.range(0)));
    KeptValues values;
    std::optional<SessionMarks> marks;
    if (state.range(1) != 0)
        marks.emplace(ObjectSpace::get(), values);
    bool isSelected = true;
    for (auto _ : state) {
        rows.alignment().select({50, 60}, isSelected);
        isSelected = !isSelected;
    }
}
BENCHMARK(selectColumns)
    ->Args({1000, 0})
    ->Args({1000, 1})
    ->Args({1'000'000, 0})
    ->Args({1'000'000, 1})
    ->Unit(benchmark::kMillisecond);

// At rest: after all rows were marked (1), or one of them behind all others (0).
void storeMarks(benchmark::State &state)
{
    Rows rows(static_cast<unsigned long>(state.range(0)));
    KeptValues values;
    const SessionMarks marks(ObjectSpace::get(), values);
    rows.alignment().select({50, 60}, true);
    benchmark::DoNotOptimize(values.changed());
    auto *const first = dynamic_cast<TAMBO::Peptide *>(ObjectSpace::get().object(0));
    unsigned long column = 0;
    std::size_t bytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        ++column;
        if (state.range(1) != 0)
            rows.alignment().select({column % 40, column % 40 + 1}, column / 40 % 2 == 0);
        else
            first->setSelected(std::size_t(0), column % 2 == 0);
        state.ResumeTiming();
        for (const auto &value : values.changed())
            bytes = value.content.size();
    }
    state.counters["bytes"] = double(bytes);
}
BENCHMARK(storeMarks)
    ->Args({1000, 0})
    ->Args({1000, 1})
    ->Args({1'000'000, 0})
    ->Args({1'000'000, 1})
    ->Unit(benchmark::kMillisecond);

// One slice of what is to do when all rows were marked.
void prepareMarks(benchmark::State &state)
{
    Rows rows(static_cast<unsigned long>(state.range(0)));
    KeptValues values;
    const SessionMarks marks(ObjectSpace::get(), values);
    bool isSelected = false;
    bool isLeft = false;
    for (auto _ : state) {
        if (!isLeft) {
            state.PauseTiming();
            isSelected = !isSelected;
            rows.alignment().select({50, 60}, isSelected);
            state.ResumeTiming();
        }
        isLeft = values.prepare();
    }
}
BENCHMARK(prepareMarks)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

// As long as nothing changes.
void lookAtMarks(benchmark::State &state)
{
    Rows rows(static_cast<unsigned long>(state.range(0)));
    KeptValues values;
    const SessionMarks marks(ObjectSpace::get(), values);
    rows.alignment().select({50, 60}, true);
    benchmark::DoNotOptimize(values.changed());
    for (auto _ : state)
        benchmark::DoNotOptimize(values.changed());
}
BENCHMARK(lookAtMarks)->Arg(1000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
