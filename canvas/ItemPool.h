// SPDX-License-Identifier: GPL-3.0-or-later
// Memory for canvas items. Freed blocks are kept by size and given out again, so that a rebuild,
// which replaces every item by one of the same kind, does not go through the heap.
#pragma once

#include <cstddef>

namespace ItemPool {

[[nodiscard]] void *take(std::size_t size);
void giveBack(void *memory, std::size_t size) noexcept;

} // namespace ItemPool
