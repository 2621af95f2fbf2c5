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
    Run(std::vector<Order> of, WriteProgress *shown) : orders(std::move(of)), progress(shown) { }
    ~Run() { delete progress; }
    Run(const Run &) = delete;
    Run &operator=(const Run &) = delete;

    [[nodiscard]] WriteJob &job() const { return *orders[current].job; }

    std::vector<Order> orders;
    std::size_t current = 0;
    // Its window may go before this.
    QPointer<WriteProgress> progress;
};

ExportRuns::Part::Part() = default;
ExportRuns::Part::Part(Part &&) noexcept = default;
ExportRuns::Part &ExportRuns::Part::operator=(Part &&) noexcept = default;
ExportRuns::Part::~Part() = default;

ExportRuns::Order::Order() = default;
ExportRuns::Order::Order(Order &&) noexcept = default;
ExportRuns::Order &ExportRuns::Order::operator=(Order &&) noexcept = default;
ExportRuns::Order::~Order() = default;

ExportRuns::ExportRuns(SavedPlaces &places) : m_Places(places) { }

ExportRuns::~ExportRuns() = default;

void ExportRuns::take(std::vector<Order> orders, QWidget *parent)
{
    WriteJob &job = *orders.front().job;
    auto *const progress = new WriteProgress(job, tr("Exporting"), parent);
    // The user goes on with something else.
    progress->setAttribute(Qt::WA_ShowWithoutActivating);
    progress->show();
    m_Runs.push_back(std::make_unique<Run>(std::move(orders), progress));
    await(job);
}

// Not from within the job, which goes then.
void ExportRuns::await(WriteJob &job)
{
    const auto over = [this, of = &job] { finish(of); };
    connect(&job, &WriteJob::ended, this, over, Qt::QueuedConnection);
    if (job.isOver())
        QMetaObject::invokeMethod(this, over, Qt::QueuedConnection);
}

void ExportRuns::finish(WriteJob *job)
{
    const auto found =
        std::ranges::find_if(m_Runs, [job](const auto &run) { return &run->job() == job; });
    if (found == m_Runs.end())
        return;
    Run &run = **found;
    const Order &order = run.orders[run.current];
    const QString file = job->path();
    const Result<void> outcome = job->outcome();
    if (outcome && run.current + 1 < run.orders.size()) {
        ++run.current;
        run.job().start();
        if (run.progress)
            run.progress->follow(run.job());
        await(run.job());
        tellWritten(order, file);
        return;
    }
    const std::unique_ptr<Run> ended = std::move(*found);
    m_Runs.erase(found);
    if (outcome) {
        tellWritten(order, file);
    } else if (outcome.error().kind == FailureKind::Cancelled) {
        Logger::Write((tr("The export of %1 to %2 was cancelled; the file is as it was.")
                           .arg(order.name, file) +
                       u' ' + notWritten(*ended))
                          .trimmed());
        m_HasFailed = true;
    } else {
        QStringList causes{QString::fromStdString(outcome.error().message())};
        Logger::Write(causes.front(), Logger::Severity::Error);
        if (const QString left = notWritten(*ended); !left.isEmpty())
            causes << left;
        m_HasFailed = true;
        emit failed(tr("%1 could not be exported.").arg(order.name), causes);
    }
    emit this->ended();
}

void ExportRuns::tellWritten(const Order &order, const QString &file)
{
    Logger::Write(tr("Exported %1 to %2").arg(order.name, file));
    note(m_Places, order, file);
    emit exported(file);
}

QString ExportRuns::notWritten(const Run &run)
{
    const std::size_t left = run.orders.size() - run.current - 1;
    return left == 0 ? QString() : tr("Files that were not begun: %L1.").arg(left);
}

void ExportRuns::note(SavedPlaces &places, const Order &order, const QString &file)
{
    const bool isWhole = order.parts.size() == 1;
    for (const Part &part : order.parts) {
        if (part.object == nullptr || part.object->objects().empty())
            continue;
        const Compound &object = *part.object->objects().front();
        places.takeFile(object, file);
        // Of what was saved already a copy has been written.
        if (part.countsAsSaved && part.state != nullptr && places.isUnsaved(object)) {
            places.accept(object, file, part.losses);
            places.noteSaved(object,
                             {file, order.options, isWhole, false,
                              order.job == nullptr ? std::nullopt : order.job->written()},
                             *part.state);
        }
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
        const WriteJob &job = m_Runs.front()->job();
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
