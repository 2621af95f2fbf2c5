// SPDX-License-Identifier: GPL-3.0-or-later
// Edits of columns of so many rows that several processors share them.
#include "unit/model/AlignmentFixture.h"

#include "SplitLoop.h"

using TAMBO::Alignment;
using TAMBO::AlignmentRow;
using TAMBO::AlignmentTable;

namespace ManyRowsTest {

constexpr std::size_t kRows = 2 * TAMBO::SplitLoop::kLeastOfPart + 77;
// The rows of one sequence, over and over.
const std::vector<std::string> kTexts = {"ACDEFG---", "--AC-DEFG", "A-C-D-EFG", "---ACDEFG",
                                         "ACD---EFG", "AC--DE-FG", "-ACDEFG--"};

class ManyRows : public AlignmentFixture
{
protected:
    Alignment &many()
    {
        TAMBO::Peptide &sequence = peptide("s", "ACDEFG");
        std::vector<std::pair<TAMBO::Peptide *, std::string>> rows;
        rows.reserve(kRows);
        for (std::size_t row = 0; row < kRows; ++row)
            rows.emplace_back(&sequence, kTexts[row % kTexts.size()]);
        return alignmentOf(rows);
    }
    // Whether each row is its text after the change.
    template <typename Change>
    static void expectRows(const Alignment &alignment, const Change &change)
    {
        Texts expected = kTexts;
        for (std::string &text : expected)
            change(text);
        ASSERT_EQ(alignment.height(), kRows);
        for (std::size_t row = 0; row < kRows; ++row)
            ASSERT_EQ(alignment.GetSequence(row, false), expected[row % kTexts.size()]) << row;
    }
};

TEST_F(ManyRows, ColumnsOpenInAllOfThem)
{
    Alignment &alignment = many();
    const auto opened = [](std::string &text) { text.insert(4, "--"); };
    alignment.insertGapCol(4, 2);
    expectRows(alignment, opened);
    history.undo();
    expectRows(alignment, [](std::string &) {});
    history.redo();
    expectRows(alignment, opened);
}

TEST_F(ManyRows, ColumnsThatAreRemovedComeBackInAllOfThem)
{
    Alignment &alignment = many();
    const auto first = [](std::string &text) { text.erase(2, 1); };
    const auto both = [](std::string &text) { text.erase(2, 1).erase(4, 2); };
    alignment.remove(2);
    expectRows(alignment, first);
    // Now rows leave out residues in two places.
    alignment.remove({4, 6});
    expectRows(alignment, both);
    history.undo();
    expectRows(alignment, first);
    history.undo();
    expectRows(alignment, [](std::string &) {});
    history.redo();
    history.redo();
    expectRows(alignment, both);
}

TEST_F(ManyRows, BreaksBetweenChainsComeBackWithTheirColumns)
{
    TAMBO::Peptide &sequence = peptide("s", "ACDEFG");
    AlignmentTable::Rows rows;
    const TAMBO::OccupancyRow cells(std::vector<TAMBO::OccupancyRow::Word>{0b111000111});
    for (std::size_t row = 0; row < kRows; ++row) {
        TAMBO::RowLabel label;
        if (row % 1000 == 0)
            label.chainBreaks.push_back({3, 4});
        rows.push_back(std::make_unique<AlignmentRow>(sequence, cells, label));
    }
    auto made = AlignmentTable::make("breaks", std::move(rows));
    Alignment &alignment = *made;
    TAMBO::ObjectSpace::get().add(std::move(made));
    const auto breaksAre = [&](const std::vector<TAMBO::ChainBreak> &expected) {
        for (std::size_t row = 0; row < kRows; row += 1000)
            EXPECT_EQ(alignment.table().row(row).chainBreaks(alignment.width()), expected) << row;
    };
    breaksAre({{3, 4}});
    // Shares what is said of the rows until one of them changes.
    const Alignment &copy = *alignment.duplicate(kRows);
    alignment.remove({3, 6});
    EXPECT_EQ(alignment.width(), 6U);
    history.undo();
    breaksAre({{3, 4}});
    alignment.insertGapCol(0, 1);
    breaksAre({{3, 5}});
    EXPECT_EQ(copy.table().row(0).chainBreaks(copy.width()),
              (std::vector<TAMBO::ChainBreak>{{3, 4}}));
}

} // namespace ManyRowsTest
