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

#include <algorithm>
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
    const Result<void> realigned = realign(alignment);
    if (realigned)
        return true;
    if (realigned.error().kind == FailureKind::Cancelled)
        return false;
    const QString sentence = QString::fromStdString(realigned.error().message());
    Logger::Write(sentence, Logger::Severity::Error);
    if (m_HasUser)
        services::FailureBoxes::showOver(m_Parent, sentence, {});
    return false;
}

Result<void> RealignCommand::realign(Alignment &alignment) const
{
    // A guard that is refused says why in the status line.
    if (alignment.IsLocked() || ObjectSpace::get().IsLocked()) {
        const DataPoint<Alignment> refused(nullptr, &alignment);
        return cancelled();
    }
    const Alignment::Range range{alignment.range().first,
                                 std::min(alignment.range().second, alignment.width())};
    const RealignedRows rows(alignment, range);
    if (rows.count() < 2) {
        const QString reason = tr("Nothing to realign in %1: fewer than two sequences have "
                                  "residues there.")
                                   .arg(nameText(alignment));
        Logger::Write(reason);
        StatusLine::Say(reason);
        return {};
    }
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
    if (guard.m_good &&
        replaceColumns(guard->table(), range, columns.value().rows, columns.value().count))
        guard->range({range.first, range.first + columns.value().count});
    return {};
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
