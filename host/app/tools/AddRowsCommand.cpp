// SPDX-License-Identifier: GPL-3.0-or-later
#include "AddRowsCommand.h"

#include "AddedRows.h"
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
#include "ObjectSpace.h"
#include "StepName.h"
#include "TableChanges.h"

#include <QLocale>

#include <algorithm>
#include <optional>

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

// Inside a guard. False when the user has given up taking columns out, which leaves them empty.
void place(Alignment &alignment, const AddedRows::Layout &layout)
{
    for (auto run = layout.inserted.rbegin(); run != layout.inserted.rend(); ++run)
        alignment.insertGapCol(run->column, run->count);
    replaceCells(alignment.table(), "align rows", {0, alignment.width()},
                 cellsOf(alignment, layout));
    if (std::ranges::find(layout.isEmptied, true) != layout.isEmptied.end())
        alignment.removeColumns(layout.isEmptied);
}

} // namespace

bool AddRowsCommand::run(Alignment &alignment, const std::vector<unsigned long> &rows,
                         Columns columns, QString *told) const
{
    const Result<QString> aligned = align(alignment, rows, columns);
    if (aligned) {
        if (told != nullptr)
            *told = aligned.value();
        else
            Logger::Write(aligned.value());
        return true;
    }
    if (aligned.error().kind == FailureKind::Cancelled)
        return false;
    const QString sentence = QString::fromStdString(aligned.error().message());
    Logger::Write(sentence, Logger::Severity::Error);
    if (m_HasUser)
        services::FailureBoxes::showOver(m_Parent, sentence, {});
    return false;
}

Result<QString> AddRowsCommand::align(Alignment &alignment, std::vector<unsigned long> rows,
                                      Columns columns) const
{
    // A guard that is refused says why in the status line.
    if (alignment.IsLocked() || ObjectSpace::get().IsLocked()) {
        const DataPoint<Alignment> refused(nullptr, &alignment);
        return Failure{FailureKind::Cancelled, {}};
    }
    const QString name = nameText(alignment);
    const auto refused = [&name](FailureKind kind, const QString &cause) {
        return Failure{kind, tr("No row of %1 was aligned: %2.").arg(name, cause).toStdString()};
    };
    std::ranges::sort(rows);
    const AddedRows sent(alignment, rows);
    if (sent.added() == 0)
        return refused(FailureKind::Refused, tr("none that has residues is chosen"));
    if (sent.others() == 0)
        return refused(FailureKind::Refused,
                       tr("there are no others with residues to align them to"));
    const auto command = realign::parseAlignerCommand(addingCommand(columns));
    if (!command)
        return refused(command.error().kind, QString::fromStdString(command.error().message()));

    const unsigned long revision = alignment.layoutRevision();
    AlignerRun aligner(command.value(), sent.othersAsFasta(), sent.addedAsFasta());
    const auto user = m_HasUser
                          ? std::optional(AlignerUser{
                                m_Parent, tr("Align to the Rest"),
                                tr("Aligning rows of %1 with %2…").arg(name, aligner.program())})
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
    const Result<AddedRows::Layout> layout = sent.read(aligner.answer());
    if (!layout)
        return refused(
            layout.error().kind,
            tr("the answer of %1 is not to be trusted; %2")
                .arg(aligner.program(), QString::fromStdString(layout.error().message())));
    if (const auto &leftOut = layout.value().leftOut; !leftOut.empty()) {
        std::size_t count = 0;
        for (const auto &[row, residues] : leftOut)
            count += residues;
        const QString first = QString::fromStdString(alignment.GetSeqName(leftOut.front().first));
        return refused(FailureKind::Refused,
                       tr("%1 residues, the first of them of %2, have no column among those of the "
                          "other rows, "
                          "and would be lost. Align to the Rest makes columns for them")
                           .arg(QLocale().toString(qulonglong(count)), first));
    }
    if (columns == Columns::Kept && !layout.value().inserted.empty())
        return refused(FailureKind::BadInput, tr("%1 has made columns").arg(aligner.program()));

    const DataPoint<Alignment> guard(nullptr, &alignment);
    if (!guard.m_good)
        return Failure{FailureKind::Cancelled, {}};
    const StepName step("Align rows to the rest");
    place(alignment, layout.value());
    const unsigned long inserted = insertedIn(layout.value());
    const QString what = sent.added() == 1 ? tr("Aligned %1 to the other rows")
                                                 .arg(QString::fromStdString(alignment.GetSeqName(
                                                     layout.value().rows.front().first)))
                                           : tr("Aligned %L1 rows to the others").arg(sent.added());
    return inserted == 0   ? tr("%1; no column has come").arg(what)
           : inserted == 1 ? tr("%1; one column has come").arg(what)
                           : tr("%1; %2 columns have come").arg(what, QString::number(inserted));
}

} // namespace TAMBO::app
