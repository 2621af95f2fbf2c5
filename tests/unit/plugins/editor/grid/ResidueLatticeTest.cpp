// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueLattice.h"

#include "CanvasFixture.h"
#include "QCanvas.h"
#include "ResidueItem.h"

#include <QPainter>

#include <memory>

namespace ResidueLatticeTest {

class ResidueLatticeTest : public CanvasFixture
{
protected:
    void show(TAMBO::Alignment &alignment)
    {
        m_Canvas.resize((static_cast<int>(alignment.width()) + 1) * 20,
                        (static_cast<int>(alignment.height()) + 1) * 24);
        m_Canvas.setLattice(ResidueLattice::latticeOf(alignment, 20, 24),
                            std::make_unique<ResidueLattice>(&alignment, m_Font));
    }
    QImage painted()
    {
        QImage image(m_Canvas.size(), QImage::Format_RGB32);
        QPainter painter(&image);
        m_Canvas.drawArea(m_Canvas.rect(), &painter);
        return image;
    }
    QImage drawnByItems()
    {
        QImage image(m_Canvas.size(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        for (QCanvasItem *item : m_Canvas.allItems())
            item->draw(painter);
        return image;
    }

    QCanvas m_Canvas;
};

TEST_F(ResidueLatticeTest, CanvasReportsAResidueItemForEveryCellRowByRow)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC-DE", "ACDEF", "-CDE-"});
    show(alignment);
    const QCanvasItemList items = m_Canvas.allItems();
    ASSERT_EQ(items.size(), 15);
    for (qsizetype i = 0; i < items.size(); ++i) {
        ASSERT_EQ(items[i]->rtti(), ResidueItem::RTTI);
        const auto *item = static_cast<const ResidueItem *>(items[i]);
        EXPECT_EQ(item->getRow(), static_cast<unsigned long>(i) / 5);
        EXPECT_EQ(item->getCol(), static_cast<unsigned long>(i) % 5);
        EXPECT_EQ(item->getTarget(), &alignment);
        EXPECT_EQ(item->rect(),
                  QRect(static_cast<int>(i % 5) * 20, static_cast<int>(i / 5) * 24, 20, 24));
        EXPECT_TRUE(item->isVisible());
    }
}

TEST_F(ResidueLatticeTest, MarginBesideTheCellsHoldsNoItem)
{
    show(makeAlignment({"AC-DE", "ACDEF", "-CDE-"}));
    EXPECT_TRUE(m_Canvas.collisions(QPoint(5 * 20 + 10, 12)).isEmpty());
    EXPECT_TRUE(m_Canvas.collisions(QPoint(10, 3 * 24 + 12)).isEmpty());
    EXPECT_EQ(m_Canvas.collisions(QPoint(4 * 20 + 10, 2 * 24 + 12)).size(), 1);
}

TEST_F(ResidueLatticeTest, CellsArePaintedAsTheirItemsDrawThem)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC-DEWX", "ACDEF-Y", "-CDE-IL"});
    alignment.getItem(0, 1)->SetSelected(true);
    alignment.getItem(1, 2)->SetColor(Color(0x102030U));
    show(alignment);
    EXPECT_EQ(painted(), drawnByItems());
}

TEST_F(ResidueLatticeTest, ChangeInTheHostShowsAtTheNextPainting)
{
    TAMBO::Alignment &alignment = makeAlignment({"AC-D"});
    show(alignment);
    (void)painted();
    alignment.getItem(0, 0)->SetColor(Color(0xff0000U));
    EXPECT_EQ(painted().pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(painted(), drawnByItems());
}

TEST_F(ResidueLatticeTest, CellsThatTheAlignmentHasLostLookLikeGaps)
{
    TAMBO::Alignment &alignment = makeAlignment({"ACDE", "ACDE"});
    show(alignment);
    alignment.remove(3);
    alignment.removeRow(1);
    const QImage image = painted();
    EXPECT_EQ(image.pixelColor(3 * 20, 0), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(0, 24), QColor(Qt::white));
    EXPECT_NE(image.pixelColor(0, 0), QColor(Qt::white));
    EXPECT_EQ(image, drawnByItems());
}

TEST_F(ResidueLatticeTest, AlignmentWithoutColumnsHasNoCells)
{
    TAMBO::Alignment &alignment = makeAlignment({"", ""});
    EXPECT_TRUE(ResidueLattice::latticeOf(alignment, 20, 24).isEmpty());
    show(alignment);
    EXPECT_TRUE(m_Canvas.allItems().isEmpty());
}

} // namespace ResidueLatticeTest
