// SPDX-License-Identifier: GPL-3.0-or-later
#include "Newick.h"

#include "MadeTrees.h"

#include <gtest/gtest.h>

namespace NewickTest {

using namespace companion;
using namespace std::string_literals;

Tree read(std::string_view text)
{
    std::variant<Tree, NewickError> result = readNewick(text);
    if (const auto *error = std::get_if<NewickError>(&result)) {
        ADD_FAILURE() << text << ": " << error->text();
        return {};
    }
    return std::get<Tree>(std::move(result));
}

std::string messageOf(std::string_view text)
{
    const std::variant<Tree, NewickError> result = readNewick(text);
    const auto *error = std::get_if<NewickError>(&result);
    return error ? error->text() : "read";
}

// The same nodes, each before its children, as a reader makes them.
Tree inReadingOrder(const Tree &tree)
{
    Tree ordered;
    std::vector<std::size_t> places(tree.nodes.size());
    for (const std::size_t node : fromTheRoot(tree)) {
        const TreeNode &each = tree.nodes[node];
        places[node] = ordered.nodes.size();
        if (node == tree.root) {
            ordered.nodes.emplace_back();
            ordered.root = 0;
        } else
            ordered.addChild(places[each.parent]);
        ordered.nodes.back().name = each.name;
        ordered.nodes.back().length = each.length;
    }
    return ordered;
}

TEST(Newick, NamesAndLengthsAreWhereTheyStand)
{
    const Tree tree = read("((A:1,B:2.5)AB:0.5,C:3e-2)root;\n");
    ASSERT_EQ(tree.nodes.size(), 5U);
    EXPECT_EQ(tree.root, 0U);
    EXPECT_EQ(tree.nodes[0].name, "root");
    EXPECT_EQ(tree.nodes[0].length, std::nullopt);
    EXPECT_EQ(tree.nodes[0].children, (std::vector<std::size_t>{1, 4}));
    EXPECT_EQ(tree.nodes[1].name, "AB");
    EXPECT_EQ(tree.nodes[1].length, 0.5);
    EXPECT_EQ(tree.nodes[3].name, "B");
    EXPECT_EQ(tree.nodes[3].length, 2.5);
    EXPECT_EQ(tree.nodes[3].parent, 1U);
    EXPECT_EQ(tree.nodes[4].length, 0.03);
}

TEST(Newick, NodesMayLackEverything)
{
    const Tree tree = read("(,(,),);");
    EXPECT_EQ(tree.nodes.size(), 6U);
    EXPECT_EQ(leafOrder(tree).size(), 4U);
    EXPECT_EQ(writeNewick(tree), "(,(,),);");
}

TEST(Newick, OneNodeIsATree)
{
    EXPECT_EQ(read("only;").nodes.at(0).name, "only");
}

TEST(Newick, BlanksLinesAndCommentsBetweenPartsAreNothing)
{
    EXPECT_EQ(writeNewick(read(" [a [nested] one] ( A [x] :\t1 ,\r\n'B' : 2 ) r [&R] ; [end]\n")),
              "(A:1,B:2)r;");
}

TEST(Newick, NamesInQuotesMayHaveAnySign)
{
    const Tree tree = read("('it''s (A),[B]:1;',' ','');");
    EXPECT_EQ(tree.nodes.at(1).name, "it's (A),[B]:1;");
    EXPECT_EQ(tree.nodes.at(2).name, " ");
    EXPECT_EQ(tree.nodes.at(3).name, "");
}

TEST(Newick, UnderscoresOfNamesAreKept)
{
    EXPECT_EQ(read("(HBB_HUMAN:1,B);").nodes.at(1).name, "HBB_HUMAN");
}

TEST(Newick, NegativeLengthsAreRead)
{
    EXPECT_EQ(read("(A:-0.25,B:+1);").nodes.at(1).length, -0.25);
    EXPECT_EQ(read("(A:-0.25,B:+1);").nodes.at(2).length, 1);
}

TEST(Newick, NamesAreQuotedOnlyWhenTheyMustBe)
{
    Tree tree = read("(a,b);");
    const auto written = [&](const std::string &name) {
        tree.nodes[1].name = name;
        return writeNewick(tree);
    };
    EXPECT_EQ(written("HBB-1/2|x.3"), "(HBB-1/2|x.3,b);");
    EXPECT_EQ(written("\xc3\xa9"), "(\xc3\xa9,b);");
    EXPECT_EQ(written("HBB_HUMAN"), "('HBB_HUMAN',b);");
    EXPECT_EQ(written("two words"), "('two words',b);");
    EXPECT_EQ(written("it's"), "('it''s',b);");
    for (const char sign : "()[]:;,\t\n"s)
        EXPECT_EQ(written("a"s + sign), "('a"s + sign + "',b);") << int(sign);
}

TEST(Newick, ATreeWithoutNodesIsNoText)
{
    EXPECT_EQ(writeNewick(Tree()), "");
}

TEST(Newick, ANodeAloneThatHasNothingComesBack)
{
    Tree tree;
    tree.nodes.emplace_back();
    tree.root = 0;
    EXPECT_EQ(writeNewick(tree), "'';");
    EXPECT_EQ(read("'';"), tree);
}

TEST(Newick, RandomTreesComeBackAsTheyWere)
{
    std::mt19937 chance(1990);
    const std::string letters = "abcXYZ019_ '()[]:;,|/.-+\t\n\xc3\xa9\x7f"s;
    for (int turn = 0; turn < 300; ++turn) {
        Tree tree = MadeTrees::random(chance, 1 + chance() % 40);
        for (TreeNode &node : tree.nodes) {
            const std::size_t size = chance() % 6;
            while (node.name.size() < size)
                node.name += letters[chance() % letters.size()];
            switch (chance() % 4) {
            case 0:
                node.length.reset();
                break;
            case 1:
                node.length = MadeTrees::between(chance, -1e-9, 1e9);
                break;
            default:
                node.length = MadeTrees::between(chance, 0, 1);
            }
        }
        const std::string text = writeNewick(tree);
        EXPECT_EQ(read(text), inReadingOrder(tree)) << text;
    }
}

struct Refused
{
    friend std::ostream &operator<<(std::ostream &out, const Refused &each)
    {
        return out << each.text;
    }

    const char *name;
    std::string text;
    const char *message;
};

class NewickRefuses : public testing::TestWithParam<Refused>
{
};

TEST_P(NewickRefuses, WithItsPlaceAndCause)
{
    EXPECT_EQ(messageOf(GetParam().text), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Text, NewickRefuses,
    testing::Values(
        Refused{"Nothing", "", "line 1, column 1: there is no tree"},
        Refused{"BlanksAlone", " \n\t", "line 2, column 2: there is no tree"},
        Refused{"ASemicolonAlone", " ;", "line 1, column 2: there is no tree before ';'"},
        Refused{"NoSemicolon", "(A,B)",
                "line 1, column 6: found the end of the text, expected ';'"},
        Refused{"AParenthesisThatDoesNotClose", "((A,B);",
                "line 1, column 7: a ')' is missing: found ';', expected ',' or ')'"},
        Refused{
            "AnEndInTheMiddle", "((A,\nB",
            "line 2, column 2: a ')' is missing: found the end of the text, expected ',' or ')'"},
        Refused{"AParenthesisThatDoesNotOpen", "(A,B));",
                "line 1, column 6: found ')' without its '('"},
        Refused{"AParenthesisBehindAName", "A(B,C);", "line 1, column 2: found '(', expected ';'"},
        Refused{"ACommaOutside", "A,B;", "line 1, column 2: found ',', expected ';'"},
        Refused{"ANameOfTwoWords", "(A B,C);",
                "line 1, column 4: found \"B\", expected ',' or ')'"},
        Refused{"TwoTrees", "(A,B);\n(C,D);", "line 2, column 1: found '(' behind the tree's ';'"},
        Refused{"AQuoteThatDoesNotEnd", "(A,\n 'B,C);",
                "line 2, column 2: the quoted name does not end"},
        Refused{"ACommentThatDoesNotEnd", "(A,[B [b],C);",
                "line 1, column 4: the comment does not end"},
        Refused{"ANameBehindAQuotedOne", "('A'B,C);",
                "line 1, column 5: found \"B\", expected ',' or ')'"},
        Refused{"NoLengthBehindAColon", "(A:,B);",
                "line 1, column 4: expected a number behind ':', found ','"},
        Refused{"ALengthThatIsNoNumber", "(A:long,B);",
                "line 1, column 4: expected a number behind ':', found \"long\""},
        Refused{"ALengthWithSomethingBehind", "(A:1.5x,B);",
                "line 1, column 4: expected a number behind ':', found \"1.5x\""},
        Refused{"ALengthWithTwoSigns", "(A:+-1,B);",
                "line 1, column 4: expected a number behind ':', found \"+-1\""},
        Refused{"AnEndlessLength", "(A:inf,B);",
                "line 1, column 4: expected a number behind ':', found \"inf\""},
        Refused{"ALengthOutOfRange", "(A:1e999,B);",
                "line 1, column 4: expected a number behind ':', found \"1e999\""},
        Refused{"TwoLengths", "(A:1:2,B);", "line 1, column 5: found ':', expected ',' or ')'"},
        Refused{"AControlCharacter", "(A\0,B);"s,
                "line 1, column 3: found a control character, expected ',' or ')'"},
        Refused{"LettersOfTwoBytesBeforeIt", "(\xc3\xa9\xc3\xa9 x);",
                "line 1, column 5: found \"x\", expected ',' or ')'"},
        Refused{"AFileOfAnotherKind", ">HBB_HUMAN\nVHLTPEEK\n",
                "line 2, column 1: found \"VHLTPEEK\", expected ';'"},
        Refused{
            "AVeryLongWord", "(A " + std::string(1000, 'x') + ");",
            "line 1, column 4: found \"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx...\", expected ',' "
            "or ')'"}),
    [](const auto &info) { return std::string(info.param.name); });

TEST(Newick, MoreNodesThanATreeMayHaveAreRefused)
{
    EXPECT_EQ(messageOf("(" + std::string(kMostTreeNodes, ',') + ");"),
              "line 1, column 1000001: the tree has more than 1000000 nodes");
}

TEST(Newick, NestingWithoutAnEndIsRefused)
{
    EXPECT_EQ(messageOf(std::string(100000, '(')),
              "line 1, column 100001: a ')' is missing: found the end of the text, expected ',' or "
              "')'");
    EXPECT_EQ(messageOf(std::string(100000, '[')), "line 1, column 1: the comment does not end");
}

TEST(Newick, AnyPartOfATextFromItsStartIsRefused)
{
    const std::string text = "((A:1,'it''s':2)x[c]:0.5,(C,D):3)root;";
    for (std::size_t size = 0; size < text.size(); ++size)
        EXPECT_NE(messageOf(text.substr(0, size)), "read") << text.substr(0, size);
    EXPECT_EQ(messageOf(text), "read");
}

TEST(Newick, WhateverComesIsATreeOrHasAPlaceInTheText)
{
    std::mt19937 chance(11);
    const std::string letters = "(((),,::;;''[]AB_1.e-+ \n\0\xff"s;
    int trees = 0;
    for (int turn = 0; turn < 20000; ++turn) {
        std::string text = turn % 2 == 0 ? "((A:1,'B':2)x:0.5,C:3)r;" : "";
        const std::size_t edits = 1 + chance() % 12;
        for (std::size_t i = 0; i < edits; ++i) {
            const char letter = letters[chance() % letters.size()];
            const std::size_t place = chance() % (text.size() + 1);
            if (chance() % 3 == 0 && place < text.size())
                text.erase(place, 1);
            else
                text.insert(place, 1, letter);
        }
        const std::variant<Tree, NewickError> result = readNewick(text);
        if (const auto *error = std::get_if<NewickError>(&result)) {
            EXPECT_FALSE(error->cause.empty()) << text;
            EXPECT_LE(error->line, 1 + std::size_t(std::ranges::count(text, '\n'))) << text;
            EXPECT_LE(error->column, text.size() + 1) << text;
        } else {
            ++trees;
            const Tree &tree = std::get<Tree>(result);
            EXPECT_EQ(read(writeNewick(tree)), tree) << text;
        }
    }
    EXPECT_GT(trees, 100);
}

} // namespace NewickTest
