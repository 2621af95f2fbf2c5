// SPDX-License-Identifier: GPL-3.0-or-later
// The list of programs that work in the background, which the workbench shows in its status area.
#pragma once

#include "Export.h"

#include <QString>

class TAMBO_API RunningJobs
{
public:
    // Never 0.
    using Number = unsigned long;

    // A job called title begins now.
    static Number Begin(const QString &title);
    // The last line that the job's program has said of its progress.
    static void Say(Number job, const QString &line);
    // The job leaves the list. A number that is not in it is ignored, here and above.
    static void End(Number job);
};
