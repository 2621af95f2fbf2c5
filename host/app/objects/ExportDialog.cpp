// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExportDialog.h"

#include "ConfigStore.h"
#include "FileName.h"
#include "KeptState.h"
#include "KindIcons.h"
#include "Logger.h"
#include "ObjectFacts.h"
#include "ObjectReferences.h"
#include "ObjectTwins.h"
#include "SavedPlaces.h"
#include "WritableObject.h"
#include "WriteJob.h"
#include "WriteWait.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace TAMBO::app {

namespace {

constexpr const char *kSection = "Files";
constexpr const char *kKey = "ExportDirectory";
constexpr const char *kOpenKey = "Directory";

QString compressedEnding()
{
    return QString::fromLatin1(kCompressedEnding.data(), qsizetype(kCompressedEnding.size()));
}

// "Clustal (*.aln *.clustal *.clw)", or the same for compressed files.
QString filterOf(FileFormat format, const QString &more = {})
{
    QStringList patterns;
    for (const std::string_view ending : fileEndings(format))
        patterns << u'*' + QString::fromUtf8(ending.data(), qsizetype(ending.size())) + more;
    QString title = QString::fromStdString(formatTitle(format));
    if (!more.isEmpty())
        title = ExportDialog::tr("%1, compressed").arg(title);
    return title + QStringLiteral(" (%1)").arg(patterns.join(u' '));
}

// Without the dot in front, as the file dialog wants it.
QString endingOf(FileFormat format)
{
    const std::string_view ending = fileEndings(format).front().substr(1);
    return QString::fromUtf8(ending.data(), qsizetype(ending.size()));
}

bool hasLineLength(const WriteOptions &options)
{
    return entryOf(options.format).lines == Lines::Asked && !options.isSequential;
}

} // namespace

ExportDialog::ExportDialog(const std::vector<Compound *> &objects, const Compound *chosen,
                           QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("ExportDialog"));
    setWindowTitle(tr("Export"));
    makeControls();
    fillObjects(objects, chosen);
    resize(520, 420);
}

ExportDialog::~ExportDialog() = default;

void ExportDialog::makeControls()
{
    m_Objects = new QComboBox;
    m_Objects->setObjectName(QStringLiteral("Object"));
    m_Format = new QComboBox;
    m_Format->setObjectName(QStringLiteral("Format"));
    m_LineLength = new QSpinBox;
    m_LineLength->setObjectName(QStringLiteral("LineLength"));
    m_LineLength->setRange(0, 100000);
    m_LineLength->setSingleStep(10);
    m_LineLength->setSpecialValueText(tr("as usual"));
    m_Names = new QComboBox;
    m_Names->setObjectName(QStringLiteral("Names"));
    m_Names->addItems({tr("10 characters"), tr("any length, without blanks")});
    m_Layout = new QComboBox;
    m_Layout->setObjectName(QStringLiteral("Layout"));
    m_Layout->addItems({tr("blocks of all rows"), tr("one row after the other")});
    m_LineLengthLabel = new QLabel(tr("Columns a &line:"));
    m_LineLengthLabel->setBuddy(m_LineLength);
    m_NamesLabel = new QLabel(tr("&Names:"));
    m_NamesLabel->setBuddy(m_Names);
    m_LayoutLabel = new QLabel(tr("La&yout:"));
    m_LayoutLabel->setBuddy(m_Layout);

    auto *form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(tr("&Object:"), m_Objects);
    form->addRow(tr("&Format:"), m_Format);
    form->addRow(m_LineLengthLabel, m_LineLength);
    form->addRow(m_NamesLabel, m_Names);
    form->addRow(m_LayoutLabel, m_Layout);

    m_LossesLabel = new QLabel;
    m_LossesLabel->setObjectName(QStringLiteral("LossesLabel"));
    m_LossesLabel->setWordWrap(true);
    m_Losses = new QListWidget;
    m_Losses->setObjectName(QStringLiteral("Losses"));
    m_Losses->setWordWrap(true);
    m_Losses->setSelectionMode(QAbstractItemView::NoSelection);
    m_Losses->setFocusPolicy(Qt::NoFocus);
    m_Losses->setAlternatingRowColors(true);

    m_Counts = new QCheckBox(tr("&Count it as saved although this is lost"));
    m_Counts->setObjectName(QStringLiteral("CountsAsSaved"));
    m_Counts->hide();

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    m_Write = buttons->addButton(tr("&Export…"), QDialogButtonBox::AcceptRole);
    m_Write->setObjectName(QStringLiteral("Write"));
    connect(buttons, &QDialogButtonBox::accepted, this, &ExportDialog::write);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_Objects, &QComboBox::currentIndexChanged, this, &ExportDialog::choose);
    connect(m_Format, &QComboBox::currentIndexChanged, this, &ExportDialog::followFormat);
    connect(m_LineLength, &QSpinBox::valueChanged, this, &ExportDialog::followOptions);
    connect(m_Names, &QComboBox::currentIndexChanged, this, &ExportDialog::followOptions);
    connect(m_Layout, &QComboBox::currentIndexChanged, this, &ExportDialog::followFormat);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_LossesLabel);
    layout->addWidget(m_Losses, 1);
    layout->addWidget(m_Counts);
    layout->addWidget(buttons);
    // Of this dialog, which it knows from here on.
    m_Write->setDefault(true);
}

void ExportDialog::fillObjects(const std::vector<Compound *> &objects, const Compound *chosen)
{
    const QSignalBlocker silence(m_Objects);
    KindIcons icons;
    int current = 0;
    const std::vector<QString> texts = listTexts({objects.begin(), objects.end()});
    for (Compound *object : objects) {
        if (object == chosen)
            current = m_Objects->count();
        m_References.push_back(std::make_unique<ObjectReferences>(std::vector<Compound *>{object}));
        m_Objects->addItem(icons.icon(kindOf(*object), false),
                           texts[std::size_t(m_Objects->count())], nameText(*object));
        m_Objects->setItemData(m_Objects->count() - 1, services::ObjectTwins::toolTip(*object),
                               Qt::ToolTipRole);
    }
    m_Objects->setCurrentIndex(current);
    choose(current);
}

void ExportDialog::choose(int index)
{
    m_Object.reset();
    const std::vector<Compound *> &objects = m_References[std::size_t(index)]->objects();
    if (!objects.empty())
        m_Object = WritableObject::asked(*objects.front());
    m_IsGivenUp = !objects.empty() && m_Object == nullptr;
    keepState();
    fillFormats();
    followFormat();
}

// The format stays if the object can be written in it.
void ExportDialog::fillFormats()
{
    const QSignalBlocker silence(m_Format);
    const QVariant before = m_Format->currentData();
    m_Format->clear();
    if (m_Object == nullptr)
        return;
    for (const FileFormat format : m_Object->formats())
        m_Format->addItem(QString::fromStdString(formatTitle(format)), int(format));
    m_Format->setCurrentIndex(std::max(0, m_Format->findData(before)));
}

WriteOptions ExportDialog::options() const
{
    WriteOptions options;
    options.format = FileFormat(m_Format->currentData().toInt());
    if (options.format == FileFormat::Phylip) {
        options.hasLongNames = m_Names->currentIndex() == 1;
        options.isSequential = m_Layout->currentIndex() == 1;
    }
    if (hasLineLength(options))
        options.lineLength = std::size_t(m_LineLength->value());
    return options;
}

void ExportDialog::followFormat()
{
    const WriteOptions chosen = options();
    const bool isPhylip = chosen.format == FileFormat::Phylip;
    const bool hasLines = m_Object != nullptr && hasLineLength(chosen);
    for (QWidget *widget :
         {static_cast<QWidget *>(m_Names), static_cast<QWidget *>(m_NamesLabel),
          static_cast<QWidget *>(m_Layout), static_cast<QWidget *>(m_LayoutLabel)})
        widget->setVisible(isPhylip);
    m_LineLength->setVisible(hasLines);
    m_LineLengthLabel->setVisible(hasLines);
    followOptions();
}

void ExportDialog::followOptions()
{
    const QStyle *const pictures = style();
    m_Losses->clear();
    m_OwnLosses.clear();
    m_Counts->hide();
    const QString lack = m_IsGivenUp ? tr("It is not copied: that was cancelled.")
                                     : tr("It is not loaded any more.");
    const Result<void> fits = m_Object == nullptr
                                  ? Failure{FailureKind::NotFound, lack.toStdString()}
                                  : m_Object->checkWritable(options());
    m_Write->setEnabled(fits.has_value());
    if (!fits) {
        m_LossesLabel->setText(tr("This cannot be written:"));
        m_Losses->addItem(new QListWidgetItem(pictures->standardIcon(QStyle::SP_MessageBoxWarning),
                                              QString::fromStdString(fits.error().message())));
        return;
    }
    const QStringList losses = m_Object->losses(options()) + m_Object->lostLooks();
    m_LossesLabel->setText(losses.isEmpty() ? tr("Nothing is lost in this format.")
                                            : tr("This is lost or changed in this format:"));
    for (const QString &loss : losses)
        m_Losses->addItem(
            new QListWidgetItem(pictures->standardIcon(QStyle::SP_MessageBoxInformation), loss));
    followLosses();
}

// Beside the losses: what the user has to say to them.
void ExportDialog::followLosses()
{
    m_OwnLosses = m_Object->ownLosses(options());
    const Compound *const chosen = object();
    if (m_Places != nullptr && chosen != nullptr) {
        const QIcon icon = style()->standardIcon(QStyle::SP_MessageBoxInformation);
        for (const QString &sentence : m_Places->strangeNumbers(*chosen, options()))
            m_Losses->addItem(new QListWidgetItem(icon, sentence));
        m_Counts->setVisible(!m_IsSaving && !m_OwnLosses.isEmpty() && m_Places->isUnsaved(*chosen));
    }
    if (m_IsSaving)
        m_Write->setText(m_OwnLosses.isEmpty() ? tr("&Save…") : tr("&Save with Losses…"));
}

Compound *ExportDialog::object() const
{
    const std::vector<Compound *> &objects =
        m_References[std::size_t(m_Objects->currentIndex())]->objects();
    return objects.empty() ? nullptr : objects.front();
}

bool ExportDialog::countsAsSaved() const
{
    return m_OwnLosses.isEmpty() || m_IsSaving ||
           (m_Counts->isVisibleTo(this) && m_Counts->isChecked());
}

void ExportDialog::setPlaces(const SavedPlaces &places)
{
    m_Places = &places;
    keepState();
    followOptions();
}

void ExportDialog::saveInstead(const QString &folder, FileFormat format)
{
    m_IsSaving = true;
    m_Folder = folder;
    setWindowTitle(tr("Save %1").arg(nameOfObject()));
    m_Format->setCurrentIndex(std::max(0, m_Format->findData(int(format))));
    followFormat();
}

QString ExportDialog::askFile()
{
    services::ConfigStore &store = services::ConfigStore::instance();
    const std::string directory =
        store.value(kSection, kKey)
            .value_or(store.value(kSection, kOpenKey).value_or(std::string()));
    const FileFormat format = options().format;
    const QString compressed = filterOf(format, compressedEnding());
    QFileDialog dialog(this, m_IsSaving ? tr("Save") : tr("Export"),
                       m_Folder.isEmpty() ? QString::fromStdString(directory) : m_Folder);
    dialog.setObjectName(QStringLiteral("ExportFileDialog"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters({filterOf(format), compressed});
    dialog.setDefaultSuffix(endingOf(format));
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString &filter) {
        dialog.setDefaultSuffix(endingOf(format) +
                                (filter == compressed ? compressedEnding() : QString()));
    });
    const std::string name = fileNameOf(nameOfObject().toStdString());
    dialog.selectFile(QString::fromStdString(name) + u'.' + endingOf(format));
    if (dialog.exec() == QDialog::Rejected || dialog.selectedFiles().isEmpty())
        return {};
    if (!m_IsSaving) {
        store.setValue(kSection, kKey, dialog.directory().absolutePath().toStdString());
        store.saveOrLog();
    }
    return dialog.selectedFiles().front();
}

void ExportDialog::write()
{
    const QString file = askFile();
    if (!file.isEmpty())
        writeTo(file);
}

// What takes long goes on when the dialog is closed, unless somebody wants the file for good before
// he goes on himself.
void ExportDialog::writeTo(const QString &file)
{
    m_Job = std::make_unique<WriteJob>(m_Object, file, options());
    m_Job->start();
    if (m_GoesOn && !m_IsSaving)
        waitUnnoticed(*m_Job);
    else
        static_cast<void>(waitToTheEnd(*m_Job, windowTitle(), this));
    if (!m_Job->isOver())
        return accept();
    const std::unique_ptr<WriteJob> job = std::move(m_Job);
    const Result<void> written = job->outcome();
    if (!written && written.error().kind == FailureKind::Cancelled)
        return;
    if (!written) {
        const QString cause = QString::fromStdString(written.error().message());
        Logger::Write(cause, Logger::Severity::Error);
        QMessageBox box(QMessageBox::Warning, tr("Tambo"), cause, QMessageBox::Ok, this);
        box.setObjectName(QStringLiteral("ExportFailure"));
        box.setTextFormat(Qt::PlainText);
        box.exec();
        return;
    }
    Logger::Write(
        (m_IsSaving ? tr("Saved %1 to %2") : tr("Exported %1 to %2")).arg(nameOfObject(), file));
    m_File = file;
    m_Written = job->written();
    accept();
}

QString ExportDialog::nameOfObject() const
{
    return m_Objects->currentData().toString();
}

std::unique_ptr<WriteJob> ExportDialog::takeJob()
{
    return std::move(m_Job);
}

std::unique_ptr<KeptState> ExportDialog::takeState()
{
    return std::move(m_State);
}

// Of the object as it was chosen, which is what is written.
void ExportDialog::keepState()
{
    m_State = m_Places == nullptr || object() == nullptr ? nullptr : m_Places->keepState(*object());
}

} // namespace TAMBO::app

#include "moc_ExportDialog.cpp"
