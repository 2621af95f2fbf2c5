// SPDX-License-Identifier: GPL-3.0-or-later
// NEXUS: the matrices of the blocks DATA and CHARACTERS, with the names of the block TAXA. Other
// blocks are passed over.
#pragma once

#include "FileContents.h"
#include "Result.h"
#include "TextReader.h"

namespace TAMBO::formats {

[[nodiscard]] Result<FileContents> readNexus(TextReader &reader);

} // namespace TAMBO::formats
