// SPDX-License-Identifier: GPL-3.0-or-later
#include "RealignCommand.h"

#include "AlignerCommand.h"
#include "AlignerRun.h"
#include "Alignment.h"
#include "Config.h"
#include "DataPoint.h"
#include "FailureBoxes.h"
#include "Logger.h"
#include "ObjectFacts.h"
#include "ObjectSpace.h"
#include "RealignedRows.h"
#include "TableChanges.h"

#include <QEventLoop>
#include <QLabel>
#include <QProgressDialog>
#include <QTimer>

#include <algorithm>
#include <chrono>

namespace TAMBO::app {

namespace {

using realign::AlignerRun;
using realign::RealignedRows;
using namespace std::chrono_literals;

// Short runs come and go without a dialog.
constexpr auto kSilence = 300ms;
// Nobody is there to cancel.
constexpr auto kLongestAlone = 10min;

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

bool isStillThere(const Alignment &alignment)
{
    auto &space = ObjectSpace::get();
    return std::find(space.begin(), space.end(), &alignment) != space.end();
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
        Logger::Write(tr("Nothing to realign: fewer than two sequences have residues there."));
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
    wait(aligner, name);
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

void RealignCommand::wait(AlignerRun &aligner, const QString &name) const
{
    if (m_HasUser)
        return waitWithUser(aligner, name);
    QEventLoop loop;
    QTimer::singleShot(kLongestAlone, &loop, [&aligner] {
        aligner.stop({FailureKind::System, tr("did not come to an end").toStdString()});
    });
    QObject::connect(&aligner, &AlignerRun::ended, &loop, &QEventLoop::quit);
    aligner.start();
    if (!aligner.isOver())
        loop.exec();
}

void RealignCommand::waitWithUser(AlignerRun &aligner, const QString &name) const
{
    QEventLoop loop;
    QObject::connect(&aligner, &AlignerRun::ended, &loop, &QEventLoop::quit);
    aligner.start();
    if (aligner.isOver())
        return;
    // Windows repaint, but nobody can edit before the dialog is there to keep them from it.
    QTimer::singleShot(kSilence, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (aligner.isOver())
        return;
    const QString title = tr("Realigning %1 with %2…").arg(name, aligner.program());
    QProgressDialog progress(QString(), tr("Cancel"), 0, 0, m_Parent);
    auto *label = new QLabel(title);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    progress.setLabel(label);
    progress.setWindowTitle(tr("Realign"));
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(0);
    QObject::connect(&aligner, &AlignerRun::said, &progress, [&](const QString &line) {
        progress.setLabelText(title + '\n' + line.left(80));
    });
    QObject::connect(&progress, &QProgressDialog::canceled, &aligner,
                     [&aligner] { aligner.stop(cancelled()); });
    progress.show();
    if (!aligner.isOver())
        loop.exec();
}

} // namespace TAMBO::app
