// SPDX-License-Identifier: GPL-3.0-or-later
// The endings that files of each format usually have. A file is known by its content; endings serve
// where there is none to look at: a file that is to be found, offered or written.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace TAMBO {

// In lower case with the dot, the usual one first; none for an unknown format ("pir", "pdb", ...).
[[nodiscard]] const std::vector<std::string_view> &endingsOf(std::string_view format);
// Of all formats.
[[nodiscard]] std::vector<std::string_view> structureEndings();
[[nodiscard]] std::vector<std::string_view> alignmentEndings();
// Behind any of them, of a file that is compressed.
inline constexpr std::string_view kCompressedEnding = ".gz";

} // namespace TAMBO
