// SPDX-License-Identifier: GPL-3.0-or-later
// Trees of other programs, whose leaves are rows by their names.
#pragma once

#include "Tree.h"

#include <QString>

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace companion {

struct NamedTree
{
    Tree tree;
    // Of each leaf, as leafOrder() has them, the row.
    std::vector<std::size_t> rows;
};

// Each leaf has to be one row, and each row one leaf. Names are the same when they differ by blanks
// and signs of the form that programs write as '_'. The failure says line and cause.
[[nodiscard]] std::variant<NamedTree, QString> readNamedTree(std::string_view newick,
                                                             std::span<const std::string> names);
// The same of a file, whose name the failure begins with.
[[nodiscard]] std::variant<NamedTree, QString> readTreeFile(const QString &file,
                                                            std::span<const std::string> names);

// Empty when it is written; otherwise why not, and what there was stays.
[[nodiscard]] QString writeTreeFile(const QString &file, const Tree &tree);

} // namespace companion
