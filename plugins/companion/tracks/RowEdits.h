// SPDX-License-Identifier: GPL-3.0-or-later
// What an edit of a few rows has changed of their letters, so that counts of columns can follow it
// without a look at the other rows.
#pragma once

#include "Alignment.h"
#include "LayoutChanges.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace companion {

// The letters of one row from a column on, '\0' for gaps. Behind the end of the alignment, then or
// now, are gaps.
struct RowEdit
{
    unsigned long row = 0;
    unsigned long begin = 0;
    std::string before;
    std::string after;
    // There was none before.
    bool isNew = false;
};

// More letters are not looked at.
inline constexpr std::size_t kMostEdited = std::size_t(1) << 20;

// Nothing when something else has happened than that gaps moved, or that rows came, or when it was
// too much.
[[nodiscard]] std::optional<std::vector<RowEdit>>
rowEdits(const TAMBO::Alignment &alignment, const std::vector<TAMBO::LayoutChange> &changes);

} // namespace companion
