// SPDX-License-Identifier: GPL-3.0-or-later
// FASTA, aligned or not, A2M, and A3M: rows of unequal lengths whose capitals and dashes are
// equally many. Comments (";") are not kept, nor is a stop ("*"), which is read as a gap.
#pragma once

#include "FileContents.h"
#include "Result.h"
#include "TextReader.h"

namespace TAMBO::formats {

[[nodiscard]] Result<FileContents> readFasta(TextReader &reader);

} // namespace TAMBO::formats
