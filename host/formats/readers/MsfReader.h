// SPDX-License-Identifier: GPL-3.0-or-later
// MSF: the rows' names with lengths and checksums, then blocks of rows. A checksum that does not
// fit is remarked upon; checksums, weights and the text before the names are not kept.
#pragma once

#include "FileContents.h"
#include "Result.h"
#include "TextReader.h"

namespace TAMBO::formats {

[[nodiscard]] Result<FileContents> readMsf(TextReader &reader);

} // namespace TAMBO::formats
