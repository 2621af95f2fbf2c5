// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExportRuns.h"

#include "KeptState.h"
#include "Logger.h"
#include "ObjectReferences.h"
#include "ProgressBox.h"
#include "WriteJob.h"
#include "WriteProgress.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QPointer>
#include <QScopedValueRollback>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace TAMBO::app {

namespace {

constexpr int kExportTick = 50;

} // namespace

struct ExportRuns::Run
{
    Run(Order of, WriteProgress *shown) : order(std::move(of)), progress(shown) { }
    ~Run() { delete progress; }
    Run(const Run &) = delete;
    Run &operator=(const Run &) = delete;

    Order order;
    // Its window may go before this.
    QPointer<WriteProgress> progress;
};

ExportRuns::Order::Order() = default;
ExportRuns::Order::Order(Order &&) noexcept = default;
ExportRuns::Order::~Order() = default;

ExportRuns::ExportRuns(SavedPlaces &places) : m_Places(places) { }

ExportRuns::~ExportRuns() = default;

void ExportRuns::take(Order order, QWidget *parent)
{
    WriteJob *const job = order.job.get();
    auto *const progress = new WriteProgress(*job, tr("Exporting"), parent);
    // The user goes on with something else.
    progress->setAttribute(Qt::WA_ShowWithoutActivating);
    progress->show();
    m_Runs.push_back(std::make_unique<Run>(std::move(order), progress));
    // Not from within the job, which goes then.
    connect(
        job, &WriteJob::ended, this, [this, job] { finish(job); }, Qt::QueuedConnection);
    if (job->isOver())
        QMetaObject::invokeMethod(
            this, [this, job] { finish(job); }, Qt::QueuedConnection);
}

void ExportRuns::finish(WriteJob *job)
{
    const auto found = std::ranges::find_if(
        m_Runs, [job](const auto &run) { return run->order.job.get() == job; });
    if (found == m_Runs.end())
        return;
    const std::unique_ptr<Run> run = std::move(*found);
    m_Runs.erase(found);
    const QString file = job->path();
    const Result<void> outcome = job->outcome();
    if (outcome) {
        Logger::Write(tr("Exported %1 to %2").arg(run->order.name, file));
        note(m_Places, run->order, file);
        emit exported(file);
    } else if (outcome.error().kind == FailureKind::Cancelled) {
        Logger::Write(tr("The export of %1 to %2 was cancelled; the file is as it was.")
                          .arg(run->order.name, file));
        m_HasFailed = true;
    } else {
        const QString cause = QString::fromStdString(outcome.error().message());
        Logger::Write(cause, Logger::Severity::Error);
        m_HasFailed = true;
        emit failed(tr("%1 could not be exported.").arg(run->order.name), {cause});
    }
    emit ended();
}

void ExportRuns::note(SavedPlaces &places, const Order &order, const QString &file)
{
    if (order.object == nullptr || order.object->objects().empty())
        return;
    const Compound &object = *order.object->objects().front();
    places.takeFile(object, file);
    // Of what was saved already a copy has been written.
    if (order.countsAsSaved && order.state != nullptr && places.isUnsaved(object)) {
        places.accept(object, order.losses);
        places.noteSaved(object,
                         {file, order.options, true, false,
                          order.job == nullptr ? std::nullopt : order.job->written()},
                         *order.state);
    }
}

bool ExportRuns::waitForAll(QWidget *parent)
{
    m_HasFailed = false;
    if (m_Runs.empty())
        return true;
    const QScopedValueRollback<bool> awaited(m_IsAwaited, true);
    services::ProgressBox dialog(tr("Quit"), tr("Do Not Quit"), parent);
    dialog.setObjectName(QStringLiteral("ExportsBeforeQuitting"));
    dialog.setWindowModality(Qt::ApplicationModal);
    const auto follow = [&] {
        if (m_Runs.empty())
            return;
        const WriteJob &job = *m_Runs.front()->order.job;
        dialog.setText(tr("Tambo quits when %1 is written.").arg(QFileInfo(job.path()).fileName()));
        dialog.setDone(job.done());
    };
    QEventLoop loop;
    connect(&dialog, &services::ProgressBox::stopped, &loop, &QEventLoop::quit);
    connect(this, &ExportRuns::ended, &loop, [this, &loop] {
        if (m_Runs.empty() || m_HasFailed)
            loop.quit();
    });
    QTimer tick;
    connect(&tick, &QTimer::timeout, &dialog, follow);
    tick.start(kExportTick);
    follow();
    dialog.show();
    loop.exec();
    return m_Runs.empty() && !m_HasFailed;
}

} // namespace TAMBO::app

#include "moc_ExportRuns.cpp"
