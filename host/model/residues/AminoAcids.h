// SPDX-License-Identifier: GPL-3.0-or-later
// What the one-letter codes of residues stand for and how they are coloured by default.
#pragma once

#include "Color.h"

#include <string_view>

namespace TAMBO {

// "ALA" for 'A', in either case; "UNK" for a letter that stands for no amino acid.
[[nodiscard]] std::string_view aminoAcidName(char letter) noexcept;
// By property, in either case; a neutral grey for a letter that stands for no amino acid.
[[nodiscard]] Color aminoAcidColor(char letter) noexcept;

} // namespace TAMBO
