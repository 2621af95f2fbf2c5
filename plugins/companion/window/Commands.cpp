// SPDX-License-Identifier: GPL-3.0-or-later
#include "Commands.h"

#include "Companion.h"
#include "Texts.h"
#include "WholeSelection.h"

#include <QAction>
#include <QMenu>

namespace companion {

namespace {

std::vector<Command> makeCommands()
{
    return {
        {tr("&Find…"),
         tr("Find names and pieces of sequences"),
         {QKeySequence(Qt::CTRL | Qt::Key_F)},
         [](Companion &companion) { companion.find().ask(); }},
        {tr("Find Ne&xt"),
         tr("Go to the next hit"),
         {QKeySequence(Qt::Key_F3)},
         [](Companion &companion) { companion.find().next(); }},
        {tr("Find Previo&us"),
         tr("Go to the previous hit"),
         {QKeySequence(Qt::SHIFT | Qt::Key_F3)},
         [](Companion &companion) { companion.find().previous(); }},
        {tr("&Go To…"),
         tr("Go to a column, to the row of a name, or to a residue by chain and number"),
         {QKeySequence(Qt::CTRL | Qt::Key_G)},
         [](Companion &companion) { companion.goTo().ask(); }},
        {tr("&None"),
         tr("Take everything out of the selection, in all windows"),
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A)},
         [](Companion &) { selectNothing(); },
         false,
         tr("Se&lect"),
         true},
        {tr("&All"),
         tr("Select all residues of the alignment"),
         {},
         [](Companion &companion) { companion.selectAll(); },
         false,
         tr("Se&lect")},
        {tr("&Invert"),
         tr("Select the residues of the alignment that are not selected, instead of those that "
            "are"),
         {QKeySequence(Qt::CTRL | Qt::Key_I)},
         [](Companion &companion) { companion.invertSelection(); },
         false,
         tr("Se&lect")},
        {tr("&Block…"),
         tr("Select rows and columns by their numbers"),
         {},
         [](Companion &companion) { companion.selecting().ask(SelectBy::Block); },
         false,
         tr("Se&lect")},
        {tr("Rows &Like This One…"),
         tr("Select the rows that are identical enough with the one under the pointer"),
         {QKeySequence(Qt::CTRL | Qt::Key_L)},
         [](Companion &companion) { companion.selecting().ask(SelectBy::Likeness); },
         false,
         tr("Se&lect")},
        {tr("Rows by Na&me…"),
         tr("Select the rows whose names are like a pattern"),
         {},
         [](Companion &companion) { companion.selecting().ask(SelectBy::Names); },
         false,
         tr("Se&lect")},
        {tr("Columns by &Conservation…"),
         tr("Select the columns that are as conserved, or as little"),
         {},
         [](Companion &companion) { companion.selecting().ask(SelectBy::Conservation); },
         false,
         tr("Se&lect")},
        {tr("Columns by &Gaps…"),
         tr("Select the columns in which as many rows have a gap, or as few"),
         {},
         [](Companion &companion) { companion.selecting().ask(SelectBy::Gaps); },
         false,
         tr("Se&lect")},
        {tr("Zoom &In"),
         tr("Show larger cells; Ctrl and the wheel do so around the pointer"),
         {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)},
         [](Companion &companion) { companion.zoom().in(); },
         true},
        {tr("Zoom &Out"),
         tr("Show smaller cells, down to one pixel"),
         {QKeySequence(Qt::CTRL | Qt::Key_Minus)},
         [](Companion &companion) { companion.zoom().out(); }},
        {tr("&Normal Size"),
         tr("Show cells as large as the font asks"),
         {QKeySequence(Qt::CTRL | Qt::Key_0)},
         [](Companion &companion) { companion.zoom().reset(); }},
        {tr("S&how All Columns"),
         tr("Make cells so narrow that all columns have room, if they can be"),
         {QKeySequence(Qt::CTRL | Qt::Key_8)},
         [](Companion &companion) { companion.zoom().showAllColumns(); }},
        {tr("Show &All"),
         tr("Make cells so small that the whole alignment has room, if they can be"),
         {QKeySequence(Qt::CTRL | Qt::Key_9)},
         [](Companion &companion) { companion.zoom().showAll(); }},
        {tr("O&verview"),
         tr("Show or hide the whole alignment as a picture"),
         {QKeySequence(Qt::CTRL | Qt::Key_M)},
         [](Companion &companion) { companion.overview().toggle(); }},
        {tr("&Tracks"),
         tr("Show tracks along the columns, such as conservation and a logo, or take them away"),
         {QKeySequence(Qt::CTRL | Qt::Key_T)},
         [](Companion &companion) { companion.tracks().toggle(); },
         false,
         tr("Trac&ks")},
        {tr("Tracks of &Selected Rows"),
         tr("Show secondary structure and annotation of the rows with selected residues"),
         {},
         [](Companion &companion) { companion.tracks().chooseRows(); },
         false,
         tr("Trac&ks")},
        {tr("Tracks of &No Row"),
         tr("Take the tracks of rows away"),
         {},
         [](Companion &companion) { companion.tracks().giveUpRows(); },
         false,
         tr("Trac&ks")},
        {tr("&Structure Marks"),
         tr("Mark letters that differ from the structure of their row, and residues without "
            "coordinates, or leave that out"),
         {},
         [](Companion &companion) { companion.marks().toggle(); }},
        {tr("&Wrapped View"),
         tr("Show the whole alignment in a window, in blocks below each other"),
         {QKeySequence(Qt::CTRL | Qt::Key_B)},
         [](Companion &companion) { companion.showWrapped(); },
         false,
         tr("&Pictures and Print")},
        {tr("&Export Pages…"),
         tr("Write the alignment as it is seen into a PDF, SVG, PNG or HTML file"),
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P)},
         [](Companion &companion) { companion.askForPages(PageDialog::For::Export); },
         false,
         tr("&Pictures and Print")},
        {tr("&Print Pages…"),
         tr("Print the alignment as it is seen"),
         {QKeySequence(Qt::CTRL | Qt::Key_P)},
         [](Companion &companion) { companion.askForPages(PageDialog::For::Print); },
         false,
         tr("&Pictures and Print")},
        {tr("Color by I&dentity"),
         tr("Color the most frequent residue of each column by its share"),
         {},
         [](Companion &companion) { companion.colorBy(ColumnRule::Identity); },
         true},
        {tr("Color by &BLOSUM62"),
         tr("Color residues that are alike in their column"),
         {},
         [](Companion &companion) { companion.colorBy(ColumnRule::Blosum62); }},
        {tr("Color as &Clustal X"),
         tr("Color residues by their kind where the column has enough of it"),
         {},
         [](Companion &companion) { companion.colorBy(ColumnRule::ClustalX); }},
        {tr("Iden&tities…"),
         tr("Show the identities of all pairs of rows in a table"),
         {},
         [](Companion &companion) { companion.showPairs(); }},
        {tr("Show &Tree"),
         tr("Show the tree of the rows beside their names, or take it away"),
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_T)},
         [](Companion &companion) { companion.tree().toggle(); },
         true,
         tr("Tr&ee")},
        {tr("&Compute Tree"),
         tr("Make a tree of the rows as they are now"),
         {},
         [](Companion &companion) { companion.tree().compute(); },
         false,
         tr("Tr&ee")},
        {tr("&Sort Rows by Tree"),
         tr("Put the rows into the order of the tree"),
         {},
         [](Companion &companion) { companion.tree().sortRows(); },
         false,
         tr("Tr&ee")},
        {tr("&Open Tree…"),
         tr("Show a tree of the rows that is in a Newick file"),
         {},
         [](Companion &companion) { companion.tree().askAndOpen(); },
         false,
         tr("Tr&ee")},
        {tr("Sa&ve Tree…"),
         tr("Write the tree into a Newick file"),
         {},
         [](Companion &companion) { companion.tree().askAndSave(); },
         false,
         tr("Tr&ee")},
        {tr("Fit Na&mes"),
         tr("Make the names as wide as the longest one that is to be seen"),
         {},
         [](Companion &companion) { companion.names().fitVisible(); },
         true},
        {tr("Na&rrow Names"),
         tr("Make the names eight cells wide"),
         {},
         [](Companion &companion) { companion.names().reset(); }},
        {tr("Cell &Cursor"),
         tr("Read and select cells by keys: arrows, Home, End, pages, and Space; or no longer"),
         {QKeySequence(Qt::Key_F7)},
         [](Companion &companion) { companion.cursor().toggle(); },
         false,
         tr("Ke&yboard")},
        {tr("&Next Part of the Window"),
         tr("Give the keyboard to the next one of cells, tool bars and docks; Escape gives it "
            "back"),
         {QKeySequence(Qt::Key_F6)},
         [](Companion &companion) { companion.stops().next(); },
         false,
         tr("Ke&yboard")},
        {tr("&Previous Part of the Window"),
         tr("Give the keyboard to the one before"),
         {QKeySequence(Qt::SHIFT | Qt::Key_F6)},
         [](Companion &companion) { companion.stops().previous(); },
         false,
         tr("Ke&yboard")},
    };
}

// Also those of its submenus.
void enableAll(const QMenu &menu, bool isEnabled)
{
    for (QAction *const action : menu.actions()) {
        if (const QMenu *const submenu = action->menu())
            enableAll(*submenu, isEnabled);
        action->setEnabled(isEnabled);
    }
}

// The one at the end of the menu, if it has the title; else a new one.
QMenu *submenuOf(QMenu &menu, const QString &title)
{
    const QAction *const last = menu.actions().isEmpty() ? nullptr : menu.actions().constLast();
    return last != nullptr && last->menu() != nullptr && last->menu()->title() == title
               ? last->menu()
               : menu.addMenu(title);
}

} // namespace

const std::vector<Command> &commands()
{
    static const std::vector<Command> kCommands = makeCommands();
    return kCommands;
}

void fillMenu(QMenu &menu, const std::function<Companion *()> &target)
{
    for (const Command &command : commands()) {
        if (command.beginsGroup)
            menu.addSeparator();
        QMenu &place = command.menu.isEmpty() ? menu : *submenuOf(menu, command.menu);
        QAction *const action = place.addAction(command.text);
        action->setToolTip(command.toolTip);
        // Two actions of a window with one key would both get nothing of it.
        if (command.hasKeysOfWorkbench)
            action->setText(command.text + u'\t' +
                            command.keys.constFirst().toString(QKeySequence::NativeText));
        else
            action->setShortcuts(command.keys);
        QObject::connect(action, &QAction::triggered, &menu, [&command, target] {
            if (Companion *const companion = target())
                command.run(*companion);
        });
    }
    QObject::connect(&menu, &QMenu::aboutToShow, &menu,
                     [&menu, target] { enableAll(menu, target() != nullptr); });
    // Keys reach what is greyed out only while the menu is open.
    QObject::connect(&menu, &QMenu::aboutToHide, &menu, [&menu] { enableAll(menu, true); });
}

} // namespace companion
