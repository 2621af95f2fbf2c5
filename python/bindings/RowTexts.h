// SPDX-License-Identifier: GPL-3.0-or-later
// Rows that scripts write as text.
#pragma once

#include "Declarations.h"
#include "ProcessModel.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO::script {

// A name and a text with gaps.
using NamedRow = std::pair<std::string, std::string>;

[[nodiscard]] AlignmentReference newAlignment(const std::string &name,
                                              const std::vector<NamedRow> &rows);
// A row for each chain, or of a new sequence for each text; of both, of the chain as the text says.
void addRows(const AlignmentReference &alignment,
             const std::optional<std::vector<ChainReference>> &chains, const py::object &texts);

} // namespace TAMBO::script
