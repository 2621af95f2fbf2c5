// SPDX-License-Identifier: GPL-3.0-or-later
// A directory that only its owner can look into.
#pragma once

#include "Result.h"

#include <QString>

#include <sys/types.h>

namespace TAMBO::services {

// Makes the directory, and those above it, or checks that it is a real directory of the given
// owner, and takes away every right of others on it. Gives its path.
[[nodiscard]] Result<QString> makePrivateDirectory(const QString &path, uid_t owner);

// The user's own scratch directory. When it cannot be had, because another user has put something
// in its place or nothing can be written, the process gets a fresh one of its own and the log says
// why; the same answer for the life of the process.
[[nodiscard]] const QString &personalScratchDirectory();

} // namespace TAMBO::services
