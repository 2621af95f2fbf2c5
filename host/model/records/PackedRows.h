// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a file in blocks, each of which is freed when its rows have been taken.
#pragma once

#include "PackedRow.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace TAMBO {

class PackedRows
{
public:
    [[nodiscard]] std::size_t size() const noexcept { return m_Size; }
    [[nodiscard]] bool empty() const noexcept { return m_Size == 0; }
    [[nodiscard]] PackedRow &operator[](std::size_t row) noexcept
    {
        return m_Blocks[row / kBlock][row % kBlock];
    }
    [[nodiscard]] const PackedRow &operator[](std::size_t row) const noexcept
    {
        return m_Blocks[row / kBlock][row % kBlock];
    }
    [[nodiscard]] PackedRow &back() noexcept { return m_Blocks.back().back(); }

    // Gives the row, which holds until the next one is added.
    PackedRow &add(PackedRow &&row);
    // Those of the other one behind these.
    void append(PackedRows &&other);
    // Indices ascend.
    void remove(const std::vector<std::size_t> &rows);

    // Calls take(row) for each, in their order; none are left.
    template <typename Take> void takeEach(Take take)
    {
        for (std::vector<PackedRow> &block : m_Blocks) {
            for (PackedRow &row : block)
                take(std::move(row));
            free(block);
        }
        *this = {};
    }

    // The same for up to count of them from one on, which have not been taken yet; blocks go as
    // they are used up.
    template <typename Take> void takeSome(std::size_t first, std::size_t count, Take take)
    {
        const std::size_t end = std::min(m_Size, first + count);
        for (std::size_t row = first; row < end; ++row) {
            take(std::move((*this)[row]));
            if ((row + 1) % kBlock == 0)
                free(m_Blocks[row / kBlock]);
        }
    }

private:
    // A megabyte, which the allocator gives back to the system by itself.
    static constexpr std::size_t kBlock = (std::size_t(1) << 20) / sizeof(PackedRow);

    // An empty list in its place would leave it its memory.
    static void free(std::vector<PackedRow> &block) noexcept
    {
        std::vector<PackedRow>().swap(block);
    }

    std::vector<std::vector<PackedRow>> m_Blocks;
    std::size_t m_Size = 0;
};

} // namespace TAMBO
