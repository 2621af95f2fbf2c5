// SPDX-License-Identifier: GPL-3.0-or-later
// The help viewer of the workbench.
#pragma once

#include "Export.h"

#include <QString>

class TAMBO_API HelpViewer
{
public:
    // document: a page of the installed help, such as "editor.html", or of a plug-in, as its
    // descriptor names it or by the file's name alone; an empty or unknown one shows the contents
    // page.
    static void Show(const QString &document);
};
