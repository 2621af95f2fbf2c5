// SPDX-License-Identifier: GPL-3.0-or-later
// PHYLIP: a line with the numbers of rows and columns, then the rows. Names of ten characters with
// blanks in them or of one word, rows one after the other or in blocks: no file says which, so that
// is taken which fits. Several alignments may follow one another. Nothing but names is said of
// rows.
#pragma once

#include "FileContents.h"
#include "Result.h"
#include "TextReader.h"

namespace TAMBO::formats {

[[nodiscard]] Result<FileContents> readPhylip(TextReader &reader);

} // namespace TAMBO::formats
