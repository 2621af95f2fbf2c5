// SPDX-License-Identifier: GPL-3.0-or-later
// Trees for tests, and how far their leaves are from each other.
#pragma once

#include "DistanceMatrix.h"
#include "Tree.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace MadeTrees {

using namespace companion;

inline double between(std::mt19937 &chance, double least, double most)
{
    return least + (most - least) * double(chance()) / double(std::mt19937::max());
}

// A root with three children, then one leaf after the other becomes a pair.
inline Tree random(std::mt19937 &chance, std::size_t leafCount)
{
    Tree tree;
    tree.nodes.emplace_back();
    tree.root = 0;
    std::vector<std::size_t> leaves;
    const auto grow = [&](std::size_t parent) {
        const std::size_t leaf = tree.addChild(parent);
        tree.nodes[leaf].length = between(chance, 0.05, 1);
        leaves.push_back(leaf);
    };
    while (leaves.size() < std::min<std::size_t>(3, leafCount))
        grow(0);
    while (leaves.size() < leafCount) {
        const std::size_t place = chance() % leaves.size();
        const std::size_t parent = leaves[place];
        leaves.erase(leaves.begin() + std::ptrdiff_t(place));
        grow(parent);
        grow(parent);
    }
    return tree;
}

// Of each node, the lengths of the way to each other one.
inline std::vector<double> waysFrom(const Tree &tree, std::size_t start)
{
    std::vector<double> ways(tree.nodes.size(), -1);
    std::vector<std::size_t> waiting = {start};
    ways[start] = 0;
    while (!waiting.empty()) {
        const std::size_t node = waiting.back();
        waiting.pop_back();
        const auto visit = [&](std::size_t other, std::size_t lower) {
            if (ways[other] >= 0)
                return;
            ways[other] = ways[node] + tree.nodes[lower].length.value_or(0);
            waiting.push_back(other);
        };
        for (const std::size_t child : tree.nodes[node].children)
            visit(child, child);
        if (tree.nodes[node].parent != kNoNode)
            visit(tree.nodes[node].parent, node);
    }
    return ways;
}

// In the order of leaves.
inline DistanceMatrix distancesIn(const Tree &tree, const std::vector<std::size_t> &leaves)
{
    DistanceMatrix distances(leaves.size());
    for (std::size_t a = 0; a < leaves.size(); ++a) {
        const std::vector<double> ways = waysFrom(tree, leaves[a]);
        for (std::size_t b = 0; b < a; ++b)
            distances.set(a, b, ways[leaves[b]]);
    }
    return distances;
}

// Of a tree whose first nodes are the leaves, in the order of rows.
inline DistanceMatrix distancesOfRows(const Tree &tree, std::size_t rows)
{
    std::vector<std::size_t> leaves;
    for (std::size_t i = 0; i < rows; ++i)
        leaves.push_back(i);
    return distancesIn(tree, leaves);
}

inline double mostDifferent(const DistanceMatrix &a, const DistanceMatrix &b)
{
    double most = 0;
    for (std::size_t i = 0; i < a.rows(); ++i)
        for (std::size_t k = 0; k < a.rows(); ++k)
            most = std::max(most, std::abs(a.at(i, k) - b.at(i, k)));
    return most;
}

} // namespace MadeTrees
