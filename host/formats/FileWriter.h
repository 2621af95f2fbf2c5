// SPDX-License-Identifier: GPL-3.0-or-later
// Writing alignments and structures as files of any known format. A file is read back and compared
// before it takes the place of an old one.
#pragma once

#include "Records.h"
#include "Result.h"
#include "WriteFormat.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace TAMBO {

// Why the format cannot hold the alignment, as a sentence ("A Clustal file ..."); nothing when it
// can.
[[nodiscard]] std::optional<std::string> obstacleTo(const AlignmentRecord &alignment,
                                                    const WriteOptions &options);
[[nodiscard]] std::optional<std::string> obstacleTo(const StructureRecord &structure,
                                                    const WriteOptions &options);

// What of the alignment the format will lose or change, one sentence each.
[[nodiscard]] std::vector<std::string> lossesOf(const AlignmentRecord &alignment,
                                                const WriteOptions &options);
[[nodiscard]] std::vector<std::string> lossesOf(const StructureRecord &structure,
                                                const WriteOptions &options);

// Nothing when the file is written. Otherwise the old file is as it was, and the failure names file
// and cause. Compressed when the name ends in ".gz".
[[nodiscard]] std::optional<Failure> writeFile(const std::filesystem::path &path,
                                               std::span<const AlignmentRecord> alignments,
                                               const WriteOptions &options);
[[nodiscard]] std::optional<Failure> writeFile(const std::filesystem::path &path,
                                               const StructureRecord &structure,
                                               const WriteOptions &options);

} // namespace TAMBO
