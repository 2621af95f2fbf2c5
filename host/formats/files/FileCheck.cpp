// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileCheck.h"

#include "ContentHash.h"
#include "FileDescriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace TAMBO {

namespace {

using formats::FileDescriptor;

constexpr std::size_t kPieceOfContent = std::size_t{1} << 18U;

// A pipe that nobody writes must not be waited for.
FileDescriptor openedToLook(const std::filesystem::path &file)
{
    return FileDescriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

std::optional<std::uint64_t> contentOf(const FileDescriptor &file)
{
    ContentHash hash;
    std::vector<char> piece(kPieceOfContent);
    std::size_t count = piece.size();
    while (count == piece.size()) {
        if (file.read(piece.data(), piece.size(), count) != 0)
            return std::nullopt;
        hash.add(std::string_view(piece.data(), count));
    }
    return hash.value();
}

} // namespace

FileCheck checkFile(const std::filesystem::path &file, const FileState &known)
{
    struct stat status
    {
    };
    if (::stat(file.c_str(), &status) != 0)
        return {errno == ENOENT || errno == ENOTDIR ? FileChange::Gone : FileChange::None};
    // What opening does to a device is not known, and there is nothing to compare.
    if (!S_ISREG(status.st_mode))
        return {FileChange::Replaced};
    const FileDescriptor opened = openedToLook(file);
    FileCheck check{FileChange::None, opened.isOpen() ? stateOf(opened.number()) : std::nullopt};
    if (!check.now)
        return check;
    if (check.now->looksLike(known)) {
        check.now->hash = known.hash;
        return check;
    }
    if (known.hash && check.now->size == known.size) {
        check.now->hash = contentOf(opened);
        if (check.now->hash == known.hash)
            return check;
    }
    check.change = check.now->isSameFile(known) ? FileChange::Content : FileChange::Replaced;
    return check;
}

std::optional<FileState> lookAt(const std::filesystem::path &file)
{
    struct stat status
    {
    };
    if (::stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    const FileDescriptor opened = openedToLook(file);
    std::optional<FileState> state = opened.isOpen() ? stateOf(opened.number()) : std::nullopt;
    if (state)
        state->hash = contentOf(opened);
    return state;
}

} // namespace TAMBO
