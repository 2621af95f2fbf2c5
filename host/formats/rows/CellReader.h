// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the residues and gaps of one line, as the formats agree on them: letters are residues, '?'
// is an unknown one; '-', '.', '~', '_' and '*' (a stop) are gaps; blanks are passed over.
#pragma once

#include "RowBuilder.h"
#include "TextReader.h"

namespace TAMBO::formats {

// Appends the text's columns up to the line's end or the first character that is none of these,
// and says how many characters that were. RowBuilder::kReadAhead bytes behind the text are read.
[[nodiscard]] std::size_t appendCells(std::string_view text, RowBuilder &row);
// Appends what is left of the line and gives the character at which it stopped, '\n' at the end.
[[nodiscard]] char readCells(TextReader &reader, RowBuilder &row);

} // namespace TAMBO::formats
