// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructuresDialog.h"

#include "ConfigStore.h"
#include "Logger.h"
#include "WriteJob.h"
#include "WriteWait.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace TAMBO::app {

namespace {

constexpr const char *kFolderSection = "Files";
constexpr const char *kExportFolderKey = "ExportDirectory";

QString lastExportFolder()
{
    return QString::fromStdString(services::ConfigStore::instance()
                                      .value(kFolderSection, kExportFolderKey)
                                      .value_or(std::string()));
}

void keepExportFolder(const QString &folder)
{
    services::ConfigStore &store = services::ConfigStore::instance();
    store.setValue(kFolderSection, kExportFolderKey, folder.toStdString());
    store.saveOrLog();
}

QString usualEnding(FileFormat format)
{
    const std::string_view ending = fileEndings(format).front();
    return QString::fromUtf8(ending.data(), qsizetype(ending.size()));
}

} // namespace

StructuresDialog::StructuresDialog(const std::vector<const Structure *> &structures,
                                   QWidget *parent)
    : QDialog(parent), m_Structures(structures)
{
    setObjectName(QStringLiteral("StructuresDialog"));
    setWindowTitle(tr("Export %1 Structures").arg(m_Structures.count()));
    m_Kind = new QComboBox;
    m_Kind->setObjectName(QStringLiteral("Kind"));
    m_Kind->addItem(tr("one file, a model for each"), int(MergedFiles::Kind::Models));
    m_Kind->addItem(tr("one file, with the chains of all"), int(MergedFiles::Kind::Chains));
    m_Kind->addItem(tr("a file for each"), int(MergedFiles::Kind::Files));
    m_Format = new QComboBox;
    m_Format->setObjectName(QStringLiteral("Format"));
    for (const FormatEntry &entry : kFormats)
        if (isStructureFormat(entry.format))
            m_Format->addItem(QString::fromStdString(formatTitle(entry.format)), int(entry.format));
    auto *form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(tr("&As:"), m_Kind);
    form->addRow(tr("&Format:"), m_Format);
    m_NotesLabel = new QLabel;
    m_NotesLabel->setWordWrap(true);
    m_Notes = new QListWidget;
    m_Notes->setObjectName(QStringLiteral("Notes"));
    m_Notes->setAccessibleName(tr("What is lost or changed"));
    m_Notes->setWordWrap(true);
    m_Notes->setSelectionMode(QAbstractItemView::NoSelection);
    m_Notes->setAlternatingRowColors(true);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    m_Write = buttons->addButton(tr("&Export…"), QDialogButtonBox::AcceptRole);
    m_Write->setObjectName(QStringLiteral("Write"));
    connect(buttons, &QDialogButtonBox::accepted, this, &StructuresDialog::write);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_Kind, &QComboBox::currentIndexChanged, this, &StructuresDialog::follow);
    connect(m_Format, &QComboBox::currentIndexChanged, this, &StructuresDialog::follow);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_NotesLabel);
    layout->addWidget(m_Notes, 1);
    layout->addWidget(buttons);
    m_Write->setDefault(true);
    resize(520, 380);
    follow();
}

StructuresDialog::~StructuresDialog() = default;

MergedFiles::Kind StructuresDialog::kind() const
{
    return MergedFiles::Kind(m_Kind->currentData().toInt());
}

WriteOptions StructuresDialog::options() const
{
    WriteOptions options;
    options.format = FileFormat(m_Format->currentData().toInt());
    return options;
}

void StructuresDialog::follow()
{
    m_Notes->clear();
    const Result<void> fits = m_Structures.check(options());
    m_Write->setEnabled(fits.has_value());
    m_NotesLabel->setText(fits ? tr("The atoms are written where they are now. This is lost or "
                                    "changed:")
                               : tr("This cannot be written:"));
    if (!fits) {
        m_Notes->addItem(new QListWidgetItem(style()->standardIcon(QStyle::SP_MessageBoxWarning),
                                             QString::fromStdString(fits.error().message())));
        return;
    }
    const QIcon icon = style()->standardIcon(QStyle::SP_MessageBoxInformation);
    for (const QString &note : m_Structures.notes(kind(), options()))
        m_Notes->addItem(new QListWidgetItem(icon, note));
}

QString StructuresDialog::askFile()
{
    const QString ending = usualEnding(options().format);
    QFileDialog dialog(this, tr("Export"), lastExportFolder());
    dialog.setObjectName(QStringLiteral("ExportFileDialog"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(ending.mid(1));
    dialog.selectFile(QStringLiteral("structures") + ending);
    if (dialog.exec() == QDialog::Rejected || dialog.selectedFiles().isEmpty())
        return {};
    keepExportFolder(dialog.directory().absolutePath());
    return dialog.selectedFiles().front();
}

QStringList StructuresDialog::askFolder()
{
    QFileDialog dialog(this, tr("Export into a Folder"), lastExportFolder());
    dialog.setObjectName(QStringLiteral("ExportFolderDialog"));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (dialog.exec() == QDialog::Rejected || dialog.selectedFiles().isEmpty())
        return {};
    const QDir folder(dialog.selectedFiles().front());
    QStringList files;
    QStringList present;
    for (const QString &name : m_Structures.names()) {
        files << folder.filePath(name + usualEnding(options().format));
        if (QFileInfo::exists(files.back()))
            present << QFileInfo(files.back()).fileName();
    }
    if (!present.isEmpty()) {
        QMessageBox box(QMessageBox::Warning, tr("Tambo"),
                        tr("These files are there already: %1").arg(present.join(", ")),
                        QMessageBox::Cancel, this);
        box.setObjectName(QStringLiteral("ReplaceFiles"));
        box.setTextFormat(Qt::PlainText);
        const QPushButton *const replace = box.addButton(tr("&Replace"), QMessageBox::AcceptRole);
        box.exec();
        if (box.clickedButton() != replace)
            return {};
    }
    keepExportFolder(folder.absolutePath());
    return files;
}

bool StructuresDialog::writeTo(const QString &file, std::size_t structure)
{
    WriteJob job(
        [structures = m_Structures, kind = kind(), structure,
         options = options()](const QString &path, WriteAids &aids) {
            return structures.write(path, kind, structure, options, aids);
        },
        file);
    job.start();
    const Result<void> written = waitToTheEnd(job, windowTitle(), this);
    if (written) {
        m_Files << file;
        return true;
    }
    if (written.error().kind == FailureKind::Cancelled)
        return false;
    const QString cause = QString::fromStdString(written.error().message());
    Logger::Write(cause, Logger::Severity::Error);
    QMessageBox box(QMessageBox::Warning, tr("Tambo"), cause, QMessageBox::Ok, this);
    box.setObjectName(QStringLiteral("ExportFailure"));
    box.setTextFormat(Qt::PlainText);
    box.exec();
    return false;
}

void StructuresDialog::write()
{
    m_Files.clear();
    const QString file = kind() == MergedFiles::Kind::Files ? QString() : askFile();
    const QStringList files = kind() == MergedFiles::Kind::Files ? askFolder()
                              : file.isEmpty()                   ? QStringList()
                                                                 : QStringList{file};
    std::size_t structure = 0;
    for (const QString &each : files)
        if (!writeTo(each, structure++))
            break;
    if (!m_Files.isEmpty())
        Logger::Write(tr("Exported %1 of %2 structures to %3")
                          .arg(kind() == MergedFiles::Kind::Files ? int(m_Files.size())
                                                                  : int(m_Structures.count()))
                          .arg(m_Structures.count())
                          .arg(m_Files.join(QStringLiteral(", "))));
    if (!files.isEmpty() && m_Files.size() == files.size())
        accept();
}

} // namespace TAMBO::app

#include "moc_StructuresDialog.cpp"
