// SPDX-License-Identifier: GPL-3.0-or-later
// Asks of which targets of an alignment models are to be built, on which templates, in which folder
// and by whom.
#pragma once

#include "FamilyPlan.h"
#include "RunChoice.h"

#include <QDialog>

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QTreeView;

namespace TAMBO {
class Alignment;
class Compound;
} // namespace TAMBO

namespace TAMBO::app {

class ObjectReferences;
class TargetsModel;

class FamilyDialog : public QDialog
{
    Q_OBJECT

public:
    // The file that an alignment came from; empty when nobody knows.
    using SourceOf = std::function<std::filesystem::path(const Alignment &alignment)>;

    // At least one alignment. Each may go while the dialog is open.
    FamilyDialog(const std::vector<Alignment *> &alignments, const Compound *chosen,
                 SourceOf sourceOf, QWidget *parent);
    ~FamilyDialog() override;

    // Null when it has gone.
    [[nodiscard]] Alignment *alignment() const;
    // As it was when it was chosen, and what is to be built of it.
    [[nodiscard]] const families::Family &family() const;
    [[nodiscard]] std::vector<families::PlannedModel> plan() const;
    [[nodiscard]] std::filesystem::path folder() const;
    [[nodiscard]] RunOrder order() const { return m_Run->order(); }

private:
    void makeControls();
    void makeTargets();
    void fillAlignments(const std::vector<Alignment *> &alignments, const Compound *chosen);
    void takeAlignment();
    void takeTemplate();
    void tick(bool ticked);
    void askFolder();
    [[nodiscard]] QString suggestedFolder(const Alignment &alignment) const;
    // What is missing, in words, or what it will cost.
    [[nodiscard]] QString objection() const;
    [[nodiscard]] QString costs() const;
    void follow();

    SourceOf m_SourceOf;
    std::vector<std::unique_ptr<ObjectReferences>> m_References;
    TargetsModel *m_Targets = nullptr;
    QSortFilterProxyModel *m_Shown = nullptr;
    // The one that was suggested last, which another alignment may replace.
    QString m_Suggested;

    QComboBox *m_Alignments = nullptr;
    QComboBox *m_Template = nullptr;
    QLineEdit *m_Filter = nullptr;
    QTreeView *m_List = nullptr;
    QLineEdit *m_Folder = nullptr;
    RunChoice *m_Run = nullptr;
    QLabel *m_Picture = nullptr;
    QLabel *m_Says = nullptr;
    QPushButton *m_Build = nullptr;
};

} // namespace TAMBO::app
