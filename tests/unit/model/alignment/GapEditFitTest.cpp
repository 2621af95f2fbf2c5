// SPDX-License-Identifier: GPL-3.0-or-later
// Moved gaps that were made of bytes, which may be anybody's.
#include "unit/model/AlignmentFixture.h"

#include "AlignmentEdits.h"
#include "AlignmentTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace GapEditFitTest {

using TAMBO::AlignmentRow;
using TAMBO::AlignmentTable;
using TAMBO::GapEdit;

// With a look at each row.
bool fitsByLooking(const AlignmentTable &table, const GapEdit::Move &move)
{
    const unsigned long width = table.width() + std::max(0L, move.growth);
    const unsigned long lost = std::max(0L, -move.growth);
    if (move.row >= table.rowCount() || lost > width ||
        std::max(move.from, move.to) + move.count > width)
        return false;
    AlignmentRow moved(table.row(move.row));
    if (moved.cells().rank(move.from) != moved.cells().rank(move.from + move.count))
        return false;
    moved.moveGaps(move.from, move.count, move.to, width);
    bool fits = moved.cells().end() <= width - lost;
    for (std::size_t i = 0; i < table.rowCount(); ++i)
        fits = fits && (i == move.row || table.row(i).cells().end() <= width - lost);
    return fits;
}

class AGapEdit : public AlignmentFixture, public testing::WithParamInterface<unsigned>
{
protected:
    std::size_t below(std::size_t end) { return m_Random() % end; }

    GapEdit::Move anyMove(const AlignmentTable &table)
    {
        const std::size_t count = below(4);
        return {below(table.rowCount()), below(table.width() + 3), count, below(table.width() + 3),
                long(below(2 * count + 1)) - long(count)};
    }

private:
    std::mt19937 m_Random{GetParam()};
};

TEST_P(AGapEdit, FitsWhenEachRowSaysSo)
{
    TAMBO::Alignment &rows = alignment({"MK-VL--", "M-V----", "MKVLAGT", "MK--V--"});
    const AlignmentTable &table = rows.table();
    int narrowed = 0;
    for (int round = 0; round < 3000; ++round) {
        const GapEdit::Move move = anyMove(table);
        GapEdit edit(rows.table(), "move", move);
        ASSERT_EQ(edit.fits(), fitsByLooking(table, move)) << round;
        if (edit.fits()) {
            narrowed += move.growth < 0 ? 1 : 0;
            static_cast<void>(edit.apply());
        }
        if (below(20) == 0)
            rows.insertGapCol(below(rows.width()), 1);
        if (below(10) == 0) {
            const std::size_t target = below(4);
            rows.bubbleRow(below(4), target);
        }
        if (rows.width() > 40)
            rows.remove(0);
    }
    EXPECT_GT(narrowed, 10);
}

INSTANTIATE_TEST_SUITE_P(Random, AGapEdit, testing::Range(0U, 6U));

TEST_F(AlignmentFixture, GapsThatMakeRowAfterRowAsWideAsCanBeDoNotFit)
{
    TAMBO::Alignment &rows = alignment(std::vector<std::string>(400, "MKV"));
    constexpr unsigned long kWide = 99'000'000;
    std::size_t fitting = 0;
    for (std::size_t row = 0; row < rows.height(); ++row)
        fitting += GapEdit(rows.table(), "move", {row, 3, kWide, 0, long(kWide)}).fits() ? 1 : 0;
    // A gigabyte in all.
    EXPECT_GT(fitting, 50u);
    EXPECT_LT(fitting, 100u);
}

TEST_F(AlignmentFixture, GapsThatComeAndGoAgainAlwaysFit)
{
    TAMBO::Alignment &rows = alignment({"MKV", "MKVL"});
    constexpr unsigned long kWide = 90'000'000;
    for (int i = 0; i < 110; ++i) {
        GapEdit wider(rows.table(), "move", {0, 3, kWide, 0, long(kWide)});
        ASSERT_TRUE(wider.fits()) << i;
        const auto narrower = wider.apply();
        ASSERT_TRUE(narrower->fits()) << i;
        static_cast<void>(narrower->apply());
    }
}

} // namespace GapEditFitTest
