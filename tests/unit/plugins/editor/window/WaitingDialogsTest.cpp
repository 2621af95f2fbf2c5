// SPDX-License-Identifier: GPL-3.0-or-later
// An editor window that is closed while one of its own dialogs waits for an answer.
#include "Hands.h"
#include "WindowFixture.h"

#include <QAction>
#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>

#include <functional>

extern "C" {
void Execute0();
bool IsDone();
void Cleanup();
}

namespace WaitingDialogsTest {

struct Command
{
    const char *name;
    std::function<void(ZEP::KALMO2 &window)> run;
    // How many dialogs are answered before the one that waits.
    int before = 0;

    friend void PrintTo(const Command &command, std::ostream *out) { *out << command.name; }
};

class ClosedMeanwhile : public WindowFixture
{
protected:
    ~ClosedMeanwhile() override { Cleanup(); }

    // The window that the workbench opens, over the alignment.
    static ZEP::KALMO2 &opened(TAMBO::Alignment &shown)
    {
        const QWidgetList before = QApplication::topLevelWidgets();
        Execute0();
        ZEP::KALMO2 *window = nullptr;
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (!before.contains(widget) && qobject_cast<ZEP::KALMO2 *>(widget) != nullptr)
                window = static_cast<ZEP::KALMO2 *>(widget);
        }
        window->Populate(&shown);
        return *window;
    }
};

class WaitingDialogs : public ClosedMeanwhile, public ::testing::WithParamInterface<Command>
{
};

void choose(const ZEP::KALMO2 &window, const QString &title, const QString &text)
{
    for (const QMenu *menu : window.findChildren<QMenu *>()) {
        for (QAction *action : menu->actions()) {
            if (menu->title() == title && action->text() == text)
                return action->trigger();
        }
    }
    ADD_FAILURE() << text.toStdString();
}

Command menuCommand(const char *name, const char *title, const char *text, int before = 0)
{
    return {name, [title, text](ZEP::KALMO2 &window) { choose(window, title, text); }, before};
}

std::vector<Command> commands()
{
    return {
        menuCommand("GetSequences", "&File", "Make from &Seqs"),
        menuCommand("AddSequences", "&File", "Add Seqs"),
        menuCommand("CombineAlignment", "&File", "Combine"),
        menuCommand("GetAlignment", "&File", "Get &Alignment"),
        menuCommand("DeleteAlignment", "&File", "Delete"),
        menuCommand("Save", "&File", "Save"),
        menuCommand("PrintFat", "&File", "&Print Fat"),
        menuCommand("PrintSlim", "&File", "&Print Slim"),
        menuCommand("PrintBW", "&File", "&Print BW"),
        menuCommand("RangeAddSSE", "Range", "Add SSE"),
        menuCommand("SelectConservedN", "Select", "ConservedN"),
        menuCommand("SelectSubSequence", "Select", "SubSequence"),
        menuCommand("SetColor", "Color", "Selected"),
        menuCommand("ColorConserved", "Color", "Conserved"),
        menuCommand("ColorConservedN", "Color", "ConservedN"),
        menuCommand("ColorConservedNumber", "Color", "ConservedN", 1),
        {"Font",
         [](ZEP::KALMO2 &window) {
             QMetaObject::invokeMethod(&window, "ButtonPressed", Q_ARG(int, 9), Q_ARG(int, 0),
                                       Q_ARG(bool, false));
         }},
        {"About", [](ZEP::KALMO2 &window) { window.about(); }},
    };
}

const std::vector<std::string> kRows = {"ACDEF", "ACDE-", "ACDEF"};

TEST_P(WaitingDialogs, EndWithTheirWindowAndTheirCommandsDoNothingMore)
{
    TAMBO::Alignment &shown = alignment(kRows);
    shown.range({0, 4});
    const MessageRecorder quiet;
    const QPointer<ZEP::KALMO2> window(&opened(shown));
    const QPointer<ZEP::KALMO2> other(&opened(shown));
    {
        DialogDriver dialogs;
        for (int i = 0; i < GetParam().before; ++i)
            dialogs.expectAccepted();
        dialogs.expect([&](QDialog &dialog) {
            EXPECT_EQ(dialog.parentWidget(), window);
            const QPointer<QDialog> waiting(&dialog);
            Cleanup();
            EXPECT_FALSE(window);
            ASSERT_TRUE(waiting) << "it belongs to its caller";
            EXPECT_FALSE(waiting->isVisible());
            EXPECT_EQ(waiting->result(), QDialog::Rejected);
        });
        GetParam().run(*window);
    }
    EXPECT_TRUE(IsDone());
    EXPECT_FALSE(other);
    EXPECT_EQ(alignments(), std::vector{&shown});
    EXPECT_EQ(rowsOf(shown), kRows);
    EXPECT_EQ(history.position(), 0U);
    QCoreApplication::processEvents();
}

TEST_P(WaitingDialogs, AreNoAnswerWhenTheWindowGoesAfterTheyWereAccepted)
{
    TAMBO::Alignment &shown = alignment(kRows);
    shown.range({0, 4});
    const MessageRecorder quiet;
    const QPointer<ZEP::KALMO2> window(&opened(shown));
    {
        DialogDriver dialogs;
        for (int i = 0; i < GetParam().before; ++i)
            dialogs.expectAccepted();
        dialogs.expect([&](QDialog &dialog) {
            // What its own loop still has to do before it returns.
            dialog.setResult(QDialog::Accepted);
            dialog.hide();
            Cleanup();
        });
        GetParam().run(*window);
    }
    EXPECT_TRUE(IsDone());
    EXPECT_EQ(alignments(), std::vector{&shown});
    EXPECT_EQ(rowsOf(shown), kRows);
    QCoreApplication::processEvents();
}

TEST_F(ClosedMeanwhile, AnAnswerThatComesAfterTheWindowHasGoneRenumbersNothing)
{
    TAMBO::Alignment &shown = alignment(kRows);
    shown.range({0, 4});
    const MessageRecorder quiet;
    const QPointer<ZEP::KALMO2> window(&opened(shown));
    DialogDriver dialogs;
    dialogs.expect([&](QDialog &dialog) {
        EXPECT_EQ(dialog.parentWidget(), nullptr);
        Cleanup();
        EXPECT_FALSE(window);
        dynamic_cast<QInputDialog &>(dialog).setTextValue("77");
        dialog.accept();
    });
    window->RangeReNumber();
    EXPECT_EQ(dynamic_cast<TAMBO::Group &>(*shown.getItem(0, 0)).GetSeqId().getValue(), "1");
    EXPECT_EQ(history.position(), 0U);
}

TEST_F(ClosedMeanwhile, TheBoxWithTheIdentityMayOutliveTheWindow)
{
    TAMBO::Alignment &shown = alignment(kRows);
    const MessageRecorder quiet;
    const QPointer<ZEP::KALMO2> window(&opened(shown));
    const Hands hands(*window);
    DialogDriver dialogs;
    dialogs.expect([&](QDialog &dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Percentage identity");
        Cleanup();
        EXPECT_FALSE(window);
        dialog.accept();
    });
    hands.clickName(Hands::kRight, 1);
}

INSTANTIATE_TEST_SUITE_P(Commands, WaitingDialogs, testing::ValuesIn(commands()),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace WaitingDialogsTest
