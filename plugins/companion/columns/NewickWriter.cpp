// SPDX-License-Identifier: GPL-3.0-or-later
#include "Newick.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace companion {

namespace {

bool needsQuotes(std::string_view name)
{
    constexpr std::string_view kSigns = "()[]':;,_\x7f";
    return std::ranges::any_of(name, [&](char letter) {
        return static_cast<unsigned char>(letter) <= ' ' ||
               kSigns.find(letter) != std::string_view::npos;
    });
}

void appendNode(std::string &text, const TreeNode &node)
{
    if (needsQuotes(node.name)) {
        text += '\'';
        for (const char letter : node.name) {
            text += letter;
            if (letter == '\'')
                text += letter;
        }
        text += '\'';
    } else
        text += node.name;
    if (node.length && std::isfinite(*node.length)) {
        std::array<char, 32> digits;
        const auto end =
            std::to_chars(digits.data(), digits.data() + digits.size(), *node.length).ptr;
        text += ':';
        text.append(digits.data(), end);
    }
}

// A node whose children are being written, and how many of them are.
struct OpenNode
{
    std::size_t node;
    std::size_t written = 0;
};

} // namespace

std::string writeNewick(const Tree &tree)
{
    std::string text;
    if (tree.root == kNoNode)
        return text;
    std::vector<OpenNode> open = {{tree.root}};
    while (!open.empty()) {
        OpenNode &last = open.back();
        const TreeNode &node = tree.nodes[last.node];
        if (last.written < node.children.size()) {
            text += last.written == 0 ? '(' : ',';
            open.push_back({node.children[last.written++]});
            continue;
        }
        if (!node.isLeaf())
            text += ')';
        appendNode(text, node);
        open.pop_back();
    }
    // A single node that has nothing to it is no tree to a reader, but with an empty name it is
    // one.
    return text.empty() ? "'';" : text + ';';
}

} // namespace companion
