// SPDX-License-Identifier: GPL-3.0-or-later
// Writing alignments and structures as files of any known format. A file is read back and compared
// before it takes the place of an old one.
#pragma once

#include "AlignmentSource.h"
#include "FileState.h"
#include "Result.h"
#include "StructureLosses.h"
#include "WriteLosses.h"
#include "WriteOptions.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace TAMBO {

// What is done with a file that is written, one after the other.
enum class WriteStage { Text, Sync, Reading, Comparing, Placing };
constexpr int kWriteStages = 5;

// What writing needs besides, and what it has to say afterwards.
struct WriteAids
{
    // Asked for a folder of the user's own when a file cannot be replaced, for its copies. When
    // empty, the folder of temporary files is taken.
    std::function<std::filesystem::path()> scratch;
    // One sentence each that names the file: it is written, but not as usual.
    std::vector<std::string> remarks;
    // Called again and again with how much of a stage is done, from 0 to 1. False calls the writing
    // off: the file is as it was, and nothing is left of the new one. Asked for the last time
    // before the file itself is touched.
    std::function<bool(WriteStage stage, double done)> step = {};
    // The last versions of a file stay beside it.
    bool keepsBackups = false;
    // The file that may be replaced. One that another program has changed meanwhile stays, which is
    // a refusal.
    std::optional<FileState> expected = {};
    // Of the new file; nothing for a pipe.
    std::optional<FileState> written = {};
};

// May be called from any thread. When it fails, the old file is as it was, or the failure, which
// names file and cause, tells where its content is. Compressed when the name ends in ".gz".
[[nodiscard]] Result<void> writeFile(const std::filesystem::path &path,
                                     std::span<const AlignmentRecord> alignments,
                                     const WriteOptions &options, WriteAids *aids = nullptr);
[[nodiscard]] Result<void> writeFile(const std::filesystem::path &path,
                                     const AlignmentSource &alignment, const WriteOptions &options,
                                     WriteAids *aids = nullptr);
[[nodiscard]] Result<void> writeFile(const std::filesystem::path &path,
                                     const StructureRecord &structure, const WriteOptions &options,
                                     WriteAids *aids = nullptr);

// Several as the models of one file, the first of which is compared with what is read back.
[[nodiscard]] Result<void> writeModels(const std::filesystem::path &path,
                                       std::span<const StructureRecord> structures,
                                       const WriteOptions &options, WriteAids *aids = nullptr);

} // namespace TAMBO
