// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileState.h"

#include <sys/stat.h>

namespace TAMBO {

std::optional<FileState> stateOf(int file)
{
    struct stat status
    {
    };
    if (::fstat(file, &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    constexpr std::int64_t nanoseconds = 1'000'000'000;
    return FileState{status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
                     status.st_mtim.tv_sec * nanoseconds + status.st_mtim.tv_nsec};
}

} // namespace TAMBO
