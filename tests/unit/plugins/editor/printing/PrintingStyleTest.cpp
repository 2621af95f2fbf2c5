// SPDX-License-Identifier: GPL-3.0-or-later
// How residues, gaps, marks and frames look on printed pages.
#include "PrintingFixture.h"

namespace PrintingStyleTest {

class PrintingStyle : public PrintingFixture
{
protected:
    static QColor letterColor(const Print &print, const QRect &cell)
    {
        const std::vector<PaintedText> found = print.in(cell);
        EXPECT_EQ(found.size(), 1U);
        return found.empty() ? QColor() : found[0].color;
    }
    static void setColor(const TAMBO::Alignment &alignment, unsigned long row, unsigned long col,
                         unsigned int rgb)
    {
        residue(alignment, row, col).SetColor(Color(rgb));
    }
};

TEST_F(PrintingStyle, FatFillsTheCellBeforeItsLetter)
{
    TAMBO::Alignment &shown = alignment({"A-C"});
    setColor(shown, 0, 0, 0x123456);
    setColor(shown, 0, 2, 0xfedcba);
    Print made = print(shown, ZEP::KALMO2::Fat);
    const PageLayout at = layout(made, shown);
    const std::vector<PaintedRect> fills = made.fills();
    ASSERT_EQ(fills.size(), 2U);
    EXPECT_EQ(fills[0].rect, QRectF(at.cell(0, 0)));
    EXPECT_EQ(fills[0].fill, QColor(0x12, 0x34, 0x56));
    EXPECT_EQ(fills[1].rect, QRectF(at.cell(0, 2)));
    EXPECT_EQ(fills[1].fill, QColor(0xfe, 0xdc, 0xba));
    EXPECT_LT(fills[0].order, made.in(at.cell(0, 0)).front().order);
    EXPECT_FALSE(fills[0].outline.isValid());
}

TEST_F(PrintingStyle, FatWritesWhiteOnDarkAndBlackOnLight)
{
    TAMBO::Alignment &shown = alignment({"ACDEF"});
    const std::vector<std::pair<unsigned int, QColor>> colors = {{0x7e7e7e, Qt::white},
                                                                 {0x7f7f7f, Qt::black},
                                                                 {0xff0000, Qt::white},
                                                                 {0x00ff00, Qt::black},
                                                                 {0x0000ff, Qt::white}};
    for (unsigned long col = 0; col < colors.size(); ++col)
        setColor(shown, 0, col, colors[col].first);
    Print made = print(shown, ZEP::KALMO2::Fat);
    for (int col = 0; col < 5; ++col)
        EXPECT_EQ(letterColor(made, layout(made, shown).cell(0, col)),
                  colors[static_cast<std::size_t>(col)].second)
            << col;
}

TEST_F(PrintingStyle, SlimColorsLettersAndWritesWhiteOnesBlack)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    setColor(shown, 0, 0, 0xff0000);
    setColor(shown, 0, 1, 0xffffff);
    setColor(shown, 0, 2, 0xfeffff);
    Print made = print(shown, ZEP::KALMO2::Slim);
    const PageLayout at = layout(made, shown);
    EXPECT_EQ(letterColor(made, at.cell(0, 0)), QColor(255, 0, 0));
    EXPECT_EQ(letterColor(made, at.cell(0, 1)), QColor(Qt::black));
    EXPECT_EQ(letterColor(made, at.cell(0, 2)), QColor(254, 255, 255));
    EXPECT_TRUE(made.rects().empty());
}

TEST_F(PrintingStyle, BlackAndWhiteWritesLettersBlack)
{
    TAMBO::Alignment &shown = alignment({"AC"});
    setColor(shown, 0, 0, 0xff0000);
    Print made = print(shown);
    EXPECT_EQ(letterColor(made, layout(made, shown).cell(0, 0)), QColor(Qt::black));
    EXPECT_TRUE(made.rects().empty());
}

TEST_F(PrintingStyle, GapsAreLightGreyInEveryStyle)
{
    TAMBO::Alignment &shown = alignment({"A-C"});
    for (const int style : {0, 1, 2, 3, 4}) {
        Print made = print(shown, style);
        ASSERT_EQ(made.called("-").size(), 1U) << style;
        EXPECT_EQ(made.called("-")[0].color, QColor(192, 192, 192)) << style;
        EXPECT_EQ(made.textIn(layout(made, shown).cell(0, 1)), "-") << style;
    }
}

TEST_F(PrintingStyle, WhiteShinesThroughTransparentColorsAsOnTheScreen)
{
    TAMBO::Alignment &shown = alignment({"AC"});
    residue(shown, 0, 0).SetColor(Color(QColor(255, 0, 155, 51)));
    residue(shown, 0, 1).SetColor(Color(QColor(255, 255, 255, 51)));
    const QColor pale(255, 204, 235);
    EXPECT_EQ(print(shown, ZEP::KALMO2::Fat).fills().front().fill, pale);
    Print slim = print(shown, ZEP::KALMO2::Slim);
    EXPECT_EQ(letterColor(slim, layout(slim, shown).cell(0, 0)), pale);
    EXPECT_EQ(letterColor(slim, layout(slim, shown).cell(0, 1)), QColor(Qt::black));
}

TEST_F(PrintingStyle, AnUnknownStyleWritesWithThePenThatThereIs)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    Print made = print(shown, 0);
    EXPECT_EQ(made.messages.count("Impossible printing style"), 6);
    const PageLayout at = layout(made, shown);
    EXPECT_EQ(at.rowsOf(made, 4), rowsOf(shown));
    EXPECT_TRUE(made.rects().empty());
    EXPECT_EQ(letterColor(made, at.cell(0, 0)), QColor(Qt::black));
    // The gap above left its pen.
    EXPECT_EQ(letterColor(made, at.cell(1, 2)), QColor(Qt::lightGray));
}

// ---- Marks

TEST_F(PrintingStyle, AColumnOfOneLetterIsMarked)
{
    TAMBO::Alignment &shown = alignment({"AC-DA", "A-CDC"});
    Print made = print(shown, ZEP::KALMO2::Slim);
    const PageLayout at = layout(made, shown);
    EXPECT_EQ(made.called("*").size(), 2U);
    for (const int col : {0, 3}) {
        const std::vector<PaintedText> marks = made.in(at.mark(col));
        ASSERT_EQ(marks.size(), 1U) << col;
        EXPECT_EQ(marks[0].text, "*");
        EXPECT_EQ(marks[0].color, QColor(Qt::black));
        EXPECT_NEAR(marks[0].box.center().x(), QRectF(at.mark(col)).center().x(), 1);
    }
}

TEST_F(PrintingStyle, AGapInAnyRowPreventsTheMark)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "ACCD", "A-CD"});
    Print made = print(shown);
    EXPECT_EQ(made.called("*").size(), 2U);
    EXPECT_EQ(made.textIn(layout(made, shown).mark(1)), "");
    EXPECT_EQ(made.textIn(layout(made, shown).mark(2)), "");
}

TEST_F(PrintingStyle, ASingleRowIsNeverMarked)
{
    EXPECT_TRUE(print(alignment({"ACD"})).called("*").empty());
}

TEST_F(PrintingStyle, TheSameColumnIsMarkedInLaterBlocksToo)
{
    TAMBO::Alignment &shown = alignment({letters(120), letters(120)});
    EXPECT_EQ(print(shown).called("*").size(), 120U);
}

// ---- Secondary structure

TEST_F(PrintingStyle, ElementsStandBelowTheirResiduesInGrey)
{
    setSettings(kWithElements);
    TAMBO::Alignment &shown = alignment({"ACDEFG", "ACDEFG"});
    addElement(shown, 0, 1, 4, 'H');
    addElement(shown, 1, 2, 6, 'e');
    Print made = print(shown, ZEP::KALMO2::Fat);
    const PageLayout at = layout(made, shown, true);
    std::vector<std::string> found(2);
    for (int row = 0; row < 2; ++row) {
        for (int col = 0; col < 6; ++col) {
            const std::vector<PaintedText> letters = made.in(at.element(row, col));
            found[static_cast<std::size_t>(row)] +=
                letters.empty() ? ' ' : letters[0].text[0].toLatin1();
            for (const PaintedText &letter : letters)
                EXPECT_EQ(letter.color, QColor(160, 160, 164));
        }
    }
    EXPECT_EQ(found, (Texts{" hhh  ", "  eeee"}));
    EXPECT_EQ(at.rowsOf(made, 6), rowsOf(shown));
    // Fills are one line high.
    EXPECT_EQ(made.fills().front().rect.height(), at.measures.line);
}

TEST_F(PrintingStyle, ElementsAreLeftOutWithoutTheSetting)
{
    for (const char *value : {"", "PrintSSE = false\n", "PrintSSE = maybe\n"}) {
        setSettings(QByteArray(kFont) + value);
        TAMBO::Alignment &shown = alignment({"ACDE", "ACDE"});
        addElement(shown, 0, 0, 3, 'H');
        Print made = print(shown);
        EXPECT_TRUE(made.called("h").empty());
        EXPECT_EQ(made.called("s1").front().box.top(), 3 * layout(made, shown).measures.line);
        closeWindows();
    }
}

// ---- Selection

TEST_F(PrintingStyle, ASelectedResidueFramesItsWholeColumn)
{
    TAMBO::Alignment &shown = alignment({"ACDE", "ACDE", "ACDE"});
    residue(shown, 1, 2).SetSelected(true);
    Print made = print(shown, ZEP::KALMO2::Fat);
    const PageLayout at = layout(made, shown);
    const std::vector<PaintedRect> frames = made.frames();
    ASSERT_EQ(frames.size(), 1U);
    EXPECT_EQ(frames[0].rect, QRectF(at.frame(2)));
    EXPECT_EQ(frames[0].rect.height(), 3 * at.measures.line);
    EXPECT_EQ(frames[0].outline, QColor(Qt::black));
    EXPECT_FALSE(frames[0].fill.isValid());
}

TEST_F(PrintingStyle, WithElementsTheFrameTakesTheirLinesIn)
{
    setSettings(kWithElements);
    TAMBO::Alignment &shown = alignment({"ACDE", "ACDE", "ACDE"});
    residue(shown, 1, 2).SetSelected(true);
    Print made = print(shown);
    ASSERT_EQ(made.frames().size(), 1U);
    EXPECT_EQ(made.frames()[0].rect, QRectF(layout(made, shown, true).frame(2)));
    EXPECT_EQ(made.frames()[0].rect.height(), 6 * layout(made, shown, true).measures.line);
}

TEST_F(PrintingStyle, FramesAreOverLettersAndFillsOfTheirBlock)
{
    TAMBO::Alignment &shown = alignment({"ACDE", "ACDE"});
    for (const unsigned long col : {0UL, 1UL})
        residue(shown, 0, col).SetSelected(true);
    Print made = print(shown, ZEP::KALMO2::Fat);
    ASSERT_EQ(made.frames().size(), 2U);
    const std::size_t first = made.frames().front().order;
    for (const PaintedRect &fill : made.fills())
        EXPECT_LT(fill.order, first);
    EXPECT_EQ(layout(made, shown).rowsOf(made, 4), rowsOf(shown));
}

TEST_F(PrintingStyle, FramesStandInTheBlockOfTheirColumn)
{
    TAMBO::Alignment &shown = alignment({letters(120)});
    Print none = print(shown);
    EXPECT_TRUE(none.frames().empty());
    const PageLayout at = layout(none, shown);
    const int col = at.columns + 3;
    residue(shown, 0, static_cast<unsigned long>(col)).SetSelected(true);
    const Print made = print(shown);
    ASSERT_EQ(made.frames().size(), 1U);
    EXPECT_EQ(made.frames()[0].rect, QRectF(at.frame(3, 1)));
}

TEST_F(PrintingStyle, ASelectedResidueHasItsMixedColor)
{
    TAMBO::Alignment &shown = alignment({"AC"});
    setColor(shown, 0, 0, 0x0000ff);
    residue(shown, 0, 0).SetSelected(true);
    const QColor mixed = residue(shown, 0, 0).GetColor().toQColor();
    ASSERT_NE(mixed, QColor(0, 0, 255));
    EXPECT_EQ(print(shown, ZEP::KALMO2::Fat).fills().front().fill, mixed);
}

} // namespace PrintingStyleTest
