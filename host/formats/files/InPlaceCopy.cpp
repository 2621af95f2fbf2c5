// SPDX-License-Identifier: GPL-3.0-or-later
#include "InPlaceCopy.h"

#include "FileCopy.h"
#include "FileDescriptor.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <random>
#include <unistd.h>
#include <vector>

namespace TAMBO::formats {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kCopySize = std::size_t{1} << 18U;

FileDescriptor opened(const fs::path &path, int flags)
{
    return FileDescriptor(::open(path.c_str(), flags | O_CLOEXEC, 0600));
}

int isSame(const fs::path &one, const fs::path &other, bool &same)
{
    const FileDescriptor first = opened(one, O_RDONLY);
    const FileDescriptor second = opened(other, O_RDONLY);
    if (!first.isOpen() || !second.isOpen())
        return errno;
    std::vector<char> left(kCopySize);
    std::vector<char> right(kCopySize);
    std::size_t leftCount = left.size();
    std::size_t rightCount = 0;
    same = true;
    while (same && leftCount == left.size()) {
        int error = first.read(left.data(), left.size(), leftCount);
        if (error == 0)
            error = second.read(right.data(), right.size(), rightCount);
        if (error != 0)
            return error;
        same = leftCount == rightCount && std::memcmp(left.data(), right.data(), leftCount) == 0;
    }
    return 0;
}

// Writes and looks whether it is there. The error, 0 for none.
int overwrite(const fs::path &from, const fs::path &target)
{
    FileDescriptor file = opened(target, O_WRONLY);
    if (!file.isOpen())
        return errno;
    int error = copyBytes(from, file);
    if (const int closing = file.close(); error == 0)
        error = closing;
    bool same = false;
    if (error == 0)
        error = isSame(from, target, same);
    return error == 0 && !same ? EIO : error;
}

// A name that people find, and that nobody takes for a file in the making.
fs::path keptName(const fs::path &scratch, const char *kind, const fs::path &target)
{
    std::random_device random;
    std::string name = target.filename().string();
    // The end tells the format, and the whole must fit a name.
    constexpr std::size_t longest = 200;
    if (name.size() > longest)
        name.erase(0, name.size() - longest);
    return scratch / (std::string(kind) + '-' + std::to_string(random()) + '-' + name);
}

Failure failed(std::string cause)
{
    return Failure{FailureKind::System, std::move(cause)};
}

} // namespace

Result<void> copyInPlace(const fs::path &from, const fs::path &target, const fs::path &scratch,
                         bool &isDamaged, const CopyStep &step)
{
    const fs::path before = keptName(scratch, "old", target);
    if (const int error = makeCopy(target, before, step)) {
        ::unlink(before.c_str());
        if (error == ECANCELED)
            return Failure{FailureKind::Cancelled, {}};
        return failed(std::strerror(error));
    }
    const int error = overwrite(from, target);
    if (error == 0 || overwrite(before, target) == 0) {
        ::unlink(before.c_str());
        return error == 0 ? Result<void>() : failed(std::strerror(error));
    }
    isDamaged = true;
    const fs::path after = keptName(scratch, "new", target);
    const bool isKept = makeCopy(from, after) == 0;
    return failed(std::string(std::strerror(error)) +
                  "; the file is damaged now, what it held is in " + before.string() +
                  (isKept ? ", what was to be written is in " + after.string() : std::string()));
}

} // namespace TAMBO::formats
