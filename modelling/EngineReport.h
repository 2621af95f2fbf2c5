// SPDX-License-Identifier: GPL-3.0-or-later
// What the script that runs in the engine's interpreter says beside the model.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kestram {

// The script's name in the engine's folder, and its text.
constexpr const char *kScriptFile = "job.py";
[[nodiscard]] const char *scriptText();

// The name of the report in the engine's folder.
constexpr const char *kReportFile = "report.txt";

struct EngineReport
{
    // Name and version.
    std::string engine;
    // Why there is no model, or no score.
    std::string failure;
    std::optional<double> score;
    // By the number of the target's letter, counted from 1.
    std::vector<std::pair<std::size_t, double>> residueScores;
};

// What cannot be understood is passed over; without a file, all is empty.
[[nodiscard]] EngineReport readReport(const std::filesystem::path &file);

} // namespace kestram
