// SPDX-License-Identifier: GPL-3.0-or-later
// The way back from LetterCopy: puts the letters of an alignment row at their columns, and gaps
// between them, 64 columns at a time.
#pragma once

#include <cstddef>
#include <cstdint>

namespace TAMBO {

// What is read behind the last letter that is put down, and written behind the last column.
constexpr std::size_t kSpreadReadSlack = 8;
constexpr std::size_t kSpreadWriteSlack = 8;

// Writes the first columns, at most 64; the bits say which of them hold a letter, and bits behind
// them are clear. Returns where the next letter is. Uses what this computer's processor can.
[[nodiscard]] const char *spreadLetters(char *to, const char *letters, std::uint64_t cells,
                                        unsigned columns, char gap) noexcept;
// The same on any processor.
[[nodiscard]] const char *spreadLetterRuns(char *to, const char *letters, std::uint64_t cells,
                                           unsigned columns, char gap) noexcept;

} // namespace TAMBO
