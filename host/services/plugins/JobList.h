// SPDX-License-Identifier: GPL-3.0-or-later
// The jobs that run in the background: what each is called, since when it runs, what it last said.
// And those that have failed, until the user has taken note.
#pragma once

#include "RunningJobs.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QStringList>

#include <vector>

namespace TAMBO::services {

class JobList : public QObject
{
    Q_OBJECT

public:
    struct Job
    {
        RunningJobs::Number number = 0;
        QString title;
        QElapsedTimer running;
        QString lastLine;
        qint64 program = 0;
        bool isCancelled = false;
        bool endsWithWorkbench = false;
    };
    struct FailedJob
    {
        RunningJobs::Number number = 0;
        QString title;
        QString what;
        QStringList lastLines;
    };

    static JobList &instance();

    // In the order in which they began.
    [[nodiscard]] const std::vector<Job> &jobs() const noexcept { return m_Jobs; }
    // In the order in which they failed. A new job of the same title takes the place of older ones.
    [[nodiscard]] const std::vector<FailedJob> &failures() const noexcept { return m_Failures; }

    RunningJobs::Number begin(const QString &title, qint64 program = 0);
    void endWithWorkbench(RunningJobs::Number number);
    void say(RunningJobs::Number number, const QString &line);
    void end(RunningJobs::Number number);
    void fail(RunningJobs::Number number, const QString &what, const QStringList &lastLines);

    // Asks the job's program to end, and ends it when it does not.
    void cancel(RunningJobs::Number number);
    void forgetFailures();

signals:
    void changed();
    void failed(const QString &what, const QStringList &lastLines);

private:
    [[nodiscard]] Job *find(RunningJobs::Number number);
    void kill(RunningJobs::Number number);

    std::vector<Job> m_Jobs;
    std::vector<FailedJob> m_Failures;
    RunningJobs::Number m_LastNumber = 0;
};

} // namespace TAMBO::services
