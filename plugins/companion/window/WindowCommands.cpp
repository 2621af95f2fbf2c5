// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowCommands.h"

#include "AlignmentWindow.h"
#include "Commands.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMainWindow>
#include <QMenu>

namespace companion {

WindowCommands::WindowCommands(TAMBO::AlignmentWindow &window, Companion &companion)
    : CellEventFilter(window, TAMBO::WindowArea::Corner), m_Companion(companion)
{
    for (const Command &command : commands()) {
        if (command.keys.isEmpty())
            continue;
        auto *const action = new QAction(command.text, this);
        action->setShortcuts(command.keys);
        connect(action, &QAction::triggered, this, [this, &command] { command.run(m_Companion); });
        window.mainWindow()->addAction(action);
    }
}

WindowCommands::~WindowCommands() = default;

bool WindowCommands::handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea, QEvent &event)
{
    if (event.type() != QEvent::ContextMenu)
        return false;
    auto *const menu = new QMenu(window.mainWindow());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fillMenu(*menu, [this] { return &m_Companion; });
    menu->popup(static_cast<const QContextMenuEvent &>(event).globalPos());
    return true;
}

} // namespace companion
