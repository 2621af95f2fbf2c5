// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLists.h"
#include "Companion.h"
#include "Texts.h"

namespace companion {

std::vector<Command> zoomCommands()
{
    const QString menu = tr("&Zoom");
    return {
        {tr("Zoom &In"),
         tr("Show larger cells; Ctrl and the wheel do so around the pointer"),
         {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)},
         [](Companion &companion) { companion.zoom().in(); },
         false,
         menu},
        {tr("Zoom &Out"),
         tr("Show smaller cells, down to one pixel"),
         {QKeySequence(Qt::CTRL | Qt::Key_Minus)},
         [](Companion &companion) { companion.zoom().out(); },
         false,
         menu},
        {tr("&Normal Size"),
         tr("Show cells as large as the font asks"),
         {QKeySequence(Qt::CTRL | Qt::Key_0)},
         [](Companion &companion) { companion.zoom().reset(); },
         false,
         menu},
        {tr("Show All &Columns"),
         tr("Make cells so narrow that all columns have room, if they can be"),
         {QKeySequence(Qt::CTRL | Qt::Key_8)},
         [](Companion &companion) { companion.zoom().showAllColumns(); },
         false,
         menu},
        {tr("Show &All"),
         tr("Make cells so small that the whole alignment has room, if they can be"),
         {QKeySequence(Qt::CTRL | Qt::Key_9)},
         [](Companion &companion) { companion.zoom().showAll(); },
         false,
         menu},
    };
}

} // namespace companion
