// SPDX-License-Identifier: GPL-3.0-or-later
// Waits for a file that is being written while windows go on painting, and nothing that the user
// does reaches them.
#pragma once

#include "Result.h"

#include <QString>

class QWidget;

namespace TAMBO::app {

class WriteJob;

// Until the job is over, or for the time after which a user wonders what is going on. Whether it is
// over.
bool waitUnnoticed(WriteJob &job);

// Until the job, which is started, is over. After that time a dialog over the window, which may be
// null, shows how far it is and can call it off.
[[nodiscard]] Result<void> waitToTheEnd(WriteJob &job, const QString &title, QWidget *window);

// Whether somebody does so further up on the stack; whoever wants to end the program lets him
// finish first.
[[nodiscard]] bool isWriteAwaited() noexcept;

} // namespace TAMBO::app
