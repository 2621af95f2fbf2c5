// SPDX-License-Identifier: GPL-3.0-or-later
// FASTA, aligned or not, and A2M with or without its dots.
#pragma once

#include "FileReader.h"
#include "TextReader.h"

namespace TAMBO::formats {

[[nodiscard]] Result<FileContents> readFasta(TextReader &reader);

} // namespace TAMBO::formats
