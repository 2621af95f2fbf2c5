// SPDX-License-Identifier: GPL-3.0-or-later
// The file dialog in which a format is chosen, what it loses is told before anything is written,
// and that writes. The ending of the name is the format when there is one of that ending; behind
// another name comes the ending of the chosen one.
#pragma once

#include "ExportRuns.h"
#include "FormatTable.h"
#include "Result.h"
#include "WriteOptions.h"

#include <QFileDialog>
#include <QStringList>

#include <utility>
#include <vector>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;

namespace TAMBO::app {

class WriteDialog : public QFileDialog
{
    Q_OBJECT

public:
    ~WriteDialog() override;

    // Somebody takes over what takes long to write; see takeRest().
    void setGoesOn(bool goesOn) { m_GoesOn = goesOn; }
    // Learns what is unsaved, so that this may count as saved. The places outlive the dialog.
    virtual void setPlaces(const SavedPlaces &places);

    // As it stands in the dialog.
    [[nodiscard]] virtual WriteOptions options() const;

    // What was written, also when the dialog was left without the rest of it.
    [[nodiscard]] std::vector<ExportRuns::Order> takeWritten() { return std::move(m_Written); }
    // What is still to be written, the first of it under way.
    [[nodiscard]] std::vector<ExportRuns::Order> takeRest() { return std::move(m_Rest); }

    void accept() override;

protected:
    // What can be said of the options that are chosen.
    struct Verdict
    {
        // Empty when it can be written so. A sentence.
        QString obstacle = {};
        // A sentence each, with another line above them than the usual one, unless empty.
        QStringList losses = {};
        QString heading = {};
        // Unsaved objects would lose something, of which the user may think nothing.
        bool canCount = false;
        // Of the button, unless empty.
        QString acceptText = {};
    };

    explicit WriteDialog(QWidget *parent);

    // Beneath the name and the format.
    void addRow(QLabel *label, QWidget *widget);
    void addOption(QWidget *widget);
    // At least one. The chosen one stays if it is among them.
    void setFormats(const std::vector<FileFormat> &formats);
    void chooseFormat(FileFormat format);
    // The name that is offered, without an ending, as long as the user has typed none.
    void offer(const QString &name);
    // Instead of a file a folder is chosen, which is there.
    void setNamesFolder(bool namesFolder);
    // Of the button that writes.
    void setAcceptText(const QString &text);
    // The file is to be its object's own: it may lose what it loses, and its folder, which is
    // offered unless empty, is not remembered for exports.
    void setSaving(const QString &folder);
    [[nodiscard]] bool isSaving() const noexcept { return m_IsSaving; }
    [[nodiscard]] const SavedPlaces *places() const noexcept { return m_Places; }
    // Whether an object of which this is lost counts as saved.
    [[nodiscard]] bool isAccepted(const QStringList &losses) const;
    // Behind the names of several files.
    [[nodiscard]] QString ending() const;

    // Looks again, after the objects or the options have changed.
    void follow();
    // Of one of those formats.
    [[nodiscard]] virtual Verdict verdict(const WriteOptions &chosen) const = 0;
    // Called before that, for controls of some formats only.
    virtual void formatChosen() { }
    // What is to be written, the jobs not started; nothing when the user has taken it back.
    [[nodiscard]] virtual std::vector<ExportRuns::Order> orders(const QString &target) = 0;

    void done(int result) override;
    void showEvent(QShowEvent *event) override;

private:
    void makeLosses();
    void connectInputs();
    // The user has chosen one of the list.
    void chooseType(int index);
    void filterFiles();
    void setCompressed(bool isCompressed);
    void setName(const QString &name);
    [[nodiscard]] QString typedPath() const;
    [[nodiscard]] FileFormat format() const;
    void followName();
    [[nodiscard]] const Verdict &judge(const WriteOptions &chosen, bool isKnown);
    void showVerdict();
    [[nodiscard]] bool mayReplace(const QString &file);
    [[nodiscard]] bool write(const QString &target);
    // Of what the user has called off he need not be told.
    void tellFailure(const Failure &failure);

    std::vector<FileFormat> m_Formats;
    // In the list; the ending of the name may say another one.
    FileFormat m_Chosen = FileFormat::Pir;
    QString m_Offered;
    // What was accepted: a file or a folder.
    QString m_Target;
    // Of what was chosen since they were cleared.
    std::vector<std::pair<WriteOptions, Verdict>> m_Verdicts;
    const SavedPlaces *m_Places = nullptr;
    bool m_IsPossible = false;
    bool m_NamesFolder = false;
    bool m_IsSaving = false;
    bool m_GoesOn = false;
    std::vector<ExportRuns::Order> m_Written;
    std::vector<ExportRuns::Order> m_Rest;

    // The toolkit's.
    QLineEdit *m_Name = nullptr;
    QComboBox *m_Types = nullptr;

    QGridLayout *m_Grid = nullptr;
    // The last of the tab order to which more is added.
    QWidget *m_LastInput = nullptr;
    int m_NextRow = 0;
    QHBoxLayout *m_Options = nullptr;
    QCheckBox *m_Compressed = nullptr;
    QLabel *m_LossesLabel = nullptr;
    QListWidget *m_Losses = nullptr;
    QCheckBox *m_Counts = nullptr;
};

} // namespace TAMBO::app
