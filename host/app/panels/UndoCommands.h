// SPDX-License-Identifier: GPL-3.0-or-later
// Ties the history to the undo and redo actions of all windows, and tells views of it when to look
// again.
#pragma once

#include "History.h"

#include <QObject>
#include <QTimer>

namespace TAMBO::app {

class UndoCommands : public QObject
{
    Q_OBJECT

public:
    // Records from now on; history outlives this.
    explicit UndoCommands(History &history, QObject *parent = nullptr);
    ~UndoCommands() override;

    [[nodiscard]] History &history() noexcept { return m_History; }
    // From the settings: General, UndoMemory, in megabytes.
    void readLimit();

signals:
    // Once per run of the event loop, however many steps were recorded.
    void changed();

private:
    void historyChanged();
    void describe();

    History &m_History;
    QTimer m_Timer;
};

} // namespace TAMBO::app
