// SPDX-License-Identifier: GPL-3.0-or-later
// What the windows of plug-ins show, as they say themselves.
#pragma once

#include "Export.h"

class QWidget;

namespace TAMBO {
class Compound;
}

class TAMBO_API ShownObjects
{
public:
    // The window shows the object from now on; null when it is empty. A window that is emptied
    // because the object is deleted gets it back when the deletion is undone, if it has the slot
    // GetAlignment() and says what it shows.
    static void Set(QWidget *window, TAMBO::Compound *object);
    // Null when the window is empty or has never said anything.
    static TAMBO::Compound *Of(const QWidget *window);
};
