// SPDX-License-Identifier: GPL-3.0-or-later
// Which rows and which columns are chosen: all cells that are in both.
#pragma once

#include "Alignment.h"
#include "CellPlaces.h"

#include <vector>

namespace companion {

class Measure;

// What a number has to be.
struct Limit
{
    double value = 0;
    bool isAtLeast = true;

    // As people see numbers: 0.7 of ten is seven.
    [[nodiscard]] bool holds(double number) const noexcept
    {
        constexpr double rounding = 1e-9;
        return isAtLeast ? number >= value - rounding : number <= value + rounding;
    }
};

struct CellChoice
{
    std::vector<bool> rows;
    std::vector<bool> columns;
};

// Cut off at the ends of the alignment.
[[nodiscard]] CellChoice choiceOf(const TAMBO::Alignment &alignment, const TAMBO::CellBlock &block);
// Whole rows or whole columns. The measure is done.
[[nodiscard]] CellChoice choiceOf(const TAMBO::Alignment &alignment, const Measure &measure,
                                  const Limit &limit);

// False when nothing can be selected now.
bool select(TAMBO::Alignment &alignment, const CellChoice &choice, TAMBO::Alignment::Selecting how);

} // namespace companion
