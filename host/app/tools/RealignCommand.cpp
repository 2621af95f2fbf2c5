// SPDX-License-Identifier: GPL-3.0-or-later
#include "RealignCommand.h"

#include "AlignerCommand.h"
#include "AlignerRun.h"
#include "AlignerWait.h"
#include "Alignment.h"
#include "Config.h"
#include "DataPoint.h"
#include "FailureBoxes.h"
#include "Logger.h"
#include "ObjectFacts.h"
#include "ObjectSpace.h"
#include "RealignedRows.h"
#include "StatusLine.h"
#include "TableChanges.h"

#include <QLocale>

#include <algorithm>
#include <cstddef>
#include <optional>

namespace TAMBO::app {

namespace {

using realign::AlignerRun;
using realign::RealignedRows;

Failure cancelled()
{
    return {FailureKind::Cancelled, {}};
}

Failure unaligned(FailureKind kind, const QString &sentence)
{
    return {kind, sentence.toStdString()};
}

// The command of the chosen aligner, or the choice itself when it is a command.
QString commandLine()
{
    const std::string choice = Config::GetSetting("Realign", "Aligner").ToString();
    const std::string command = Config::GetSetting("Realign", choice).ToString();
    return QString::fromStdString(command.empty() ? choice : command);
}

} // namespace

bool RealignCommand::run(Alignment &alignment) const
{
    const Result<Realigned> realigned = realign(alignment, alignment.range());
    if (!realigned)
        tell(realigned.error());
    else if (!realigned.value().isDone) {
        Logger::Write(realigned.value().text);
        StatusLine::Say(realigned.value().text);
    }
    return bool(realigned);
}

bool RealignCommand::runOnAll(Alignment &alignment, QString *told) const
{
    const Result<Realigned> realigned = realign(alignment, {0, alignment.width()});
    if (realigned)
        *told = realigned.value().text;
    else
        tell(realigned.error());
    return bool(realigned);
}

void RealignCommand::tell(const Failure &failure) const
{
    if (failure.kind == FailureKind::Cancelled)
        return;
    const QString sentence = QString::fromStdString(failure.message());
    Logger::Write(sentence, Logger::Severity::Error);
    if (m_HasUser)
        services::FailureBoxes::showOver(m_Parent, sentence, {});
}

Result<RealignCommand::Realigned> RealignCommand::realign(Alignment &alignment,
                                                          const Alignment::Range &asked) const
{
    // A guard that is refused says why in the status line.
    if (alignment.IsLocked() || ObjectSpace::get().IsLocked()) {
        const DataPoint<Alignment> refused(nullptr, &alignment);
        return cancelled();
    }
    const Alignment::Range range{asked.first, std::min(asked.second, alignment.width())};
    const RealignedRows rows(alignment, range);
    if (rows.count() < 2)
        return Realigned{false, tr("Nothing to realign in %1: fewer than two sequences have "
                                   "residues there.")
                                    .arg(nameText(alignment))};
    const auto command = realign::parseAlignerCommand(commandLine());
    if (!command)
        return unaligned(command.error().kind,
                         tr("The columns were not realigned: %1.")
                             .arg(QString::fromStdString(command.error().message())));

    const unsigned long revision = alignment.layoutRevision();
    const QString name = nameText(alignment);
    AlignerRun aligner(command.value(), rows.fasta());
    const auto user =
        m_HasUser
            ? std::optional(AlignerUser{m_Parent, tr("Realign"),
                                        tr("Realigning %1 with %2…").arg(name, aligner.program())})
            : std::nullopt;
    waitForAligner(aligner, user);
    if (!aligner.outcome())
        return refusal(aligner, name);
    if (!isStillThere(alignment) || alignment.layoutRevision() != revision)
        return unaligned(
            FailureKind::Refused,
            tr("The columns of %1 were not realigned: it was changed meanwhile.").arg(name));
    const auto columns = rows.read(aligner.answer());
    if (!columns)
        return unaligned(
            columns.error().kind,
            tr("The columns of %1 were not realigned: the answer of %2 is not to be "
               "trusted; %3.")
                .arg(name, aligner.program(), QString::fromStdString(columns.error().message())));

    const DataPoint<Alignment> guard(nullptr, &alignment);
    if (!guard.m_good ||
        !replaceColumns(guard->table(), range, columns.value().rows, columns.value().count))
        return cancelled();
    const bool isSame = alignment.layoutRevision() == revision;
    guard->range({range.first, range.first + columns.value().count});
    const auto number = [](std::size_t count) { return QLocale().toString(qulonglong(count)); };
    return Realigned{
        true, isSame ? tr("%1 leaves the columns of %2 as they are").arg(aligner.program(), name)
                     : tr("Realigned %1 rows of %2 with %3: %4 columns, %5 before")
                           .arg(number(rows.count()), name, aligner.program(),
                                number(columns.value().count), number(range.second - range.first))};
}

Failure RealignCommand::refusal(const AlignerRun &aligner, const QString &name)
{
    const Failure &failure = aligner.outcome().error();
    if (failure.kind == FailureKind::Cancelled)
        return failure;
    QString sentence = tr("The columns of %1 were not realigned: %2 %3.")
                           .arg(name, aligner.program(), QString::fromStdString(failure.message()));
    if (failure.kind == FailureKind::NotFound)
        sentence += tr(" Install it, or choose another aligner in the settings.");
    return unaligned(failure.kind, sentence);
}

} // namespace TAMBO::app
