// SPDX-License-Identifier: GPL-3.0-or-later
// Small files of a family's folder, of which there are ten thousands: read in one go, and put in
// place when they are complete.
#pragma once

#include "Result.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace TAMBO::families {

// The failure names the file: NotFound when it is not there.
[[nodiscard]] Result<std::string> readText(const std::filesystem::path &file);
// Readers meet the old text or the new one. What is there stays when that fails. It is not waited
// for the disk, which takes milliseconds for each.
[[nodiscard]] Result<void> placeText(const std::filesystem::path &file, std::string_view text,
                                     bool isProgram = false);
// Nothing there is no failure.
[[nodiscard]] Result<void> removeFile(const std::filesystem::path &file);
[[nodiscard]] Result<void> makeFolder(const std::filesystem::path &folder);

} // namespace TAMBO::families
