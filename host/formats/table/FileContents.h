// SPDX-License-Identifier: GPL-3.0-or-later
// What reading a file gives, of whatever format: plain values.
#pragma once

#include "FileState.h"
#include "FormatTable.h"
#include "Records.h"

#include <optional>
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
    // Of the file, as it was read; nothing for a pipe.
    std::optional<FileState> state = {};
    // What writeOptionsNamed() takes for such a file; empty when none is written.
    std::string writtenAs = {};
};

} // namespace TAMBO
