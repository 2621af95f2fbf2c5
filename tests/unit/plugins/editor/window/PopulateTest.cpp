// SPDX-License-Identifier: GPL-3.0-or-later
// The items that show an alignment, how they go again, and the numbering.
#include "WindowFixture.h"

#include "ColItem.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "IdItem.h"
#include "QCanvasRectangle.h"
#include "QCanvasText.h"
#include "ResidueItem.h"
#include "RowItem.h"

#include <QFontMetrics>

namespace PopulateTest {

class Populate : public WindowFixture
{
protected:
    Populate()
    {
        const QFontMetrics metrics(font());
        for (const char letter : std::string("-ABCDEFGHIJKLMNOPQRSTUVWXYZ"))
            m_Width = std::max(m_Width, metrics.boundingRect(QLatin1Char(letter)).width() + 4);
        m_Height = metrics.lineSpacing();
    }
    static QFont font() { return QFont("DejaVu Sans Mono", 11); }

    template <typename Item> static std::vector<const Item *> itemsIn(QCanvas &canvas)
    {
        std::vector<const Item *> found;
        for (const QCanvasItem *item : canvas.allItems())
            if (item->rtti() == Item::RTTI)
                found.push_back(static_cast<const Item *>(item));
        return found;
    }
    static Texts numbersOf(const ZEP::KALMO2 &window)
    {
        Texts texts;
        for (const auto *item : itemsIn<QCanvasText>(*WindowParts(window).headerCanvas))
            texts.push_back(item->text().toStdString());
        return texts;
    }
    // Number and letter texts with the column they stand over.
    std::vector<std::pair<std::string, double>> placesOf(const ZEP::KALMO2 &window, double y) const
    {
        std::vector<std::pair<std::string, double>> places;
        for (const auto *item : itemsIn<QCanvasText>(*WindowParts(window).headerCanvas))
            if (item->y() == y)
                places.emplace_back(item->text().toStdString(), item->x() / m_Width - 0.5);
        return places;
    }
    static void renumber(TAMBO::Alignment &alignment, int first)
    {
        TAMBO::Peptide &sequence = *TAMBO::Peptide::from(alignment.GetSeq(0));
        for (std::size_t i = 0; i < sequence.residueCount(); ++i)
            sequence.setNumber(i, TAMBO::SequenceNumber(first + static_cast<int>(i)));
    }
    static void makeElement(TAMBO::Alignment &alignment, unsigned long begin, unsigned long end,
                            char type)
    {
        std::vector<TAMBO::Compound *> residues;
        for (unsigned long col = begin; col < end; ++col)
            residues.push_back(alignment.getItem(0, col));
        ASSERT_NE(TAMBO::DataMaker::makeSSE(alignment.GetSeq(0), "unk", residues, type), nullptr);
    }

    int m_Width = 0;
    int m_Height = 0;
};

TEST_F(Populate, ThreeRowsOfFiveColumnsHaveTheirItems)
{
    const ZEP::KALMO2 &window = open(alignment({"ACDEF", "AC-EF", "--DEF"}));
    const WindowParts parts(window);
    EXPECT_EQ(parts.cells->allItems().size(), 15);
    EXPECT_EQ(itemsOf(*parts.cells, 66), 15);
    EXPECT_EQ(itemsOf(*parts.headerCanvas, 69), 5);
    EXPECT_EQ(itemsOf(*parts.headerCanvas, 68), 5);
    EXPECT_EQ(itemsOf(*parts.headerCanvas, QCanvasRectangle::RTTI), 1);
    EXPECT_EQ(parts.headerCanvas->allItems().size(), 11);
    EXPECT_EQ(itemsOf(*parts.nameCanvas, 67), 3);
    EXPECT_EQ(parts.nameCanvas->allItems().size(), 3);
}

TEST_F(Populate, TheCanvasesHaveOneCellMore)
{
    const WindowParts parts(open(alignment({"ACDEF", "AC-EF", "--DEF"})));
    EXPECT_EQ(parts.cells->size(), QSize(6 * m_Width, 4 * m_Height));
    EXPECT_EQ(parts.nameCanvas->size(), QSize(8 * m_Width, 4 * m_Height));
    EXPECT_EQ(parts.headerCanvas->size(), QSize(6 * m_Width, 4 * m_Height));
    const QPoint middle(m_Width / 2, m_Height / 2);
    EXPECT_TRUE(parts.cells->collisions(QPoint(5 * m_Width, 0) + middle).isEmpty());
    EXPECT_TRUE(parts.cells->collisions(QPoint(0, 3 * m_Height) + middle).isEmpty());
    EXPECT_EQ(parts.cells->collisions(QPoint(4 * m_Width, 2 * m_Height) + middle).size(), 1);
}

TEST_F(Populate, ResidueItemsStandRowByRow)
{
    TAMBO::Alignment &shown = alignment({"ACDEF", "AC-EF", "--DEF"});
    const WindowParts parts(open(shown));
    const auto items = itemsIn<ResidueItem>(*parts.cells);
    ASSERT_EQ(items.size(), 15U);
    for (unsigned long i = 0; i < 15; ++i) {
        const ResidueItem &item = *items[i];
        const unsigned long row = i / 5;
        const unsigned long col = i % 5;
        EXPECT_EQ(item.getRow(), row);
        EXPECT_EQ(item.getCol(), col);
        EXPECT_EQ(item.getTarget(), &shown);
        EXPECT_EQ(item.boundingRect(), QRect(static_cast<int>(col) * m_Width,
                                             static_cast<int>(row) * m_Height, m_Width, m_Height));
        EXPECT_EQ(item.z(), 0.0);
        EXPECT_TRUE(item.isVisible());
    }
}

TEST_F(Populate, HeaderItemsStandInTheMiddleOfTheirColumns)
{
    // An odd width, so that the middle of a cell lies between two pixels.
    setSettings("[KALMO2]\nFont = DejaVu Sans, 13\n");
    const WindowParts parts(open(alignment({"ACDEF", "AC-EF"})));
    const int width = parts.headerCanvas->width() / 6;
    const int height = parts.headerCanvas->height() / 4;
    ASSERT_EQ(width % 2, 1) << "this font does not serve the test any more";
    const auto ids = itemsIn<IdItem>(*parts.headerCanvas);
    const auto marks = itemsIn<ColItem>(*parts.headerCanvas);
    ASSERT_EQ(ids.size(), 5U);
    ASSERT_EQ(marks.size(), 5U);
    for (std::size_t col = 0; col < 5; ++col) {
        const int x = static_cast<int>((static_cast<double>(col) + 0.5) * width);
        EXPECT_EQ(ids[col]->getCol(), col);
        EXPECT_EQ(ids[col]->x(), x);
        EXPECT_EQ(ids[col]->y(), 2 * height);
        EXPECT_EQ(ids[col]->z(), 0.0);
        EXPECT_TRUE(ids[col]->isVisible());
        EXPECT_EQ(marks[col]->getCol(), col);
        EXPECT_EQ(marks[col]->x(), x);
        EXPECT_EQ(marks[col]->y(), 3 * height);
        EXPECT_EQ(marks[col]->z(), 3.0);
        EXPECT_TRUE(marks[col]->isVisible());
    }
}

TEST_F(Populate, HeaderItemsComeColumnByColumnAndTheMarkerAfterThem)
{
    const WindowParts parts(open(alignment({"ACDEFACDEF"})));
    std::vector<int> kinds;
    for (const QCanvasItem *item : parts.headerCanvas->allItems())
        kinds.push_back(item->rtti());
    std::vector<int> expected;
    for (int col = 0; col < 10; ++col)
        expected.insert(expected.end(), {IdItem::RTTI, ColItem::RTTI});
    expected.insert(expected.end(), {QCanvasRectangle::RTTI, QCanvasText::RTTI});
    EXPECT_EQ(kinds, expected);
}

TEST_F(Populate, NamesStandOneCellFromTheRightEdge)
{
    TAMBO::Alignment &shown = alignment({"AC", "AC", "AC"});
    const WindowParts parts(open(shown));
    const auto names = itemsIn<RowItem>(*parts.nameCanvas);
    ASSERT_EQ(names.size(), 3U);
    for (std::size_t row = 0; row < 3; ++row) {
        EXPECT_EQ(names[row]->getRow(), row);
        EXPECT_EQ(names[row]->getTarget(), &shown);
        EXPECT_EQ(names[row]->x(), 7 * m_Width);
        EXPECT_EQ(names[row]->y(), static_cast<double>(row) * m_Height);
        EXPECT_EQ(names[row]->z(), 3.0);
        EXPECT_TRUE(names[row]->isVisible());
    }
}

TEST_F(Populate, TheMarkerShowsTheRangeOfTheAlignment)
{
    TAMBO::Alignment &shown = alignment({"ACDEF"});
    shown.range({2, 4});
    const WindowParts parts(open(shown));
    const auto marker = itemsIn<QCanvasRectangle>(*parts.headerCanvas);
    ASSERT_EQ(marker.size(), 1U);
    EXPECT_EQ(marker[0]->x(), 2 * m_Width);
    EXPECT_EQ(marker[0]->y(), 3 * m_Height);
    EXPECT_EQ(marker[0]->width(), 2 * m_Width);
    EXPECT_EQ(marker[0]->height(), m_Height);
    EXPECT_EQ(marker[0]->z(), 0.0);
    EXPECT_TRUE(marker[0]->isVisible());
    EXPECT_EQ(parts.header->begin(), 2U);
    EXPECT_EQ(parts.header->end(), 4U);
}

TEST_F(Populate, TheCornerShowsTheName)
{
    ZEP::KALMO2 &window = open(alignment({"AC"}, "first"));
    const WindowParts parts(window);
    EXPECT_EQ(parts.corner->text(), "first");
    EXPECT_EQ(parts.corner->toolTip(), "first");
    const MessageRecorder quiet;
    window.Populate(&alignment({"AC"}, "second"));
    EXPECT_EQ(parts.corner->text(), "second");
    EXPECT_EQ(parts.corner->toolTip(), "second");
}

TEST_F(Populate, SaysHowLargeTheAlignmentIs)
{
    ZEP::KALMO2 &window = open();
    const ExpectMessage got(QtDebugMsg, "Got Alignment 3 by 5");
    window.Populate(&alignment({"ACDEF", "AC-EF", "--DEF"}));
}

TEST_F(Populate, AnAlignmentWithoutColumnsIsShownWithoutItems)
{
    ZEP::KALMO2 &window = open();
    TAMBO::Alignment &none = alignmentWithoutColumns();
    ASSERT_EQ(none.width(), 0U);
    {
        const ExpectMessage got(QtDebugMsg, "Got Alignment 0 by 0");
        window.Populate(&none);
    }
    const WindowParts parts(window);
    EXPECT_EQ(parts.corner->text(), "none");
    EXPECT_TRUE(parts.nameCanvas->allItems().isEmpty());
    EXPECT_EQ(parts.headerCanvas->allItems().size(), 1) << "the marker alone";
}

TEST_F(Populate, ASecondAlignmentTakesThePlaceOfTheFirst)
{
    ZEP::KALMO2 &window = open(alignment({"ACDEF", "ACDEF"}));
    TAMBO::Alignment &second = alignment({"AC"});
    const MessageRecorder quiet;
    window.Populate(&second);
    const WindowParts parts(window);
    EXPECT_EQ(parts.cells->allItems().size(), 2);
    for (const auto *item : itemsIn<ResidueItem>(*parts.cells))
        EXPECT_EQ(item->getTarget(), &second);
    EXPECT_EQ(parts.headerCanvas->allItems().size(), 5);
    EXPECT_EQ(parts.nameCanvas->allItems().size(), 1);
}

TEST_F(Populate, WhatIsNoAlignmentEmptiesTheWindowWithoutAWord)
{
    TAMBO::Alignment &shown = alignment({"ACDEF"});
    for (TAMBO::Compound *other : {shown.GetSeq(0), static_cast<TAMBO::Compound *>(nullptr)}) {
        ZEP::KALMO2 &window = open(shown);
        const MessageRecorder messages;
        window.Populate(other);
        EXPECT_TRUE(isEmpty(window));
        EXPECT_EQ(messages.messages(), QStringList());
    }
}

TEST_F(Populate, ClearForgetsEverything)
{
    TAMBO::Alignment &shown = alignment({"ACDEFACDEF"});
    shown.range({2, 4});
    ZEP::KALMO2 &window = open(shown);
    window.Clear();
    EXPECT_TRUE(isEmpty(window));
    const WindowParts parts(window);
    EXPECT_TRUE(parts.corner->toolTip().isEmpty());
    EXPECT_EQ(parts.header->begin(), 0U);
    EXPECT_EQ(parts.header->end(), 0U);
    for (const QCanvas *canvas : {parts.cells, parts.nameCanvas, parts.headerCanvas})
        EXPECT_EQ(canvas->size(), QSize(0, 0));
    parts.header->SetRange(2, 4);
    EXPECT_TRUE(isEmpty(window)) << "there is no marker any more";
    window.AddGapColumn();
    EXPECT_EQ(shown.width(), 10U);
    EXPECT_EQ(alignments().size(), 1U) << "the alignment is the workbench's";
    EXPECT_EQ(shown.range(), TAMBO::Alignment::Range(2, 4));
}

TEST_F(Populate, ARebuildGivesTheItemsOfAFreshWindow)
{
    TAMBO::Alignment &shown = alignment({"ACDEFACDEFAC", "AC-EFACDEFAC"});
    ZEP::KALMO2 &window = open(shown);
    {
        const MessageRecorder quiet;
        call(window, "ReCreate");
    }
    const WindowParts rebuilt(window);
    const WindowParts fresh(open(shown));
    const auto describe = [](QCanvas &canvas) {
        std::vector<std::tuple<int, double, double, double>> items;
        for (const QCanvasItem *item : canvas.allItems())
            items.emplace_back(item->rtti(), item->x(), item->y(), item->z());
        return items;
    };
    EXPECT_EQ(describe(*rebuilt.cells), describe(*fresh.cells));
    EXPECT_EQ(describe(*rebuilt.headerCanvas), describe(*fresh.headerCanvas));
    EXPECT_EQ(describe(*rebuilt.nameCanvas), describe(*fresh.nameCanvas));
}

TEST_F(Populate, ARebuildKeepsTheScrollPosition)
{
    ZEP::KALMO2 &window = show(alignment(Texts(60, std::string(200, 'A'))), {700, 400});
    const WindowParts parts(window);
    parts.view->setContentsPos(333, 222);
    const MessageRecorder quiet;
    for (int i = 0; i < 2; ++i) {
        call(window, "ReCreate");
        EXPECT_EQ(QPoint(parts.view->contentsX(), parts.view->contentsY()), QPoint(333, 222));
        EXPECT_EQ(parts.header->contentsX(), 333);
        EXPECT_EQ(parts.names->contentsY(), 222);
        QCoreApplication::processEvents();
    }
}

TEST_F(Populate, AnotherAlignmentIsShownFromItsBeginning)
{
    ZEP::KALMO2 &window = show(alignment(Texts(60, std::string(200, 'A'))), {700, 400});
    const WindowParts parts(window);
    parts.view->setContentsPos(333, 222);
    const MessageRecorder quiet;
    window.Populate(&alignment(Texts(60, std::string(200, 'C'))));
    QCoreApplication::processEvents();
    EXPECT_EQ(QPoint(parts.view->contentsX(), parts.view->contentsY()), QPoint(0, 0));
    EXPECT_EQ(parts.header->contentsX(), 0);
    EXPECT_EQ(parts.names->contentsY(), 0);
}

TEST_F(Populate, EveryTenthResidueOfTheFirstRowShowsItsOwnNumber)
{
    TAMBO::Alignment &shown = alignment({"A-CDE--FGHIKLMNPQRSTVWY", "AACDEAAFGHIKLMNPQRSTVWY"});
    renumber(shown, 101);
    const ZEP::KALMO2 &window = open(shown);
    EXPECT_EQ(placesOf(window, 0),
              (std::vector<std::pair<std::string, double>>{{"110", 12}, {"120", 22}}));
}

TEST_F(Populate, NumbersAreCentredTextsInTheWindowsFont)
{
    const WindowParts parts(open(alignment({"ACDEFGHIKL"})));
    const auto numbers = itemsIn<QCanvasText>(*parts.headerCanvas);
    ASSERT_EQ(numbers.size(), 1U);
    EXPECT_EQ(numbers[0]->text(), "10");
    EXPECT_EQ(numbers[0]->font().family(), font().family());
    EXPECT_EQ(numbers[0]->font().pointSize(), 11);
    EXPECT_EQ(numbers[0]->x(), 9.5 * m_Width);
    EXPECT_EQ(numbers[0]->y(), 0.0);
    EXPECT_EQ(numbers[0]->z(), 2.0);
    EXPECT_EQ(numbers[0]->textFlags(), int(Qt::AlignHCenter));
    EXPECT_TRUE(numbers[0]->isVisible());
}

TEST_F(Populate, ResiduesOfElementsShowTheLetterACellsWidthBelowTheTop)
{
    TAMBO::Alignment &shown = alignment({"ACDEFGHIKLMN"});
    makeElement(shown, 7, 11, 'H');
    const ZEP::KALMO2 &window = open(shown);
    using Places = std::vector<std::pair<std::string, double>>;
    EXPECT_EQ(placesOf(window, m_Width), (Places{{"h", 7}, {"h", 8}, {"h", 9}, {"h", 10}}));
    EXPECT_EQ(placesOf(window, 0), (Places{{"10", 9}})) << "the tenth has both";
    ASSERT_NE(m_Width, m_Height) << "this font does not tell width from height";
    EXPECT_EQ(numbersOf(window), (Texts{"h", "h", "10", "h", "h"}));
}

TEST_F(Populate, TheNumberingIsMadeAnewAndNotAdded)
{
    TAMBO::Alignment &shown = alignment({"ACDEFGHIKL"});
    ZEP::KALMO2 &window = open(shown);
    renumber(shown, 21);
    window.CreateNumbering();
    EXPECT_EQ(numbersOf(window), Texts{"30"});
    window.CreateNumbering();
    EXPECT_EQ(numbersOf(window), Texts{"30"});
}

TEST_F(Populate, NumberingWithoutAnAlignmentMakesNothing)
{
    ZEP::KALMO2 &window = open();
    window.CreateNumbering();
    EXPECT_TRUE(isEmpty(window));
}

TEST_F(Populate, AnAlignmentOfGapsHasNoNumbers)
{
    const ZEP::KALMO2 &window = open(alignment({"----------", "ACDEFGHIKL"}));
    EXPECT_EQ(numbersOf(window), Texts());
}

} // namespace PopulateTest
