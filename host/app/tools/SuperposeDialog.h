// SPDX-License-Identifier: GPL-3.0-or-later
// Asks which structures are to be superposed along which alignment, and shows what it will do.
#pragma once

#include "StructureFits.h"

#include <QDialog>

#include <memory>
#include <vector>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QLayout;
class QPushButton;
class QTreeWidget;

namespace TAMBO {
class Alignment;
class Compound;
struct SuperposePlan;
} // namespace TAMBO

namespace TAMBO::app {

class ObjectReferences;

class SuperposeDialog : public QDialog
{
    Q_OBJECT

public:
    // At least one alignment. Each may go while the dialog is open. Without a chosen one it begins
    // with the first that can be used.
    SuperposeDialog(const std::vector<Alignment *> &alignments, const Compound *chosen,
                    QWidget *parent);
    ~SuperposeDialog() override;

    // Null when it has gone.
    [[nodiscard]] Alignment *alignment() const;
    // The reference first.
    [[nodiscard]] std::vector<unsigned long> rows() const;
    // Which pairs count.
    [[nodiscard]] FitChoice choice() const;

    // Keeps what was chosen for the next one.
    void accept() override;

private:
    void makeControls();
    // Which columns, and which pairs of them.
    [[nodiscard]] QLayout *makeChoice();
    // Offers the columns of the alignment's range, if it is a part of it.
    void offerRange();
    void showFits(const SuperposePlan *plan);
    void fillAlignments(const std::vector<Alignment *> &alignments, const Compound *chosen);
    // The rows of the alignment that have coordinates, the first of each structure checked.
    void fillRows();
    // Offers what is checked; the reference stays if it can.
    void fillReferences();
    void showPlan();

    std::vector<std::unique_ptr<ObjectReferences>> m_References;

    QComboBox *m_Alignments = nullptr;
    QTreeWidget *m_Rows = nullptr;
    QComboBox *m_Reference = nullptr;
    QCheckBox *m_InRange = nullptr;
    // Also while no alignment is shown that has a range.
    bool m_WantsRange = false;
    QCheckBox *m_Prune = nullptr;
    QDoubleSpinBox *m_Cutoff = nullptr;
    QLabel *m_Picture = nullptr;
    QLabel *m_Plan = nullptr;
    QPushButton *m_Superpose = nullptr;
};

} // namespace TAMBO::app
