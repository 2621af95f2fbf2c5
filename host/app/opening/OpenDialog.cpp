// SPDX-License-Identifier: GPL-3.0-or-later
#include "OpenDialog.h"

#include "ConfigStore.h"
#include "FormatTable.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>

#include <string>

namespace TAMBO::app {

namespace {

constexpr const char *kOpenSection = "Files";
constexpr const char *kFolderKey = "Directory";

QString trOpen(const char *text)
{
    return QCoreApplication::translate("OpenDialog", text);
}

// "*.pdb *.ent *.pdb.gz *.ent.gz".
QString patternsOf(const std::vector<std::string_view> &endings)
{
    QStringList patterns;
    for (const std::string_view more : {std::string_view(), kCompressedEnding}) {
        for (const std::string_view ending : endings)
            patterns << u'*' + QString::fromStdString(std::string(ending).append(more));
    }
    return patterns.join(u' ');
}

} // namespace

QStringList openFilters(OpenPurpose purpose)
{
    const QString structures = patternsOf(endingsOf(FormatKind::Structures));
    const QString alignments = patternsOf(endingsOf(FormatKind::Alignments));
    if (purpose == OpenPurpose::AddAndAlign)
        return {trOpen("Alignments, sequences and structures") +
                    QStringLiteral(" (%1 %2)").arg(alignments, structures),
                trOpen("Alignments and sequences") + QStringLiteral(" (%1)").arg(alignments),
                trOpen("Structures") + QStringLiteral(" (%1)").arg(structures),
                trOpen("All files") + QStringLiteral(" (*)")};
    const QString sessions = QStringLiteral("*.tambo");
    return {trOpen("Structures, alignments and sessions") +
                QStringLiteral(" (%1 %2 %3)").arg(structures, alignments, sessions),
            trOpen("Structures") + QStringLiteral(" (%1)").arg(structures),
            trOpen("Alignments and sequences") + QStringLiteral(" (%1)").arg(alignments),
            trOpen("Sessions") + QStringLiteral(" (%1)").arg(sessions),
            trOpen("All files") + QStringLiteral(" (*)")};
}

QStringList askFilesToOpen(QWidget *parent, OpenPurpose purpose)
{
    services::ConfigStore &store = services::ConfigStore::instance();
    const std::string directory = store.value(kOpenSection, kFolderKey).value_or(std::string());
    const QString title =
        purpose == OpenPurpose::Open ? trOpen("Open") : trOpen("Add File and Align");
    QFileDialog dialog(parent, title, QString::fromStdString(directory));
    dialog.setObjectName(QStringLiteral("OpenDialog"));
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setNameFilters(openFilters(purpose));
    if (dialog.exec() == QDialog::Rejected)
        return {};
    store.setValue(kOpenSection, kFolderKey, dialog.directory().absolutePath().toStdString());
    store.saveOrLog();
    return dialog.selectedFiles();
}

} // namespace TAMBO::app
