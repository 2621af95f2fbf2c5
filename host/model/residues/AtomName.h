// SPDX-License-Identifier: GPL-3.0-or-later
// The name of an atom: a few letters, which stand in the atom itself. A longer one is on the heap.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace TAMBO {

class AtomName
{
public:
    AtomName() noexcept : m_Letters{} { }
    ~AtomName();
    AtomName(const AtomName &) = delete;
    AtomName &operator=(const AtomName &) = delete;

    void set(std::string_view name);
    // As long as the name stays what it is.
    [[nodiscard]] std::string_view view() const noexcept
    {
        return m_Size == kIsLong ? std::string_view(*m_Long)
                                 : std::string_view(m_Letters.data(), m_Size);
    }
    // On the heap.
    [[nodiscard]] std::size_t bytes() const noexcept;

private:
    static constexpr std::size_t kMostLetters = 8;
    static constexpr std::uint8_t kIsLong = 0xff;

    void clear() noexcept;

    union {
        std::array<char, kMostLetters> m_Letters;
        std::string *m_Long;
    };
    std::uint8_t m_Size = 0;
};

} // namespace TAMBO
