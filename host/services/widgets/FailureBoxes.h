// SPDX-License-Identifier: GPL-3.0-or-later
// Tells the user of what failed in a box of its own, over the window that is being used.
#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>

class QMessageBox;
class QWidget;

namespace TAMBO::services {

class FailureBoxes : public QObject
{
    Q_OBJECT

public:
    // mainWindow: where a box stands when no window of the program is in use. Outlives the boxes.
    explicit FailureBoxes(QWidget &mainWindow);

    // headline: what was to be done and was not. causes: a line each, naming file and cause; those
    // of one command come together. Returns at once, what is there is usable meanwhile.
    void show(const QString &headline, const QStringList &causes);
    // The same over a certain window.
    static void showOver(QWidget *window, const QString &headline, const QStringList &causes);

    // A dialog that waits, else the window that the user is or was last in.
    [[nodiscard]] QWidget *windowInUse() const;

private:
    void noteActiveWindow();

    QWidget &m_MainWindow;
    QPointer<QWidget> m_LastActive;
};

} // namespace TAMBO::services
