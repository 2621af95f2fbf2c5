// SPDX-License-Identifier: GPL-3.0-or-later
// Asks what is to be written in which format, and shows what the format loses before it is.
#pragma once

#include "FileState.h"
#include "WriteOptions.h"

#include <QDialog>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;
class QSpinBox;

namespace TAMBO {
class Compound;
class KeptState;
} // namespace TAMBO

namespace TAMBO::app {

class ObjectReferences;
class SavedPlaces;
class WritableObject;
class WriteJob;

class ExportDialog : public QDialog
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
    // Offers to count an unsaved object as saved although something is lost. The places outlive the
    // dialog.
    void setPlaces(const SavedPlaces &places);

    // Somebody takes over what takes long to write; see takeJob().
    void setGoesOn(bool goesOn) { m_GoesOn = goesOn; }

    // As it stands in the dialog.
    [[nodiscard]] WriteOptions options() const;
    // The name of what was chosen.
    [[nodiscard]] QString nameOfObject() const;
    // The file that was written; empty while it is still being written.
    [[nodiscard]] const QString &file() const noexcept { return m_File; }
    // As it was written; nothing for a pipe.
    [[nodiscard]] const std::optional<FileState> &fileState() const noexcept { return m_Written; }
    // What is still being written; null when nothing is.
    [[nodiscard]] std::unique_ptr<WriteJob> takeJob();
    // The state of the object that the file holds; null when there are no places.
    [[nodiscard]] std::unique_ptr<KeptState> takeState();
    // What the file lacks of the object.
    [[nodiscard]] const QStringList &losses() const noexcept { return m_OwnLosses; }
    [[nodiscard]] bool countsAsSaved() const;
    // What was chosen; null when it has gone.
    [[nodiscard]] Compound *object() const;

private:
    void makeControls();
    void fillObjects(const std::vector<Compound *> &objects, const Compound *chosen);
    void choose(int index);
    void fillFormats();
    // Shows the options that the format has, and its losses.
    void followFormat();
    void followOptions();
    void followLosses();
    // Asks for the file's name and writes it. The dialog stays when there is none.
    void write();
    void writeTo(const QString &file);
    void keepState();
    [[nodiscard]] QString askFile();

    // What can be chosen.
    std::vector<std::unique_ptr<ObjectReferences>> m_References;
    // What is chosen, as it was then; null when it had gone, and when copying it was given up.
    std::shared_ptr<const WritableObject> m_Object;
    bool m_IsGivenUp = false;
    std::unique_ptr<KeptState> m_State;
    std::unique_ptr<WriteJob> m_Job;
    QStringList m_OwnLosses;
    QString m_File;
    std::optional<FileState> m_Written;
    // Of the file dialog, unless empty.
    QString m_Folder;
    bool m_IsSaving = false;
    bool m_GoesOn = false;
    const SavedPlaces *m_Places = nullptr;

    QComboBox *m_Objects = nullptr;
    QComboBox *m_Format = nullptr;
    QLabel *m_LineLengthLabel = nullptr;
    QSpinBox *m_LineLength = nullptr;
    QLabel *m_NamesLabel = nullptr;
    QComboBox *m_Names = nullptr;
    QLabel *m_LayoutLabel = nullptr;
    QComboBox *m_Layout = nullptr;
    QLabel *m_LossesLabel = nullptr;
    QListWidget *m_Losses = nullptr;
    QCheckBox *m_Counts = nullptr;
    QPushButton *m_Write = nullptr;
};

} // namespace TAMBO::app
