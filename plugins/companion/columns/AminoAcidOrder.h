// SPDX-License-Identifier: GPL-3.0-or-later
// The 20 amino acids in the order in which substitution matrices list them, and what a letter of an
// alignment is.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace companion {

inline constexpr std::string_view kAminoAcids = "ARNDCQEGHILKMFPSTWYV";
inline constexpr std::size_t kAminoAcidCount = kAminoAcids.size();
// What stands behind them where letters are counted: letters that name none of them (B, Z, X, U, O,
// J, * and all else), and gaps.
inline constexpr std::size_t kOtherLetter = kAminoAcidCount;
inline constexpr std::size_t kGapLetter = kAminoAcidCount + 1;

// Of every byte: the place in kAminoAcids, of a capital letter and of a small one, kOtherLetter or
// kGapLetter. Gaps are '\0' and what files write for them: '-', '.', '~'.
inline constexpr std::array<std::uint8_t, 256> kLetterKinds = [] {
    std::array<std::uint8_t, 256> kinds = {};
    kinds.fill(std::uint8_t(kOtherLetter));
    for (std::size_t i = 0; i < kAminoAcidCount; ++i) {
        kinds[static_cast<unsigned char>(kAminoAcids[i])] = std::uint8_t(i);
        kinds[static_cast<unsigned char>(kAminoAcids[i] - 'A' + 'a')] = std::uint8_t(i);
    }
    for (const char gap : {'\0', '-', '.', '~'})
        kinds[static_cast<unsigned char>(gap)] = std::uint8_t(kGapLetter);
    return kinds;
}();

[[nodiscard]] constexpr std::size_t letterKind(char letter) noexcept
{
    return kLetterKinds[static_cast<unsigned char>(letter)];
}

// As A to Z; all else stays what it is, whatever the language of the system.
[[nodiscard]] constexpr char capital(char letter) noexcept
{
    return letter >= 'a' && letter <= 'z' ? char(letter - 'a' + 'A') : letter;
}

} // namespace companion
