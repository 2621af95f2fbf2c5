// SPDX-License-Identifier: GPL-3.0-or-later
// The way from a cell to the next place in its row or column where gaps and residues meet.
#pragma once

#include "CellPlaces.h"

#include <chrono>

namespace TAMBO {
class Alignment;
}

namespace companion {

enum class Toward { Left, Right, Up, Down };

// Ends at the first cell behind the change, counted from the first row or column, whichever way it
// goes; without one at the first or last cell of the row or column. The alignment stays as it is
// meanwhile.
class ChangeWalk
{
public:
    // The alignment has the cell.
    ChangeWalk(const TAMBO::Alignment &alignment, const TAMBO::CellIndex &from, Toward toward);

    [[nodiscard]] Toward toward() const noexcept { return m_Toward; }
    // Looks at further cells, for about so long; false when it is at its end.
    bool goOn(std::chrono::microseconds most);
    // Where it is.
    [[nodiscard]] TAMBO::CellIndex place() const noexcept;

private:
    [[nodiscard]] bool isGap(unsigned long at) const;
    bool step();

    const TAMBO::Alignment &m_Alignment;
    TAMBO::CellIndex m_From;
    Toward m_Toward;
    // The column or the row, and how many of them there are.
    unsigned long m_At;
    unsigned long m_Count;
};

} // namespace companion
