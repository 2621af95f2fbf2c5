// SPDX-License-Identifier: GPL-3.0-or-later
// Making, extending, combining, copying and deleting alignments from an editor window.
#include "HostSpy.h"
#include "WindowFixture.h"

#include "AlignmentTable.h"
#include "DataMaker.h"
#include "Structure.h"
#include "support/KeptQuestion.h"

#include <QListWidget>
#include <QPushButton>

#include <functional>

namespace AcquireTest {

using Answers = TAMBO::services::SelectObjectAnswers;

class Acquire : public WindowFixture
{
protected:
    ~Acquire() override { HostSpy::makesNoAlignment = false; }

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

    struct Contents
    {
        Texts names;
        std::vector<Texts> rows;

        bool operator==(const Contents &) const = default;
    };
    static Contents contents()
    {
        Contents contents{topLevelNames(), {}};
        for (const TAMBO::Alignment *alignment : alignments())
            contents.rows.push_back(rowsOf(*alignment));
        return contents;
    }
};

using Command = void (ZEP::KALMO2::*)();
using ZEP::KALMO2;

template <typename Case> std::string nameOf(const testing::TestParamInfo<Case> &info)
{
    return info.param.name;
}

// ---- Commands that lack what they work on

struct Lack
{
    const char *name;
    Command command;
    bool hasSequence;
    bool hasAlignment;
    // An alignment without rows.
    bool showsEmptyAlignment = false;
};

void PrintTo(const Lack &lack, std::ostream *stream)
{
    *stream << lack.name;
}

class NoDialogIsOpened : public Acquire, public testing::WithParamInterface<Lack>
{
protected:
    ZEP::KALMO2 &window()
    {
        const Lack &lack = GetParam();
        if (lack.hasSequence)
            peptide("a", "ACD");
        if (lack.hasAlignment)
            alignment({"AC"}, "not shown");
        if (!lack.showsEmptyAlignment)
            return open();
        TAMBO::Alignment &shown = *TAMBO::DataMaker::makeAlignment("none", {});
        history.clear();
        return open(shown);
    }
};

TEST_P(NoDialogIsOpened, By)
{
    ZEP::KALMO2 &window = this->window();
    const Contents before = contents();
    const QString shown = shownName(window);
    const RecordingSubscriber listener;
    const DialogDriver dialogs;
    const MessageRecorder messages;
    (window.*GetParam().command)();
    EXPECT_EQ(dialogs.titles(), QStringList());
    EXPECT_EQ(messages.messages(), QStringList());
    EXPECT_EQ(shownName(window), shown);
    EXPECT_EQ(contents(), before);
    EXPECT_TRUE(listener.calls.empty());
    EXPECT_FALSE(history.canUndo());
}

const Lack kLacks[] = {
    {"MakingWithoutSequences", &KALMO2::GetSequences, false, false},
    {"AddingWithoutAShownAlignment", &KALMO2::AddSequences, true, false},
    {"AddingWithoutSequences", &KALMO2::AddSequences, false, false, true},
    {"CombiningWithoutAShownAlignment", &KALMO2::CombineAlignment, false, true},
    {"DuplicatingWithoutAShownAlignment", &KALMO2::Duplicate, false, true},
    {"DeletingWithoutAlignments", &KALMO2::DeleteAlignment, true, false},
};

INSTANTIATE_TEST_SUITE_P(Acquire, NoDialogIsOpened, testing::ValuesIn(kLacks), nameOf<Lack>);

// ---- Questions and their answers

// What is chosen in the question that a command asks; the deletion asks by a list of its own.
enum class Choice { NotAsked, Nothing, Cancel, TwoSequences, Other, TickCancel, TickTwo };

// Two sequences, a shown alignment and another one.
class AcquireAnswered : public Acquire
{
protected:
    void choose(Choice choice)
    {
        switch (choice) {
        case Choice::NotAsked:
            break;
        case Choice::Nothing:
            Answers::push({});
            break;
        case Choice::Cancel:
            Answers::pushCancel();
            break;
        case Choice::TwoSequences:
            Answers::push({&longer, &shorter});
            break;
        case Choice::Other:
            Answers::push({&other});
            break;
        case Choice::TickTwo:
            dialogs.expect(tick({0, 1}));
            break;
        case Choice::TickCancel:
            dialogs.expect([](QDialog &dialog) {
                dialog.findChild<QListWidget *>()->item(0)->setSelected(true);
                dialog.reject();
            });
            break;
        }
    }
    // What was to be answered has been asked.
    void expectAsked(Choice choice) const
    {
        const bool byList = choice >= Choice::TickCancel;
        EXPECT_EQ(dialogs.titles(), byList ? QStringList{"Select Alignment"} : QStringList());
        EXPECT_TRUE(Answers::isEmpty());
    }

    TAMBO::Peptide &longer = peptide("longer", "MKLVI");
    TAMBO::Peptide &shorter = peptide("shorter", "MK");
    TAMBO::Alignment &shown = alignment({"AC-D"}, "shown");
    TAMBO::Alignment &other = alignment({"A-E"}, "other");
    DialogDriver dialogs;
};

enum class Locked { Nobody, Shown, All };

struct Refusal
{
    const char *name;
    Command command;
    Choice choice;
    Locked locked = Locked::Nobody;
    QStringList messages = {};
};

void PrintTo(const Refusal &refusal, std::ostream *stream)
{
    *stream << refusal.name;
}

class NothingIsChanged : public AcquireAnswered, public testing::WithParamInterface<Refusal>
{
protected:
    void lock(Locked locked)
    {
        if (locked == Locked::All)
            lockAll();
        if (locked == Locked::Shown)
            TAMBO::setObjectLocked(shown, true);
    }
};

TEST_P(NothingIsChanged, By)
{
    const Refusal &refusal = GetParam();
    ZEP::KALMO2 &window = open(shown);
    const Contents before = contents();
    lock(refusal.locked);
    choose(refusal.choice);
    const RecordingSubscriber listener;
    const MessageRecorder messages;
    (window.*refusal.command)();
    expectAsked(refusal.choice);
    EXPECT_EQ(contents(), before);
    EXPECT_EQ(shownName(window), "shown");
    EXPECT_TRUE(listener.calls.empty());
    EXPECT_EQ(messages.messages(), refusal.messages);
    EXPECT_FALSE(history.canUndo());
}

const Refusal kRefusals[] = {
    {"MakingOfNothing", &KALMO2::GetSequences, Choice::Nothing},
    {"MakingThatIsCancelled", &KALMO2::GetSequences, Choice::Cancel},
    {"MakingThatIsRefused", &KALMO2::GetSequences, Choice::TwoSequences, Locked::All},
    {"AddingOfNothing", &KALMO2::AddSequences, Choice::Nothing},
    {"AddingThatIsCancelled", &KALMO2::AddSequences, Choice::Cancel},
    {"AddingThatIsRefused", &KALMO2::AddSequences, Choice::TwoSequences, Locked::Shown},
    {"GettingThatIsCancelled", &KALMO2::GetAlignment, Choice::Cancel},
    {"CombiningThatIsCancelled", &KALMO2::CombineAlignment, Choice::Cancel},
    {"CombiningThatIsRefused", &KALMO2::CombineAlignment, Choice::Other, Locked::Shown},
    {"DuplicatingThatIsRefused", &KALMO2::Duplicate, Choice::NotAsked, Locked::All},
    {"DeletingThatIsCancelled", &KALMO2::DeleteAlignment, Choice::TickCancel},
    {"DeletingThatIsRefusedButForALineOfDebugOutput",
     &KALMO2::DeleteAlignment,
     Choice::TickTwo,
     Locked::All,
     {"Failed to delete."}},
};

INSTANTIATE_TEST_SUITE_P(Acquire, NothingIsChanged, testing::ValuesIn(kRefusals), nameOf<Refusal>);

struct Step
{
    const char *name;
    Command command;
    Choice choice;
    // What the window showed is gone when the step is undone, or by the step.
    bool emptiesWindow;
};

void PrintTo(const Step &step, std::ostream *stream)
{
    *stream << step.name;
}

class OneStepBack : public AcquireAnswered, public testing::WithParamInterface<Step>
{
};

TEST_P(OneStepBack, Undoes)
{
    const Step &step = GetParam();
    ZEP::KALMO2 &window = open(shown);
    const Contents before = contents();
    choose(step.choice);
    const MessageRecorder quiet;
    (window.*step.command)();
    expectAsked(step.choice);
    const Contents after = contents();
    EXPECT_NE(after, before);
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(contents(), before);
    EXPECT_EQ(isEmpty(window), step.emptiesWindow);
    EXPECT_FALSE(history.canUndo());
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(contents(), after);
}

const Step kSteps[] = {
    {"Making", &KALMO2::GetSequences, Choice::TwoSequences, true},
    {"Adding", &KALMO2::AddSequences, Choice::TwoSequences, false},
    {"Combining", &KALMO2::CombineAlignment, Choice::Other, false},
    {"Duplicating", &KALMO2::Duplicate, Choice::NotAsked, false},
    {"Deleting", &KALMO2::DeleteAlignment, Choice::TickTwo, true},
};

INSTANTIATE_TEST_SUITE_P(Acquire, OneStepBack, testing::ValuesIn(kSteps), nameOf<Step>);

// ---- Make from sequences

TEST_F(Acquire, MakingOffersEverySequenceInTheOrderOfTheWorkbench)
{
    TAMBO::Peptide &z = peptide("z", "ACD");
    TAMBO::Peptide &a = peptide("a", "ACDEF");
    ZEP::KALMO2 &window = open();
    const KeptQuestion question;
    window.GetSequences();
    EXPECT_EQ(question->caption, "sequences");
    EXPECT_EQ(question->candidates, (std::vector<TAMBO::Compound *>{&z, &a}));
    EXPECT_TRUE(question->isSeveral);
    EXPECT_EQ(question->parent, &window);
    EXPECT_TRUE(alignments().empty());
}

TEST_F(Acquire, ChainsOfStructuresAreOfferedWhereTheyStandInTheTree)
{
    TAMBO::Structure &first = structure("first", {"B", "A"});
    TAMBO::Peptide &loose = peptide("loose", "ACD");
    TAMBO::Structure &second = structure("second", {"A"});
    ZEP::KALMO2 &window = open();
    const KeptQuestion question;
    window.GetSequences();
    EXPECT_EQ(question->candidates, (std::vector<TAMBO::Compound *>{first.Child(0), first.Child(1),
                                                                    &loose, second.Child(0)}));
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

TEST_F(Acquire, AnAlignmentThatWasNotMadeIsSaidAndTheWindowEmptied)
{
    TAMBO::Peptide &a = peptide("a", "ACD");
    ZEP::KALMO2 &window = open(alignment({"AC"}, "before"));
    HostSpy::makesNoAlignment = true;
    Answers::push({&a});
    const MessageRecorder messages;
    window.GetSequences();
    EXPECT_EQ(messages.messages(), QStringList{R"(ASSERT: "0 != newAli" in KalmoIO (245))"});
    EXPECT_TRUE(isEmpty(window));
}

TEST_F(Acquire, ACopyThatWasNotMadeIsSaidAndTheShownOneKept)
{
    ZEP::KALMO2 &window = open(alignment({"AC"}, "before"));
    HostSpy::makesNoAlignment = true;
    const MessageRecorder messages;
    window.Duplicate();
    EXPECT_EQ(messages.messages(), QStringList{R"(ASSERT: "0 != newAli" in KalmoIO (273))"});
    EXPECT_EQ(shownName(window), "before");
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

TEST_F(Acquire, AddingAppendsUngappedRows)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    TAMBO::Peptide &longer = peptide("longer", "MKLVI");
    ZEP::KALMO2 &window = open(shown);
    const RecordingSubscriber listener;
    const KeptQuestion question({&longer});
    const ExpectMessage rebuilt(QtDebugMsg, "Got Alignment 3 by 5");
    window.AddSequences();
    EXPECT_EQ(rowsOf(shown), (Texts{"AC-D-", "A-CD-", "MKLVI"}));
    EXPECT_EQ(question->caption, "sequences to add");
    EXPECT_EQ(question->candidates,
              (std::vector<TAMBO::Compound *>{shown.GetSeq(0), shown.GetSeq(1), &longer}))
        << "sequences of the alignment are offered too";
    EXPECT_EQ(question->parent, &window);
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

// ---- Get alignment

TEST_F(Acquire, GettingWithoutAlignmentsOffersSequencesInstead)
{
    TAMBO::Peptide &a = peptide("a", "ACD");
    ZEP::KALMO2 &window = open();
    const KeptQuestion question({&a});
    const MessageRecorder quiet;
    window.GetAlignment();
    EXPECT_EQ(question->caption, "sequences");
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
    const KeptQuestion question({&b});
    {
        const ExpectMessage shown(QtDebugMsg, "Got Alignment 1 by 2");
        window.GetAlignment();
    }
    EXPECT_EQ(shownName(window), "b") << "no guard is needed to look";
    EXPECT_EQ(question->caption, "alignment");
    EXPECT_EQ(question->candidates, (std::vector<TAMBO::Compound *>{&a, &b}))
        << "only alignments, the shown one among them";
    EXPECT_FALSE(question->isSeveral);
    EXPECT_EQ(question->parent, &window);
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

// ---- Combine

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
    const KeptQuestion question({&other});
    {
        const ExpectMessage rebuilt(QtDebugMsg, "Got Alignment 3 by 4");
        window.CombineAlignment();
    }
    EXPECT_EQ(rowsOf(shown), (Texts{"AC-D", "A-CD", "AE-E"}));
    EXPECT_EQ(rowsOf(other), (Texts{"ACD", "AEE"}));
    EXPECT_EQ(other.Name(), "other");
    EXPECT_EQ(shownName(window), "shown");
    EXPECT_EQ(question->caption, "Alignment to combine");
    EXPECT_EQ(question->candidates, (std::vector<TAMBO::Compound *>{&shown, &other}));
    EXPECT_FALSE(question->isSeveral);
    EXPECT_EQ(question->parent, &window);
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

TEST_F(Acquire, DuplicatingAnAlignmentWithoutColumnsGivesNoRows)
{
    ZEP::KALMO2 &window = open(alignmentWithoutColumns());
    window.Duplicate();
    ASSERT_EQ(alignments().size(), 2U);
    EXPECT_EQ(alignments()[1]->width(), 0U);
    EXPECT_EQ(alignments()[1]->GetSeq(0), nullptr);
}

// ---- Delete

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

} // namespace AcquireTest
