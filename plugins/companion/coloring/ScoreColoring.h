// SPDX-License-Identifier: GPL-3.0-or-later
// Coloring models by the engine's score of their residues.
#pragma once

#include "Legend.h"

#include <cstddef>

#include <QString>

namespace TAMBO {
class Alignment;
class AlignmentWindow;
} // namespace TAMBO

namespace companion {

struct ScoreColored
{
    // Rows that have scores.
    std::size_t rows = 0;
    // They have their colors; false when nothing can be changed now, of which the workbench tells
    // why, or when the user has given it up.
    bool isDone = false;
};

// Each residue with a score, by the fifth of its own model that it is in; one step of undo. Others
// keep their colors.
ScoreColored colorByScore(TAMBO::AlignmentWindow &window);

// Whether a row shows a model with scores, as far as a moment suffices to find out: true where it
// does not.
[[nodiscard]] bool mayHaveScores(const TAMBO::Alignment &alignment);
// What to say where none does.
[[nodiscard]] QString lackOfScores();

// Says what the colors do not mean, too.
[[nodiscard]] Legend scoreLegend();

} // namespace companion
