// SPDX-License-Identifier: GPL-3.0-or-later
// The engine's score of a model, residue by residue: as remarks of its file, and as it is kept with
// the loaded structure.
#pragma once

#include "ModelFit.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TAMBO {

class Structure;

// Of letters of the target, counted from 1, each its share.
using ModelScores = std::vector<std::pair<std::size_t, double>>;

// Lines of a PDB file, which stand before all others; empty without scores.
[[nodiscard]] std::string scoreRemarks(const ModelScores &scores);
// From the text of such a file. Lines that are not such are passed over.
[[nodiscard]] ModelScores scoresInRemarks(std::string_view pdb);

// A change, inside a guard: a value of the structure that plug-ins read. For each amino acid of its
// first chain the score with four decimals, or "-", parted by blanks; the runs say which letters
// they are. Nothing is kept when there is none.
void keepScores(Structure &model, const ModelScores &scores, const std::vector<ModelRun> &runs);

// The names of that value.
inline constexpr const char *kScoresOf = "kestram";
inline constexpr const char *kScoresKey = "residue-scores";

} // namespace TAMBO
