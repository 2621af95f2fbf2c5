// SPDX-License-Identifier: GPL-3.0-or-later
// The structure files that stand beside an alignment file and are named by its rows.
#pragma once

#include "Records.h"

#include <filesystem>
#include <vector>

namespace TAMBO {

// A row names its structure by a file name or by a code, to which one of the usual endings is
// added; what is not there as written is looked for in upper and lower case and under the archive's
// file names ("pdb1abc.ent"), and "1abc_A" also as 1abc. In the order of the rows, each file once.
[[nodiscard]] std::vector<std::filesystem::path>
siblingStructures(const std::filesystem::path &alignmentFile,
                  const std::vector<AlignmentRecord> &alignments);

// The name of the structure that a file will give: without directory, ".gz" and ending.
[[nodiscard]] std::string structureName(const std::filesystem::path &file);

} // namespace TAMBO
