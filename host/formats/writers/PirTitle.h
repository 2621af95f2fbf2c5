// SPDX-License-Identifier: GPL-3.0-or-later
// The title lines of PIR files: ten fields between colons that tie a row to residues of a
// structure, or somebody's free text.
#pragma once

#include "Records.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace TAMBO::formats {

// The fields' places in a title.
enum PirField { PirType, PirCode, PirFirst, PirFirstChain, PirLast, PirLastChain, PirName };
using PirFields = std::array<std::string, 10>;

// Nothing for free text.
[[nodiscard]] std::optional<PirFields> pirFieldsOf(std::string_view title);

// What a PIR file says of a row: its own title, with the range of residues that it holds now, or
// one made for it.
[[nodiscard]] std::string pirTitle(const RowRecord &row, std::string_view name);

// Whether everything that the row's own title says is in that one.
[[nodiscard]] bool isTitleKept(const RowRecord &row);

// What other formats say of a row; a title without any content is left out.
[[nodiscard]] std::string plainDescription(const RowRecord &row);

} // namespace TAMBO::formats
