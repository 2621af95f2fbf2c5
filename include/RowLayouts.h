// SPDX-License-Identifier: GPL-3.0-or-later
// Where the residues of an alignment's rows stand, without letters: now, and before the last steps
// of undo.
#pragma once

#include "Alignment.h"
#include "Export.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace TAMBO {

// Of one row.
struct RowLayout
{
    // Consecutive residues of the sequence, which are counted from 0.
    struct Residues
    {
        unsigned long first = 0;
        unsigned long count = 0;

        friend bool operator==(const Residues &, const Residues &) = default;
    };

    Compound *sequence = nullptr;
    // Bit c % 64 of word c / 64 is set where column c has a residue. Words behind the one of the
    // last residue are left out.
    std::vector<std::uint64_t> cells;
    // The row's residues in their order. One entry for all of them, but for a row that has lost
    // some in its middle.
    std::vector<Residues> residues;

    friend bool operator==(const RowLayout &, const RowLayout &) = default;
};

// An alignment at an earlier moment.
struct FormerLayout
{
    unsigned long width = 0;
    // Rows of sequences that are not in the tree any more are left out.
    std::vector<RowLayout> rows;
};

// A step of undo that has changed where residues of an alignment stand, or which rows it has.
struct FormerStep
{
    // As the list of the history has it.
    std::string name;
    // Before this step the alignment was as it was opened, or saved last.
    bool isFirstUnsaved = false;
};

// All calls are made in the GUI thread.
class TAMBO_API RowLayouts
{
public:
    // Without a sequence for a row that the alignment does not have.
    [[nodiscard]] static RowLayout of(const Alignment &alignment, unsigned long row);

    // The steps that undo would take back, the latest first, as far as the history reaches and as
    // the alignment was there before them; at most so many. None inside a guard.
    [[nodiscard]] static std::vector<FormerStep> steps(const Alignment &alignment,
                                                       std::size_t most = 1000);
    // As the alignment was before the latest count of these steps; nothing changes, and nobody is
    // told of anything. Nothing when there are fewer steps or one is damaged, inside a guard, and
    // when the user has given up what took long.
    [[nodiscard]] static std::optional<FormerLayout> before(const Alignment &alignment,
                                                            std::size_t count);

    // An edit, to be made inside a guard: the columns of the range give way to count columns, in
    // which each row's residues stand as its bits say, in words as those of RowLayout. No row gets
    // or loses a residue. False, with nothing changed, when there are not as many bits as
    // residues in a row, and with a line in the log when the alignment is locked.
    static bool place(Alignment &alignment, const Alignment::Range &range, unsigned long count,
                      const std::vector<std::vector<std::uint64_t>> &rows);
};

} // namespace TAMBO
