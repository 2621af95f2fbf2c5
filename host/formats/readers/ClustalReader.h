// SPDX-License-Identifier: GPL-3.0-or-later
// Clustal and what other programs write in its manner: a line that says what it is, then blocks of
// rows. The lines of conservation marks are not kept, nor the counts of residues behind the rows.
#pragma once

#include "FileContents.h"
#include "Result.h"
#include "TextReader.h"

namespace TAMBO::formats {

[[nodiscard]] Result<FileContents> readClustal(TextReader &reader);

} // namespace TAMBO::formats
