// SPDX-License-Identifier: GPL-3.0-or-later
// What a click on an item asks to be painted, and that it leaves the painting to the view.
#include "CanvasFixture.h"
#include "ColItem.h"
#include "PaintWatch.h"
#include "QCanvas.h"
#include "ResidueItem.h"
#include "RowItem.h"

#include <QTest>

namespace HitPaintingTest {

class HitPainting : public CanvasFixture
{
protected:
    HitPainting()
    {
        m_View.setFixedSize(200, 100);
        m_View.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_View));
    }
    // Shows the item, clicks on it and gives what the next update paints.
    template <typename Item> QRect paintedAfterHit(Item *item)
    {
        item->show();
        m_Canvas.update();
        PaintWatch paints{&m_View};
        item->hit();
        EXPECT_FALSE(paints.isAnythingPainted());
        m_Canvas.update();
        return paints.take().front();
    }
    [[nodiscard]] QRect everything() const { return m_View.viewport()->rect(); }

    TAMBO::Alignment &m_Alignment = makeAlignment({"ACD", "A-D"});
    QCanvas m_Canvas{200, 100};
    QCanvasView m_View{&m_Canvas};
};

TEST_F(HitPainting, AResidueIsPaintedAlone)
{
    EXPECT_EQ(
        paintedAfterHit(new ResidueItem(&m_Alignment, 0, 1, m_Font, &m_Canvas, 20, 24, 20, 24)),
        QRect(20, 24, 20, 24));
}

TEST_F(HitPainting, ARowOrColumnPaintsEverything)
{
    EXPECT_EQ(paintedAfterHit(new RowItem(&m_Alignment, 0, m_Font, &m_Canvas, 90, 5)),
              everything());
    EXPECT_EQ(paintedAfterHit(new ColItem(&m_Alignment, 1, m_Font, &m_Canvas, 90, 5)),
              everything());
}

TEST_F(HitPainting, WhatIsRefusedPaintsNothing)
{
    setLocked(true);
    EXPECT_TRUE(paintedAfterHit(new RowItem(&m_Alignment, 0, m_Font, &m_Canvas, 90, 5)).isEmpty());
    EXPECT_TRUE(paintedAfterHit(new ColItem(&m_Alignment, 1, m_Font, &m_Canvas, 90, 5)).isEmpty());
    EXPECT_TRUE(
        paintedAfterHit(new ResidueItem(&m_Alignment, 0, 1, m_Font, &m_Canvas, 20, 24, 20, 24))
            .isEmpty());
}

} // namespace HitPaintingTest
