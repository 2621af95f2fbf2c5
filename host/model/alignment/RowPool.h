// SPDX-License-Identifier: GPL-3.0-or-later
// Memory for the rows of alignments, each beside the one that was made before it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace TAMBO {

// An edit of columns changes every row. Of a million rows that stand among their sequences it waits
// for memory at each; of rows that stand side by side it does not. Only for the GUI thread.
class RowPool
{
public:
    // All are of one size.
    [[nodiscard]] static void *take(std::size_t bytes);
    static void give(void *row) noexcept;

    // Blocks that hold rows, or are kept for some.
    [[nodiscard]] static std::size_t blocks() noexcept;

private:
    struct Block;
    struct FreeRow;

    [[nodiscard]] static Block &blockOf(void *row) noexcept;
    static void link(Block &block) noexcept;
    static void unlink(Block &block) noexcept;

    // Those with room, the last used first.
    static Block *s_Open;
    static std::size_t s_Blocks;
};

} // namespace TAMBO
