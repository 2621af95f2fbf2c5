// SPDX-License-Identifier: GPL-3.0-or-later
#include "SavingAsFiles.h"

#include "Recovery.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>

namespace TAMBO::app {

namespace {

struct SavingText
{
    Q_DECLARE_TR_FUNCTIONS(TAMBO::app::SavingAsFiles)
};

} // namespace

void askAndSaveAsFiles(const LeftSession &session, ObjectSpace &space, History &history,
                       QWidget *parent)
{
    QFileDialog question(parent, SavingText::tr("Save as Files"), QDir::homePath());
    question.setObjectName(QStringLiteral("SaveAsFilesQuestion"));
    question.setFileMode(QFileDialog::Directory);
    question.setOption(QFileDialog::ShowDirsOnly);
    if (question.exec() != QDialog::Accepted || question.selectedFiles().isEmpty())
        return;
    const Result<WorkAsFiles> saved =
        saveAsFiles(session, space, history, question.selectedFiles().front());
    // What the user has called off he need not be told.
    if (!saved && saved.error().kind == FailureKind::Cancelled)
        return;

    QMessageBox told(parent);
    told.setObjectName(QStringLiteral("SavedAsFiles"));
    told.setWindowTitle(question.windowTitle());
    if (!saved) {
        told.setIcon(QMessageBox::Warning);
        told.setText(SavingText::tr("The work could not be saved as files. It is kept."));
        told.setInformativeText(QString::fromStdString(saved.error().message()));
    } else {
        const WorkAsFiles &files = saved.value();
        told.setIcon(files.problems.isEmpty() ? QMessageBox::Information : QMessageBox::Warning);
        const QString count = files.files == 1 ? SavingText::tr("1 file")
                                               : SavingText::tr("%1 files").arg(files.files);
        told.setText(SavingText::tr("%1 in %2. CONTENTS.txt says what is what.")
                         .arg(count, QDir::toNativeSeparators(files.folder)));
        told.setInformativeText(files.problems.join(u'\n'));
    }
    told.exec();
}

} // namespace TAMBO::app
