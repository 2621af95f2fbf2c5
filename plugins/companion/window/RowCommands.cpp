// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLists.h"
#include "Companion.h"
#include "Texts.h"

namespace companion {

std::vector<Command> rowCommands()
{
    const QString menu = tr("&Rows");
    return {
        {tr("Move to &Top"),
         tr("Move the selected rows above all others"),
         {QKeySequence(Qt::ALT | Qt::Key_Home)},
         [](Companion &companion) { companion.rows().move(RowMove::ToTop); },
         false,
         menu},
        {tr("Move &Up"),
         tr("Move the selected rows up by one"),
         {QKeySequence(Qt::ALT | Qt::Key_Up)},
         [](Companion &companion) { companion.rows().move(RowMove::Up); },
         false,
         menu},
        {tr("Move &Down"),
         tr("Move the selected rows down by one"),
         {QKeySequence(Qt::ALT | Qt::Key_Down)},
         [](Companion &companion) { companion.rows().move(RowMove::Down); },
         false,
         menu},
        {tr("Sort by &Name"),
         tr("Put the rows into the order of their names, 2 before 10"),
         {},
         [](Companion &companion) { companion.rows().sortByName(); },
         false,
         menu},
        {tr("Sort by &Length"),
         tr("Put the rows with the most residues first"),
         {},
         [](Companion &companion) { companion.rows().sortByLength(); },
         false,
         menu},
        {tr("Sort by Identity to the &First"),
         tr("Put the rows that are most identical with the first one first"),
         {},
         [](Companion &companion) { companion.rows().sortByIdentity(0); },
         false,
         menu},
        {tr("Sort by Identity to the &Cursor's"),
         tr("Put the row of the cell cursor first, and behind it those that are most identical "
            "with it"),
         {},
         [](Companion &companion) {
             const CellCursor::Place &place = companion.cursor().place();
             companion.rows().sortByIdentity(place ? std::optional(place->row) : std::nullopt);
         },
         false,
         menu},
        {tr("&Group by Name…"),
         tr("Bring rows with like names together"),
         {},
         [](Companion &companion) { companion.rows().askForGroups(); },
         false,
         menu},
        {tr("Align to the R&est"),
         tr("Align the selected rows to the others with MAFFT; the others' columns stay together"),
         {QKeySequence(Qt::CTRL | Qt::Key_R)},
         [](Companion &companion) { companion.rows().alignToRest(false); },
         false,
         menu},
        {tr("Align to the Rest &without New Columns"),
         tr("The same without new columns; nothing changes when residues would have no place"),
         {},
         [](Companion &companion) { companion.rows().alignToRest(true); },
         false,
         menu},
        {tr("&Add and Align…"),
         tr("Choose open sequences, which become rows and are aligned to the others with MAFFT; "
            "the "
            "others' columns stay together"),
         {QKeySequence(Qt::CTRL | Qt::Key_J)},
         [](Companion &companion) { companion.rows().addAndAlign(); },
         false,
         menu},
        {tr("Add F&ile and Align…"),
         tr("Open files, whose sequences become rows and are aligned to the others in the same "
            "way"),
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_J)},
         [](Companion &companion) { companion.rows().addFileAndAlign(); },
         false,
         menu},
        {tr("New Alignment of &Selected"),
         tr("Make an alignment of the selected rows, without the columns that become empty"),
         {},
         [](Companion &companion) { companion.rows().newAlignmentOfSelected(); },
         false,
         menu},
        {tr("Remove &Redundant…"),
         tr("Look for rows that are nearly identical with others, and remove them"),
         {},
         [](Companion &companion) { companion.showRedundancy(); },
         false,
         menu},
        {tr("Find Du&plicates…"),
         tr("Look for rows with the same name, and for those with the same sequence"),
         {},
         [](Companion &companion) { companion.showDuplicates(); },
         false,
         menu},
    };
}

} // namespace companion
