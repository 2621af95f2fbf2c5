// SPDX-License-Identifier: GPL-3.0-or-later
#include "LetterTally.h"

#include "unit/model/AlignmentFixture.h"

#include <array>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

using TAMBO::LetterTally;

namespace LetterTallyTest {

class LetterTallying : public AlignmentFixture
{
protected:
    static std::string randomRow(std::mt19937 &random, std::size_t width, unsigned letters)
    {
        const unsigned density = random() % 11;
        std::string text(width, '-');
        for (char &cell : text) {
            if (random() % 10 < density)
                cell = static_cast<char>('A' + random() % letters);
        }
        return text;
    }
    // Of [begin, end) in all rows.
    void expectCounts(const TAMBO::Alignment &sample, std::size_t begin, std::size_t end)
    {
        LetterTally tally(begin, end);
        std::map<std::pair<std::size_t, unsigned char>, std::uint32_t> expected;
        for (std::size_t row = 0; row < sample.height(); ++row) {
            tally.add(sample.table().row(row));
            for (std::size_t column = begin; column < end; ++column) {
                if (const char letter = sample.letterAt(row, column); letter != '\0')
                    ++expected[{column, static_cast<unsigned char>(letter)}];
            }
        }
        tally.finish();
        std::map<std::pair<std::size_t, unsigned char>, std::uint32_t> found;
        for (std::size_t i = 0; i < tally.letters().size(); ++i) {
            for (std::size_t column = begin; column < end; ++column) {
                if (const std::uint32_t count = tally.count(i, column); count > 0)
                    found[{column, tally.letters()[i]}] = count;
            }
        }
        EXPECT_EQ(found, expected) << begin << " to " << end;
    }
};

TEST_F(LetterTallying, CountsEachLetterOfEachColumnAsOftenAsItStandsThere)
{
    std::mt19937 random(20260401);
    for (const std::size_t width : {1U, 17U, 64U, 65U, 130U, 200U, 330U}) {
        Texts texts;
        for (int row = 0; row < 130; ++row)
            texts.push_back(randomRow(random, width, row < 100 ? 5 : 57));
        TAMBO::Alignment &sample = alignment(texts);
        for (std::size_t begin = 0; begin < sample.width(); begin += 64) {
            expectCounts(sample, begin, sample.width());
            expectCounts(sample, begin, std::min<std::size_t>(sample.width(), begin + 64));
        }
        // Rows then leave residues out.
        if (width > 100) {
            sample.remove({40, 43});
            sample.remove(90);
            expectCounts(sample, 0, sample.width());
        }
    }
}

TEST_F(LetterTallying, CountsMoreRowsThanAByteCanCount)
{
    const TAMBO::Alignment &sample = alignment(Texts(700, "AC-A"));
    LetterTally tally(0, 4);
    for (std::size_t row = 0; row < sample.height(); ++row)
        tally.add(sample.table().row(row));
    tally.finish();
    ASSERT_EQ(tally.letters().size(), 2U);
    const std::size_t a = tally.letters()[0] == 'A' ? 0 : 1;
    EXPECT_EQ(tally.count(a, 0), 700U);
    EXPECT_EQ(tally.count(1 - a, 1), 700U);
    EXPECT_EQ(tally.count(a, 2), 0U);
    EXPECT_EQ(tally.count(a, 3), 700U);
}

} // namespace LetterTallyTest
