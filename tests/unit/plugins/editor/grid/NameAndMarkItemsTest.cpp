// SPDX-License-Identifier: GPL-3.0-or-later
// The text items beside the residues: names, column marks and consensus letters.
#include "CanvasFixture.h"
#include "ColItem.h"
#include "IdItem.h"
#include "QCanvas.h"
#include "RowItem.h"
#include "support/ExpectMessage.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QPainter>

#include <string>

namespace NameAndMarkItemsTest {

const QSize kImage(200, 40);

class NameAndMarkItems : public CanvasFixture
{
protected:
    RowItem rowItem(TAMBO::Alignment &alignment, unsigned long row)
    {
        return {&alignment, row, m_Font, nullptr, 150, 5};
    }
    ColItem colItem(TAMBO::Alignment &alignment, unsigned long col)
    {
        return {&alignment, col, m_Font, nullptr, 100, 5};
    }
    // What the item says after it has been drawn.
    template <typename Item> static QString drawnText(Item &&item)
    {
        (void)drawnBy(item, kImage);
        return item.text();
    }
    QString consensusOf(const std::string &column)
    {
        Texts rows;
        for (const char letter : column)
            rows.emplace_back(1, letter);
        TAMBO::Alignment &alignment = makeAlignment(rows);
        IdItem item(&alignment, 0, m_Font, nullptr, 100, 5);
        (void)drawnBy(item, kImage);
        return item.text();
    }
    static void selectRow(TAMBO::Alignment &alignment, unsigned long row, bool selected = true)
    {
        for (unsigned long col = 0; col < alignment.width(); ++col) {
            if (TAMBO::Compound *residue = alignment.getItem(row, col))
                residue->SetSelected(selected);
        }
    }
    // The text in its colour, as one would write it there.
    QImage written(const QString &text, const QColor &color, int left) const
    {
        QImage image(kImage, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setFont(m_Font);
        painter.setPen(color);
        painter.drawText(left, 5 + QFontMetrics(m_Font).ascent(), text);
        return image;
    }
    [[nodiscard]] int widthOf(const QString &text) const
    {
        return QFontMetrics(m_Font).horizontalAdvance(text);
    }
};

TEST_F(NameAndMarkItems, RowItemIsTheNameAndAMarkWithItsRightEdgeAtX)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC", "AC"}, {"1abc_A", "target"});
    const RowItem item = rowItem(alignment, 1);
    EXPECT_EQ(item.text(), QStringLiteral("target  O"));
    EXPECT_EQ(item.textFlags(), int(Qt::AlignRight));
    EXPECT_EQ(item.x(), 150);
    EXPECT_EQ(item.y(), 5);
    EXPECT_NEAR(item.boundingRect().right(), 150, 1);
    EXPECT_EQ(item.getRow(), 1U);
    EXPECT_EQ(item.getTarget(), &alignment);
    EXPECT_EQ(RowItem::RTTI, 67);
    EXPECT_EQ(item.rtti(), 67);
}

TEST_F(NameAndMarkItems, RowItemIsHitInExactlyOneCellsHeightAndItsTextsWidth)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC", "AC"}, {"1abc_A", "target"});
    // The lines of the second are closer than its letters are high.
    for (const char *family : {"DejaVu Sans", "Nimbus Sans Narrow"}) {
        m_Font = QFont(QString::fromLatin1(family), 24);
        ASSERT_TRUE(QFontInfo(m_Font).family().startsWith(QString::fromLatin1(family)));
        const RowItem item = rowItem(alignment, 1);
        const int height = QFontMetrics(m_Font).lineSpacing();
        EXPECT_EQ(item.boundingRect(),
                  QRect(150 - widthOf(item.text()), 5, widthOf(item.text()), height));
    }
    EXPECT_LT(QFontMetrics(m_Font).lineSpacing(), QFontMetrics(m_Font).height());
}

TEST_F(NameAndMarkItems, RowItemIsSelectedWhenNoResidueOfTheRowIsUnselected)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC-D", "ACDE"});
    EXPECT_FALSE(rowItem(alignment, 0).selected());
    selectRow(alignment, 0);
    EXPECT_TRUE(rowItem(alignment, 0).selected());
    EXPECT_FALSE(rowItem(alignment, 1).selected());
    alignment.getItem(0, 1)->SetSelected(false);
    EXPECT_FALSE(rowItem(alignment, 0).selected());
}

TEST_F(NameAndMarkItems, UnselectedRowIsDrawnInBlackWithAnO)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC"}, {"1abc_A"});
    RowItem item = rowItem(alignment, 0);
    const QString text = QStringLiteral("1abc_A  O");
    EXPECT_EQ(drawnBy(item, kImage), written(text, Qt::black, 150 - widthOf(text)));
}

TEST_F(NameAndMarkItems, SelectedRowIsDrawnInGreenWithAnX)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC"}, {"1abc_A"});
    selectRow(alignment, 0);
    RowItem item = rowItem(alignment, 0);
    const QString text = QStringLiteral("1abc_A  X");
    EXPECT_EQ(drawnBy(item, kImage), written(text, Qt::green, 150 - widthOf(text)));
    selectRow(alignment, 0, false);
    EXPECT_EQ(pixelsOf(drawnBy(item, kImage), Qt::green), 0);
    EXPECT_EQ(item.text(), QStringLiteral("1abc_A  O"));
}

TEST_F(NameAndMarkItems, RowOfGapsOnlyIsDrawnAsSelected)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC", "--"}, {"a", "gaps"});
    RowItem item = rowItem(alignment, 1);
    EXPECT_TRUE(item.selected());
    EXPECT_GT(pixelsOf(drawnBy(item, kImage), Qt::green), 0);
    EXPECT_EQ(item.text(), QStringLiteral("gaps  X"));
}

TEST_F(NameAndMarkItems, RowItemReadsTheNameAtEveryPainting)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC", "AC"}, {"first", "second"});
    RowItem item = rowItem(alignment, 0);
    alignment.bubbleRow(0, 1);
    (void)drawnBy(item, kImage);
    EXPECT_EQ(item.text(), QStringLiteral("second  O"));
}

TEST_F(NameAndMarkItems, RowItemHitSelectsTheWholeRowOrNoneWhenAllIsSelected)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC-D", "ACDE"});
    alignment.getItem(0, 0)->SetSelected(true);
    RowItem item = rowItem(alignment, 0);
    CountingSubscriber others;
    item.hit();
    EXPECT_EQ(selectionOf(alignment, 0), "xx-x");
    EXPECT_EQ(selectionOf(alignment, 1), "oooo");
    EXPECT_EQ(others.m_Updates, 1);
    item.hit();
    EXPECT_EQ(selectionOf(alignment, 0), "oo-o");
}

TEST_F(NameAndMarkItems, ColItemIsAMarkCentredOnX)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC", "AC"});
    const ColItem item = colItem(alignment, 1);
    EXPECT_EQ(item.text(), QStringLiteral("O"));
    EXPECT_EQ(item.textFlags(), int(Qt::AlignHCenter));
    EXPECT_NEAR(item.boundingRect().center().x(), 100, 1);
    EXPECT_EQ(item.getCol(), 1U);
    EXPECT_EQ(ColItem::RTTI, 68);
    EXPECT_EQ(item.rtti(), 68);
}

TEST_F(NameAndMarkItems, ColumnIsMarkedWithAGreenXWhenAllItsResiduesAreSelected)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC", "A-"});
    ColItem item = colItem(alignment, 0);
    EXPECT_EQ(drawnText(item), QStringLiteral("O"));
    alignment.getItem(0, 0)->SetSelected(true);
    EXPECT_EQ(drawnText(item), QStringLiteral("O"));
    alignment.getItem(1, 0)->SetSelected(true);
    const QImage image = drawnBy(item, kImage);
    EXPECT_EQ(item.text(), QStringLiteral("X"));
    EXPECT_EQ(image, written(item.text(), Qt::green, item.boundingRect().left()));
}

TEST_F(NameAndMarkItems, GapsDoNotKeepAColumnFromBeingSelected)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC", "A-"});
    alignment.getItem(0, 1)->SetSelected(true);
    EXPECT_EQ(drawnText(colItem(alignment, 1)), QStringLiteral("X"));
}

TEST_F(NameAndMarkItems, ColumnOfGapsOnlyIsDrawnAsUnselectedInBlack)
{
    TAMBO::Alignment &alignment = makeAlignment({"A-", "C-"});
    ColItem item = colItem(alignment, 1);
    const QImage image = drawnBy(item, kImage);
    EXPECT_EQ(image, written(QStringLiteral("O"), Qt::black, item.boundingRect().left()));
}

TEST_F(NameAndMarkItems, ColItemHitSelectsTheWholeColumnOrNoneWhenAllIsSelected)
{
    TAMBO::Alignment &alignment = makeAlignment({"ACD", "A-D"});
    alignment.getItem(0, 0)->SetSelected(true);
    CountingSubscriber others;
    colItem(alignment, 0).hit();
    EXPECT_EQ(selectionOf(alignment, 0), "xoo");
    EXPECT_EQ(selectionOf(alignment, 1), "x-o");
    EXPECT_EQ(others.m_Updates, 1);
    colItem(alignment, 0).hit();
    EXPECT_EQ(selectionOf(alignment, 0), "ooo");
    EXPECT_EQ(selectionOf(alignment, 1), "o-o");
}

TEST_F(NameAndMarkItems, RefusedHitsDoNothingSilently)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC"});
    setLocked(true);
    const MessageRecorder recorder;
    rowItem(alignment, 0).hit();
    colItem(alignment, 0).hit();
    EXPECT_EQ(selectionOf(alignment, 0), "oo");
    EXPECT_TRUE(recorder.messages().isEmpty());
}

TEST_F(NameAndMarkItems, IdItemIsCentredOnX)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC", "AC"});
    const IdItem item(&alignment, 1, m_Font, nullptr, 100, 5);
    EXPECT_EQ(item.text(), QStringLiteral("O"));
    EXPECT_EQ(item.textFlags(), int(Qt::AlignHCenter));
    EXPECT_NEAR(item.boundingRect().center().x(), 100, 1);
    EXPECT_EQ(item.getCol(), 1U);
    EXPECT_EQ(IdItem::RTTI, 69);
    EXPECT_EQ(item.rtti(), 69);
}

TEST_F(NameAndMarkItems, ConsensusIsTheLetterOfAllRowsOrOfMoreThanHalfInLowerCase)
{
    const std::pair<const char *, const char *> table[] = {
        {"AAAA", "A"}, {"AAA-", "a"}, {"AA-G", ""},  {"AAGG", ""},  {"CC", "C"},
        {"C-", ""},    {"EEK", "e"},  {"EEKK-", ""}, {"----", ""},  {"EEEKK", "e"},
        {"A", ""},     {"-", ""},     {"--E", ""},   {"E--EE", "e"}};
    for (const auto &[column, letter] : table)
        EXPECT_EQ(consensusOf(column), QString::fromLatin1(letter)) << column;
}

TEST_F(NameAndMarkItems, ConsensusIsWrittenInBlack)
{
    TAMBO::Alignment &alignment = makeAlignment({"W", "W"});
    IdItem item(&alignment, 0, m_Font, nullptr, 100, 5);
    const QImage image = drawnBy(item, kImage);
    EXPECT_EQ(image, written(QStringLiteral("W"), Qt::black, item.boundingRect().left()));
}

TEST_F(NameAndMarkItems, ConsensusThatAppearsLaterIsPaintedByTheCanvas)
{
    TAMBO::Alignment &alignment = makeAlignment({"A-C", "AC-"});
    QCanvas canvas(200, 40);
    auto *item = new IdItem(&alignment, 2, m_Font, &canvas, 100, 5);
    item->show();
    const auto paint = [&canvas] {
        QImage image(kImage, QImage::Format_RGB32);
        QPainter painter(&image);
        canvas.drawArea(image.rect(), &painter);
        return image;
    };
    EXPECT_EQ(pixelsOf(paint(), Qt::white), 200 * 40);
    alignment.moveGap(1, 2, 1, true);
    EXPECT_LT(pixelsOf(paint(), Qt::white), 200 * 40);
    EXPECT_EQ(item->text(), QStringLiteral("C"));
}

TEST_F(NameAndMarkItems, WithoutAnAlignmentTheySaySoAndExist)
{
    {
        const ExpectMessage warning(QtWarningMsg,
                                    QStringLiteral("In file RowItem, line 31: Out of memory"));
        RowItem item(nullptr, 0, m_Font, nullptr, 100, 5);
        EXPECT_EQ(item.text(), QStringLiteral("  O"));
        EXPECT_EQ(drawnText(item), QStringLiteral("  O"));
    }
    {
        const ExpectMessage warning(QtWarningMsg,
                                    QStringLiteral("In file ColItem, line 29: Out of memory"));
        EXPECT_EQ(drawnText(ColItem(nullptr, 0, m_Font, nullptr, 100, 5)), QStringLiteral("O"));
    }
    {
        const ExpectMessage warning(QtWarningMsg,
                                    QStringLiteral("In file IdItem, line 29: Out of memory"));
        EXPECT_EQ(drawnText(IdItem(nullptr, 0, m_Font, nullptr, 100, 5)), QString());
    }
}

} // namespace NameAndMarkItemsTest
