// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tree.h"

#include <algorithm>
#include <utility>

namespace companion {

namespace {

struct Ways
{
    // Of each node, the length of the way from the first one, and the node before it on that way.
    std::vector<double> lengths;
    std::vector<std::size_t> before;
};

Ways waysFrom(const Tree &tree, std::size_t start)
{
    Ways ways;
    ways.lengths.resize(tree.nodes.size());
    ways.before.assign(tree.nodes.size(), kNoNode);
    std::vector<std::size_t> waiting = {start};
    const auto visit = [&](std::size_t node, std::size_t next, std::size_t lower) {
        if (next == kNoNode || next == ways.before[node])
            return;
        ways.before[next] = node;
        ways.lengths[next] = ways.lengths[node] + tree.nodes[lower].length.value_or(0);
        waiting.push_back(next);
    };
    while (!waiting.empty()) {
        const std::size_t node = waiting.back();
        waiting.pop_back();
        visit(node, tree.nodes[node].parent, node);
        for (const std::size_t child : tree.nodes[node].children)
            visit(node, child, child);
    }
    return ways;
}

// Of those that are as far the one that is drawn first.
std::size_t farthest(const std::vector<std::size_t> &leaves, const Ways &ways)
{
    return *std::ranges::max_element(leaves, {},
                                     [&](std::size_t leaf) { return ways.lengths[leaf]; });
}

void replaceChild(Tree &tree, std::size_t parent, std::size_t child, std::size_t other)
{
    std::ranges::replace(tree.nodes[parent].children, child, other);
}

// All nodes from the parent up to the root become children of those that were below them. The new
// root stands between the node and its former parent.
void turn(Tree &tree, std::size_t node, double below, double above)
{
    const std::size_t root = tree.nodes.size();
    tree.nodes.emplace_back();
    std::size_t lower = node;
    std::size_t upper = tree.nodes[node].parent;
    std::size_t newParent = root;
    double length = above;
    // Of the branch that is turned round.
    std::string name = tree.nodes[node].isLeaf() ? std::string() : tree.nodes[node].name;
    while (upper != kNoNode) {
        TreeNode &turned = tree.nodes[upper];
        const std::size_t next = turned.parent;
        const double nextLength = turned.length.value_or(0);
        std::string nextName = std::exchange(turned.name, std::move(name));
        std::erase(turned.children, lower);
        if (next != kNoNode)
            turned.children.push_back(next);
        turned.parent = newParent;
        turned.length = length;
        newParent = upper;
        lower = upper;
        upper = next;
        length = nextLength;
        name = std::move(nextName);
    }
    tree.nodes[root].children = {tree.nodes[node].parent, node};
    tree.nodes[node].parent = root;
    tree.nodes[node].length = below;
    tree.root = root;
}

// The former root, of which one child is left.
void takeOut(Tree &tree, std::size_t node)
{
    const std::size_t parent = tree.nodes[node].parent;
    const std::size_t child = tree.nodes[node].children.front();
    tree.nodes[child].parent = parent;
    tree.nodes[child].length =
        tree.nodes[child].length.value_or(0) + tree.nodes[node].length.value_or(0);
    replaceChild(tree, parent, node, child);
    tree.nodes[node] = {};
}

} // namespace

void rootInTheMiddle(Tree &tree)
{
    const std::vector<std::size_t> leaves = leafOrder(tree);
    const bool hasNegative = std::ranges::any_of(
        tree.nodes, [](const TreeNode &node) { return node.length.value_or(0) < 0; });
    if (leaves.size() < 3 || hasNegative)
        return;
    const std::size_t first = farthest(leaves, waysFrom(tree, leaves.front()));
    const Ways ways = waysFrom(tree, first);
    std::size_t node = farthest(leaves, ways);
    const double middle = ways.lengths[node] / 2;
    if (!(middle > 0))
        return;
    while (ways.lengths[ways.before[node]] > middle)
        node = ways.before[node];
    const std::size_t before = ways.before[node];
    const double toNode = ways.lengths[node] - middle;
    const double toBefore = middle - ways.lengths[before];
    const std::size_t formerRoot = tree.root;
    if (tree.nodes[node].parent == before)
        turn(tree, node, toNode, toBefore);
    else
        turn(tree, before, toBefore, toNode);
    if (tree.nodes[formerRoot].children.size() == 1)
        takeOut(tree, formerRoot);
}

} // namespace companion
