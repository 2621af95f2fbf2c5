// SPDX-License-Identifier: GPL-3.0-or-later
// Whether a file is still what it was when it was last looked at.
#pragma once

#include "FileState.h"

#include <filesystem>
#include <optional>

namespace TAMBO {

enum class FileChange {
    // Its content is the same, or nobody can tell.
    None,
    // The same file holds something else.
    Content,
    // Another file of that name holds something else.
    Replaced,
    // There is none of that name.
    Gone
};

struct FileCheck
{
    FileChange change = FileChange::None;
    // As it is now; nothing when there is no such plain file.
    std::optional<FileState> now = {};
};

// The content is read only when all else leaves it open. A content that known does not tell is
// taken for another one when the file was touched.
[[nodiscard]] FileCheck checkFile(const std::filesystem::path &file, const FileState &known);

// Of a file as it is, with its content. Nothing for what cannot be read, or is no plain file.
[[nodiscard]] std::optional<FileState> lookAt(const std::filesystem::path &file);

} // namespace TAMBO
