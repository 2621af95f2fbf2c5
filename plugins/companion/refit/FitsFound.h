// SPDX-License-Identifier: GPL-3.0-or-later
// How well the structures of an alignment lie on the first of them, found in slices.
#pragma once

#include "Alignment.h"
#include "StructureFits.h"

#include <chrono>
#include <vector>

namespace companion {

class FitsFound
{
public:
    void begin(const TAMBO::FitChoice &choice = {});
    // Goes on for about so long, by a row at least; false when all is known. The alignment is as it
    // was when it began.
    bool goOn(const TAMBO::Alignment &alignment, std::chrono::microseconds most);

    // The first one is that of the row that stays.
    [[nodiscard]] const std::vector<TAMBO::StructureRow> &rows() const noexcept { return m_Rows; }
    // Of the others.
    [[nodiscard]] const std::vector<TAMBO::StructureFit> &fits() const noexcept { return m_Fits; }
    [[nodiscard]] const TAMBO::FitChoice &choice() const noexcept { return m_Choice; }

private:
    void look(const TAMBO::Alignment &alignment);

    TAMBO::FitChoice m_Choice;
    unsigned long m_NextRow = 0;
    std::vector<TAMBO::StructureRow> m_Rows;
    std::vector<TAMBO::StructureFit> m_Fits;
};

// It does not lie where the choice brings it.
[[nodiscard]] bool liesElsewhere(const TAMBO::StructureFit &fit);

} // namespace companion
