// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowCommands.h"

#include "AlignmentWindow.h"
#include "Commands.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>

namespace companion {

using TAMBO::WindowArea;

WindowCommands::WindowCommands(TAMBO::AlignmentWindow &window, Companion &companion)
    : CellEventFilter(window, WindowArea::Corner | WindowArea::Cells), m_Companion(companion)
{
    for (const WindowArea area : {WindowArea::Cells, WindowArea::Names, WindowArea::Header})
        window.areaWidget(area)->parentWidget()->installEventFilter(this);
    for (const Command &command : commands()) {
        if (command.keys.isEmpty())
            continue;
        auto *const action = new QAction(command.text, this);
        action->setShortcuts(command.keys);
        connect(action, &QAction::triggered, this, [this, &command] { command.run(m_Companion); });
        window.mainWindow()->addAction(action);
    }
}

WindowCommands::~WindowCommands()
{
    delete m_Menu;
}

void WindowCommands::showMenu(const QPoint &global)
{
    if (m_Menu == nullptr) {
        m_Menu = new QMenu(window()->mainWindow());
        fillMenu(*m_Menu, [this] { return &m_Companion; });
    }
    m_Menu->popup(global);
}

void WindowCommands::showMenuByKey()
{
    const QWidget &corner = *window()->areaWidget(WindowArea::Corner);
    showMenu(corner.mapToGlobal(corner.rect().center()));
}

bool WindowCommands::handle(TAMBO::AlignmentWindow &, WindowArea area, QEvent &event)
{
    if (area == WindowArea::Corner) {
        if (event.type() != QEvent::ContextMenu)
            return false;
        showMenu(static_cast<const QContextMenuEvent &>(event).globalPos());
        return true;
    }
    if (event.type() != QEvent::KeyPress)
        return false;
    // The toolkit makes no request for a menu of these on every system.
    const auto &key = static_cast<const QKeyEvent &>(event);
    if (key.key() != Qt::Key_F10 || key.modifiers() != Qt::ShiftModifier)
        return false;
    showMenuByKey();
    return true;
}

bool WindowCommands::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::ContextMenu ||
        static_cast<const QContextMenuEvent *>(event)->reason() != QContextMenuEvent::Keyboard)
        return QObject::eventFilter(watched, event);
    showMenuByKey();
    return true;
}

} // namespace companion
