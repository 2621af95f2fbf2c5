// SPDX-License-Identifier: GPL-3.0-or-later
#include "PackedRows.h"

#include "RowPacking.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>

namespace TAMBO {
namespace PackedRowsTest {

std::string randomText(std::mt19937 &random, const char *characters, std::size_t longest)
{
    const std::string from(characters);
    std::string text;
    for (std::size_t left = random() % (longest + 1); left > 0; --left)
        text += from[random() % from.size()];
    return text;
}

RowRecord randomRow(std::mt19937 &random)
{
    RowRecord row;
    row.name = randomText(random, "ab|_1", 40);
    row.sequence.append(randomText(random, "AC-", 400));
    if (random() % 3 == 0)
        row.description = randomText(random, "xy ", 60);
    if (random() % 4 == 0)
        row.link = StructureLink{"1abc", "A", "1", "200", "A"};
    if (random() % 5 == 0)
        row.chainBreaks = {{3, 4}, {9, std::nullopt}};
    if (random() % 6 == 0)
        row.annotations = {{"AC", "P1"}, {"OS", "somebody"}};
    if (random() % 7 == 0)
        row.residueAnnotations = {{"SS", std::string(row.sequence.width, 'H')}};
    return row;
}

void expectSame(const RowRecord &row, const RowRecord &other)
{
    ASSERT_EQ(row.name, other.name);
    ASSERT_EQ(row.sequence.letters, other.sequence.letters);
    ASSERT_EQ(row.sequence.occupancy, other.sequence.occupancy);
    ASSERT_EQ(row.sequence.width, other.sequence.width);
    ASSERT_EQ(row.description, other.description);
    ASSERT_EQ(*row.link, *other.link);
    ASSERT_EQ(row.chainBreaks, other.chainBreaks);
    ASSERT_EQ(row.annotations, other.annotations);
    ASSERT_EQ(row.residueAnnotations, other.residueAnnotations);
}

TEST(PackedRows, AnyRowComesBackAsItWas)
{
    std::mt19937 random(5);
    for (int round = 0; round < 500; ++round) {
        const RowRecord row = randomRow(random);
        const PackedRow once = packed(RowRecord(row));
        expectSame(unpacked(PackedRow(once)), row);
        expectSame(unpacked(packed(unpacked(PackedRow(once)))), row);
    }
}

TEST(PackedRows, ARowWithoutRemarksHasNoLabel)
{
    RowRecord row;
    row.name = "a";
    row.sequence.append("A-C");
    EXPECT_TRUE(packed(RowRecord(row)).label.isUsual());
    row.description = "b";
    EXPECT_FALSE(packed(std::move(row)).label.isUsual());
}

TEST(PackedRows, AreTakenInTheirOrderAndGone)
{
    AlignmentRecord alignment;
    constexpr std::size_t kRows = 100000;
    for (std::size_t i = 0; i < kRows; ++i)
        alignment.packed.add({}).text = SequenceText(std::to_string(i), {});
    EXPECT_EQ(alignment.packed.size(), kRows);
    EXPECT_EQ(alignment.packed[50000].text.name(), "50000");
    EXPECT_EQ(alignment.packed.back().text.name(), "99999");
    unpackRows(alignment);
    EXPECT_TRUE(alignment.packed.empty());
    ASSERT_EQ(alignment.rows.size(), kRows);
    for (std::size_t i = 0; i < kRows; ++i)
        ASSERT_EQ(alignment.rows[i].name, std::to_string(i));
}

TEST(PackedRows, RemovedOnesLeaveTheOthersInTheirOrder)
{
    PackedRows rows;
    for (std::size_t i = 0; i < 70000; ++i)
        rows.add({}).text = SequenceText(std::to_string(i), {});
    rows.remove({0, 32767, 32768, 69999});
    ASSERT_EQ(rows.size(), 69996U);
    EXPECT_EQ(rows[0].text.name(), "1");
    EXPECT_EQ(rows[32766].text.name(), "32769");
    EXPECT_EQ(rows.back().text.name(), "69998");
    rows.remove({});
    EXPECT_EQ(rows.size(), 69996U);
}

} // namespace PackedRowsTest
} // namespace TAMBO
