// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tree.h"

#include <algorithm>

namespace companion {

std::size_t Tree::addChild(std::size_t parent)
{
    const std::size_t place = nodes.size();
    nodes.emplace_back().parent = parent;
    nodes[parent].children.push_back(place);
    return place;
}

std::vector<std::size_t> fromTheRoot(const Tree &tree)
{
    std::vector<std::size_t> order;
    if (tree.root == kNoNode)
        return order;
    order.reserve(tree.nodes.size());
    std::vector<std::size_t> waiting = {tree.root};
    while (!waiting.empty()) {
        const std::size_t node = waiting.back();
        waiting.pop_back();
        order.push_back(node);
        const std::vector<std::size_t> &children = tree.nodes[node].children;
        waiting.insert(waiting.end(), children.rbegin(), children.rend());
    }
    return order;
}

std::vector<std::size_t> leafOrder(const Tree &tree)
{
    std::vector<std::size_t> order = fromTheRoot(tree);
    std::erase_if(order, [&](std::size_t node) { return !tree.nodes[node].isLeaf(); });
    return order;
}

void ladderize(Tree &tree)
{
    std::vector<std::size_t> leaves(tree.nodes.size());
    const std::vector<std::size_t> order = fromTheRoot(tree);
    for (auto node = order.rbegin(); node != order.rend(); ++node) {
        TreeNode &each = tree.nodes[*node];
        std::ranges::stable_sort(each.children, {},
                                 [&](std::size_t child) { return leaves[child]; });
        leaves[*node] = each.isLeaf() ? 1 : 0;
        for (const std::size_t child : each.children)
            leaves[*node] += leaves[child];
    }
}

std::vector<TreePlace> treePlaces(const Tree &tree)
{
    const std::vector<std::size_t> order = fromTheRoot(tree);
    const bool hasLengths = std::ranges::any_of(order, [&](std::size_t node) {
        return node != tree.root && tree.nodes[node].length.has_value();
    });
    std::vector<TreePlace> places(tree.nodes.size());
    double row = 0;
    for (const std::size_t node : order) {
        const TreeNode &each = tree.nodes[node];
        if (node != tree.root)
            places[node].depth =
                places[each.parent].depth + (hasLengths ? each.length.value_or(0) : 1);
        if (each.isLeaf())
            places[node].row = row++;
    }
    for (auto node = order.rbegin(); node != order.rend(); ++node)
        if (const TreeNode &each = tree.nodes[*node]; !each.isLeaf())
            places[*node].row =
                (places[each.children.front()].row + places[each.children.back()].row) / 2;
    return places;
}

} // namespace companion
