// SPDX-License-Identifier: GPL-3.0-or-later
#include "CompanionFixture.h"

namespace OverviewTest {

class InTheOverview : public AlignmentCompanion
{
protected:
    InTheOverview()
    {
        overview().toggle();
        settle();
    }
    companion::Overview &overview() { return m_Companion->overview(); }
    void settle()
    {
        do
            QCoreApplication::processEvents();
        while (!overview().picture().isDone());
    }
};

TEST_F(InTheOverview, EachPixelHasTheColorsOfItsCells)
{
    const QImage &image = overview().picture().image();
    EXPECT_EQ(image.height(), std::min(120, overview().view().height()));
    // Of few cells a pixel is one of them.
    ZEP::KALMO2 &small = show(alignment({"AC-", "WWW"}, "small"), {700, 400});
    Companion other(served(small));
    other.overview().show();
    do
        QCoreApplication::processEvents();
    while (!other.overview().picture().isDone());
    const QImage &seen = other.overview().picture().image();
    ASSERT_EQ(seen.size(), QSize(3, 2));
    std::vector<TAMBO::AlignmentCell> cells;
    served(small).alignment()->readRow(1, 0, 3, cells);
    EXPECT_EQ(seen.pixel(0, 1) & 0xffffffU, cells[0].color.rgb());
    EXPECT_EQ(seen.pixel(2, 0) & 0xffffffU, 0xffffffU);
}

TEST_F(InTheOverview, TheFrameFollowsScrolling)
{
    const QRect before = overview().frame();
    EXPECT_EQ(before.topLeft(), QPoint(0, 0));
    m_Served->scrollTo({2000, 1000});
    const QRect after = overview().frame();
    EXPECT_GT(after.left(), 0);
    EXPECT_GT(after.top(), 0);
    EXPECT_LE(after.right(), overview().view().width());
}

TEST_F(InTheOverview, DraggingScrollsThere)
{
    QWidget &view = overview().view();
    press(&view, Qt::LeftButton, {view.width() - 1, view.height() - 1});
    EXPECT_EQ(m_Served->visibleCells().rowEnd, m_Served->rows());
    EXPECT_EQ(m_Served->visibleCells().colEnd, m_Served->columns());
    move(&view, Qt::LeftButton, {0, 0});
    EXPECT_EQ(m_Served->scrollPosition(), QPoint(0, 0));
}

TEST_F(InTheOverview, AnEditIsSeen)
{
    const QImage before = overview().picture().image().copy();
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
        m_Shown.insertGapCol(0, 200);
    }
    QCoreApplication::processEvents();
    settle();
    EXPECT_NE(overview().picture().image(), before);
}

TEST_F(InTheOverview, ItReadsNoMoreRowsThanItHasLines)
{
    EXPECT_EQ(overview().picture().cellsRead(),
              std::size_t(overview().picture().image().height()) * m_Shown.width());
}

TEST_F(InTheOverview, NothingIsReadWhileItIsOutOfSight)
{
    overview().toggle();
    const std::size_t before = overview().picture().cellsRead();
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
        m_Shown.insertGapCol(0, 1);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(overview().picture().cellsRead(), before);
}

} // namespace OverviewTest
