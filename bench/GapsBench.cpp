// SPDX-License-Identifier: GPL-3.0-or-later
// Edits of the gaps in blocks of rows, and columns taken out: how long looking whether one can be
// done, doing it, undo and redo take, with a session that keeps the work.
#include "Alignment.h"
#include "ChangeScope.h"
#include "GapEdit.h"
#include "History.h"
#include "LiveSession.h"
#include "MadeAlignment.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using companion::GapEdit;
using Kind = GapEdit::Kind;

// Of the processor, which other programs leave alone.
double now()
{
    std::timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

template <typename Action> double timeOf(Action action)
{
    const double start = now();
    action();
    return now() - start;
}

class GapsBench
{
public:
    GapsBench(unsigned long rows, unsigned long columns)
    {
        TAMBO::setEditRecorder(&m_History);
        m_Alignment = TAMBO::ObjectFactory::adopt(madeAlignment(rows, columns));
        m_History.clear();
        m_Session.emplace(TAMBO::ObjectSpace::get(), m_History,
                          [this](const TAMBO::sessions::StoreEntry &) { ++m_Entries; });
        m_Session->finish();
        std::printf("\n%lu x %lu\n", rows, columns);
    }
    ~GapsBench()
    {
        m_Session.reset();
        m_History.clear();
        TAMBO::setEditRecorder(nullptr);
        TAMBO::ObjectSpace::get().reset();
    }
    GapsBench(const GapsBench &) = delete;
    GapsBench &operator=(const GapsBench &) = delete;

    void editBlock(const char *what, const GapEdit &edit,
                   const companion::KeptColumns &kept = std::nullopt)
    {
        companion::Outcome outcome;
        const double looking = timeOf([&] { outcome = checkGapEdit(*m_Alignment, edit, kept); });
        if (!outcome.isDone || outcome.moved == 0) {
            std::printf("  %-34s %9.1f  refused: %s\n", what, looking,
                        outcome.reason.toUtf8().constData());
            return;
        }
        const double doing = timeOf([&] { applyGapEdit(*m_Alignment, edit, kept); });
        print(what, looking, doing);
    }
    // Each fourth column of the first ones, or so many that stand side by side.
    void removeColumns(const char *what, unsigned long runs, unsigned long step)
    {
        std::vector<bool> columns(m_Alignment->width());
        for (unsigned long run = 0; run < runs && run * step < columns.size(); ++run)
            columns[run * step] = true;
        print(what, 0, timeOf([&] {
                  const TAMBO::ChangeScope scope;
                  m_Alignment->removeColumns(columns);
              }));
    }

private:
    // And takes the last step back.
    void print(const char *what, double looking, double doing)
    {
        m_Session->finish();
        const std::size_t bytes = m_History.bytes();
        const auto undo = timeOf([&] { (void)m_History.undo(); });
        const auto redo = timeOf([&] { (void)m_History.redo(); });
        (void)m_History.undo();
        m_Session->finish();
        m_History.clear();
        std::printf("  %-34s %9.1f %9.1f %9.1f %9.1f %9.2f\n", what, looking, doing, undo, redo,
                    double(bytes) / (1 << 20));
        std::fflush(stdout);
    }

    TAMBO::History m_History;
    TAMBO::Alignment *m_Alignment = nullptr;
    std::size_t m_Entries = 0;
    std::optional<TAMBO::sessions::LiveSession> m_Session;
};

} // namespace

int main(int argc, char **argv)
{
    std::printf("  %-34s %9s %9s %9s %9s %9s\n", "", "look ms", "do ms", "undo ms", "redo ms",
                "MB kept");
    constexpr std::pair<unsigned long, unsigned long> kSizes[] = {
        {1000, 10000}, {10000, 10000}, {100000, 200}, {1000000, 200}};
    for (const auto &[rows, columns] : kSizes) {
        // With an argument, sizes with that many rows alone.
        if (argc > 1 && std::strtoul(argv[1], nullptr, 10) != rows)
            continue;
        GapsBench bench(rows, columns);
        const TAMBO::CellBlock all{0, rows, 0, columns};
        const TAMBO::CellBlock middle{0, rows, columns / 2, columns / 2 + 40};
        const companion::KeptColumns kept{{columns - 20, columns - 10}};
        bench.editBlock("insert 3 gaps", {Kind::Insert, middle, 3});
        bench.editBlock("insert 3 gaps before kept columns", {Kind::Insert, middle, 3}, kept);
        bench.editBlock("push 40 columns", {Kind::PushLeft, middle});
        bench.editBlock("push 40 columns to the right", {Kind::PushRight, middle});
        bench.editBlock("move residues by 3", {Kind::Move, {0, rows, 0, 1}, 3});
        bench.editBlock("push all columns", {Kind::PushLeft, all});
        bench.removeColumns("remove 1 column", 1, 1);
        bench.removeColumns("remove 30 columns", 30, 4);
        bench.removeColumns("remove 3000 columns", 3000, 3);
    }
}
