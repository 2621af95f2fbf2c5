// SPDX-License-Identifier: GPL-3.0-or-later
// Making, extending, combining, copying and deleting alignments from an editor window.
#include "WindowFixture.h"

#include "AlignmentTable.h"
#include "DataMaker.h"
#include "Structure.h"

#include <QListWidget>
#include <QPushButton>

#include <functional>

namespace AcquireTest {

using Answers = TAMBO::services::SelectObjectAnswers;

class Acquire : public WindowFixture
{
protected:
    static QString shownName(const ZEP::KALMO2 &window)
    {
        return WindowParts(window).corner->text();
    }
    // Answers the deletion dialog by its rows.
    static DialogDriver::Handler tick(std::vector<int> rows)
    {
        return [rows](QDialog &dialog) {
            auto *list = dialog.findChild<QListWidget *>();
            ASSERT_NE(list, nullptr);
            for (const int row : rows)
                list->item(row)->setSelected(true);
            static_cast<BaseDialog &>(dialog).Ok();
        };
    }
    // Does something while a dialog that offers sequences is open, then takes them all.
    static DialogDriver::Handler takeAllAfter(std::function<void()> act)
    {
        return [act = std::move(act)](QDialog &dialog) {
            act();
            for (QPushButton *button : dialog.findChildren<QPushButton *>()) {
                if (button->text() == "Select &all")
                    button->click();
            }
            dialog.accept();
        };
    }
    static TAMBO::Structure &structure(const std::string &name,
                                       const std::vector<std::string> &chains)
    {
        TAMBO::StructureRecord record;
        record.name = name;
        for (const std::string &chain : chains)
            record.chains.push_back({chain, {{"ALA", 'A', TAMBO::SequenceNumber("1"), {}}}});
        const DataPointBase guard(nullptr, Publisher::Add);
        return *TAMBO::ObjectFactory::adopt(std::move(record));
    }
};

// ---- Make from sequences

TEST_F(Acquire, MakingNeedsSequences)
{
    ZEP::KALMO2 &window = open();
    const DialogDriver dialogs;
    const MessageRecorder messages;
    window.GetSequences();
    EXPECT_EQ(dialogs.titles(), QStringList());
    EXPECT_EQ(messages.messages(), QStringList());
    EXPECT_TRUE(isEmpty(window));
}

TEST_F(Acquire, MakingOffersEverySequenceInTheOrderOfTheWorkbench)
{
    TAMBO::Peptide &z = peptide("z", "ACD");
    TAMBO::Peptide &a = peptide("a", "ACDEF");
    ZEP::KALMO2 &window = open();
    Answers::pushCancel();
    window.GetSequences();
    const auto &question = Answers::lastQuestion();
    EXPECT_EQ(question.caption, "sequences");
    EXPECT_EQ(question.candidates, (std::vector<TAMBO::Compound *>{&z, &a}));
    EXPECT_TRUE(question.isSeveral);
    EXPECT_EQ(question.parent, &window);
    EXPECT_TRUE(alignments().empty());
}

TEST_F(Acquire, ChainsOfStructuresAreOfferedWhereTheyStandInTheTree)
{
    TAMBO::Structure &first = structure("first", {"B", "A"});
    TAMBO::Peptide &loose = peptide("loose", "ACD");
    TAMBO::Structure &second = structure("second", {"A"});
    ZEP::KALMO2 &window = open();
    Answers::pushCancel();
    window.GetSequences();
    EXPECT_EQ(
        Answers::lastQuestion().candidates,
        (std::vector<TAMBO::Compound *>{first.Child(0), first.Child(1), &loose, second.Child(0)}));
}

TEST_F(Acquire, MakingAsksTheWorkbenchOnlyAfterTheDialog)
{
    peptide("a", "ACD");
    ZEP::KALMO2 &window = open();
    DialogDriver dialogs;
    dialogs.expect(takeAllAfter([] { lockAll(); }));
    window.GetSequences();
    EXPECT_TRUE(alignments().empty()) << "a guard from before would have been granted";
    EXPECT_TRUE(isEmpty(window));
}

TEST_F(Acquire, MakingShowsTheNewAlignment)
{
    TAMBO::Peptide &a = peptide("a", "ACD");
    peptide("b", "AAA");
    TAMBO::Peptide &c = peptide("c", "EFGHI");
    TAMBO::Alignment &before = alignment({"AC"}, "before");
    ZEP::KALMO2 &window = open(before);
    const RecordingSubscriber listener;
    Answers::push({&a, &c});
    {
        const ExpectMessage shown(QtDebugMsg, "Got Alignment 2 by 5");
        window.GetSequences();
    }
    ASSERT_EQ(alignments().size(), 2U);
    const TAMBO::Alignment &made = *alignments().back();
    EXPECT_EQ(made.Name(), "SeqAli");
    EXPECT_EQ(rowsOf(made), (Texts{"ACD--", "EFGHI"}));
    EXPECT_EQ(shownName(window), "SeqAli");
    EXPECT_EQ(rowsOf(before), Texts{"AC"});
    EXPECT_EQ(listener.calls, Texts{"add"});
}

TEST_F(Acquire, MakingTwiceMakesTwoOfOneName)
{
    TAMBO::Peptide &a = peptide("a", "ACD");
    ZEP::KALMO2 &window = open();
    const MessageRecorder quiet;
    for (int i = 0; i < 2; ++i) {
        Answers::push({&a});
        window.GetSequences();
    }
    ASSERT_EQ(alignments().size(), 2U);
    EXPECT_EQ(alignments()[0]->Name(), "SeqAli");
    EXPECT_EQ(alignments()[1]->Name(), "SeqAli");
}

TEST_F(Acquire, MakingOfNothingOrCancelledMakesNothing)
{
    peptide("a", "ACD");
    TAMBO::Alignment &before = alignment({"AC"}, "before");
    ZEP::KALMO2 &window = open(before);
    const RecordingSubscriber listener;
    const MessageRecorder messages;
    Answers::push({});
    window.GetSequences();
    Answers::pushCancel();
    window.GetSequences();
    EXPECT_EQ(alignments().size(), 1U);
    EXPECT_EQ(shownName(window), "before");
    EXPECT_TRUE(listener.calls.empty());
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(Acquire, MakingIsSilentWhenRefused)
{
    TAMBO::Peptide &a = peptide("a", "ACD");
    TAMBO::Alignment &before = alignment({"AC"}, "before");
    ZEP::KALMO2 &window = open(before);
    lockAll();
    Answers::push({&a});
    const MessageRecorder messages;
    window.GetSequences();
    EXPECT_EQ(alignments().size(), 1U);
    EXPECT_EQ(shownName(window), "before");
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(Acquire, MakingIsOneStepBack)
{
    TAMBO::Peptide &a = peptide("a", "ACD");
    ZEP::KALMO2 &window = open();
    Answers::push({&a});
    const MessageRecorder quiet;
    window.GetSequences();
    EXPECT_TRUE(history.undo());
    EXPECT_TRUE(alignments().empty());
    EXPECT_TRUE(isEmpty(window));
    EXPECT_FALSE(history.canUndo());
}

TEST_F(Acquire, AnAlignmentOutlivesTheWindowThatMadeIt)
{
    TAMBO::Peptide &a = peptide("a", "ACD");
    Answers::push({&a});
    {
        const MessageRecorder quiet;
        open().GetSequences();
    }
    closeWindows();
    ASSERT_EQ(alignments().size(), 1U);
    EXPECT_EQ(rowsOf(*alignments()[0]), Texts{"ACD"});
}

// ---- Add sequences

TEST_F(Acquire, AddingWithoutAnAlignmentOpensNoDialog)
{
    peptide("a", "ACD");
    ZEP::KALMO2 &window = open();
    const DialogDriver dialogs;
    window.AddSequences();
    EXPECT_EQ(dialogs.titles(), QStringList());
}

TEST_F(Acquire, AddingWithoutSequencesOpensNoDialog)
{
    ZEP::KALMO2 &window = open(*TAMBO::DataMaker::makeAlignment("none", {}));
    const DialogDriver dialogs;
    const MessageRecorder messages;
    window.AddSequences();
    EXPECT_EQ(dialogs.titles(), QStringList());
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(Acquire, AddingAppendsUngappedRows)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    TAMBO::Peptide &longer = peptide("longer", "MKLVI");
    ZEP::KALMO2 &window = open(shown);
    const RecordingSubscriber listener;
    Answers::push({&longer});
    const ExpectMessage rebuilt(QtDebugMsg, "Got Alignment 3 by 5");
    window.AddSequences();
    EXPECT_EQ(rowsOf(shown), (Texts{"AC-D-", "A-CD-", "MKLVI"}));
    const auto &question = Answers::lastQuestion();
    EXPECT_EQ(question.caption, "sequences to add");
    EXPECT_EQ(question.candidates,
              (std::vector<TAMBO::Compound *>{shown.GetSeq(0), shown.GetSeq(1), &longer}))
        << "sequences of the alignment are offered too";
    EXPECT_EQ(question.parent, &window);
    EXPECT_EQ(listener.calls, Texts{"update"});
}

TEST_F(Acquire, AnAlignmentDeletedWhileAskedIsLeftAlone)
{
    TAMBO::Alignment &shown = alignment({"AC-D"});
    ZEP::KALMO2 &window = open(shown);
    const MessageRecorder quiet;
    DialogDriver dialogs;
    const auto destroy = [](TAMBO::Alignment *alignment) {
        const DataPointBase guard(nullptr, Publisher::Delete);
        TAMBO::DataMaker::Destroy(alignment);
    };
    dialogs.expect(takeAllAfter([&] { destroy(&shown); }));
    window.AddSequences();
    EXPECT_TRUE(isEmpty(window));
    TAMBO::Alignment &second = alignment({"AC-D"});
    TAMBO::Alignment &other = alignment({"A-E"});
    window.Populate(&second);
    dialogs.expect([&](QDialog &dialog) {
        destroy(&second);
        dialog.accept();
    });
    window.CombineAlignment();
    EXPECT_TRUE(isEmpty(window));
    EXPECT_EQ(alignments(), std::vector<TAMBO::Alignment *>{&other});
    EXPECT_EQ(rowsOf(other), Texts{"A-E"});
}

TEST_F(Acquire, AddingNothingCancelledOrRefusedChangesNothing)
{
    TAMBO::Alignment &shown = alignment({"AC-D"});
    TAMBO::Peptide &other = peptide("other", "MKL");
    ZEP::KALMO2 &window = open(shown);
    const RecordingSubscriber listener;
    const MessageRecorder messages;
    Answers::push({});
    window.AddSequences();
    Answers::pushCancel();
    window.AddSequences();
    TAMBO::setObjectLocked(shown, true);
    Answers::push({&other});
    window.AddSequences();
    EXPECT_EQ(rowsOf(shown), Texts{"AC-D"});
    EXPECT_TRUE(listener.calls.empty());
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(Acquire, AddingIsOneStepBack)
{
    TAMBO::Alignment &shown = alignment({"AC-D"});
    TAMBO::Peptide &a = peptide("a", "MKLVI");
    TAMBO::Peptide &b = peptide("b", "MK");
    ZEP::KALMO2 &window = open(shown);
    Answers::push({&a, &b});
    const MessageRecorder quiet;
    window.AddSequences();
    EXPECT_EQ(shown.height(), 3U);
    EXPECT_TRUE(history.undo());
    EXPECT_FALSE(history.canUndo());
    EXPECT_EQ(rowsOf(shown), Texts{"AC-D"});
}

// ---- Get alignment

TEST_F(Acquire, GettingWithoutAlignmentsOffersSequencesInstead)
{
    TAMBO::Peptide &a = peptide("a", "ACD");
    ZEP::KALMO2 &window = open();
    Answers::push({&a});
    const MessageRecorder quiet;
    window.GetAlignment();
    EXPECT_EQ(Answers::lastQuestion().caption, "sequences");
    EXPECT_EQ(shownName(window), "SeqAli");
    EXPECT_TRUE(Answers::isEmpty());
}

TEST_F(Acquire, GettingShowsTheChosenOne)
{
    TAMBO::Alignment &a = alignment({"AC"}, "a");
    TAMBO::Alignment &b = alignment({"DE"}, "b");
    ZEP::KALMO2 &window = open(a);
    lockAll();
    const RecordingSubscriber listener;
    Answers::push({&b});
    {
        const ExpectMessage shown(QtDebugMsg, "Got Alignment 1 by 2");
        window.GetAlignment();
    }
    EXPECT_EQ(shownName(window), "b") << "no guard is needed to look";
    const auto &question = Answers::lastQuestion();
    EXPECT_EQ(question.caption, "alignment");
    EXPECT_EQ(question.candidates, (std::vector<TAMBO::Compound *>{&a, &b}))
        << "only alignments, the shown one among them";
    EXPECT_FALSE(question.isSeveral);
    EXPECT_EQ(question.parent, &window);
    EXPECT_TRUE(listener.calls.empty());
    EXPECT_FALSE(history.canUndo());
}

TEST_F(Acquire, GettingTheShownOneShowsItAnew)
{
    TAMBO::Alignment &a = alignment({"AC"}, "a");
    ZEP::KALMO2 &window = open(a);
    Answers::push({&a});
    const ExpectMessage shown(QtDebugMsg, "Got Alignment 1 by 2");
    window.GetAlignment();
    EXPECT_EQ(shownName(window), "a");
}

TEST_F(Acquire, GettingCancelledChangesNothing)
{
    TAMBO::Alignment &a = alignment({"AC"}, "a");
    ZEP::KALMO2 &window = open(a);
    Answers::pushCancel();
    const MessageRecorder messages;
    window.GetAlignment();
    EXPECT_EQ(shownName(window), "a");
    EXPECT_EQ(messages.messages(), QStringList());
}

// ---- Combine

TEST_F(Acquire, CombiningWithoutAShownAlignmentOpensNoDialog)
{
    alignment({"AC"}, "a");
    ZEP::KALMO2 &window = open();
    const DialogDriver dialogs;
    window.CombineAlignment();
    EXPECT_EQ(dialogs.titles(), QStringList());
}

TEST_F(Acquire, CombiningWithoutAlignmentsInTheWorkbenchOpensNoDialog)
{
    const std::unique_ptr<TAMBO::Alignment> elsewhere =
        TAMBO::AlignmentTable::make("x", TAMBO::AlignmentTable::rowsOf({&peptide("a", "ACD")}));
    ZEP::KALMO2 &window = open(*elsewhere);
    const DialogDriver dialogs;
    const MessageRecorder messages;
    window.CombineAlignment();
    EXPECT_EQ(dialogs.titles(), QStringList());
    EXPECT_EQ(messages.messages(), QStringList());
    closeWindows();
}

TEST_F(Acquire, CombiningMatchesColumnsAlongTheCommonSequence)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"}, "shown");
    TAMBO::Alignment &other = alignment({"AEE"}, "other");
    other.addRows({shown.GetSeq(0)});
    other.bubbleRow(1, 0);
    ASSERT_EQ(rowsOf(other), (Texts{"ACD", "AEE"}));
    ZEP::KALMO2 &window = open(shown);
    Answers::push({&other});
    {
        const ExpectMessage rebuilt(QtDebugMsg, "Got Alignment 3 by 4");
        window.CombineAlignment();
    }
    EXPECT_EQ(rowsOf(shown), (Texts{"AC-D", "A-CD", "AE-E"}));
    EXPECT_EQ(rowsOf(other), (Texts{"ACD", "AEE"}));
    EXPECT_EQ(other.Name(), "other");
    EXPECT_EQ(shownName(window), "shown");
    const auto &question = Answers::lastQuestion();
    EXPECT_EQ(question.caption, "Alignment to combine");
    EXPECT_EQ(question.candidates, (std::vector<TAMBO::Compound *>{&shown, &other}));
    EXPECT_FALSE(question.isSeveral);
    EXPECT_EQ(question.parent, &window);
    closeWindows();
    EXPECT_EQ(alignments(), (std::vector<TAMBO::Alignment *>{&shown, &other}));
}

TEST_F(Acquire, CombiningWithoutACommonSequenceAppendsTheRows)
{
    TAMBO::Alignment &shown = alignment({"ACD"}, "shown");
    TAMBO::Alignment &other = alignment({"A-E"}, "other");
    ZEP::KALMO2 &window = open(shown);
    Answers::push({&other});
    const MessageRecorder quiet;
    window.CombineAlignment();
    EXPECT_EQ(rowsOf(shown), (Texts{"ACD", "A-E"}));
}

TEST_F(Acquire, CombiningWithItselfDoublesNothing)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    ZEP::KALMO2 &window = open(shown);
    Answers::push({&shown});
    const MessageRecorder quiet;
    window.CombineAlignment();
    EXPECT_EQ(rowsOf(shown), (Texts{"AC-D", "A-CD"}));
}

TEST_F(Acquire, CombiningCancelledOrRefusedIsSilent)
{
    TAMBO::Alignment &shown = alignment({"ACD"}, "shown");
    TAMBO::Alignment &other = alignment({"A-E"}, "other");
    ZEP::KALMO2 &window = open(shown);
    const MessageRecorder messages;
    Answers::pushCancel();
    window.CombineAlignment();
    TAMBO::setObjectLocked(shown, true);
    Answers::push({&other});
    window.CombineAlignment();
    EXPECT_EQ(rowsOf(shown), Texts{"ACD"});
    EXPECT_EQ(messages.messages(), QStringList());
    EXPECT_FALSE(history.canUndo());
}

TEST_F(Acquire, CombiningIsOneStepBack)
{
    TAMBO::Alignment &shown = alignment({"ACD"}, "shown");
    TAMBO::Alignment &other = alignment({"A-E"}, "other");
    ZEP::KALMO2 &window = open(shown);
    Answers::push({&other});
    const MessageRecorder quiet;
    window.CombineAlignment();
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(rowsOf(shown), Texts{"ACD"});
    EXPECT_FALSE(history.canUndo());
}

// ---- Duplicate

TEST_F(Acquire, DuplicatingKeepsTheShownOne)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"}, "mine");
    ZEP::KALMO2 &window = open(shown);
    const RecordingSubscriber listener;
    {
        const MessageRecorder messages;
        window.Duplicate();
        EXPECT_EQ(messages.messages(), QStringList());
    }
    ASSERT_EQ(alignments().size(), 2U);
    const TAMBO::Alignment &copy = *alignments()[1];
    EXPECT_EQ(copy.Name(), shown.Name());
    EXPECT_EQ(rowsOf(copy), (Texts{"AC-D", "A-CD"}));
    EXPECT_EQ(copy.GetSeq(0), shown.GetSeq(0));
    EXPECT_EQ(listener.calls, Texts{"add"});
    const MessageRecorder quiet;
    call(window, "InsertCol", number(0UL));
    EXPECT_EQ(shown.width(), 5U) << "the window still edits the one it shows";
    EXPECT_EQ(copy.width(), 4U);
}

TEST_F(Acquire, DuplicatingNothingOrRefusedMakesNothing)
{
    TAMBO::Alignment &shown = alignment({"AC"});
    open().Duplicate();
    ZEP::KALMO2 &window = open(shown);
    lockAll();
    const MessageRecorder messages;
    window.Duplicate();
    EXPECT_EQ(alignments().size(), 1U);
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(Acquire, DuplicatingAnAlignmentWithoutColumnsGivesNoRows)
{
    ZEP::KALMO2 &window = open(alignmentWithoutColumns());
    window.Duplicate();
    ASSERT_EQ(alignments().size(), 2U);
    EXPECT_EQ(alignments()[1]->width(), 0U);
    EXPECT_EQ(alignments()[1]->GetSeq(0), nullptr);
}

TEST_F(Acquire, DuplicatingIsOneStepBack)
{
    ZEP::KALMO2 &window = open(alignment({"AC"}));
    window.Duplicate();
    const MessageRecorder quiet;
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(alignments().size(), 1U);
    EXPECT_FALSE(history.canUndo());
}

// ---- Delete

TEST_F(Acquire, DeletingNeedsAlignments)
{
    peptide("a", "ACD");
    ZEP::KALMO2 &window = open();
    const DialogDriver dialogs;
    const MessageRecorder messages;
    window.DeleteAlignment();
    EXPECT_EQ(dialogs.titles(), QStringList());
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(Acquire, DeletingAsksWithTheEditorsOwnList)
{
    alignment({"AC"}, "a");
    alignment({"DE"}, "b");
    ZEP::KALMO2 &window = open();
    DialogDriver dialogs;
    dialogs.expect([&](QDialog &dialog) {
        EXPECT_STREQ(dialog.metaObject()->className(), "ZEP::SequenceSelector");
        EXPECT_EQ(dialog.windowTitle(), "Select Alignment");
        EXPECT_EQ(dialog.parentWidget(), &window);
        auto *list = dialog.findChild<QListWidget *>();
        ASSERT_NE(list, nullptr);
        EXPECT_EQ(list->count(), 2);
        EXPECT_TRUE(list->selectedItems().isEmpty());
    });
    window.DeleteAlignment();
    EXPECT_EQ(alignments().size(), 2U) << "it was cancelled";
}

TEST_F(Acquire, DeletingSeveralEmptiesTheWindowWhereverTheShownOneStands)
{
    for (const bool shownFirst : {true, false}) {
        TAMBO::Alignment &first = alignment({"AC"}, "first");
        TAMBO::Alignment &second = alignment({"DE"}, "second");
        TAMBO::Alignment &third = alignment({"FG"}, "third");
        ZEP::KALMO2 &window = open(shownFirst ? first : second);
        DialogDriver dialogs;
        const MessageRecorder messages;
        dialogs.expect(tick({0, 1}));
        window.DeleteAlignment();
        EXPECT_TRUE(isEmpty(window));
        EXPECT_EQ(alignments(), std::vector<TAMBO::Alignment *>{&third});
        EXPECT_EQ(messages.messages(), QStringList()) << "the window has forgotten it before";
        dialogs.expect(tick({0}));
        window.DeleteAlignment();
        EXPECT_TRUE(alignments().empty());
    }
}

TEST_F(Acquire, DeletingAnotherTellsThisWindowToo)
{
    TAMBO::Alignment &shown = alignment({"AC"}, "shown");
    alignment({"DE"}, "other");
    ZEP::KALMO2 &window = open(shown);
    const ExpectMessage told(QtDebugMsg, "KALMO2::commDelete(): Did somebody killed my data?");
    DialogDriver dialogs;
    dialogs.expect(tick({1}));
    window.DeleteAlignment();
    EXPECT_EQ(alignments(), std::vector<TAMBO::Alignment *>{&shown});
    EXPECT_EQ(shownName(window), "shown");
}

TEST_F(Acquire, DeletingEmptiesOtherWindowsThatShowIt)
{
    TAMBO::Alignment &shown = alignment({"AC"}, "shown");
    ZEP::KALMO2 &first = open(shown);
    const ZEP::KALMO2 &second = open(shown);
    const MessageRecorder quiet;
    DialogDriver dialogs;
    dialogs.expect(tick({0}));
    first.DeleteAlignment();
    EXPECT_TRUE(isEmpty(first));
    EXPECT_TRUE(isEmpty(second));
}

TEST_F(Acquire, DeletingWithNothingTickedDeletesNothing)
{
    ZEP::KALMO2 &window = open(alignment({"AC"}, "shown"));
    const MessageRecorder quiet;
    DialogDriver dialogs;
    dialogs.expect(tick({}));
    window.DeleteAlignment();
    EXPECT_EQ(alignments().size(), 1U);
    EXPECT_EQ(shownName(window), "shown");
    EXPECT_FALSE(history.canUndo());
}

TEST_F(Acquire, DeletingCancelledTellsNobody)
{
    ZEP::KALMO2 &window = open(alignment({"AC"}, "shown"));
    const RecordingSubscriber listener;
    const MessageRecorder messages;
    DialogDriver dialogs;
    dialogs.expect([](QDialog &dialog) {
        dialog.findChild<QListWidget *>()->item(0)->setSelected(true);
        dialog.reject();
    });
    window.DeleteAlignment();
    EXPECT_EQ(alignments().size(), 1U);
    EXPECT_TRUE(listener.calls.empty());
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(Acquire, DeletingRefusedSaysSoInTheDebugOutputOnly)
{
    ZEP::KALMO2 &window = open(alignment({"AC"}, "shown"));
    lockAll();
    const MessageRecorder messages;
    DialogDriver dialogs;
    dialogs.expect(tick({0}));
    window.DeleteAlignment();
    EXPECT_EQ(messages.messages(), QStringList{"Failed to delete."});
    EXPECT_EQ(dialogs.titles(), QStringList{"Select Alignment"});
    EXPECT_EQ(alignments().size(), 1U);
    EXPECT_EQ(shownName(window), "shown");
}

TEST_F(Acquire, DeletingIsOneStepBack)
{
    alignment({"AC"}, "a");
    alignment({"DE"}, "b");
    const Texts before = topLevelNames();
    ZEP::KALMO2 &window = open();
    DialogDriver dialogs;
    dialogs.expect(tick({0, 1}));
    window.DeleteAlignment();
    EXPECT_TRUE(alignments().empty());
    EXPECT_TRUE(history.undo());
    EXPECT_FALSE(history.canUndo());
    EXPECT_EQ(topLevelNames(), before);
    EXPECT_EQ(rowsOf(*alignments()[1]), Texts{"DE"});
}

} // namespace AcquireTest
