// SPDX-License-Identifier: GPL-3.0-or-later
// What nearly every stored object of the tree keeps besides its content, so that naming, locking
// and ownership treat all of them alike.
#pragma once

#include "Color.h"

#include <cstdint>
#include <optional>

namespace TAMBO {

class Compound;

// The values that plug-ins have kept with the object are gone.
void forgetValues(std::uint32_t identity) noexcept;

struct CompoundState
{
    CompoundState() = default;
    ~CompoundState()
    {
        // Without a number nobody can have kept any.
        if (identity != 0)
            forgetValues(identity);
    }
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
