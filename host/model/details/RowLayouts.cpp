// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowLayouts.h"

#include "AlignmentEdits.h"
#include "AlignmentTable.h"
#include "ChangeScope.h"
#include "ChangeSession.h"
#include "LongWork.h"
#include "ObjectOperations.h"
#include "PastSteps.h"
#include "TableChanges.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace TAMBO {

namespace {

RowLayout layoutOf(const AlignmentRow &row)
{
    const OccupancyRow &cells = row.cells();
    RowLayout layout{&row.sequence(), {}, {}};
    layout.cells.assign(cells.allWords().begin(), cells.allWords().end());
    for (const ResidueRun &run : row.residueRuns(0, cells.residues()))
        layout.residues.push_back({run.index, run.count});
    return layout;
}

enum class Effect { None, Cells, Arrival };

// Of a step, on the alignment.
Effect effectOf(const PastStep &step, const Alignment &alignment)
{
    auto effect = Effect::None;
    std::vector<const Compound *> subjects;
    for (const auto &inverse : step.inverses) {
        if (const auto *const edit = dynamic_cast<const AlignmentEdit *>(inverse.get())) {
            if (edit->subject() == &alignment)
                effect = Effect::Cells;
            continue;
        }
        if (inverse->part() != EditPart::Whole && inverse->part() != EditPart::Arrival)
            continue;
        subjects.clear();
        inverse->appendSubjects(subjects);
        if (std::ranges::find(subjects, &alignment) != subjects.end())
            return Effect::Arrival;
    }
    return effect;
}

// Those that have changed cells of the alignment since it came; visit is told whether that was
// after it was saved, and gives false to end. Whether they are all that there were since then.
template <typename Visit> bool forEachChangeOf(const Alignment &alignment, const Visit &visit)
{
    const auto *const past = dynamic_cast<const PastSteps *>(editRecorder());
    if (past == nullptr || isChanging() || editRecorder()->isTravelling())
        return false;
    const std::size_t saved = past->stepsToSaved(alignment);
    bool reachesSaved = false;
    past->forEachPastStep([&](const PastStep &step) {
        const Effect effect = effectOf(step, alignment);
        reachesSaved = effect == Effect::Arrival || step.index <= saved;
        return effect != Effect::Arrival &&
               (effect == Effect::None || visit(step, step.index >= saved));
    });
    return reachesSaved;
}

// Nobody is told of what happens to a copy.
class JournalPause
{
public:
    JournalPause() { ChangeSession::get().setJournal(nullptr); }
    ~JournalPause() { ChangeSession::get().setJournal(m_Journal); }
    JournalPause(const JournalPause &) = delete;
    JournalPause &operator=(const JournalPause &) = delete;

private:
    StepJournal *m_Journal = ChangeSession::get().journal();
};

// A step that has deleted a sequence brings back its rows behind it; in the copy they come alone.
bool fits(const Edit &copied)
{
    const auto *const rows = dynamic_cast<const InsertRowsEdit *>(&copied);
    return rows != nullptr ? rows->fitsInCopy() : copied.fits();
}

// In a copy of the alignment, which nobody knows of; false for a step that is damaged.
bool takeBack(const PastStep &step, const Alignment &alignment, AlignmentTable &copy)
{
    const JournalPause pause;
    for (auto inverse = step.inverses.rbegin(); inverse != step.inverses.rend(); ++inverse) {
        const auto *const edit = dynamic_cast<const AlignmentEdit *>(inverse->get());
        if (edit == nullptr || edit->subject() != &alignment)
            continue;
        const std::unique_ptr<Edit> copied = edit->copyFor(copy);
        if (copied != nullptr && !step.isTrusted && !fits(*copied))
            return false;
        if (copied != nullptr)
            static_cast<void>(copied->apply());
    }
    return true;
}

} // namespace

RowLayout RowLayouts::of(const Alignment &alignment, unsigned long row)
{
    return row < alignment.height() ? layoutOf(alignment.table().row(row)) : RowLayout();
}

std::vector<FormerStep> RowLayouts::steps(const Alignment &alignment, std::size_t most)
{
    std::vector<FormerStep> steps;
    if (most == 0)
        return steps;
    std::size_t unsaved = 0;
    const bool reachesSaved = forEachChangeOf(alignment, [&](const PastStep &step, bool isUnsaved) {
        if (steps.size() == most)
            return false;
        steps.push_back({step.name(), false});
        if (isUnsaved)
            unsaved = steps.size();
        return true;
    });
    if (unsaved > 0 && (reachesSaved || unsaved < steps.size()))
        steps[unsaved - 1].isFirstUnsaved = true;
    return steps;
}

std::optional<FormerLayout> RowLayouts::before(const Alignment &alignment, std::size_t count)
{
    std::vector<PastStep> steps;
    forEachChangeOf(alignment, [&](const PastStep &step, bool) {
        if (steps.size() < count)
            steps.push_back(step);
        return steps.size() < count;
    });
    if (count == 0 || steps.size() < count)
        return std::nullopt;
    const AlignmentTable &table = alignment.table();
    const std::size_t rows = table.rowCount();
    LongWork work("Reading a former state", (2 + count) * rows, LongWork::Kind::Reading);
    AlignmentTable::Rows copies;
    copies.reserve(rows);
    for (std::size_t i = 0; i < rows; ++i) {
        if (!work.goesOn())
            return std::nullopt;
        copies.push_back(std::make_unique<AlignmentRow>(table.row(i)));
    }
    const auto former =
        AlignmentTable::make(alignment.Name(), std::move(copies), alignment.width());
    std::size_t done = 1;
    for (const PastStep &step : steps) {
        if (!work.goesOnAt(rows * done++) || !takeBack(step, alignment, former->table()))
            return std::nullopt;
    }
    FormerLayout layout{former->width(), {}};
    layout.rows.reserve(former->table().rowCount());
    for (std::size_t i = 0; i < former->table().rowCount(); ++i) {
        const AlignmentRow &row = former->table().row(i);
        if (isInTree(row.sequence()))
            layout.rows.push_back(layoutOf(row));
    }
    return layout;
}

bool RowLayouts::place(Alignment &alignment, const Alignment::Range &range, unsigned long count,
                       const std::vector<std::vector<std::uint64_t>> &rows)
{
    std::vector<OccupancyRow> cells;
    cells.reserve(rows.size());
    for (const std::vector<std::uint64_t> &row : rows)
        cells.emplace_back(std::span<const std::uint64_t>(row));
    return replaceColumns(alignment.table(), range, cells, count, "place residues");
}

} // namespace TAMBO
