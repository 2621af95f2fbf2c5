// SPDX-License-Identifier: GPL-3.0-or-later
// How well the structures of an alignment lie on the first of them, found in slices.
#pragma once

#include "Alignment.h"
#include "StructureFits.h"

#include <QString>

#include <chrono>
#include <vector>

namespace companion {

class FitsFound
{
public:
    void begin();
    // Goes on for about so long, by a row at least; false when all is known. The alignment is as it
    // was when it began.
    bool goOn(const TAMBO::Alignment &alignment, std::chrono::microseconds most);

    // The first one is that of the row that stays.
    [[nodiscard]] const std::vector<TAMBO::StructureRow> &rows() const noexcept { return m_Rows; }
    // Of the others.
    [[nodiscard]] const std::vector<TAMBO::StructureFit> &fits() const noexcept { return m_Fits; }

private:
    void look(const TAMBO::Alignment &alignment);

    unsigned long m_NextRow = 0;
    std::vector<TAMBO::StructureRow> m_Rows;
    std::vector<TAMBO::StructureFit> m_Fits;
};

// "4 structures lie on 1A0J_A: RMSD 0.80 to 1.14 Å over 169 to 180 pairs of CA atoms"; or why they
// do not.
[[nodiscard]] QString fitsText(const TAMBO::Alignment &alignment, const FitsFound &found);
// A line for each row, up to some tens.
[[nodiscard]] QString fitLines(const TAMBO::Alignment &alignment, const FitsFound &found);

} // namespace companion
