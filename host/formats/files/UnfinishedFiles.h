// SPDX-License-Identifier: GPL-3.0-or-later
// The names of files in the making. A name tells who is at work, so that what a process has left
// behind can be told from what another one is writing now.
#pragma once

#include <filesystem>
#include <string>

namespace TAMBO::formats {

// ".tambo-" with host, process and a number that was not used before, and the ending.
[[nodiscard]] std::string unfinishedName(const std::string &ending);

// Removes what unfinishedName() called so: files of this user, made on this host by a process that
// is gone. Everything else stays, and so does what cannot be removed.
void removeUnfinished(const std::filesystem::path &folder);

} // namespace TAMBO::formats
