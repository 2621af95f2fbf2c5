// SPDX-License-Identifier: GPL-3.0-or-later
// PDB files of every age: the first model of one.
#pragma once

#include "FileContents.h"
#include "Result.h"
#include "TextReader.h"

namespace TAMBO::formats {

[[nodiscard]] Result<FileContents> readPdb(TextReader &reader);

} // namespace TAMBO::formats
