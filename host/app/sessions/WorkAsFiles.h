// SPDX-License-Identifier: GPL-3.0-or-later
// The objects of a workbench as plain files in a folder, for work that cannot be brought back as it
// was, or that somebody else is to look at.
#pragma once

#include "Result.h"

#include <QString>
#include <QStringList>

namespace TAMBO {
class ObjectSpace;
}

namespace TAMBO::app {

struct WorkAsFiles
{
    // Of their own, with a text that says what is what.
    QString folder;
    int files = 0;
    // Of objects that could not be written.
    QStringList problems;
};

// Alignments and the sequences that no alignment shows as PIR, structures as mmCIF, in a new folder
// in that one. remarks: sentences for the text. Long work, which can be given up: nothing is left
// of the folder then.
[[nodiscard]] Result<WorkAsFiles> writeAsFiles(const ObjectSpace &space, const QString &parent,
                                               const QStringList &remarks = {});

} // namespace TAMBO::app
