// SPDX-License-Identifier: GPL-3.0-or-later
// What reading a file gives, of whatever format: plain values.
#pragma once

#include "FormatTable.h"
#include "Records.h"

#include <string>
#include <vector>

namespace TAMBO {

struct FileContents
{
    // Its name: "pir".
    std::string format;
    // Aligned and unaligned ones; an unaligned one holds sequences.
    std::vector<AlignmentRecord> alignments;
    std::vector<StructureRecord> structures;
};

} // namespace TAMBO
