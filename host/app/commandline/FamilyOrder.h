// SPDX-License-Identifier: GPL-3.0-or-later
// What the words behind `tambo models` ask for.
#pragma once

#include "Result.h"

#include <optional>
#include <string>
#include <vector>

namespace TAMBO::app {

struct FamilyOrder
{
    enum class Task {
        // A family into a folder; and then all that is missing of it.
        Build,
        // A folder, and no more.
        Prepare,
        // What is missing in a folder that is prepared.
        Continue,
        // Its table anew.
        Table
    };

    Task task = Task::Build;
    // Of the family; of further ones, its structures.
    std::vector<std::string> files;
    // Of an alignment, where there are several.
    std::optional<std::string> object;
    // Empty for the best one.
    std::string templateName;
    // Names, or several with commas between them.
    std::vector<std::string> targets;
    std::string folder;
    std::optional<int> jobs;
    std::string profile;
    bool usesPool = false;
};

// The words behind "models". The error is one sentence.
[[nodiscard]] Result<FamilyOrder> parseFamilyOrder(const std::vector<std::string> &words);

} // namespace TAMBO::app
