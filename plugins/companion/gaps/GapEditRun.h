// SPDX-License-Identifier: GPL-3.0-or-later
// A gap edit on its way: all rows are looked at first, between events if there are many, and then
// all are changed.
#pragma once

#include "GapEdit.h"
#include "RowGaps.h"

#include <chrono>
#include <optional>
#include <vector>

namespace companion {

class GapEditRun
{
public:
    // The alignment stays alive.
    GapEditRun(const TAMBO::Alignment &alignment, const GapEdit &edit, const KeptColumns &kept);

    // Looks at further rows, for about that time, from the first one again when the alignment has
    // changed; false when nothing is left to look at.
    bool goOn(std::chrono::microseconds most);
    // From 0 to 100.
    [[nodiscard]] int percent() const;
    // Of the rows that have been looked at.
    [[nodiscard]] const Outcome &outcome() const noexcept { return m_Outcome; }
    // To the one that was looked at.
    Outcome apply(TAMBO::Alignment &alignment);

private:
    void begin();
    void lookAtRow(unsigned long row);
    void refuse(const QString &reason);
    [[nodiscard]] TAMBO::Alignment::GapsMoved change(TAMBO::Alignment &alignment);
    void pushRows(TAMBO::Alignment &alignment) const;

    const TAMBO::Alignment &m_Alignment;
    GapEdit m_Edit;
    KeptColumns m_Kept;
    std::optional<RowGaps> m_Rows;
    unsigned long m_Revision = 0;
    unsigned long m_NextRow = 0;
    unsigned long m_RowEnd = 0;
    Outcome m_Outcome;
    bool m_HasResidues = false;
    // The row by which the alignment becomes wider than by any other, and by how much.
    unsigned long m_WidestRow = 0;
    unsigned long m_Growth = 0;
    // Of one row after the other, and then of all that have been looked at.
    std::vector<GapStep> m_Steps;
    std::vector<TAMBO::Alignment::GapMove> m_Moves;
};

} // namespace companion
