// SPDX-License-Identifier: GPL-3.0-or-later
// New residue numbers and secondary structure for the column range of the header.
#include "WindowFixture.h"

#include "ChangeScope.h"
#include "DataMaker.h"
#include "QCanvasText.h"

#include <QInputDialog>
#include <QLineEdit>

namespace RangeResiduesTest {

using TAMBO::SequenceNumber;
using Range = TAMBO::Alignment::Range;

class RangeResidues : public WindowFixture
{
protected:
    // The numbers of a row's cells, "-" for a gap.
    static Texts numbersOf(const TAMBO::Alignment &alignment, unsigned long row)
    {
        Texts texts;
        for (unsigned long col = 0; col < alignment.width(); ++col) {
            const auto *residue = dynamic_cast<TAMBO::Group *>(alignment.getItem(row, col));
            texts.push_back(residue == nullptr ? "-" : residue->GetSeqId().getValue());
        }
        return texts;
    }
    void setNumbers(TAMBO::Alignment &alignment, unsigned long row, const Texts &numbers)
    {
        for (unsigned long col = 0; col < numbers.size(); ++col)
            if (auto *residue = dynamic_cast<TAMBO::Group *>(alignment.getItem(row, col)))
                residue->SetSeqId(SequenceNumber(numbers[col]));
        history.clear();
    }
    static TAMBO::Compound *elementAt(const TAMBO::Alignment &alignment, unsigned long col)
    {
        const auto *residue = dynamic_cast<TAMBO::Residue *>(alignment.getItem(0, col));
        return residue == nullptr ? nullptr : residue->GetSSE();
    }
    // A panel range that the alignment need not have itself.
    static void mark(ZEP::KALMO2 &window, unsigned long begin, unsigned long end)
    {
        WindowParts(window).header->SetRange(begin, end);
    }
    static DialogDriver::Handler answer(const QString &text)
    {
        return [text](QDialog &dialog) {
            dynamic_cast<QInputDialog &>(dialog).setTextValue(text);
            dialog.accept();
        };
    }
    static DialogDriver::Handler keep()
    {
        return [](QDialog &dialog) { dialog.accept(); };
    }
    static DialogDriver::Handler cancel()
    {
        return [](QDialog &dialog) { dialog.reject(); };
    }
    static void makeElement(TAMBO::Alignment &alignment, unsigned long begin, unsigned long end,
                            char type)
    {
        std::vector<TAMBO::Compound *> residues;
        for (unsigned long col = begin; col < end; ++col)
            residues.push_back(alignment.getItem(0, col));
        ASSERT_NE(TAMBO::DataMaker::makeSSE(alignment.GetSeq(0), "made", residues, type), nullptr);
    }
    static QStringList headerTexts(const ZEP::KALMO2 &window)
    {
        QStringList texts;
        for (const QCanvasItem *item : WindowParts(window).headerCanvas->allItems())
            if (const auto *text = dynamic_cast<const QCanvasText *>(item))
                texts.append(text->text());
        return texts;
    }
};

using Renumbering = RangeResidues;
using MakingElements = RangeResidues;

// ---- Renumbering

// A file or a model may come while the command asks.
TEST_F(Renumbering, UndoKeepsWhatArrivedWhileItAsked)
{
    TAMBO::Alignment &shown = alignment({"ACDE", "ACDE"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 4);
    history.clear();
    const RecordingSubscriber listener;
    const auto bringFile = [&](QDialog &dialog) {
        {
            const TAMBO::ArrivalScope arrival;
            const DataPointBase guard(nullptr, Publisher::Add);
            TAMBO::ObjectSpace::get().add(std::make_unique<TAMBO::Peptide>("file", "GG"));
        }
        EXPECT_EQ(listener.calls, std::vector<std::string>{"add"});
        EXPECT_EQ(numbersOf(shown, 0), (Texts{"100", "101", "102", "103"}));
        dynamic_cast<QInputDialog &>(dialog).setTextValue("200");
        dialog.accept();
    };
    const std::size_t before = TAMBO::ObjectSpace::get().objectCount();
    {
        DialogDriver dialogs;
        dialogs.expect(answer("100"));
        dialogs.expect(bringFile);
        window.RangeReNumber();
    }
    const std::size_t after = TAMBO::ObjectSpace::get().objectCount();
    EXPECT_GT(after, before);
    EXPECT_EQ(numbersOf(shown, 1), (Texts{"200", "201", "202", "203"}));
    EXPECT_EQ(history.size(), 2U);
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(numbersOf(shown, 0), (Texts{"1", "2", "3", "4"}));
    EXPECT_EQ(numbersOf(shown, 1), (Texts{"1", "2", "3", "4"}));
    EXPECT_EQ(TAMBO::ObjectSpace::get().objectCount(), after);
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(TAMBO::ObjectSpace::get().objectCount(), before);
    ASSERT_TRUE(history.goTo(2));
    EXPECT_EQ(numbersOf(shown, 1), (Texts{"200", "201", "202", "203"}));
}

TEST_F(Renumbering, AnEmptyWindowAsksNothing)
{
    const RecordingSubscriber listener;
    const DialogDriver dialogs;
    ZEP::KALMO2 &window = open();
    window.RangeReNumber();
    window.RangeAddSSE();
    EXPECT_EQ(dialogs.titles(), QStringList());
    EXPECT_TRUE(listener.calls.empty());
}

TEST_F(Renumbering, AnEmptyRangeAsksNothing)
{
    ZEP::KALMO2 &window = open(alignment({"ACDE", "ACDE"}));
    const RecordingSubscriber listener;
    const DialogDriver dialogs;
    for (const Range &range : {Range(2, 2), Range(5, 9), Range(4, 4)}) {
        mark(window, range.first, range.second);
        window.RangeReNumber();
        window.RangeAddSSE();
    }
    EXPECT_EQ(dialogs.titles(), QStringList());
    EXPECT_TRUE(listener.calls.empty());
}

TEST_F(Renumbering, ARefusedGuardAsksNothing)
{
    TAMBO::Alignment &shown = alignment({"ACDE", "ACDE"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 4);
    TAMBO::setObjectLocked(shown, true);
    const DialogDriver dialogs;
    const MessageRecorder messages;
    window.RangeReNumber();
    window.RangeAddSSE();
    EXPECT_EQ(dialogs.titles(), QStringList());
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(Renumbering, AsksOnceForEachRowThatHasResiduesInTheRange)
{
    TAMBO::Alignment &shown = alignment({"ACDE", "A--E", "-CD-"}, "ali", {"1abc_A", "gap", "%2"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 1, 3);
    DialogDriver dialogs;
    for (int i = 0; i < 2; ++i)
        dialogs.expect([](QDialog &dialog) {
            const auto &question = dynamic_cast<QInputDialog &>(dialog);
            EXPECT_EQ(question.labelText(), "Enter new initial number");
            EXPECT_EQ(question.textEchoMode(), QLineEdit::Normal);
            EXPECT_EQ(question.parentWidget(), nullptr);
            dialog.reject();
        });
    window.RangeReNumber();
    EXPECT_EQ(dialogs.titles(), (QStringList{"Renumber 1abc_A", "Renumber %2"}));
}

TEST_F(Renumbering, OffersTheNumberOfTheFirstResidueInTheRange)
{
    TAMBO::Alignment &shown = alignment({"A-CD"});
    setNumbers(shown, 0, {"7", "-", "37A", "38"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 1, 4);
    DialogDriver dialogs;
    dialogs.expect([](QDialog &dialog) {
        EXPECT_EQ(dynamic_cast<QInputDialog &>(dialog).textValue(), "37A");
        dialog.reject();
    });
    window.RangeReNumber();
}

TEST_F(Renumbering, WorksOnTheRangeOfTheHeaderNotOnThatOfTheAlignment)
{
    TAMBO::Alignment &shown = alignment({"ACDE"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 1, 2);
    shown.range({0, 4});
    DialogDriver dialogs;
    dialogs.expect(answer("50"));
    window.RangeReNumber();
    EXPECT_EQ(numbersOf(shown, 0), (Texts{"1", "50", "3", "4"}));
}

TEST_F(Renumbering, ARangeBeyondTheLastColumnIsCutDown)
{
    TAMBO::Alignment &shown = alignment({"ACDE"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 1, 99);
    DialogDriver dialogs;
    dialogs.expect(answer("50"));
    window.RangeReNumber();
    EXPECT_EQ(numbersOf(shown, 0), (Texts{"1", "50", "51", "52"}));
}

TEST_F(Renumbering, CancellingTheSecondQuestionStillAsksTheThird)
{
    TAMBO::Alignment &shown = alignment({"ACD", "ACD", "ACD"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 3);
    DialogDriver dialogs;
    dialogs.expect(answer("10"));
    dialogs.expect(cancel());
    dialogs.expect(answer("30"));
    window.RangeReNumber();
    EXPECT_EQ(dialogs.titles().size(), 3);
    EXPECT_EQ(numbersOf(shown, 0), (Texts{"10", "11", "12"}));
    EXPECT_EQ(numbersOf(shown, 1), (Texts{"1", "2", "3"}));
    EXPECT_EQ(numbersOf(shown, 2), (Texts{"30", "31", "32"}));
}

TEST_F(Renumbering, AnEmptyAnswerLeavesTheRowAndAsksTheNext)
{
    TAMBO::Alignment &shown = alignment({"ACD", "ACD"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 3);
    const LogLines log;
    DialogDriver dialogs;
    dialogs.expect(answer(""));
    dialogs.expect(answer("5"));
    window.RangeReNumber();
    EXPECT_EQ(numbersOf(shown, 0), (Texts{"1", "2", "3"}));
    EXPECT_EQ(numbersOf(shown, 1), (Texts{"5", "6", "7"}));
    EXPECT_EQ(log.texts(), QStringList());
}

TEST_F(Renumbering, TheNumberThatTheRowStartsWithChangesNothing)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    setNumbers(shown, 0, {"10", "20", "30"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 3);
    DialogDriver dialogs;
    dialogs.expect(keep());
    window.RangeReNumber();
    EXPECT_EQ(numbersOf(shown, 0), (Texts{"10", "20", "30"}));
    EXPECT_FALSE(history.canUndo());
}

TEST_F(Renumbering, GapsTakeNoNumber)
{
    TAMBO::Alignment &shown = alignment({"A-CD"});
    setNumbers(shown, 0, {"10", "-", "11", "12"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 4);
    DialogDriver dialogs;
    dialogs.expect(answer("100"));
    window.RangeReNumber();
    EXPECT_EQ(numbersOf(shown, 0), (Texts{"100", "-", "101", "102"}));
}

TEST_F(Renumbering, ResiduesOutsideTheRangeKeepTheirNumbersThoughTheyCollide)
{
    TAMBO::Alignment &shown = alignment({"ACDE"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 2, 4);
    DialogDriver dialogs;
    dialogs.expect(answer("1"));
    window.RangeReNumber();
    EXPECT_EQ(numbersOf(shown, 0), (Texts{"1", "2", "1", "2"}));
}

TEST_F(Renumbering, AnInsertionLetterIsForTheFirstResidueOnly)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 3);
    DialogDriver dialogs;
    dialogs.expect(answer("100A"));
    window.RangeReNumber();
    EXPECT_EQ(numbersOf(shown, 0), (Texts{"100A", "101", "102"}));
}

TEST_F(Renumbering, AnAnswerThatIsNoNumberLeavesTheRowWithOneLineInTheLog)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 3);
    const LogLines log;
    DialogDriver dialogs;
    dialogs.expect(answer("abc"));
    window.RangeReNumber();
    EXPECT_EQ(numbersOf(shown, 0), (Texts{"1", "2", "3"}));
    EXPECT_EQ(log.count(), 1) << log.texts().join('\n').toStdString();
    EXPECT_FALSE(history.canUndo());
}

TEST_F(Renumbering, TheGuardIsHeldWhileTheQuestionsAreAskedAndLetGoBeforeTheRepaint)
{
    TAMBO::Alignment &shown = alignment({"ACD", "ACD"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 3);
    TAMBO::Alignment &other = alignment({"ACD"}, "other");
    const RecordingSubscriber listener;
    DialogDriver dialogs;
    dialogs.expect([&](QDialog &dialog) {
        {
            const DataPoint<TAMBO::Alignment> inner(nullptr, &other);
            inner->insertGap(0, 1);
        }
        EXPECT_FALSE(history.canUndo()) << "it is part of the step that is not made yet";
        dynamic_cast<QInputDialog &>(dialog).setTextValue("10");
        dialog.accept();
    });
    dialogs.expect([&](QDialog &dialog) {
        EXPECT_TRUE(listener.calls.empty());
        EXPECT_FALSE(history.canUndo()) << "one step, made when the guard is let go";
        dynamic_cast<QInputDialog &>(dialog).setTextValue("20");
        dialog.accept();
    });
    window.RangeReNumber();
    EXPECT_EQ(listener.calls, std::vector<std::string>{"update"});
}

TEST_F(Renumbering, OthersHearOfItBeforeTheWindowShowsIt)
{
    class Listener : public Subscriber
    {
    public:
        explicit Listener(const ZEP::KALMO2 &window) : m_Window(window) { }
        void commUpdate() override { seen = headerTexts(m_Window); }
        void commAdd() override { }
        void commDelete() override { }

        QStringList seen;

    private:
        const ZEP::KALMO2 &m_Window;
    };
    TAMBO::Alignment &shown = alignment({"ACDEFGHIKLMNPQRSTVWY"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 20);
    const Listener listener(window);
    DialogDriver dialogs;
    dialogs.expect(answer("101"));
    window.RangeReNumber();
    EXPECT_TRUE(listener.seen.contains("10"));
    EXPECT_FALSE(listener.seen.contains("110"));
    EXPECT_TRUE(headerTexts(window).contains("110"));
}

TEST_F(Renumbering, IsOneStepBack)
{
    TAMBO::Alignment &shown = alignment({"ACD", "-CD"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 3);
    {
        DialogDriver dialogs;
        dialogs.expect(answer("10"));
        dialogs.expect(answer("20"));
        window.RangeReNumber();
    }
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(numbersOf(shown, 0), (Texts{"1", "2", "3"}));
    EXPECT_EQ(numbersOf(shown, 1), (Texts{"-", "1", "2"}));
    EXPECT_FALSE(history.canUndo());
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(numbersOf(shown, 1), (Texts{"-", "20", "21"}));
}

TEST_F(Renumbering, TheHeaderShowsTheNewNumbersAtOnce)
{
    TAMBO::Alignment &shown = alignment({"ACDEFGHIKLMNPQRSTVWY"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 20);
    ASSERT_TRUE(headerTexts(window).contains("10"));
    DialogDriver dialogs;
    dialogs.expect(answer("101"));
    window.RangeReNumber();
    EXPECT_TRUE(headerTexts(window).contains("110"));
    EXPECT_FALSE(headerTexts(window).contains("10"));
}

TEST_F(Renumbering, AlignmentDeletedWhileAskedEndsTheCommand)
{
    TAMBO::Alignment &shown = alignment({"ACD", "ACD"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 3);
    DialogDriver dialogs;
    dialogs.expect([&](QDialog &dialog) {
        window.Clear();
        dialog.accept();
    });
    window.RangeReNumber();
    EXPECT_EQ(dialogs.titles().size(), 1);
    EXPECT_EQ(numbersOf(shown, 0), (Texts{"1", "2", "3"}));
}

// ---- Secondary structure

TEST_F(MakingElements, AsksForTheTypeInTheWindow)
{
    ZEP::KALMO2 &window = open(alignment({"ACD"}));
    mark(window, 0, 3);
    DialogDriver dialogs;
    dialogs.expect([&](QDialog &dialog) {
        const auto &question = dynamic_cast<QInputDialog &>(dialog);
        EXPECT_EQ(question.labelText(), "Choose type of SSE (H,E,T)");
        EXPECT_EQ(question.textEchoMode(), QLineEdit::Normal);
        EXPECT_EQ(question.textValue(), "H");
        EXPECT_EQ(question.parentWidget(), &window);
        dialog.reject();
    });
    window.RangeAddSSE();
    EXPECT_EQ(dialogs.titles(), QStringList{"Make SSE"});
}

TEST_F(MakingElements, TakesTheResiduesOfTheFirstRowAndSkipsItsGaps)
{
    TAMBO::Alignment &shown = alignment({"A-CDE", "AAAAA"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 4);
    const RecordingSubscriber listener;
    {
        const ExpectMessage rebuilt(QtDebugMsg, "Got Alignment 2 by 5");
        DialogDriver dialogs;
        dialogs.expect(keep());
        window.RangeAddSSE();
    }
    const TAMBO::Compound *made = elementAt(shown, 0);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->Name(), "unkH");
    EXPECT_EQ(made->TypeCode(), 'H');
    EXPECT_EQ(made->Parent(), shown.GetSeq(0));
    EXPECT_EQ(elementAt(shown, 2), made);
    EXPECT_EQ(elementAt(shown, 3), made);
    EXPECT_EQ(elementAt(shown, 4), nullptr);
    EXPECT_EQ(shown.GetSeq(1)->ChildCount(), shown.GetSequence(1, true).size())
        << "only the first row is looked at";
    // New in the tree, and to be seen in the headers of other windows.
    EXPECT_EQ(listener.calls, (Texts{"add", "update"}));
}

TEST_F(MakingElements, LowerCaseTypeBetweenBlanksIsTakenAsItStands)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 3);
    const MessageRecorder quiet;
    DialogDriver dialogs;
    dialogs.expect(answer(" e "));
    window.RangeAddSSE();
    ASSERT_NE(elementAt(shown, 0), nullptr);
    EXPECT_EQ(elementAt(shown, 0)->TypeCode(), 'e');
    EXPECT_EQ(elementAt(shown, 0)->Name(), "unke");
    EXPECT_EQ(headerTexts(window).count("e"), 3);
}

TEST_F(MakingElements, OnlyTheFirstCharacterOfTheAnswerCounts)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 3);
    const MessageRecorder quiet;
    DialogDriver dialogs;
    dialogs.expect(answer("Turn"));
    window.RangeAddSSE();
    ASSERT_NE(elementAt(shown, 0), nullptr);
    EXPECT_EQ(elementAt(shown, 0)->TypeCode(), 'T');
    EXPECT_EQ(elementAt(shown, 0)->Name(), "unkT");
}

TEST_F(MakingElements, AnotherTypeIsRefusedByTheWorkbenchAndTheDisplayRebuilt)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 3);
    const LogLines log;
    {
        const ExpectMessage rebuilt(QtDebugMsg, "Got Alignment 1 by 3");
        DialogDriver dialogs;
        dialogs.expect(answer("x"));
        window.RangeAddSSE();
    }
    EXPECT_EQ(elementAt(shown, 0), nullptr);
    EXPECT_EQ(log.count(), 1) << log.texts().join('\n').toStdString();
    EXPECT_FALSE(history.canUndo());
}

TEST_F(MakingElements, TwoResiduesAreTooFew)
{
    TAMBO::Alignment &shown = alignment({"A--C", "ACDE"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 4);
    const DialogDriver dialogs;
    const MessageRecorder messages;
    window.RangeAddSSE();
    EXPECT_EQ(dialogs.titles(), QStringList());
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(MakingElements, ARangeThatTouchesAnElementMakesNone)
{
    TAMBO::Alignment &shown = alignment({"ACDEFGHI"});
    makeElement(shown, 3, 6, 'H');
    history.clear();
    ZEP::KALMO2 &window = open(shown);
    const DialogDriver dialogs;
    const MessageRecorder messages;
    for (const Range &range : {Range(0, 4), Range(0, 8), Range(5, 8), Range(3, 6)}) {
        mark(window, range.first, range.second);
        window.RangeAddSSE();
    }
    EXPECT_EQ(dialogs.titles(), QStringList());
    EXPECT_EQ(messages.messages(), QStringList());
    EXPECT_FALSE(history.canUndo());
}

TEST_F(MakingElements, ACancelledOrEmptyAnswerMakesNone)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 3);
    const MessageRecorder messages;
    DialogDriver dialogs;
    dialogs.expect(cancel());
    dialogs.expect(answer(""));
    dialogs.expect(answer("   "));
    for (int i = 0; i < 3; ++i)
        window.RangeAddSSE();
    EXPECT_EQ(elementAt(shown, 0), nullptr);
    EXPECT_EQ(messages.messages(), QStringList()) << "not rebuilt";
}

TEST_F(MakingElements, IsOneStepBack)
{
    TAMBO::Alignment &shown = alignment({"ACDE"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 4);
    const MessageRecorder quiet;
    {
        DialogDriver dialogs;
        dialogs.expect(keep());
        window.RangeAddSSE();
    }
    ASSERT_NE(elementAt(shown, 0), nullptr);
    EXPECT_EQ(headerTexts(window).count("h"), 4);
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(elementAt(shown, 0), nullptr);
    EXPECT_EQ(headerTexts(window).count("h"), 0);
    EXPECT_FALSE(history.canUndo());
    EXPECT_TRUE(history.redo());
    ASSERT_NE(elementAt(shown, 3), nullptr);
}

} // namespace RangeResiduesTest
