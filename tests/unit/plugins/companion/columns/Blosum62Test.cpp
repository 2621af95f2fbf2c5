// SPDX-License-Identifier: GPL-3.0-or-later
#include "Blosum62.h"

#include "KeptColumns.h"

#include <numeric>

namespace Blosum62Test {

using namespace companion;

TEST(Blosum62, EveryScoreIsThatOfThePublishedMatrix)
{
    std::ifstream file(TEST_DATA_DIR "/columns/blosum62.tsv");
    std::string line;
    ASSERT_TRUE(std::getline(file, line));
    const std::vector<std::string> head = KeptColumns::fieldsOf(line);
    ASSERT_EQ(head.size(), 25U);
    int seen = 0;
    while (std::getline(file, line)) {
        const std::vector<std::string> fields = KeptColumns::fieldsOf(line);
        ASSERT_EQ(fields.size(), 25U);
        for (std::size_t i = 1; i < fields.size(); ++i, ++seen)
            EXPECT_EQ(blosum62(fields[0][0], head[i][0]), std::stoi(fields[i]))
                << fields[0] << head[i];
    }
    EXPECT_EQ(seen, 24 * 24);
}

TEST(Blosum62, SmallLettersScoreAsCapitalOnes)
{
    EXPECT_EQ(blosum62('w', 'W'), 11);
    EXPECT_EQ(blosum62('i', 'v'), 3);
}

TEST(Blosum62, WhatTheMatrixLacksScoresAsX)
{
    for (const char letter : {'U', 'O', 'J', '\0', '-', '?', '\xff'})
        for (const char other : kBlosumLetters)
            EXPECT_EQ(blosum62(letter, other), blosum62('X', other)) << int(letter) << other;
}

TEST(Blosum62, BackgroundFrequenciesAddUpToOneButForTheirRounding)
{
    const double sum =
        std::accumulate(kBackgroundFrequencies.begin(), kBackgroundFrequencies.end(), 0.0);
    EXPECT_NEAR(sum, 1.001, 1e-12);
    // The most and the least frequent: leucine and tryptophan.
    EXPECT_EQ(kBackgroundFrequencies[kAminoAcids.find('L')], 0.092);
    EXPECT_EQ(kBackgroundFrequencies[kAminoAcids.find('W')], 0.014);
}

} // namespace Blosum62Test
