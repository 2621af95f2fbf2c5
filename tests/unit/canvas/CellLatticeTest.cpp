// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellLattice.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>

// How the test framework shows what differs.
std::ostream &operator<<(std::ostream &out, const QRect &rect)
{
    return out << rect.x() << ',' << rect.y() << ' ' << rect.width() << 'x' << rect.height();
}

std::ostream &operator<<(std::ostream &out, const Cell &cell)
{
    return out << '(' << cell.row << ", " << cell.col << ')';
}

std::ostream &operator<<(std::ostream &out, const CellRange &range)
{
    return out << "rows " << range.rowBegin << ".." << range.rowEnd << " columns " << range.colBegin
               << ".." << range.colEnd;
}

namespace CellLatticeTest {

// 3 rows of 5 columns.
const CellLattice kLattice(3, 5, 13, 17);

TEST(CellLattice, CellStandsAtItsColumnAndRowTimesTheCellSize)
{
    EXPECT_EQ(kLattice.cellRect({0, 0}), QRect(0, 0, 13, 17));
    EXPECT_EQ(kLattice.cellRect({2, 3}), QRect(39, 34, 13, 17));
}

TEST(CellLattice, CoversAllCellsTogether)
{
    EXPECT_EQ(kLattice.rect(), QRect(0, 0, 65, 51));
}

TEST(CellLattice, FirstAndLastPixelOfACellBelongToIt)
{
    EXPECT_EQ(kLattice.cellAt({13, 17}), (Cell{1, 1}));
    EXPECT_EQ(kLattice.cellAt({25, 33}), (Cell{1, 1}));
    EXPECT_EQ(kLattice.cellAt({26, 33}), (Cell{1, 2}));
    EXPECT_EQ(kLattice.cellAt({25, 34}), (Cell{2, 1}));
}

TEST(CellLattice, FirstAndLastCellAreFound)
{
    EXPECT_EQ(kLattice.cellAt({0, 0}), (Cell{0, 0}));
    EXPECT_EQ(kLattice.cellAt({64, 50}), (Cell{2, 4}));
}

TEST(CellLattice, NoCellBeyondTheLastColumnAndRow)
{
    EXPECT_FALSE(kLattice.cellAt({65, 0}));
    EXPECT_FALSE(kLattice.cellAt({0, 51}));
    EXPECT_FALSE(kLattice.cellAt({1000, 1000}));
}

TEST(CellLattice, NoCellAtNegativePositions)
{
    EXPECT_FALSE(kLattice.cellAt({-1, 0}));
    EXPECT_FALSE(kLattice.cellAt({0, -1}));
    EXPECT_FALSE(kLattice.cellAt({-13, -17}));
}

TEST(CellLattice, RectangleTakesInEveryCellThatItTouches)
{
    EXPECT_EQ(kLattice.cellsIn(QRect(12, 16, 2, 2)), (CellRange{0, 2, 0, 2}));
    EXPECT_EQ(kLattice.cellsIn(QRect(13, 17, 13, 17)), (CellRange{1, 2, 1, 2}));
    EXPECT_EQ(kLattice.cellsIn(QRect(20, 20, 1, 1)), (CellRange{1, 2, 1, 2}));
}

TEST(CellLattice, RectangleLargerThanTheLatticeTakesInAllCells)
{
    EXPECT_EQ(kLattice.cellsIn(QRect(-100, -100, 1000, 1000)), (CellRange{0, 3, 0, 5}));
}

TEST(CellLattice, RectangleBesideTheLatticeTakesInNothing)
{
    EXPECT_TRUE(kLattice.cellsIn(QRect(65, 0, 10, 10)).isEmpty());
    EXPECT_TRUE(kLattice.cellsIn(QRect(0, 51, 10, 10)).isEmpty());
    EXPECT_TRUE(kLattice.cellsIn(QRect(-10, 0, 10, 10)).isEmpty());
    EXPECT_TRUE(kLattice.cellsIn(QRect(0, -10, 10, 10)).isEmpty());
    EXPECT_TRUE(kLattice.cellsIn(QRect()).isEmpty());
}

TEST(CellLattice, WithoutRowsColumnsOrCellSizeItIsEmpty)
{
    for (const CellLattice &lattice :
         {CellLattice(), CellLattice(0, 5, 13, 17), CellLattice(3, 0, 13, 17),
          CellLattice(3, 5, 0, 17), CellLattice(3, 5, 13, -1)}) {
        EXPECT_TRUE(lattice.isEmpty());
        EXPECT_EQ(lattice.cellCount(), 0U);
        EXPECT_TRUE(lattice.rect().isEmpty());
        EXPECT_FALSE(lattice.cellAt({0, 0}));
        EXPECT_TRUE(lattice.cellsIn(QRect(0, 0, 100, 100)).isEmpty());
    }
}

TEST(CellLattice, CellsAreNumberedRowByRow)
{
    EXPECT_EQ(kLattice.indexOf({0, 0}), 0U);
    EXPECT_EQ(kLattice.indexOf({0, 4}), 4U);
    EXPECT_EQ(kLattice.indexOf({1, 0}), 5U);
    EXPECT_EQ(kLattice.indexOf({2, 4}), 14U);
    EXPECT_EQ(kLattice.cellCount(), 15U);
}

TEST(CellLattice, ContainsItsCellsOnly)
{
    EXPECT_TRUE(kLattice.contains({2, 4}));
    EXPECT_FALSE(kLattice.contains({3, 4}));
    EXPECT_FALSE(kLattice.contains({2, 5}));
}

TEST(CellLattice, PixelsTooFarAwayAreCutOff)
{
    const CellLattice huge(1, std::numeric_limits<unsigned long>::max() / 16, 13, 17);
    EXPECT_EQ(huge.rect().width(), CellLattice::kFarthest);
    EXPECT_EQ(huge.cellRect({0, huge.columns() - 1}).left(), CellLattice::kFarthest);
}

} // namespace CellLatticeTest
