// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyDialog.h"

#include "Alignment.h"
#include "FamilyFolder.h"
#include "FamilyOfAlignment.h"
#include "KindIcons.h"
#include "ObjectFacts.h"
#include "ObjectReferences.h"
#include "ObjectTwins.h"
#include "TargetsModel.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QStyle>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace TAMBO::app {

namespace {

// Of one model, on a processor of its own.
constexpr int kLeastSeconds = 10;
constexpr int kMostSeconds = 30;
constexpr int kMinuteOfWork = 60;
constexpr int kHourOfWork = 60 * kMinuteOfWork;
// A family of proteins has longer names than these in few rows only.
constexpr int kNameWidth = 240;

std::filesystem::path folderPath(const QString &file)
{
    return QFile::encodeName(file).toStdString();
}

// As one folder: nothing that leads elsewhere.
QString folderWord(const QString &name)
{
    QString word;
    for (const QChar character : name)
        word += character.isLetterOrNumber() || QStringLiteral("._-").contains(character)
                    ? character
                    : QChar(u'_');
    while (word.startsWith(u'.') || word.startsWith(u'-'))
        word.remove(0, 1);
    return word.isEmpty() ? QStringLiteral("family") : word;
}

QString spanText(std::size_t seconds)
{
    if (seconds < 2 * kMinuteOfWork)
        return FamilyDialog::tr("%1 s").arg(seconds);
    if (seconds < 2 * kHourOfWork)
        return FamilyDialog::tr("%1 min").arg((seconds + kMinuteOfWork / 2) / kMinuteOfWork);
    return FamilyDialog::tr("%1 h").arg((seconds + kHourOfWork / 2) / kHourOfWork);
}

} // namespace

FamilyDialog::FamilyDialog(const std::vector<Alignment *> &alignments, const Compound *chosen,
                           SourceOf sourceOf, QWidget *parent)
    : QDialog(parent), m_SourceOf(std::move(sourceOf))
{
    setObjectName(QStringLiteral("FamilyDialog"));
    setWindowTitle(tr("Models of a Family"));
    makeControls();
    fillAlignments(alignments, chosen);
    resize(720, 600);
    m_List->setFocus();
}

FamilyDialog::~FamilyDialog() = default;

void FamilyDialog::makeTargets()
{
    m_Targets = new TargetsModel(this);
    m_Shown = new QSortFilterProxyModel(this);
    m_Shown->setSourceModel(m_Targets);
    m_Shown->setSortRole(TargetsModel::kSortRole);
    m_Shown->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_Shown->setSortCaseSensitivity(Qt::CaseInsensitive);
    m_List = new QTreeView;
    m_List->setObjectName(QStringLiteral("Targets"));
    m_List->setAccessibleName(tr("Targets"));
    m_List->setModel(m_Shown);
    m_List->setRootIsDecorated(false);
    m_List->setUniformRowHeights(true);
    m_List->setAlternatingRowColors(true);
    m_List->setAllColumnsShowFocus(true);
    m_List->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_List->setSortingEnabled(true);
    // In the order of the rows until somebody sorts them.
    m_List->sortByColumn(-1, Qt::AscendingOrder);
    m_List->header()->setStretchLastSection(false);
    m_List->header()->setSectionResizeMode(TargetsModel::TemplateColumn, QHeaderView::Stretch);
    m_List->setColumnWidth(TargetsModel::TargetColumn, kNameWidth);
    m_Filter = new QLineEdit;
    m_Filter->setObjectName(QStringLiteral("Filter"));
    m_Filter->setPlaceholderText(tr("Part of a name"));
    m_Filter->setClearButtonEnabled(true);
    connect(m_Filter, &QLineEdit::textChanged, m_Shown,
            &QSortFilterProxyModel::setFilterFixedString);
    connect(m_Targets, &TargetsModel::ticksChanged, this, &FamilyDialog::follow);
}

void FamilyDialog::makeControls()
{
    m_Alignments = new QComboBox;
    m_Alignments->setObjectName(QStringLiteral("Alignment"));
    m_Template = new QComboBox;
    m_Template->setObjectName(QStringLiteral("Template"));
    m_Template->setToolTip(tr("The best one has the most columns in which it has the same letter "
                              "as the target; of several the first"));
    makeTargets();
    m_Folder = new QLineEdit;
    m_Folder->setObjectName(QStringLiteral("Folder"));
    auto *choose = new QPushButton(tr("C&hoose…"));
    choose->setAutoDefault(false);
    m_Run = new RunChoice;

    auto *form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(tr("&Alignment:"), m_Alignments);
    form->addRow(tr("&Template:"), m_Template);
    auto *targets = new QLabel(tr("Tar&gets:"));
    targets->setBuddy(m_List);
    auto *filterLabel = new QLabel(tr("&Filter:"));
    filterLabel->setBuddy(m_Filter);
    auto *all = new QPushButton(tr("Tick A&ll"));
    all->setObjectName(QStringLiteral("All"));
    all->setToolTip(tr("All that are shown"));
    all->setAutoDefault(false);
    auto *none = new QPushButton(tr("&Untick All"));
    none->setObjectName(QStringLiteral("None"));
    none->setToolTip(tr("All that are shown"));
    none->setAutoDefault(false);
    auto *above = new QHBoxLayout;
    above->addWidget(targets);
    above->addStretch();
    above->addWidget(filterLabel);
    above->addWidget(m_Filter);
    above->addWidget(all);
    above->addWidget(none);
    auto *folderLabel = new QLabel(tr("Fol&der:"));
    folderLabel->setBuddy(m_Folder);
    auto *folder = new QHBoxLayout;
    folder->addWidget(folderLabel);
    folder->addWidget(m_Folder, 1);
    folder->addWidget(choose);

    m_Picture = new QLabel;
    m_Says = new QLabel;
    m_Says->setObjectName(QStringLiteral("Says"));
    m_Says->setTextFormat(Qt::PlainText);
    m_Says->setWordWrap(true);
    m_Says->setMinimumHeight(3 * fontMetrics().lineSpacing());
    m_Says->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto *says = new QHBoxLayout;
    says->addWidget(m_Picture, 0, Qt::AlignTop);
    says->addWidget(m_Says, 1);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    m_Build = buttons->addButton(tr("&Build Models"), QDialogButtonBox::AcceptRole);
    m_Build->setObjectName(QStringLiteral("Build"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_Alignments, &QComboBox::currentIndexChanged, this, &FamilyDialog::takeAlignment);
    connect(m_Template, &QComboBox::currentIndexChanged, this, &FamilyDialog::takeTemplate);
    connect(all, &QPushButton::clicked, this, [this] { tick(true); });
    connect(none, &QPushButton::clicked, this, [this] { tick(false); });
    connect(choose, &QPushButton::clicked, this, &FamilyDialog::askFolder);
    connect(m_Folder, &QLineEdit::textChanged, this, &FamilyDialog::follow);
    connect(m_Run, &RunChoice::changed, this, &FamilyDialog::follow);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(above);
    layout->addWidget(m_List, 1);
    layout->addLayout(folder);
    layout->addWidget(m_Run);
    layout->addLayout(says);
    layout->addWidget(buttons);
    // Of this dialog, which it knows from here on.
    m_Build->setDefault(true);
}

void FamilyDialog::fillAlignments(const std::vector<Alignment *> &alignments,
                                  const Compound *chosen)
{
    const QSignalBlocker silence(m_Alignments);
    KindIcons icons;
    int current = 0;
    const std::vector<QString> texts = listTexts({alignments.begin(), alignments.end()});
    for (Alignment *alignment : alignments) {
        if (alignment == chosen)
            current = m_Alignments->count();
        m_References.push_back(
            std::make_unique<ObjectReferences>(std::vector<Compound *>{alignment}));
        m_Alignments->addItem(icons.icon(ObjectKind::Alignment, false),
                              texts[std::size_t(m_Alignments->count())]);
        m_Alignments->setItemData(m_Alignments->count() - 1,
                                  services::ObjectTwins::toolTip(*alignment), Qt::ToolTipRole);
    }
    m_Alignments->setCurrentIndex(current);
    takeAlignment();
}

void FamilyDialog::takeAlignment()
{
    const Alignment *const chosen = alignment();
    const QSignalBlocker silence(m_Template);
    m_Template->clear();
    m_Template->addItem(tr("Best for each target"));
    m_Targets->setFamily(chosen == nullptr ? families::Family()
                                           : familyOf(*chosen, m_SourceOf(*chosen)));
    const std::vector<families::FamilyRow> &rows = m_Targets->family().rows;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (rows[row].hasStructure)
            m_Template->addItem(m_Targets->nameText(row),
                                QByteArray::fromStdString(rows[row].name));
    }
    if (chosen != nullptr && m_Folder->text() == m_Suggested) {
        m_Suggested = suggestedFolder(*chosen);
        m_Folder->setText(m_Suggested);
    }
    follow();
}

void FamilyDialog::takeTemplate()
{
    m_Targets->setTemplate(m_Template->currentData().toByteArray().toStdString());
}

void FamilyDialog::tick(bool ticked)
{
    std::vector<int> rows;
    for (int i = 0; i < m_Shown->rowCount(); ++i)
        rows.push_back(m_Shown->mapToSource(m_Shown->index(i, 0)).row());
    m_Targets->setTicked(rows, ticked);
}

QString FamilyDialog::suggestedFolder(const Alignment &alignment) const
{
    const std::filesystem::path source = m_SourceOf(alignment);
    const QDir beside(source.empty() ? QDir::homePath()
                                     : QFile::decodeName(source.parent_path().c_str()));
    return beside.filePath(tr("%1-models").arg(folderWord(nameText(alignment))));
}

void FamilyDialog::askFolder()
{
    const QString chosen = QFileDialog::getSaveFileName(
        this, tr("Folder for the Models"), m_Folder->text(), QString(), nullptr,
        QFileDialog::ShowDirsOnly | QFileDialog::DontConfirmOverwrite);
    if (!chosen.isEmpty())
        m_Folder->setText(chosen);
}

Alignment *FamilyDialog::alignment() const
{
    const std::vector<Compound *> &objects =
        m_References[std::size_t(m_Alignments->currentIndex())]->objects();
    return objects.empty() ? nullptr : dynamic_cast<Alignment *>(objects.front());
}

const families::Family &FamilyDialog::family() const
{
    return m_Targets->family();
}

std::vector<families::PlannedModel> FamilyDialog::plan() const
{
    return m_Targets->plan();
}

std::filesystem::path FamilyDialog::folder() const
{
    return folderPath(QFileInfo(m_Folder->text().trimmed()).absoluteFilePath());
}

QString FamilyDialog::objection() const
{
    if (alignment() == nullptr)
        return tr("The alignment is not loaded any more.");
    if (!m_Targets->objection().isEmpty())
        return m_Targets->objection();
    if (m_Targets->tickedCount() == 0)
        return tr("Tick the targets that models are to be built of.");
    const QFileInfo folder(m_Folder->text().trimmed());
    if (folder.filePath().isEmpty())
        return tr("Name the folder for the models.");
    if (folder.exists() && !folder.isDir())
        return tr("%1 is a file.").arg(folder.filePath());
    if (!folder.exists() && !QFileInfo(folder.absolutePath()).isDir())
        return tr("There is no folder %1.").arg(folder.absolutePath());
    return m_Run->objection();
}

QString FamilyDialog::costs() const
{
    const std::size_t models = m_Targets->tickedCount();
    const auto atOnce = std::size_t(m_Run->order().atOnce);
    const std::size_t rounds = (models + atOnce - 1) / atOnce;
    const QString number = QLocale().toString(qulonglong(models));
    QString text =
        models == 1
            ? tr("1 model: about 10 to 30 s and 1 GB of memory.")
            : tr("%1 models: about 10 to 30 s and 1 GB of memory each, %2 to %3 with %4 at once.")
                  .arg(number, spanText(rounds * kLeastSeconds), spanText(rounds * kMostSeconds),
                       QString::number(std::min(models, atOnce)));
    if (QFileInfo::exists(QFileInfo(m_Folder->text().trimmed()).filePath() + u'/' +
                          QLatin1String(families::FamilyFolder::kListName)))
        text +=
            u' ' + tr("The folder is there already: only what is missing or has changed is built.");
    return text;
}

void FamilyDialog::follow()
{
    const QString missing = objection();
    m_Says->setText(missing.isEmpty() ? costs() : missing);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_Picture->setPixmap(style()
                             ->standardIcon(missing.isEmpty() ? QStyle::SP_MessageBoxInformation
                                                              : QStyle::SP_MessageBoxWarning)
                             .pixmap(size, size));
    m_Build->setEnabled(missing.isEmpty());
}

} // namespace TAMBO::app

#include "moc_FamilyDialog.cpp"
