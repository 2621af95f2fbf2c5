// SPDX-License-Identifier: GPL-3.0-or-later
// What the workbench knows about printing, and is told of it.
#pragma once

#include "Export.h"

#include <QString>

namespace TAMBO {
class Compound;
}

class TAMBO_API Printouts
{
public:
    // The folder to offer for a file that shows the object: the one last printed to, else that of
    // the file that the object is from. Absolute.
    [[nodiscard]] static QString Folder(const TAMBO::Compound &object);

    // What became of a print; the workbench tells the user.
    static void Written(const QString &path);
    static void Sent(const QString &printer);
    // cause: a sentence.
    static void Refused(const QString &cause);
};
