// SPDX-License-Identifier: GPL-3.0-or-later
// Which rows the leaves of a tree are, by their names.
#pragma once

#include "Tree.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace companion {

struct LeafNames
{
    struct Ambiguous
    {
        std::size_t leaf = 0;
        std::size_t rows = 0;

        friend bool operator==(const Ambiguous &, const Ambiguous &) = default;
    };

    // Of each leaf, as leafOrder() has them, the row; of all of them when each is one row, and each
    // row one leaf.
    std::vector<std::size_t> rows;
    // Leaves, as nodes, that are no row, and those that are the row of a leaf before them.
    std::vector<std::size_t> unknown;
    std::vector<std::size_t> doubled;
    // Those whose names several rows have.
    std::vector<Ambiguous> ambiguous;
    // Rows that are no leaf; not looked for while leaves are ambiguous.
    std::vector<std::size_t> missing;

    [[nodiscard]] bool isComplete() const noexcept
    {
        return unknown.empty() && doubled.empty() && ambiguous.empty() && missing.empty();
    }
};

// Names are the same when they differ by blanks and signs of the Newick form that programs write as
// '_'; a row that has the very name comes first.
[[nodiscard]] LeafNames findLeafRows(const Tree &tree, std::span<const std::string> names);

} // namespace companion
