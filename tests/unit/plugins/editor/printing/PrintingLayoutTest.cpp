// SPDX-License-Identifier: GPL-3.0-or-later
// Where things stand on printed pages.
#include "PrintingFixture.h"

#include <QImage>

namespace PrintingLayoutTest {

using PrintingLayout = PrintingFixture;

// ---- Cells and blocks

TEST_F(PrintingLayout, CellsStandACellApartFromTheFirstColumnOn)
{
    TAMBO::Alignment &shown = alignment({"ACDEF"});
    Print made = print(shown, ZEP::KALMO2::Fat);
    const PageLayout at = layout(made, shown);
    const std::vector<PaintedRect> fills = made.fills();
    ASSERT_EQ(fills.size(), 5U);
    for (int col = 0; col < 5; ++col)
        EXPECT_EQ(fills[static_cast<std::size_t>(col)].rect, QRectF(at.cell(0, col))) << col;
}

TEST_F(PrintingLayout, LettersStandInTheMiddleOfTheirCells)
{
    TAMBO::Alignment &shown = alignment({"AW-I"});
    Print made = print(shown);
    const PageLayout at = layout(made, shown);
    for (int col = 0; col < 4; ++col) {
        const std::vector<PaintedText> found = made.in(at.cell(0, col));
        ASSERT_EQ(found.size(), 1U) << col;
        const QPointF off = found[0].box.center() - QRectF(at.cell(0, col)).center();
        EXPECT_LE(std::abs(off.x()), 1) << col;
        EXPECT_LE(std::abs(off.y()), 2) << col;
    }
}

TEST_F(PrintingLayout, ABlockHoldsAsManyColumnsAsFitAndTheLastOneTheRest)
{
    TAMBO::Alignment &shown = alignment({letters(2000), letters(2000)});
    Print made = print(shown);
    const PageLayout at = layout(made, shown);
    EXPECT_EQ(at.columns, (767 - at.left) / at.measures.cell);
    EXPECT_GT(at.columns, 40);
    EXPECT_EQ(at.rowsOf(made, 2000), rowsOf(shown));
    const int blocks = (2000 + at.columns - 1) / at.columns;
    EXPECT_EQ(made.called("s0").size(), static_cast<std::size_t>(blocks));
    EXPECT_EQ(made.pages(), (blocks + at.blocksPerPage - 1) / at.blocksPerPage);
    const int last = (blocks - 1) % at.blocksPerPage;
    EXPECT_EQ(made.textIn(at.cell(0, 2000 % at.columns, last), made.pages() - 1), "");
}

TEST_F(PrintingLayout, BlocksStandTheirRowsAndThreeLinesApart)
{
    TAMBO::Alignment &shown = alignment({letters(100), letters(100), letters(100)});
    Print made = print(shown);
    const std::vector<PaintedText> names = made.called("s0");
    ASSERT_EQ(names.size(), 3U);
    const int line = layout(made, shown).measures.line;
    EXPECT_EQ(names[0].box.top(), 2 * line);
    EXPECT_EQ(names[1].box.top(), 8 * line);
    EXPECT_EQ(names[2].box.top(), 14 * line);
    EXPECT_EQ(made.called("s1")[0].box.top(), 3 * line);
}

TEST_F(PrintingLayout, WithElementsEverySequenceTakesTwoLines)
{
    setSettings(kWithElements);
    TAMBO::Alignment &shown = alignment({letters(100), letters(100), letters(100)});
    Print made = print(shown);
    const PageLayout at = layout(made, shown, true);
    EXPECT_EQ(made.called("s1")[0].box.top(), 4 * at.measures.line);
    EXPECT_EQ(made.called("s0")[1].box.top(), 11 * at.measures.line);
    EXPECT_EQ(at.rowsOf(made, 100), rowsOf(shown));
    EXPECT_EQ(made.textIn(at.element(0, 0)), "");
}

TEST_F(PrintingLayout, TheSettingIsReadAtEachPrint)
{
    TAMBO::Alignment &shown = alignment({"ACD", "ACD"});
    ZEP::KALMO2 &window = open(shown);
    const auto secondRow = [&] { return print(window).called("s1").front().box.top(); };
    const double one = secondRow();
    setSettings(kWithElements);
    const double two = secondRow();
    setSettings(kFont);
    EXPECT_EQ(secondRow(), one);
    EXPECT_GT(two, one);
}

TEST_F(PrintingLayout, TheFontOfTheWindowIsUsed)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    ZEP::KALMO2 &window = open(shown);
    EXPECT_EQ(print(window).texts().back().font.family(), "DejaVu Sans Mono");
    const QFont other("DejaVu Sans", 17);
    window.setFont(other);
    Print made = print(window, ZEP::KALMO2::Fat);
    for (const PaintedText &text : made.texts())
        EXPECT_EQ(text.font, other) << text.text.toStdString();
    const PageLayout at(*made.printer, other, 1, {"s0"});
    EXPECT_EQ(made.fills().at(1).rect, QRectF(at.cell(0, 1)));
}

TEST_F(PrintingLayout, NothingElseIsPainted)
{
    TAMBO::Alignment &shown = alignment({"AC-D"});
    Print made = print(shown);
    // Title, name, number and four cells.
    EXPECT_EQ(made.texts().size(), 7U);
    EXPECT_TRUE(made.rects().empty());
    EXPECT_EQ(made.printer->others(), 0);
}

// ---- Small alignments

TEST_F(PrintingLayout, OneColumnIsOneBlockOfOneCellPerRow)
{
    TAMBO::Alignment &shown = alignment({"A", "A"});
    Print made = print(shown, ZEP::KALMO2::Fat);
    EXPECT_EQ(made.fills().size(), 2U);
    EXPECT_EQ(made.called("*").size(), 1U);
    EXPECT_EQ(made.messages.count("Printed section 1."), 1);
    EXPECT_EQ(made.pages(), 1);
}

TEST_F(PrintingLayout, OneRowIsPrinted)
{
    TAMBO::Alignment &shown = alignment({letters(60)});
    Print made = print(shown);
    EXPECT_EQ(layout(made, shown).rowsOf(made, 60), rowsOf(shown));
}

TEST_F(PrintingLayout, ARowOfGapsIsPrinted)
{
    TAMBO::Alignment &shown = alignment({"ACD", "---"});
    Print made = print(shown);
    EXPECT_EQ(layout(made, shown).rowsOf(made, 3), rowsOf(shown));
    EXPECT_EQ(made.textIn(layout(made, shown).number(1)), "");
}

TEST_F(PrintingLayout, AnAlignmentWithoutColumnsIsATitle)
{
    const ExpectMessage warning(QtWarningMsg, "ASSERT: \"1 < namesLen\" in KalmoIO (391)");
    Print made = print(alignmentWithoutColumns());
    ASSERT_EQ(made.texts().size(), 1U);
    EXPECT_EQ(made.texts()[0].text, "none");
    EXPECT_EQ(made.messages.count("Printed section 1."), 0);
}

TEST_F(PrintingLayout, TheWholeAlignmentIsPrintedWhateverTheRange)
{
    TAMBO::Alignment &shown = alignment({"ACDEF", "AC-EF"});
    shown.range({1, 2});
    Print made = print(shown);
    EXPECT_EQ(layout(made, shown).rowsOf(made, 5), rowsOf(shown));
}

// ---- Title, labels and legend

TEST_F(PrintingLayout, TheTitleStandsOnTheUpperEdgeOfTheFirstPage)
{
    TAMBO::Alignment &shown = alignment({letters(100)}, "SeqAli");
    Print made = print(shown, ZEP::KALMO2::Fat, pageOf(4));
    ASSERT_GT(made.pages(), 1);
    const std::vector<PaintedText> titles = made.called("SeqAli");
    ASSERT_EQ(titles.size(), 1U);
    EXPECT_EQ(titles[0].place, QPointF(0, 0));
    EXPECT_EQ(titles[0].page, 0);
    EXPECT_EQ(titles[0].color, QColor(Qt::black));
    EXPECT_EQ(titles[0].order, 0U);
}

TEST_F(PrintingLayout, TenCharactersAreALabel)
{
    TAMBO::Alignment &shown = alignment({"AC", "AC"}, "ali", {"s1", "abcdefghij"});
    Print made = print(shown);
    const PageLayout at = layout(made, shown);
    EXPECT_EQ(made.textIn(at.label(0)), "s1");
    EXPECT_EQ(made.textIn(at.label(1)), "abcdefghij");
    EXPECT_TRUE(made.called("[ 1]").empty());
    EXPECT_EQ(made.messages.count("Sequence names are rather long, truncating."), 0);
    // The title does not push it down.
    EXPECT_EQ(made.in(at.label(0))[0].box.top(), 2 * at.measures.line);
}

TEST_F(PrintingLayout, ElevenCharactersMakeALegend)
{
    TAMBO::Alignment &shown = alignment({letters(150), letters(150)}, "ali", {"a", "abcdefghijk"});
    Print made = print(shown);
    const PageLayout at = numberedLayout(made, shown);
    EXPECT_EQ(made.textIn(QRect(0, 0, 767, at.measures.line)), "[ 1] a");
    EXPECT_EQ(made.textIn(QRect(0, at.measures.line, 767, at.measures.line)), "[ 2] abcdefghijk");
    EXPECT_EQ(made.called("[ 1] a").front().place.x(), 0);
    ASSERT_EQ(made.called("[ 1]").size(), 4U);
    for (int section = 0; section < 4; ++section) {
        EXPECT_EQ(made.textIn(at.label(0, section)), "[ 1]");
        EXPECT_EQ(made.textIn(at.label(1, section)), "[ 2]");
    }
    EXPECT_EQ(at.rowsOf(made, 150), rowsOf(shown));
    EXPECT_EQ(made.messages.count("Sequence names are rather long, truncating."), 1);
}

TEST_F(PrintingLayout, TheFirstBlockStandsBelowTheLegend)
{
    TAMBO::Alignment &shown =
        alignment({letters(10), letters(10), letters(10)}, "ali", {"abcdefghijk", "b", "c"});
    Print made = print(shown);
    const PageLayout at = numberedLayout(made, shown);
    EXPECT_EQ(at.legend, 3 * at.measures.line);
    EXPECT_EQ(made.textIn(at.ruler(9)), "10");
    EXPECT_NEAR(made.called("10").front().box.top(), 3 * at.measures.line, 1);
}

TEST_F(PrintingLayout, NumbersOfLabelsTakeTwoPlaces)
{
    const Texts names(10, "abcdefghijk");
    Print made = print(alignment(Texts(10, "AC"), "ali", names));
    for (int row = 1; row <= 10; ++row)
        EXPECT_EQ(made.called(row < 10 ? QStringLiteral("[ %1]").arg(row) : "[10]").size(), 1U);
}

TEST_F(PrintingLayout, ALegendShowsALongNameAsAWholeWithinThePage)
{
    const std::string name = letters(200);
    TAMBO::Alignment &shown = alignment({"AC", "AC"}, "ali", {name, "b"});
    Print made = print(shown);
    const std::vector<PaintedText> lines = made.called("[ 1] " + QString::fromStdString(name));
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].place.x(), 0);
    EXPECT_LE(lines[0].box.right(), 767);
    EXPECT_GT(lines[0].box.right(), 767 - 10);
    const int line = numberedLayout(made, shown).measures.line;
    EXPECT_LE(lines[0].box.bottom(), line);
    // A name that fits is as large as ever.
    EXPECT_EQ(made.called("[ 2] b").front().box.top(), line);
    EXPECT_GT(made.called("[ 2] b").front().box.height(), 2 * lines[0].box.height());
    EXPECT_EQ(numberedLayout(made, shown).rowsOf(made, 2), rowsOf(shown));
}

TEST_F(PrintingLayout, NamesOfOneCharacterAreWarnedOfAndPrinted)
{
    TAMBO::Alignment &shown = alignment({"AC", "AC"}, "ali", {"a", "b"});
    ZEP::KALMO2 &window = open(shown);
    const ExpectMessage warning(QtWarningMsg, "ASSERT: \"1 < namesLen\" in KalmoIO (391)");
    Print made = print(window);
    const PageLayout at = layout(made, shown);
    EXPECT_EQ(made.textIn(at.label(1)), "b");
    EXPECT_EQ(at.rowsOf(made, 2), rowsOf(shown));
}

TEST_F(PrintingLayout, CharactersAreCountedAsPeopleDo)
{
    // Ten characters in 21 bytes, of which one takes two units.
    const std::string name = "Ωμέγα-βςχ\U00010348";
    TAMBO::Alignment &shown = alignment({"AC", "AC"}, "ali", {name, "b"});
    Print made = print(shown);
    EXPECT_TRUE(made.called("[ 1]").empty());
    const QString painted = made.textIn(layout(made, shown).label(0));
    EXPECT_TRUE(painted.startsWith(QString::fromUtf8("Ωμέγα-βςχ"))) << painted.toStdString();
}

TEST_F(PrintingLayout, NamesThatRunToTheLeftStandAtTheLeftToo)
{
    const std::string name = "שלום";
    TAMBO::Alignment &shown = alignment({letters(100), letters(100)}, "ali", {name, "b2"});
    Print made = print(shown);
    const std::vector<PaintedText> labels = made.called(QString::fromStdString(name));
    ASSERT_GE(labels.size(), 2U);
    for (const PaintedText &label : labels)
        EXPECT_EQ(label.box.left(), 0);
}

TEST_F(PrintingLayout, NamesThatRunToTheLeftStandAtTheLeftOfTheLegend)
{
    const QString name = QStringLiteral("שלום שלום שלום");
    Print made = print(alignment({"AC", "AC"}, "ali", {name.toStdString(), "b2"}));
    double right = 0;
    for (const PaintedText &text : made.texts())
        if (text.box.center().y() < 20 && text.order > 0)
            right = std::max(right, text.box.right());
    EXPECT_GT(right, 100);
    EXPECT_LT(right, 300);
}

TEST_F(PrintingLayout, LabelsStandInEveryBlockOnEveryPageInBlack)
{
    TAMBO::Alignment &shown = alignment({letters(150), letters(150)});
    for (unsigned long col = 0; col < 150; ++col)
        residue(shown, 1, col).SetColor(Color(0xff0000));
    Print made = print(shown, ZEP::KALMO2::Slim, pageOf(10));
    const PageLayout at = layout(made, shown);
    ASSERT_EQ(at.blocksPerPage, 2);
    ASSERT_EQ(made.pages(), 2);
    for (int block = 0; block < 4; ++block) {
        for (int row = 0; row < 2; ++row) {
            const auto labels = made.in(at.label(row, block % 2), block / 2);
            ASSERT_EQ(labels.size(), 1U) << block;
            EXPECT_EQ(labels[0].text, QStringLiteral("s%1").arg(row));
            EXPECT_EQ(labels[0].place.x(), 0);
            EXPECT_EQ(labels[0].color, QColor(Qt::black));
            const auto numbers = made.in(at.number(row, block % 2), block / 2);
            ASSERT_EQ(numbers.size(), 1U) << block;
            EXPECT_EQ(numbers[0].text, QString::number(block * at.columns + 1));
            EXPECT_EQ(numbers[0].color, QColor(Qt::black));
        }
    }
}

TEST_F(PrintingLayout, TheWidestLabelMakesTheColumnOfNames)
{
    TAMBO::Alignment &shown = alignment({letters(60), letters(60)}, "ali", {"iiii", "WWWWWWWW"});
    Print made = print(shown, ZEP::KALMO2::Fat);
    const PageLayout at = layout(made, shown);
    EXPECT_NEAR(at.labelWidth, made.called("WWWWWWWW").front().box.right() + at.measures.cell / 2,
                2);
    EXPECT_EQ(made.fills().front().rect.left(), at.left);
    // In later blocks as well.
    EXPECT_EQ(made.fills().back().rect, QRectF(at.cell(1, 59 - at.columns, 1)));
}

// ---- Residue numbers and ruler

TEST_F(PrintingLayout, TheFirstResidueOfABlockIsNumbered)
{
    TAMBO::Alignment &shown = alignment({"ACD", "-CD", "A-D"});
    dynamic_cast<TAMBO::Group &>(residue(shown, 0, 0)).SetSeqId(TAMBO::SequenceNumber("37A"));
    dynamic_cast<TAMBO::Group &>(residue(shown, 2, 0)).SetSeqId(TAMBO::SequenceNumber("-5"));
    Print made = print(shown);
    const PageLayout at = layout(made, shown);
    EXPECT_EQ(made.textIn(at.number(0)), "37A");
    EXPECT_EQ(made.textIn(at.number(1)), "");
    EXPECT_EQ(made.textIn(at.number(2)), "-5");
    for (const QString text : {"37A", "-5"})
        EXPECT_NEAR(made.called(text).front().box.right(), at.labelWidth + at.measures.number, 1);
}

TEST_F(PrintingLayout, TheRulerCountsFromTheBeginningOfEachBlock)
{
    TAMBO::Alignment &shown = alignment({letters(100), letters(100)});
    Print made = print(shown);
    const PageLayout at = layout(made, shown);
    ASSERT_NE(at.columns % 10, 0) << "else both ways of counting are the same";
    for (int section = 0; section < 2; ++section) {
        QStringList entries;
        for (int place = 0; place < at.columns && section * at.columns + place < 100; ++place) {
            const QString number = QString::number(section * at.columns + place + 1);
            const QRectF middle(at.ruler(place, section));
            const auto found = made.in(QRectF(middle.center().x() - at.measures.cell / 2.0,
                                              middle.top(), at.measures.cell, at.measures.line));
            EXPECT_EQ(textsOf(found), (place + 1) % 10 == 0 ? QStringList(number) : QStringList())
                << section << ' ' << place;
            if (!found.empty()) {
                EXPECT_NEAR(found[0].box.center().x(), middle.center().x(), 1);
                EXPECT_EQ(found[0].color, QColor(Qt::black));
            }
        }
    }
}

TEST_F(PrintingLayout, TheRulerShowsABarOverAGapOfTheFirstRow)
{
    TAMBO::Alignment &shown = alignment({"ACDEFGHIK-LM", "ACDEFGHIKLLM"});
    Print made = print(shown);
    const PageLayout at = layout(made, shown);
    EXPECT_EQ(made.textIn(at.ruler(9)), "|");
    EXPECT_EQ(made.called("|").size(), 1U);
    EXPECT_EQ(made.called("|")[0].color, QColor(Qt::black));
}

TEST_F(PrintingLayout, TheRulerShowsTheNumberOfTheFirstRowsResidue)
{
    TAMBO::Alignment &shown = alignment({"--------AC", "ACDEFGHIKL"});
    dynamic_cast<TAMBO::Group &>(residue(shown, 0, 9)).SetSeqId(TAMBO::SequenceNumber("221A"));
    Print made = print(shown);
    EXPECT_EQ(made.textIn(layout(made, shown).ruler(9)), "221A");
}

TEST_F(PrintingLayout, TextIsPaintedInTheOrderOfReading)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "EFGH"});
    const Print made = print(shown, ZEP::KALMO2::Slim);
    QString text;
    for (const PaintedText &painted : made.texts())
        text += painted.text;
    EXPECT_EQ(text, "alis01AC-Ds11EFGH");
}

TEST_F(PrintingLayout, FillsKeepTheirOrderFromPrintToPrint)
{
    ZEP::KALMO2 &window = open(alignment({letters(60), letters(60)}));
    const Print one = print(window, ZEP::KALMO2::Fat);
    const Print two = print(window, ZEP::KALMO2::Fat);
    ASSERT_EQ(one.rects().size(), two.rects().size());
    for (std::size_t i = 0; i < one.rects().size(); ++i) {
        EXPECT_EQ(one.rects()[i].rect, two.rects()[i].rect);
        EXPECT_EQ(one.rects()[i].fill, two.rects()[i].fill);
    }
}

// ---- Pages

TEST_F(PrintingLayout, ExactlyOneBlockIsOneSection)
{
    Print any = print(alignment({"AC"}));
    const auto columns =
        static_cast<std::size_t>(PageLayout(*any.printer, font(), 1, {"s0"}).columns);
    for (const std::size_t width : {columns, columns + 1}) {
        Print made = print(alignment({letters(width)}));
        EXPECT_EQ(made.messages.count("Printed section 1."), 1);
        EXPECT_EQ(made.messages.count("Printed section 2."), width == columns ? 0 : 1);
        EXPECT_EQ(made.pages(), 1);
    }
}

TEST_F(PrintingLayout, ColumnsThatFillOnePageMakeNoSecond)
{
    Print any = print(alignment({"AC"}));
    const auto columns =
        static_cast<std::size_t>(PageLayout(*any.printer, font(), 1, {"s0"}).columns);
    Print full = print(alignment({letters(2 * columns)}), ZEP::KALMO2::Slim, pageOf(8));
    EXPECT_EQ(full.pages(), 1);
    EXPECT_EQ(full.messages.count("Printing next page..."), 0);
    Print more = print(alignment({letters(2 * columns + 1)}), ZEP::KALMO2::Slim, pageOf(8));
    EXPECT_EQ(more.pages(), 2);
    EXPECT_EQ(more.messages.count("Printing next page..."), 1);
}

TEST_F(PrintingLayout, APageHoldsTheBlocksThatFitWhole)
{
    setSettings(kWithElements);
    Print made = print(alignment({letters(500), letters(500), letters(500)}),
                       ZEP::KALMO2::BlackAndWhite, pageOf(60));
    int onFirst = 0;
    for (const PaintedText &name : made.called("s0"))
        onFirst += name.page == 0 ? 1 : 0;
    EXPECT_EQ(onFirst, 6);
}

TEST_F(PrintingLayout, LaterPagesBeginAtTheTopWithoutTitleAndLegend)
{
    TAMBO::Alignment &shown = alignment({letters(150), letters(150)}, "ali", {"abcdefghijk", "b"});
    Print made = print(shown, ZEP::KALMO2::BlackAndWhite, pageOf(10));
    PageLayout at = numberedLayout(made, shown);
    ASSERT_EQ(made.pages(), 2);
    at.legend = 0;
    EXPECT_EQ(made.textIn(at.label(0), 1), "[ 1]");
    EXPECT_EQ(made.textIn(at.ruler(9), 1), QString::number(2 * at.columns + 10));
    for (const PaintedText &text : made.printer->textsOn(1)) {
        EXPECT_NE(text.text, "ali");
        EXPECT_FALSE(text.text.contains("abcdefghijk"));
    }
}

TEST_F(PrintingLayout, ALegendMayPushTheLastBlockBeyondThePage)
{
    const int kRows = 7;
    TAMBO::Alignment &shown = alignment(Texts(kRows, letters(200)), "ali", {"abcdefghijk"});
    Print made = print(shown, ZEP::KALMO2::BlackAndWhite, pageOf(2 * (kRows + 3)));
    PageLayout at = numberedLayout(made, shown);
    EXPECT_EQ(at.blocksPerPage, 2);
    int onFirst = 0;
    for (const PaintedText &label : made.called("[ 7]"))
        onFirst += label.page == 0 ? 1 : 0;
    EXPECT_EQ(onFirst, 2);
    const QRect last = at.label(6, 1);
    EXPECT_GT(last.top(), made.printer->height());
    EXPECT_EQ(made.textIn(last), "[ 7]");
}

TEST_F(PrintingLayout, TooManySequencesForAPageAreRefused)
{
    TAMBO::Alignment &shown = alignment(Texts(8, letters(100)));
    const LogLines log;
    const Print refused = print(shown, ZEP::KALMO2::Fat, pageOf(10));
    EXPECT_TRUE(refused.printer->isEmpty());
    EXPECT_EQ(refused.messages,
              QStringList("Too many sequences to fit in one page.\nConsider smaller font."));
    EXPECT_EQ(log.texts(),
              QStringList("Nothing was printed: there are more sequences than lines on "
                          "a page. A smaller font helps."));
}

TEST_F(PrintingLayout, AsManyLinesAsABlockGiveABlockPerPage)
{
    const Print made = print(alignment(Texts(7, letters(100))), ZEP::KALMO2::Slim, pageOf(10));
    EXPECT_EQ(made.pages(), 3);
    EXPECT_EQ(made.messages.count("Printed section 1."), 3);
    EXPECT_EQ(made.messages.count("Printing next page..."), 2);
}

TEST_F(PrintingLayout, ALongNameDoesNotHideThatThereAreTooManySequences)
{
    const Print refused =
        print(alignment(Texts(8, "AC"), "ali", {"abcdefghijk"}), ZEP::KALMO2::Fat, pageOf(10));
    EXPECT_TRUE(refused.printer->isEmpty());
    EXPECT_EQ(refused.messages,
              (QStringList{"Sequence names are rather long, truncating.",
                           "Too many sequences to fit in one page.\nConsider smaller font."}));
}

TEST_F(PrintingLayout, APageTooNarrowForAColumnIsRefused)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    Print any = print(shown);
    const PageLayout at = layout(any, shown);
    const LogLines log;
    const Print refused =
        print(shown, ZEP::KALMO2::Fat, {at.left + at.measures.cell - 1, kA4.height()});
    EXPECT_TRUE(refused.printer->isEmpty());
    EXPECT_EQ(refused.messages, QStringList("Page too narrow for one column."));
    EXPECT_EQ(log.texts(),
              QStringList("Nothing was printed: the page is too narrow for one column."));
    Print made = print(shown, ZEP::KALMO2::Fat, {at.left + at.measures.cell, kA4.height()});
    EXPECT_EQ(made.messages.count("Printed section 3."), 1);
}

// ---- What is told

TEST_F(PrintingLayout, SectionsAreCountedOnTheirPage)
{
    const Print made = print(alignment({letters(110)}), ZEP::KALMO2::Fat, pageOf(8));
    ASSERT_EQ(made.messages.size(), 6);
    EXPECT_EQ(made.messages.first(5),
              (QStringList{"Starting to print...", "Printed section 1.", "Printed section 2.",
                           "Printing next page...", "Printed section 1."}));
    EXPECT_TRUE(
        QRegularExpression("^Printed in [ 0-9]{8,} msec$").match(made.messages.back()).hasMatch())
        << made.messages.back().toStdString();
}

TEST_F(PrintingLayout, NothingIsKeptBetweenPrints)
{
    ZEP::KALMO2 &window = open(alignment({letters(200), letters(200)}, "ali", {"abcdefghijk"}));
    const Print one = print(window, ZEP::KALMO2::Fat, pageOf(10));
    const Print two = print(window, ZEP::KALMO2::Fat, pageOf(10));
    ASSERT_EQ(one.texts().size(), two.texts().size());
    for (std::size_t i = 0; i < one.texts().size(); ++i) {
        EXPECT_EQ(one.texts()[i].text, two.texts()[i].text);
        EXPECT_EQ(one.texts()[i].place, two.texts()[i].place);
        EXPECT_EQ(one.texts()[i].page, two.texts()[i].page);
    }
    EXPECT_EQ(one.rects().size(), two.rects().size());
}

// ---- What is no printer

TEST_F(PrintingLayout, OnlyPrintersArePaintedOn)
{
    ZEP::KALMO2 &window = open(alignment({"ACD"}));
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    const QImage before = image;
    const MessageRecorder messages;
    QPainter painter(&image);
    window.drawIt(&painter, ZEP::KALMO2::Fat);
    painter.end();
    QPainter idle;
    window.drawIt(&idle, ZEP::KALMO2::Fat);
    window.drawIt(nullptr, ZEP::KALMO2::Fat);
    EXPECT_EQ(image, before);
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(PrintingLayout, AWindowWithoutAlignmentPaintsNothing)
{
    const Print made = print(open());
    EXPECT_TRUE(made.printer->isEmpty());
    EXPECT_EQ(made.messages, QStringList());
}

TEST_F(PrintingLayout, ThePaintingSlotsHaveTheirPlaces)
{
    const QMetaObject &meta = ZEP::KALMO2::staticMetaObject;
    QStringList found;
    for (int slot = 16; slot < 20; ++slot)
        found << meta.method(meta.methodOffset() + slot).methodSignature();
    EXPECT_EQ(found, (QStringList{"printItBox()", "printItChar()", "printItBW()",
                                  "drawIt(QPainter*,PrintStyle)"}));
    EXPECT_EQ(ZEP::KALMO2::Slim, 1);
    EXPECT_EQ(ZEP::KALMO2::Fat, 2);
    EXPECT_EQ(ZEP::KALMO2::BlackAndWhite, 3);
}

} // namespace PrintingLayoutTest
