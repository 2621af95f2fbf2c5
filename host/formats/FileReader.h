// SPDX-License-Identifier: GPL-3.0-or-later
// Reading a file of any known format into plain values.
#pragma once

#include "Records.h"
#include "Result.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace TAMBO {

// Called now and then with the bytes read so far and in all; false cancels the reading, which then
// gives a Failure with an empty message.
using ReadProgress = std::function<bool(std::uint64_t done, std::uint64_t total)>;

struct FileContents
{
    // pir fasta a3m clustal stockholm msf phylip pdb mmcif
    std::string format;
    // Aligned and unaligned ones; an unaligned one holds sequences.
    std::vector<AlignmentRecord> alignments;
    std::vector<StructureRecord> structures;
};

// Recognises the format by its content; plain or gzip. May be called from any thread.
[[nodiscard]] Result<FileContents> readFile(const std::filesystem::path &path,
                                            const ReadProgress &progress = {});

} // namespace TAMBO
