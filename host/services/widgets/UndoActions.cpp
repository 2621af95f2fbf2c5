// SPDX-License-Identifier: GPL-3.0-or-later
#include "UndoActions.h"

#include <QAction>
#include <QCoreApplication>
#include <QKeySequence>
#include <QList>
#include <QPointer>

namespace TAMBO::services {

namespace {

QAction *theAction(QPointer<QAction> &action, const char *text, const QList<QKeySequence> &keys)
{
    if (!action) {
        action = new QAction(QCoreApplication::translate("UndoActions", text), qApp);
        action->setShortcuts(keys);
        action->setEnabled(false);
    }
    return action;
}

} // namespace

QAction *UndoActions::undo()
{
    static QPointer<QAction> action;
    return theAction(action, "&Undo", {QKeySequence(Qt::CTRL | Qt::Key_Z)});
}

QAction *UndoActions::redo()
{
    static QPointer<QAction> action;
    return theAction(
        action, "&Redo",
        {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
}

} // namespace TAMBO::services
