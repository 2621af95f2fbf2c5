// SPDX-License-Identifier: GPL-3.0-or-later
// Room for the cells of many pieces of rows, for a short time. What is large has pages of its own,
// which go back to the system at once: freed memory of one thread is of no use to another, and rows
// are made of the pieces by several.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

namespace TAMBO::formats {

class CellBlock
{
public:
    CellBlock() = default;
    explicit CellBlock(std::size_t words);
    CellBlock(CellBlock &&other) noexcept
        : m_Words(std::exchange(other.m_Words, nullptr)), m_Size(std::exchange(other.m_Size, 0))
    { }
    ~CellBlock();
    CellBlock &operator=(CellBlock other) noexcept
    {
        std::swap(m_Words, other.m_Words);
        std::swap(m_Size, other.m_Size);
        return *this;
    }

    [[nodiscard]] std::uint64_t *words() noexcept { return m_Words; }
    [[nodiscard]] const std::uint64_t *words() const noexcept { return m_Words; }

private:
    std::uint64_t *m_Words = nullptr;
    std::size_t m_Size = 0;
};

} // namespace TAMBO::formats
