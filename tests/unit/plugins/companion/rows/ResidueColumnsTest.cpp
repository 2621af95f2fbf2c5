// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueColumns.h"

#include <gtest/gtest.h>

#include <random>

namespace ResidueColumnsTest {

TEST(ResidueColumns, GappyColumnsAreThoseOfAPlainCount)
{
    std::mt19937 random(11);
    for (int turn = 0; turn < 100; ++turn) {
        const unsigned long rows = 1 + random() % 20;
        const unsigned long columns = 1 + random() % 30;
        std::vector<std::string> texts(rows);
        for (std::string &text : texts)
            for (unsigned long col = 0; col < columns; ++col)
                text += random() % 10 < col % 11 ? '-' : 'A';
        std::vector<std::uint32_t> residues(columns);
        for (const std::string &text : texts)
            companion::countResidues(text, residues);
        for (const unsigned percent : {0U, 10U, 50U, 90U, 100U}) {
            unsigned long count = 0;
            unsigned long inThem = 0;
            std::vector<bool> expected(columns);
            for (unsigned long col = 0; col < columns; ++col) {
                unsigned long gaps = 0;
                for (const std::string &text : texts)
                    gaps += text[col] == '-' ? 1 : 0;
                expected[col] = gaps * 100 > rows * percent;
                count += expected[col] ? 1 : 0;
                inThem += expected[col] ? rows - gaps : 0;
            }
            const companion::GappyColumns found =
                companion::gappyColumns(residues, rows, percent / 100.0);
            ASSERT_EQ(found.columns, expected);
            ASSERT_EQ(found.count, count);
            ASSERT_EQ(found.residues, inThem);
        }
    }
}

TEST(ResidueColumns, JustAsManyGapsAsAllowedAreNotTooMany)
{
    // 3 of 10 and 7 of 10, which no binary number is.
    const std::vector<std::uint32_t> residues = {7, 3};
    EXPECT_EQ(companion::gappyColumns(residues, 10, 0.3).columns, (std::vector<bool>{false, true}));
    EXPECT_EQ(companion::gappyColumns(residues, 10, 0.7).count, 0U);
}

} // namespace ResidueColumnsTest
