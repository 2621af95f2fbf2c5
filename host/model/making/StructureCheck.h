// SPDX-License-Identifier: GPL-3.0-or-later
// Holds values that a plug-in gives against what objects can be made of, before any is made.
#pragma once

#include "Records.h"
#include "Result.h"
#include "StructureValues.h"

#include <string>
#include <string_view>
#include <vector>

namespace TAMBO {

// Of an object that stands in Space.
[[nodiscard]] Result<void> checkName(std::string_view name);
// Capitals, whatever the case of the letters. numbers: none, or one for each letter.
[[nodiscard]] Result<std::string> checkedLetters(std::string_view letters,
                                                 const std::vector<SequenceNumber> &numbers);
[[nodiscard]] Result<StructureRecord> recordOfValues(const std::string &name,
                                                     const StructureValues &values);

} // namespace TAMBO
