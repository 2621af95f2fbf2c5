// SPDX-License-Identifier: GPL-3.0-or-later
// Brings back the work that a workbench has left behind.
#pragma once

#include "SessionFolder.h"
#include "SessionLoader.h"

namespace TAMBO::sessions {
class KeptValues;
}

namespace TAMBO::app {

// Into an empty workbench. When that has ended the program before, the last change is left out, and
// one more each time. The file stays.
[[nodiscard]] Result<sessions::LoadedSession> recover(const LeftSession &session,
                                                      ObjectSpace &space, History &history,
                                                      sessions::KeptValues &values);

} // namespace TAMBO::app
