// SPDX-License-Identifier: GPL-3.0-or-later
// Letters of a row at their columns.
#include "LetterSpread.h"

#include "Bits.h"
#include "CellText.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace TAMBO::formats {
namespace LetterSpreadTest {

using Spread = const char *(*)(char *, const char *, std::uint64_t, unsigned, char) noexcept;

// One column after the other.
std::string expected(const std::string &letters, std::uint64_t cells, unsigned columns, char gap)
{
    std::string text;
    std::size_t letter = 0;
    for (unsigned column = 0; column < columns; ++column)
        text += (cells >> column & 1U) != 0 ? letters[letter++] : gap;
    return text;
}

class LetterSpread : public testing::TestWithParam<Spread>
{
};

TEST_P(LetterSpread, LettersStandAtTheirColumnsAndGapsBetweenThem)
{
    std::mt19937_64 random(1);
    const std::string letters =
        "ACDEFGHIKLMNPQRSTVWYacdefghiklmnpqrstvwyACDEFGHIKLMNPQRSTVWYacdefghiklmn";
    for (int round = 0; round < 2000; ++round) {
        const auto columns = static_cast<unsigned>(1 + random() % 64);
        std::uint64_t cells = random();
        if (round % 3 == 0)
            cells |= random() | random();
        if (round % 50 == 0)
            cells = ~std::uint64_t{0};
        cells &= bits::low(columns);
        std::string text(columns + kSpreadWriteSlack, '#');
        const char *const end = GetParam()(text.data(), letters.data(), cells, columns, '.');
        EXPECT_EQ(text.substr(0, columns), expected(letters, cells, columns, '.'));
        EXPECT_EQ(end - letters.data(), std::ptrdiff_t(bits::count(cells)));
    }
}

INSTANTIATE_TEST_SUITE_P(Ways, LetterSpread, testing::Values(spreadLetters, spreadLetterRuns),
                         [](const auto &info) {
                             return info.index == 0 ? "AsThisComputerCan" : "AsAnyComputerCan";
                         });

// Lines of every length, of which words of bits know nothing.
TEST(CellText, PiecesOfAnyLengthAreTheRow)
{
    std::mt19937 random(2);
    for (int round = 0; round < 300; ++round) {
        std::string whole;
        for (std::size_t i = 0, width = 1 + random() % 400; i < width; ++i)
            whole += random() % 3 == 0 ? '-' : static_cast<char>('A' + random() % 26);
        GappedSequence row;
        row.append(whole);
        // Nothing may be read behind the letters.
        row.letters.shrink_to_fit();
        const std::size_t piece = 1 + random() % 130;
        CellText cells(row);
        std::string text;
        while (cells.column() < row.width)
            cells.append(std::min<std::uint64_t>(piece, row.width - cells.column()), '-', text);
        EXPECT_EQ(text, whole);
    }
}

} // namespace LetterSpreadTest
} // namespace TAMBO::formats
