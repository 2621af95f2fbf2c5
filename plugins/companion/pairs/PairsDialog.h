// SPDX-License-Identifier: GPL-3.0-or-later
// The identities of all pairs of rows of an alignment, to sort, look up and export.
#pragma once

#include "PairModel.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QTableView;

namespace TAMBO {
class AlignmentWindow;
}

namespace companion {

// Shows the pairs as they were when it was made, or when another denominator was chosen.
class PairsDialog : public QDialog
{
    Q_OBJECT

public:
    // Of more rows there are too many pairs to look through.
    static constexpr unsigned long kMostRows = 2000;

    // Belongs to the window's own widget, and is closed with it. The window shows an alignment.
    explicit PairsDialog(TAMBO::AlignmentWindow &window);
    ~PairsDialog() override;

    [[nodiscard]] PairModel &model() noexcept { return *m_Model; }
    // False, and told in the dialog, when it cannot be written; then the file is as it was.
    bool exportTo(const QString &file);

private:
    void compute();
    void askAndExport();

    QStringList m_Names;
    std::vector<std::string> m_Rows;
    PairModel *m_Model;
    QComboBox *m_Compared;
    QTableView *m_Table;
    QLabel *m_Remark;
};

} // namespace companion
