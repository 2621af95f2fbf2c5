// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>

namespace TAMBO {

// What a text occupies on the heap: nothing when it is so short that it stands in the string
// itself.
[[nodiscard]] inline std::size_t textBytes(const std::string &text) noexcept
{
    return text.capacity() <= std::string().capacity() ? 0 : text.capacity() + 1;
}

} // namespace TAMBO
