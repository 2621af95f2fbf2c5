// SPDX-License-Identifier: GPL-3.0-or-later
#include "FolderLock.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace TAMBO::families {

namespace {

namespace fs = std::filesystem;

// Of the open file, and not of the process: children have it as well.
struct flock wholeFile()
{
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return lock;
}

} // namespace

Result<FolderLock> FolderLock::take(const fs::path &folder)
{
    const fs::path name = folder / kName;
    constexpr mode_t kRights = 0666;
    // Open in those processes, too.
    // NOLINTNEXTLINE(android-cloexec-open)
    formats::FileDescriptor file(open(name.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW, kRights));
    if (!file.isOpen())
        return Failure{FailureKind::System,
                       std::string("cannot be written: ") + std::strerror(errno),
                       {name.string()}};
    struct flock lock = wholeFile();
    if (fcntl(file.number(), F_OFD_SETLK, &lock) == 0)
        return FolderLock(std::move(file));
    if (errno != EAGAIN && errno != EACCES)
        return Failure{FailureKind::System,
                       std::string("cannot be locked: ") + std::strerror(errno),
                       {name.string()}};
    return Failure{FailureKind::Refused,
                   "another run is at work in this folder; wait for its end, or stop it",
                   {folder.string()}};
}

bool FolderLock::isTaken(const fs::path &folder)
{
    const formats::FileDescriptor file(
        open((folder / kName).c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    struct flock lock = wholeFile();
    return file.isOpen() && fcntl(file.number(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

} // namespace TAMBO::families
