// SPDX-License-Identifier: GPL-3.0-or-later
// What the plug-in says of one column of an alignment, and the command by which others ask for it.
// Callers take this header along; of its functions they need none.
#pragma once

#include <vector>

namespace TAMBO {
class Alignment;
}

struct ColumnStatistics
{
    // The share of the rows that have a residue. A float, as the setting that it is compared with:
    // 3/5 would be below 0.6 if only one of them were rounded to it.
    float occupancy = 0;
    // The most frequent letter, '-' where no row has a residue, and its share of the residues.
    char letter = '-';
    double share = 0;
    // Shannon's entropy of the letters in bits (Shannon 1948), gaps left out. 0 without a residue.
    double entropy = 0;

    [[nodiscard]] bool isEmpty() const { return letter == '-'; }
};

// The data of the command: `PluginManager::Command("Calculate", "Alignment", caller, text,
// "ColumnStatistics", &request)`. It fails when there is no alignment.
struct ColumnStatisticsRequest
{
    const TAMBO::Alignment *alignment = nullptr;
    // The answer, one entry per column.
    std::vector<ColumnStatistics> columns;
};

[[nodiscard]] std::vector<ColumnStatistics> statisticsOf(const TAMBO::Alignment &alignment);

// The occupancy below which a column is marked: the user's setting.
[[nodiscard]] float occupancyThreshold();
