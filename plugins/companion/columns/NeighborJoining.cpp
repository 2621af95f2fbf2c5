// SPDX-License-Identifier: GPL-3.0-or-later
#include "NeighborJoining.h"

#include <algorithm>
#include <array>
#include <limits>

namespace companion {

namespace {

// Side by side, so that the processor does them at once.
constexpr std::size_t kLanes = 8;

// min over j of scale * distances[j] - sums[j].
double leastOf(const double *distances, const double *sums, std::size_t count,
               double scale) noexcept
{
    std::array<double, kLanes> least;
    least.fill(std::numeric_limits<double>::infinity());
    std::size_t j = 0;
    for (; j + kLanes <= count; j += kLanes)
        for (std::size_t k = 0; k < kLanes; ++k) {
            const double value = scale * distances[j + k] - sums[j + k];
            least[k] = value < least[k] ? value : least[k];
        }
    for (; j < count; ++j)
        least[0] = std::min(least[0], scale * distances[j] - sums[j]);
    return *std::ranges::min_element(least);
}

struct Joined
{
    // Slots; the first is the lower one.
    std::size_t first = 0;
    std::size_t second = 1;
};

// The clusters that are not joined yet, each in a slot: a row of a matrix in which the first slots
// are taken, so that what is looked at lies together. The slot of a pair's second is taken by the
// last.
class Clusters
{
public:
    Clusters(const DistanceMatrix &distances, Tree &tree) : m_Tree(tree), m_Stride(distances.rows())
    {
        m_Distances.reserve(m_Stride * m_Stride);
        m_Sums.reserve(m_Stride);
        for (std::size_t i = 0; i < m_Stride; ++i) {
            const std::span<const double> row = distances.from(i);
            m_Distances.insert(m_Distances.end(), row.begin(), row.end());
            double sum = 0;
            for (const double distance : row)
                sum += distance;
            m_Sums.push_back(sum);
            m_Nodes.push_back(i);
        }
    }

    [[nodiscard]] std::size_t count() const noexcept { return m_Nodes.size(); }

    // The pair with the least (m - 2) d(i, j) - r(i) - r(j), of m clusters with the sums r.
    [[nodiscard]] Joined nearest() const noexcept
    {
        const double scale = double(count()) - 2;
        double least = std::numeric_limits<double>::infinity();
        std::size_t row = 1;
        for (std::size_t i = 1; i < count(); ++i) {
            const double here = leastOf(at(i), m_Sums.data(), i, scale) - m_Sums[i];
            if (here < least) {
                least = here;
                row = i;
            }
        }
        std::size_t column = 0;
        double leastInRow = std::numeric_limits<double>::infinity();
        for (std::size_t j = 0; j < row; ++j)
            if (const double value = scale * at(row)[j] - m_Sums[j]; value < leastInRow) {
                leastInRow = value;
                column = j;
            }
        return {column, row};
    }

    // Both become children of a new node, which takes the slot of the first.
    void join(Joined pair)
    {
        const auto [i, j] = pair;
        const double distance = at(i)[j];
        const double difference = (m_Sums[i] - m_Sums[j]) / (double(count()) - 2);
        double lengthI = (distance + difference) / 2;
        double lengthJ = distance - lengthI;
        if (lengthI < 0 || lengthJ < 0) {
            (lengthI < 0 ? lengthJ : lengthI) = std::max(0.0, distance);
            (lengthI < 0 ? lengthI : lengthJ) = 0;
        }
        const std::size_t node = m_Tree.nodes.size();
        m_Tree.nodes.emplace_back();
        hang(m_Nodes[i], node, lengthI);
        hang(m_Nodes[j], node, lengthJ);
        m_Nodes[i] = node;
        replaceDistances(i, j, distance);
        remove(j);
    }

    // What is left becomes the children of the root, or the root.
    void finish()
    {
        if (count() == 0)
            return;
        if (count() == 1) {
            m_Tree.root = m_Nodes[0];
            return;
        }
        m_Tree.root = m_Tree.nodes.size();
        m_Tree.nodes.emplace_back();
        if (count() == 2) {
            hang(m_Nodes[0], m_Tree.root, std::max(0.0, at(0)[1] / 2));
            hang(m_Nodes[1], m_Tree.root, std::max(0.0, at(0)[1] / 2));
            return;
        }
        for (std::size_t i = 0; i < 3; ++i) {
            const std::size_t j = (i + 1) % 3;
            const std::size_t k = (i + 2) % 3;
            hang(m_Nodes[i], m_Tree.root, std::max(0.0, (at(i)[j] + at(i)[k] - at(j)[k]) / 2));
        }
    }

private:
    [[nodiscard]] double *at(std::size_t slot) noexcept
    {
        return m_Distances.data() + slot * m_Stride;
    }
    [[nodiscard]] const double *at(std::size_t slot) const noexcept
    {
        return m_Distances.data() + slot * m_Stride;
    }

    void hang(std::size_t child, std::size_t parent, double length)
    {
        m_Tree.nodes[child].parent = parent;
        m_Tree.nodes[child].length = length;
        m_Tree.nodes[parent].children.push_back(child);
    }

    // The distances from i become those from the new node.
    void replaceDistances(std::size_t i, std::size_t j, double distance) noexcept
    {
        double sum = 0;
        for (std::size_t k = 0; k < count(); ++k) {
            if (k == i || k == j)
                continue;
            const double fromNode = (at(i)[k] + at(j)[k] - distance) / 2;
            m_Sums[k] += fromNode - at(i)[k] - at(j)[k];
            at(i)[k] = fromNode;
            at(k)[i] = fromNode;
            sum += fromNode;
        }
        m_Sums[i] = sum;
    }

    void remove(std::size_t slot) noexcept
    {
        const std::size_t last = count() - 1;
        if (slot != last) {
            std::copy_n(at(last), last, at(slot));
            for (std::size_t k = 0; k < last; ++k)
                at(k)[slot] = at(slot)[k];
            at(slot)[slot] = 0;
            m_Sums[slot] = m_Sums[last];
            m_Nodes[slot] = m_Nodes[last];
        }
        m_Sums.pop_back();
        m_Nodes.pop_back();
    }

    Tree &m_Tree;
    std::size_t m_Stride;
    std::vector<double> m_Distances;
    // Of each slot: what its row adds up to, and the node of the tree.
    std::vector<double> m_Sums;
    std::vector<std::size_t> m_Nodes;
};

} // namespace

std::optional<Tree> neighborJoining(const DistanceMatrix &distances,
                                    std::span<const std::string> names, const GoOn &goOn)
{
    Tree tree;
    tree.nodes.resize(distances.rows());
    for (std::size_t i = 0; i < std::min(names.size(), tree.nodes.size()); ++i)
        tree.nodes[i].name = names[i];
    Clusters clusters(distances, tree);
    while (clusters.count() > 3) {
        const double left = double(clusters.count()) / double(distances.rows());
        if (goOn && !goOn(1 - left * left * left))
            return std::nullopt;
        clusters.join(clusters.nearest());
    }
    clusters.finish();
    return tree;
}

} // namespace companion
