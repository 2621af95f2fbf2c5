// SPDX-License-Identifier: GPL-3.0-or-later
// The list of undo steps; a click goes back or forward to the state after a step.
#pragma once

#include <QWidget>

class QLabel;
class QListView;

namespace TAMBO::app {

class HistoryModel;
class UndoCommands;

class HistoryPanel : public QWidget
{
    Q_OBJECT

public:
    // The commands outlive the panel.
    explicit HistoryPanel(UndoCommands &undo, QWidget *parent = nullptr);
    ~HistoryPanel() override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void refresh();

    UndoCommands &m_Undo;
    HistoryModel *m_Model = nullptr;
    QListView *m_List = nullptr;
    QLabel *m_Memory = nullptr;
};

} // namespace TAMBO::app
