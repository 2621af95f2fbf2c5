// SPDX-License-Identifier: GPL-3.0-or-later
// The log as the user sees it: a list that follows its end, with a filter above it.
#pragma once

#include <QModelIndex>
#include <QWidget>

class QComboBox;
class QLineEdit;
class QTreeView;

namespace TAMBO::app {

class LogModel;
class LogFilter;

class LogPanel : public QWidget
{
    Q_OBJECT

public:
    // The model outlives the panel.
    explicit LogPanel(LogModel &model, QWidget *parent = nullptr);
    ~LogPanel() override;

private:
    // In full, in a window of its own; of a fold all lines.
    void openEntry(const QModelIndex &entry);
    void copySelected() const;
    void filterBySeverity(int choice);
    // While something is looked for, what is found in folds is in sight.
    void followFilter();

    LogFilter *m_Filter = nullptr;
    QComboBox *m_Severity = nullptr;
    QLineEdit *m_Text = nullptr;
    QTreeView *m_List = nullptr;
    bool m_FollowsEnd = true;
};

} // namespace TAMBO::app
