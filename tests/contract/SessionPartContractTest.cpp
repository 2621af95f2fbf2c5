// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on when they keep state with the user's work. How it is kept is tried beside
// who keeps it.
#include "SessionPart.h"

#include "support/LogLines.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace SessionPartContractTest {

static_assert(!std::is_copy_constructible_v<SessionPart>);

class Part final : public SessionPart
{
public:
    explicit Part(const std::string &name) : SessionPart(name) { }

    std::string store() const override { return {}; }
    void restore(const std::string &) override { }
};

// As a library holds it.
Part s_Static("static part");

TEST(SessionPartContract, APartHasItsName)
{
    const Part part("one");
    EXPECT_TRUE(part.isGood());
    EXPECT_EQ(part.name(), "one");
    EXPECT_TRUE(s_Static.isGood());
}

TEST(SessionPartContract, ASecondPartOfANameIsRefusedWithALine)
{
    const LogLines lines;
    {
        const Part part("one");
        Part second("one");
        EXPECT_FALSE(second.isGood());
        second.hasChanged();
        EXPECT_EQ(lines.texts(), (QStringList{"The part \"one\" of a plug-in is not kept: there is "
                                              "one of this name."}));
    }
    EXPECT_TRUE(Part("one").isGood());
    EXPECT_EQ(lines.count(), 1);
}

TEST(SessionPartContract, TheEndOfARefusedPartLeavesTheOtherAlone)
{
    const Part part("one");
    {
        const Part second("one");
    }
    EXPECT_FALSE(Part("one").isGood());
}

struct BadName
{
    const char *title;
    std::string name;
    QString cause;
};

class BadNames : public testing::TestWithParam<BadName>
{
};

TEST_P(BadNames, AreRefusedWithALine)
{
    const LogLines lines;
    EXPECT_FALSE(Part(GetParam().name).isGood());
    ASSERT_EQ(lines.count(), 1);
    EXPECT_TRUE(lines.texts().front().contains(GetParam().cause))
        << lines.texts().front().toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    SessionPartContract, BadNames,
    testing::Values(BadName{"AnEmptyName", "", "its name is empty"},
                    BadName{"ALongName", std::string(SessionPart::kLongestName + 1, 'x'),
                            "its name has more than 100 bytes"},
                    BadName{"ANameWithALineEnd", "a\nb", "its name has characters"},
                    BadName{"ANameThatIsNoText", "a\xff", "its name has characters"}),
    [](const auto &info) { return std::string(info.param.title); });

} // namespace SessionPartContractTest
