// SPDX-License-Identifier: GPL-3.0-or-later
#include "WriteDialog.h"

#include "ConfigStore.h"
#include "KeptState.h"
#include "Logger.h"
#include "ObjectReferences.h"
#include "SavedPlaces.h"
#include "WriteJob.h"
#include "WriteWait.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSize>
#include <QStyle>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>

namespace TAMBO::app {

namespace {

constexpr const char *kFolders = "Files";
constexpr const char *kExportFolder = "ExportDirectory";
constexpr const char *kOpenFolder = "Directory";

// Of the toolkit's grid: behind the name and the list of formats, and with room for more rows.
constexpr int kFirstRow = 4;
constexpr int kOptionsRow = 20;
constexpr int kGridColumns = 3;
constexpr int kLossLines = 4;
constexpr QSize kRoomForFiles(780, 600);
// After that the user goes on while the rest of several files is written.
constexpr int kSeveralMilliseconds = 300;

QString latin1Text(std::string_view latin1)
{
    return QString::fromLatin1(latin1.data(), qsizetype(latin1.size()));
}

QStringList globsOf(FileFormat format, std::string_view more = {})
{
    QStringList patterns;
    for (const std::string_view ending : fileEndings(format))
        patterns << u'*' + latin1Text(ending) + latin1Text(more);
    return patterns;
}

// "Clustal (*.aln *.clustal *.clw)".
QString filterOf(FileFormat format)
{
    return QStringLiteral("%1 (%2)").arg(QString::fromStdString(formatTitle(format)),
                                         globsOf(format).join(u' '));
}

QString nameFor(const QString &name, FileFormat format)
{
    return QString::fromStdString(withEndingOf(name.toStdString(), format));
}

QString lastFolder()
{
    const services::ConfigStore &store = services::ConfigStore::instance();
    return QString::fromStdString(
        store.value(kFolders, kExportFolder)
            .value_or(store.value(kFolders, kOpenFolder).value_or(std::string())));
}

void rememberFolder(const QString &folder)
{
    services::ConfigStore &store = services::ConfigStore::instance();
    store.setValue(kFolders, kExportFolder, folder.toStdString());
    store.saveOrLog();
}

} // namespace

WriteDialog::WriteDialog(QWidget *parent) : QFileDialog(parent)
{
    // The system's own has no room for what is lost.
    setOption(QFileDialog::DontUseNativeDialog);
    setAcceptMode(QFileDialog::AcceptSave);
    setFileMode(QFileDialog::AnyFile);
    // One that has gone would become the name of a file.
    if (const QString folder = lastFolder(); QFileInfo(folder).isDir())
        setDirectory(folder);
    setLabelText(QFileDialog::FileType, tr("Forma&t:"));
    m_Name = findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    m_Types = findChild<QComboBox *>(QStringLiteral("fileTypeCombo"));
    if (auto *const label = findChild<QLabel *>(QStringLiteral("fileTypeLabel")))
        label->setBuddy(m_Types);
    m_Grid = qobject_cast<QGridLayout *>(layout());
    m_NextRow = kFirstRow;
    makeLosses();
    connectInputs();
    resize(kRoomForFiles);
}

WriteDialog::~WriteDialog() = default;

void WriteDialog::makeLosses()
{
    m_Compressed = new QCheckBox(tr("Co&mpressed (%1)").arg(latin1Text(kCompressedEnding)));
    m_Compressed->setObjectName(QStringLiteral("Compressed"));
    m_Options = new QHBoxLayout;
    m_Options->addStretch();
    m_LossesLabel = new QLabel;
    m_LossesLabel->setObjectName(QStringLiteral("LossesLabel"));
    m_LossesLabel->setWordWrap(true);
    m_Losses = new QListWidget;
    m_Losses->setObjectName(QStringLiteral("Losses"));
    m_Losses->setAccessibleName(tr("What is lost or changed"));
    m_Losses->setWordWrap(true);
    m_Losses->setSelectionMode(QAbstractItemView::NoSelection);
    m_Losses->setAlternatingRowColors(true);
    // However much it is, files can be seen above.
    m_Losses->setFixedHeight(kLossLines * (m_Losses->fontMetrics().height() + 4));
    m_Counts = new QCheckBox(tr("Co&unt it as saved although this is lost"));
    m_Counts->setObjectName(QStringLiteral("CountsAsSaved"));
    m_Counts->hide();
    int row = kOptionsRow;
    m_Grid->addWidget(m_Compressed, kFirstRow, kGridColumns - 1);
    m_Grid->addLayout(m_Options, row++, 1, 1, kGridColumns - 1);
    m_Grid->addWidget(m_LossesLabel, row++, 0, 1, kGridColumns);
    m_Grid->addWidget(m_Losses, row++, 0, 1, kGridColumns);
    m_Grid->addWidget(m_Counts, row, 0, 1, kGridColumns);
    setTabOrder(m_Types, m_Compressed);
    setTabOrder(m_Compressed, m_Losses);
    setTabOrder(m_Losses, m_Counts);
    m_LastInput = m_Types;
}

void WriteDialog::connectInputs()
{
    // The toolkit would take whatever is behind the last dot for an ending.
    m_Types->disconnect(SIGNAL(activated(int)), this);
    connect(m_Types, &QComboBox::activated, this, &WriteDialog::chooseType);
    connect(m_Name, &QLineEdit::textChanged, this, &WriteDialog::followName);
    connect(m_Compressed, &QCheckBox::clicked, this, &WriteDialog::setCompressed);
    connect(this, &QFileDialog::directoryEntered, this, [this](const QString &folder) {
        if (m_NamesFolder)
            setName(folder);
    });
}

void WriteDialog::addRow(QLabel *label, QWidget *widget)
{
    label->setBuddy(widget);
    m_Grid->addWidget(label, m_NextRow, 0);
    m_Grid->addWidget(widget, m_NextRow++, 1);
    setTabOrder(m_LastInput, widget);
    m_LastInput = widget;
}

void WriteDialog::addOption(QWidget *widget)
{
    m_Options->insertWidget(m_Options->count() - 1, widget);
    if (widget->focusPolicy() == Qt::NoFocus)
        return;
    setTabOrder(m_LastInput, widget);
    m_LastInput = widget;
}

void WriteDialog::setPlaces(const SavedPlaces &places)
{
    m_Places = &places;
    follow();
}

// ---- The format

void WriteDialog::setFormats(const std::vector<FileFormat> &formats)
{
    m_Formats = formats;
    if (std::ranges::find(formats, m_Chosen) == formats.end() && !formats.empty())
        m_Chosen = formats.front();
    QStringList filters;
    for (const FileFormat each : formats)
        filters << filterOf(each);
    const QString name = m_Name->text();
    const QSignalBlocker silence(m_Name);
    setNameFilters(filters);
    m_Name->setText(name);
}

void WriteDialog::chooseFormat(FileFormat format)
{
    if (std::ranges::find(m_Formats, format) == m_Formats.end())
        return;
    m_Chosen = format;
    const bool isOffered = m_Name->text() == m_Offered;
    m_Offered = nameFor(m_Offered, format);
    if (!m_NamesFolder && !m_Name->text().isEmpty())
        setName(isOffered ? m_Offered : nameFor(m_Name->text(), format));
    follow();
}

void WriteDialog::chooseType(int index)
{
    chooseFormat(m_Formats[std::size_t(index)]);
    emit filterSelected(m_Types->itemText(index));
}

FileFormat WriteDialog::format() const
{
    const std::optional<WriteOptions> told =
        m_NamesFolder ? std::nullopt : writeOptionsFor(m_Name->text().toStdString());
    return told ? told->format : m_Chosen;
}

WriteOptions WriteDialog::options() const
{
    return {format()};
}

QString WriteDialog::ending() const
{
    return latin1Text(fileEndings(m_Chosen).front()) +
           (m_Compressed->isChecked() ? latin1Text(kCompressedEnding) : QString());
}

// Those that are there already, compressed or not.
void WriteDialog::filterFiles()
{
    const auto at = std::ranges::find(m_Formats, format());
    if (at == m_Formats.end())
        return;
    m_Types->setCurrentIndex(int(at - m_Formats.begin()));
    const QStringList globs = globsOf(*at) + globsOf(*at, kCompressedEnding);
    auto *const files = findChild<QFileSystemModel *>();
    if (files != nullptr && files->nameFilters() != globs)
        files->setNameFilters(globs);
}

// ---- The name

void WriteDialog::setName(const QString &name)
{
    m_Name->setText(name);
}

void WriteDialog::offer(const QString &name)
{
    const bool isTyped = !m_Name->text().isEmpty() && m_Name->text() != m_Offered;
    m_Offered = nameFor(name, m_Chosen) +
                (m_Compressed->isChecked() ? latin1Text(kCompressedEnding) : QString());
    if (!isTyped && !m_NamesFolder)
        setName(m_Offered);
}

void WriteDialog::setNamesFolder(bool namesFolder)
{
    if (m_NamesFolder == namesFolder)
        return;
    m_NamesFolder = namesFolder;
    setLabelText(QFileDialog::FileName, namesFolder ? tr("Fo&lder:") : tr("File &name:"));
    setName(namesFolder ? directory().absolutePath() : m_Offered);
    follow();
}

void WriteDialog::setCompressed(bool isCompressed)
{
    const QString more = latin1Text(kCompressedEnding);
    QString name = m_Name->text();
    if (m_NamesFolder || name.isEmpty() || name.endsWith(more, Qt::CaseInsensitive) == isCompressed)
        return;
    if (isCompressed)
        name = nameFor(name, format()) + more;
    else
        name.chop(more.size());
    setName(name);
}

QString WriteDialog::typedPath() const
{
    QString name = m_Name->text();
    if (name == u"~" || name.startsWith(QStringLiteral("~/")))
        name.replace(0, 1, QDir::homePath());
    return QDir::cleanPath(directory().absoluteFilePath(name));
}

void WriteDialog::followName()
{
    if (!m_NamesFolder && !m_Name->text().isEmpty())
        m_Compressed->setChecked(
            m_Name->text().endsWith(latin1Text(kCompressedEnding), Qt::CaseInsensitive));
    filterFiles();
    formatChosen();
    showVerdict();
}

void WriteDialog::follow()
{
    m_Verdicts.clear();
    followName();
}

// ---- What is lost

// The name changes with every key, and looking through an alignment may take a while.
const WriteDialog::Verdict &WriteDialog::judge(const WriteOptions &chosen, bool isKnown)
{
    const auto known =
        std::ranges::find(m_Verdicts, chosen, &std::pair<WriteOptions, Verdict>::first);
    if (known != m_Verdicts.end())
        return known->second;
    m_Verdicts.emplace_back(chosen, isKnown ? verdict(chosen) : Verdict());
    return m_Verdicts.back().second;
}

void WriteDialog::showVerdict()
{
    const WriteOptions chosen = options();
    const bool isOfKind = std::ranges::find(m_Formats, chosen.format) != m_Formats.end();
    const Verdict &verdict = judge(chosen, isOfKind || m_Formats.empty());
    QString obstacle = verdict.obstacle;
    if (!isOfKind && obstacle.isEmpty())
        obstacle = (isStructureFormat(chosen.format)
                        ? tr("The name ends like that of %1, which is for structures.")
                        : tr("The name ends like that of %1, which is for alignments."))
                       .arg(QString::fromStdString(fileOf(chosen.format)));
    if (m_NamesFolder && !QFileInfo(typedPath()).isDir())
        obstacle = tr("There is no folder of that name.");
    m_IsPossible = obstacle.isEmpty();
    const QStringList sentences = m_IsPossible ? verdict.losses : QStringList(obstacle);
    m_LossesLabel->setText(!m_IsPossible         ? tr("This cannot be written:")
                           : sentences.isEmpty() ? tr("Nothing is lost in this format.")
                           : verdict.heading.isEmpty()
                               ? tr("This is lost or changed in this format:")
                               : verdict.heading);
    m_Losses->clear();
    const QIcon icon = style()->standardIcon(m_IsPossible ? QStyle::SP_MessageBoxInformation
                                                          : QStyle::SP_MessageBoxWarning);
    for (const QString &sentence : sentences)
        m_Losses->addItem(new QListWidgetItem(icon, sentence));
    m_Losses->setVisible(!sentences.isEmpty());
    if (!verdict.acceptText.isEmpty())
        setAcceptText(verdict.acceptText);
    m_Counts->setVisible(m_IsPossible && verdict.canCount && !m_IsSaving);
    const bool leadsToFolder = !m_NamesFolder && QFileInfo(typedPath()).isDir();
    findChild<QDialogButtonBox *>()
        ->button(QDialogButtonBox::Save)
        ->setEnabled(!m_Name->text().isEmpty() && (m_IsPossible || leadsToFolder));
}

bool WriteDialog::isAccepted(const QStringList &losses) const
{
    return losses.isEmpty() || m_IsSaving || (m_Counts->isVisibleTo(this) && m_Counts->isChecked());
}

// ---- Writing

void WriteDialog::setAcceptText(const QString &text)
{
    setLabelText(QFileDialog::Accept, text);
}

void WriteDialog::setSaving(const QString &folder)
{
    m_IsSaving = true;
    if (!folder.isEmpty())
        setDirectory(folder);
}

void WriteDialog::showEvent(QShowEvent *event)
{
    QFileDialog::showEvent(event);
    m_Name->setFocus();
    m_Name->selectAll();
}

void WriteDialog::accept()
{
    // Leads into a folder, or nowhere.
    if (!m_NamesFolder && (m_Name->text().isEmpty() || QFileInfo(typedPath()).isDir()))
        return QFileDialog::accept();
    // The reason stands beneath.
    if (!m_IsPossible)
        return;
    // The toolkit would take what is chosen in its list for the name, and whatever is behind a dot
    // for an ending.
    m_Target = m_NamesFolder ? typedPath() : nameFor(typedPath(), format());
    if (m_NamesFolder || mayReplace(m_Target))
        done(QDialog::Accepted);
}

bool WriteDialog::mayReplace(const QString &file)
{
    if (testOption(QFileDialog::DontConfirmOverwrite) || !QFileInfo::exists(file))
        return true;
    QMessageBox box(QMessageBox::Warning, windowTitle(),
                    tr("%1 is there already. Replace it?").arg(QFileInfo(file).fileName()),
                    QMessageBox::Yes | QMessageBox::No, this);
    box.setObjectName(QStringLiteral("ReplaceFile"));
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

void WriteDialog::done(int result)
{
    if (result == QDialog::Accepted && !write(m_Target))
        return;
    QFileDialog::done(result);
}

// What takes long goes on when the dialog is closed, unless somebody wants the file for good before
// he goes on himself.
bool WriteDialog::write(const QString &target)
{
    std::vector<ExportRuns::Order> all = orders(target);
    if (all.empty())
        return false;
    const bool goesOn = m_GoesOn && !m_IsSaving;
    QElapsedTimer time;
    time.start();
    for (auto order = all.begin(); order != all.end(); ++order) {
        WriteJob &job = *order->job;
        job.start();
        if (!goesOn)
            static_cast<void>(waitToTheEnd(job, windowTitle(), this));
        else if (!time.hasExpired(kSeveralMilliseconds))
            waitUnnoticed(job);
        if (!job.isOver()) {
            m_Rest.assign(std::make_move_iterator(order), std::make_move_iterator(all.end()));
            break;
        }
        if (!job.outcome()) {
            tellFailure(job.outcome().error());
            return false;
        }
        Logger::Write((m_IsSaving ? tr("Saved %1 to %2") : tr("Exported %1 to %2"))
                          .arg(order->name, job.path()));
        m_Written.push_back(std::move(*order));
    }
    if (!m_IsSaving)
        rememberFolder(m_NamesFolder ? target : QFileInfo(target).absolutePath());
    return true;
}

void WriteDialog::tellFailure(const Failure &failure)
{
    if (failure.kind == FailureKind::Cancelled)
        return;
    const QString cause = QString::fromStdString(failure.message());
    Logger::Write(cause, Logger::Severity::Error);
    QMessageBox box(QMessageBox::Warning, tr("Tambo"), cause, QMessageBox::Ok, this);
    box.setObjectName(QStringLiteral("ExportFailure"));
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

} // namespace TAMBO::app

#include "moc_WriteDialog.cpp"
