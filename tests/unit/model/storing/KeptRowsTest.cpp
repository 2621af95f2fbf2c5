// SPDX-License-Identifier: GPL-3.0-or-later
#include "StoringFixture.h"

#include "AlignmentTable.h"

#include <gtest/gtest.h>

#include <random>

namespace KeptRowsTest {

using TAMBO::ObjectStore;

class KeptRows : public StoringFixture, public testing::WithParamInterface<unsigned>
{
protected:
    unsigned long below(unsigned long end) { return std::mt19937::result_type(m_Random()) % end; }

    // Rows enough for several parts.
    TAMBO::Alignment &family(std::size_t count)
    {
        std::vector<std::pair<TAMBO::Peptide *, std::string>> rows;
        for (std::size_t i = 0; i < count; ++i)
            rows.emplace_back(&peptide("s" + std::to_string(i), "MKVL"), "M-K-VL");
        return alignment("family", rows);
    }
    void change(TAMBO::Alignment &rows, ObjectStore &store)
    {
        const TAMBO::StoredObject &stored = *TAMBO::StoredObject::from(&rows);
        const unsigned long row = below(rows.height());
        if (below(4) == 0) {
            const unsigned long to = below(rows.height());
            if (store.keepMove(stored, row, to))
                rows.bubbleRow(row, to);
        } else {
            store.keepRow(stored, row);
            rows.insertGap(row, below(6));
        }
    }

private:
    std::mt19937 m_Random{GetParam()};
};

TEST_P(KeptRows, AreWrittenAsTheyWereWhateverHasChangedMeanwhile)
{
    TAMBO::Alignment &rows = family(2500);
    const Pieces expected = piecesOfSpace(1);
    ObjectStore store(space());
    Pieces pieces;
    TAMBO::ObjectWriter out;
    const unsigned long first = below(expected.size() - 4);
    while (store.writeNext(out, 1)) {
        pieces.push_back(out.take());
        for (int i = 0; pieces.size() >= first && i < 5; ++i)
            change(rows, store);
    }
    EXPECT_GT(rows.width(), 6u);
    EXPECT_TRUE(pieces == expected);
}

INSTANTIATE_TEST_SUITE_P(Random, KeptRows, testing::Range(0U, 8U));

TEST_F(StoringFixture, RowsThatMoveAgainAndAgainAreNotFollowedForEver)
{
    TAMBO::Alignment &rows =
        alignment("family", {{&peptide("one", "MKV"), "MKV"}, {&peptide("two", "MKV"), "MKV"}});
    ObjectStore store(space());
    int moves = 0;
    while (moves < 10'000 && store.keepMove(*TAMBO::StoredObject::from(&rows), 0, 1))
        ++moves;
    EXPECT_GT(moves, 10);
    EXPECT_LT(moves, 1000);
}

TEST_F(StoringFixture, WhatIsLeftToWriteIsLittleWhenMostIsWritten)
{
    for (int i = 0; i < 100; ++i)
        peptide("s", std::string(200, 'A'));
    ObjectStore store(space());
    EXPECT_FALSE(store.isBelow(20'000));
    TAMBO::ObjectWriter out;
    while (store.written() < 90)
        ASSERT_TRUE(store.writeNext(out, 1));
    EXPECT_TRUE(store.isBelow(20'000));
}

} // namespace KeptRowsTest
