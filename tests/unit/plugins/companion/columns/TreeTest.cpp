// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tree.h"

#include "Newick.h"

#include <gtest/gtest.h>

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

} // namespace TreeTest
