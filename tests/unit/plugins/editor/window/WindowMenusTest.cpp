// SPDX-License-Identifier: GPL-3.0-or-later
// The menus and the numbers of the tool bars' buttons.
#include "WindowFixture.h"

#include "HelpWindow.h"

#include <QAction>
#include <QColorDialog>
#include <QFileDialog>
#include <QFontDialog>
#include <QMenu>
#include <QMenuBar>

#include <climits>

namespace WindowMenusTest {

struct Item
{
    QString text;
    QString shortcut;

    friend bool operator==(const Item &, const Item &) = default;
};

void PrintTo(const Item &item, std::ostream *out)
{
    *out << item.text.toStdString() << " [" << item.shortcut.toStdString() << "]";
}

class WindowMenus : public WindowFixture
{
protected:
    void TearDown() override { qunsetenv("KESTRAM"); }

    static QMenu *menu(const ZEP::KALMO2 &window, const QString &title)
    {
        for (QAction *action : window.menuBar()->actions())
            if (action->text() == title)
                return action->menu();
        ADD_FAILURE() << "no menu " << title.toStdString();
        return nullptr;
    }
    static std::vector<Item> itemsOfMenu(const ZEP::KALMO2 &window, const QString &title)
    {
        std::vector<Item> items;
        for (const QAction *action : menu(window, title)->actions())
            items.push_back(action->isSeparator()
                                ? Item{"-", {}}
                                : Item{action->text(), action->shortcut().toString()});
        return items;
    }
    static void trigger(ZEP::KALMO2 &window, const QString &title, const QString &text)
    {
        for (QAction *action : menu(window, title)->actions()) {
            if (action->text() == text) {
                action->trigger();
                return;
            }
        }
        ADD_FAILURE() << "no item " << text.toStdString();
    }
};

TEST_F(WindowMenus, StandInTheirOrder)
{
    QStringList titles;
    const ZEP::KALMO2 &window = open();
    for (const QAction *action : window.menuBar()->actions())
        titles.append(action->text());
    EXPECT_EQ(titles, (QStringList{"&File", "Model", "Range", "Select", "Color", "Help"}));
}

TEST_F(WindowMenus, HaveTheirItemsInOrder)
{
    const ZEP::KALMO2 &window = open();
    EXPECT_EQ(itemsOfMenu(window, "&File"), (std::vector<Item>{{"Make from &Seqs", "Ctrl+S"},
                                                               {"Add Seqs", {}},
                                                               {"Combine", {}},
                                                               {"Get &Alignment", "Ctrl+A"},
                                                               {"-", {}},
                                                               {"Duplicate", {}},
                                                               {"Delete", {}},
                                                               {"-", {}},
                                                               {"Save", {}},
                                                               {"&Close", "Ctrl+W"},
                                                               {"&Print Fat", {}},
                                                               {"&Print Slim", {}},
                                                               {"&Print BW", {}},
                                                               {"-", {}},
                                                               {"Exit", "Alt+F4"}}));
    EXPECT_EQ(
        itemsOfMenu(window, "Range"),
        (std::vector<Item>{
            {"Full", {}}, {"Select", {}}, {"Remove", {}}, {"Renumber", {}}, {"Add SSE", {}}}));
    EXPECT_EQ(itemsOfMenu(window, "Select"),
              (std::vector<Item>{{"ConservedN", {}}, {"SubSequence", {}}}));
    EXPECT_EQ(itemsOfMenu(window, "Color"), (std::vector<Item>{{"Selected", {}},
                                                               {"Conserved", {}},
                                                               {"ConservedN", {}},
                                                               {"By Property", {}},
                                                               {"By Distance", {}}}));
    EXPECT_EQ(itemsOfMenu(window, "Help"), (std::vector<Item>{{"Show", {}}}));
}

TEST_F(WindowMenus, ModelIsEmptyWithoutTheVariable)
{
    qunsetenv("KESTRAM");
    EXPECT_EQ(itemsOfMenu(open(), "Model"), std::vector<Item>());
    qputenv("KESTRAM", "");
    EXPECT_EQ(itemsOfMenu(open(), "Model"), std::vector<Item>());
}

TEST_F(WindowMenus, ModelOffersKestramWithTheVariable)
{
    qputenv("KESTRAM", "1");
    EXPECT_EQ(itemsOfMenu(open(), "Model"), (std::vector<Item>{{"Kestram", {}}}));
}

TEST_F(WindowMenus, AreChildrenOfTheWindow)
{
    const ZEP::KALMO2 &window = open();
    for (const QAction *action : window.menuBar()->actions())
        EXPECT_EQ(action->menu()->parent(), &window) << action->text().toStdString();
}

TEST_F(WindowMenus, FileItemsRunTheirCommands)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    ZEP::KALMO2 &window = open(shown);
    DialogDriver dialogs;
    const MessageRecorder quiet;
    for (const char *item : {"Make from &Seqs", "Add Seqs", "Combine", "Get &Alignment", "Delete"})
        trigger(window, "&File", item);
    EXPECT_EQ(dialogs.titles(),
              (QStringList{"sequences", "sequences to add", "Alignment to combine", "alignment",
                           "Select Alignment"}));
    trigger(window, "&File", "Duplicate");
    EXPECT_EQ(alignments().size(), 2U);
    trigger(window, "&File", "&Close");
    EXPECT_TRUE(isEmpty(window));
}

TEST_F(WindowMenus, CloseOnAnEmptyWindowLeavesItEmpty)
{
    ZEP::KALMO2 &window = open();
    const MessageRecorder messages;
    trigger(window, "&File", "&Close");
    EXPECT_TRUE(isEmpty(window));
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(WindowMenus, RangeItemsRunTheirCommands)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    ZEP::KALMO2 &window = open(shown);
    const MessageRecorder quiet;
    trigger(window, "Range", "Full");
    EXPECT_EQ(shown.range(), TAMBO::Alignment::Range(0, 4));
    shown.range({1, 2});
    trigger(window, "Range", "Select");
    EXPECT_TRUE(shown.isColumnSelected(1));
    EXPECT_FALSE(shown.isColumnSelected(0));
    trigger(window, "Range", "Remove");
    EXPECT_EQ(rowsOf(shown), (Texts{"A-D", "ACD"}));
}

TEST_F(WindowMenus, RangeItemsAskTheirQuestions)
{
    TAMBO::Alignment &shown = alignment({"ACDE"}, "ali", {"seq"});
    shown.range({0, 4});
    ZEP::KALMO2 &window = open(shown);
    DialogDriver dialogs;
    trigger(window, "Range", "Renumber");
    trigger(window, "Range", "Add SSE");
    EXPECT_EQ(dialogs.titles(), (QStringList{"Renumber seq", "Make SSE"}));
}

TEST_F(WindowMenus, SelectItemsAskTheirQuestions)
{
    ZEP::KALMO2 &window = open(alignment({"AC", "AD"}));
    DialogDriver dialogs;
    trigger(window, "Select", "ConservedN");
    trigger(window, "Select", "SubSequence");
    EXPECT_EQ(dialogs.titles(), (QStringList{"Number of conserved", "Select"}));
}

TEST_F(WindowMenus, ColorItemsRunTheirCommands)
{
    TAMBO::Alignment &shown = alignment({"AC", "AD"});
    shown.getItem(0, 1)->SetSelected(true);
    ZEP::KALMO2 &window = open(shown);
    const Color plain = shown.getItem(1, 1)->OwnColor();
    DialogDriver dialogs;
    const auto choose = [&dialogs](const QColor &color) {
        dialogs.expect([color](QDialog &dialog) {
            dynamic_cast<QColorDialog &>(dialog).setCurrentColor(color);
            dialog.accept();
        });
    };
    choose(Qt::red);
    trigger(window, "Color", "Selected");
    EXPECT_EQ(shown.getItem(0, 1)->OwnColor(), Color(0xff0000U));
    choose(Qt::blue);
    trigger(window, "Color", "Conserved");
    EXPECT_EQ(shown.getItem(0, 0)->OwnColor(), Color(0x0000ffU));
    EXPECT_EQ(shown.getItem(1, 0)->OwnColor(), Color(0x0000ffU));
    EXPECT_EQ(shown.getItem(0, 1)->OwnColor(), Color(0xff0000U));
    EXPECT_EQ(shown.getItem(1, 1)->OwnColor(), plain);
    choose(Qt::green);
    trigger(window, "Color", "ConservedN");
    EXPECT_EQ(dialogs.titles(),
              (QStringList{"Select Color", "Select Color", "Select Color", "Number of conserved"}));
    const RecordingSubscriber listener;
    trigger(window, "Color", "By Distance");
    EXPECT_EQ(listener.calls, Texts{"update"});
    EXPECT_EQ(dialogs.titles().size(), 4);
}

TEST_F(WindowMenus, KestramAsksForATemplate)
{
    qputenv("KESTRAM", "1");
    ZEP::KALMO2 &window = open(alignment({"AC", "AD"}));
    DialogDriver dialogs;
    trigger(window, "Model", "Kestram");
    EXPECT_EQ(dialogs.titles(), QStringList{"Structure required"});
}

TEST_F(WindowMenus, SaveAsksForAName)
{
    ZEP::KALMO2 &window = open(alignment({"AC"}));
    DialogDriver dialogs;
    bool asked = false;
    dialogs.expect(
        [&asked](QDialog &dialog) { asked = qobject_cast<QFileDialog *>(&dialog) != nullptr; });
    trigger(window, "&File", "Save");
    EXPECT_TRUE(asked);
}

TEST_F(WindowMenus, PrintItemsOpenThePrintDialog)
{
    ZEP::KALMO2 &window = open(alignment({"AC"}));
    DialogDriver dialogs;
    int asked = 0;
    for (const char *item : {"&Print Fat", "&Print Slim", "&Print BW"}) {
        dialogs.expect(
            [&asked](QDialog &dialog) { asked += dialog.inherits("QPrintDialog") ? 1 : 0; });
        trigger(window, "&File", item);
    }
    EXPECT_EQ(asked, 3);
}

TEST_F(WindowMenus, HelpShowsThePageOfTheEditor)
{
    setSettings("[KALMO2]\nHelp = editor.html\n");
    trigger(open(), "Help", "Show");
    QString page;
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (auto *help = qobject_cast<TAMBO::services::HelpWindow *>(widget))
            page = help->document().fileName();
    EXPECT_EQ(page, "editor.html");
}

TEST_F(WindowMenus, ByPropertyShowsTheColouringDialog)
{
    ZEP::KALMO2 &window = open();
    const WindowParts parts(window);
    for (int i = 0; i < 3; ++i) {
        parts.colors->hide();
        trigger(window, "Color", "By Property");
        EXPECT_TRUE(parts.colors->isVisible());
    }
    EXPECT_EQ(window.findChildren<ZEP::AcidColor *>().size(), 1);
}

TEST_F(WindowMenus, UnusedButtonsSaySo)
{
    ZEP::KALMO2 &window = open();
    for (const int button : {0, 1, 5, 10, 12, 999, -1, INT_MIN, INT_MAX}) {
        const ExpectMessage unused(QtDebugMsg, "Unused button.");
        pressButton(window, button);
    }
}

TEST_F(WindowMenus, ButtonsOpenTheirDialogs)
{
    ZEP::KALMO2 &window = open(alignment({"AC-D", "A-CD"}));
    DialogDriver dialogs;
    pressButton(window, 2);
    pressButton(window, 3);
    pressButton(window, 4);
    EXPECT_EQ(dialogs.titles(), (QStringList{"sequences", "alignment", "Select Alignment"}));
    const WindowParts parts(window);
    EXPECT_FALSE(parts.colors->isVisible());
    pressButton(window, 7);
    EXPECT_TRUE(parts.colors->isVisible());
}

TEST_F(WindowMenus, ButtonsRunTheirCommands)
{
    TAMBO::Alignment &shown = alignment({"AC-D", "A-CD"});
    ZEP::KALMO2 &window = open(shown);
    {
        DialogDriver dialogs;
        dialogs.expectRejected();
        dialogs.expectRejected();
        pressButton(window, 6);
        pressButton(window, 8);
        EXPECT_EQ(dialogs.titles(), (QStringList{"Select Color", "Select Color"}));
    }
    shown.range({1, 2});
    const ExpectMessage tooShort(QtDebugMsg, "Too short range");
    pressButton(window, 11);
}

TEST_F(WindowMenus, TheFontButtonIgnoresItsOtherArguments)
{
    ZEP::KALMO2 &window = open();
    DialogDriver dialogs;
    int fontDialogs = 0;
    for (int i = 0; i < 2; ++i)
        dialogs.expect([&](QDialog &dialog) {
            fontDialogs += qobject_cast<QFontDialog *>(&dialog) != nullptr ? 1 : 0;
        });
    pressButton(window, 9);
    call(window, "ButtonPressed", Q_ARG(int, 9), Q_ARG(int, 77), Q_ARG(bool, true));
    EXPECT_EQ(fontDialogs, 2);
}

} // namespace WindowMenusTest
