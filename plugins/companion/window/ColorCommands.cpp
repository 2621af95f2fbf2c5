// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLists.h"
#include "Companion.h"
#include "Texts.h"

namespace companion {

std::vector<Command> colorCommands()
{
    const QString menu = tr("Colors b&y Column");
    return {
        {tr("By &Identity"),
         tr("Color the most frequent residue of each column by its share"),
         {},
         [](Companion &companion) { companion.colorBy(ColumnRule::Identity); },
         false,
         menu},
        {tr("By C&onservation"),
         tr("Color columns by their conservation, on white"),
         {},
         [](Companion &companion) { companion.colorBy(ColumnRule::Conservation); },
         false,
         menu},
        {tr("By &BLOSUM62"),
         tr("Color residues that are alike in their column"),
         {},
         [](Companion &companion) { companion.colorBy(ColumnRule::Blosum62); },
         false,
         menu},
        {tr("As &Clustal X"),
         tr("Color residues by their kind where the column has enough of it"),
         {},
         [](Companion &companion) { companion.colorBy(ColumnRule::ClustalX); },
         false,
         menu},
    };
}

} // namespace companion
