// SPDX-License-Identifier: GPL-3.0-or-later
// Builds models by so many processes of the adapter at a time.
#pragma once

#include "FamilyFolder.h"
#include "Result.h"
#include "RunSettings.h"

namespace TAMBO::families {

class RunProgress;
class RunSignals;

// The signal that has ended it, 0 when all have been tried.
[[nodiscard]] Result<int> runPool(const FamilyFolder &folder, const RunSettings &settings,
                                  const RunSignals &signals, RunProgress &progress);

} // namespace TAMBO::families
