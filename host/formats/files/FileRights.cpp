// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileRights.h"

#include <unistd.h>

namespace TAMBO::formats {

void takeOverRights(int file, const struct stat &old)
{
    mode_t mode = old.st_mode & 07777U;
    if (::fchown(file, old.st_uid, old.st_gid) != 0) {
        mode &= ~static_cast<mode_t>(S_ISUID);
        if (::fchown(file, static_cast<uid_t>(-1), old.st_gid) != 0) {
            constexpr unsigned groupToOthers = 3;
            mode &= ~static_cast<mode_t>(S_ISGID);
            mode &= ~static_cast<mode_t>(S_IRWXG) | ((mode & S_IRWXO) << groupToOthers);
        }
    }
    static_cast<void>(::fchmod(file, mode));
}

} // namespace TAMBO::formats
