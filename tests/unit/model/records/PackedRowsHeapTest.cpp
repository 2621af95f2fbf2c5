// SPDX-License-Identifier: GPL-3.0-or-later
// What rows of a file occupy goes while they are taken.
#include "PackedRows.h"
#include "RowPacking.h"

#include "bench/HeapCount.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <utility>

namespace TAMBO {
namespace PackedRowsHeapTest {

constexpr std::size_t kRows = 100000;

PackedRows manyRows()
{
    PackedRows rows;
    for (std::size_t i = 0; i < kRows; ++i) {
        RowRecord row;
        row.name = "a";
        row.sequence.append("AC-D");
        rows.add(packed(std::move(row)));
    }
    return rows;
}

TEST(PackedRowsHeap, BlocksGoWhenTheirRowsHaveBeenTaken)
{
    const std::size_t empty = heapBytes();
    PackedRows rows = manyRows();
    const std::size_t all = heapBytes() - empty;
    std::size_t taken = 0;
    std::size_t left = 0;
    rows.takeEach([&](PackedRow &&row) {
        const PackedRow gone(std::move(row));
        if (++taken == kRows - kRows / 10)
            left = heapBytes() - empty;
    });
    EXPECT_LT(left, all / 3);
}

TEST(PackedRowsHeap, BlocksGoAlsoWhenAFewRowsAreTakenAtATime)
{
    const std::size_t empty = heapBytes();
    PackedRows rows = manyRows();
    const std::size_t all = heapBytes() - empty;
    std::size_t taken = 0;
    for (std::size_t first = 0; first < kRows - kRows / 10; first += 1000)
        rows.takeSome(first, 1000, [&](PackedRow &&row) {
            const PackedRow gone(std::move(row));
            ++taken;
        });
    EXPECT_EQ(taken, kRows - kRows / 10);
    EXPECT_LT(heapBytes() - empty, all / 3);
}

} // namespace PackedRowsHeapTest
} // namespace TAMBO
