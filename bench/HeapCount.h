// SPDX-License-Identifier: GPL-3.0-or-later
// Counts what a program has on the heap, by taking the place of new and delete.
#pragma once

#include <cstddef>

// Bytes now, and at most since restartHeapPeak().
[[nodiscard]] std::size_t heapBytes() noexcept;
[[nodiscard]] std::size_t heapPeak() noexcept;
void restartHeapPeak() noexcept;
// How often something was allocated.
[[nodiscard]] std::size_t heapAllocations() noexcept;
