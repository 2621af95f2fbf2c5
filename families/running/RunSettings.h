// SPDX-License-Identifier: GPL-3.0-or-later
// How a run is to build, what it tells of itself, and what the computer has for it.
#pragma once

#include "FamilyResults.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace TAMBO::families {

struct RunSettings
{
    // At the same time; nothing for as many as the computer or the profile has room for.
    std::optional<int> jobs;
    // Of Snakemake: a name or a folder; empty for none.
    std::string profile;
    // Whether Snakemake is not asked, even where it is installed.
    bool usesPool = false;
    std::filesystem::path kestram;
    // That a model may take.
    int megabytes = 2000;
};

// A target has ended, as the how-manyth of those that had to be built.
struct TargetEnd
{
    const ResultRow &row;
    std::size_t done = 0;
    std::size_t total = 0;
};
using TellEnd = std::function<void(const TargetEnd &end)>;

// Where the program is, looked for as the system does; empty when it is not there.
[[nodiscard]] std::filesystem::path programOnPath(const std::string &name);
// By processors and memory.
[[nodiscard]] int jobsOfComputer(int megabytes);

} // namespace TAMBO::families
