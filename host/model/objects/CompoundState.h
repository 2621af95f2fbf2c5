// SPDX-License-Identifier: GPL-3.0-or-later
// What nearly every stored object of the tree keeps besides its content, so that naming, locking
// and ownership treat all of them alike.
#pragma once

#include "Color.h"

#include <cstdint>
#include <optional>

namespace TAMBO {

class Compound;

// The number of Space.
inline constexpr std::uint32_t kSpaceIdentity = 1;

// The values that plug-ins have kept with the object are gone.
void forgetValues(std::uint32_t identity) noexcept;
// No index of objects leads to it any more.
void forgetIndexed(std::uint32_t identity) noexcept;

// The object that had the number is gone, if it had one.
inline void forgetObject(std::uint32_t identity) noexcept
{
    // Without a number nobody can have kept anything.
    if (identity == 0)
        return;
    forgetValues(identity);
    forgetIndexed(identity);
}

struct CompoundState
{
    CompoundState() = default;
    ~CompoundState() { forgetObject(identity); }
    CompoundState(const CompoundState &) = delete;
    CompoundState &operator=(const CompoundState &) = delete;

    // Null while the object is not in the tree.
    Compound *parent = nullptr;
    // None: the colour of the kind.
    std::optional<Color> color;
    bool isSelected = false;
    bool isLocked = false;
    // The number that identityOf() gives; 0 until somebody asks.
    mutable std::uint32_t identity = 0;
};

} // namespace TAMBO
