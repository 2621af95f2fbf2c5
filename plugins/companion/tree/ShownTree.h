// SPDX-License-Identifier: GPL-3.0-or-later
// A tree as it is drawn: the leaves that there are rows of, clades that are collapsed, and where
// all of it stands. Knows no widget.
#pragma once

#include "Tree.h"

#include <cstdint>
#include <functional>
#include <set>
#include <vector>

namespace companion {

struct ShownNode
{
    // Of the tree that is shown.
    std::size_t node = kNoNode;
    // In the list of what is shown, in which each node is followed by all that is below it.
    std::size_t parent = kNoNode;
    std::size_t end = 0;
    // Of the leaves that are shown.
    std::size_t firstLeaf = 0;
    std::size_t leafEnd = 0;
    // The sum of lengths from the root, and that of its farthest leaf.
    double depth = 0;
    double farthest = 0;
    // In lines, whose middles are at a half: of itself, and of the first and last of what is below.
    double line = 0;
    double firstLine = 0;
    double lastLine = 0;
    // Where the line along its children ends; it begins at the first child.
    double lastChildLine = 0;
    // Drawn as a triangle, with nothing below it.
    bool isCollapsed = false;

    [[nodiscard]] std::size_t leaves() const noexcept { return leafEnd - firstLeaf; }
    [[nodiscard]] bool isLeaf() const noexcept { return leaves() == 1; }
};

class ShownTree
{
public:
    ShownTree() = default;

    // rowOf says of each leaf of the tree, counted as leafOrder() has them, its row, or kNoRow; it
    // is not kept.
    using RowOf = std::function<unsigned long(std::size_t leaf)>;
    void show(const Tree &tree, const RowOf &rowOf);
    void clear();

    // The rows stand as the leaves can be drawn: those of each clade side by side, but for rows
    // that are in no clade.
    [[nodiscard]] bool isInOrder() const noexcept { return m_IsInOrder; }
    // The line of a leaf is its row; only while isInOrder(). Otherwise leaves and collapsed clades
    // have a line each, side by side.
    void setAtRows(bool isAtRows);
    [[nodiscard]] bool isAtRows() const noexcept { return m_IsAtRows; }
    // Behind the last one.
    [[nodiscard]] double lines() const noexcept { return m_Lines; }

    // The root is the first; empty without a leaf.
    [[nodiscard]] const std::vector<ShownNode> &nodes() const noexcept { return m_Nodes; }
    // Of each leaf, from top to bottom.
    [[nodiscard]] const std::vector<unsigned long> &rows() const noexcept { return m_Rows; }
    [[nodiscard]] double farthest() const noexcept
    {
        return m_Nodes.empty() ? 0 : m_Nodes.front().farthest;
    }
    // Some branch has a length that is not 0.
    [[nodiscard]] bool hasLengths() const noexcept { return m_HasLengths; }

    [[nodiscard]] bool isDrawn(std::size_t shown) const;
    void setCollapsed(std::size_t shown, bool isCollapsed);
    void expandAll();
    [[nodiscard]] bool hasCollapsed() const noexcept { return !m_Collapsed.empty(); }

    // Where the keys lead to from a node; the node itself where there is nothing.
    enum class Way { ToParent, ToChildren, Up, Down };
    [[nodiscard]] std::size_t next(std::size_t shown, Way way) const;
    // The shown node that a node of the tree is, or is below without a branch of its own; the root
    // of one that is not shown.
    [[nodiscard]] std::size_t shownOf(std::size_t node) const;

private:
    void place();

    std::vector<ShownNode> m_Nodes;
    std::vector<unsigned long> m_Rows;
    // Of each node of the tree.
    std::vector<std::size_t> m_ShownOf;
    // Nodes of the tree.
    std::set<std::size_t> m_Collapsed;
    double m_Lines = 0;
    bool m_IsInOrder = false;
    bool m_IsAtRows = false;
    bool m_HasLengths = false;
};

} // namespace companion
