// SPDX-License-Identifier: GPL-3.0-or-later
// Writing alignments and structures as files of any known format. A file is read back and compared
// before it takes the place of an old one.
#pragma once

#include "Records.h"
#include "Result.h"
#include "WriteFormat.h"

#include <filesystem>
#include <functional>
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

// What no format holds of how an object is shown. It is not counted as lost: nobody has to be
// asked.
[[nodiscard]] std::vector<std::string> looksLostOf(const AlignmentRecord &alignment);
[[nodiscard]] std::vector<std::string> looksLostOf(const StructureRecord &structure);

// What writing needs besides, and what it has to say afterwards.
struct WriteAids
{
    // Asked for a folder of the user's own when a file cannot be replaced, for its copies. When
    // empty, the folder of temporary files is taken.
    std::function<std::filesystem::path()> scratch;
    // One sentence each that names the file: it is written, but not as usual.
    std::vector<std::string> remarks;
};

// Nothing when the file is written. Otherwise the old file is as it was, or the failure, which
// names file and cause, tells where its content is. Compressed when the name ends in ".gz".
[[nodiscard]] std::optional<Failure> writeFile(const std::filesystem::path &path,
                                               std::span<const AlignmentRecord> alignments,
                                               const WriteOptions &options,
                                               WriteAids *aids = nullptr);
[[nodiscard]] std::optional<Failure> writeFile(const std::filesystem::path &path,
                                               const StructureRecord &structure,
                                               const WriteOptions &options,
                                               WriteAids *aids = nullptr);

} // namespace TAMBO
