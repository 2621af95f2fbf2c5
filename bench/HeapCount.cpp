// SPDX-License-Identifier: GPL-3.0-or-later
#include "HeapCount.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::atomic<std::size_t> s_Live{0};
std::atomic<std::size_t> s_Peak{0};
std::atomic<std::size_t> s_Allocations{0};

void *counted(void *memory)
{
    if (memory == nullptr)
        throw std::bad_alloc();
    ++s_Allocations;
    const std::size_t live = s_Live += malloc_usable_size(memory);
    s_Peak = std::max(s_Peak.load(), live);
    return memory;
}

void uncounted(void *memory) noexcept
{
    s_Live -= malloc_usable_size(memory);
    std::free(memory);
}

} // namespace

std::size_t heapBytes() noexcept
{
    return s_Live;
}

std::size_t heapPeak() noexcept
{
    return s_Peak;
}

std::size_t heapAllocations() noexcept
{
    return s_Allocations;
}

void restartHeapPeak() noexcept
{
    s_Peak = s_Live.load();
}

void *operator new(std::size_t size)
{
    return counted(std::malloc(size == 0 ? 1 : size));
}

void *operator new(std::size_t size, std::align_val_t alignment)
{
    const auto step = static_cast<std::size_t>(alignment);
    return counted(std::aligned_alloc(step, (size + step - 1) / step * step));
}

void operator delete(void *memory) noexcept
{
    uncounted(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    uncounted(memory);
}

void operator delete(void *memory, std::align_val_t) noexcept
{
    uncounted(memory);
}

void operator delete(void *memory, std::size_t, std::align_val_t) noexcept
{
    uncounted(memory);
}
