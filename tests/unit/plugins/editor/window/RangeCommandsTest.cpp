// SPDX-License-Identifier: GPL-3.0-or-later
// The commands on the column range, the realignment of it, and the colours of the dialog's table.
#include "WindowFixture.h"

#include "PluginRoutes.h"
#include "QCanvasRectangle.h"

namespace RangeCommandsTest {

using TAMBO::services::PluginRoutes;
using Range = TAMBO::Alignment::Range;

class RangeCommands : public WindowFixture
{
protected:
    static const QCanvasRectangle *marker(const ZEP::KALMO2 &window)
    {
        for (const QCanvasItem *item : WindowParts(window).headerCanvas->allItems())
            if (item->rtti() == QCanvasRectangle::RTTI)
                return static_cast<const QCanvasRectangle *>(item);
        return nullptr;
    }
    static std::string selectionOf(const TAMBO::Alignment &alignment, unsigned long row)
    {
        std::string text;
        for (unsigned long col = 0; col < alignment.width(); ++col) {
            const TAMBO::Compound *residue = alignment.getItem(row, col);
            text += residue == nullptr ? '-' : residue->IsSelected() ? 'x' : 'o';
        }
        return text;
    }
};

class Realignment : public RangeCommands
{
protected:
    Realignment()
    {
        PluginRoutes::instance().registerExecute("Calculate", "Alignment", "Malign",
                                                 [this](const PluginCall &call) {
                                                     m_Calls.push_back(call);
                                                     return m_Succeeds;
                                                 });
    }
    ~Realignment() override
    {
        PluginRoutes::instance().removeExecute("Calculate", "Alignment", "Malign");
    }

    std::vector<PluginCall> m_Calls;
    bool m_Succeeds = true;
};

TEST_F(RangeCommands, FullCoversEveryColumn)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    shown.range({1, 2});
    ZEP::KALMO2 &window = open(shown);
    window.RangeFull();
    EXPECT_EQ(shown.range(), Range(0, 4));
    const WindowParts parts(window);
    EXPECT_EQ(parts.header->begin(), 0U);
    EXPECT_EQ(parts.header->end(), 4U);
    EXPECT_EQ(marker(window)->x(), 0.0);
    EXPECT_EQ(marker(window)->width(), parts.cells->width() / 5 * 4);
    EXPECT_FALSE(history.canUndo()) << "the range alone is no step";
}

TEST_F(RangeCommands, SelectTakesTheRangeOfTheAlignment)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    ZEP::KALMO2 &window = open(shown);
    WindowParts(window).header->SetRange(0, 1);
    shown.range({1, 3});
    window.RangeSelect();
    EXPECT_EQ(selectionOf(shown, 0), "ox-o");
    EXPECT_EQ(selectionOf(shown, 1), "o-xo");
    EXPECT_FALSE(history.canUndo()) << "selecting is no step";
}

TEST_F(RangeCommands, SelectAddsToTheSelection)
{
    TAMBO::Alignment &shown = alignment({"ACDE"});
    shown.getItem(0, 0)->SetSelected(true);
    shown.range({2, 3});
    open(shown).RangeSelect();
    EXPECT_EQ(selectionOf(shown, 0), "xoxo");
}

TEST_F(RangeCommands, RemoveTakesTheColumnsOut)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    ZEP::KALMO2 &window = open(shown);
    shown.range({1, 3});
    {
        const ExpectMessage rebuilt(QtDebugMsg, "Got Alignment 2 by 2");
        window.RangeRemove();
    }
    EXPECT_EQ(rowsOf(shown), (Texts{"AD", "AD"}));
    const MessageRecorder quiet;
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(rowsOf(shown), (Texts{"AC-D", "A-CD"}));
    EXPECT_FALSE(history.canUndo());
}

TEST_F(RangeCommands, RemoveFromTheFirstColumnOnRemovesThose)
{
    TAMBO::Alignment &shown = alignment({"ACDE"});
    ZEP::KALMO2 &window = open(shown);
    shown.range({0, 2});
    const MessageRecorder quiet;
    window.RangeRemove();
    EXPECT_EQ(rowsOf(shown), Texts{"DE"});
    EXPECT_FALSE(isEmpty(window));
}

TEST_F(RangeCommands, RemoveOfEveryColumnOnlyClosesTheAlignment)
{
    TAMBO::Alignment &shown = alignment({"ACDE"});
    ZEP::KALMO2 &window = open(shown);
    shown.range({0, 4});
    TAMBO::setObjectLocked(shown, true);
    const RecordingSubscriber listener;
    window.RangeRemove();
    EXPECT_TRUE(isEmpty(window));
    EXPECT_EQ(rowsOf(shown), Texts{"ACDE"});
    EXPECT_EQ(alignments().size(), 1U);
    EXPECT_TRUE(listener.calls.empty());
    TAMBO::services::SelectObjectAnswers::push({&shown});
    const MessageRecorder quiet;
    window.GetAlignment();
    EXPECT_FALSE(isEmpty(window)) << "it can be shown again";
}

TEST_F(RangeCommands, RemoveOfAnEmptyRangeDoesNothing)
{
    TAMBO::Alignment &shown = alignment({"ACDE"});
    ZEP::KALMO2 &window = open(shown);
    const RecordingSubscriber listener;
    const MessageRecorder messages;
    for (const Range &range : {Range(2, 2), Range(0, 0)}) {
        shown.range(range);
        window.RangeRemove();
    }
    EXPECT_EQ(rowsOf(shown), Texts{"ACDE"});
    EXPECT_FALSE(isEmpty(window));
    EXPECT_TRUE(listener.calls.empty());
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(RangeCommands, RefusedOnesAreSilent)
{
    TAMBO::Alignment &shown = alignment({"ACDE"});
    ZEP::KALMO2 &window = open(shown);
    shown.range({1, 2});
    TAMBO::setObjectLocked(shown, true);
    const MessageRecorder messages;
    window.RangeFull();
    window.RangeSelect();
    window.RangeRemove();
    EXPECT_EQ(shown.range(), Range(1, 2));
    EXPECT_EQ(selectionOf(shown, 0), "oooo");
    EXPECT_EQ(rowsOf(shown), Texts{"ACDE"});
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(RangeCommands, ATableColoursEveryResidueByItsLetter)
{
    TAMBO::Alignment &shown = alignment({"ARNDCQEGHILKMFPSTWYVX-BZUa"});
    shown.getItem(0, 3)->SetSelected(true);
    std::vector<QColor> table;
    for (int i = 0; i < 21; ++i)
        table.emplace_back(10 * i, 5, 7);
    open(shown).setColor(table.data());
    for (unsigned long col = 0; col < shown.width(); ++col) {
        const TAMBO::Compound *residue = shown.getItem(0, col);
        if (residue == nullptr)
            continue;
        const std::size_t entry = std::min<std::size_t>(col, 20);
        EXPECT_EQ(residue->OwnColor(), Color(table[entry])) << residue->TypeCode();
    }
}

TEST_F(RangeCommands, ANullTableOrNoAlignmentColoursNothing)
{
    TAMBO::Alignment &shown = alignment({"AC"});
    const Color before = shown.getItem(0, 0)->OwnColor();
    const RecordingSubscriber listener;
    open(shown).setColor(nullptr);
    std::vector<QColor> table(21, Qt::red);
    open().setColor(table.data());
    EXPECT_EQ(shown.getItem(0, 0)->OwnColor(), before);
    EXPECT_TRUE(listener.calls.empty());
}

TEST_F(RangeCommands, ColouringByATableIsOneStepBack)
{
    TAMBO::Alignment &shown = alignment({"AC", "CA"});
    const Color before = shown.getItem(0, 0)->OwnColor();
    std::vector<QColor> table(21, Qt::red);
    open(shown).setColor(table.data());
    EXPECT_EQ(shown.getItem(0, 0)->OwnColor(), Color(0xff0000));
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(shown.getItem(0, 0)->OwnColor(), before);
    EXPECT_FALSE(history.canUndo());
}

// ---- Realignment

TEST_F(Realignment, HandsTheAlignmentToTheWorkbench)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    shown.range({1, 3});
    ZEP::KALMO2 &window = open(shown);
    const MessageRecorder messages;
    pressButton(window, 11);
    EXPECT_EQ(messages.messages(), (QStringList{"Aligning columns [1,3)", "Got Alignment 2 by 4"}));
    ASSERT_EQ(m_Calls.size(), 1U);
    EXPECT_EQ(m_Calls[0].caller, "KALMO");
    EXPECT_EQ(m_Calls[0].data, &shown);
}

TEST_F(Realignment, ShowsTheAlignmentAnewWhateverCameOfIt)
{
    m_Succeeds = false;
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    shown.range({0, 4});
    ZEP::KALMO2 &window = open(shown);
    WindowParts(window).header->SetRange(1, 2);
    const MessageRecorder messages;
    window.malign();
    EXPECT_EQ(messages.messages(), (QStringList{"Aligning columns [0,4)", "Got Alignment 2 by 4"}));
}

TEST_F(Realignment, ARangeOfLessThanTwoColumnsIsTooShort)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    ZEP::KALMO2 &window = open(shown);
    for (const Range &range : {Range(2, 2), Range(1, 2), Range(0, 0)}) {
        shown.range(range);
        const MessageRecorder messages;
        window.malign();
        EXPECT_EQ(messages.messages(), QStringList{"Too short range"});
    }
    EXPECT_TRUE(m_Calls.empty());
}

TEST_F(Realignment, OneRowOrNoColumnsIsNoMatter)
{
    TAMBO::Alignment &one = alignment({"ACD"});
    one.range({0, 3});
    TAMBO::Alignment &none = alignmentWithoutColumns();
    const MessageRecorder messages;
    open().malign();
    for (TAMBO::Alignment *shown : {&one, &none}) {
        ZEP::KALMO2 &window = open(*shown);
        const MessageRecorder during;
        window.malign();
        EXPECT_EQ(during.messages(), QStringList());
    }
    EXPECT_TRUE(m_Calls.empty());
}

} // namespace RangeCommandsTest
