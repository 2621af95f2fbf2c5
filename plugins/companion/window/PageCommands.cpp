// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLists.h"
#include "Companion.h"
#include "Texts.h"

namespace companion {

std::vector<Command> pageCommands()
{
    const QString menu = tr("Pictures an&d Print");
    return {
        {tr("&Wrapped View"),
         tr("Show the whole alignment in a window, in blocks below each other"),
         {QKeySequence(Qt::CTRL | Qt::Key_B)},
         [](Companion &companion) { companion.showWrapped(); },
         false,
         menu},
        {tr("&Export Pages…"),
         tr("Write the alignment as it is seen into a PDF, SVG, PNG or HTML file"),
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P)},
         [](Companion &companion) { companion.askForPages(PageDialog::For::Export); },
         false,
         menu},
        {tr("&Print Pages…"),
         tr("Print the alignment as it is seen"),
         {QKeySequence(Qt::CTRL | Qt::Key_P)},
         [](Companion &companion) { companion.askForPages(PageDialog::For::Print); },
         false,
         menu},
    };
}

} // namespace companion
