// SPDX-License-Identifier: GPL-3.0-or-later
// Edits of the gaps in a block of rows: what each means, whether it can be done, and doing it as
// one step of undo.
#pragma once

#include "Alignment.h"
#include "CellPlaces.h"

#include <QString>

#include <optional>

class QWidget;

namespace companion {

// Each is done in all rows of the block, or in none. No residue is lost, and no order changed.
struct GapEdit
{
    enum class Kind {
        // Gaps come before what stands at the block's first column, which uses up the gaps at the
        // row's end; the alignment widens when there are none. A row whose residues all stand
        // before that column needs nothing.
        Insert,
        // The gaps directly before the block's first column go, or those there and directly behind;
        // what follows comes to the left, and gaps to the row's end. The alignment stays as wide.
        RemoveBefore,
        RemoveBehind,
        // The block's columns move as they are into the gaps beside them; of a block of one column
        // the residues side by side around it. A row without a residue there needs nothing.
        Slide,
        // As the editor's drag from the block's first column: the gaps around a gap move. From a
        // residue on, all to the right move: by gaps that come, or into the gaps directly before.
        Move,
        // The residues of the block to its edge, the gaps to the other one.
        PushLeft,
        PushRight
    };

    Kind kind = Kind::Insert;
    TAMBO::CellBlock block;
    // Of gaps, or of columns: Slide and Move go to the right, to the left when it is negative.
    // Pushing asks for none.
    long count = 1;
};

// These columns stay where they are, with all behind them as far as an edit before them is
// concerned, which has the gaps between it and them alone: of those that are used up the ones
// nearest to them, and there come those that are taken out.
using KeptColumns = std::optional<TAMBO::Alignment::Range>;

struct Outcome
{
    // Also when nothing had to change.
    bool isDone = false;
    // Why not, as a sentence with the name of the first row that cannot. Empty when the user has
    // given it up.
    QString reason;
    // By how many columns residues have come to the right, negative to the left: those that are
    // pushed by this many at most. 0 when nothing has changed.
    long moved = 0;
};

// Looks at every row of the block; nothing changes.
[[nodiscard]] Outcome checkGapEdit(const TAMBO::Alignment &alignment, const GapEdit &edit,
                                   const KeptColumns &kept);
// A refused one changes nothing, and is no step.
Outcome applyGapEdit(TAMBO::Alignment &alignment, const GapEdit &edit, const KeptColumns &kept);
// The same with a dialog over the widget when the rows are so many that looking at them takes a
// while, in which the user can give it up.
Outcome applyGapEdit(TAMBO::Alignment &alignment, const GapEdit &edit, const KeptColumns &kept,
                     QWidget *over);

} // namespace companion
