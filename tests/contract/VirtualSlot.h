// SPDX-License-Identifier: GPL-3.0-or-later
// The place of a virtual operation in its class's table, which plug-ins are compiled against.
#pragma once

#include <cstddef>
#include <cstring>

// 0 for the first one. A destructor takes two places.
template <typename Member> std::size_t virtualSlot(Member member)
{
    // A pointer to a virtual member is its offset in the table plus one, in this platform's ABI.
    std::size_t offset = 0;
    static_assert(sizeof(member) >= sizeof(offset));
    std::memcpy(&offset, &member, sizeof(offset));
    return (offset - 1) / sizeof(void *);
}
