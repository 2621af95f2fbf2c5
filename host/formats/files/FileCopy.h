// SPDX-License-Identifier: GPL-3.0-or-later
// The content of a file written into another one, down to the disk. Errors are the system's
// numbers, 0 for none.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>

namespace TAMBO::formats {

class FileDescriptor;

// Called with the bytes done and all of them; false calls the rest off, which is ECANCELED.
using CopyStep = std::function<bool(std::uint64_t done, std::uint64_t total)>;

// Cut to the new length only at the end, so that as much as possible is there when this breaks off.
[[nodiscard]] int copyBytes(const std::filesystem::path &from, const FileDescriptor &to,
                            const CopyStep &step = {});
// Into a new file that nobody else can read. What is there after a failure is the caller's to
// remove.
[[nodiscard]] int makeCopy(const std::filesystem::path &from, const std::filesystem::path &copy,
                           const CopyStep &step = {});

} // namespace TAMBO::formats
