// SPDX-License-Identifier: GPL-3.0-or-later
// A menu of a plug-in in the menu bar of the workbench's main window.
#pragma once

#include "Export.h"

#include <QString>

#include <functional>

class QMenu;

// There as long as it exists; it may be a static object of the plug-in's library. Made and
// destroyed in the GUI thread.
class TAMBO_API WorkbenchMenu
{
public:
    // Gets the empty menu once there is a main window: at once, later, or never, as when a command
    // of the program runs without one. What it throws is logged. The menu, and all that is made as
    // its child, goes with the main window or with this.
    using Fill = std::function<void(QMenu &menu)>;

    // The title may have a "&" before the letter that opens it. Menus stand before Help, in the
    // order in which they were made.
    WorkbenchMenu(const QString &title, Fill fill);
    ~WorkbenchMenu();

    WorkbenchMenu(const WorkbenchMenu &) = delete;
    WorkbenchMenu &operator=(const WorkbenchMenu &) = delete;
};
