// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps two runs from working in one folder. The processes that are started while it is held hold
// it, too, so that it lasts until the last of them has ended, however that is.
#pragma once

#include "FileDescriptor.h"
#include "Result.h"

#include <filesystem>

namespace TAMBO::families {

class FolderLock
{
public:
    // Of its file.
    static constexpr const char *kName = ".lock";

    // Refused while somebody has it. The folder is there.
    [[nodiscard]] static Result<FolderLock> take(const std::filesystem::path &folder);
    // Whether somebody has it, this process or another; nobody is kept from taking it by that.
    [[nodiscard]] static bool isTaken(const std::filesystem::path &folder);

private:
    explicit FolderLock(formats::FileDescriptor file) : m_File(std::move(file)) { }

    formats::FileDescriptor m_File;
};

} // namespace TAMBO::families
