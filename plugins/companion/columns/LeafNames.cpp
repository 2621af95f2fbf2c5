// SPDX-License-Identifier: GPL-3.0-or-later
#include "LeafNames.h"

#include <string_view>
#include <unordered_map>

namespace companion {

namespace {

std::string plainName(std::string_view name)
{
    constexpr std::string_view kSigns = "()[]':;,";
    std::string plain(name);
    for (char &letter : plain)
        if (static_cast<unsigned char>(letter) <= ' ' ||
            kSigns.find(letter) != std::string_view::npos)
            letter = '_';
    return plain;
}

class RowNames
{
public:
    explicit RowNames(std::span<const std::string> names)
    {
        for (std::size_t row = 0; row < names.size(); ++row) {
            m_Exact[names[row]].push_back(row);
            m_Plain[plainName(names[row])].push_back(row);
        }
    }

    // Null when there is none.
    [[nodiscard]] const std::vector<std::size_t> *rowsOf(const std::string &name) const
    {
        if (const auto found = m_Exact.find(name); found != m_Exact.end())
            return &found->second;
        const auto found = m_Plain.find(plainName(name));
        return found == m_Plain.end() ? nullptr : &found->second;
    }

private:
    std::unordered_map<std::string, std::vector<std::size_t>> m_Exact;
    std::unordered_map<std::string, std::vector<std::size_t>> m_Plain;
};

} // namespace

LeafNames findLeafRows(const Tree &tree, std::span<const std::string> names)
{
    const RowNames rowNames(names);
    std::vector<bool> isLeaf(names.size());
    LeafNames match;
    for (const std::size_t leaf : leafOrder(tree)) {
        const std::vector<std::size_t> *const found = rowNames.rowsOf(tree.nodes[leaf].name);
        if (found == nullptr) {
            match.unknown.push_back(leaf);
        } else if (found->size() > 1) {
            match.ambiguous.push_back({leaf, found->size()});
        } else if (isLeaf[found->front()]) {
            match.doubled.push_back(leaf);
        } else {
            isLeaf[found->front()] = true;
            match.rows.push_back(found->front());
        }
    }
    for (std::size_t row = 0; match.ambiguous.empty() && row < names.size(); ++row)
        if (!isLeaf[row])
            match.missing.push_back(row);
    return match;
}

} // namespace companion
