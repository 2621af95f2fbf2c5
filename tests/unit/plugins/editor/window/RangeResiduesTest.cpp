// SPDX-License-Identifier: GPL-3.0-or-later
// New residue numbers and secondary structure for the column range of the header.
#include "WindowFixture.h"

#include "ChangeScope.h"
#include "DataMaker.h"
#include "QCanvasText.h"

#include <QInputDialog>
#include <QLineEdit>

#include <set>

namespace RangeResiduesTest {

using TAMBO::SequenceNumber;

// What is done with a question that is not answered by a text.
constexpr const char *kKeep = "<keep>";
constexpr const char *kCancel = "<cancel>";
// No element is made.
constexpr char kNothing = '\0';

class RangeResidues : public WindowFixture
{
protected:
    using Numbers = std::vector<Texts>;

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
            if (text == kCancel) {
                dialog.reject();
                return;
            }
            if (text != kKeep)
                dynamic_cast<QInputDialog &>(dialog).setTextValue(text);
            dialog.accept();
        };
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

template <typename Case> std::string nameOf(const testing::TestParamInfo<Case> &info)
{
    return info.param.name;
}

// ---- Where neither command asks

// What an alignment is, and where the header's range lies.
struct Silence
{
    const char *name;
    std::vector<std::string> rows;
    unsigned long begin;
    unsigned long end;
    bool isLocked = false;
};

void PrintTo(const Silence &silence, std::ostream *stream)
{
    *stream << silence.name;
}

class RangeCommandsAskNothing : public RangeResidues, public testing::WithParamInterface<Silence>
{
};

TEST_P(RangeCommandsAskNothing, And)
{
    const Silence &silence = GetParam();
    ZEP::KALMO2 &window = silence.rows.empty() ? open() : open(alignment(silence.rows));
    mark(window, silence.begin, silence.end);
    for (TAMBO::Alignment *shown : alignments())
        TAMBO::setObjectLocked(*shown, silence.isLocked);
    const RecordingSubscriber listener;
    const DialogDriver dialogs;
    const MessageRecorder messages;
    window.RangeReNumber();
    window.RangeAddSSE();
    EXPECT_EQ(dialogs.titles(), QStringList());
    EXPECT_EQ(messages.messages(), QStringList());
    EXPECT_TRUE(listener.calls.empty());
    EXPECT_FALSE(history.canUndo());
}

const Silence kSilences[] = {
    {"AnEmptyWindowStaysEmpty", {}, 0, 0},
    {"AnEmptyRangeIsLeftAlone", {"ACDE", "ACDE"}, 2, 2},
    {"AnEmptyRangeAtTheEndIsLeftAlone", {"ACDE", "ACDE"}, 4, 4},
    {"ARangeBehindTheLastColumnIsLeftAlone", {"ACDE", "ACDE"}, 5, 9},
    {"ARefusedGuardChangesNothing", {"ACDE", "ACDE"}, 0, 4, true},
};

INSTANTIATE_TEST_SUITE_P(RangeResidues, RangeCommandsAskNothing, testing::ValuesIn(kSilences),
                         nameOf<Silence>);

// ---- Renumbering

// Rows with the numbers that they begin with (counted from 1 unless given), the range, what is
// answered row by row, and the numbers afterwards.
struct Answered
{
    const char *name;
    std::vector<std::string> rows;
    std::vector<std::vector<std::string>> before;
    std::pair<unsigned long, unsigned long> range;
    std::vector<const char *> answers;
    std::vector<std::vector<std::string>> after;
    int logLines = 0;
};

void PrintTo(const Answered &answered, std::ostream *stream)
{
    *stream << answered.name;
}

class RenumberedRows : public Renumbering, public testing::WithParamInterface<Answered>
{
protected:
    static Numbers numbersOfRows(const TAMBO::Alignment &alignment)
    {
        Numbers numbers;
        for (unsigned long row = 0; row < alignment.height(); ++row)
            numbers.push_back(numbersOf(alignment, row));
        return numbers;
    }
    void expectOneStepBack(const TAMBO::Alignment &alignment, const Numbers &before)
    {
        const Numbers after = numbersOfRows(alignment);
        EXPECT_EQ(history.canUndo(), after != before);
        if (!history.undo())
            return;
        EXPECT_EQ(numbersOfRows(alignment), before);
        EXPECT_FALSE(history.canUndo());
        EXPECT_TRUE(history.redo());
        EXPECT_EQ(numbersOfRows(alignment), after);
    }
};

TEST_P(RenumberedRows, And)
{
    const Answered &answered = GetParam();
    TAMBO::Alignment &shown = alignment(answered.rows);
    for (unsigned long row = 0; row < answered.before.size(); ++row)
        setNumbers(shown, row, answered.before[row]);
    const Numbers before = numbersOfRows(shown);
    ZEP::KALMO2 &window = open(shown);
    mark(window, answered.range.first, answered.range.second);
    const LogLines log;
    {
        DialogDriver dialogs;
        for (const char *text : answered.answers)
            dialogs.expect(answer(text));
        window.RangeReNumber();
        EXPECT_EQ(dialogs.titles().size(), qsizetype(answered.answers.size()));
    }
    EXPECT_EQ(numbersOfRows(shown), answered.after);
    EXPECT_EQ(log.count(), answered.logLines) << log.texts().join('\n').toStdString();
    expectOneStepBack(shown, before);
}

const Answered kAnswered[] = {
    {"CountOnFromTheAnswer",
     {"ACD", "-CD"},
     {},
     {0, 3},
     {"10", "20"},
     {{"10", "11", "12"}, {"-", "20", "21"}}},
    {"EndAtTheLastColumnWhenTheRangeGoesBeyond",
     {"ACDE"},
     {},
     {1, 99},
     {"50"},
     {{"1", "50", "51", "52"}}},
    {"AskTheThirdThoughTheSecondIsCancelled",
     {"ACD", "ACD", "ACD"},
     {},
     {0, 3},
     {"10", kCancel, "30"},
     {{"10", "11", "12"}, {"1", "2", "3"}, {"30", "31", "32"}}},
    {"LeaveTheRowOfAnEmptyAnswerAndAskTheNext",
     {"ACD", "ACD"},
     {},
     {0, 3},
     {"", "5"},
     {{"1", "2", "3"}, {"5", "6", "7"}}},
    {"ChangeNothingWhenTheNumberIsThatOfTheirStart",
     {"ACD"},
     {{"10", "20", "30"}},
     {0, 3},
     {kKeep},
     {{"10", "20", "30"}}},
    {"GiveGapsNoNumber",
     {"A-CD"},
     {{"10", "-", "11", "12"}},
     {0, 4},
     {"100"},
     {{"100", "-", "101", "102"}}},
    {"LeaveNumbersOutsideOfTheRangeThoughTheyCollide",
     {"ACDE"},
     {},
     {2, 4},
     {"1"},
     {{"1", "2", "1", "2"}}},
    {"GiveAnInsertionLetterToTheFirstResidueOnly",
     {"ACD"},
     {},
     {0, 3},
     {"100A"},
     {{"100A", "101", "102"}}},
    {"LogOneLineWhenTheAnswerIsNoNumber", {"ACD"}, {}, {0, 3}, {"abc"}, {{"1", "2", "3"}}, 1},
};

INSTANTIATE_TEST_SUITE_P(RangeResidues, RenumberedRows, testing::ValuesIn(kAnswered),
                         nameOf<Answered>);

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

// Rows, maybe with a helix in the first, the range, the answer and what comes of it. Without an
// answer nobody is to ask.
struct Wanted
{
    const char *name;
    std::vector<std::string> rows;
    std::pair<unsigned long, unsigned long> helix;
    std::pair<unsigned long, unsigned long> range;
    const char *answer;
    char made;
    int logLines = 0;
};

void PrintTo(const Wanted &wanted, std::ostream *stream)
{
    *stream << wanted.name;
}

class MakingAnElement : public MakingElements, public testing::WithParamInterface<Wanted>
{
protected:
    static QStringList titles() { return GetParam().answer == nullptr ? QStringList() : asked(); }
    static QStringList asked() { return {"Make SSE"}; }
    static std::set<TAMBO::Compound *> elementsOf(const TAMBO::Alignment &alignment)
    {
        std::set<TAMBO::Compound *> elements;
        for (unsigned long col = 0; col < alignment.width(); ++col)
            elements.insert(elementAt(alignment, col));
        elements.erase(nullptr);
        return elements;
    }
    // The display is rebuilt for whatever the workbench was asked for.
    static QStringList messages(const TAMBO::Alignment &alignment)
    {
        const Wanted &wanted = GetParam();
        if (wanted.made == kNothing && wanted.logLines == 0)
            return {};
        return {QString("Got Alignment %1 by %2").arg(alignment.height()).arg(alignment.width())};
    }
    static void expectElement(const TAMBO::Compound *element, char type)
    {
        ASSERT_NE(element, nullptr);
        EXPECT_EQ(element->TypeCode(), type);
        EXPECT_EQ(element->Name(), std::string("unk") + type);
    }
};

TEST_P(MakingAnElement, And)
{
    const Wanted &wanted = GetParam();
    TAMBO::Alignment &shown = alignment(wanted.rows);
    if (wanted.helix.first < wanted.helix.second)
        makeElement(shown, wanted.helix.first, wanted.helix.second, 'H');
    history.clear();
    const std::set<TAMBO::Compound *> before = elementsOf(shown);
    ZEP::KALMO2 &window = open(shown);
    mark(window, wanted.range.first, wanted.range.second);
    const LogLines log;
    const MessageRecorder recorder;
    DialogDriver dialogs;
    if (wanted.answer != nullptr)
        dialogs.expect(answer(wanted.answer));
    window.RangeAddSSE();
    EXPECT_EQ(dialogs.titles(), titles());
    EXPECT_EQ(recorder.messages(), messages(shown));
    EXPECT_EQ(log.count(), wanted.logLines) << log.texts().join('\n').toStdString();
    EXPECT_EQ(history.canUndo(), wanted.made != kNothing);
    if (wanted.made == kNothing) {
        EXPECT_EQ(elementsOf(shown), before);
        return;
    }
    expectElement(elementAt(shown, wanted.range.first), wanted.made);
    EXPECT_EQ(headerTexts(window).count(QString(QLatin1Char(wanted.made)).toLower()), 3);
}

const Wanted kWanted[] = {
    {"TakesALowerCaseTypeBetweenBlanksAsItStands", {"ACD"}, {}, {0, 3}, " e ", 'e'},
    {"TakesTheFirstCharacterOfTheAnswerOnly", {"ACD"}, {}, {0, 3}, "Turn", 'T'},
    {"LeavesAnotherTypeToTheWorkbenchToRefuse", {"ACD"}, {}, {0, 3}, "x", kNothing, 1},
    {"IsNotDoneWhenCancelled", {"ACD"}, {}, {0, 3}, kCancel, kNothing},
    {"IsNotDoneForAnEmptyAnswer", {"ACD"}, {}, {0, 3}, "", kNothing},
    {"IsNotDoneForBlanks", {"ACD"}, {}, {0, 3}, "   ", kNothing},
    {"IsNotOfferedForTwoResidues", {"A--C", "ACDE"}, {}, {0, 4}, nullptr, kNothing},
    {"IsNotOfferedWhereTheRangeEndsInAnElement", {"ACDEFGHI"}, {3, 6}, {0, 4}, nullptr, kNothing},
    {"IsNotOfferedAroundAnElement", {"ACDEFGHI"}, {3, 6}, {0, 8}, nullptr, kNothing},
    {"IsNotOfferedWhereTheRangeBeginsInAnElement", {"ACDEFGHI"}, {3, 6}, {5, 8}, nullptr, kNothing},
    {"IsNotOfferedForAnElementItself", {"ACDEFGHI"}, {3, 6}, {3, 6}, nullptr, kNothing},
};

INSTANTIATE_TEST_SUITE_P(RangeResidues, MakingAnElement, testing::ValuesIn(kWanted),
                         nameOf<Wanted>);

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
        dialogs.expect(answer(kKeep));
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

TEST_F(MakingElements, IsOneStepBack)
{
    TAMBO::Alignment &shown = alignment({"ACDE"});
    ZEP::KALMO2 &window = open(shown);
    mark(window, 0, 4);
    const MessageRecorder quiet;
    {
        DialogDriver dialogs;
        dialogs.expect(answer(kKeep));
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
