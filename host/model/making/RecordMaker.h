// SPDX-License-Identifier: GPL-3.0-or-later
// The way back from objects to the plain values that file writers take.
#pragma once

#include "AlignmentSnapshot.h"
#include "Records.h"

#include <cstddef>
#include <optional>

namespace TAMBO {

class Alignment;
class Peptide;
class Structure;

// What the file that a row came from said of it is kept; a row whose residues have coordinates says
// which ones it holds now.
[[nodiscard]] AlignmentRecord makeRecord(const Alignment &alignment);
// The same in a form that is quick to make and takes little memory.
[[nodiscard]] AlignmentSnapshot makeSnapshot(const Alignment &alignment);
// Nothing when that took long and the user has given it up.
[[nodiscard]] std::optional<AlignmentSnapshot> askedSnapshot(const Alignment &alignment);
// One row of it, for writers that go row by row.
[[nodiscard]] RowRecord makeRowRecord(const Alignment &alignment, std::size_t row);
// One residue of a chain, with its atoms.
[[nodiscard]] ResidueRecord makeRecord(const Peptide &chain, std::size_t index);
// An element that is not in one piece becomes several.
[[nodiscard]] StructureRecord makeRecord(const Structure &structure);

} // namespace TAMBO
