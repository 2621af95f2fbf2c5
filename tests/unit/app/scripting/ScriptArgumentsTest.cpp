// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScriptArguments.h"

#include <gtest/gtest.h>

namespace ScriptArgumentsTest {

using TAMBO::app::scriptArguments;
using Words = std::vector<std::string>;

struct Row
{
    const char *name;
    const char *text;
    Words words;
};

class ScriptArgumentsTest : public testing::TestWithParam<Row>
{
};

TEST_P(ScriptArgumentsTest, Words)
{
    const auto words = scriptArguments(QString::fromUtf8(GetParam().text));
    ASSERT_TRUE(words.has_value());
    EXPECT_EQ(words.value(), GetParam().words);
}

INSTANTIATE_TEST_SUITE_P(
    Table, ScriptArgumentsTest,
    testing::Values(Row{"NothingIsNoWord", "", {}}, Row{"SpacesAreNoWord", "   ", {}},
                    Row{"SpacesPart", " a  bc\t--d=1 ", {"a", "bc", "--d=1"}},
                    Row{"QuotesKeepSpaces", "'a b' \"c d\"", {"a b", "c d"}},
                    Row{"QuotesWithinAWord", "--name='a b'c", {"--name=a bc"}},
                    Row{"AnEmptyWordStandsInQuotes", "a '' b", {"a", "", "b"}},
                    Row{"ABackslashKeepsASpace", "a\\ b", {"a b"}},
                    Row{"SingleQuotesKeepABackslash", "'a\\b'", {"a\\b"}},
                    Row{"OneQuoteWithinTheOther", "\"it's\"", {"it's"}},
                    Row{"NothingIsExpanded", "*.py $HOME ~", {"*.py", "$HOME", "~"}},
                    Row{"OtherScripts", "Å", {"Å"}}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(ScriptArguments, AQuoteWithoutAnEndIsRefused)
{
    const auto words = scriptArguments("a 'b c");
    ASSERT_FALSE(words.has_value());
    EXPECT_EQ(words.error().message(), "The arguments have a ' without a second one: a 'b c");
}

} // namespace ScriptArgumentsTest
