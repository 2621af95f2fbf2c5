// SPDX-License-Identifier: GPL-3.0-or-later
// The parts of a model that residues are in by their scores.
#include "ResidueScores.h"

#include <gtest/gtest.h>

#include <random>

namespace ResidueScoresTest {

using companion::ResidueScores;
using companion::scoresIn;
using Scores = std::vector<std::optional<double>>;

TEST(ResidueScoresTest, TheValueIsReadAndWhatIsNoNumberIsNone)
{
    EXPECT_EQ(scoresIn("-1.5 - 0.25 x nan 3"),
              (Scores{-1.5, std::nullopt, 0.25, std::nullopt, std::nullopt, 3}));
    EXPECT_EQ(scoresIn(""), Scores());
}

TEST(ResidueScoresTest, LikePartsAreCountedFromTheLowest)
{
    const ResidueScores scores({5, 1, std::nullopt, 3, 2, 4, 10, 9, 8, 7, 6});
    EXPECT_EQ(scores.partOf(1, 5), 0U);
    EXPECT_EQ(scores.partOf(4, 5), 0U);
    EXPECT_EQ(scores.partOf(3, 5), 1U);
    EXPECT_EQ(scores.partOf(6, 5), 4U);
    EXPECT_EQ(scores.partOf(7, 5), 4U);
    EXPECT_EQ(scores.partOf(2, 5), std::nullopt);
    EXPECT_EQ(scores.partOf(11, 5), std::nullopt);
    EXPECT_EQ(scores.of(0), 5.0);
}

TEST(ResidueScoresTest, EqualScoresAreInOnePartAndLowerOnesInNoHigher)
{
    for (unsigned seed = 1; seed <= 200; ++seed) {
        std::mt19937 random(seed);
        Scores values(1 + seed % 40);
        for (auto &value : values)
            value = double(random() % 7) - 3;
        const ResidueScores scores(values);
        for (std::size_t i = 0; i < values.size(); ++i) {
            ASSERT_LT(*scores.partOf(i, 5), 5U);
            for (std::size_t k = 0; k < values.size(); ++k) {
                if (*values[i] == *values[k])
                    ASSERT_EQ(scores.partOf(i, 5), scores.partOf(k, 5));
                if (*values[i] < *values[k])
                    ASSERT_LE(*scores.partOf(i, 5), *scores.partOf(k, 5));
            }
        }
    }
}

} // namespace ResidueScoresTest
