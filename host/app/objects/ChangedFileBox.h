// SPDX-License-Identifier: GPL-3.0-or-later
// Asks what is to be done with a file that another program has changed since it was opened or
// saved.
#pragma once

#include "FileCheck.h"

#include <QMessageBox>
#include <QString>

class QPushButton;

namespace TAMBO::app {

// "It was changed at 2026-11-22 12:30:05, after it was opened or saved here."; empty when nothing
// is known to have changed.
[[nodiscard]] QString changeText(const FileCheck &check);

class ChangedFileBox : public QMessageBox
{
    Q_OBJECT

public:
    enum class Answer { SaveAs, Overwrite, Cancel };

    // check: with a change.
    ChangedFileBox(const QString &file, const FileCheck &check, QWidget *parent);
    ~ChangedFileBox() override;

    // Of a box that was executed.
    [[nodiscard]] Answer answer() const;

private:
    QPushButton *m_SaveAs = nullptr;
    QPushButton *m_Overwrite = nullptr;
};

} // namespace TAMBO::app
