// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>

// Seconds for reading the bytes of the file alone, all of them in memory at the end; the best of a
// few.
[[nodiscard]] double readBytes(const std::filesystem::path &path);
