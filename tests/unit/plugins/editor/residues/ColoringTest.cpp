// SPDX-License-Identifier: GPL-3.0-or-later
// The colouring commands that the user picks a colour for, and what all colouring commands share.
#include "ColoringFixture.h"

#include "JLabel.h"
#include "Peptide.h"

namespace ColoringTest {

const Color kRed(0xff0000);
const Color kGreen(0x00ff00);

class Coloring : public ColoringFixture
{
protected:
    // The four commands of the menu with what they ask for, and "By Property".
    struct Command
    {
        const char *slot;
        std::vector<DialogDriver::Handler> answers;
    };
    static std::vector<Command> menuCommands(int number = 1)
    {
        return {{"setColor", {pick(Qt::red)}},
                {"colorConserved", {pick(Qt::red)}},
                {"colorConservedN", {pick(Qt::red), enter(number)}},
                {"colorDistance", {}}};
    }
    static std::vector<QColor> oneColor(const QColor &color)
    {
        return std::vector<QColor>(21, color);
    }

    // What "Conserved" leaves red.
    Texts conserved(const Texts &rows)
    {
        TAMBO::Alignment &shown = alignment(rows);
        run(open(shown), "colorConserved", {pick(Qt::red)});
        return colored(shown, kRed);
    }
    Texts conservedN(const Texts &rows, int number)
    {
        TAMBO::Alignment &shown = alignment(rows);
        run(open(shown), "colorConservedN", {pick(Qt::red), enter(number)});
        return colored(shown, kRed);
    }
};

// ---- All of them

TEST_F(Coloring, WithoutAnAlignmentNothingIsAskedColouredOrRepainted)
{
    ZEP::KALMO2 &window = show(alignment({"A"}), {400, 300});
    window.Populate(nullptr);
    Repaints repaints(window);
    const RecordingSubscriber listener;
    const MessageRecorder messages;
    for (const Command &command : menuCommands())
        run(window, command.slot, {});
    EXPECT_EQ(repaints.take(), kNothing);
    EXPECT_TRUE(listener.calls.empty());
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(Coloring, ATableRepaintsAlsoWithoutAnAlignmentOrATable)
{
    ZEP::KALMO2 &window = show(alignment({"AC-D", "A-CD"}), {400, 300});
    const RecordingSubscriber listener;
    Repaints repaints(window);
    window.setColor(nullptr);
    EXPECT_EQ(repaints.take(), kCells);
    window.Populate(nullptr);
    (void)repaints.take();
    std::vector<QColor> table = oneColor(Qt::red);
    window.setColor(table.data());
    EXPECT_EQ(repaints.take(), kCells);
    EXPECT_TRUE(listener.calls.empty());
}

TEST_F(Coloring, TheMenuAndTheToolbarRunTheCommands)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    ZEP::KALMO2 &window = open(shown);
    DialogDriver dialogs;
    dialogs.expect(pick(Qt::red));
    trigger(window, "Color", "Conserved");
    EXPECT_EQ(colored(shown, kRed), (Texts{"#.-#", "#-.#"}));
    dialogs.expect(pick(Qt::green));
    dialogs.expect(enter(1));
    trigger(window, "Color", "ConservedN");
    EXPECT_EQ(colored(shown, kGreen), (Texts{"##-#", "#-##"}));
    shown.getItem(0, 1)->SetSelected(true);
    dialogs.expect(pick(Qt::red));
    trigger(window, "Color", "Selected");
    EXPECT_EQ(colored(shown, kRed), (Texts{".#-.", ".-.."}));
    dialogs.expect(pick(Qt::blue));
    pressButton(window, 6);
    EXPECT_EQ(colored(shown, Color(0x0000ff)), (Texts{".#-.", ".-.."}));
    dialogs.expect(pick(Qt::red));
    pressButton(window, 8);
    EXPECT_EQ(colored(shown, kRed), (Texts{"#.-#", "#-.#"}));
    const auto count = dialogs.titles().size();
    trigger(window, "Color", "By Distance");
    EXPECT_EQ(dialogs.titles().size(), count);
}

TEST_F(Coloring, TheColourDialogStartsWithOpaqueBlackAndHasAlpha)
{
    ZEP::KALMO2 &window = open(alignment({"A", "A"}));
    for (const char *slot : {"setColor", "colorConserved", "colorConservedN"}) {
        const auto look = [&](QDialog &dialog) {
            const auto &colors = dynamic_cast<QColorDialog &>(dialog);
            EXPECT_EQ(colors.currentColor(), QColor(0, 0, 0, 255));
            EXPECT_TRUE(colors.testOption(QColorDialog::ShowAlphaChannel));
            EXPECT_EQ(colors.parentWidget(), &window);
            dialog.reject();
        };
        run(window, slot, {look});
    }
}

TEST_F(Coloring, ACancelledColourDialogChangesNothing)
{
    TAMBO::Alignment &shown = alignment({"A", "A"});
    shown.getItem(0, 0)->SetSelected(true);
    ZEP::KALMO2 &window = show(shown, {400, 300});
    const std::vector<Color> before = colorsOf(shown);
    const RecordingSubscriber listener;
    const MessageRecorder messages;
    for (const char *slot : {"setColor", "colorConserved", "colorConservedN"}) {
        std::optional<Repaints> repaints;
        const auto reject = [&](QDialog &dialog) {
            dialog.reject();
            repaints.emplace(window);
        };
        run(window, slot, {reject});
        EXPECT_EQ(repaints->take(), kNothing) << slot;
    }
    EXPECT_EQ(colorsOf(shown), before);
    EXPECT_TRUE(listener.calls.empty());
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(Coloring, ThePickedColourKeepsItsAlpha)
{
    TAMBO::Alignment &shown = alignment({"L", "L"});
    const QColor faint(10, 20, 30, 128);
    shown.getItem(0, 0)->SetSelected(true);
    ZEP::KALMO2 &window = open(shown);
    run(window, "setColor", {pick(faint)});
    EXPECT_EQ(shown.getItem(0, 0)->OwnColor(), Color(0x800a141eU));
    EXPECT_EQ(shown.getItem(0, 0)->OwnColor().toQColor(), faint);
    run(window, "colorConserved", {pick(faint)});
    EXPECT_EQ(shown.getItem(1, 0)->OwnColor().toQColor(), faint);
    // On the white of the canvas.
    EXPECT_EQ(paintedColor(window, 1, 0), QColor(133, 138, 143));
}

TEST_F(Coloring, APickedColourWithoutAnyOpacityStaysAsPicked)
{
    TAMBO::Alignment &shown = alignment({"L", "L"});
    ZEP::KALMO2 &window = open(shown);
    for (const QColor &picked : {QColor(0, 0, 0, 0), QColor(10, 20, 30, 0)}) {
        shown.getItem(0, 0)->SetSelected(true);
        run(window, "setColor", {pick(picked)});
        EXPECT_EQ(shown.getItem(0, 0)->OwnColor().toQColor(), picked);
        shown.getItem(0, 0)->SetSelected(false);
        run(window, "colorConserved", {pick(picked)});
        EXPECT_EQ(shown.getItem(1, 0)->GetColor().toQColor(), picked);
        EXPECT_EQ(paintedColor(window, 1, 0), QColor(Qt::white));
    }
}

TEST_F(Coloring, DialogsAreOverBeforeTheChangeBegins)
{
    ZEP::KALMO2 &window = open(alignment({"A", "A"}));
    for (const Command &command : menuCommands()) {
        DialogDriver dialogs;
        for (const DialogDriver::Handler &answer : command.answers)
            dialogs.expect([answer](QDialog &dialog) {
                const DataPoint<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
                EXPECT_TRUE(guard.m_good);
                EXPECT_FALSE(Publisher::isPublishing());
                answer(dialog);
            });
        const RecordingSubscriber listener;
        call(window, command.slot);
        // Each guard of the handlers published by itself, so none of the command's was open.
        EXPECT_EQ(listener.calls.size(), command.answers.size() + 1) << command.slot;
    }
}

TEST_F(Coloring, OthersAreToldOnceAndTheWindowItselfIsNot)
{
    TAMBO::Alignment &shown = alignment({"A", "A"});
    ZEP::KALMO2 &window = show(shown, {400, 300});
    for (const Command &command : menuCommands()) {
        Repaints repaints(window);
        const RecordingSubscriber listener;
        run(window, command.slot, command.answers);
        EXPECT_EQ(listener.calls, std::vector<std::string>{"update"}) << command.slot;
        // When it is told, a window repaints names and header as well.
        EXPECT_EQ(repaints.take(), kCells) << command.slot;
    }
    Repaints repaints(window);
    const RecordingSubscriber listener;
    WindowParts(window).colors->Apply();
    EXPECT_EQ(listener.calls, std::vector<std::string>{"update"});
    EXPECT_EQ(repaints.take(), kCells);
}

TEST_F(Coloring, CommandsRepaintFirstAndPublishThen)
{
    ZEP::KALMO2 &window = show(alignment({"A", "A"}), {400, 300});
    for (const Command &command : menuCommands()) {
        Repaints repaints(window);
        const RepaintListener listener(repaints);
        run(window, command.slot, command.answers);
        EXPECT_EQ(listener.seen, std::vector{kCells}) << command.slot;
    }
}

TEST_F(Coloring, ATablePublishesFirstAndRepaintsThen)
{
    ZEP::KALMO2 &window = show(alignment({"A", "A"}), {400, 300});
    std::vector<QColor> table = oneColor(Qt::red);
    Repaints repaints(window);
    const RepaintListener listener(repaints);
    window.setColor(table.data());
    EXPECT_EQ(listener.seen, std::vector{kNothing});
    EXPECT_EQ(repaints.take(), kCells);
}

TEST_F(Coloring, ARefusedChangeColoursNothingButRepaints)
{
    TAMBO::Alignment &shown = alignment({"A", "A"});
    shown.getItem(0, 0)->SetSelected(true);
    ZEP::KALMO2 &window = show(shown, {400, 300});
    const std::vector<Color> before = colorsOf(shown);
    lockAll();
    const LogLines log;
    const MessageRecorder messages;
    const RecordingSubscriber listener;
    for (const Command &command : menuCommands()) {
        Repaints repaints(window);
        run(window, command.slot, command.answers);
        EXPECT_EQ(repaints.take(), kCells) << command.slot;
    }
    Repaints repaints(window);
    WindowParts(window).colors->Apply();
    EXPECT_EQ(repaints.take(), kCells);
    EXPECT_EQ(colorsOf(shown), before);
    EXPECT_TRUE(listener.calls.empty());
    EXPECT_EQ(messages.messages(), QStringList());
    EXPECT_EQ(log.texts(), QStringList());
}

// Their guard is that of the whole workbench.
TEST_F(Coloring, TheLockOfAnAlignmentDoesNotKeepItsResiduesFromBeingColoured)
{
    TAMBO::Alignment &shown = alignment({"AC", "AD"});
    shown.getItem(1, 1)->SetSelected(true);
    TAMBO::setObjectLocked(shown, true);
    ZEP::KALMO2 &window = open(shown);
    run(window, "setColor", {pick(Qt::red)});
    EXPECT_EQ(colored(shown, kRed), (Texts{"..", ".#"}));
    run(window, "colorConserved", {pick(Qt::red)});
    EXPECT_EQ(colored(shown, kRed), (Texts{"#.", "##"}));
    run(window, "colorConservedN", {pick(Qt::green), enter(1)});
    EXPECT_EQ(colored(shown, kGreen), (Texts{"##", "#."}));
    std::vector<QColor> table = oneColor(Qt::red);
    window.setColor(table.data());
    EXPECT_EQ(colored(shown, kRed), (Texts{"##", "##"}));
}

TEST_F(Coloring, NothingIsRebuilt)
{
    ZEP::KALMO2 &window = open(alignment({"A", "A"}));
    const MessageRecorder messages;
    for (const Command &command : menuCommands())
        run(window, command.slot, command.answers);
    WindowParts(window).colors->Apply();
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(Coloring, TheRangeDoesNotMatter)
{
    TAMBO::Alignment &shown = alignment({"ACDE", "ACDE"});
    shown.range({1, 2});
    ZEP::KALMO2 &window = open(shown);
    std::vector<QColor> table = oneColor(Qt::green);
    window.setColor(table.data());
    EXPECT_EQ(colored(shown, kGreen), (Texts{"####", "####"}));
    run(window, "colorConserved", {pick(Qt::red)});
    EXPECT_EQ(colored(shown, kRed), (Texts{"####", "####"}));
    run(window, "colorConservedN", {pick(Qt::green), enter(2)});
    EXPECT_EQ(colored(shown, kGreen), (Texts{"####", "####"}));
    shown.select({0, 4}, true);
    run(window, "setColor", {pick(Qt::red)});
    EXPECT_EQ(colored(shown, kRed), (Texts{"####", "####"}));
}

TEST_F(Coloring, WhatACommandDoesNotTouchKeepsItsColour)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    ZEP::KALMO2 &window = open(shown);
    std::vector<QColor> table = oneColor(Qt::green);
    window.setColor(table.data());
    run(window, "colorConserved", {pick(Qt::red)});
    EXPECT_EQ(colored(shown, kRed), (Texts{"#.-#", "#-.#"}));
    EXPECT_EQ(colored(shown, kGreen), (Texts{".#-.", ".-#."}));
}

TEST_F(Coloring, ColoursOutliveTheWindow)
{
    TAMBO::Alignment &shown = alignment({"AC", "AC"});
    run(open(shown), "colorConserved", {pick(Qt::red)});
    closeWindows();
    EXPECT_EQ(colored(shown, kRed), (Texts{"##", "##"}));
    EXPECT_EQ(paintedColor(open(shown), 0, 0), QColor(Qt::red));
}

TEST_F(Coloring, AResidueInTwoAlignmentsIsOneResidue)
{
    TAMBO::Alignment &shown = alignment({"AC", "AC"});
    const TAMBO::Alignment &copy = *shown.duplicate(1);
    history.clear();
    run(open(shown), "colorConserved", {pick(Qt::red)});
    EXPECT_EQ(colored(copy, kRed), Texts{"##"});
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(colored(copy, kRed), Texts{".."});
}

TEST_F(Coloring, EachCommandThatChangesAColourIsOneStepBack)
{
    TAMBO::Alignment &shown = alignment({"AC-DA", "A-CDA", "AWCD-"});
    ZEP::KALMO2 &window = open(shown);
    std::vector<QColor> table;
    for (int i = 0; i < 21; ++i)
        table.emplace_back(10 * i, 5, 7);
    window.setColor(table.data());
    shown.select({0, 2}, true);
    history.clear();
    for (const Command &command : menuCommands(2)) {
        if (command.answers.empty())
            continue;
        const std::vector<Color> before = colorsOf(shown);
        run(window, command.slot, command.answers);
        const std::vector<Color> after = colorsOf(shown);
        EXPECT_NE(after, before) << command.slot;
        EXPECT_TRUE(history.undo());
        EXPECT_FALSE(history.canUndo());
        EXPECT_EQ(colorsOf(shown), before) << command.slot;
        EXPECT_TRUE(history.redo());
        EXPECT_EQ(colorsOf(shown), after) << command.slot;
        EXPECT_TRUE(history.undo());
    }
    const std::vector<Color> before = colorsOf(shown);
    std::vector<QColor> other = oneColor(Qt::green);
    window.setColor(other.data());
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(colorsOf(shown), before);
}

TEST_F(Coloring, NoCommandChangesTheSelection)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    shown.select({1, 3}, true);
    const Texts before = selected(shown);
    ZEP::KALMO2 &window = open(shown);
    for (const Command &command : menuCommands())
        run(window, command.slot, command.answers);
    WindowParts(window).colors->Apply();
    EXPECT_EQ(selected(shown), before);
}

TEST_F(Coloring, AColumnOfGapsIsNeverTouched)
{
    TAMBO::Alignment &shown = alignment({"A-C", "A-C", "A-C"});
    ZEP::KALMO2 &window = open(shown);
    for (const Command &command : menuCommands(0))
        run(window, command.slot, command.answers);
    WindowParts(window).colors->Apply();
    EXPECT_EQ(rowsOf(shown), (Texts{"A-C", "A-C", "A-C"}));
    EXPECT_EQ(colored(shown, Color(0xffffff)), (Texts{"#-#", "#-#", "#-#"}));
}

TEST_F(Coloring, AnAlignmentWithoutColumnsIsNoMatter)
{
    ZEP::KALMO2 &window = open(alignmentWithoutColumns());
    for (const Command &command : menuCommands(0))
        run(window, command.slot, command.answers);
    WindowParts(window).colors->Apply();
    EXPECT_FALSE(history.canUndo());
}

TEST_F(Coloring, AnAlignmentThatGoesWhileTheDialogIsOpenIsLeftAlone)
{
    for (const Command &command : menuCommands()) {
        if (command.answers.empty())
            continue;
        TAMBO::Alignment &shown = alignment({"A", "A"});
        ZEP::KALMO2 &window = open(shown);
        const auto destroy = [&](QDialog &dialog) {
            const MessageRecorder quiet;
            {
                const DataPointBase guard(nullptr, Publisher::Delete);
                TAMBO::DataMaker::Destroy(&shown);
            }
            command.answers.front()(dialog);
        };
        run(window, command.slot, {destroy});
        EXPECT_TRUE(isEmpty(window));
    }
}

// ---- Selected

TEST_F(Coloring, SelectedColoursTheSelectedAndNoOthers)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    shown.getItem(0, 0)->SetSelected(true);
    shown.getItem(1, 2)->SetSelected(true);
    run(open(shown), "setColor", {pick(Qt::red)});
    EXPECT_EQ(colored(shown, kRed), (Texts{"#.-.", ".-#."}));
}

TEST_F(Coloring, SelectedWithNothingSelectedOnlyRepaints)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    ZEP::KALMO2 &window = show(shown, {400, 300});
    const std::vector<Color> before = colorsOf(shown);
    Repaints repaints(window);
    run(window, "setColor", {pick(Qt::red)});
    EXPECT_EQ(repaints.take(), kCells);
    EXPECT_EQ(colorsOf(shown), before);
    EXPECT_FALSE(history.canUndo());
}

TEST_F(Coloring, SelectedLeavesSelectedResiduesOutsideOfTheAlignmentAlone)
{
    TAMBO::Alignment &shown = alignment({"ACDE"});
    const TAMBO::Alignment &whole = *shown.duplicate(1);
    shown.remove({1, 3});
    TAMBO::Peptide::from(shown.GetSeq(0))->SetSelected(true);
    run(open(shown), "setColor", {pick(Qt::red)});
    EXPECT_EQ(colored(whole, kRed), Texts{"#..#"});
}

// ---- By Property

TEST_F(Coloring, ATableColoursSelectedAndUnselectedResiduesAlike)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    shown.getItem(0, 0)->SetSelected(true);
    std::vector<QColor> table = oneColor(Qt::red);
    open(shown).setColor(table.data());
    EXPECT_EQ(colored(shown, kRed), (Texts{"##-#", "#-##"}));
}

TEST_F(Coloring, ATableIsNotKept)
{
    TAMBO::Alignment &shown = alignment({"AC", "AC"});
    ZEP::KALMO2 &window = show(shown, {400, 300});
    {
        std::vector<QColor> table = oneColor(Qt::red);
        window.setColor(table.data());
        table.assign(21, Qt::green);
    }
    EXPECT_EQ(paintedColor(window, 0, 0), QColor(Qt::red));
}

TEST_F(Coloring, LettersOutsideOfTheOrderTakeTheColourOfX)
{
    TAMBO::Alignment &shown = alignment({"AXaBZUc"});
    std::vector<QColor> table = oneColor(Qt::green);
    table[20] = Qt::red;
    open(shown).setColor(table.data());
    EXPECT_EQ(colored(shown, kRed), Texts{".######"});
    EXPECT_EQ(colored(shown, kGreen), Texts{"#......"});
}

TEST_F(Coloring, ApplyingALetterThatIsOffMakesItsResiduesWhite)
{
    TAMBO::Alignment &shown = alignment({"AC", "CA"});
    ZEP::KALMO2 &window = open(shown);
    ZEP::AcidColor &dialog = *WindowParts(window).colors;
    dialog.MethodSelected(1);
    for (ZEP::JLabel *swatch : dialog.findChildren<ZEP::JLabel *>())
        if (swatch->text() == "A")
            QTest::mousePress(swatch, Qt::LeftButton);
    const std::vector<Color> before = colorsOf(shown);
    EXPECT_EQ(colorsOf(shown), before) << "a press changes the swatch alone";
    dialog.Apply();
    EXPECT_EQ(colored(shown, Color(0xffffff)), (Texts{"#.", ".#"}));
}

// ---- Conserved

TEST_F(Coloring, ConservedOnOneRowOnlyRepaints)
{
    TAMBO::Alignment &shown = alignment({"ACD"});
    ZEP::KALMO2 &window = show(shown, {400, 300});
    Repaints repaints(window);
    run(window, "colorConserved", {pick(Qt::red)});
    EXPECT_EQ(repaints.take(), kCells);
    EXPECT_EQ(colored(shown, kRed), Texts{"..."});
    run(window, "colorConservedN", {pick(Qt::red), enter(1)});
    EXPECT_EQ(repaints.take().cells, true);
    EXPECT_EQ(colored(shown, kRed), Texts{"..."});
}

TEST_F(Coloring, TwoRowsAreConservedWhereBothHoldTheSameLetter)
{
    EXPECT_EQ(conserved({"AC-D", "A-CD"}), (Texts{"#.-#", "#-.#"}));
    EXPECT_EQ(conserved({"AL", "AI"}), (Texts{"#.", "#."}));
}

TEST_F(Coloring, OneOfThreeOrMoreRowsMayDifferOrHaveAGap)
{
    EXPECT_EQ(conserved({"L", "L", "-"}), (Texts{"#", "#", "-"}));
    EXPECT_EQ(conserved({"L", "L", "I"}), (Texts{"#", "#", "."}));
    EXPECT_EQ(conserved({"L", "I", "-"}), (Texts{".", ".", "-"}));
    EXPECT_EQ(conserved({"LA", "-A", "-A"}), (Texts{".#", "-#", "-#"}));
    EXPECT_EQ(conserved({"LL", "LL", "LI", "I-"}), (Texts{"#.", "#.", "#.", ".-"}));
}

TEST_F(Coloring, LettersAreCountedForEachColumnAnew)
{
    EXPECT_EQ(conserved({"AC", "AD", "AE"}), (Texts{"#.", "#.", "#."}));
}

TEST_F(Coloring, LowerAndUpperCaseAreDifferentLetters)
{
    EXPECT_EQ(conserved({"L", "l"}), (Texts{".", "."}));
    EXPECT_EQ(conserved({"L", "l", "l"}), (Texts{".", "#", "#"}));
}

// ---- ConservedN

TEST_F(Coloring, TheColourIsAskedForFirstAndTheNumberThen)
{
    ZEP::KALMO2 &window = open(alignment({"A", "A", "A", "A", "A"}));
    const auto look = [&](QDialog &dialog) {
        const auto &input = dynamic_cast<QInputDialog &>(dialog);
        EXPECT_EQ(input.labelText(), "Must be:");
        EXPECT_EQ(input.intValue(), 5);
        EXPECT_EQ(input.intMinimum(), 0);
        EXPECT_EQ(input.intMaximum(), 5);
        EXPECT_EQ(input.intStep(), 1);
        EXPECT_EQ(input.parentWidget(), &window);
        dialog.reject();
    };
    DialogDriver dialogs;
    dialogs.expect(pick(Qt::red));
    dialogs.expect(look);
    call(window, "colorConservedN");
    EXPECT_EQ(dialogs.titles(), (QStringList{"Select Color", "Number of conserved"}));
}

TEST_F(Coloring, ACancelledNumberChangesNothing)
{
    TAMBO::Alignment &shown = alignment({"A", "A"});
    ZEP::KALMO2 &window = show(shown, {400, 300});
    const RecordingSubscriber listener;
    std::optional<Repaints> repaints;
    const auto reject = [&](QDialog &dialog) {
        dialog.reject();
        repaints.emplace(window);
    };
    run(window, "colorConservedN", {pick(Qt::red), reject});
    EXPECT_EQ(repaints->take(), kNothing);
    EXPECT_EQ(colored(shown, kRed), (Texts{".", "."}));
    EXPECT_TRUE(listener.calls.empty());
}

TEST_F(Coloring, ColumnsWhoseMajorityReachesTheNumberAreColoured)
{
    EXPECT_EQ(conservedN({"L", "L", "L", "I"}, 3), (Texts{"#", "#", "#", "."}));
    EXPECT_EQ(conservedN({"L", "L", "L", "I"}, 4), (Texts{".", ".", ".", "."}));
    EXPECT_EQ(conservedN({"LL", "LL", "L-"}, 3), (Texts{"#.", "#.", "#-"}));
}

TEST_F(Coloring, ATieGoesToTheLowerLetter)
{
    EXPECT_EQ(conservedN({"A", "C", "A", "C"}, 2), (Texts{"#", ".", "#", "."}));
    EXPECT_EQ(conservedN({"C", "A"}, 1), (Texts{".", "#"}));
    // Lower by the code of the letter, as a signed byte.
    EXPECT_EQ(conservedN({"a", "Z"}, 1), (Texts{".", "#"}));
    EXPECT_EQ(conservedN({"A", "\xe4"}, 1), (Texts{".", "#"}));
}

TEST_F(Coloring, TwoRowsAreNoSpecialCaseForTheNumber)
{
    EXPECT_EQ(conservedN({"AC-D", "A-CD"}, 1), (Texts{"##-#", "#-##"}));
    EXPECT_EQ(conservedN({"AC-D", "A-CD"}, 2), (Texts{"#.-#", "#-.#"}));
}

TEST_F(Coloring, TheNumberZeroColoursTheMajorityOfEveryColumnWithAResidue)
{
    EXPECT_EQ(conservedN({"L-C", "--A", "--C"}, 0), (Texts{"#-#", "--.", "--#"}));
}

} // namespace ColoringTest
