// SPDX-License-Identifier: GPL-3.0-or-later
#include "ShownTree.h"

#include "LeafRows.h"
#include "Newick.h"
#include "unit/plugins/companion/columns/MadeTrees.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <set>
#include <string>

namespace ShownTreeTest {

using namespace companion;
using Way = ShownTree::Way;

Tree treeOf(std::string_view text)
{
    return std::get<Tree>(readNewick(text));
}

// Leaves are the letters of their rows.
class AShownTree : public testing::Test
{
protected:
    void show(std::string_view newick, std::string_view rows)
    {
        m_Tree = treeOf(newick);
        const std::vector<std::size_t> leaves = leafOrder(m_Tree);
        m_Shown.show(m_Tree, [&](std::size_t leaf) {
            const std::size_t row = rows.find(m_Tree.nodes[leaves[leaf]].name);
            return row == std::string_view::npos ? kNoRow : static_cast<unsigned long>(row);
        });
        m_RowNames = rows;
    }
    // From top to bottom.
    std::string order() const
    {
        std::string names;
        for (const unsigned long row : m_Shown.rows())
            names += m_RowNames[row];
        return names;
    }
    std::size_t node(std::string_view name) const
    {
        for (std::size_t i = 0; i < m_Shown.nodes().size(); ++i)
            if (m_Tree.nodes[m_Shown.nodes()[i].node].name == name)
                return i;
        ADD_FAILURE() << name;
        return 0;
    }
    double line(std::string_view name) const { return m_Shown.nodes()[node(name)].line; }
    double depth(std::string_view name) const { return m_Shown.nodes()[node(name)].depth; }
    std::string way(std::string_view from, Way way) const
    {
        return m_Tree.nodes[m_Shown.nodes()[m_Shown.next(node(from), way)].node].name;
    }

    Tree m_Tree;
    ShownTree m_Shown;
    std::string m_RowNames;
};

TEST_F(AShownTree, TurnsItsBranchesSoThatRowsStandInOrderWhenTheyCan)
{
    show("((d,c)x,(b,a)y)r;", "abcd");
    EXPECT_TRUE(m_Shown.isInOrder());
    EXPECT_EQ(order(), "abcd");
    show("((d,c)x,(b,a)y)r;", "acbd");
    EXPECT_FALSE(m_Shown.isInOrder());
}

TEST_F(AShownTree, HasSmallCladesAtTheTopWhenRowsStandInAnotherOrder)
{
    show("(((a,b,c)w,d)x,(e,f)y,g)r;", "adbecfg");
    EXPECT_FALSE(m_Shown.isInOrder());
    EXPECT_EQ(order(), "gefdabc");
}

TEST_F(AShownTree, RowsThatAreNotInItMayStandBetween)
{
    show("((a,b)x,(c,d)y)r;", "aZbYcXd");
    EXPECT_TRUE(m_Shown.isInOrder());
    m_Shown.setAtRows(true);
    EXPECT_EQ(line("a"), 0.5);
    EXPECT_EQ(line("b"), 2.5);
    EXPECT_EQ(line("x"), 1.5);
    EXPECT_EQ(line("d"), 6.5);
    EXPECT_EQ(line("r"), 3.5);
}

TEST_F(AShownTree, HasALineForEachLeafWhenItIsNotAtTheRows)
{
    show("((a,b)x,(c,d)y)r;", "aZbYcXd");
    EXPECT_EQ(line("d"), 3.5);
    EXPECT_EQ(line("x"), 1);
    EXPECT_EQ(line("r"), 2);
    EXPECT_EQ(m_Shown.lines(), 4);
}

TEST_F(AShownTree, IsNotAtRowsThatStandInAnotherOrder)
{
    show("((a,b)x,(c,d)y)r;", "acbd");
    m_Shown.setAtRows(true);
    EXPECT_FALSE(m_Shown.isAtRows());
    EXPECT_EQ(m_Shown.lines(), 4);
}

TEST_F(AShownTree, LeavesWhoseRowsAreGoneAndNodesThatJoinNothingAreLeftOut)
{
    show("((a:1,b:1)x:2,((c:1,d:1)z:3,e:1)y:1)r;", "abc");
    EXPECT_EQ(order(), "abc");
    EXPECT_EQ(m_Shown.nodes().size(), 5u);
    EXPECT_EQ(depth("c"), 5);
    EXPECT_EQ(depth("a"), 3);
    // Of what is left the branches part at x.
    show("((a:1,b:1)x:2,((c:1,d:1)z:3,e:1)y:1)r;", "ab");
    EXPECT_EQ(m_Shown.nodes().size(), 3u);
    EXPECT_EQ(depth("x"), 0);
    EXPECT_EQ(depth("a"), 1);
    EXPECT_EQ(m_Shown.farthest(), 1);
}

TEST_F(AShownTree, WithoutARowIsEmptyAndWithOneIsALeaf)
{
    show("((a,b)x,(c,d)y)r;", "Z");
    EXPECT_TRUE(m_Shown.nodes().empty());
    EXPECT_EQ(m_Shown.lines(), 0);
    show("((a,b)x,(c,d)y)r;", "c");
    ASSERT_EQ(m_Shown.nodes().size(), 1u);
    EXPECT_TRUE(m_Shown.nodes().front().isLeaf());
    m_Shown.clear();
    EXPECT_TRUE(m_Shown.nodes().empty());
}

TEST_F(AShownTree, ACollapsedCladeHasOneLineAndKeepsItsRowsWhenItIsAtThem)
{
    show("((a,b,c)x,(d,e)y)r;", "abcde");
    m_Shown.setCollapsed(node("x"), true);
    EXPECT_EQ(m_Shown.lines(), 3);
    EXPECT_EQ(line("x"), 0.5);
    EXPECT_EQ(line("e"), 2.5);
    EXPECT_FALSE(m_Shown.isDrawn(node("b")));
    EXPECT_TRUE(m_Shown.isDrawn(node("x")));
    EXPECT_EQ(m_Shown.nodes()[node("x")].leaves(), 3u);
    m_Shown.setAtRows(true);
    EXPECT_EQ(line("x"), 1.5);
    EXPECT_EQ(m_Shown.nodes()[node("x")].firstLine, 0.5);
    EXPECT_EQ(m_Shown.nodes()[node("x")].lastLine, 2.5);
    EXPECT_EQ(line("e"), 4.5);
    m_Shown.expandAll();
    EXPECT_TRUE(m_Shown.isDrawn(node("b")));
    EXPECT_FALSE(m_Shown.hasCollapsed());
}

TEST_F(AShownTree, StaysCollapsedWhenRowsComeAndGo)
{
    const std::string newick = "((a,b,c)x,(d,e)y)r;";
    show(newick, "abcde");
    m_Shown.setCollapsed(node("x"), true);
    show(newick, "abde");
    EXPECT_TRUE(m_Shown.nodes()[node("x")].isCollapsed);
    EXPECT_EQ(m_Shown.lines(), 3);
}

TEST_F(AShownTree, KeysLeadToParentsChildrenAndNeighbors)
{
    show("((a,b)x,c,(d,(e,f)z)y)r;", "abcdef");
    EXPECT_EQ(way("b", Way::ToParent), "x");
    EXPECT_EQ(way("r", Way::ToParent), "r");
    EXPECT_EQ(way("y", Way::ToChildren), "d");
    EXPECT_EQ(way("f", Way::ToChildren), "f");
    EXPECT_EQ(way("a", Way::Down), "b");
    EXPECT_EQ(way("b", Way::Down), "c");
    EXPECT_EQ(way("f", Way::Down), "f");
    EXPECT_EQ(way("r", Way::Down), "r");
    EXPECT_EQ(way("y", Way::Up), "c");
    EXPECT_EQ(way("d", Way::Up), "c");
    EXPECT_EQ(way("e", Way::Up), "d");
    EXPECT_EQ(way("a", Way::Up), "a");
    m_Shown.setCollapsed(node("y"), true);
    EXPECT_EQ(way("y", Way::ToChildren), "y");
}

TEST_F(AShownTree, FindsWhatIsShownOfANodeOfTheTree)
{
    show("((a,b)x,(c,d)y)r;", "abc");
    EXPECT_EQ(m_Shown.shownOf(m_Shown.nodes()[node("c")].node), node("c"));
    // Of y one child is left, so it is no node of its own; d is none at all.
    EXPECT_EQ(m_Shown.shownOf(m_Tree.nodes[m_Shown.nodes()[node("c")].node].parent), 0u);
    EXPECT_EQ(m_Shown.shownOf(10'000), 0u);
}

// Of trees and rows by chance, with some rows gone and some added: what holds for any.
TEST(ShownTrees, HaveEachRowOnceAndTheLinesOfCladesInsideThoseOfTheirParents)
{
    std::mt19937 chance(3);
    for (int round = 0; round < 200; ++round) {
        const std::size_t count = 1 + chance() % 40;
        const Tree tree = MadeTrees::random(chance, count);
        std::vector<unsigned long> rows(count);
        std::iota(rows.begin(), rows.end(), 0UL);
        if (round % 2 == 0)
            std::shuffle(rows.begin(), rows.end(), chance);
        for (unsigned long &row : rows)
            row = chance() % 5 == 0 ? kNoRow : 2 * row;
        ShownTree shown;
        shown.show(tree, [&](std::size_t leaf) { return rows[leaf]; });
        std::multiset<unsigned long> expected(rows.begin(), rows.end());
        expected.erase(kNoRow);
        EXPECT_EQ(std::multiset<unsigned long>(shown.rows().begin(), shown.rows().end()), expected);
        EXPECT_EQ(shown.isInOrder() && !shown.rows().empty(),
                  std::ranges::is_sorted(shown.rows()) && !shown.rows().empty());
        if (round % 2 != 0) {
            EXPECT_TRUE(shown.isInOrder() || shown.rows().empty()) << "as the tree has them";
        }
        for (const bool isAtRows : {false, true}) {
            shown.setAtRows(isAtRows);
            for (const ShownNode &each : shown.nodes()) {
                EXPECT_LE(each.firstLine, each.line);
                EXPECT_LE(each.line, each.lastLine);
                EXPECT_LE(each.depth, each.farthest);
                if (each.parent == kNoNode)
                    continue;
                const ShownNode &parent = shown.nodes()[each.parent];
                EXPECT_LE(parent.firstLine, each.firstLine);
                EXPECT_LE(each.lastLine, parent.lastLine);
                EXPECT_LE(each.line, parent.lastChildLine);
                EXPECT_GE(parent.leaves(), 2u);
                EXPECT_LE(each.end, parent.end);
                if (each.isLeaf() && shown.isAtRows()) {
                    EXPECT_EQ(each.line, double(shown.rows()[each.firstLeaf]) + 0.5);
                }
            }
        }
    }
}

TEST(ShownTrees, MayBeAsDeepAsTheyHaveNodes)
{
    Tree tree;
    tree.nodes.emplace_back();
    tree.root = 0;
    constexpr std::size_t kDeep = 50'000;
    std::size_t node = 0;
    for (std::size_t i = 0; i < kDeep; ++i) {
        tree.addChild(node);
        node = tree.addChild(node);
    }
    ShownTree shown;
    shown.show(tree, [](std::size_t leaf) { return static_cast<unsigned long>(leaf); });
    EXPECT_TRUE(shown.isInOrder());
    EXPECT_EQ(shown.rows().size(), kDeep + 1);
    EXPECT_EQ(shown.farthest(), double(kDeep));
    EXPECT_EQ(shown.next(shown.nodes().size() - 1, Way::Up), shown.nodes().size() - 2);
}

} // namespace ShownTreeTest
