// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnStatistics.h"

#include <Alignment.h>
#include <Config.h>
#include <Logger.h>

#include <array>
#include <cmath>

namespace {

// Some formats write inserted residues in lower case: they are residues of the same kind.
char upper(char letter)
{
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

ColumnStatistics statisticsOf(const std::vector<char> &column)
{
    std::array<unsigned long, 256> counts{};
    for (const char letter : column)
        ++counts[static_cast<unsigned char>(upper(letter))];
    const unsigned long residues = column.size() - counts[0]; // a gap is '\0'
    ColumnStatistics result;
    if (residues == 0)
        return result;
    result.occupancy = float(residues) / float(column.size());
    for (std::size_t code = 1; code < counts.size(); ++code) {
        if (counts[code] == 0)
            continue;
        const double share = double(counts[code]) / double(residues);
        // Of equally frequent letters the first one, as everywhere in the workbench.
        if (share > result.share) {
            result.share = share;
            result.letter = static_cast<char>(code);
        }
        // Each term is at least 0; added up like this a conserved column has 0 and not -0.
        result.entropy += share * std::log2(1 / share);
    }
    return result;
}

} // namespace

std::vector<ColumnStatistics> statisticsOf(const TAMBO::Alignment &alignment)
{
    std::vector<ColumnStatistics> result;
    result.reserve(alignment.width());
    std::vector<char> column;
    for (unsigned long col = 0; col < alignment.width(); ++col) {
        column.clear();
        alignment.readColumn(col, column);
        result.push_back(statisticsOf(column));
    }
    return result;
}

float occupancyThreshold()
{
    bool isNumber = false;
    const float value = Config::GetSetting("column-statistics", "Threshold").ToFloat(&isNumber);
    if (isNumber && value >= 0 && value <= 1)
        return value;
    static bool s_IsTold = false;
    if (!s_IsTold)
        Logger::Write("Column Statistics: the setting Threshold is no number from 0 to 1, "
                      "0.5 is used",
                      Logger::Severity::Warning);
    s_IsTold = true;
    return 0.5F;
}
