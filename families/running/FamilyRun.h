// SPDX-License-Identifier: GPL-3.0-or-later
// Builds what is missing in a family's folder, by Snakemake or by a pool of processes of its own.
#pragma once

#include "FamilyFolder.h"
#include "FamilyResults.h"
#include "FolderLock.h"
#include "Result.h"
#include "RunSettings.h"

#include <string>
#include <vector>

namespace TAMBO::families {

struct RunOutcome
{
    // Of all that were asked for.
    std::vector<ResultRow> rows;
    // That has ended the run; 0 for none.
    int signal = 0;
    // What the user should know besides.
    std::vector<std::string> remarks;
};

// Of the targets that are asked for those without a model are built. The table is written while
// they end, and at the end. lock is that of the folder. A failure is one of the run as a whole.
[[nodiscard]] Result<RunOutcome> runFamily(const FamilyFolder &folder,
                                           const std::vector<FamilyTarget> &asked,
                                           const RunSettings &settings, const FolderLock &lock,
                                           const TellEnd &tell);

} // namespace TAMBO::families
