// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that select residues by a pattern or by what a column has in common.
#include "ColoringFixture.h"

#include "SubSequenceSearch.h"

#include <QProgressDialog>
#include <QTimer>

namespace SelectingTest {

class Selecting : public ColoringFixture
{
protected:
    void searchSimply() { setSettings(QByteArray(kFont) + "SimpleRegExp = true\n"); }
    // What a search in these rows selects.
    Texts found(const Texts &rows, const QString &pattern)
    {
        TAMBO::Alignment &shown = alignment(rows);
        run(open(shown), "selectSubSequence", {enter(pattern)});
        return selected(shown);
    }
    Texts conserved(const Texts &rows, int number)
    {
        TAMBO::Alignment &shown = alignment(rows);
        run(open(shown), "selectConservedN", {enter(number)});
        return selected(shown);
    }
    struct Command
    {
        const char *slot;
        DialogDriver::Handler answer;
    };
    // Acts while the dialog of the search is shown.
    static void whenSearching(const std::function<void(QProgressDialog &)> &act)
    {
        QTimer::singleShot(1, qApp, [act] {
            auto *dialog = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
            if (dialog != nullptr && dialog->isVisible())
                act(*dialog);
            else
                whenSearching(act);
        });
    }
    static std::vector<Command> commands()
    {
        return {{"selectSubSequence", enter(QStringLiteral("A"))}, {"selectConservedN", enter(1)}};
    }
};

// ---- Both

TEST_F(Selecting, WithoutAnAlignmentNothingIsAskedOrRepainted)
{
    ZEP::KALMO2 &window = show(alignment({"A", "A"}), {400, 300});
    window.Populate(nullptr);
    Repaints repaints(window);
    const MessageRecorder messages;
    for (const char *slot :
         {"selectSubSequence", "selectConservedN", "RangeSelect", "RangeFull", "RangeRemove"})
        run(window, slot, {});
    EXPECT_EQ(repaints.take(), kNothing);
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(Selecting, TheMenuRunsTheCommands)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    ZEP::KALMO2 &window = open(shown);
    DialogDriver dialogs;
    dialogs.expect(enter(2));
    trigger(window, "Select", "ConservedN");
    EXPECT_EQ(selected(shown), (Texts{"#.-#", "#-.#"}));
    dialogs.expect(enter(QStringLiteral("C")));
    trigger(window, "Select", "SubSequence");
    EXPECT_EQ(selected(shown), (Texts{"##-#", "#-##"}));
    EXPECT_EQ(dialogs.titles(), (QStringList{"Number of conserved", "Select"}));
}

TEST_F(Selecting, OnlyAddsToTheSelection)
{
    TAMBO::Alignment &shown = alignment({"ACD", "CCD"});
    shown.getItem(0, 0)->SetSelected(true);
    ZEP::KALMO2 &window = open(shown);
    run(window, "selectSubSequence", {enter(QStringLiteral("D"))});
    EXPECT_EQ(selected(shown), (Texts{"#.#", "..#"}));
    run(window, "selectSubSequence", {enter(QStringLiteral("W"))});
    EXPECT_EQ(selected(shown), (Texts{"#.#", "..#"}));
    run(window, "selectConservedN", {enter(2)});
    EXPECT_EQ(selected(shown), (Texts{"###", ".##"}));
}

TEST_F(Selecting, EverythingIsRepaintedFirstAndPublishedThen)
{
    TAMBO::Alignment &shown = alignment({"AC", "AC"});
    ZEP::KALMO2 &window = show(shown, {400, 300});
    for (const Command &command : commands()) {
        Repaints repaints(window);
        const RepaintListener listener(repaints);
        run(window, command.slot, {command.answer});
        EXPECT_EQ(listener.seen, std::vector{kAll}) << command.slot;
        EXPECT_EQ(repaints.take(), kNothing) << command.slot << ": the window itself is not told";
    }
}

TEST_F(Selecting, ACancelledDialogDoesNothing)
{
    TAMBO::Alignment &shown = alignment({"AC", "AC"});
    ZEP::KALMO2 &window = show(shown, {400, 300});
    const RecordingSubscriber listener;
    const LogLines log;
    for (const char *slot : {"selectSubSequence", "selectConservedN"}) {
        std::optional<Repaints> repaints;
        const auto reject = [&](QDialog &dialog) {
            dialog.reject();
            repaints.emplace(window);
        };
        run(window, slot, {reject});
        EXPECT_EQ(repaints->take(), kNothing) << slot;
    }
    EXPECT_EQ(selected(shown), (Texts{"..", ".."}));
    EXPECT_TRUE(listener.calls.empty());
    EXPECT_EQ(log.count(), 0);
}

TEST_F(Selecting, ARefusedChangeOnlyRepaints)
{
    TAMBO::Alignment &shown = alignment({"AC", "AC"});
    ZEP::KALMO2 &window = show(shown, {400, 300});
    lockAll();
    const MessageRecorder messages;
    const LogLines log;
    for (const Command &command : commands()) {
        const RecordingSubscriber listener;
        Repaints repaints(window);
        run(window, command.slot, {command.answer});
        EXPECT_TRUE(repaints.take().cells) << command.slot;
        EXPECT_TRUE(listener.calls.empty()) << command.slot;
    }
    EXPECT_EQ(selected(shown), (Texts{"..", ".."}));
    EXPECT_EQ(messages.messages(), QStringList());
    EXPECT_EQ(log.texts(), QStringList());
}

TEST_F(Selecting, ALockedAlignmentIsNotSearched)
{
    TAMBO::Alignment &shown = alignment({"AC", "AC"});
    TAMBO::setObjectLocked(shown, true);
    const LogLines log;
    run(open(shown), "selectSubSequence", {enter(QStringLiteral("A"))});
    EXPECT_EQ(selected(shown), (Texts{"..", ".."}));
    EXPECT_EQ(log.texts(), QStringList());
}

// Its guard is that of the whole workbench.
TEST_F(Selecting, TheLockOfAnAlignmentDoesNotKeepConservedResiduesFromBeingSelected)
{
    TAMBO::Alignment &shown = alignment({"AC", "AD"});
    TAMBO::setObjectLocked(shown, true);
    run(open(shown), "selectConservedN", {enter(2)});
    EXPECT_EQ(selected(shown), (Texts{"#.", "#."}));
}

TEST_F(Selecting, IsNoStepAndRebuildsNothing)
{
    TAMBO::Alignment &shown = alignment({"AC", "AC"});
    ZEP::KALMO2 &window = open(shown);
    const MessageRecorder messages;
    for (const Command &command : commands())
        run(window, command.slot, {command.answer});
    EXPECT_EQ(selected(shown), (Texts{"##", "##"}));
    shown.range({0, 1});
    window.RangeSelect();
    EXPECT_FALSE(history.canUndo());
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(Selecting, AnAlignmentThatGoesWhileTheDialogIsOpenIsLeftAlone)
{
    for (const Command &command : commands()) {
        TAMBO::Alignment &shown = alignment({"A", "A"});
        ZEP::KALMO2 &window = open(shown);
        const auto destroy = [&](QDialog &dialog) {
            const MessageRecorder quiet;
            {
                const DataPointBase guard(nullptr, Publisher::Delete);
                TAMBO::DataMaker::Destroy(&shown);
            }
            command.answer(dialog);
        };
        run(window, command.slot, {destroy});
        EXPECT_TRUE(isEmpty(window));
    }
}

// ---- The dialog of the search

TEST_F(Selecting, TheSearchAsksForAText)
{
    ZEP::KALMO2 &window = open(alignment({"A"}));
    const auto look = [&](QDialog &dialog) {
        const auto &input = dynamic_cast<QInputDialog &>(dialog);
        EXPECT_EQ(input.windowTitle(), "Select");
        EXPECT_EQ(input.labelText(), "Enter searched subsequence:");
        EXPECT_EQ(input.textEchoMode(), QLineEdit::Normal);
        EXPECT_EQ(input.textValue(), "");
        EXPECT_EQ(input.parentWidget(), &window);
        dialog.reject();
    };
    run(window, "selectSubSequence", {look});
}

TEST_F(Selecting, AnEmptyTextSearchesNothing)
{
    TAMBO::Alignment &shown = alignment({"AC"});
    ZEP::KALMO2 &window = show(shown, {400, 300});
    const LogLines log;
    const RecordingSubscriber listener;
    std::optional<Repaints> repaints;
    const auto accept = [&](QDialog &dialog) {
        dialog.accept();
        repaints.emplace(window);
    };
    run(window, "selectSubSequence", {accept});
    EXPECT_EQ(repaints->take(), kNothing);
    EXPECT_TRUE(listener.calls.empty());
    EXPECT_EQ(log.count(), 0);
}

TEST_F(Selecting, TheSettingChoosesTheLanguage)
{
    const auto lines = [this] {
        const LogLines log;
        EXPECT_EQ(found({"AC-D"}, "A."), Texts{"##-."});
        return log.count();
    };
    EXPECT_EQ(lines(), 1);
    searchSimply();
    EXPECT_EQ(lines(), 0);
    setSettings(QByteArray(kFont) + "SimpleRegExp = false\n");
    EXPECT_EQ(lines(), 1);
}

// ---- Simple search

TEST_F(Selecting, SimplyAPointMatchesAnyCell)
{
    searchSimply();
    EXPECT_EQ(found({"AC-D"}, "C.D"), Texts{".#-#"});
}

TEST_F(Selecting, SimplyAHyphenMatchesAGap)
{
    searchSimply();
    EXPECT_EQ(found({"AC-D"}, "C-D"), Texts{".#-#"});
    EXPECT_EQ(found({"AC-D"}, "-D"), Texts{"..-#"});
    EXPECT_EQ(found({"AC-D"}, "CD"), Texts{"..-."});
}

TEST_F(Selecting, SimplyOverlappingMatchesAreAllSelected)
{
    searchSimply();
    EXPECT_EQ(found({"AAA"}, "AA"), Texts{"###"});
}

TEST_F(Selecting, SimplyAPatternLongerThanTheAlignmentIsNowhere)
{
    searchSimply();
    EXPECT_EQ(found({"AC-D"}, "....."), Texts{"..-."});
    EXPECT_EQ(found({"AC-D"}, "AC-D"), Texts{"##-#"});
}

TEST_F(Selecting, SimplyLowerCaseIsNotUpperCase)
{
    searchSimply();
    EXPECT_EQ(found({"AAA"}, "a"), Texts{"..."});
}

TEST_F(Selecting, SimplyEachRowIsSearchedByItself)
{
    searchSimply();
    EXPECT_EQ(found({"AC", "CD"}, "CC"), (Texts{"..", ".."}));
    EXPECT_EQ(found({"AC", "CD"}, "C"), (Texts{".#", "#."}));
}

// ---- Regular expressions

TEST_F(Selecting, AHitSelectsItsColumnsAndNoOthers)
{
    EXPECT_EQ(found({"AC-D"}, "C."), Texts{".#-."});
    EXPECT_EQ(found({"AC-D"}, "C.D"), Texts{".#-#"});
    EXPECT_EQ(found({"AXC"}, "A?C"), Texts{"..#"});
    EXPECT_EQ(found({"AAA"}, "AA"), Texts{"##."});
}

TEST_F(Selecting, EveryRowHasItsLineInTheLog)
{
    TAMBO::Alignment &shown = alignment({"AAA", "WAW", "AAA"}, "ali", {"seq1", "seq2", "seq3"});
    const LogLines log;
    run(open(shown), "selectSubSequence", {enter(QStringLiteral("W"))});
    EXPECT_EQ(log.texts(), (QStringList{"Pattern 'W' found  0 time(s) from seq1",
                                        "Pattern 'W' found  2 time(s) from seq2",
                                        "Pattern 'W' found  0 time(s) from seq3"}));
}

TEST_F(Selecting, TheCountIsTwoCharactersWide)
{
    TAMBO::Alignment &shown = alignment({"AAA", "CCCCCCCCCCCC"}, "ali", {"seq1", "seq2"});
    const LogLines log;
    ZEP::KALMO2 &window = open(shown);
    run(window, "selectSubSequence", {enter(QStringLiteral("AA"))});
    run(window, "selectSubSequence", {enter(QStringLiteral("C"))});
    EXPECT_EQ(log.texts(), (QStringList{"Pattern 'AA' found  1 time(s) from seq1",
                                        "Pattern 'AA' found  0 time(s) from seq2",
                                        "Pattern 'C' found  0 time(s) from seq1",
                                        "Pattern 'C' found 12 time(s) from seq2"}));
}

TEST_F(Selecting, PlaceMarkersInPatternAndNameArePrintedAsTheyAre)
{
    TAMBO::Alignment &shown = alignment({"A"}, "ali", {"%2 and %1"});
    const LogLines log;
    run(open(shown), "selectSubSequence", {enter(QStringLiteral("%2|%3"))});
    EXPECT_EQ(log.texts(), QStringList{"Pattern '%2|%3' found  0 time(s) from %2 and %1"});
}

TEST_F(Selecting, AnOpenParenthesisIsNoExpressionEither)
{
    const LogLines log;
    EXPECT_EQ(found({"AAA", "CCC"}, "A("), (Texts{"...", "..."}));
    ASSERT_EQ(log.count(), 3);
    EXPECT_TRUE(log.texts()[0].contains("'A('")) << log.texts()[0].toStdString();
    EXPECT_TRUE(log.texts()[0].contains(" at position ")) << log.texts()[0].toStdString();
    for (const int row : {0, 1})
        EXPECT_EQ(log.texts()[row + 1], QString("Pattern 'A(' found  0 time(s) from s%1").arg(row));
}

TEST_F(Selecting, AnExpressionThatIsNoneIsNamedOnceAndFindsNothing)
{
    TAMBO::Alignment &shown = alignment({"AAA", "A"}, "ali", {"seq1", "seq2"});
    ZEP::KALMO2 &window = show(shown, {400, 300});
    const LogLines log;
    Repaints repaints(window);
    run(window, "selectSubSequence", {enter(QStringLiteral("A["))});
    const QStringList lines = log.texts();
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[0].startsWith("Pattern 'A[' is no regular expression: "))
        << lines[0].toStdString();
    EXPECT_TRUE(lines[0].endsWith(" at position 2")) << lines[0].toStdString();
    EXPECT_EQ(lines[1], "Pattern 'A[' found  0 time(s) from seq1");
    EXPECT_EQ(lines[2], "Pattern 'A[' found  0 time(s) from seq2");
    EXPECT_EQ(selected(shown), (Texts{"...", ".--"}));
    EXPECT_TRUE(repaints.take().cells);
}

TEST_F(Selecting, APatternThatCanBeEmptyStopsAtTheFirstEmptyHitOfARow)
{
    TAMBO::Alignment &shown = alignment({"AAA", "CCC", "AAC"}, "ali", {"seq1", "seq2", "seq3"});
    const LogLines log;
    run(open(shown), "selectSubSequence", {enter(QStringLiteral("A*"))});
    EXPECT_EQ(selected(shown), (Texts{"###", "...", "##."}));
    EXPECT_EQ(log.texts(), (QStringList{"Pattern 'A*' found  1 time(s) from seq1",
                                        "Pattern 'A*' found  0 time(s) from seq2",
                                        "Pattern 'A*' found  1 time(s) from seq3",
                                        "Pattern 'A*' can match an empty text"}));
}

TEST_F(Selecting, ARowInWhichTheSearchIsGivenUpHasASecondLine)
{
    TAMBO::Alignment &shown =
        alignment({"CD" + std::string(60, 'A'), "CD", "AW"}, "ali", {"seq1", "seq2", "seq3"});
    const LogLines log;
    run(open(shown), "selectSubSequence", {enter(QStringLiteral("CD|(?:A+)+[BW]"))});
    EXPECT_EQ(
        log.texts(),
        (QStringList{"Pattern 'CD|(?:A+)+[BW]' found  1 time(s) from seq1",
                     "Pattern 'CD|(?:A+)+[BW]': the search of seq1 was given up in column 3: match "
                     "limit exceeded",
                     "Pattern 'CD|(?:A+)+[BW]' found  1 time(s) from seq2",
                     "Pattern 'CD|(?:A+)+[BW]' found  1 time(s) from seq3"}));
    EXPECT_TRUE(shown.getItem(0, 1)->IsSelected());
    EXPECT_FALSE(shown.getItem(0, 2)->IsSelected());
    EXPECT_TRUE(shown.getItem(1, 0)->IsSelected());
}

TEST_F(Selecting, ALongRowIsSearchedToItsEnd)
{
    std::string row(60'000, 'A');
    row.front() = row.back() = 'W';
    TAMBO::Alignment &shown = alignment({row, row}, "ali", {"seq1", "seq2"});
    const LogLines log;
    run(open(shown), "selectSubSequence", {enter(QStringLiteral("W(?:.|-)*W"))});
    EXPECT_EQ(log.texts(), (QStringList{"Pattern 'W(?:.|-)*W' found  1 time(s) from seq1",
                                        "Pattern 'W(?:.|-)*W' found  1 time(s) from seq2"}));
    EXPECT_TRUE(shown.isRowSelected(0));
    EXPECT_TRUE(shown.isRowSelected(1));
}

TEST_F(Selecting, ACancelledSearchChangesAndLogsNothing)
{
    TAMBO::Alignment &shown = alignment(Texts(1000, "C" + std::string(60, 'A')));
    ZEP::KALMO2 &window = show(shown, {400, 300});
    const RecordingSubscriber listener;
    const LogLines log;
    whenSearching([](QProgressDialog &dialog) { dialog.cancel(); });
    run(window, "selectSubSequence", {enter(QStringLiteral("C|(?:A+)+[BW]"))});
    EXPECT_FALSE(shown.getItem(0, 0)->IsSelected());
    EXPECT_TRUE(listener.calls.empty());
    EXPECT_EQ(log.texts(), QStringList());
}

TEST_F(Selecting, AWindowMayCloseOrShowAnotherAlignmentWhileItSearches)
{
    TAMBO::Alignment &shown = alignment(Texts(1000, "C" + std::string(60, 'A')));
    TAMBO::Alignment &other = alignment({"C"}, "other");
    ZEP::KALMO2 &window = open(shown);
    const LogLines log;
    const MessageRecorder quiet;
    whenSearching([&](QProgressDialog &dialog) {
        window.Populate(&other);
        dialog.cancel();
    });
    run(window, "selectSubSequence", {enter(QStringLiteral("C|(?:A+)+[BW]"))});
    window.Populate(&shown);
    whenSearching([this](QProgressDialog &) { closeWindows(); });
    run(window, "selectSubSequence", {enter(QStringLiteral("C|(?:A+)+[BW]"))});
    EXPECT_FALSE(shown.getItem(0, 0)->IsSelected());
    EXPECT_FALSE(other.getItem(0, 0)->IsSelected());
    EXPECT_EQ(log.texts(), QStringList());
}

TEST_F(Selecting, AMatchPastTheLastColumnIsReportedAndSelectedAsFarAsThereAreCells)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    {
        const ExpectMessage failed(QtWarningMsg, "ASSERT: \"static_cast<unsigned long>( end ) <= "
                                                 "m_Data->width()\" in KALMO2 (742)");
        ZEP::selectMatch(shown, 0, 1, 5);
    }
    EXPECT_EQ(selected(shown), Texts{".##"});
    ZEP::selectMatch(shown, 0, 0, 3);
    EXPECT_EQ(selected(shown), Texts{"###"});
}

// ---- ConservedN

TEST_F(Selecting, OneRowIsNotAskedForANumber)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    ZEP::KALMO2 &window = show(shown, {400, 300});
    const RecordingSubscriber listener;
    Repaints repaints(window);
    run(window, "selectConservedN", {});
    EXPECT_EQ(repaints.take(), kNothing);
    EXPECT_TRUE(listener.calls.empty());
}

TEST_F(Selecting, TheNumberRunsFromZeroToTheNumberOfRows)
{
    ZEP::KALMO2 &window = open(alignment({"A", "A", "A", "A"}));
    const auto look = [&](QDialog &dialog) {
        const auto &input = dynamic_cast<QInputDialog &>(dialog);
        EXPECT_EQ(input.windowTitle(), "Number of conserved");
        EXPECT_EQ(input.labelText(), "Must be:");
        EXPECT_EQ(input.intValue(), 4);
        EXPECT_EQ(input.intMinimum(), 0);
        EXPECT_EQ(input.intMaximum(), 4);
        EXPECT_EQ(input.intStep(), 1);
        EXPECT_EQ(input.parentWidget(), &window);
        dialog.reject();
    };
    run(window, "selectConservedN", {look});
}

TEST_F(Selecting, TwoRowsHaveToAgreeWhateverTheNumberIs)
{
    for (const int number : {0, 1, 2}) {
        EXPECT_EQ(conserved({"AC-D", "A-CD"}, number), (Texts{"#.-#", "#-.#"}));
        EXPECT_EQ(conserved({"AL", "AI"}, number), (Texts{"#.", "#."}));
    }
}

TEST_F(Selecting, OneLetterAloneHasToReachTheNumber)
{
    EXPECT_EQ(conserved({"L", "L", "I"}, 2), (Texts{"#", "#", "."}));
    EXPECT_EQ(conserved({"L", "L", "I"}, 3), (Texts{".", ".", "."}));
    EXPECT_EQ(conserved({"L", "-", "-"}, 0), (Texts{"#", "-", "-"}));
}

TEST_F(Selecting, ATieForTheMostFrequentLetterSelectsNothing)
{
    EXPECT_EQ(conserved({"A", "C", "A", "C"}, 1), (Texts{".", ".", ".", "."}));
    EXPECT_EQ(conserved({"A", "A", "C", "C"}, 2), (Texts{".", ".", ".", "."}));
    EXPECT_EQ(conserved({"A", "A", "A", "C", "D"}, 3), (Texts{"#", "#", "#", ".", "."}));
}

TEST_F(Selecting, ATieIsSkippedHereAndColouredThere)
{
    TAMBO::Alignment &shown = alignment({"A", "A", "C", "C"});
    ZEP::KALMO2 &window = open(shown);
    run(window, "selectConservedN", {enter(2)});
    run(window, "colorConservedN", {pick(Qt::red), enter(2)});
    EXPECT_EQ(selected(shown), (Texts{".", ".", ".", "."}));
    EXPECT_EQ(colored(shown, Color(0xff0000)), (Texts{"#", "#", ".", "."}));
}

TEST_F(Selecting, AColumnOfGapsIsNoColumnToSelect)
{
    EXPECT_EQ(conserved({"A-", "A-", "A-"}, 0), (Texts{"#-", "#-", "#-"}));
}

// ---- The range

TEST_F(Selecting, TheRangeIsSelectedAndEverythingRepainted)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    shown.range({1, 3});
    ZEP::KALMO2 &window = show(shown, {400, 300});
    Repaints repaints(window);
    const RepaintListener listener(repaints);
    window.RangeSelect();
    EXPECT_EQ(listener.seen, std::vector{kAll});
    EXPECT_EQ(selected(shown), (Texts{".#-.", ".-#."}));
}

TEST_F(Selecting, TheWholeRangeIsSetAndEverythingRepainted)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    shown.range({1, 3});
    ZEP::KALMO2 &window = show(shown, {400, 300});
    Repaints repaints(window);
    const RepaintListener listener(repaints);
    window.RangeFull();
    EXPECT_EQ(listener.seen, std::vector{kAll});
    EXPECT_EQ(shown.range(), TAMBO::Alignment::Range(0, 4));
}

TEST_F(Selecting, RefusedRangeCommandsRepaintNothing)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    shown.range({1, 3});
    ZEP::KALMO2 &window = show(shown, {400, 300});
    TAMBO::setObjectLocked(shown, true);
    Repaints repaints(window);
    window.RangeSelect();
    window.RangeFull();
    window.RangeRemove();
    EXPECT_EQ(repaints.take(), kNothing);
    EXPECT_EQ(selected(shown), (Texts{"..-.", ".-.."}));
}

TEST_F(Selecting, ARangeThatIsEmptySelectsNothing)
{
    TAMBO::Alignment &shown = alignment({"AC-D"});
    shown.range({2, 2});
    open(shown).RangeSelect();
    EXPECT_EQ(selected(shown), Texts{"..-."});
}

} // namespace SelectingTest
