// SPDX-License-Identifier: GPL-3.0-or-later
#include "OpenDialog.h"

#include "ConfigStore.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>

namespace TAMBO::app {

namespace {

constexpr const char *kSection = "Files";
constexpr const char *kKey = "Directory";

QString tr(const char *text)
{
    return QCoreApplication::translate("OpenDialog", text);
}

QStringList filters()
{
    const QString structures = QStringLiteral("*.pdb *.ent *.cif *.mmcif *.pdb.gz *.ent.gz "
                                              "*.cif.gz");
    const QString alignments = QStringLiteral("*.ali *.pir *.fasta *.fa *.fas *.afa *.mfa *.faa "
                                              "*.a2m *.a3m *.aln *.clustal *.clw *.sto *.stk "
                                              "*.stockholm *.pfam *.msf *.phy *.phylip "
                                              "*.ali.gz *.pir.gz *.fasta.gz *.fa.gz *.a2m.gz "
                                              "*.a3m.gz *.aln.gz *.sto.gz *.stk.gz *.msf.gz "
                                              "*.phy.gz");
    return {tr("Structures and alignments") +
                QStringLiteral(" (%1 %2)").arg(structures, alignments),
            tr("Structures") + QStringLiteral(" (%1)").arg(structures),
            tr("Alignments and sequences") + QStringLiteral(" (%1)").arg(alignments),
            tr("All files") + QStringLiteral(" (*)")};
}

} // namespace

QStringList askFilesToOpen(QWidget *parent)
{
    services::ConfigStore &store = services::ConfigStore::instance();
    const std::string directory = store.value(kSection, kKey).value_or(std::string());
    QFileDialog dialog(parent, tr("Open"), QString::fromStdString(directory));
    dialog.setObjectName(QStringLiteral("OpenDialog"));
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setNameFilters(filters());
    if (dialog.exec() == QDialog::Rejected)
        return {};
    store.setValue(kSection, kKey, dialog.directory().absolutePath().toStdString());
    store.save();
    return dialog.selectedFiles();
}

} // namespace TAMBO::app
