// SPDX-License-Identifier: GPL-3.0-or-later
// The numbers above the columns of a block.
#pragma once

#include <QString>

#include <vector>

namespace companion {

// Every so many columns one has a number: 10, 20, 50, 100 and so on, the fewest that leave room for
// a number of the width behind the one before. Both widths are of the same unit.
[[nodiscard]] unsigned long rulerStep(double numberWidth, double cellWidth) noexcept;

struct RulerMark
{
    unsigned long col = 0;
    // Columns count from 1. The last digit stands above the column.
    QString text;
};

// Of the columns [begin, end). A number that would begin left of the first column is left out.
[[nodiscard]] std::vector<RulerMark> rulerMarks(unsigned long begin, unsigned long end,
                                                unsigned long step, double digitWidth,
                                                double cellWidth);

// The same as a line of text with one letter for each column.
[[nodiscard]] QString rulerText(unsigned long begin, unsigned long end);

} // namespace companion
