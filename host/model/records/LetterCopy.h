// SPDX-License-Identifier: GPL-3.0-or-later
// Copies the letters of an alignment row and leaves the gaps out, 64 characters at a time.
#pragma once

#include <cstddef>
#include <cstdint>

namespace TAMBO {

// What a copy may touch beyond the 64 characters it reads, and beyond the letters it writes.
constexpr std::size_t kCopyReadSlack = 32;
constexpr std::size_t kCopyWriteSlack = 64;

// Copies the characters whose bits are set and returns where the next letter goes. Uses what this
// computer's processor can.
[[nodiscard]] char *copyLetters(char *to, const char *text, std::uint64_t letters) noexcept;
// The same on any processor.
[[nodiscard]] char *copyLetterRuns(char *to, const char *text, std::uint64_t letters) noexcept;

} // namespace TAMBO
