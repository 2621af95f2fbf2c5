// SPDX-License-Identifier: GPL-3.0-or-later
// A session in a file of its own, which takes the place of an old one when it is complete.
#pragma once

#include "Result.h"
#include "SessionContent.h"

#include <filesystem>

namespace TAMBO {
struct WriteAids;
}

namespace TAMBO::sessions {

constexpr const char *kSessionEnding = ".tambo";

// By its ending, or by how it begins. What is in it is another matter.
[[nodiscard]] bool isSessionFile(const std::filesystem::path &file);

// Any thread. When it fails, an old file is as it was; the failure names file and cause. The parts
// are given back as they are written.
[[nodiscard]] Result<void> writeSession(SessionContent content, const std::filesystem::path &file,
                                        WriteAids &aids);

} // namespace TAMBO::sessions
