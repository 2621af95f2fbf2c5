// SPDX-License-Identifier: GPL-3.0-or-later
// Builds models by Snakemake, which knows the batch systems of clusters.
#pragma once

#include "FamilyFolder.h"
#include "Result.h"
#include "RunSettings.h"

namespace TAMBO::families {

class RunProgress;
class RunSignals;

// Refused when a call of Snakemake that is not of a run of ours has the folder, or has left its
// lock there.
[[nodiscard]] Result<void> checkForeignLock(const FamilyFolder &folder);

// The signal that has ended it, 0 when it has ended by itself. What it says goes into snakemake.log
// in the folder; remarks get what the user should know of it.
[[nodiscard]] Result<int> runSnakemake(const FamilyFolder &folder,
                                       const std::filesystem::path &snakemake,
                                       const RunSettings &settings, const RunSignals &signals,
                                       RunProgress &progress, std::vector<std::string> &remarks);

} // namespace TAMBO::families
