// SPDX-License-Identifier: GPL-3.0-or-later
// Letters of a sequence to the columns in which they stand.
#pragma once

#include <cstddef>
#include <cstdint>

namespace TAMBO {

// What is read behind the letters, whatever stands there.
constexpr std::size_t kSpreadReadSlack = 8;

// Writes a character for each of 64 columns: the letters in their order where a bit is set, and 0
// elsewhere. Returns the place behind the last letter.
const std::uint8_t *spreadLetters(std::uint8_t *to, const std::uint8_t *letters,
                                  std::uint64_t columns) noexcept;

// The same on any processor.
const std::uint8_t *spreadEachLetter(std::uint8_t *to, const std::uint8_t *letters,
                                     std::uint64_t columns) noexcept;

} // namespace TAMBO
