// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the folder of a family, or brings it up to date: what is there and still holds stays.
#pragma once

#include "FamilyFolder.h"
#include "FamilyPlan.h"
#include "Records.h"
#include "Result.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace TAMBO::families {

struct FamilySettings
{
    // The programs, by their whole paths.
    std::filesystem::path kestram;
    std::filesystem::path tambo;
    // The folder with the workflow's files, which are copied; empty for none.
    std::filesystem::path workflow;
    // That a model may take.
    int megabytes = 2000;
};

// The coordinates of a row: one chain called A, the residues numbered by the letters of the row.
using TemplateSource = std::function<Result<StructureRecord>(std::size_t row)>;

struct PreparedFamily
{
    FamilyFolder folder;
    // Those of the plan, in its order.
    std::vector<FamilyTarget> asked;
    // Sentences for the user. Rows whose names are no names of files:
    std::vector<std::string> mapped;
    // Targets that had another input or template before; their models are gone.
    std::vector<std::string> changed;
    // Targets of which no model can be built, and files of the folder that the user has changed.
    std::vector<std::string> remarks;
};

// The folder is made when it is not there. Refused for one that holds something else, another
// family, or a run that goes on. After a failure a new folder is gone again, and in one that was
// there each target has its old files or the new ones.
[[nodiscard]] Result<PreparedFamily> prepareFamily(const Family &family,
                                                   const std::vector<PlannedModel> &plan,
                                                   const TemplateSource &templates,
                                                   const std::filesystem::path &path,
                                                   const FamilySettings &settings);

// All targets of the folder are asked for, by programs that may lie elsewhere than before.
[[nodiscard]] Result<void> askForAll(const FamilyFolder &folder, const FamilySettings &settings);

} // namespace TAMBO::families
