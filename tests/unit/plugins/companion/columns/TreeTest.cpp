// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tree.h"

#include "MadeTrees.h"
#include "Newick.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace TreeTest {

using namespace companion;

Tree treeOf(std::string_view text)
{
    return std::get<Tree>(readNewick(text));
}

std::string namesOf(const Tree &tree, const std::vector<std::size_t> &nodes)
{
    std::string names;
    for (const std::size_t node : nodes)
        names += tree.nodes[node].name;
    return names;
}

TreePlace placeOf(const Tree &tree, std::string_view name)
{
    const std::vector<TreePlace> places = treePlaces(tree);
    for (std::size_t i = 0; i < places.size(); ++i)
        if (tree.nodes[i].name == name)
            return places[i];
    ADD_FAILURE() << name;
    return {};
}

TEST(Tree, NodesComeBeforeTheirChildrenAndLeavesFromTopToBottom)
{
    const Tree tree = treeOf("((a,b)x,c,(d,(e,f)z)y)r;");
    EXPECT_EQ(namesOf(tree, fromTheRoot(tree)), "rxabcydzef");
    EXPECT_EQ(namesOf(tree, leafOrder(tree)), "abcdef");
}

TEST(Tree, OneNodeIsItsOwnLeafAndNoneHasNone)
{
    EXPECT_EQ(namesOf(treeOf("a;"), leafOrder(treeOf("a;"))), "a");
    EXPECT_TRUE(leafOrder(Tree()).empty());
    EXPECT_TRUE(treePlaces(Tree()).empty());
}

TEST(Tree, SmallerBranchesComeToTheTopAndEqualOnesStay)
{
    Tree tree = treeOf("(((a,b,c),d),(e,f),g,(h,i));");
    ladderize(tree);
    EXPECT_EQ(namesOf(tree, leafOrder(tree)), "gefhidabc");
}

TEST(Tree, DepthsAreSumsOfLengthsAndRowsTheMiddleOfTheirChildren)
{
    const Tree tree = treeOf("((a:1,b:2,c:4)x:0.5,d:3)r:9;");
    EXPECT_EQ(placeOf(tree, "r").depth, 0);
    EXPECT_EQ(placeOf(tree, "x").depth, 0.5);
    EXPECT_EQ(placeOf(tree, "c").depth, 4.5);
    EXPECT_EQ(placeOf(tree, "a").row, 0);
    EXPECT_EQ(placeOf(tree, "d").row, 3);
    EXPECT_EQ(placeOf(tree, "x").row, 1);
    EXPECT_EQ(placeOf(tree, "r").row, 2);
}

TEST(Tree, ATreeWithoutLengthsHasStepsOfOne)
{
    const Tree tree = treeOf("((a,b)x,c);");
    EXPECT_EQ(placeOf(tree, "a").depth, 2);
    EXPECT_EQ(placeOf(tree, "c").depth, 1);
}

TEST(Tree, OneLengthThatIsMissingAmongOthersIsNothing)
{
    const Tree tree = treeOf("((a:2,b)x,c:1);");
    EXPECT_EQ(placeOf(tree, "x").depth, 0);
    EXPECT_EQ(placeOf(tree, "a").depth, 2);
    EXPECT_EQ(placeOf(tree, "b").depth, 0);
}

TEST(Tree, ATreeMayBeAsDeepAsItHasNodes)
{
    constexpr std::size_t kDepth = 200000;
    Tree tree = treeOf(std::string(kDepth, '(') + "a" + std::string(kDepth, ')') + ";");
    ladderize(tree);
    EXPECT_EQ(leafOrder(tree), std::vector<std::size_t>{kDepth});
    EXPECT_EQ(treePlaces(tree).back().depth, double(kDepth));
    EXPECT_EQ(writeNewick(tree).size(), 2 * kDepth + 2);
}

// ---- The root in the middle

TEST(Tree, GetsItsRootInTheMiddleOfTheLongestWay)
{
    Tree tree = treeOf("(a:1,b:2,(c:3,(d:1,e:8)y:1)x:1);");
    rootInTheMiddle(tree);
    // From b to e it is 12.
    EXPECT_EQ(writeNewick(tree), "((d:1,(c:3,(a:1,b:2)x:1)y:1):2,e:6);");
    EXPECT_EQ(placeOf(tree, "e").depth, 6);
    EXPECT_EQ(placeOf(tree, "b").depth, 6);
    EXPECT_EQ(tree.nodes[tree.root].children.size(), 2u);
}

TEST(Tree, KeepsTheNamesOfBranchesWhenTheyAreTurnedRound)
{
    Tree tree = treeOf("((a:1,b:1)ab:1,c:1,(d:1,(e:1,f:9)ef:1)def:1);");
    rootInTheMiddle(tree);
    // The branch between def and ef separates e and f from all others, that of def a, b and c.
    EXPECT_EQ(writeNewick(tree), "((e:1,(d:1,((a:1,b:1)ab:1,c:1)def:1)ef:1):2.5,f:6.5);");
}

TEST(Tree, StaysAsItIsWhenNoWayHasAMiddle)
{
    for (const char *const text :
         {"(a:1,b:5);", "a;", "(a,b,(c,d));", "(a:0,b:0,c:0);", "(a:1,b:-1,c:3);"}) {
        Tree tree = treeOf(text);
        rootInTheMiddle(tree);
        EXPECT_EQ(tree, treeOf(text)) << text;
    }
}

TEST(Tree, OfAnyKindKeepsItsWaysAndHasTheRootAsFarFromBothEndsOfTheLongest)
{
    std::mt19937 chance(5);
    for (int round = 0; round < 100; ++round) {
        Tree tree = MadeTrees::random(chance, 3 + chance() % 40);
        std::vector<std::size_t> leaves = leafOrder(tree);
        const DistanceMatrix before = MadeTrees::distancesIn(tree, leaves);
        rootInTheMiddle(tree);
        const DistanceMatrix after = MadeTrees::distancesIn(tree, leaves);
        EXPECT_LT(MadeTrees::mostDifferent(before, after), 1e-12);
        std::vector<std::size_t> found = leafOrder(tree);
        std::ranges::sort(found);
        std::ranges::sort(leaves);
        EXPECT_EQ(found, leaves);
        double longest = 0;
        double deepest = 0;
        const std::vector<TreePlace> places = treePlaces(tree);
        for (std::size_t i = 0; i < leaves.size(); ++i) {
            deepest = std::max(deepest, places[leaves[i]].depth);
            for (std::size_t k = 0; k < i; ++k)
                longest = std::max(longest, before.at(i, k));
        }
        EXPECT_NEAR(deepest, longest / 2, 1e-12);
        for (const std::size_t node : fromTheRoot(tree)) {
            EXPECT_NE(tree.nodes[node].children.size(), 1u);
            for (const std::size_t child : tree.nodes[node].children)
                EXPECT_EQ(tree.nodes[child].parent, node);
        }
    }
}

} // namespace TreeTest
