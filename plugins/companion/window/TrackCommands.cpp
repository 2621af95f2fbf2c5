// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLists.h"
#include "Companion.h"
#include "Texts.h"

namespace companion {

std::vector<Command> trackCommands()
{
    const QString menu = tr("Trac&ks");
    return {
        switching([](Companion &companion) { return !companion.tracks().isHidden(); },
                  {tr("&Tracks"),
                   tr("Show tracks along the columns, such as conservation and a logo, or take "
                      "them away"),
                   {QKeySequence(Qt::CTRL | Qt::Key_T)},
                   [](Companion &companion) { companion.tracks().toggle(); },
                   false,
                   menu}),
        {tr("Tracks of &Selected Rows"),
         tr("Show secondary structure and annotation of the rows with selected residues"),
         {},
         [](Companion &companion) { companion.tracks().chooseRows(); },
         false,
         menu},
        {tr("Tracks of &No Row"),
         tr("Take the tracks of rows away"),
         {},
         [](Companion &companion) { companion.tracks().giveUpRows(); },
         false,
         menu},
    };
}

} // namespace companion
