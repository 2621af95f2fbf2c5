// SPDX-License-Identifier: GPL-3.0-or-later
#include "NeighborJoining.h"

#include "KeptTree.h"
#include "MadeTrees.h"
#include "Newick.h"

#include <gmock/gmock.h>

namespace NeighborJoiningTest {

using namespace companion;

DistanceMatrix matrix(const std::vector<std::vector<double>> &lower)
{
    DistanceMatrix distances(lower.size() + 1);
    for (std::size_t i = 0; i < lower.size(); ++i)
        for (std::size_t k = 0; k < lower[i].size(); ++k)
            distances.set(i + 1, k, lower[i][k]);
    return distances;
}

std::vector<double> leafLengths(const Tree &tree, std::size_t rows)
{
    std::vector<double> lengths;
    for (std::size_t i = 0; i < rows; ++i)
        lengths.push_back(tree.nodes[i].length.value());
    return lengths;
}

// Every node but the root is a child of its parent, once; all inner ones have two, the root three.
void expectWhole(const Tree &tree, std::size_t rows)
{
    ASSERT_EQ(tree.nodes.size(), 2 * rows - 2);
    EXPECT_EQ(fromTheRoot(tree).size(), tree.nodes.size());
    for (std::size_t i = 0; i < tree.nodes.size(); ++i) {
        const TreeNode &node = tree.nodes[i];
        EXPECT_EQ(node.children.size(), i < rows ? 0U : i == tree.root ? 3U : 2U);
        for (const std::size_t child : node.children)
            EXPECT_EQ(tree.nodes[child].parent, i);
        EXPECT_EQ(node.length.has_value(), i != tree.root);
        EXPECT_GE(node.length.value_or(0), 0);
    }
}

// The eight of Saitou and Nei (1987), whose distances are those in a tree.
TEST(NeighborJoining, ThePublishedExampleHasItsPublishedTree)
{
    const DistanceMatrix distances = matrix({{7},
                                             {8, 5},
                                             {11, 8, 5},
                                             {13, 10, 7, 8},
                                             {16, 13, 10, 11, 5},
                                             {13, 10, 7, 8, 6, 9},
                                             {17, 14, 11, 12, 10, 13, 8}});
    const Tree tree = *neighborJoining(distances);
    expectWhole(tree, 8);
    EXPECT_THAT(leafLengths(tree, 8),
                testing::Pointwise(testing::DoubleNear(1e-12), {5, 2, 1, 3, 1, 4, 2, 6}));
    EXPECT_LT(MadeTrees::mostDifferent(MadeTrees::distancesOfRows(tree, 8), distances), 1e-12);
    EXPECT_EQ(tree.nodes[0].parent, tree.nodes[1].parent);
    EXPECT_EQ(tree.nodes[4].parent, tree.nodes[5].parent);
    EXPECT_EQ(tree.nodes[6].parent, tree.nodes[7].parent);
}

// A worked example of five: a and b, then c, d and e.
TEST(NeighborJoining, FiveRowsAreJoinedAsByHand)
{
    const Tree tree = *neighborJoining(matrix({{5}, {9, 10}, {9, 10, 8}, {8, 9, 7, 3}}),
                                       std::vector<std::string>{"a", "b", "c", "d", "e"});
    expectWhole(tree, 5);
    EXPECT_THAT(leafLengths(tree, 5),
                testing::Pointwise(testing::DoubleNear(1e-12), {2, 3, 4, 2, 1}));
    EXPECT_EQ(tree.nodes[0].name, "a");
    EXPECT_EQ(tree.nodes[4].name, "e");
}

// Distances in a tree belong to no other tree.
TEST(NeighborJoining, DistancesInATreeGiveItBack)
{
    std::mt19937 chance(1987);
    for (const std::size_t rows : {4U, 5U, 6U, 7U, 9U, 16U, 17U, 33U, 80U, 300U}) {
        const Tree made = MadeTrees::random(chance, rows);
        const DistanceMatrix distances = MadeTrees::distancesIn(made, leafOrder(made));
        const Tree tree = *neighborJoining(distances);
        expectWhole(tree, rows);
        EXPECT_LT(MadeTrees::mostDifferent(MadeTrees::distancesOfRows(tree, rows), distances), 1e-9)
            << rows;
    }
}

// Whose distances are those in no tree.
TEST(NeighborJoining, GlobinsHaveTheTreeOfTheReference)
{
    const KeptTree::Kept kept = KeptTree::read();
    const Tree tree = *neighborJoining(kept.distances.at("AlignedPairs"), kept.names);
    expectWhole(tree, kept.rows.size());
    EXPECT_LT(MadeTrees::mostDifferent(MadeTrees::distancesOfRows(tree, kept.rows.size()),
                                       kept.distances.at("tree")),
              1e-9);
    for (std::size_t i = 0; i < kept.names.size(); ++i)
        EXPECT_EQ(tree.nodes[i].name, kept.names[i]);
}

// As another program has written it.
TEST(NeighborJoining, TheTreeOfTheGlobinsIsReadFromItsFile)
{
    const KeptTree::Kept kept = KeptTree::read();
    std::ifstream file(TEST_DATA_DIR "/trees/globins.nwk");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const auto result = readNewick(text);
    ASSERT_TRUE(std::holds_alternative<Tree>(result)) << std::get<NewickError>(result).text();
    const Tree &tree = std::get<Tree>(result);
    std::vector<std::size_t> leaves;
    for (const std::string &name : kept.names) {
        const auto leaf = std::ranges::find(tree.nodes, name, &TreeNode::name);
        ASSERT_NE(leaf, tree.nodes.end()) << name;
        leaves.push_back(std::size_t(leaf - tree.nodes.begin()));
    }
    EXPECT_LT(
        MadeTrees::mostDifferent(MadeTrees::distancesIn(tree, leaves), kept.distances.at("tree")),
        1e-9);
}

TEST(NeighborJoining, ABranchThatWouldBeNegativeHasNothingAndItsSiblingAll)
{
    // Row 0 would be at 0.05 + (2.1 - 4.1) / 4 of its pair's distance.
    const Tree tree = *neighborJoining(matrix({{0.1}, {1, 2}, {1, 2, 1}}));
    expectWhole(tree, 4);
    ASSERT_EQ(tree.nodes[0].parent, tree.nodes[1].parent);
    EXPECT_EQ(tree.nodes[0].length, 0);
    EXPECT_EQ(tree.nodes[1].length, 0.1);
}

TEST(NeighborJoining, TheLastThreeHaveNoNegativeBranchEither)
{
    // Row 0 would be at (1 + 1 - 5) / 2.
    const Tree tree = *neighborJoining(matrix({{1}, {1, 5}}));
    EXPECT_EQ(leafLengths(tree, 3), (std::vector<double>{0, 2.5, 2.5}));
}

TEST(NeighborJoining, RandomDistancesGiveNoNegativeBranch)
{
    std::mt19937 chance(7);
    for (std::size_t rows = 4; rows < 40; ++rows) {
        DistanceMatrix distances(rows);
        for (std::size_t a = 0; a < rows; ++a)
            for (std::size_t b = 0; b < a; ++b)
                distances.set(a, b, MadeTrees::between(chance, 0, 1));
        expectWhole(*neighborJoining(distances), rows);
    }
}

TEST(NeighborJoining, RowsThatAreAllEquallyFarMeetInOnePlace)
{
    DistanceMatrix distances(11);
    for (std::size_t a = 0; a < 11; ++a)
        for (std::size_t b = 0; b < a; ++b)
            distances.set(a, b, 1);
    const Tree tree = *neighborJoining(distances);
    expectWhole(tree, 11);
    EXPECT_LT(MadeTrees::mostDifferent(MadeTrees::distancesOfRows(tree, 11), distances), 1e-12);
    EXPECT_EQ(tree, *neighborJoining(distances));
}

TEST(NeighborJoining, RowsThatAreAllTheSameHaveBranchesOfNoLength)
{
    const Tree tree = *neighborJoining(DistanceMatrix(6));
    expectWhole(tree, 6);
    for (const TreeNode &node : tree.nodes)
        EXPECT_EQ(node.length.value_or(0), 0);
}

TEST(NeighborJoining, FewRowsHaveTreesToo)
{
    EXPECT_EQ(neighborJoining(DistanceMatrix(0)), Tree());

    const Tree one = *neighborJoining(DistanceMatrix(1), std::vector<std::string>{"only"});
    EXPECT_EQ(one.root, 0U);
    EXPECT_EQ(leafOrder(one), std::vector<std::size_t>{0});
    EXPECT_EQ(one.nodes[0].name, "only");

    const Tree two = *neighborJoining(matrix({{3}}));
    EXPECT_EQ(two.root, 2U);
    EXPECT_EQ(leafLengths(two, 2), (std::vector<double>{1.5, 1.5}));

    const Tree three = *neighborJoining(matrix({{3}, {4, 5}}));
    expectWhole(three, 3);
    EXPECT_EQ(leafLengths(three, 3), (std::vector<double>{1, 2, 3}));
}

TEST(NeighborJoining, CanBeGivenUp)
{
    std::mt19937 chance(5);
    const Tree made = MadeTrees::random(chance, 20);
    const DistanceMatrix distances = MadeTrees::distancesIn(made, leafOrder(made));
    int asked = 0;
    double before = -1;
    const auto follow = [&](int most) {
        asked = 0;
        before = -1;
        return neighborJoining(distances, {}, [&, most](double done) {
            EXPECT_GT(done, before);
            EXPECT_LT(done, 1);
            before = done;
            return ++asked < most;
        });
    };
    EXPECT_FALSE(follow(5));
    EXPECT_EQ(asked, 5);
    EXPECT_EQ(follow(1000), neighborJoining(distances));
    EXPECT_EQ(asked, 17);
}

} // namespace NeighborJoiningTest
