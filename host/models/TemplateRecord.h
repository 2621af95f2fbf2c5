// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of a loaded alignment as templates: their measured coordinates, as an engine takes them.
#pragma once

#include "Records.h"
#include "Result.h"

#include <cstddef>

namespace TAMBO {

class Alignment;
class AlignmentRow;

// Whether one of its residues, in columns below width, has a whole backbone (N, CA, C) that was
// measured; models do not count.
[[nodiscard]] bool hasTemplate(const AlignmentRow &row, unsigned long width);
// The residues of the row that have such coordinates, as one chain called A, numbered by the
// letters of the row from 1.
[[nodiscard]] Result<StructureRecord> templateRecord(const Alignment &alignment, std::size_t row);

} // namespace TAMBO
