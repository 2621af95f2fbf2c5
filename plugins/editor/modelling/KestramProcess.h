// SPDX-License-Identifier: GPL-3.0-or-later
// The process of a window's modelling jobs.
#pragma once

#include "RunningJobs.h"

#include <QProcess>

namespace ZEP {

class KestramProcess : public QProcess
{
public:
    explicit KestramProcess(QObject *window);

    // For the list of running jobs.
    void noteBegin(const QString &title);
    void noteErrors(const QString &errors);
    void noteEnd();
    // The window ends the job itself, since it or this may go before that.
    [[nodiscard]] RunningJobs::Number takeJob();

    // The window goes. A program that still runs goes on; nobody is told of what it says, and the
    // process is not destroyed before the program has ended. The toolkit would kill it.
    void letGo();

private:
    RunningJobs::Number m_Job = 0;
};

} // namespace ZEP
