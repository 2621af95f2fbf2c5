// SPDX-License-Identifier: GPL-3.0-or-later
// A store becomes the work of this workbench: objects and history first, which everybody hears of,
// then the values.
#pragma once

#include "SessionLoader.h"

namespace TAMBO {
class ObjectIndex;
}
namespace TAMBO::sessions {
class KeptValues;
}

namespace TAMBO::app {

// Into an empty workbench. After a failure it is empty again. Values that cannot be taken are
// logged.
[[nodiscard]] Result<sessions::LoadedSession>
loadWork(sessions::StoreReader &store, ObjectSpace &space, History &history,
         sessions::KeptValues &values, const sessions::SessionLoading &options = {});
// The second half of it: objects and history of the store are there already.
void loadValues(sessions::StoreReader &store, const ObjectIndex &index,
                sessions::KeptValues &values);

} // namespace TAMBO::app
