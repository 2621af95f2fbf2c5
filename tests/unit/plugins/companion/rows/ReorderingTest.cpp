// SPDX-License-Identifier: GPL-3.0-or-later
#include "Reordering.h"

#include "unit/plugins/companion/selecting/MadeRows.h"

#include <algorithm>
#include <numeric>

namespace ReorderingTest {

using companion::Reordered;
using companion::RowOrder;

class Reordering : public MadeRows
{
protected:
    static Texts namesOf(const TAMBO::Alignment &alignment)
    {
        Texts names;
        for (unsigned long row = 0; row < alignment.height(); ++row)
            names.push_back(alignment.GetSeqName(row));
        return names;
    }
};

// All orders of so many rows, among them those that are one row's move.
TEST_F(Reordering, RowsComeToStandWhereTheOrderSays)
{
    TAMBO::Alignment &rows = made(3, 6, 8);
    RowOrder order(6);
    std::iota(order.begin(), order.end(), 0UL);
    EXPECT_EQ(companion::reorder(rows, order, "none"), Reordered::Not);
    while (std::ranges::next_permutation(order).found) {
        const Texts before = namesOf(rows);
        ASSERT_EQ(companion::reorder(rows, order, "some"), Reordered::Done);
        for (unsigned long place = 0; place < order.size(); ++place)
            ASSERT_EQ(rows.GetSeqName(place), before[order[place]]);
    }
}

} // namespace ReorderingTest
