// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueLetters.h"

#include <gtest/gtest.h>

namespace ResidueLettersTest {

TEST(ResidueLetters, HaveTheirPlaces)
{
    EXPECT_EQ(ZEP::kResidueLetters, "ARNDCQEGHILKMFPSTWYVX");
    EXPECT_EQ(ZEP::residueLetterIndex('A'), 0U);
    EXPECT_EQ(ZEP::residueLetterIndex('V'), 19U);
    EXPECT_EQ(ZEP::residueLetterIndex('X'), 20U);
}

TEST(ResidueLetters, EveryOtherByteCountsAsX)
{
    for (int byte = 0; byte < 256; ++byte) {
        const char letter = static_cast<char>(byte);
        if (ZEP::kResidueLetters.find(letter) == std::string_view::npos) {
            EXPECT_EQ(ZEP::residueLetterIndex(letter), 20U) << byte;
        }
    }
}

} // namespace ResidueLettersTest
