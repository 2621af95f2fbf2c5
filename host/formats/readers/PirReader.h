// SPDX-License-Identifier: GPL-3.0-or-later
// PIR: records of a title line and residues up to "*", with the structure links of modelling.
#pragma once

#include "FileContents.h"
#include "Result.h"
#include "TextReader.h"

namespace TAMBO::formats {

[[nodiscard]] Result<FileContents> readPir(TextReader &reader);

} // namespace TAMBO::formats
