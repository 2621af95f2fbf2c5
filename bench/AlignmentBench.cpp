// SPDX-License-Identifier: GPL-3.0-or-later
// What edits of an alignment, their undo, and the passes behind a repaint cost at several sizes,
// and what an alignment and its undo steps occupy.
#include "Alignment.h"
#include "AlignmentTable.h"
#include "ChangeScope.h"
#include "Edit.h"
#include "ObjectSpace.h"
#include "Peptide.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <utility>
#include <vector>

using TAMBO::Alignment;
using TAMBO::AlignmentTable;
using TAMBO::Compound;
using TAMBO::ObjectSpace;
using TAMBO::Peptide;

namespace {

// Columns that a header shows on a full-HD screen.
constexpr unsigned long kVisibleColumns = 240;

// Keeps the last step only.
class LastStep : public TAMBO::EditRecorder
{
public:
    LastStep() { TAMBO::setEditRecorder(this); }

    void begin() override { m_Edits.clear(); }
    void record(std::unique_ptr<TAMBO::Edit> inverse) override
    {
        m_Edits.push_back(std::move(inverse));
    }
    void end() override { }

    void undo()
    {
        const TAMBO::ChangeScope scope;
        for (auto edit = m_Edits.rbegin(); edit != m_Edits.rend(); ++edit)
            *edit = (*edit)->apply();
    }
    [[nodiscard]] double bytes() const
    {
        std::size_t sum = 0;
        for (const auto &edit : m_Edits)
            sum += edit->bytes() + sizeof(edit);
        return double(sum);
    }
    void clear() { m_Edits.clear(); }

private:
    std::vector<std::unique_ptr<TAMBO::Edit>> m_Edits;
};

LastStep &history()
{
    static LastStep history;
    return history;
}

// A protein family in shape: 30 % gaps in runs of about five.
struct Sample
{
    Alignment *alignment = nullptr;
    std::size_t letters = 0;

    Sample(std::size_t rows, std::size_t columns)
    {
        std::mt19937 random(unsigned(rows + columns));
        AlignmentTable::Rows made;
        for (std::size_t row = 0; row < rows; ++row) {
            std::string letters;
            std::vector<std::uint64_t> words((columns + 63) / 64);
            bool isGap = false;
            for (std::size_t column = 0; column < columns; ++column) {
                isGap = isGap ? random() % 5 != 0 : random() % 12 == 0;
                if (isGap)
                    continue;
                letters += "ARNDCQEGHILKMFPSTWYV"[random() % 20];
                words[column / 64] |= std::uint64_t(1) << column % 64;
            }
            this->letters += letters.size();
            auto sequence =
                std::make_unique<Peptide>("s" + std::to_string(row), std::move(letters));
            made.push_back(std::make_unique<TAMBO::AlignmentRow>(
                *sequence, TAMBO::OccupancyRow(std::move(words))));
            ObjectSpace::get().add(std::move(sequence));
        }
        auto owned = AlignmentTable::make("sample", std::move(made), columns);
        alignment = owned.get();
        ObjectSpace::get().add(std::move(owned));
        history().clear();
    }
};

Sample &sample(const benchmark::State &state)
{
    static std::map<std::pair<long, long>, std::unique_ptr<Sample>> samples;
    auto &found = samples[{state.range(0), state.range(1)}];
    if (found == nullptr)
        found = std::make_unique<Sample>(std::size_t(state.range(0)), std::size_t(state.range(1)));
    return *found;
}

double seconds(const std::function<void()> &action)
{
    const auto begin = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

// The first gap of the middle row from the middle on.
unsigned long someGap(const Alignment &alignment, unsigned long row)
{
    unsigned long column = alignment.width() / 2;
    while (alignment.letterAt(row, column) != '\0')
        ++column;
    return column;
}

using Change = std::function<void(Alignment &alignment)>;

void edit(benchmark::State &state, const Change &change)
{
    Alignment &alignment = *sample(state).alignment;
    history();
    double undoing = 0;
    for (auto unused : state) {
        (void)unused;
        state.SetIterationTime(seconds([&] { change(alignment); }));
        undoing += seconds([] { history().undo(); });
    }
    state.counters["undo_us"] = benchmark::Counter(undoing * 1e6 / double(state.iterations()));
    change(alignment);
    state.counters["step_bytes"] = history().bytes();
    history().undo();
    history().clear();
}

void insertGap(benchmark::State &state)
{
    edit(state, [](Alignment &alignment) {
        alignment.insertGap(alignment.height() / 2, alignment.width() / 2);
    });
}

void moveGapByOne(benchmark::State &state)
{
    const Alignment &alignment = *sample(state).alignment;
    const unsigned long row = alignment.height() / 2;
    unsigned long from = someGap(alignment, row);
    while (alignment.letterAt(row, from - 1) == '\0')
        --from;
    edit(state, [=](Alignment &changed) { changed.moveGap(row, from, from - 1, true); });
}

void moveGapAcross(benchmark::State &state)
{
    const unsigned long row = sample(state).alignment->height() / 2;
    const unsigned long from = someGap(*sample(state).alignment, row);
    edit(state, [=](Alignment &alignment) { alignment.moveGap(row, from, 0, true); });
}

void moveRun(benchmark::State &state)
{
    const unsigned long row = sample(state).alignment->height() / 2;
    const unsigned long from = someGap(*sample(state).alignment, row);
    edit(state, [=](Alignment &alignment) { alignment.moveGap(row, from, from - 20, false); });
}

// With the header's letters known, as they are while a window shows the alignment, and read again.
void moveGapAndReadHeader(benchmark::State &state)
{
    const unsigned long row = sample(state).alignment->height() / 2;
    const unsigned long from = someGap(*sample(state).alignment, row);
    edit(state, [=](Alignment &alignment) {
        alignment.moveGap(row, from, from - 30, true);
        const unsigned long end = std::min(alignment.width(), from + kVisibleColumns / 2);
        for (unsigned long column = end - std::min(end, kVisibleColumns); column < end; ++column) {
            benchmark::DoNotOptimize(alignment.majority(column));
            benchmark::DoNotOptimize(alignment.isColumnSelected(column));
        }
    });
}

void insertColumn(benchmark::State &state)
{
    edit(state, [](Alignment &alignment) { alignment.insertGapCol(0, 1); });
}

void appendColumn(benchmark::State &state)
{
    edit(state, [](Alignment &alignment) { alignment.insertGapCol(alignment.width(), 1); });
}

void removeColumn(benchmark::State &state)
{
    edit(state, [](Alignment &alignment) { alignment.remove(alignment.width() / 2); });
}

void removeHundredColumns(benchmark::State &state)
{
    edit(state, [](Alignment &alignment) {
        alignment.remove({alignment.width() / 2, alignment.width() / 2 + 100});
    });
}

void removeRow(benchmark::State &state)
{
    edit(state, [](Alignment &alignment) { alignment.removeRow(alignment.height() / 2); });
}

void moveRow(benchmark::State &state)
{
    edit(state, [](Alignment &alignment) { alignment.bubbleRow(0, alignment.height() - 1); });
}

void reorderRows(benchmark::State &state)
{
    std::vector<unsigned long> order(sample(state).alignment->height());
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), std::mt19937(1));
    edit(state, [&](Alignment &alignment) { alignment.reorderRows(order); });
}

void addRow(benchmark::State &state)
{
    Compound *const sequence = sample(state).alignment->GetSeq(0);
    edit(state, [=](Alignment &alignment) { alignment.addRows({sequence}); });
}

void duplicate(benchmark::State &state)
{
    edit(state, [](Alignment &alignment) { alignment.duplicate(alignment.height()); });
}

// A hundred places where columns open.
void combine(benchmark::State &state)
{
    Alignment &alignment = *sample(state).alignment;
    const std::size_t place = ObjectSpace::get().objectCount();
    Alignment *const other = alignment.duplicate(1);
    auto extra = std::make_unique<Peptide>("extra", std::string(300, 'A'));
    other->addRows({extra.get()});
    for (unsigned long column = 1; column <= 100; ++column)
        other->insertGapCol(column * (alignment.width() / 101), 2);
    edit(state, [=](Alignment &changed) { changed.combine(*other); });
    history().clear();
    const std::unique_ptr<Compound> gone = ObjectSpace::get().takeObject(place);
}

void selectColumn(benchmark::State &state)
{
    Alignment &alignment = *sample(state).alignment;
    const unsigned long column = alignment.width() / 2;
    bool selected = true;
    for (auto unused : state) {
        (void)unused;
        alignment.select({column, column + 1}, selected);
        selected = !selected;
    }
    alignment.select({0, alignment.width()}, false);
}

// ---- Passes behind a repaint

void majorityCold(benchmark::State &state)
{
    Alignment &alignment = *sample(state).alignment;
    const unsigned long begin = alignment.width() / 2;
    const unsigned long end = std::min(alignment.width(), begin + kVisibleColumns);
    for (auto unused : state) {
        (void)unused;
        state.PauseTiming();
        // Many rows at once make what is known of the columns void.
        alignment.addRows(std::vector<Compound *>(20, alignment.GetSeq(0)));
        history().undo();
        state.ResumeTiming();
        for (unsigned long column = begin; column < end; ++column)
            benchmark::DoNotOptimize(alignment.majority(column));
    }
}

void majorityWarm(benchmark::State &state)
{
    const Alignment &alignment = *sample(state).alignment;
    const unsigned long begin = alignment.width() / 2;
    const unsigned long end = std::min(alignment.width(), begin + kVisibleColumns);
    for (auto unused : state) {
        (void)unused;
        for (unsigned long column = begin; column < end; ++column)
            benchmark::DoNotOptimize(alignment.majority(column));
    }
}

enum class Selection { None, Some, All };

void selectedColumnsCold(benchmark::State &state, Selection selection)
{
    Alignment &alignment = *sample(state).alignment;
    const unsigned long begin = alignment.width() / 2;
    const unsigned long end = std::min(alignment.width(), begin + kVisibleColumns);
    if (selection == Selection::All)
        alignment.select({0, alignment.width()}, true);
    else if (selection == Selection::Some)
        alignment.select({begin, begin + 1}, true);
    Peptide &other = *Peptide::from(alignment.GetSeq(0));
    bool flag = false;
    for (auto unused : state) {
        (void)unused;
        state.PauseTiming();
        other.setSelected(0, flag);
        flag = !flag;
        state.ResumeTiming();
        for (unsigned long column = begin; column < end; ++column)
            benchmark::DoNotOptimize(alignment.isColumnSelected(column));
    }
    alignment.select({0, alignment.width()}, false);
}

void readScreen(benchmark::State &state)
{
    const Alignment &alignment = *sample(state).alignment;
    const unsigned long begin = alignment.width() / 2;
    std::vector<TAMBO::AlignmentCell> cells;
    for (auto unused : state) {
        (void)unused;
        for (unsigned long row = 0; row < std::min(alignment.height(), 48UL); ++row) {
            cells.clear();
            alignment.readRow(row, begin, begin + kVisibleColumns, cells);
        }
        benchmark::DoNotOptimize(cells.data());
    }
}

// What a colouring or search over the whole alignment reads.
void readAllColumns(benchmark::State &state)
{
    const Alignment &alignment = *sample(state).alignment;
    std::vector<char> letters;
    for (auto unused : state) {
        (void)unused;
        for (unsigned long column = 0; column < alignment.width(); ++column) {
            letters.clear();
            alignment.readColumn(column, letters);
        }
        benchmark::DoNotOptimize(letters.data());
    }
    state.SetItemsProcessed(std::int64_t(alignment.width() * alignment.height()) *
                            state.iterations());
}

void readAllRows(benchmark::State &state)
{
    const Alignment &alignment = *sample(state).alignment;
    for (auto unused : state) {
        (void)unused;
        for (unsigned long row = 0; row < alignment.height(); ++row)
            benchmark::DoNotOptimize(alignment.GetSequence(row, false));
    }
}

// No time; the figure is the counter. The sequences' letters are counted, their objects too.
void memory(benchmark::State &state)
{
    const Sample &measured = sample(state);
    const Alignment &alignment = *measured.alignment;
    for (auto unused : state) {
        (void)unused;
        benchmark::DoNotOptimize(alignment.table().bytes());
    }
    const double cells = double(alignment.width()) * double(alignment.height());
    const double sequences =
        double(measured.letters) + double(alignment.height()) * double(sizeof(Peptide));
    state.counters["bytes_per_cell"] = (double(alignment.table().bytes()) + sequences) / cells;
}

void sizes(benchmark::internal::Benchmark *made)
{
    made->ArgNames({"rows", "columns"})->Unit(benchmark::kMicrosecond);
    made->Args({100, 500})->Args({1000, 2000})->Args({10000, 2000})->Args({10000, 10000});
}

void editSizes(benchmark::internal::Benchmark *made)
{
    sizes(made);
    made->UseManualTime();
}

// Of a million rows the rows are what takes the time, not their cells.
void columnSizes(benchmark::internal::Benchmark *made)
{
    editSizes(made);
    made->Args({1000000, 100});
}

BENCHMARK(memory)->Apply(sizes)->Iterations(1);
BENCHMARK(insertGap)->Apply(editSizes);
BENCHMARK(moveGapByOne)->Apply(editSizes);
BENCHMARK(moveGapAcross)->Apply(editSizes);
BENCHMARK(moveRun)->Apply(editSizes);
BENCHMARK(moveGapAndReadHeader)->Apply(editSizes);
BENCHMARK(insertColumn)->Apply(columnSizes);
BENCHMARK(appendColumn)->Apply(columnSizes);
BENCHMARK(removeColumn)->Apply(columnSizes);
BENCHMARK(removeHundredColumns)->Apply(editSizes);
BENCHMARK(removeRow)->Apply(editSizes);
BENCHMARK(moveRow)->Apply(editSizes);
BENCHMARK(reorderRows)->Apply(editSizes);
BENCHMARK(addRow)->Apply(editSizes);
BENCHMARK(duplicate)->Apply(editSizes);
BENCHMARK(combine)->Apply(editSizes);
BENCHMARK(selectColumn)->Apply(sizes);
BENCHMARK(majorityCold)->Apply(sizes);
BENCHMARK(majorityWarm)->Apply(sizes);
BENCHMARK_CAPTURE(selectedColumnsCold, none, Selection::None)->Apply(sizes);
BENCHMARK_CAPTURE(selectedColumnsCold, some, Selection::Some)->Apply(sizes);
BENCHMARK_CAPTURE(selectedColumnsCold, all, Selection::All)->Apply(sizes);
BENCHMARK(readScreen)->Apply(sizes);
BENCHMARK(readAllColumns)->Apply(sizes);
BENCHMARK(readAllRows)->Apply(sizes);

} // namespace

BENCHMARK_MAIN();
