// SPDX-License-Identifier: GPL-3.0-or-later
// Asks for new residue numbers of chains and sequences, all in one table.
#pragma once

#include <QDialog>

#include <vector>

class QCheckBox;
class QLabel;
class QPushButton;
class QSpinBox;
class QTreeView;

namespace TAMBO {
class Compound;
}

namespace TAMBO::app {

class RenumberTable;

class RenumberDialog : public QDialog
{
    Q_OBJECT

public:
    RenumberDialog(const std::vector<Compound *> &sequences, QWidget *parent);
    ~RenumberDialog() override;

    [[nodiscard]] RenumberTable &table() const noexcept { return *m_Table; }

private:
    void makeControls();
    void follow();
    void fillFromNames();
    // In the cell of a number: to the next row, and behind the last one it is done.
    void enterPressed();

    RenumberTable *m_Table;
    QTreeView *m_List = nullptr;
    QSpinBox *m_First = nullptr;
    QCheckBox *m_Jumps = nullptr;
    QLabel *m_Says = nullptr;
    QPushButton *m_Renumber = nullptr;
};

} // namespace TAMBO::app
