// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLists.h"
#include "Companion.h"
#include "Texts.h"

namespace companion {

std::vector<Command> guideCommands()
{
    const QString menu = tr("Wit&h Structures");
    return {
        switching([](Companion &companion) { return companion.guide().isOn(); },
                  {tr("&Spread While Dragging"),
                   tr("Say while gaps are dragged how far apart residues of a column would lie, "
                      "and which "
                      "helix or strand would be split; or do not"),
                   {},
                   [](Companion &companion) {
                       companion.guide().toggle();
                       companion.tell(companion.guide().isOn()
                                          ? tr("The spread is shown while gaps are dragged")
                                          : tr("The spread is not shown while gaps are dragged"));
                   },
                   false,
                   menu}),
        switching([](Companion &companion) { return companion.refit().isShown(); },
                  {tr("&Keep Superposed"),
                   tr("Move the structures along with edits of the alignment, so that they stay "
                      "superposed "
                      "on it; or no longer"),
                   {},
                   [](Companion &companion) {
                       if (const QString outcome = companion.refit().toggle(); !outcome.isEmpty())
                           companion.tell(outcome);
                   },
                   false,
                   menu}),
    };
}

} // namespace companion
