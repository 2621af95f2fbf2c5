// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of an alignment that are so like others that they may go, to look through and remove.
#pragma once

#include "AlignmentViewObserver.h"
#include "RedundancyModel.h"
#include "RedundancySearch.h"

#include <QDialog>

#include <functional>

class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QTableView;

namespace companion {

// It searches when it is made, and anew when another rule is chosen. What it has found is gone as
// soon as the alignment changes.
class RedundancyDialog : public QDialog, public TAMBO::AlignmentViewObserver
{
    Q_OBJECT

public:
    using Tell = std::function<void(const QString &)>;

    // Belongs to the window's own widget, and is closed with it.
    RedundancyDialog(TAMBO::AlignmentWindow &window, Tell tell);
    ~RedundancyDialog() override;

    [[nodiscard]] bool isSearching() const { return m_Search.isRunning(); }
    [[nodiscard]] RedundancyModel &model() noexcept { return *m_Model; }
    [[nodiscard]] QString stateText() const;
    // Those that are ticked, and the dialog is closed; false, and told, when nothing has changed.
    bool removeTicked();

    void alignmentShown() override;
    void layoutRebuilt() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void makeControls();
    void layOut();
    void search();
    void take();
    void giveUp(const QString &why);
    void showState();
    void showRow(const QModelIndex &index);
    [[nodiscard]] RedundancyRule rule() const;

    TAMBO::AlignmentWindow &m_Window;
    Tell m_Tell;
    RedundancySearch m_Search;
    RedundancyModel *m_Model;
    QDoubleSpinBox *m_Identity;
    QComboBox *m_Compared;
    QComboBox *m_Kept;
    QTableView *m_Table;
    QLabel *m_State;
    QProgressBar *m_Progress;
    QPushButton *m_Again;
    QPushButton *m_All;
    QPushButton *m_None;
    QPushButton *m_Remove;
};

} // namespace companion
