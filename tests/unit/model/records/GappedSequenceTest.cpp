// SPDX-License-Identifier: GPL-3.0-or-later
#include "GappedSequence.h"

#include <gtest/gtest.h>

#include <string>

namespace GappedSequenceTest {

using TAMBO::GappedSequence;

TEST(GappedSequence, StartsEmpty)
{
    const GappedSequence sequence;
    EXPECT_EQ(sequence.width, 0U);
    EXPECT_EQ(sequence.text(), "");
}

TEST(GappedSequence, HyphensDotsAndTildesAreGapsAndAllElseAreLetters)
{
    GappedSequence sequence;
    sequence.append("A-c.*~X?");
    EXPECT_EQ(sequence.letters, "Ac*X?");
    EXPECT_EQ(sequence.text(), "A-c-*-X?");
    EXPECT_EQ(sequence.width, 8U);
    EXPECT_EQ(sequence.occupancy, std::vector<std::uint64_t>{0b11010101});
}

TEST(GappedSequence, AppendedPiecesJoinAtEveryWordBoundary)
{
    for (const std::size_t width : {63U, 64U, 65U, 127U, 128U, 129U}) {
        std::string expected;
        GappedSequence sequence;
        while (expected.size() + 9 <= width) {
            sequence.append("AC-DE---F");
            expected += "AC-DE---F";
        }
        sequence.appendGaps(width - expected.size());
        expected.resize(width, '-');
        EXPECT_EQ(sequence.text(), expected);
        EXPECT_EQ(sequence.occupancy.size(), (width + 63) / 64);
        sequence.append("WY");
        EXPECT_EQ(sequence.text(), expected + "WY");
    }
}

TEST(GappedSequence, GapsAloneHoldNoLetter)
{
    GappedSequence sequence;
    sequence.appendGaps(130);
    EXPECT_EQ(sequence.text(), std::string(130, '-'));
    EXPECT_TRUE(sequence.letters.empty());
    EXPECT_EQ(sequence.occupancy, std::vector<std::uint64_t>(3));
}

} // namespace GappedSequenceTest
