// SPDX-License-Identifier: GPL-3.0-or-later
// Dialogs come up over the window that they were called from, and where a user has moved one, it
// comes up as far from its caller the next time, in the size that it had.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class QDialog;
class QWidget;

namespace TAMBO::services {

// Watches all dialogs of the application while it lives. Those that remember their place
// themselves, BaseDialog, are only put over the window in use when they have no other; questions
// and progress are never remembered.
class DialogPlaces : public QObject
{
public:
    DialogPlaces();
    ~DialogPlaces() override;

    // Of a dialog that is about to be shown; the caller may be null or invisible: the screen then.
    static void comeUp(QDialog &dialog, QWidget *caller, const QString &key);
    // Before it is hidden. Kept only when the user has moved it, or made it larger or smaller.
    static void leave(const QDialog &dialog);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] QWidget *callerOf(const QDialog &dialog) const;

    // The last one that was no dialog.
    QPointer<QWidget> m_LastActive;
};

} // namespace TAMBO::services
