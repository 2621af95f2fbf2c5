// SPDX-License-Identifier: GPL-3.0-or-later
// A tree of the rows of an alignment, as flat as can be: nodes know each other by their places.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace companion {

inline constexpr std::size_t kNoNode = std::size_t(-1);

struct TreeNode
{
    std::size_t parent = kNoNode;
    // From top to bottom. A leaf has none.
    std::vector<std::size_t> children;
    // Of a leaf the name of its row; others may have one.
    std::string name;
    // Of the branch to the parent, in the unit of the distances that the tree was made of.
    std::optional<double> length;

    [[nodiscard]] bool isLeaf() const noexcept { return children.empty(); }

    friend bool operator==(const TreeNode &, const TreeNode &) = default;
};

struct Tree
{
    std::vector<TreeNode> nodes;
    // kNoNode in a tree without nodes.
    std::size_t root = kNoNode;

    // A node without name and length below the parent, as its last child. Gives its place.
    std::size_t addChild(std::size_t parent);

    friend bool operator==(const Tree &, const Tree &) = default;
};

// All nodes, each before its children, children in their order. None of these functions calls
// itself: a tree may be as deep as it has nodes.
[[nodiscard]] std::vector<std::size_t> fromTheRoot(const Tree &tree);

// The leaves in the order in which they are drawn, from top to bottom.
[[nodiscard]] std::vector<std::size_t> leafOrder(const Tree &tree);

// Puts children with fewer leaves above their siblings; of as many, those stay above that are.
void ladderize(Tree &tree);

// Puts the root into the middle of the longest way between two leaves. For trees whose root says
// nothing, such as those of neighbor joining. The ways between leaves stay as they are; nodes keep
// their numbers, and the root is a new one. Names of inner nodes are taken for those of their
// branches, and go along with them. A tree of less than three leaves, with a negative length or
// without any other than 0 stays as it is.
void rootInTheMiddle(Tree &tree);

// Where a node is drawn.
struct TreePlace
{
    // The sum of the lengths from the root. A branch without one has 0, and each has 1 when none
    // has any; the root's own does not matter.
    double depth = 0;
    // Of a leaf its place in leafOrder(), of others the middle between first and last child.
    double row = 0;
};

// Of each node, in the order of tree.nodes.
[[nodiscard]] std::vector<TreePlace> treePlaces(const Tree &tree);

} // namespace companion
