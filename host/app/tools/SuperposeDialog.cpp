// SPDX-License-Identifier: GPL-3.0-or-later
#include "SuperposeDialog.h"

#include "Alignment.h"
#include "Config.h"
#include "ConfigStore.h"
#include "KindIcons.h"
#include "ObjectFacts.h"
#include "ObjectReferences.h"
#include "ObjectTwins.h"
#include "PlainText.h"
#include "Structure.h"
#include "SuperposeCommand.h"
#include "SuperposePlan.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <map>
#include <set>

namespace TAMBO::app {

namespace {

enum Column {
    ChainColumn,
    StructureColumn,
    AtomsColumn,
    CoreColumn,
    CoreRmsdColumn,
    WholeRmsdColumn
};

constexpr int kPlanLines = 4;
constexpr double kLeastCutoff = 0.5;
constexpr double kMostCutoff = 20;
constexpr double kCutoffStep = 0.5;

constexpr int kRowRole = Qt::UserRole;

constexpr const char *kSection = "Superpose";
constexpr const char *kPruneKey = "LeaveOutPairs";
constexpr const char *kCutoffKey = "Cutoff";
constexpr const char *kRangeKey = "OnlyRange";

bool keptSwitch(const char *key, bool usual)
{
    bool isKnown = false;
    const bool isOn = Config::GetSetting(kSection, key).ToBool(&isKnown);
    return isKnown ? isOn : usual;
}

double keptCutoff()
{
    bool isKnown = false;
    const double cutoff = Config::GetSetting(kSection, kCutoffKey).ToDouble(&isKnown);
    return isKnown && cutoff >= kLeastCutoff && cutoff <= kMostCutoff ? cutoff
                                                                      : FitChoice::kUsualCutoff;
}

unsigned long rowOf(const QTreeWidgetItem &item)
{
    return item.data(ChainColumn, kRowRole).toULongLong();
}

std::vector<QTreeWidgetItem *> checkedItems(const QTreeWidget &rows)
{
    std::vector<QTreeWidgetItem *> items;
    for (int i = 0; i < rows.topLevelItemCount(); ++i) {
        if (rows.topLevelItem(i)->checkState(ChainColumn) == Qt::Checked)
            items.push_back(rows.topLevelItem(i));
    }
    return items;
}

// Structures of one name are told apart; one that several rows lie in has one text.
std::vector<QString> structureTexts(const std::vector<SuperposableRow> &rows)
{
    std::vector<const Compound *> structures;
    for (const SuperposableRow &row : rows) {
        if (std::ranges::find(structures, row.structure) == structures.end())
            structures.push_back(row.structure);
    }
    const std::vector<QString> differences = services::ObjectTwins::differences(
        structures, [](const Compound &structure) { return structure.Name(); });
    std::vector<QString> texts;
    for (const SuperposableRow &row : rows) {
        const auto place = std::ranges::find(structures, row.structure) - structures.begin();
        texts.push_back(services::ObjectTwins::label(QString::fromStdString(row.structure->Name()),
                                                     differences[std::size_t(place)]));
    }
    return texts;
}

// Rows of one name by where they stand.
std::vector<QString> rowTexts(const std::vector<SuperposableRow> &rows)
{
    std::map<std::string, int> counts;
    for (const SuperposableRow &row : rows)
        ++counts[row.name];
    std::vector<QString> texts;
    for (const SuperposableRow &row : rows) {
        const QString difference =
            counts[row.name] > 1 ? SuperposeDialog::tr("row %1").arg(row.row + 1) : QString();
        texts.push_back(services::ObjectTwins::label(QString::fromStdString(row.name), difference));
    }
    return texts;
}

bool canBeUsed(const Alignment &alignment)
{
    std::set<const Structure *> structures;
    for (const SuperposableRow &row : superposableRows(alignment))
        structures.insert(row.structure);
    return structures.size() > 1;
}

} // namespace

SuperposeDialog::SuperposeDialog(const std::vector<Alignment *> &alignments, const Compound *chosen,
                                 QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("SuperposeDialog"));
    setWindowTitle(tr("Superpose Structures"));
    makeControls();
    fillAlignments(alignments, chosen);
    resize(760, 500);
    m_Rows->setFocus();
}

SuperposeDialog::~SuperposeDialog() = default;

void SuperposeDialog::makeControls()
{
    m_Alignments = new QComboBox;
    m_Alignments->setObjectName(QStringLiteral("Alignment"));
    m_Rows = new QTreeWidget;
    m_Rows->setObjectName(QStringLiteral("Rows"));
    m_Rows->setHeaderLabels({tr("Chain"), tr("Structure"), tr("CA atoms"), tr("Core"),
                             tr("Core RMSD (Å)"), tr("RMSD of all (Å)")});
    m_Rows->headerItem()->setToolTip(CoreColumn, tr("The pairs of CA atoms that are not left out"));
    m_Rows->headerItem()->setToolTip(CoreRmsdColumn, tr("What it will be of the core"));
    m_Rows->headerItem()->setToolTip(WholeRmsdColumn,
                                     tr("What it will be of all pairs, those left out, too"));
    m_Rows->setRootIsDecorated(false);
    m_Rows->setUniformRowHeights(true);
    m_Rows->setAlternatingRowColors(true);
    m_Rows->setAllColumnsShowFocus(true);
    m_Rows->header()->setStretchLastSection(false);
    m_Rows->header()->setSectionResizeMode(ChainColumn, QHeaderView::Stretch);
    m_Rows->header()->setSectionResizeMode(StructureColumn, QHeaderView::Stretch);
    for (const int column : {AtomsColumn, CoreColumn, CoreRmsdColumn, WholeRmsdColumn})
        m_Rows->header()->setSectionResizeMode(column, QHeaderView::ResizeToContents);
    m_Reference = new QComboBox;
    m_Reference->setObjectName(QStringLiteral("Reference"));
    m_Reference->setToolTip(tr("The structure that stays where it is"));

    auto *form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(tr("&Alignment:"), m_Alignments);
    auto *chains = new QLabel(tr("&Chains to superpose, each with its whole structure:"));
    chains->setBuddy(m_Rows);
    auto *below = new QFormLayout;
    below->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    below->addRow(tr("&Reference, which stays:"), m_Reference);

    m_Picture = new QLabel;
    m_Plan = new QLabel;
    m_Plan->setObjectName(QStringLiteral("Plan"));
    m_Plan->setTextFormat(Qt::PlainText);
    m_Plan->setWordWrap(true);
    // Room for what it may say, so that nothing jumps while chains are checked.
    m_Plan->setMinimumHeight(kPlanLines * fontMetrics().lineSpacing());
    m_Plan->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto *plan = new QHBoxLayout;
    plan->addWidget(m_Picture, 0, Qt::AlignTop);
    plan->addWidget(m_Plan, 1);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    m_Superpose = buttons->addButton(tr("&Superpose"), QDialogButtonBox::AcceptRole);
    m_Superpose->setObjectName(QStringLiteral("Superpose"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_Alignments, &QComboBox::currentIndexChanged, this, &SuperposeDialog::fillRows);
    connect(m_Rows, &QTreeWidget::itemChanged, this, &SuperposeDialog::fillReferences);
    connect(m_Reference, &QComboBox::currentIndexChanged, this, &SuperposeDialog::showPlan);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(chains);
    layout->addWidget(m_Rows, 1);
    layout->addLayout(below);
    layout->addLayout(makeChoice());
    layout->addLayout(plan);
    layout->addWidget(buttons);
    // Of this dialog, which it knows from here on.
    m_Superpose->setDefault(true);
}

QLayout *SuperposeDialog::makeChoice()
{
    m_InRange = new QCheckBox;
    m_InRange->setObjectName(QStringLiteral("InRange"));
    m_Prune = new QCheckBox(tr("&Leave out pairs that stay farther apart than"));
    m_Prune->setObjectName(QStringLiteral("Prune"));
    m_Prune->setChecked(keptSwitch(kPruneKey, true));
    m_Prune->setToolTip(
        tr("Superposes by the core alone: the farthest pairs are left out, some at a "
           "time, until all are nearer than this"));
    m_Cutoff = new QDoubleSpinBox;
    m_Cutoff->setObjectName(QStringLiteral("Cutoff"));
    m_Cutoff->setAccessibleName(tr("Pairs that stay farther apart are left out"));
    m_Cutoff->setDecimals(1);
    m_Cutoff->setRange(kLeastCutoff, kMostCutoff);
    m_Cutoff->setSingleStep(kCutoffStep);
    m_Cutoff->setValue(keptCutoff());
    m_Cutoff->setSuffix(tr(" Å"));
    m_Cutoff->setEnabled(m_Prune->isChecked());
    m_WantsRange = keptSwitch(kRangeKey, false);
    connect(m_InRange, &QCheckBox::toggled, this, [this](bool isOn) {
        m_WantsRange = isOn;
        showPlan();
    });
    connect(m_Prune, &QCheckBox::toggled, m_Cutoff, &QWidget::setEnabled);
    connect(m_Prune, &QCheckBox::toggled, this, &SuperposeDialog::showPlan);
    connect(m_Cutoff, &QDoubleSpinBox::valueChanged, this, &SuperposeDialog::showPlan);

    auto *prune = new QHBoxLayout;
    prune->addWidget(m_Prune);
    prune->addWidget(m_Cutoff);
    prune->addStretch();
    auto *layout = new QVBoxLayout;
    layout->addWidget(m_InRange);
    layout->addLayout(prune);
    return layout;
}

void SuperposeDialog::offerRange()
{
    const Alignment *const shown = alignment();
    const Alignment::Range range = shown == nullptr ? Alignment::Range() : shown->range();
    const bool isPart = shown != nullptr && range.first < range.second &&
                        (range.first > 0 || range.second < shown->width());
    const QSignalBlocker silence(m_InRange);
    m_InRange->setEnabled(isPart);
    m_InRange->setChecked(isPart && m_WantsRange);
    m_InRange->setText(isPart ? tr("&Only the columns of the range, %1 to %2")
                                    .arg(range.first + 1)
                                    .arg(std::min(range.second, shown->width()))
                              : tr("&Only the columns of the range, which is all of them now"));
}

void SuperposeDialog::accept()
{
    services::ConfigStore &store = services::ConfigStore::instance();
    const auto textOf = [](bool isOn) { return isOn ? "true" : "false"; };
    store.setValue(kSection, kPruneKey, textOf(m_Prune->isChecked()));
    store.setValue(kSection, kCutoffKey, QString::number(m_Cutoff->value(), 'f', 1).toStdString());
    store.setValue(kSection, kRangeKey, textOf(m_WantsRange));
    store.saveOrLog();
    QDialog::accept();
}

FitChoice SuperposeDialog::choice() const
{
    FitChoice choice;
    const Alignment *const shown = alignment();
    if (m_InRange->isChecked() && shown != nullptr) {
        choice.begin = shown->range().first;
        choice.end = shown->range().second;
    }
    choice.cutoff = m_Prune->isChecked() ? m_Cutoff->value() : 0;
    return choice;
}

void SuperposeDialog::fillAlignments(const std::vector<Alignment *> &alignments,
                                     const Compound *chosen)
{
    const QSignalBlocker silence(m_Alignments);
    KindIcons icons;
    int current = -1;
    const std::vector<QString> texts = listTexts({alignments.begin(), alignments.end()});
    for (Alignment *alignment : alignments) {
        if (alignment == chosen || (chosen == nullptr && current < 0 && canBeUsed(*alignment)))
            current = m_Alignments->count();
        m_References.push_back(
            std::make_unique<ObjectReferences>(std::vector<Compound *>{alignment}));
        m_Alignments->addItem(icons.icon(ObjectKind::Alignment, false),
                              texts[std::size_t(m_Alignments->count())]);
        m_Alignments->setItemData(m_Alignments->count() - 1,
                                  services::ObjectTwins::toolTip(*alignment), Qt::ToolTipRole);
    }
    m_Alignments->setCurrentIndex(std::max(current, 0));
    fillRows();
}

void SuperposeDialog::fillRows()
{
    offerRange();
    {
        const QSignalBlocker silence(m_Rows);
        m_Rows->clear();
        std::set<const Structure *> met;
        const Alignment *const shown = alignment();
        const std::vector<SuperposableRow> rows =
            shown != nullptr ? superposableRows(*shown) : std::vector<SuperposableRow>();
        const std::vector<QString> structures = structureTexts(rows);
        const std::vector<QString> names = rowTexts(rows);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const SuperposableRow &row = rows[i];
            auto *item = new QTreeWidgetItem(
                m_Rows, {names[i], structures[i], QLocale().toString(qulonglong(row.residues))});
            item->setToolTip(StructureColumn, services::ObjectTwins::toolTip(*row.structure));
            item->setData(ChainColumn, kRowRole, qulonglong(row.row));
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable |
                           Qt::ItemNeverHasChildren);
            for (const int column : {AtomsColumn, CoreColumn, CoreRmsdColumn, WholeRmsdColumn})
                item->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
            item->setCheckState(ChainColumn,
                                met.insert(row.structure).second ? Qt::Checked : Qt::Unchecked);
        }
        m_Rows->setCurrentItem(m_Rows->topLevelItem(0));
    }
    fillReferences();
}

void SuperposeDialog::fillReferences()
{
    {
        const QSignalBlocker silence(m_Reference);
        const QVariant before = m_Reference->currentData();
        m_Reference->clear();
        for (const QTreeWidgetItem *item : checkedItems(*m_Rows))
            m_Reference->addItem(item->text(ChainColumn), qulonglong(rowOf(*item)));
        m_Reference->setCurrentIndex(std::max(0, m_Reference->findData(before)));
    }
    showPlan();
}

Alignment *SuperposeDialog::alignment() const
{
    const std::vector<Compound *> &objects =
        m_References[std::size_t(m_Alignments->currentIndex())]->objects();
    return objects.empty() ? nullptr : dynamic_cast<Alignment *>(objects.front());
}

std::vector<unsigned long> SuperposeDialog::rows() const
{
    std::vector<unsigned long> rows;
    for (const QTreeWidgetItem *item : checkedItems(*m_Rows))
        rows.push_back(rowOf(*item));
    const auto reference = std::ranges::find(rows, m_Reference->currentData().toULongLong());
    if (reference != rows.end())
        std::rotate(rows.begin(), reference, reference + 1);
    return rows;
}

void SuperposeDialog::showFits(const SuperposePlan *plan)
{
    const QSignalBlocker silence(m_Rows);
    // Of the checked ones without the reference, in the order of the moves.
    std::size_t next = 0;
    for (int i = 0; i < m_Rows->topLevelItemCount(); ++i) {
        QTreeWidgetItem &item = *m_Rows->topLevelItem(i);
        const bool isMoving = item.checkState(ChainColumn) == Qt::Checked &&
                              rowOf(item) != m_Reference->currentData().toULongLong();
        const PlannedMove *const move = plan != nullptr && isMoving && next < plan->moves.size()
                                            ? &plan->moves[next++]
                                            : nullptr;
        item.setText(CoreColumn,
                     move == nullptr ? QString() : SuperposeCommand::shareText(*plan, *move));
        item.setText(CoreRmsdColumn,
                     move == nullptr ? QString() : QString::number(move->rmsdCore, 'f', 2));
        item.setText(WholeRmsdColumn,
                     move == nullptr ? QString() : QString::number(move->rmsdAfter, 'f', 2));
    }
}

void SuperposeDialog::showPlan()
{
    const Alignment *const shown = alignment();
    QString text;
    bool isGood = false;
    showFits(nullptr);
    if (shown == nullptr) {
        text = tr("The alignment is not loaded any more.");
    } else if (m_Rows->topLevelItemCount() < 2) {
        text = tr("Fewer than two rows of this alignment belong to structures that are loaded.");
    } else {
        const Result<SuperposePlan> plan = planSuperposition(*shown, rows(), choice());
        isGood = plan.has_value();
        showFits(isGood ? &plan.value() : nullptr);
        text = plan ? tr("%1 will move onto %2, on %3 columns in which all of them have a CA atom.")
                          .arg(plan.value().moves.size() == 1
                                   ? tr("1 structure")
                                   : tr("%1 structures").arg(plan.value().moves.size()),
                               QString::fromStdString(plan.value().reference),
                               QLocale().toString(qulonglong(plan.value().columns)))
                    : QString::fromStdString(plan.error().message());
    }
    m_Plan->setText(text);
    m_Plan->setToolTip(plainToolTip(text));
    // Long names need more lines than there is room for.
    if (m_Plan->isVisible())
        m_Plan->setMinimumHeight(std::max(kPlanLines * fontMetrics().lineSpacing(),
                                          m_Plan->heightForWidth(m_Plan->width())));
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_Picture->setPixmap(
        style()
            ->standardIcon(isGood ? QStyle::SP_MessageBoxInformation : QStyle::SP_MessageBoxWarning)
            .pixmap(size, size));
    m_Superpose->setEnabled(isGood);
}

} // namespace TAMBO::app

#include "moc_SuperposeDialog.cpp"
