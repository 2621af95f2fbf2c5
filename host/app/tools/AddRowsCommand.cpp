// SPDX-License-Identifier: GPL-3.0-or-later
#include "AddRowsCommand.h"

#include "AlignerCommand.h"
#include "AlignerRun.h"
#include "AlignerWait.h"
#include "Alignment.h"
#include "BitBuffer.h"
#include "Config.h"
#include "DataPoint.h"
#include "FailureBoxes.h"
#include "Logger.h"
#include "ObjectFacts.h"
#include "ObjectReferences.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "PointerSet.h"
#include "StepName.h"
#include "TableChanges.h"

#include <QLocale>

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>

namespace TAMBO::app {

namespace {

using realign::AddedRows;
using realign::AlignerRun;

// As the settings have them at first.
constexpr const char *kAddRows = "mafft --amino --anysymbol --quiet --add {added} {input}";
constexpr const char *kAddRowsKeeping =
    "mafft --amino --anysymbol --quiet --keeplength --add {added} {input}";

QString addingCommand(AddRowsCommand::Columns columns)
{
    const bool isKept = columns == AddRowsCommand::Columns::Kept;
    const std::string set =
        Config::GetSetting("Realign", isKept ? "AddRowsKeepingColumns" : "AddRows").ToString();
    return QString::fromStdString(!set.empty() ? set : isKept ? kAddRowsKeeping : kAddRows);
}

unsigned long insertedIn(const AddedRows::Layout &layout)
{
    unsigned long count = 0;
    for (const GapRun &run : layout.inserted)
        count += run.count;
    return count;
}

// The cells of all rows, those of the others with the columns that have come.
BitBuffer cellsOf(const Alignment &alignment, const AddedRows::Layout &layout)
{
    const std::size_t width = alignment.width();
    BitBuffer cells;
    cells.reserve(width * alignment.height());
    auto next = layout.rows.begin();
    for (std::size_t row = 0; row < alignment.height(); ++row) {
        const bool isAdded = next != layout.rows.end() && next->first == row;
        const OccupancyRow &bits = isAdded ? (next++)->second : alignment.table().row(row).cells();
        cells.append(bits.columns(0, width), width);
    }
    return cells;
}

// Inside a guard.
void openColumns(Alignment &alignment, const AddedRows::Layout &layout)
{
    for (auto run = layout.inserted.rbegin(); run != layout.inserted.rend(); ++run)
        alignment.insertGapCol(run->column, run->count);
}

// Inside a guard. When the user gives up taking columns out, they stay, empty.
void place(Alignment &alignment, const AddedRows::Layout &layout)
{
    openColumns(alignment, layout);
    replaceCells(alignment.table(), "align rows", {0, alignment.width()},
                 cellsOf(alignment, layout));
    if (std::ranges::find(layout.isEmptied, true) != layout.isEmptied.end())
        alignment.removeColumns(layout.isEmptied);
}

// A guard that is refused says why in the status line.
bool isRefused(Alignment &alignment)
{
    if (!alignment.IsLocked() && !ObjectSpace::get().IsLocked())
        return false;
    const DataPoint<Alignment> refused(nullptr, &alignment);
    return true;
}

Failure rowsFailure(FailureKind kind, const QString &refused, const QString &cause)
{
    return {kind, QStringLiteral("%1: %2.").arg(refused, cause).toStdString()};
}

// Those that can become rows, each once; and those that are rows already.
struct Newcomers
{
    std::vector<Peptide *> sequences;
    std::vector<Peptide *> present;
};

Newcomers newcomersOf(const Alignment &alignment, const std::vector<Compound *> &sequences)
{
    Newcomers found;
    PointerSet<Peptide> seen;
    for (Compound *const sequence : sequences) {
        Peptide *const peptide = Peptide::from(sequence);
        if (peptide == nullptr || peptide->residueCount() == 0 || !seen.insert(peptide))
            continue;
        (alignment.table().holds(*peptide) ? found.present : found.sequences).push_back(peptide);
    }
    return found;
}

QString rowNameOf(const Peptide &sequence)
{
    return QString::fromStdString(sequence.sequenceName());
}

} // namespace

bool AddRowsCommand::run(Alignment &alignment, const std::vector<unsigned long> &rows,
                         Columns columns, QString *told) const
{
    return tell(align(alignment, rows, columns), told);
}

bool AddRowsCommand::add(Alignment &alignment, const std::vector<Compound *> &sequences,
                         QString *told) const
{
    return tell(alignNew(alignment, sequences), told);
}

bool AddRowsCommand::tell(const Result<QString> &outcome, QString *told) const
{
    if (outcome) {
        if (told != nullptr)
            *told = outcome.value();
        else
            Logger::Write(outcome.value());
        return true;
    }
    if (outcome.error().kind == FailureKind::Cancelled)
        return false;
    const QString sentence = QString::fromStdString(outcome.error().message());
    Logger::Write(sentence, Logger::Severity::Error);
    if (m_HasUser)
        services::FailureBoxes::showOver(m_Parent, sentence, {});
    return false;
}

Result<AddedRows::Layout> AddRowsCommand::layoutOf(const Alignment &alignment,
                                                   const Work &work) const
{
    const auto refused = [&work](FailureKind kind, const QString &cause) {
        return rowsFailure(kind, work.refused, cause);
    };
    if (work.sent.others() == 0)
        return refused(FailureKind::Refused,
                       tr("there are no others with residues to align them to"));
    const auto command = realign::parseAlignerCommand(addingCommand(work.columns));
    if (!command)
        return refused(command.error().kind, QString::fromStdString(command.error().message()));

    const unsigned long revision = alignment.layoutRevision();
    AlignerRun aligner(command.value(), work.sent.othersAsFasta(), work.sent.addedAsFasta());
    const auto user =
        m_HasUser
            ? std::optional(AlignerUser{m_Parent, work.title, work.waiting(aligner.program())})
            : std::nullopt;
    waitForAligner(aligner, user);
    if (!aligner.outcome()) {
        const Failure &failure = aligner.outcome().error();
        if (failure.kind == FailureKind::Cancelled)
            return failure;
        const QString cause =
            tr("%1 %2").arg(aligner.program(), QString::fromStdString(failure.message()));
        return failure.kind == FailureKind::NotFound
                   ? refused(failure.kind, tr("%1; it is the package mafft").arg(cause))
                   : refused(failure.kind, cause);
    }
    if (!isStillThere(alignment) || alignment.layoutRevision() != revision)
        return refused(FailureKind::Refused, tr("it was changed meanwhile"));
    Result<AddedRows::Layout> layout = work.sent.read(aligner.answer());
    if (!layout)
        return refused(
            layout.error().kind,
            tr("the answer of %1 is not to be trusted; %2")
                .arg(aligner.program(), QString::fromStdString(layout.error().message())));
    if (const auto &leftOut = layout.value().leftOut; !leftOut.empty()) {
        std::size_t count = 0;
        for (const auto &[row, residues] : leftOut)
            count += residues;
        const QString first = work.nameOf(leftOut.front().first);
        return refused(
            FailureKind::Refused,
            count == 1
                ? tr("1 residue, of %1, has no column among those of the other rows, and would be "
                     "lost. Align to the Rest makes a column for it")
                      .arg(first)
                : tr("%1 residues, the first of them of %2, have no column among those of the "
                     "other rows, and would be lost. Align to the Rest makes columns for them")
                      .arg(QLocale().toString(qulonglong(count)), first));
    }
    if (work.columns == Columns::Kept && !layout.value().inserted.empty())
        return refused(FailureKind::BadInput, tr("%1 has made columns").arg(aligner.program()));
    return layout;
}

Result<QString> AddRowsCommand::align(Alignment &alignment, std::vector<unsigned long> rows,
                                      Columns columns) const
{
    if (isRefused(alignment))
        return Failure{FailureKind::Cancelled, {}};
    const QString name = nameText(alignment);
    std::ranges::sort(rows);
    const Work work{AddedRows(alignment, rows),
                    columns,
                    tr("Align to the Rest"),
                    [&name](const QString &program) {
                        return tr("Aligning rows of %1 with %2…").arg(name, program);
                    },
                    tr("No row of %1 was aligned").arg(name),
                    [&alignment](unsigned long row) {
                        return QString::fromStdString(alignment.GetSeqName(row));
                    }};
    if (work.sent.added() == 0)
        return rowsFailure(FailureKind::Refused, work.refused,
                           tr("none that has residues is chosen"));
    const Result<AddedRows::Layout> layout = layoutOf(alignment, work);
    if (!layout)
        return layout.error();
    const DataPoint<Alignment> guard(nullptr, &alignment);
    if (!guard.m_good)
        return Failure{FailureKind::Cancelled, {}};
    const StepName step("Align rows to the rest");
    place(alignment, layout.value());
    return withColumns(
        work.sent.added() == 1
            ? tr("Aligned %1 to the other rows").arg(work.nameOf(layout.value().rows.front().first))
            : tr("Aligned %L1 rows to the others").arg(work.sent.added()),
        layout.value());
}

QString AddRowsCommand::withColumns(const QString &what, const AddedRows::Layout &layout)
{
    const unsigned long inserted = insertedIn(layout);
    return inserted == 0   ? tr("%1; no column has come").arg(what)
           : inserted == 1 ? tr("%1; one column has come").arg(what)
                           : tr("%1; %2 columns have come").arg(what, QString::number(inserted));
}

// ---- Sequences that become rows

Result<QString> AddRowsCommand::alignNew(Alignment &alignment,
                                         const std::vector<Compound *> &sequences) const
{
    if (isRefused(alignment))
        return Failure{FailureKind::Cancelled, {}};
    const QString name = nameText(alignment);
    const Newcomers found = newcomersOf(alignment, sequences);
    const std::vector<Peptide *> &added = found.sequences;
    const std::size_t present = found.present.size();
    if (added.empty())
        return present == 0
                   ? tr("Nothing was added to %1: there is no sequence with residues").arg(name)
               : present == 1 ? tr("Nothing was added: %1 is a row of %2 already")
                                    .arg(rowNameOf(*found.present.front()), name)
                              : tr("Nothing was added: the %1 sequences are rows of %2 already")
                                    .arg(QLocale().toString(qulonglong(present)), name);
    // They may go while the program runs.
    const ObjectReferences kept(std::vector<Compound *>(added.begin(), added.end()));
    const unsigned long height = alignment.height();
    std::vector<QString> names;
    std::ranges::transform(added, std::back_inserter(names),
                           [](const Peptide *sequence) { return rowNameOf(*sequence); });
    const Work work{AddedRows(alignment, {}, added),
                    Columns::AsNeeded,
                    tr("Add and Align"),
                    [&name](const QString &program) {
                        return tr("Aligning what is added to %1 with %2…").arg(name, program);
                    },
                    tr("Nothing was added to %1").arg(name),
                    [&names, height](unsigned long row) { return names[row - height]; }};
    const Result<AddedRows::Layout> layout = layoutOf(alignment, work);
    if (!layout)
        return layout.error();
    AlignmentTable::Rows rows;
    for (const auto &[row, cells] : layout.value().rows) {
        Peptide *const sequence = added[row - height];
        if (kept.objects().size() != added.size() || cells.residues() != sequence->residueCount())
            return rowsFailure(FailureKind::Refused, work.refused,
                               tr("a sequence was changed meanwhile"));
        rows.push_back(std::make_unique<AlignmentRow>(*sequence, cells));
    }
    const DataPoint<Alignment> guard(nullptr, &alignment);
    if (!guard.m_good)
        return Failure{FailureKind::Cancelled, {}};
    const StepName step("Add and align sequences");
    openColumns(alignment, layout.value());
    addRowsTo(alignment.table(), std::move(rows));
    const QString done =
        withColumns(added.size() == 1 ? tr("Added and aligned %1").arg(names.front())
                                      : tr("Added and aligned %L1 sequences").arg(added.size()),
                    layout.value());
    return present == 0 ? done
           : present == 1
               ? tr("%1; %2 was a row already").arg(done, rowNameOf(*found.present.front()))
               : tr("%1; %2 were rows already").arg(done, QLocale().toString(qulonglong(present)));
}

} // namespace TAMBO::app
