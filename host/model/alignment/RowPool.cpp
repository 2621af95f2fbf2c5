// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowPool.h"

#include <new>
#include <utility>

namespace TAMBO {

namespace {

// A row's address tells its block.
constexpr std::size_t kAlignment = std::size_t(1) << 16;
// What the allocator needs itself fits behind it, so that no room is left between two blocks.
constexpr std::size_t kBlockBytes = kAlignment - 64;

} // namespace

struct RowPool::FreeRow
{
    FreeRow *next;
};

struct RowPool::Block
{
    Block *next = nullptr;
    Block *previous = nullptr;
    FreeRow *free = nullptr;
    // From here on no row has been taken yet.
    std::size_t fresh = 0;
    std::size_t taken = 0;
    std::size_t rowBytes = 0;

    [[nodiscard]] bool isFull() const noexcept
    {
        return free == nullptr && fresh + rowBytes > kBlockBytes;
    }
};

RowPool::Block *RowPool::s_Open = nullptr;
std::size_t RowPool::s_Blocks = 0;

RowPool::Block &RowPool::blockOf(void *row) noexcept
{
    const auto address = reinterpret_cast<std::uintptr_t>(row);
    return *reinterpret_cast<Block *>(address - address % kAlignment);
}

void RowPool::link(Block &block) noexcept
{
    block.previous = nullptr;
    block.next = s_Open;
    if (s_Open != nullptr)
        s_Open->previous = &block;
    s_Open = &block;
}

void RowPool::unlink(Block &block) noexcept
{
    if (block.previous != nullptr)
        block.previous->next = block.next;
    else
        s_Open = block.next;
    if (block.next != nullptr)
        block.next->previous = block.previous;
}

void *RowPool::take(std::size_t bytes)
{
    if (s_Open == nullptr) {
        auto *const made = ::new (::operator new(kBlockBytes, std::align_val_t(kAlignment))) Block;
        made->rowBytes = bytes;
        made->fresh = (sizeof(Block) + 63) / 64 * 64;
        link(*made);
        ++s_Blocks;
    }
    Block &block = *s_Open;
    void *row = nullptr;
    if (block.free != nullptr) {
        row = std::exchange(block.free, block.free->next);
    } else {
        row = reinterpret_cast<std::byte *>(&block) + block.fresh;
        block.fresh += block.rowBytes;
    }
    ++block.taken;
    if (block.isFull())
        unlink(block);
    return row;
}

void RowPool::give(void *row) noexcept
{
    Block &block = blockOf(row);
    if (block.isFull())
        link(block);
    block.free = ::new (row) FreeRow{block.free};
    // One block stays, for a row that comes and goes.
    if (--block.taken > 0 || (s_Open == &block && block.next == nullptr))
        return;
    unlink(block);
    --s_Blocks;
    ::operator delete(&block, std::align_val_t(kAlignment));
}

std::size_t RowPool::blocks() noexcept
{
    return s_Blocks;
}

} // namespace TAMBO
