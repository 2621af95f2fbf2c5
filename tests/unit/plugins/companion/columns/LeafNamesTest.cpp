// SPDX-License-Identifier: GPL-3.0-or-later
#include "LeafNames.h"

#include "Newick.h"

#include <gtest/gtest.h>

namespace LeafNamesTest {

using namespace companion;
using Names = std::vector<std::string>;
using Places = std::vector<std::size_t>;

LeafNames matchOf(std::string_view newick, const Names &names)
{
    return findLeafRows(std::get<Tree>(readNewick(newick)), names);
}

TEST(LeavesByName, AreTheRowsOfTheirNames)
{
    const LeafNames match = matchOf("((c,a),b);", {"a", "b", "c"});
    EXPECT_TRUE(match.isComplete());
    EXPECT_EQ(match.rows, (Places{2, 0, 1}));
}

TEST(LeavesByName, MayHaveUnderscoresForBlanksAndSignsUnlessARowHasTheVeryName)
{
    EXPECT_EQ(matchOf("(one_two,a_b_c_);", {"a:b(c)", "one two"}).rows, (Places{1, 0}));
    EXPECT_EQ(matchOf("(a_b,'a b');", {"a b", "a_b"}).rows, (Places{1, 0}));
}

TEST(LeavesByName, ThatAreUnknownOrDoubledAreToldAsNodesAndMissingRowsAsRows)
{
    // Nodes are counted as they stand in the text: the root, a, x, a.
    const LeafNames match = matchOf("(a,x,a);", {"a", "b"});
    EXPECT_FALSE(match.isComplete());
    EXPECT_EQ(match.unknown, Places{2});
    EXPECT_EQ(match.doubled, Places{3});
    EXPECT_EQ(match.missing, Places{1});
}

TEST(LeavesByName, ThatSeveralRowsHaveHideWhichRowsAreMissing)
{
    const LeafNames match = matchOf("(a,b);", {"a", "a", "b", "c"});
    EXPECT_EQ(match.ambiguous, (std::vector<LeafNames::Ambiguous>{{1, 2}}));
    EXPECT_TRUE(match.missing.empty());
    EXPECT_FALSE(match.isComplete());
}

} // namespace LeafNamesTest
