// SPDX-License-Identifier: GPL-3.0-or-later
// The residue view, driven by mouse events as a user would.
#include "View.h"

#include "CanvasFixture.h"
#include "PaintWatch.h"
#include "QCanvas.h"
#include "QCanvasRectangle.h"
#include "ResidueLattice.h"
#include "support/ExpectMessage.h"

#include <QMetaMethod>
#include <QMouseEvent>
#include <QPainter>
#include <QTest>

#include <memory>

namespace ViewTest {

constexpr int kWidth = 20;
constexpr int kHeight = 24;
constexpr Qt::MouseButton kLeft = Qt::LeftButton;
constexpr Qt::MouseButton kRight = Qt::RightButton;
constexpr Qt::MouseButton kMiddle = Qt::MiddleButton;

class ViewTest : public CanvasFixture
{
protected:
    // Shows the alignment and does on ReArrange() what the window does: a total rebuild.
    void show(TAMBO::Alignment &alignment)
    {
        m_Alignment = &alignment;
        rebuild();
        m_View = std::make_unique<View>(m_Canvas, nullptr, "view", 0);
        m_View->resize(400, 200);
        m_View->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_View.get()));
        QObject::connect(m_View.get(), &View::ReArrange, [this] {
            m_Signals.append(QStringLiteral("ReArrange"));
            rebuild();
        });
        QObject::connect(m_View.get(), &View::Update,
                         [this] { m_Signals.append(QStringLiteral("Update")); });
    }
    void rebuild()
    {
        m_Canvas.clear();
        m_Canvas.resize((static_cast<int>(m_Alignment->width()) + 1) * kWidth,
                        (static_cast<int>(m_Alignment->height()) + 1) * kHeight);
        m_Canvas.setLattice(ResidueLattice::latticeOf(*m_Alignment, kWidth, kHeight),
                            std::make_unique<ResidueLattice>(m_Alignment, m_Font));
    }
    QPoint centre(unsigned long row, unsigned long col) const
    {
        return m_View->contentsToViewport({static_cast<int>(col) * kWidth + kWidth / 2,
                                           static_cast<int>(row) * kHeight + kHeight / 2});
    }
    void press(Qt::MouseButton button, unsigned long row, unsigned long col)
    {
        QTest::mousePress(m_View->viewport(), button, {}, centre(row, col));
    }
    void release(Qt::MouseButton button, unsigned long row, unsigned long col)
    {
        QTest::mouseRelease(m_View->viewport(), button, {}, centre(row, col));
    }
    Texts texts() const { return textsOf(*m_Alignment); }
    QStringList takeSignals() { return std::exchange(m_Signals, {}); }

    TAMBO::Alignment *m_Alignment = nullptr;
    QCanvas m_Canvas;
    std::unique_ptr<View> m_View;
    QStringList m_Signals;
};

const QStringList kUpdate{QStringLiteral("Update")};
const QStringList kReArrangeAndUpdate{QStringLiteral("ReArrange"), QStringLiteral("Update")};

TEST_F(ViewTest, InterfaceStandsInItsOrder)
{
    const QMetaObject &meta = View::staticMetaObject;
    EXPECT_STREQ(meta.className(), "View");
    ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 3);
    const QMetaMethod reArrange = meta.method(meta.methodOffset());
    const QMetaMethod update = meta.method(meta.methodOffset() + 1);
    const QMetaMethod print = meta.method(meta.methodOffset() + 2);
    EXPECT_EQ(reArrange.methodSignature(), "ReArrange()");
    EXPECT_EQ(reArrange.methodType(), QMetaMethod::Signal);
    EXPECT_EQ(update.methodSignature(), "Update()");
    EXPECT_EQ(update.methodType(), QMetaMethod::Signal);
    EXPECT_EQ(print.methodSignature(), "print(QPainter*,int,int,int,int)");
    EXPECT_EQ(print.methodType(), QMetaMethod::Slot);
    EXPECT_EQ(print.access(), QMetaMethod::Public);
}

TEST_F(ViewTest, LeftPressOnAResidueTogglesItsSelectionAndBeginsNoDrag)
{
    show(makeAlignment({"AC--", "ACDE"}));
    press(kLeft, 0, 1);
    EXPECT_EQ(selectionOf(*m_Alignment, 0), "ox--");
    EXPECT_EQ(takeSignals(), kUpdate);
    release(kLeft, 0, 3);
    EXPECT_EQ(takeSignals(), kUpdate);
    EXPECT_EQ(texts(), (Texts{"AC--", "ACDE"}));
    press(kLeft, 0, 1);
    EXPECT_EQ(selectionOf(*m_Alignment, 0), "oo--");
}

TEST_F(ViewTest, RightPressOnAResidueOpensItsMenu)
{
    show(makeAlignment({"AC--", "ACDE"}));
    press(kRight, 1, 2);
    EXPECT_EQ(m_Menus, (std::vector{m_Alignment->getItem(1, 2)}));
    EXPECT_EQ(takeSignals(), kUpdate);
    release(kRight, 1, 0);
    EXPECT_EQ(texts(), (Texts{"AC--", "ACDE"}));
    EXPECT_EQ(takeSignals(), kUpdate);
}

TEST_F(ViewTest, RightPressOnAGapDoesNothing)
{
    show(makeAlignment({"AC--"}));
    press(kRight, 0, 2);
    EXPECT_TRUE(m_Menus.empty());
    EXPECT_EQ(takeSignals(), kUpdate);
    release(kLeft, 0, 1);
    EXPECT_EQ(texts(), (Texts{"AC--"}));
}

TEST_F(ViewTest, LeftDragMovesOneGap)
{
    show(makeAlignment({"A--CDE", "ACDEFG"}));
    const MessageRecorder recorder;
    press(kLeft, 0, 2);
    EXPECT_EQ(takeSignals(), kUpdate);
    release(kLeft, 0, 4);
    EXPECT_EQ(texts(), (Texts{"A-CD-E", "ACDEFG"}));
    EXPECT_EQ(takeSignals(), kReArrangeAndUpdate);
    EXPECT_EQ(recorder.messages(), QStringList{QStringLiteral("Drag point")});
}

TEST_F(ViewTest, MiddleDragMovesTheRunOfGaps)
{
    show(makeAlignment({"A--CDE", "ACDEFG"}));
    const MessageRecorder recorder;
    press(kMiddle, 0, 2);
    release(kMiddle, 0, 4);
    EXPECT_EQ(texts(), (Texts{"ACD--E", "ACDEFG"}));
    EXPECT_EQ(takeSignals(), (QStringList{"Update", "ReArrange", "Update"}));
    EXPECT_EQ(recorder.messages(), QStringList{QStringLiteral("Drag range")});
}

TEST_F(ViewTest, ButtonLetGoDecidesTheKindOfMove)
{
    show(makeAlignment({"A--CDE"}));
    const MessageRecorder recorder;
    press(kLeft, 0, 2);
    release(kMiddle, 0, 4);
    EXPECT_EQ(texts(), (Texts{"ACD--E"}));
    press(kMiddle, 0, 3);
    release(kLeft, 0, 0);
    EXPECT_EQ(texts(), (Texts{"-ACD-E"}));
    EXPECT_EQ(recorder.messages(), (QStringList{"Drag range", "Drag point"}));
}

TEST_F(ViewTest, OtherButtonsBeginADragToo)
{
    show(makeAlignment({"A--CDE"}));
    const MessageRecorder recorder;
    press(Qt::BackButton, 0, 2);
    release(kLeft, 0, 4);
    EXPECT_EQ(texts(), (Texts{"A-CD-E"}));
}

TEST_F(ViewTest, ReleaseOfAnotherButtonDoesNothing)
{
    show(makeAlignment({"A--CDE"}));
    const MessageRecorder recorder;
    press(kLeft, 0, 2);
    release(kRight, 0, 4);
    EXPECT_EQ(texts(), (Texts{"A--CDE"}));
    EXPECT_EQ(takeSignals(), (QStringList{"Update", "Update"}));
    EXPECT_TRUE(recorder.messages().isEmpty());
}

TEST_F(ViewTest, MiddleClickInsertsAGap)
{
    show(makeAlignment({"ACDE-", "ACDEF"}));
    const MessageRecorder recorder;
    press(kMiddle, 0, 1);
    release(kMiddle, 0, 1);
    EXPECT_EQ(texts(), (Texts{"A-CDE", "ACDEF"}));
    EXPECT_EQ(takeSignals(), (QStringList{"Update", "ReArrange", "Update"}));
    EXPECT_EQ(recorder.messages(), QStringList{QStringLiteral("Drag terminal gap to here")});
}

TEST_F(ViewTest, MiddleClickOnAFullRowWidensTheAlignmentAndTheCanvas)
{
    show(makeAlignment({"AC", "AC"}));
    const MessageRecorder recorder;
    press(kMiddle, 0, 0);
    release(kMiddle, 0, 0);
    EXPECT_EQ(texts(), (Texts{"-AC", "AC-"}));
    EXPECT_EQ(m_Canvas.allItems().size(), 6);
}

TEST_F(ViewTest, LeftClickOnAGapChangesNothing)
{
    show(makeAlignment({"A--C"}));
    const MessageRecorder recorder;
    press(kLeft, 0, 1);
    release(kLeft, 0, 1);
    EXPECT_EQ(texts(), (Texts{"A--C"}));
    EXPECT_EQ(takeSignals(), (QStringList{"Update", "Update"}));
    EXPECT_TRUE(recorder.messages().isEmpty());
}

TEST_F(ViewTest, DragEndedWithLeftOnItsStartChangesNothing)
{
    show(makeAlignment({"A--C"}));
    press(kMiddle, 0, 0);
    release(kLeft, 0, 0);
    EXPECT_EQ(texts(), (Texts{"A--C"}));
    EXPECT_EQ(takeSignals(), (QStringList{"Update", "Update"}));
}

TEST_F(ViewTest, DragReleasedOnAnotherRowDoesNothingAndLeavesTheViewIdle)
{
    show(makeAlignment({"A--CD", "ACDE-", "ACDE-"}));
    const MessageRecorder recorder;
    press(kLeft, 0, 1);
    release(kLeft, 2, 3);
    release(kLeft, 0, 3);
    EXPECT_EQ(texts(), (Texts{"A--CD", "ACDE-", "ACDE-"}));
    EXPECT_EQ(takeSignals(), (QStringList{"Update", "Update", "Update"}));
    EXPECT_TRUE(recorder.messages().isEmpty());
}

TEST_F(ViewTest, DragReleasedBeyondTheLastColumnDoesNothingAndLeavesTheViewIdle)
{
    show(makeAlignment({"A--CD"}));
    press(kMiddle, 0, 1);
    release(kMiddle, 0, 5);
    release(kMiddle, 0, 4);
    EXPECT_EQ(texts(), (Texts{"A--CD"}));
    press(kMiddle, 0, 1);
    release(kMiddle, 1, 1);
    EXPECT_EQ(texts(), (Texts{"A--CD"}));
}

TEST_F(ViewTest, DragReleasedOutsideTheViewDoesNothingThoughACellIsHiddenThere)
{
    show(makeAlignment({std::string(80, 'A') + "--"}));
    m_View->setContentsPos(kWidth * 70, 0);
    ASSERT_EQ(m_View->contentsX(), 82 * kWidth + kWidth - 400);
    press(kLeft, 0, 80);
    // Left of the view, where the names are, a cell of the contents is scrolled out of sight.
    const QPoint outside(-30, kHeight / 2);
    ASSERT_FALSE(m_View->itemsAt(m_View->viewportToContents(outside)).isEmpty());
    QTest::mouseRelease(m_View->viewport(), kLeft, {}, outside);
    EXPECT_EQ(texts(), (Texts{std::string(80, 'A') + "--"}));
    release(kLeft, 0, 70);
    EXPECT_EQ(texts(), (Texts{std::string(80, 'A') + "--"}));
    EXPECT_EQ(takeSignals(), (QStringList{"Update", "Update", "Update"}));
}

TEST_F(ViewTest, ScrolledViewHitsTheCellUnderThePointer)
{
    show(makeAlignment({std::string(80, 'A')}));
    m_View->setContentsPos(kWidth * 30 + 7, 0);
    press(kLeft, 0, 35);
    std::string expected(80, 'o');
    expected[35] = 'x';
    EXPECT_EQ(selectionOf(*m_Alignment, 0), expected);
}

TEST_F(ViewTest, OtherItemsInFrontOfACellAreIgnored)
{
    show(makeAlignment({"AC"}));
    auto *cover = new QCanvasRectangle(0, 0, 100, 100, &m_Canvas);
    cover->setZ(5);
    cover->show();
    press(kLeft, 0, 0);
    EXPECT_EQ(selectionOf(*m_Alignment, 0), "xo");
}

TEST_F(ViewTest, PressOnNoCellOnlyUpdates)
{
    show(makeAlignment({"AC"}));
    press(kLeft, 0, 2);
    press(kMiddle, 1, 0);
    EXPECT_EQ(takeSignals(), (QStringList{"Update", "Update"}));
    EXPECT_EQ(selectionOf(*m_Alignment, 0), "oo");
}

TEST_F(ViewTest, ReleaseWithoutADragOnlyUpdates)
{
    show(makeAlignment({"A-C"}));
    release(kMiddle, 0, 1);
    EXPECT_EQ(takeSignals(), kUpdate);
    EXPECT_EQ(texts(), (Texts{"A-C"}));
}

TEST_F(ViewTest, AfterAnyReleaseTheNextOneOnlyUpdates)
{
    show(makeAlignment({"A--CDE"}));
    const MessageRecorder recorder;
    press(kLeft, 0, 2);
    release(kLeft, 0, 4);
    takeSignals();
    release(kLeft, 0, 1);
    EXPECT_EQ(takeSignals(), kUpdate);
    EXPECT_EQ(texts(), (Texts{"A-CD-E"}));
}

TEST_F(ViewTest, EveryPressEndsADragFirst)
{
    show(makeAlignment({"A--CDE"}));
    press(kMiddle, 0, 1);
    press(kRight, 0, 2);
    release(kLeft, 0, 4);
    EXPECT_EQ(texts(), (Texts{"A--CDE"}));
}

TEST_F(ViewTest, DragFromAResidueIsReportedAndCarriedOut)
{
    show(makeAlignment({"AC--DE"}));
    const MessageRecorder recorder;
    press(kMiddle, 0, 1);
    release(kMiddle, 0, 3);
    ASSERT_EQ(recorder.messages().size(), 2);
    EXPECT_EQ(recorder.messages().at(0),
              QStringLiteral("ASSERT: \"0 == Target->getItem( m_Row, m_Col )\" in View (131)"));
    EXPECT_EQ(recorder.messages().at(1), QStringLiteral("Drag range"));
    // The residue and what follows it slid to the right.
    EXPECT_EQ(texts(), (Texts{"A--C--DE"}));
    EXPECT_EQ(takeSignals(), (QStringList{"Update", "ReArrange", "Update"}));
}

TEST_F(ViewTest, NothingMovesOrIsPaintedWhileTheMouseIsHeld)
{
    show(makeAlignment({"A--CDEFGHIKL"}));
    press(kLeft, 0, 1);
    takeSignals();
    PaintWatch paints{m_View.get()};
    for (unsigned long col = 1; col < 11; ++col) {
        QMouseEvent move(QEvent::MouseMove, centre(0, col),
                         m_View->viewport()->mapToGlobal(centre(0, col)), Qt::NoButton, kLeft,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(m_View->viewport(), &move);
    }
    EXPECT_TRUE(takeSignals().isEmpty());
    EXPECT_FALSE(paints.isAnythingPainted());
    EXPECT_EQ(texts(), (Texts{"A--CDEFGHIKL"}));
    EXPECT_EQ(m_View->contentsX(), 0);
}

TEST_F(ViewTest, LossOfFocusLeavesTheDragAsItIs)
{
    show(makeAlignment({"A--CDE"}));
    const MessageRecorder recorder;
    press(kLeft, 0, 2);
    QFocusEvent out(QEvent::FocusOut);
    QCoreApplication::sendEvent(m_View.get(), &out);
    QFocusEvent in(QEvent::FocusIn);
    QCoreApplication::sendEvent(m_View.get(), &in);
    release(kLeft, 0, 4);
    EXPECT_EQ(texts(), (Texts{"A-CD-E"}));
}

TEST_F(ViewTest, DragShowsInThePointer)
{
    show(makeAlignment({"A-C"}));
    press(kLeft, 0, 1);
    EXPECT_EQ(m_View->viewport()->cursor().shape(), Qt::ClosedHandCursor);
    release(kLeft, 1, 0);
    EXPECT_EQ(m_View->viewport()->cursor().shape(), Qt::ArrowCursor);
    press(kLeft, 0, 0);
    EXPECT_EQ(m_View->viewport()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(ViewTest, RefusedMoveSaysSoAndChangesNothing)
{
    show(makeAlignment({"A--CDE"}));
    setLocked(true);
    const MessageRecorder recorder;
    press(kLeft, 0, 2);
    release(kLeft, 0, 4);
    press(kMiddle, 0, 2);
    release(kMiddle, 0, 4);
    EXPECT_EQ(recorder.messages(), (QStringList{"Cannot update CDB!", "Cannot update CDB!"}));
    EXPECT_EQ(texts(), (Texts{"A--CDE"}));
    EXPECT_FALSE(m_Signals.contains(QStringLiteral("ReArrange")));
}

TEST_F(ViewTest, RefusedInsertionSaysSoAndChangesNothing)
{
    show(makeAlignment({"A--CDE"}));
    setLocked(true);
    const MessageRecorder recorder;
    press(kMiddle, 0, 0);
    release(kMiddle, 0, 0);
    EXPECT_EQ(recorder.messages(),
              (QStringList{"Drag terminal gap to here", "Cannot update CDB!"}));
    EXPECT_EQ(texts(), (Texts{"A--CDE"}));
    EXPECT_FALSE(m_Signals.contains(QStringLiteral("ReArrange")));
}

TEST_F(ViewTest, EditsArePublishedOnceEach)
{
    show(makeAlignment({"A--CDE"}));
    const MessageRecorder recorder;
    CountingSubscriber others;
    press(kLeft, 0, 2);
    EXPECT_EQ(others.m_Updates, 0);
    release(kLeft, 0, 4);
    EXPECT_EQ(others.m_Updates, 1);
    press(kMiddle, 0, 0);
    release(kMiddle, 0, 0);
    EXPECT_EQ(others.m_Updates, 2);
}

TEST_F(ViewTest, TheWindowIsToldOfAnEditBeforeTheOthers)
{
    show(makeAlignment({"A--CDE"}));
    const MessageRecorder recorder;
    CountingSubscriber others;
    std::vector<std::pair<Texts, int>> seen;
    QObject::connect(m_View.get(), &View::ReArrange,
                     [&] { seen.emplace_back(texts(), others.m_Updates); });
    press(kLeft, 0, 2);
    release(kLeft, 0, 4);
    press(kMiddle, 0, 0);
    release(kMiddle, 0, 0);
    EXPECT_EQ(seen, (std::vector<std::pair<Texts, int>>{{{"A-CD-E"}, 0}, {{"-A-CD-E"}, 1}}));
}

TEST_F(ViewTest, AnEditMarksTheWholeCanvasWhateverTheWindowMakesOfIt)
{
    show(makeAlignment({"A--CDE", "ACDEFG"}));
    QObject::disconnect(m_View.get(), &View::ReArrange, nullptr, nullptr);
    const MessageRecorder recorder;
    PaintWatch paints{m_View.get()};
    const auto expectAll = [&] {
        EXPECT_FALSE(paints.isAnythingPainted());
        m_Canvas.update();
        EXPECT_EQ(paints.take(), paints.whole());
    };
    for (const Qt::MouseButton button : {kLeft, kMiddle}) {
        press(button, 0, 2);
        release(button, 0, 3);
        expectAll();
    }
    press(kMiddle, 0, 0);
    release(kMiddle, 0, 0);
    expectAll();
}

TEST_F(ViewTest, MenuMayEndTheView)
{
    show(makeAlignment({"AC"}));
    TAMBO::modelHooks().showMenu = [this](TAMBO::Compound &) {
        m_Canvas.clear();
        m_View.reset();
    };
    // Handed over directly: nobody may touch the viewport afterwards.
    class Press : public View
    {
    public:
        using View::contentsMousePressEvent;
    };
    QMouseEvent event(QEvent::MouseButtonPress, centre(0, 0),
                      m_View->viewport()->mapToGlobal(centre(0, 0)), kRight, kRight,
                      Qt::NoModifier);
    (m_View.get()->*&Press::contentsMousePressEvent)(&event);
    EXPECT_EQ(m_View, nullptr);
    EXPECT_TRUE(takeSignals().isEmpty());
}

TEST_F(ViewTest, PrintPaintsTheContentsOnAnyPainter)
{
    show(makeAlignment({"ACDEFGHIKL", "MNPQRSTVWY"}));
    QImage all(m_Canvas.size(), QImage::Format_RGB32);
    all.fill(Qt::magenta);
    QPainter canvasPainter(&all);
    m_Canvas.drawArea(m_Canvas.rect(), &canvasPainter);
    canvasPainter.end();

    QImage printed(m_Canvas.size(), QImage::Format_RGB32);
    printed.fill(Qt::magenta);
    QPainter painter(&printed);
    ASSERT_TRUE(QMetaObject::invokeMethod(m_View.get(), "print", Q_ARG(QPainter *, &painter),
                                          Q_ARG(int, 25), Q_ARG(int, 10), Q_ARG(int, 90),
                                          Q_ARG(int, 30)));
    painter.end();
    const QRect part(25, 10, 90, 30);
    EXPECT_EQ(printed.copy(part), all.copy(part));
    EXPECT_EQ(printed.pixelColor(24, 20), QColor(Qt::magenta));
    EXPECT_EQ(printed.pixelColor(115, 20), QColor(Qt::magenta));
}

} // namespace ViewTest
