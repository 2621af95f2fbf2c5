// SPDX-License-Identifier: GPL-3.0-or-later
// Several structures, as they lie now, as one file of models or of chains, or as a file each.
#pragma once

#include "MergedFiles.h"

#include <QDialog>
#include <QStringList>

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace TAMBO::app {

class StructuresDialog : public QDialog
{
    Q_OBJECT

public:
    // Two at least, which are copied: they may go while the dialog is open.
    StructuresDialog(const std::vector<const Structure *> &structures, QWidget *parent);
    ~StructuresDialog() override;

    // What has been written.
    [[nodiscard]] const QStringList &files() const noexcept { return m_Files; }

private:
    [[nodiscard]] MergedFiles::Kind kind() const;
    [[nodiscard]] WriteOptions options() const;
    // Shows what is lost or gets another name.
    void follow();
    void write();
    [[nodiscard]] QString askFile();
    // Nothing when the user does not want to.
    [[nodiscard]] QStringList askFolder();
    bool writeTo(const QString &file, std::size_t structure);

    MergedFiles m_Structures;
    QStringList m_Files;

    QComboBox *m_Kind = nullptr;
    QComboBox *m_Format = nullptr;
    QLabel *m_NotesLabel = nullptr;
    QListWidget *m_Notes = nullptr;
    QPushButton *m_Write = nullptr;
};

} // namespace TAMBO::app
