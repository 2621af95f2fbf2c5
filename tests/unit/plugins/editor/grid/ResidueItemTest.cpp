// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueItem.h"

#include "CanvasFixture.h"
#include "QCanvas.h"
#include "support/ExpectMessage.h"

#include <QPainter>
#include <QTest>

namespace ResidueItemTest {

const QSize kImage(60, 60);
const QRect kCell(20, 24, 20, 24);

class ResidueItemTest : public CanvasFixture
{
protected:
    ResidueItem itemAt(TAMBO::Alignment &alignment, unsigned long row, unsigned long col)
    {
        return {&alignment, row,       col,           m_Font,        nullptr,
                kCell.x(),  kCell.y(), kCell.width(), kCell.height()};
    }
    QImage cellWith(const QColor &color)
    {
        TAMBO::Alignment &alignment = makeAlignment({"W"});
        alignment.getItem(0, 0)->SetColor(Color(color));
        ResidueItem item = itemAt(alignment, 0, 0);
        return drawnBy(item, kImage).copy(kCell);
    }
};

TEST_F(ResidueItemTest, KnowsItsAlignmentAndCell)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC-D", "ACDE"});
    const ResidueItem item = itemAt(alignment, 1, 2);
    EXPECT_EQ(item.getTarget(), &alignment);
    EXPECT_EQ(item.getRow(), 1U);
    EXPECT_EQ(item.getCol(), 2U);
    EXPECT_EQ(ResidueItem::RTTI, 66);
    EXPECT_EQ(item.rtti(), 66);
    EXPECT_EQ(item.boundingRect(), kCell);
    EXPECT_EQ(item.z(), 0.0);
}

TEST_F(ResidueItemTest, IsAGapWhereTheAlignmentHoldsNoResidue)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC-D"});
    EXPECT_FALSE(itemAt(alignment, 0, 1).isGap());
    EXPECT_TRUE(itemAt(alignment, 0, 2).isGap());
    EXPECT_TRUE(itemAt(alignment, 0, 4).isGap());
}

TEST_F(ResidueItemTest, GapIsABlackDashOnWhite)
{
    TAMBO::Alignment &alignment = makeAlignment({"A-"});
    ResidueItem item = itemAt(alignment, 0, 1);
    const QImage image = drawnBy(item, kImage);
    QImage expected(kImage, QImage::Format_RGB32);
    expected.fill(Qt::white);
    QPainter painter(&expected);
    painter.setFont(m_Font);
    painter.setPen(Qt::black);
    painter.drawText(kCell, Qt::AlignCenter, QStringLiteral("-"));
    painter.end();
    EXPECT_EQ(image, expected);
    EXPECT_LT(pixelsOf(image, Qt::white), kImage.width() * kImage.height());
}

TEST_F(ResidueItemTest, ResidueIsItsLetterCentredOnItsColour)
{
    TAMBO::Alignment &alignment = makeAlignment({"W"});
    const QColor color(10, 200, 30);
    alignment.getItem(0, 0)->SetColor(Color(color));
    ResidueItem item = itemAt(alignment, 0, 0);
    const QImage image = drawnBy(item, kImage);
    QImage expected(kImage, QImage::Format_RGB32);
    expected.fill(Qt::white);
    QPainter painter(&expected);
    painter.fillRect(kCell, color);
    painter.setFont(m_Font);
    painter.setPen(Qt::white);
    painter.drawText(kCell, Qt::AlignCenter, QStringLiteral("W"));
    painter.end();
    EXPECT_EQ(image, expected);
}

TEST_F(ResidueItemTest, FillsItsCellWithoutABorder)
{
    const QColor color(10, 200, 30);
    const QImage cell = cellWith(color);
    for (int x = 0; x < cell.width(); ++x) {
        EXPECT_EQ(cell.pixelColor(x, 0), color);
        EXPECT_EQ(cell.pixelColor(x, cell.height() - 1), color);
    }
    for (int y = 0; y < cell.height(); ++y) {
        EXPECT_EQ(cell.pixelColor(0, y), color);
        EXPECT_EQ(cell.pixelColor(cell.width() - 1, y), color);
    }
}

TEST_F(ResidueItemTest, ItsOwnPenAndBrushDoNotShow)
{
    TAMBO::Alignment &alignment = makeAlignment({"W"});
    ResidueItem item = itemAt(alignment, 0, 0);
    const QImage before = drawnBy(item, kImage);
    item.setPen(QColor(Qt::red));
    item.setBrush(QColor(Qt::blue));
    EXPECT_EQ(drawnBy(item, kImage), before);
}

struct Contrast
{
    QColor background;
    QColor text;
};

TEST_F(ResidueItemTest, TextIsWhiteOnDarkAndBlackOnLightColours)
{
    const Contrast table[] = {{Qt::black, Qt::white},
                              {QColor(126, 126, 126), Qt::white},
                              {QColor(127, 127, 127), Qt::black},
                              {QColor(255, 0, 0), Qt::white},
                              {QColor(0, 255, 0), Qt::black},
                              {QColor(0, 0, 255), Qt::white},
                              {QColor(255, 255, 0), Qt::black}};
    for (const Contrast &contrast : table) {
        const QImage cell = cellWith(contrast.background);
        const QColor other = contrast.text == QColor(Qt::white) ? Qt::black : Qt::white;
        EXPECT_GT(pixelsOf(cell, contrast.text), 0) << qPrintable(contrast.background.name());
        if (contrast.background != other) {
            EXPECT_EQ(pixelsOf(cell, other), 0) << qPrintable(contrast.background.name());
        }
    }
}

TEST_F(ResidueItemTest, SelectionShowsInTheColourThatTheResidueReports)
{
    TAMBO::Alignment &alignment = makeAlignment({"W"});
    TAMBO::Compound *residue = alignment.getItem(0, 0);
    residue->SetColor(Color(0x204080U));
    ResidueItem item = itemAt(alignment, 0, 0);
    EXPECT_EQ(drawnBy(item, kImage).pixelColor(kCell.topLeft()), QColor(0x20, 0x40, 0x80));
    residue->SetSelected(true);
    EXPECT_EQ(drawnBy(item, kImage).pixelColor(kCell.topLeft()), residue->GetColor().toQColor());
    EXPECT_NE(residue->GetColor(), Color(0x204080U));
}

TEST_F(ResidueItemTest, ChangeInTheHostShowsAtTheNextPaintingWithoutTellingTheItem)
{
    TAMBO::Alignment &alignment = makeAlignment({"W-"});
    ResidueItem item = itemAt(alignment, 0, 0);
    alignment.getItem(0, 0)->SetColor(Color(0xff0000U));
    EXPECT_EQ(drawnBy(item, kImage).pixelColor(kCell.topLeft()), QColor(Qt::red));
    alignment.insertGap(0, 0);
    EXPECT_EQ(drawnBy(item, kImage).pixelColor(kCell.topLeft()), QColor(Qt::white));
}

TEST_F(ResidueItemTest, HitOnAResidueTogglesItsSelectionAndMarksTheCell)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC"});
    QCanvas canvas(100, 100);
    canvas.update();
    auto *item = new ResidueItem(&alignment, 0, 1, m_Font, &canvas, 20, 0, 20, 24);
    CountingSubscriber others;
    item->hit();
    EXPECT_EQ(selectionOf(alignment, 0), "ox");
    EXPECT_EQ(others.m_Updates, 1);
    item->hit();
    EXPECT_EQ(selectionOf(alignment, 0), "oo");
}

TEST_F(ResidueItemTest, HitOnAGapOnlySaysSo)
{
    TAMBO::Alignment &alignment = makeAlignment({"A-"});
    CountingSubscriber others;
    const MessageRecorder recorder;
    itemAt(alignment, 0, 1).hit();
    EXPECT_EQ(recorder.messages(), QStringList{QStringLiteral("It's a gap")});
    EXPECT_EQ(others.m_Updates, 0);
    EXPECT_EQ(textsOf(alignment), (Texts{"A-"}));
}

TEST_F(ResidueItemTest, RefusedHitDoesNothingSilently)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC"});
    setLocked(true);
    const MessageRecorder recorder;
    itemAt(alignment, 0, 0).hit();
    EXPECT_EQ(selectionOf(alignment, 0), "oo");
    EXPECT_TRUE(recorder.messages().isEmpty());
}

TEST_F(ResidueItemTest, WithoutAnAlignmentSaysSoAndExists)
{
    const ExpectMessage warning(QtWarningMsg,
                                QStringLiteral("In file ResidueItem, line 34: Out of memory"));
    ResidueItem item(nullptr, 0, 0, m_Font, nullptr, 0, 0, 20, 24);
    EXPECT_EQ(item.getTarget(), nullptr);
    EXPECT_EQ(pixelsOf(drawnBy(item, kImage), Qt::white) > 0, true);
}

} // namespace ResidueItemTest
