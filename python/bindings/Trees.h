// SPDX-License-Identifier: GPL-3.0-or-later
// A tree as Python holds it: it never changes, and may know which rows its leaves are.
#pragma once

#include "Rows.h"
#include "Tree.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace TAMBO::script {

class TreeValue
{
public:
    // Leaves, by their nodes, with their rows.
    using RowsOfLeaves = std::unordered_map<std::size_t, RowReference>;

    explicit TreeValue(companion::Tree tree,
                       std::optional<AlignmentReference> alignment = std::nullopt,
                       RowsOfLeaves rows = {});

    [[nodiscard]] const companion::Tree &tree() const noexcept { return m_Tree; }
    // From top to bottom.
    [[nodiscard]] const std::vector<std::size_t> &leaves() const noexcept { return m_Leaves; }
    // Those below a node, as places [first, second) in leaves().
    [[nodiscard]] const std::pair<std::size_t, std::size_t> &leavesOf(std::size_t node) const
    {
        return m_LeavesOf[node];
    }
    [[nodiscard]] const std::optional<AlignmentReference> &alignment() const noexcept
    {
        return m_Alignment;
    }
    // Nothing without an alignment, and of nodes that are no leaves.
    [[nodiscard]] std::optional<RowReference> rowOf(std::size_t node) const;
    [[nodiscard]] const RowsOfLeaves &rows() const noexcept { return m_Rows; }

private:
    companion::Tree m_Tree;
    std::vector<std::size_t> m_Leaves;
    std::vector<std::pair<std::size_t, std::size_t>> m_LeavesOf;
    std::optional<AlignmentReference> m_Alignment;
    RowsOfLeaves m_Rows;
};

// Of neighbor joining: the first nodes are the rows.
[[nodiscard]] std::shared_ptr<TreeValue> treeOfRows(companion::Tree tree,
                                                    const AlignmentReference &alignment);
// The rows of the alignment, which are looked up by their names unless the tree knows them, in the
// order of the leaves. A ValueError when they are not the leaves, each once.
[[nodiscard]] std::vector<unsigned long> rowOrder(const TreeValue &tree,
                                                  const AlignmentReference &alignment);

} // namespace TAMBO::script
