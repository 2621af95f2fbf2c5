// SPDX-License-Identifier: GPL-3.0-or-later
#include "Commands.h"

#include "CommandLists.h"
#include "Companion.h"
#include "PlainText.h"
#include "Texts.h"

#include <QAction>
#include <QMenu>

#include <algorithm>
#include <iterator>
#include <utility>

namespace companion {

namespace {

Command overviewCommand()
{
    return switching([](Companion &companion) { return !companion.overview().isHidden(); },
                     {tr("&Overview"),
                      tr("Show or hide the whole alignment as a picture"),
                      {QKeySequence(Qt::CTRL | Qt::Key_M)},
                      [](Companion &companion) { companion.overview().toggle(); }});
}

Command marksCommand()
{
    return switching([](Companion &companion) { return companion.marks().isOn(); },
                     {tr("&Structure Marks"),
                      tr("Mark letters that differ from the structure of their row, and residues "
                         "without coordinates, or leave that out"),
                      {},
                      [](Companion &companion) { companion.marks().toggle(); }});
}

Command scoreCommand()
{
    return {tr("&Color by Model Score"),
            tr("Color the residues of models by the modelling engine's score of them"),
            {},
            [](Companion &companion) { companion.colorByModelScore(); },
            false,
            {},
            false,
            {},
            [](const Companion &companion) { return companion.lackOfModelScores(); }};
}

// It does the same as Save As of the workbench, for the alignment that is looked at.
Command saveCommand()
{
    return {tr("Sa&ve As…"),
            tr("Save the alignment that is shown, as Save As in the workbench's window"),
            {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S)},
            [](Companion &companion) { companion.save(); },
            false,
            {},
            true};
}

Command legendCommand()
{
    return switching([](Companion &companion) { return companion.showsLegend(); },
                     {tr("Sho&w Color Legend"),
                      tr("Show what the present colors mean, or no longer"),
                      {},
                      [](Companion &companion) { companion.toggleLegend(); }});
}

// Of the workbench's window it is the same key, for what is picked there.
Command exportCommand()
{
    return {tr("E&xport…"),
            tr("Write the alignment that is shown into a file of another format"),
            {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E)},
            [](Companion &companion) { companion.exportShown(); },
            false,
            {},
            true};
}

Command identitiesCommand()
{
    return {tr("&Identities…"),
            tr("Show the identities of all pairs of rows in a table"),
            {},
            [](Companion &companion) { companion.showPairs(); }};
}

void append(std::vector<Command> &all, std::vector<Command> list, bool beginsGroup = false)
{
    list.front().beginsGroup = beginsGroup;
    std::ranges::move(list, std::back_inserter(all));
}

std::vector<Command> makeCommands()
{
    std::vector<Command> all = findCommands();
    append(all, selectCommands());
    append(all, editCommands());
    append(all, zoomCommands(), true);
    append(all, {overviewCommand()});
    append(all, trackCommands());
    append(all, {marksCommand()});
    append(all, guideCommands());
    append(all, pageCommands());
    append(all, {saveCommand()});
    append(all, {exportCommand()});
    append(all, rowCommands(), true);
    append(all, columnCommands());
    append(all, colorCommands(), true);
    append(all, {scoreCommand()});
    append(all, {legendCommand()});
    append(all, {identitiesCommand()});
    append(all, compareCommands());
    append(all, treeCommands());
    append(all, nameCommands(), true);
    append(all, keyboardCommands());
    return all;
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

// Those of commands that a menu asks when it opens.
using Followed = std::vector<std::pair<QAction *, const Command *>>;

void showSwitches(const Followed &switches, Companion *companion)
{
    for (const auto &[action, command] : switches)
        action->setChecked(companion != nullptr && command->isOn(*companion));
}

// Why they can do nothing now.
void showLacks(const Followed &lacking, const Companion &companion)
{
    for (const auto &[action, command] : lacking) {
        const QString lack = command->lack(companion);
        action->setEnabled(lack.isEmpty());
        action->setToolTip(lack.isEmpty() ? command->toolTip : TAMBO::plainToolTip(lack));
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
    Followed switches;
    Followed lacking;
    for (const Command &command : commands()) {
        if (command.beginsGroup)
            menu.addSeparator();
        QMenu &place = command.menu.isEmpty() ? menu : *submenuOf(menu, command.menu);
        QAction *const action = place.addAction(command.text);
        action->setToolTip(command.toolTip);
        if (command.lack)
            lacking.emplace_back(action, &command);
        // Two actions of a window with one key would both get nothing of it.
        if (command.hasKeysOfWorkbench)
            action->setText(command.text + u'\t' +
                            command.keys.constFirst().toString(QKeySequence::NativeText));
        else
            action->setShortcuts(command.keys);
        action->setCheckable(bool(command.isOn));
        if (command.isOn)
            switches.emplace_back(action, &command);
        QObject::connect(action, &QAction::triggered, &menu, [&command, target] {
            if (Companion *const companion = target())
                command.run(*companion);
        });
    }
    menu.setToolTipsVisible(true);
    QObject::connect(&menu, &QMenu::aboutToShow, &menu, [&menu, target, switches, lacking] {
        Companion *const companion = target();
        enableAll(menu, companion != nullptr);
        showSwitches(switches, companion);
        if (companion != nullptr)
            showLacks(lacking, *companion);
    });
    // Keys reach what is greyed out only while the menu is open.
    QObject::connect(&menu, &QMenu::aboutToHide, &menu, [&menu] { enableAll(menu, true); });
}

} // namespace companion
