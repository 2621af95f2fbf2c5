// SPDX-License-Identifier: GPL-3.0-or-later
#include "ShownTree.h"

#include "LeafRows.h"

#include <algorithm>
#include <utility>

namespace companion {

namespace {

// The tree without leaves that are no row, and with the children of each node in an order of our
// own.
struct Pruned
{
    // Of each node of the tree.
    std::vector<std::size_t> leaves;
    std::vector<unsigned long> leastRow;
    std::vector<std::vector<std::size_t>> children;
};

Pruned prune(const Tree &tree, const std::vector<std::size_t> &order,
             const std::vector<unsigned long> &rowOfNode)
{
    Pruned pruned;
    pruned.leaves.resize(tree.nodes.size());
    pruned.leastRow.assign(tree.nodes.size(), kNoRow);
    pruned.children.resize(tree.nodes.size());
    for (auto node = order.rbegin(); node != order.rend(); ++node) {
        if (tree.nodes[*node].isLeaf()) {
            pruned.leastRow[*node] = rowOfNode[*node];
            pruned.leaves[*node] = rowOfNode[*node] == kNoRow ? 0 : 1;
            continue;
        }
        for (const std::size_t child : tree.nodes[*node].children) {
            if (pruned.leaves[child] == 0)
                continue;
            pruned.children[*node].push_back(child);
            pruned.leaves[*node] += pruned.leaves[child];
            pruned.leastRow[*node] = std::min(pruned.leastRow[*node], pruned.leastRow[child]);
        }
    }
    return pruned;
}

// Each before its children.
std::vector<std::size_t> preorder(const Pruned &pruned, std::size_t root)
{
    std::vector<std::size_t> order;
    std::vector<std::size_t> waiting = {root};
    while (!waiting.empty()) {
        const std::size_t node = waiting.back();
        waiting.pop_back();
        order.push_back(node);
        const std::vector<std::size_t> &children = pruned.children[node];
        waiting.insert(waiting.end(), children.rbegin(), children.rend());
    }
    return order;
}

bool ascends(const std::vector<std::size_t> &order, const Pruned &pruned,
             const std::vector<unsigned long> &rowOfNode)
{
    unsigned long next = 0;
    return std::ranges::all_of(order, [&](std::size_t node) {
        if (!pruned.children[node].empty())
            return true;
        const bool isBehind = rowOfNode[node] >= next;
        next = rowOfNode[node] + 1;
        return isBehind;
    });
}

} // namespace

void ShownTree::clear()
{
    *this = ShownTree();
}

void ShownTree::show(const Tree &tree, const RowOf &rowOf)
{
    m_Nodes.clear();
    m_Rows.clear();
    m_ShownOf.clear();
    m_HasLengths = false;
    m_IsInOrder = false;
    const std::vector<std::size_t> all = fromTheRoot(tree);
    std::vector<unsigned long> rowOfNode(tree.nodes.size(), kNoRow);
    std::size_t leaf = 0;
    for (const std::size_t node : all) {
        if (tree.nodes[node].isLeaf())
            rowOfNode[node] = rowOf(leaf++);
    }
    Pruned pruned = prune(tree, all, rowOfNode);
    if (tree.root == kNoNode || pruned.leaves[tree.root] == 0)
        return place();
    const auto sortBy = [&](const auto &key) {
        for (std::vector<std::size_t> &children : pruned.children)
            std::ranges::stable_sort(children, {}, key);
        return preorder(pruned, tree.root);
    };
    std::vector<std::size_t> order =
        sortBy([&](std::size_t child) { return pruned.leastRow[child]; });
    m_IsInOrder = ascends(order, pruned, rowOfNode);
    if (!m_IsInOrder)
        order = sortBy([&](std::size_t child) { return pruned.leaves[child]; });

    const std::vector<TreePlace> places = treePlaces(tree);
    m_ShownOf.assign(tree.nodes.size(), kNoNode);
    for (const std::size_t node : order) {
        const std::size_t above = tree.nodes[node].parent;
        const bool isRoot = node == tree.root;
        const std::size_t parent = isRoot ? kNoNode : m_ShownOf[above];
        if (pruned.children[node].size() == 1) {
            m_ShownOf[node] = parent;
            continue;
        }
        m_ShownOf[node] = m_Nodes.size();
        ShownNode shown;
        shown.node = node;
        shown.parent = parent;
        shown.firstLeaf = m_Rows.size();
        shown.depth = places[node].depth;
        shown.isCollapsed = m_Collapsed.contains(node);
        m_HasLengths = m_HasLengths || tree.nodes[node].length.value_or(0) != 0;
        if (pruned.children[node].empty())
            m_Rows.push_back(rowOfNode[node]);
        m_Nodes.push_back(shown);
    }
    // What is left of a tree begins where its branches part.
    const double begin = m_Nodes.front().depth;
    for (std::size_t i = m_Nodes.size(); i-- > 0;) {
        ShownNode &each = m_Nodes[i];
        each.depth -= begin;
        each.end = std::max(each.end, i + 1);
        each.leafEnd = std::max(each.leafEnd, each.firstLeaf + 1);
        each.farthest = std::max(each.farthest, each.depth);
        if (each.parent == kNoNode)
            continue;
        ShownNode &parent = m_Nodes[each.parent];
        parent.end = std::max(parent.end, each.end);
        parent.leafEnd = std::max(parent.leafEnd, each.leafEnd);
        parent.farthest = std::max(parent.farthest, each.farthest);
    }
    place();
}

void ShownTree::setAtRows(bool isAtRows)
{
    if (m_IsAtRows == (isAtRows && m_IsInOrder))
        return;
    m_IsAtRows = isAtRows && m_IsInOrder;
    place();
}

void ShownTree::place()
{
    constexpr double kMiddle = 0.5;
    m_IsAtRows = m_IsAtRows && m_IsInOrder;
    m_Lines = 0;
    for (std::size_t i = 0; i < m_Nodes.size();) {
        ShownNode &each = m_Nodes[i];
        if (!each.isLeaf() && !each.isCollapsed) {
            ++i;
            continue;
        }
        if (m_IsAtRows) {
            each.firstLine = double(m_Rows[each.firstLeaf]) + kMiddle;
            each.lastLine = double(m_Rows[each.leafEnd - 1]) + kMiddle;
        } else {
            each.firstLine = each.lastLine = m_Lines + kMiddle;
        }
        m_Lines = each.lastLine + kMiddle;
        each.line = (each.firstLine + each.lastLine) / 2;
        i = each.end;
    }
    // Of the others it is known from the first and the last of their children.
    for (ShownNode &each : m_Nodes)
        each.lastChildLine = -1;
    for (std::size_t i = m_Nodes.size(); i-- > 0;) {
        ShownNode &each = m_Nodes[i];
        const bool isInside = !each.isLeaf() && !each.isCollapsed;
        if (isInside) {
            // The first child follows its parent.
            each.line = (m_Nodes[i + 1].line + each.lastChildLine) / 2;
            each.firstLine = m_Nodes[i + 1].firstLine;
        }
        if (each.parent == kNoNode)
            continue;
        ShownNode &parent = m_Nodes[each.parent];
        if (parent.lastChildLine < 0) {
            parent.lastChildLine = each.line;
            if (!parent.isCollapsed)
                parent.lastLine = each.lastLine;
        }
    }
}

bool ShownTree::isDrawn(std::size_t shown) const
{
    if (shown >= m_Nodes.size())
        return false;
    for (std::size_t i = m_Nodes[shown].parent; i != kNoNode; i = m_Nodes[i].parent)
        if (m_Nodes[i].isCollapsed)
            return false;
    return true;
}

void ShownTree::setCollapsed(std::size_t shown, bool isCollapsed)
{
    ShownNode &each = m_Nodes[shown];
    if (each.isLeaf() || each.isCollapsed == isCollapsed)
        return;
    each.isCollapsed = isCollapsed;
    if (isCollapsed)
        m_Collapsed.insert(each.node);
    else
        m_Collapsed.erase(each.node);
    place();
}

void ShownTree::expandAll()
{
    m_Collapsed.clear();
    for (ShownNode &each : m_Nodes)
        each.isCollapsed = false;
    place();
}

std::size_t ShownTree::next(std::size_t shown, Way way) const
{
    const ShownNode &each = m_Nodes[shown];
    if (way == Way::ToParent)
        return each.parent == kNoNode ? shown : each.parent;
    if (way == Way::ToChildren)
        return each.isLeaf() || each.isCollapsed ? shown : shown + 1;
    if (way == Way::Down) {
        // The next sibling, of an ancestor if need be.
        std::size_t from = shown;
        while (from != kNoNode && m_Nodes[from].parent != kNoNode &&
               m_Nodes[from].end == m_Nodes[m_Nodes[from].parent].end)
            from = m_Nodes[from].parent;
        return m_Nodes[from].parent == kNoNode ? shown : m_Nodes[from].end;
    }
    std::size_t from = shown;
    while (m_Nodes[from].parent != kNoNode && m_Nodes[from].parent + 1 == from)
        from = m_Nodes[from].parent;
    if (m_Nodes[from].parent == kNoNode)
        return shown;
    // The sibling that ends where this one begins.
    std::size_t sibling = m_Nodes[from].parent + 1;
    while (m_Nodes[sibling].end != from)
        sibling = m_Nodes[sibling].end;
    return sibling;
}

std::size_t ShownTree::shownOf(std::size_t node) const
{
    const std::size_t found = node < m_ShownOf.size() ? m_ShownOf[node] : kNoNode;
    return found == kNoNode && !m_Nodes.empty() ? 0 : found;
}

} // namespace companion
