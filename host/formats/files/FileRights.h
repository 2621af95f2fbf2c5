// SPDX-License-Identifier: GPL-3.0-or-later
// Owner, group and permissions, from one file to another.
#pragma once

#include <sys/stat.h>

namespace TAMBO::formats {

// As far as the system lets us, which is not worth failing for. Rights that were meant for others
// than those who would get them now are left out.
void takeOverRights(int file, const struct stat &old);

} // namespace TAMBO::formats
