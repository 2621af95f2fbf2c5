// SPDX-License-Identifier: GPL-3.0-or-later
// What every kept object begins with, until the object itself is there.
#pragma once

#include "Color.h"
#include "ValueStore.h"

#include <cstdint>
#include <optional>

namespace TAMBO {

struct StoredHead
{
    // As bytes.
    static constexpr unsigned kHasColor = 1;
    static constexpr unsigned kIsSelected = 2;
    static constexpr unsigned kIsLocked = 4;
    static constexpr unsigned kHasValues = 8;
    static constexpr unsigned kAll = kHasColor | kIsSelected | kIsLocked | kHasValues;
    // What an opaque colour has set.
    static constexpr unsigned kOpaque = 0xff000000U;

    std::uint32_t identity = 0;
    std::optional<Color> color;
    bool isSelected = false;
    bool isLocked = false;
    ValueStore::Plugins values;
};

} // namespace TAMBO
