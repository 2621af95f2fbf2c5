// SPDX-License-Identifier: GPL-3.0-or-later
#include "PieceStore.h"

#include "GappedSequence.h"
#include "OccupancyRow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

namespace TAMBO::formats {
namespace PieceStoreTest {

// The store beside plain texts of the same rows.
class Rows
{
public:
    explicit Rows(std::size_t count) : m_Texts(count) { }

    void add(std::size_t row, std::size_t width)
    {
        std::string piece;
        while (piece.size() < width)
            piece += "ACDEFGHIKLMNPQRSTVWYac---------"[m_Random() % 31];
        GappedSequence cells;
        cells.append(piece);
        m_Store.add(row, cells);
        m_Texts[row] += piece;
    }
    void expectAll()
    {
        for (std::size_t begin = 0; begin < m_Texts.size(); begin += PieceStore::kGroup) {
            const std::size_t end = std::min(begin + PieceStore::kGroup, m_Texts.size());
            const std::vector<std::string_view> names(end - begin, "name");
            const std::vector<PackedRow> rows =
                m_Store.take(begin / PieceStore::kGroup).rows(names);
            ASSERT_EQ(rows.size(), names.size());
            for (std::size_t row = begin; row < end; ++row) {
                SCOPED_TRACE(row);
                expectRow(rows[row - begin], m_Texts[row]);
            }
        }
    }
    unsigned roll(std::size_t sides) { return static_cast<unsigned>(m_Random() % sides); }

private:
    static void expectRow(const PackedRow &row, const std::string &text)
    {
        GappedSequence expected;
        expected.append(text);
        EXPECT_EQ(row.text.name(), "name");
        EXPECT_EQ(row.text.letters(), expected.letters);
        EXPECT_EQ(row.width, text.size());
        EXPECT_EQ(row.cells.columns(0, row.width), expected.occupancy);
        EXPECT_EQ(row.cells.residues(), expected.letters.size());
    }

    PieceStore m_Store;
    std::vector<std::string> m_Texts;
    std::mt19937 m_Random{6};
};

TEST(PieceStore, BlocksAddUpToRows)
{
    constexpr std::size_t count = 2 * PieceStore::kGroup + 3;
    Rows rows(count);
    for (const std::size_t width : {60U, 64U, 1U, 200U, 63U, 65U, 60U, 60U, 7U})
        for (std::size_t row = 0; row < count; ++row)
            rows.add(row, width);
    rows.expectAll();
}

TEST(PieceStore, LinesOfOneRowAfterTheOtherAddUp)
{
    Rows rows(5);
    for (std::size_t row = 0; row < 5; ++row)
        for (std::size_t line = 0; line < 20; ++line)
            rows.add(row, line == 19 ? 11 : 60);
    rows.expectAll();
}

TEST(PieceStore, PiecesComeInAnyOrder)
{
    for (const std::size_t count : {1U, 2U, 10U, 700U}) {
        Rows rows(count);
        for (unsigned piece = 0; piece < 3000; ++piece) {
            const std::size_t row = rows.roll(count);
            // A few in order, as in a block.
            const std::size_t end = std::min<std::size_t>(count, row + rows.roll(5));
            const std::size_t width = std::array{1U, 60U, 64U, 100U}[rows.roll(4)];
            for (std::size_t next = row; next < end; ++next)
                rows.add(next, width);
        }
        rows.expectAll();
    }
}

TEST(PieceStore, ARowWithoutAPieceIsEmpty)
{
    Rows rows(600);
    rows.add(599, 10);
    rows.add(1, 10);
    rows.expectAll();
}

TEST(PieceStore, RowsMayBeLongerThanABatch)
{
    Rows rows(4);
    for (std::size_t row = 0; row < 4; ++row)
        rows.add(row, 1000000);
    for (std::size_t row = 0; row < 4; ++row)
        rows.add(row, 1000001);
    rows.expectAll();
}

} // namespace PieceStoreTest
} // namespace TAMBO::formats
