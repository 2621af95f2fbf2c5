// SPDX-License-Identifier: GPL-3.0-or-later
// Stockholm: rows in one piece or in blocks, annotation of the alignment, its columns, rows and
// residues, several alignments one after the other. Comments ("# ...") are not kept; nor is what
// is said of a residue where the row has a gap.
#pragma once

#include "FileContents.h"
#include "Result.h"
#include "TextReader.h"

namespace TAMBO::formats {

[[nodiscard]] Result<FileContents> readStockholm(TextReader &reader);
// The same rows without any markup around them, as Pfam once had them.
[[nodiscard]] Result<FileContents> readPlainRows(TextReader &reader);

} // namespace TAMBO::formats
