// SPDX-License-Identifier: GPL-3.0-or-later
// What a gap edit asks of one row: the moves of gaps that it is made of, or why it cannot be.
#pragma once

#include "GapEdit.h"
#include "RowCells.h"

#include <optional>
#include <vector>

namespace companion {

// So many gaps of a row come to stand at a column: those at from, or else gaps from the row's end,
// before which the alignment widens when it has fewer.
struct GapStep
{
    std::optional<unsigned long> from;
    unsigned long count = 0;
    unsigned long to = 0;
};

struct RowPlan
{
    // A sentence; empty when the row takes the edit.
    QString refusal;
    // Something is there to be edited, though it may be where it is to be already.
    bool hasResidues = true;
    // As in an outcome.
    long moved = 0;
};

// Plans for the alignment as wide as it is when this is made.
class RowGaps
{
public:
    RowGaps(const TAMBO::Alignment &alignment, const GapEdit &edit, const KeptColumns &kept);

    // Why no row can take the edit, which is said of the block's first one; empty when one may.
    [[nodiscard]] QString refusal() const;
    // Rows have no steps: so many are pushed that one edit of all rows is less than one for each
    // run of gaps in them.
    [[nodiscard]] bool pushesTogether() const noexcept;
    // The steps are put behind those that are there.
    [[nodiscard]] RowPlan plan(unsigned long row, std::vector<GapStep> &steps) const;
    // By how much the alignment widens for steps of the row.
    [[nodiscard]] unsigned long growth(unsigned long row, const std::vector<GapStep> &steps) const;
    // Why nothing was there to be edited in any row.
    [[nodiscard]] QString withoutResidues() const;

private:
    class Planner;

    const TAMBO::Alignment &m_Alignment;
    GapEdit m_Edit;
    KeptColumns m_Kept;
    unsigned long m_Width;
    // The columns that the edit has for itself.
    unsigned long m_First = 0;
    unsigned long m_End;
    // Columns come to the alignment's end when there are too few gaps.
    bool m_CanWiden = true;
};

} // namespace companion
