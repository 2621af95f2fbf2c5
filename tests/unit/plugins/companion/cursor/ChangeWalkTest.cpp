// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChangeWalk.h"

#include "unit/model/AlignmentFixture.h"

namespace ChangeWalkTest {

using companion::ChangeWalk;
using companion::Toward;
using TAMBO::CellIndex;

class Walk : public AlignmentFixture
{
protected:
    static CellIndex end(const TAMBO::Alignment &rows, const CellIndex &from, Toward toward)
    {
        ChangeWalk walk(rows, from, toward);
        while (walk.goOn(std::chrono::hours(1))) {
        }
        return walk.place();
    }
};

TEST_F(Walk, EndsAtTheFirstCellBehindTheChangeEitherWay)
{
    const TAMBO::Alignment &rows = alignment({"AC--DEF"});
    EXPECT_EQ(end(rows, {0, 0}, Toward::Right), (CellIndex{0, 2}));
    EXPECT_EQ(end(rows, {0, 2}, Toward::Right), (CellIndex{0, 4}));
    EXPECT_EQ(end(rows, {0, 6}, Toward::Left), (CellIndex{0, 4}));
    EXPECT_EQ(end(rows, {0, 4}, Toward::Left), (CellIndex{0, 2}));
}

TEST_F(Walk, EndsAtTheEndsWithoutAChange)
{
    const TAMBO::Alignment &rows = alignment({"AC--DEF", "A------"});
    EXPECT_EQ(end(rows, {0, 5}, Toward::Right), (CellIndex{0, 6}));
    EXPECT_EQ(end(rows, {0, 6}, Toward::Right), (CellIndex{0, 6}));
    EXPECT_EQ(end(rows, {0, 2}, Toward::Left), (CellIndex{0, 0}));
    EXPECT_EQ(end(rows, {0, 0}, Toward::Left), (CellIndex{0, 0}));
    EXPECT_EQ(end(rows, {1, 0}, Toward::Up), (CellIndex{0, 0}));
    EXPECT_EQ(end(rows, {1, 0}, Toward::Down), (CellIndex{1, 0}));
}

TEST_F(Walk, GoesAlongColumns)
{
    const TAMBO::Alignment &rows = alignment({"A", "-", "-", "C"});
    EXPECT_EQ(end(rows, {0, 0}, Toward::Down), (CellIndex{1, 0}));
    EXPECT_EQ(end(rows, {1, 0}, Toward::Down), (CellIndex{3, 0}));
    EXPECT_EQ(end(rows, {3, 0}, Toward::Up), (CellIndex{1, 0}));
}

// However many rows there are, what is done between two events is some hundred cells.
TEST_F(Walk, LooksAtSomeCellsAtATime)
{
    constexpr unsigned long kRows = 3000;
    const TAMBO::Alignment &rows = alignment(std::vector<std::string>(kRows, "A"));
    ChangeWalk walk(rows, {0, 0}, Toward::Down);
    int slices = 1;
    unsigned long before = 0;
    while (walk.goOn(std::chrono::microseconds(0))) {
        ++slices;
        EXPECT_GT(walk.place().row, before);
        EXPECT_LE(walk.place().row, before + 300);
        before = walk.place().row;
    }
    EXPECT_GE(slices, 10);
    EXPECT_EQ(walk.place(), (CellIndex{kRows - 1, 0}));
}

} // namespace ChangeWalkTest
