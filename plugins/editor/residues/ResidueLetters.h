// SPDX-License-Identifier: GPL-3.0-or-later
// The order in which colour tables hold one colour per residue letter.
#pragma once

#include <cstddef>
#include <string_view>

namespace ZEP {

inline constexpr std::string_view kResidueLetters = "ARNDCQEGHILKMFPSTWYVX";

// Any letter that is not listed, lower case included, counts as X.
[[nodiscard]] constexpr std::size_t residueLetterIndex(char letter) noexcept
{
    const std::size_t index = kResidueLetters.find(letter);
    return index == std::string_view::npos ? kResidueLetters.size() - 1 : index;
}

} // namespace ZEP
