// SPDX-License-Identifier: GPL-3.0-or-later
// Annotation as a Stockholm file can hold it: tags of one word, texts of one line, and one
// character a column.
#pragma once

#include "GappedView.h"
#include "Records.h"

#include <cstdint>
#include <string>
#include <vector>

namespace TAMBO::formats {

// Remarks without a tag are left out.
[[nodiscard]] std::vector<Annotation> fittedRemarks(const std::vector<Annotation> &remarks);

// Lines over the columns; of several with one tag, all but the first get a number.
[[nodiscard]] std::vector<Annotation> fittedLines(const std::vector<Annotation> &lines,
                                                  std::uint64_t width);
// Lines over the residues of a row.
[[nodiscard]] std::vector<Annotation> fittedLines(const std::vector<Annotation> &lines,
                                                  const GappedView &row);

} // namespace TAMBO::formats
