// SPDX-License-Identifier: GPL-3.0-or-later
// A panel over column marks, and the range marker.
#include "PanelFixture.h"

#include <QMetaMethod>

namespace HeaderPanelTest {

using Bounds = std::pair<unsigned long, unsigned long>;

class HeaderPanel : public PanelFixture
{
protected:
    // Shift and the left button on the mark, from a range.
    Bounds extended(const Bounds &from, unsigned long col)
    {
        m_Panel->SetRange(from.first, from.second);
        takeSignals();
        press(kLeft, markAt(col), Qt::ShiftModifier);
        return range();
    }
};

TEST_F(HeaderPanel, InterfaceStandsInItsOrder)
{
    const QMetaObject &meta = Panel::staticMetaObject;
    EXPECT_STREQ(meta.className(), "Panel");
    const char *const expected[] = {"ReArrange()",          "Update()",
                                    "RemoveRow(ulong)",     "RemoveCol(ulong)",
                                    "InsertCol(ulong)",     "ReRange(ulong,ulong)",
                                    "SetRange(ulong,ulong)"};
    ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 7);
    for (int i = 0; i < 7; ++i) {
        const QMetaMethod method = meta.method(meta.methodOffset() + i);
        EXPECT_EQ(method.methodSignature(), expected[i]);
        EXPECT_EQ(method.methodType(), i < 6 ? QMetaMethod::Signal : QMetaMethod::Slot);
    }
}

TEST_F(HeaderPanel, SetRangePlacesTheMarkerAndEmitsNothing)
{
    showHeader(makeAlignment({"ACDEFGHIKL"}));
    takeSignals();
    m_Panel->SetRange(2, 5);
    EXPECT_EQ(m_Marker->x(), 2 * kWidth);
    EXPECT_EQ(m_Marker->y(), 3 * kHeight);
    EXPECT_EQ(m_Marker->width(), 3 * kWidth);
    EXPECT_EQ(m_Marker->height(), kHeight);
    EXPECT_EQ(range(), Bounds(2, 5));
    EXPECT_TRUE(takeSignals().isEmpty());
}

TEST_F(HeaderPanel, RangeTheWrongWayRoundGivesAMarkerWithoutAnArea)
{
    showHeader(makeAlignment({"ACDEFGHIKL"}));
    m_Panel->SetRange(5, 2);
    EXPECT_EQ(m_Marker->width(), -3 * kWidth);
    EXPECT_TRUE(m_Marker->boundingRect().isEmpty());
    EXPECT_EQ(range(), Bounds(5, 2));
}

TEST_F(HeaderPanel, WithoutAMarkerTheBoundsAreKept)
{
    showHeader(makeAlignment({"ACDEFGHIKL"}));
    m_Panel->resetRange();
    EXPECT_EQ(range(), Bounds(0, 0));
    m_Panel->SetRange(2, 5);
    EXPECT_EQ(range(), Bounds(2, 5));
}

TEST_F(HeaderPanel, ReadsTheCellSizeWheneverItNeedsIt)
{
    showHeader(makeAlignment({"ACDEFGHIKL"}));
    m_Panel->setCellSizeSource([] { return QSize(31, 40); });
    m_Panel->SetRange(2, 5);
    EXPECT_EQ(m_Marker->x(), 62);
    EXPECT_EQ(m_Marker->size(), QSize(93, 40));
}

TEST_F(HeaderPanel, MarkerIsSeenAndTheMarksOnItToo)
{
    TAMBO::Alignment &alignment = makeAlignment({"ACDE"});
    showHeader(alignment);
    alignment.getItem(0, 1)->SetSelected(true);
    m_Panel->SetRange(0, 2);
    QImage image(m_Canvas.size(), QImage::Format_RGB32);
    QPainter painter(&image);
    m_Canvas.drawArea(m_Canvas.rect(), &painter);
    painter.end();
    const QColor marker = m_Marker->brush().color();
    EXPECT_EQ(image.pixelColor(3, 3 * kHeight + 3), marker);
    EXPECT_EQ(image.pixelColor(2 * kWidth + 2, 3 * kHeight + 3), QColor(Qt::white));
    for (const int left : {0, kWidth}) {
        // More than the marker's outline differs from its colour: the mark.
        const QImage mark = image.copy(left + 2, 3 * kHeight + 2, kWidth - 4, kHeight - 4);
        EXPECT_GT(mark.width() * mark.height() - pixelsOf(mark, marker), 20);
    }
}

TEST_F(HeaderPanel, LeftPressTogglesTheColumnAndMakesItTheRange)
{
    showHeader(makeAlignment({"ACDEF", "A-DEF"}));
    const MessageRecorder recorder;
    press(kLeft, markAt(3));
    EXPECT_EQ(selectionOf(*m_Alignment, 0), "oooxo");
    EXPECT_EQ(selectionOf(*m_Alignment, 1), "o-oxo");
    EXPECT_EQ(range(), Bounds(3, 4));
    EXPECT_EQ(m_Marker->x(), 3 * kWidth);
    EXPECT_EQ(takeSignals(), (QStringList{"ReRange 3 4", "Update"}));
    EXPECT_TRUE(recorder.messages().isEmpty());
    press(kLeft, markAt(3));
    EXPECT_EQ(selectionOf(*m_Alignment, 0), "ooooo");
    EXPECT_EQ(takeSignals(), (QStringList{"ReRange 3 4", "Update"}));
}

TEST_F(HeaderPanel, RightButtonAndOtherCombinationsAreTheDefaultCase)
{
    showHeader(makeAlignment({"ACDEF"}));
    press(kRight, markAt(1));
    EXPECT_EQ(range(), Bounds(1, 2));
    press(kMiddle, markAt(2), Qt::ControlModifier);
    EXPECT_EQ(range(), Bounds(2, 3));
    press(kMiddle, markAt(4), Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(range(), Bounds(4, 5));
    EXPECT_EQ(selectionOf(*m_Alignment, 0), "oxxox");
    EXPECT_EQ(takeSignals(), (QStringList{"ReRange 1 2", "Update", "ReRange 2 3", "Update",
                                          "ReRange 4 5", "Update"}));
}

TEST_F(HeaderPanel, MiddleButtonAsksForAColumn)
{
    showHeader(makeAlignment({"ACDEF"}));
    press(kMiddle, markAt(2));
    EXPECT_EQ(takeSignals(), (QStringList{"InsertCol 2", "Update"}));
    EXPECT_EQ(selectionOf(*m_Alignment, 0), "ooooo");
    EXPECT_EQ(range(), m_Alignment->range());
}

TEST_F(HeaderPanel, ShiftMiddleAsksForTheColumnsRemoval)
{
    showHeader(makeAlignment({"ACDEF"}));
    press(kMiddle, markAt(2), Qt::ShiftModifier);
    EXPECT_EQ(takeSignals(), (QStringList{"RemoveCol 2", "Update"}));
    EXPECT_EQ(selectionOf(*m_Alignment, 0), "ooooo");
}

TEST_F(HeaderPanel, ItemsMayGoWhileAColumnIsInserted)
{
    showHeader(makeAlignment({"ACDEF"}));
    const auto clear = [this] {
        m_Panel->resetRange();
        m_Canvas.clear();
    };
    QObject::connect(m_Panel.get(), &Panel::InsertCol, clear);
    press(kMiddle, markAt(2));
    EXPECT_TRUE(m_Canvas.allItems().isEmpty());
}

TEST_F(HeaderPanel, ItemsMayGoWhileAColumnIsSelected)
{
    class Rebuilding : public CountingSubscriber
    {
    public:
        Rebuilding(QCanvas &canvas, Panel &panel) : m_Canvas(canvas), m_Panel(panel) { }
        void commUpdate() override
        {
            m_Panel.resetRange();
            m_Canvas.clear();
        }

    private:
        QCanvas &m_Canvas;
        Panel &m_Panel;
    };
    showHeader(makeAlignment({"ACDEF"}));
    const Rebuilding other(m_Canvas, *m_Panel);
    press(kLeft, markAt(2));
    EXPECT_EQ(selectionOf(*m_Alignment, 0), "ooxoo");
    EXPECT_EQ(takeSignals(), (QStringList{"ReRange 2 3", "Update"}));
}

TEST_F(HeaderPanel, ShiftLeftExtendsTheRange)
{
    showHeader(makeAlignment({"ACDEFGHIKLMN"}));
    const MessageRecorder recorder;
    EXPECT_EQ(extended({5, 5}, 2), Bounds(2, 6));
    EXPECT_EQ(takeSignals(), (QStringList{"ReRange 2 6", "Update"}));
    EXPECT_EQ(extended({4, 6}, 1), Bounds(1, 6));
    EXPECT_EQ(extended({2, 4}, 7), Bounds(2, 8));
    EXPECT_EQ(m_Marker->x(), 2 * kWidth);
    EXPECT_EQ(m_Marker->width(), 6 * kWidth);
    EXPECT_EQ(extended({0, 0}, 3), Bounds(0, 4));
    EXPECT_EQ(extended({5, 5}, 5), Bounds(5, 6));
    EXPECT_EQ(recorder.messages(), (QStringList{"Range [2..6)", "Range [1..6)", "Range [2..8)",
                                                "Range [0..4)", "Range [5..6)"}));
}

TEST_F(HeaderPanel, ShiftLeftBeforeAnEmptyRangeBehindTheLastColumnReachesOneBeyondIt)
{
    showHeader(makeAlignment({"ACDEF"}));
    const ExpectMessage said(QtDebugMsg, QStringLiteral("Range [2..6)"));
    EXPECT_EQ(extended({5, 5}, 2), Bounds(2, 6));
    EXPECT_EQ(takeSignals(), (QStringList{"ReRange 2 6", "Update"}));
}

TEST_F(HeaderPanel, ShiftLeftInsideTheRangeLeavesItAndSaysWhatItIs)
{
    showHeader(makeAlignment({"ACDEFGHIKLMN"}));
    const MessageRecorder recorder;
    for (const unsigned long col : {2UL, 4UL, 7UL}) {
        EXPECT_EQ(extended({2, 8}, col), Bounds(2, 8));
        EXPECT_EQ(takeSignals(), (QStringList{"ReRange 2 8", "Update"}));
    }
    EXPECT_EQ(recorder.count(QStringLiteral("Range [2..8)")), 3);
}

TEST_F(HeaderPanel, ShiftLeftDoesNotSelect)
{
    showHeader(makeAlignment({"ACDEFGHIKLMN"}));
    const MessageRecorder recorder;
    (void)extended({2, 4}, 7);
    EXPECT_EQ(selectionOf(*m_Alignment, 0), "oooooooooooo");
}

TEST_F(HeaderPanel, PressOnAMarkBeginsNoDrag)
{
    showHeader(makeAlignment({"ACDEF", "ACDEF"}));
    press(kLeft, markAt(1));
    takeSignals();
    EXPECT_EQ(m_Panel->viewport()->cursor().shape(), Qt::ArrowCursor);
    release(kLeft, markAt(3));
    EXPECT_EQ(takeSignals(), QStringList{"Update"});
    EXPECT_EQ(namesOf(*m_Alignment), (Texts{"seq1", "seq2"}));
}

TEST_F(HeaderPanel, PressOnConsensusOrMarkerAloneOnlyUpdates)
{
    showHeader(makeAlignment({"ACDEF", "ACDEF"}));
    m_Panel->SetRange(0, 5);
    press(kLeft, QPoint(kWidth / 2, 2 * kHeight + kHeight / 2 - 3));
    press(kLeft, QPoint(kWidth, 3 * kHeight + kHeight / 2));
    EXPECT_EQ(takeSignals(), (QStringList{"Update", "Update"}));
    EXPECT_EQ(range(), Bounds(0, 5));
}

TEST_F(HeaderPanel, PressHandlesEveryMarkUnderThePointerFromTheTopOne)
{
    showHeader(makeAlignment({"ACDEF"}));
    for (const unsigned long col : {0UL, 4UL}) {
        auto *mark =
            new ColItem(m_Alignment, col, m_Font, &m_Canvas, 2 * kWidth + kWidth / 2, 3 * kHeight);
        mark->setZ(4.0 + static_cast<double>(col));
        mark->show();
    }
    press(kLeft, markAt(2));
    EXPECT_EQ(takeSignals(), (QStringList{"ReRange 4 5", "ReRange 0 1", "ReRange 2 3", "Update"}));
    EXPECT_EQ(selectionOf(*m_Alignment, 0), "xoxox");
    press(kMiddle, markAt(2));
    EXPECT_EQ(takeSignals(), (QStringList{"InsertCol 4", "Update"}));
    press(kMiddle, markAt(2), Qt::ShiftModifier);
    EXPECT_EQ(takeSignals(), (QStringList{"RemoveCol 4", "Update"}));
}

TEST_F(HeaderPanel, ScrolledPanelHitsTheMarkUnderThePointer)
{
    showHeader(makeAlignment({std::string(80, 'A')}));
    m_Panel->setContentsPos(kWidth * 30 + 7, 0);
    press(kLeft, markAt(35));
    EXPECT_EQ(range(), Bounds(35, 36));
}

TEST_F(HeaderPanel, RefusedSelectionStillMovesTheRange)
{
    showHeader(makeAlignment({"ACDEF"}));
    setLocked(true);
    press(kLeft, markAt(3));
    EXPECT_EQ(selectionOf(*m_Alignment, 0), "ooooo");
    EXPECT_EQ(range(), Bounds(3, 4));
    EXPECT_EQ(takeSignals(), (QStringList{"ReRange 3 4", "Update"}));
}

} // namespace HeaderPanelTest
