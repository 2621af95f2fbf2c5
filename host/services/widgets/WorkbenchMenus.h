// SPDX-License-Identifier: GPL-3.0-or-later
// The menus that plug-ins have in the main window, whichever of the two comes first.
#pragma once

#include "WorkbenchMenu.h"

#include <QPointer>
#include <QString>

#include <vector>

class QAction;
class QMenu;
class QMenuBar;

namespace TAMBO::services {

class WorkbenchMenus
{
public:
    [[nodiscard]] static WorkbenchMenus &instance();

    void add(const WorkbenchMenu &owner, const QString &title, WorkbenchMenu::Fill fill);
    void remove(const WorkbenchMenu &owner);
    // That of the main window, which may go at any time; the menus come before the action.
    void setMenuBar(QMenuBar &bar, QAction *before);

private:
    struct Entry
    {
        const WorkbenchMenu *owner;
        QString title;
        WorkbenchMenu::Fill fill;
        QPointer<QMenu> menu;
    };

    void show(Entry &entry);

    std::vector<Entry> m_Entries;
    QPointer<QMenuBar> m_Bar;
    QPointer<QAction> m_Before;
};

} // namespace TAMBO::services
