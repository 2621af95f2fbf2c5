// SPDX-License-Identifier: GPL-3.0-or-later
#include "CompanionFixture.h"

#include "ColumnColoring.h"

namespace ColoringTest {

class ColoredByColumn : public AlignmentCompanion
{
protected:
    unsigned int colorAt(const TAMBO::Alignment &shown, unsigned long row, unsigned long col)
    {
        std::vector<TAMBO::AlignmentCell> cells;
        shown.readRow(row, col, col + 1, cells);
        return cells.front().color.rgb();
    }
};

TEST_F(ColoredByColumn, EachResidueHasTheColorOfTheRule)
{
    for (const auto rule : {companion::ColumnRule::Identity, companion::ColumnRule::Blosum62,
                            companion::ColumnRule::ClustalX}) {
        TAMBO::Alignment &shown = alignment({"ACDWa-", "ACEWL-", "AGKwlG", "LC-WVG"}, "rows");
        ASSERT_TRUE(companion::colorByColumn(shown, rule));
        for (unsigned long col = 0; col < shown.width(); ++col) {
            std::vector<char> letters;
            shown.readColumn(col, letters);
            const companion::ColumnColors colors =
                companion::columnColors(rule, companion::ColumnCounts(letters));
            for (unsigned long row = 0; row < shown.height(); ++row) {
                if (letters[row] == '\0')
                    continue;
                EXPECT_EQ(colorAt(shown, row, col),
                          colors.of(letters[row]).value_or(Color(0xffffffU)).rgb())
                    << letters[row] << " in column " << col;
            }
        }
    }
}

TEST_F(ColoredByColumn, IsOneStepOfUndo)
{
    TAMBO::Alignment &shown = alignment({"ACD", "ACE"}, "rows");
    const unsigned int before = colorAt(shown, 0, 0);
    const std::size_t position = history.position();
    ASSERT_TRUE(companion::colorByColumn(shown, companion::ColumnRule::Identity));
    EXPECT_NE(colorAt(shown, 0, 0), before);
    EXPECT_EQ(history.position(), position + 1);
    EXPECT_TRUE(history.goTo(position));
    EXPECT_EQ(colorAt(shown, 0, 0), before);
}

TEST_F(ColoredByColumn, CountingCanBeCancelledAndThenNothingIsColored)
{
    TAMBO::Alignment &many = large(600, 300);
    const unsigned int before = colorAt(many, 0, 0);
    const std::size_t position = history.position();
    const WithoutMoment withoutMoment;
    const CancelledProgress cancel(*m_Window);
    EXPECT_FALSE(companion::colorByColumn(many, companion::ColumnRule::Identity, m_Window));
    EXPECT_EQ(cancel.count(), 1);
    EXPECT_EQ(colorAt(many, 0, 0), before);
    EXPECT_EQ(history.position(), position);
}

TEST_F(ColoredByColumn, TheLegendSaysWhatTheColorsMean)
{
    auto *const legend = m_Window->findChild<QToolBar *>("Legend");
    ASSERT_NE(legend, nullptr);
    EXPECT_TRUE(legend->isHidden());
    m_Companion->colorBy(companion::ColumnRule::Identity);
    EXPECT_FALSE(legend->isHidden());
    const companion::Legend meant = companion::legendOf(companion::ColumnRule::Identity);
    QStringList texts;
    for (const QLabel *const label : legend->findChildren<QLabel *>())
        texts << label->text();
    for (const companion::LegendEntry &entry : meant.entries)
        EXPECT_TRUE(texts.contains(QString::fromStdString(entry.label)));
    m_Companion->colorBy(companion::ColumnRule::ClustalX);
    EXPECT_FALSE(legend->isHidden());
}

} // namespace ColoringTest
