// SPDX-License-Identifier: GPL-3.0-or-later
#include "ItemPool.h"

#include <array>
#include <new>

namespace ItemPool {

// A pool would hide the use of a deleted item from the address sanitizer.
#if defined(__SANITIZE_ADDRESS__)

void *take(std::size_t size)
{
    return ::operator new(size);
}

void giveBack(void *memory, std::size_t) noexcept
{
    ::operator delete(memory);
}

#else

namespace {

constexpr std::size_t kStep = 16;
constexpr std::size_t kLargest = 512;
constexpr std::size_t kBlocksAtOnce = 64;

struct FreeBlock
{
    FreeBlock *next;
};

// Never freed: items may outlive every object with a destructor that could do it.
std::array<FreeBlock *, kLargest / kStep + 1> s_Free{};

constexpr std::size_t classOf(std::size_t size) noexcept
{
    return (size + kStep - 1) / kStep;
}

void refill(std::size_t sizeClass)
{
    const std::size_t size = sizeClass * kStep;
    auto *memory = static_cast<std::byte *>(::operator new(size *kBlocksAtOnce));
    for (std::size_t i = kBlocksAtOnce; i-- > 0;)
        s_Free[sizeClass] = new (memory + i * size) FreeBlock{s_Free[sizeClass]};
}

} // namespace

void *take(std::size_t size)
{
    if (size == 0 || size > kLargest)
        return ::operator new(size);
    FreeBlock *&head = s_Free[classOf(size)];
    if (head == nullptr)
        refill(classOf(size));
    FreeBlock *block = head;
    head = block->next;
    return block;
}

void giveBack(void *memory, std::size_t size) noexcept
{
    if (memory == nullptr)
        return;
    if (size == 0 || size > kLargest) {
        ::operator delete(memory);
        return;
    }
    FreeBlock *&head = s_Free[classOf(size)];
    head = new (memory) FreeBlock{head};
}

#endif

} // namespace ItemPool
