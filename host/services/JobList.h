// SPDX-License-Identifier: GPL-3.0-or-later
// The jobs that run in the background: what each is called, since when it runs, what it last said.
#pragma once

#include "RunningJobs.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>

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
    };

    static JobList &instance();

    // In the order in which they began.
    [[nodiscard]] const std::vector<Job> &jobs() const noexcept { return m_Jobs; }

    RunningJobs::Number begin(const QString &title);
    void say(RunningJobs::Number number, const QString &line);
    void end(RunningJobs::Number number);

signals:
    void changed();

private:
    std::vector<Job> m_Jobs;
    RunningJobs::Number m_LastNumber = 0;
};

} // namespace TAMBO::services
