// SPDX-License-Identifier: GPL-3.0-or-later
// Commands of an alignment window that end without a word when something is missing, and drags that
// move nothing: says what was missing, in the window's line, in the log, and in the workbench's
// status line, which names the window.
#pragma once

#include "AlignmentViewObserver.h"
#include "CellEventFilter.h"

#include <QEvent>
#include <QObject>
#include <QString>

#include <functional>

class QAction;

namespace companion {

// Of the menus and tool bars that the window has when this is made.
class QuietCommands : public TAMBO::AlignmentViewObserver, public TAMBO::CellEventFilter
{
public:
    // show: in the window's own line.
    QuietCommands(TAMBO::AlignmentWindow &window, std::function<void(const QString &)> show);
    ~QuietCommands() override;

    void gapDragEnded(const TAMBO::GapDrag &drag) override;
    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea area, QEvent &event) override;

private:
    void followMenus();
    void followToolBars();
    void begins(const QString &menu, const QString &command);
    // hint: what to do about it, which has no room in the status line.
    void tell(const QString &what, const QString &hint = {});

    std::function<void(const QString &)> m_Show;
    // Of the mouse or the keyboard, in the cells.
    QEvent::Type m_LastEvent = QEvent::None;
    // For connections, which end with it.
    QObject m_Context;
};

} // namespace companion
