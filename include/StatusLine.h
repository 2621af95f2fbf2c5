// SPDX-License-Identifier: GPL-3.0-or-later
// The workbench's status line, where users look for what has come of a command.
#pragma once

#include "Export.h"

#include <QString>

class TAMBO_API StatusLine
{
public:
    // Shown there for a while, in place of what was said before, and written nowhere. A sentence;
    // what a window has to say names the window. An empty text is ignored. From the GUI thread.
    static void Say(const QString &text);
};
