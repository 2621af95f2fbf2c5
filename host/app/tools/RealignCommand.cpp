// SPDX-License-Identifier: GPL-3.0-or-later
#include "RealignCommand.h"

#include "AlignerCommand.h"
#include "AlignerRun.h"
#include "Alignment.h"
#include "AlignmentTable.h"
#include "Config.h"
#include "DataPoint.h"
#include "FailureBoxes.h"
#include "Logger.h"
#include "ObjectFacts.h"
#include "ObjectSpace.h"
#include "RealignedRows.h"

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
constexpr auto kPatience = 300ms;
// Nobody is there to cancel.
constexpr auto kLongestAlone = 10min;

const QString kCancelled = QStringLiteral("-");

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
    const QString error = realign(alignment);
    if (error.isEmpty())
        return true;
    if (error == kCancelled)
        return false;
    Logger::Write(error, Logger::Severity::Error);
    if (m_HasUser)
        services::FailureBoxes::showOver(m_Parent, error, {});
    return false;
}

QString RealignCommand::realign(Alignment &alignment) const
{
    // A guard that is refused says why in the status line.
    if (alignment.IsLocked() || ObjectSpace::get().IsLocked()) {
        const DataPoint<Alignment> refused(nullptr, &alignment);
        return kCancelled;
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
        return tr("The columns were not realigned: %1.")
            .arg(QString::fromStdString(command.error().message()));

    const unsigned long revision = alignment.layoutRevision();
    const QString name = nameText(alignment);
    AlignerRun aligner(command.value(), rows.fasta());
    wait(aligner, name);
    if (aligner.error() == kCancelled)
        return kCancelled;
    const QString refused = tr("The columns of %1 were not realigned: %2 %3.");
    if (!aligner.error().isEmpty())
        return refused.arg(name, aligner.program(), aligner.error()) +
               (aligner.error().contains(tr("not found"))
                    ? tr(" Install it, or choose another aligner in the settings.")
                    : QString());
    if (!isStillThere(alignment) || alignment.layoutRevision() != revision)
        return tr("The columns of %1 were not realigned: it was changed meanwhile.").arg(name);
    const auto columns = rows.read(aligner.answer());
    if (!columns)
        return tr("The columns of %1 were not realigned: the answer of %2 is not to be trusted; "
                  "%3.")
            .arg(name, aligner.program(), QString::fromStdString(columns.error().message()));

    const DataPoint<Alignment> guard(nullptr, &alignment);
    if (guard.m_good &&
        guard->table().replaceColumns(range, columns.value().rows, columns.value().count))
        guard->range({range.first, range.first + columns.value().count});
    return {};
}

void RealignCommand::wait(AlignerRun &aligner, const QString &name) const
{
    if (m_HasUser)
        return waitWithUser(aligner, name);
    QEventLoop loop;
    QTimer::singleShot(kLongestAlone, &loop,
                       [&aligner] { aligner.stop(tr("did not come to an end")); });
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
    QTimer::singleShot(kPatience, &loop, &QEventLoop::quit);
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
                     [&aligner] { aligner.stop(kCancelled); });
    progress.show();
    if (!aligner.isOver())
        loop.exec();
}

} // namespace TAMBO::app
