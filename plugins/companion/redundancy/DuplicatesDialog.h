// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of an alignment that have the same name, or the same sequence, to go to and to select.
#pragma once

#include "AlignmentViewObserver.h"
#include "DuplicateModel.h"

#include <QDialog>

#include <functional>

class QComboBox;
class QLabel;
class QPushButton;
class QTableView;

namespace companion {

// Shows what has been found; that is gone as soon as the alignment changes.
class DuplicatesDialog : public QDialog, public TAMBO::AlignmentViewObserver
{
    Q_OBJECT

public:
    using Tell = std::function<void(const QString &)>;

    // Belongs to the window's own widget, and is closed with it. What was found is of the alignment
    // that the window shows.
    DuplicatesDialog(TAMBO::AlignmentWindow &window, DuplicateRows found, Tell tell);
    ~DuplicatesDialog() override;

    [[nodiscard]] DuplicateModel &model() noexcept { return *m_Model; }
    enum class Which { All, AllButFirst };
    // Instead of what is selected in the alignment.
    bool select(Which which);

    void alignmentShown() override;
    void layoutRebuilt() override;

private:
    void makeControls();
    void showKind();
    void giveUp(const QString &why);
    void showRow(const QModelIndex &index);

    TAMBO::AlignmentWindow &m_Window;
    DuplicateRows m_Found;
    Tell m_Tell;
    unsigned long m_Revision;
    DuplicateModel *m_Model;
    QComboBox *m_Kind;
    QTableView *m_Table;
    QLabel *m_State;
    QPushButton *m_All;
    QPushButton *m_Others;
};

} // namespace companion
