// SPDX-License-Identifier: GPL-3.0-or-later
// What a journal of the steps of undo adds to an edit, and how long doing its records again takes.
#include "Alignment.h"
#include "AlignmentTable.h"
#include "History.h"
#include "HistoryReplay.h"
#include "MadeAlignment.h"
#include "ObjectEditBytes.h"
#include "ObjectFactory.h"
#include "ObjectIndex.h"
#include "ObjectSpace.h"
#include "StepRecords.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using TAMBO::Alignment;
using TAMBO::ObjectSpace;

constexpr std::size_t kEdits = 100'000;

// An alignment of 1000 rows and 1000 columns, and a history that records what is done to it.
class Work
{
public:
    Work()
    {
        TAMBO::ObjectFactory::adopt(madeAlignment(1000, 1000));
        for (TAMBO::Compound *object : ObjectSpace::get()) {
            if (auto *const found = dynamic_cast<Alignment *>(object))
                m_Alignment = found;
        }
        TAMBO::setEditRecorder(&m_History);
        m_Index.addTree(ObjectSpace::get());
    }
    ~Work()
    {
        TAMBO::setStepJournal(nullptr);
        m_History.clear();
        TAMBO::setEditRecorder(nullptr);
        ObjectSpace::get().reset();
    }
    Work(const Work &) = delete;
    Work &operator=(const Work &) = delete;

    // Each one step: a gap moves, at the same places in every run.
    void edit(std::size_t count)
    {
        std::mt19937 random(1);
        for (std::size_t i = 0; i < count;) {
            const std::size_t row = random() % m_Alignment->height();
            const std::size_t from = random() % m_Alignment->width();
            const std::size_t to = random() % m_Alignment->width();
            if (!m_Alignment->table().row(row).cells().isResidue(from))
                m_Alignment->moveGap(row, from, to, true);
            i = m_History.size();
        }
    }
    void keepJournal() { TAMBO::setStepJournal(&m_Journal); }
    // To the beginning, from where the records lead.
    void startOver()
    {
        TAMBO::setStepJournal(nullptr);
        m_History.goTo(0);
        m_History.clear();
    }
    void replay()
    {
        TAMBO::HistoryReplay replay(m_History, [this](std::string_view bytes) {
            return std::make_unique<TAMBO::ObjectEditReader>(bytes, m_Index);
        });
        for (const std::string &record : m_Records) {
            if (!replay.replay(record))
                std::abort();
        }
    }
    [[nodiscard]] double bytesOfRecords() const
    {
        double sum = 0;
        for (const std::string &record : m_Records)
            sum += double(record.size());
        return sum;
    }

private:
    Alignment *m_Alignment = nullptr;
    TAMBO::History m_History;
    TAMBO::ObjectIndex m_Index;
    std::vector<std::string> m_Records;
    TAMBO::ObjectEditWriter m_Writer{TAMBO::ObjectContents::Inside};
    TAMBO::StepRecords m_Journal{m_Writer,
                                 [this](std::string record) { m_Records.push_back(record); }};
};

void GapEdits(benchmark::State &state)
{
    const bool hasJournal = state.range(0) != 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto work = std::make_unique<Work>();
        if (hasJournal)
            work->keepJournal();
        state.ResumeTiming();
        work->edit(kEdits);
        state.PauseTiming();
        if (hasJournal)
            state.counters["bytes"] = work->bytesOfRecords() / double(kEdits);
        work.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(int64_t(state.iterations() * kEdits));
}

void ReplayOfGapEdits(benchmark::State &state)
{
    Work work;
    work.keepJournal();
    work.edit(kEdits);
    for (auto _ : state) {
        state.PauseTiming();
        work.startOver();
        state.ResumeTiming();
        work.replay();
    }
    state.SetItemsProcessed(int64_t(state.iterations() * kEdits));
}

BENCHMARK(GapEdits)->ArgName("journal")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(ReplayOfGapEdits)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
