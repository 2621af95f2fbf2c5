// SPDX-License-Identifier: GPL-3.0-or-later
// What a file was like when it was read or written, by which it is known whether it still is that.
#pragma once

#include <cstdint>
#include <optional>

namespace TAMBO {

struct FileState
{
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;
    // When its content was changed last: nanoseconds since 1970.
    std::int64_t changed = 0;
    // Of the content; nothing when not all of it has been looked at.
    std::optional<std::uint64_t> hash = {};

    // Whether nothing speaks of a change, as far as can be known without the content.
    [[nodiscard]] bool looksLike(const FileState &other) const noexcept
    {
        return isSameFile(other) && size == other.size && changed == other.changed;
    }
    [[nodiscard]] bool isSameFile(const FileState &other) const noexcept
    {
        return device == other.device && inode == other.inode;
    }
};

// Of an open file, without its content. Nothing for what is no plain file.
[[nodiscard]] std::optional<FileState> stateOf(int file);

} // namespace TAMBO
