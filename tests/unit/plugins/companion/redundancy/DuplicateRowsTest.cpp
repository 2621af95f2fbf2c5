// SPDX-License-Identifier: GPL-3.0-or-later
#include "DuplicateRows.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace DuplicateRowsTest {

using companion::DuplicateGroups;

TEST(DuplicateRows, AreThoseOfAPlainSearch)
{
    std::mt19937 random(23);
    for (int turn = 0; turn < 50; ++turn) {
        std::vector<std::optional<std::string>> texts(random() % 40);
        std::vector<std::optional<companion::TextDigest>> digests;
        for (auto &text : texts) {
            if (random() % 5 != 0)
                text = std::string(random() % 3, 'A') + char('a' + random() % 4);
            digests.push_back(text ? std::optional(companion::digestOf(*text)) : std::nullopt);
        }
        std::vector<std::pair<std::uint32_t, std::uint32_t>> expected;
        std::size_t groups = 0;
        for (std::uint32_t first = 0; first < texts.size(); ++first) {
            const auto isSame = [&](std::uint32_t row) {
                return texts[first] && texts[row] == texts[first];
            };
            bool isFirst = texts[first].has_value();
            for (std::uint32_t row = 0; row < first; ++row)
                isFirst = isFirst && !isSame(row);
            std::vector<std::uint32_t> same;
            for (std::uint32_t row = first; isFirst && row < texts.size(); ++row)
                if (isSame(row))
                    same.push_back(row);
            if (same.size() < 2)
                continue;
            ++groups;
            for (const std::uint32_t row : same)
                expected.emplace_back(row, first);
        }
        const DuplicateGroups found = companion::duplicatesOf(digests);
        ASSERT_EQ(found.size(), expected.size());
        for (std::size_t i = 0; i < found.size(); ++i) {
            ASSERT_EQ(found[i].row, expected[i].first);
            ASSERT_EQ(found[i].first, expected[i].second);
        }
        ASSERT_EQ(companion::groupCount(found), groups);
    }
}

TEST(DuplicateRows, DigestsOfOtherTextsAreOthers)
{
    EXPECT_EQ(companion::digestOf("ACD"), companion::digestOf(std::string("ACD")));
    EXPECT_NE(companion::digestOf("ACD"), companion::digestOf("ADC"));
    EXPECT_NE(companion::digestOf(""), companion::digestOf(std::string_view("\0", 1)));
}

} // namespace DuplicateRowsTest
