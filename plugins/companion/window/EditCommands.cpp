// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLists.h"
#include "Companion.h"
#include "Texts.h"

namespace companion {

namespace {

// The key is the cells' own: elsewhere in the window it has another meaning.
Command gapCommand(const QString &text, const QString &key, const QString &toolTip,
                   GapEdit::Kind kind, long count = 1)
{
    return {key.isEmpty() ? text : text + u'\t' + key,
            toolTip,
            {},
            [kind, count](Companion &companion) { companion.editing().keys().edit(kind, count); },
            false,
            tr("&Edit")};
}

} // namespace

std::vector<Command> editCommands()
{
    using Kind = GapEdit::Kind;
    return {
        gapCommand(tr("Insert &Gap"), tr("Space"),
                   tr("Put a gap in at the cell cursor, in all rows of its block"), Kind::Insert),
        gapCommand(tr("Remove Gap &Before"), tr("Backspace"),
                   tr("Take out the gap directly before the cell cursor, or its block"),
                   Kind::RemoveBefore),
        gapCommand(tr("Remove Gap Be&hind"), tr("Delete"),
                   tr("Take out the gap at the cell cursor, or at the first column of its block"),
                   Kind::RemoveBehind),
        gapCommand(tr("Slide &Left"), tr("Alt+Left"),
                   tr("Move the residues at the cell cursor, or the block, into the gaps before"),
                   Kind::Slide, -1),
        gapCommand(tr("Slide &Right"), tr("Alt+Right"),
                   tr("Move the residues at the cell cursor, or the block, into the gaps behind"),
                   Kind::Slide),
        gapCommand(tr("&Push to the Left"), {},
                   tr("Move the residues of the block to its first column, the gaps behind them"),
                   Kind::PushLeft),
        gapCommand(tr("P&ush to the Right"), {},
                   tr("Move the residues of the block to its last column, the gaps before them"),
                   Kind::PushRight),
        {tr("R&epeat") + u'\t' + tr("Enter"),
         tr("Make the last edit of gaps once more, at the cell cursor"),
         {},
         [](Companion &companion) { companion.editing().keys().repeat(); },
         false,
         tr("&Edit")},
        {tr("&Copy as FASTA"),
         tr("Put the block, or else the selected rows, on the clipboard as FASTA"),
         {QKeySequence(Qt::CTRL | Qt::Key_C)},
         [](Companion &companion) { companion.copyAsFasta(); },
         false,
         tr("&Edit"),
         true},
        {tr("&Keep Columns"),
         tr("Let the columns of the block, or else of the range, stay where they are when gaps are "
            "edited"),
         {},
         [](Companion &companion) { companion.editing().kept().keep(); },
         false,
         tr("&Edit")},
        {tr("Keep Columns &No Longer"),
         tr("Let gaps move all columns again"),
         {},
         [](Companion &companion) { companion.editing().kept().keepNoLonger(); },
         false,
         tr("&Edit")},
    };
}

} // namespace companion
