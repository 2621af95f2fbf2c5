// SPDX-License-Identifier: GPL-3.0-or-later
// The undo and redo commands that all windows of the workbench share, with their keys. Disabled
// until the workbench connects and enables them.
#pragma once

class QAction;

namespace TAMBO::services {

class UndoActions
{
public:
    // Owned by the application object; made when first asked for.
    static QAction *undo();
    static QAction *redo();
};

} // namespace TAMBO::services
