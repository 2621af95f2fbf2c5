// SPDX-License-Identifier: GPL-3.0-or-later
// Trees as text in Newick form, "((A:1,B:2):0.5,C:3);", after G. Olsen's "Newick's 8:45" tree
// format standard (1990).
#pragma once

#include "Tree.h"

#include <string>
#include <string_view>
#include <variant>

namespace companion {

struct NewickError
{
    // Counted from 1, in letters.
    std::size_t line = 1;
    std::size_t column = 1;
    std::string cause;

    // "line 2, column 7: the cause"
    [[nodiscard]] std::string text() const;
};

// More nodes than that are refused.
inline constexpr std::size_t kMostTreeNodes = 1'000'000;

// One tree, which ';' ends. Names may be quoted; without quotes they end at a blank or a sign of
// the form, and keep their underscores, since most programs write names of rows like that, though
// the standard reads them as blanks. Comments in brackets, also in each other, are passed over.
// Lengths are finite numbers, negative ones too. The root is the first node; nodes may lack names
// and lengths. places, if there is one, gets for each node where its name stands in the text.
[[nodiscard]] std::variant<Tree, NewickError>
readNewick(std::string_view text, std::vector<std::size_t> *places = nullptr);

// In one line that ends with ';', without a line end. Names are quoted where they have blanks,
// underscores or signs of the form; lengths have as many digits as give the same number back. Empty
// for a tree without nodes.
[[nodiscard]] std::string writeNewick(const Tree &tree);

} // namespace companion
