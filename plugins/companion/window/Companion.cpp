// SPDX-License-Identifier: GPL-3.0-or-later
#include "Companion.h"

#include "AlignmentWindow.h"
#include "Commands.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMainWindow>
#include <QMenu>

namespace companion {

Companion::Companion(TAMBO::AlignmentWindow &window)
    : CellEventFilter(window, TAMBO::WindowArea::Corner),
      m_Names(window),
      m_Zoom(window),
      m_Place(window),
      m_GoTo(new GoToBar(window))
{
    for (const Command &command : commands()) {
        if (command.keys.isEmpty())
            continue;
        auto *const action = new QAction(command.text, this);
        action->setShortcuts(command.keys);
        connect(action, &QAction::triggered, this, [this, &command] { command.run(*this); });
        window.mainWindow()->addAction(action);
    }
}

// It goes before the window does.
Companion::~Companion()
{
    delete m_GoTo;
}

bool Companion::handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea, QEvent &event)
{
    if (event.type() != QEvent::ContextMenu)
        return false;
    auto *const menu = new QMenu(window.mainWindow());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fillMenu(*menu, [this] { return this; });
    menu->popup(static_cast<const QContextMenuEvent &>(event).globalPos());
    return true;
}

} // namespace companion
