// SPDX-License-Identifier: GPL-3.0-or-later
// mmCIF: the first model of the first block that has atoms.
#pragma once

#include "FileContents.h"
#include "Result.h"
#include "TextReader.h"

namespace TAMBO::formats {

[[nodiscard]] Result<FileContents> readMmcif(TextReader &reader);

} // namespace TAMBO::formats
