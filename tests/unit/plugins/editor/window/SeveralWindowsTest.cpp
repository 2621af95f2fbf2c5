// SPDX-License-Identifier: GPL-3.0-or-later
// Several windows on one alignment: what is done in one of them, by undo or in the workbench, shows
// in all as a fresh window would show it.
#include "SeveralWindowsFixture.h"

#include "DataAdder.h"
#include "DataDelete.h"
#include "DataMaker.h"
#include "Space.h"
#include "Structure.h"

#include <functional>

namespace SeveralWindowsTest {

struct Change
{
    const char *name;
    std::function<void(const Hands &first, TAMBO::Alignment &shown)> make;

    friend void PrintTo(const Change &change, std::ostream *out) { *out << change.name; }
};

void destroy(TAMBO::Compound &object)
{
    const DataDelete<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
    ASSERT_TRUE(guard.m_good);
    TAMBO::DataMaker::Destroy(&object);
}

class EveryChange : public SeveralWindows, public ::testing::WithParamInterface<Change>
{
};

std::vector<Change> changes()
{
    using TAMBO::Alignment;
    return {
        {"GapDragged", [](const Hands &hands, Alignment &) { hands.drag(Hands::kLeft, 0, 2, 5); }},
        {"GapsDragged",
         [](const Hands &hands, Alignment &) { hands.drag(Hands::kMiddle, 0, 2, 5); }},
        {"GapInserted",
         [](const Hands &hands, Alignment &) { hands.clickCell(Hands::kMiddle, 1, 4); }},
        {"ColumnInserted",
         [](const Hands &hands, Alignment &) { hands.clickMark(Hands::kMiddle, 3); }},
        {"ColumnRemoved",
         [](const Hands &hands, Alignment &) {
             hands.clickMark(Hands::kMiddle, 3, Qt::ShiftModifier);
         }},
        {"RowRemoved", [](const Hands &hands,
                          Alignment &) { hands.clickName(Hands::kMiddle, 1, Qt::ShiftModifier); }},
        {"ResidueSelected",
         [](const Hands &hands, Alignment &) { hands.clickCell(Hands::kLeft, 1, 1); }},
        {"RowSelected", [](const Hands &hands, Alignment &) { hands.clickName(Hands::kLeft, 1); }},
        {"AlignmentRenamed",
         [](const Hands &, Alignment &shown) {
             const DataPoint<Alignment> guard(nullptr, &shown);
             TAMBO::renameObject(shown, "other");
         }},
        {"SequenceRenamed",
         [](const Hands &, Alignment &shown) {
             const DataPoint<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
             TAMBO::renameObject(*shown.GetSeq(1), "other");
         }},
        {"ResidueColoured",
         [](const Hands &, Alignment &shown) {
             const DataPoint<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
             shown.getItem(2, 0)->SetColor(Color(0x102030U));
         }},
        {"ResidueNumbered",
         [](const Hands &, Alignment &shown) {
             const DataPoint<Alignment> guard(nullptr, &shown);
             auto &tenth = dynamic_cast<TAMBO::Group &>(*shown.getItem(0, 11));
             ASSERT_EQ(tenth.GetSeqId().getValue(), "10");
             tenth.SetSeqId(TAMBO::SequenceNumber("77B"));
         }},
        {"ElementMade",
         [](const Hands &, Alignment &shown) {
             const DataAdder<Alignment> guard(nullptr, &shown);
             ASSERT_NE(TAMBO::DataMaker::makeSSE(
                           shown.GetSeq(0), "unk",
                           {shown.getItem(0, 4), shown.getItem(0, 5), shown.getItem(0, 6)}, 'H'),
                       nullptr);
         }},
        {"RangeSet",
         [](const Hands &, Alignment &shown) {
             const DataPoint<Alignment> guard(nullptr, &shown);
             guard->rangeAll();
         }},
        {"SequenceDeleted", [](const Hands &, Alignment &shown) { destroy(*shown.GetSeq(0)); }},
        {"AlignmentDeleted", [](const Hands &, Alignment &shown) { destroy(shown); }},
    };
}

TEST_F(SeveralWindows, EachShowsItsOwnAlignment)
{
    const WindowParts first(open(alignment({"ACD", "EFG"}, "first")));
    const WindowParts second(open(alignment({"ACDEF"}, "second")));
    EXPECT_EQ(first.corner->text(), "first");
    EXPECT_EQ(first.cells->allItems().size(), 6);
    EXPECT_EQ(second.corner->text(), "second");
    EXPECT_EQ(second.cells->allItems().size(), 5);
}

TEST_P(EveryChange, ItsUndoAndRedoShowInAllWindowsAsInAFreshOne)
{
    TAMBO::Alignment &shown = alignment(kRows);
    ZEP::KALMO2 &first = another(shown);
    ZEP::KALMO2 &second = another(shown);
    const QImage before = screenOf(first);
    EXPECT_EQ(screenOf(second), before);
    const MessageRecorder quiet;
    GetParam().make(Hands(first), shown);
    const QImage after = screenOf(first);
    EXPECT_NE(after, before);
    EXPECT_EQ(screenOf(second), after);
    const bool isGone = alignments().empty();
    EXPECT_EQ(screenOf(isGone ? anotherEmpty() : another(shown)), after);
    if (!history.undo() || isGone)
        return;
    EXPECT_EQ(screenOf(first), before);
    EXPECT_EQ(screenOf(second), before);
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(screenOf(first), after);
    EXPECT_EQ(screenOf(second), after);
}

INSTANTIATE_TEST_SUITE_P(Changes, EveryChange, testing::ValuesIn(changes()),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_F(SeveralWindows, KeepTheirScrollPositionsUnderEditsAndUndo)
{
    TAMBO::Alignment &shown = alignment(Texts(60, "AC--" + std::string(196, 'D')));
    ZEP::KALMO2 &first = another(shown);
    const WindowParts second(another(shown));
    second.view->setContentsPos(333, 222);
    const auto expectPlaces = [&] {
        QCoreApplication::processEvents();
        EXPECT_EQ(place(WindowParts(first)), QPoint(0, 0));
        EXPECT_EQ(place(second), QPoint(333, 222));
        EXPECT_EQ(second.header->contentsX(), 333);
        EXPECT_EQ(second.names->contentsY(), 222);
    };
    const MessageRecorder quiet;
    const Hands hands(first);
    hands.drag(Hands::kLeft, 0, 2, 5);
    expectPlaces();
    hands.clickMark(Hands::kMiddle, 3);
    expectPlaces();
    hands.clickName(Hands::kMiddle, 3, Qt::ShiftModifier);
    expectPlaces();
    destroy(*shown.GetSeq(1));
    expectPlaces();
    while (history.undo())
        expectPlaces();
    EXPECT_EQ(rowsOf(shown).front(), "AC--" + std::string(196, 'D'));
}

TEST_F(SeveralWindows, ADeletedAlignmentLeavesAllAndComesBackToNone)
{
    TAMBO::Alignment &shown = alignment(kRows);
    const ZEP::KALMO2 &first = another(shown);
    ZEP::KALMO2 &second = another(shown);
    const MessageRecorder quiet;
    destroy(shown);
    EXPECT_TRUE(isEmpty(first));
    EXPECT_TRUE(isEmpty(second));
    EXPECT_TRUE(history.undo());
    EXPECT_TRUE(isEmpty(first));
    EXPECT_TRUE(isEmpty(second));
    second.Populate(alignments().front());
    EXPECT_EQ(WindowParts(second).cells->allItems().size(), 45);
}

TEST_F(SeveralWindows, ANewRangeShowsInTheOthersAtTheNextNotification)
{
    TAMBO::Alignment &shown = alignment(kRows);
    const Hands hands(another(shown));
    const ZEP::KALMO2 &second = another(shown);
    hands.clickMark(Hands::kLeft, 4);
    EXPECT_EQ(shown.range(), Range(4, 5));
    hands.clickCell(Hands::kLeft, 1, 1);
    EXPECT_EQ(rangeOf(second), Range(4, 5));
}

TEST_F(SeveralWindows, TheOtherExtendsTheRangeThatThisOneSet)
{
    TAMBO::Alignment &shown = alignment(kRows);
    ZEP::KALMO2 &first = another(shown);
    const Hands second(another(shown));
    const MessageRecorder quiet;
    second.clickMark(Hands::kLeft, 2);
    Hands(first).clickMark(Hands::kLeft, 9);
    first.RangeFull();
    second.clickMark(Hands::kLeft, 4, Qt::ShiftModifier);
    EXPECT_EQ(shown.range(), Range(0, 15));
}

TEST_F(SeveralWindows, OneClosedLeavesTheOtherWorking)
{
    TAMBO::Alignment &shown = alignment(kRows);
    auto doomed = std::make_unique<ZEP::KALMO2>();
    const MessageRecorder quiet;
    doomed->Populate(&shown);
    const Hands second(another(shown));
    doomed.reset();
    second.drag(Hands::kLeft, 0, 2, 5);
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(rowsOf(shown), kRows);
}

} // namespace SeveralWindowsTest
