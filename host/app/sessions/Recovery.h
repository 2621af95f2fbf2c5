// SPDX-License-Identifier: GPL-3.0-or-later
// Brings back the work that a workbench has left behind.
#pragma once

#include "SessionFolder.h"
#include "SessionLoader.h"
#include "WorkAsFiles.h"

namespace TAMBO::sessions {
class KeptValues;
}

namespace TAMBO::app {

// Into an empty workbench. When that has ended the program before, the last change is left out, and
// one more each time. The file stays.
[[nodiscard]] Result<sessions::LoadedSession> recover(const LeftSession &session,
                                                      ObjectSpace &space, History &history,
                                                      sessions::KeptValues &values);

// The objects as plain files in a new folder below parent, as they were after the last change that
// can be done again: all of them, all but the last ones when that has ended the program before, and
// none when it did so several times. In an empty workbench, which is empty again then. The session
// stays.
[[nodiscard]] Result<WorkAsFiles> saveAsFiles(const LeftSession &session, ObjectSpace &space,
                                              History &history, const QString &parent);

} // namespace TAMBO::app
