// SPDX-License-Identifier: GPL-3.0-or-later
// The list of programs that work in the background, which the workbench shows in its status area.
#pragma once

#include "Export.h"

#include <QString>
#include <QStringList>

class TAMBO_API RunningJobs
{
public:
    // Never 0.
    using Number = unsigned long;

    // A job called title begins now. program: the process that ends when the user cancels the job
    // there; 0 when it cannot be cancelled.
    static Number Begin(const QString &title, qint64 program = 0);
    // The job's program does not go on without the workbench, so that nobody is asked whether it
    // shall.
    static void EndWithWorkbench(Number job);
    // The last line that the job's program has said of its progress.
    static void Say(Number job, const QString &line);
    // The job leaves the list. A number that is not in it is ignored, here and above.
    static void End(Number job);
    // The job leaves the list without what it was to bring, which the user is told: what, a
    // sentence such as "No model was built: …", and the last lines of its program. Of a job that
    // the user has cancelled nobody is told.
    static void Fail(Number job, const QString &what, const QStringList &lastLines);
};
