// SPDX-License-Identifier: GPL-3.0-or-later
// Reading a file of any known format into plain values.
#pragma once

#include "FileContents.h"
#include "ReadProgress.h"
#include "Result.h"

#include <filesystem>

namespace TAMBO {

// Recognises the format by its content; plain or gzip. May be called from any thread.
[[nodiscard]] Result<FileContents> readFile(const std::filesystem::path &path,
                                            const ReadProgress &progress = {});

// The same for who makes objects of the rows, which stay packed.
[[nodiscard]] Result<FileContents> readPackedFile(const std::filesystem::path &path,
                                                  const ReadProgress &progress = {});

} // namespace TAMBO
