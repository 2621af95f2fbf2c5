// SPDX-License-Identifier: GPL-3.0-or-later
// In which columns rows have residues, and how many.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace TAMBO {
class Alignment;
class AlignmentWindow;
} // namespace TAMBO

namespace companion {

// Of the rows for which the flags say true, in the alignment that the window shows. Nothing when it
// took long and the user has given it up.
[[nodiscard]] std::optional<std::vector<bool>> columnsWithResidues(TAMBO::AlignmentWindow &window,
                                                                   const std::vector<bool> &rows);
[[nodiscard]] std::optional<std::vector<bool>> columnsWithResidues(TAMBO::AlignmentWindow &window);

// A row as Alignment::GetSequence() gives it, with an entry in counts for each column.
void countResidues(const std::string &row, std::span<std::uint32_t> counts);

struct GappyColumns
{
    std::vector<bool> columns;
    unsigned long count = 0;
    // In these columns.
    std::uint64_t residues = 0;
};

// The columns in which more than that share of so many rows have a gap.
[[nodiscard]] GappyColumns gappyColumns(std::span<const std::uint32_t> residues, unsigned long rows,
                                        double share);

} // namespace companion
