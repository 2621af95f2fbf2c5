// SPDX-License-Identifier: GPL-3.0-or-later
// A number for the content of a file, by which two contents are told apart. It is quick and comes
// by pieces; nobody is kept from making another content of the same number on purpose.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace TAMBO {

class ContentHash
{
public:
    void add(std::string_view bytes) noexcept;
    // Of all bytes so far, in whatever pieces they came.
    [[nodiscard]] std::uint64_t value() const noexcept;

private:
    std::uint64_t m_State = 0xcbf29ce484222325U;
    std::uint64_t m_Size = 0;
    // What does not fill a word yet.
    std::array<char, sizeof(std::uint64_t)> m_Rest{};
};

} // namespace TAMBO
