// SPDX-License-Identifier: GPL-3.0-or-later
// Asks which object is to be written to which file, in which format.
#pragma once

#include "WriteDialog.h"

#include <memory>
#include <optional>
#include <vector>

class QComboBox;
class QLabel;
class QSpinBox;

namespace TAMBO {
class Compound;
class KeptState;
} // namespace TAMBO

namespace TAMBO::app {

class ObjectReferences;
class WritableObject;

class ExportDialog : public WriteDialog
{
    Q_OBJECT

public:
    // Alignments and structures, at least one. Each may go while the dialog is open.
    ExportDialog(const std::vector<Compound *> &objects, const Compound *chosen, QWidget *parent);
    ~ExportDialog() override;

    // The user does not want it any more: copying what was chosen took long.
    [[nodiscard]] bool isGivenUp() const noexcept { return m_IsGivenUp; }

    // For an object that is to be saved: suggests the folder (unless empty) and the format (if the
    // object can be written in it), and losses are accepted by going on.
    void saveInstead(const QString &folder, FileFormat format);
    void setPlaces(const SavedPlaces &places) override;

    [[nodiscard]] WriteOptions options() const override;

protected:
    [[nodiscard]] Verdict verdict(const WriteOptions &chosen) const override;
    void formatChosen() override;
    [[nodiscard]] std::vector<ExportRuns::Order> orders(const QString &target) override;

private:
    void makeControls();
    void fillObjects(const std::vector<Compound *> &objects, const Compound *chosen);
    void choose(int index);
    void keepState();
    [[nodiscard]] QString nameOfObject() const;
    // What was chosen; null when it has gone.
    [[nodiscard]] Compound *object() const;
    [[nodiscard]] QStringList ownLosses(const WriteOptions &chosen) const;

    // What can be chosen.
    std::vector<std::unique_ptr<ObjectReferences>> m_References;
    // What is chosen, as it was then; null when it had gone, and when copying it was given up.
    std::shared_ptr<const WritableObject> m_Object;
    bool m_IsGivenUp = false;
    // Of the object as it was chosen, which is what is written.
    std::shared_ptr<const KeptState> m_State;

    QLabel *m_ObjectsLabel = nullptr;
    QComboBox *m_Objects = nullptr;
    QLabel *m_LineLengthLabel = nullptr;
    QSpinBox *m_LineLength = nullptr;
    QLabel *m_NamesLabel = nullptr;
    QComboBox *m_Names = nullptr;
    QLabel *m_LayoutLabel = nullptr;
    QComboBox *m_Layout = nullptr;
};

} // namespace TAMBO::app
