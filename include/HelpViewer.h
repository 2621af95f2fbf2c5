// SPDX-License-Identifier: GPL-3.0-or-later
// The help viewer of the workbench.
#pragma once

#include "Export.h"

#include <QString>

class TAMBO_API HelpViewer
{
public:
    // document: a page of the installed help, such as "editor.html"; an empty or unknown one shows
    // the contents page.
    static void Show(const QString &document);
};
