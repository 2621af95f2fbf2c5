// SPDX-License-Identifier: GPL-3.0-or-later
#include "SuperposeDialog.h"

#include "Alignment.h"
#include "KindIcons.h"
#include "ObjectFacts.h"
#include "ObjectReferences.h"
#include "Structure.h"
#include "SuperposePlan.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <set>

namespace TAMBO::app {

namespace {

enum Column { ChainColumn, StructureColumn, AtomsColumn, ColumnCount };

constexpr int kRowRole = Qt::UserRole;

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
    resize(520, 440);
    m_Rows->setFocus();
}

SuperposeDialog::~SuperposeDialog() = default;

void SuperposeDialog::makeControls()
{
    m_Alignments = new QComboBox;
    m_Alignments->setObjectName(QStringLiteral("Alignment"));
    m_Rows = new QTreeWidget;
    m_Rows->setObjectName(QStringLiteral("Rows"));
    m_Rows->setHeaderLabels({tr("Chain"), tr("Structure"), tr("CA atoms")});
    m_Rows->setRootIsDecorated(false);
    m_Rows->setUniformRowHeights(true);
    m_Rows->setAlternatingRowColors(true);
    m_Rows->setAllColumnsShowFocus(true);
    m_Rows->header()->setStretchLastSection(false);
    m_Rows->header()->setSectionResizeMode(ChainColumn, QHeaderView::Stretch);
    m_Rows->header()->setSectionResizeMode(StructureColumn, QHeaderView::Stretch);
    m_Rows->header()->setSectionResizeMode(AtomsColumn, QHeaderView::ResizeToContents);
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
    m_Plan->setMinimumHeight(3 * fontMetrics().lineSpacing());
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
    layout->addLayout(plan);
    layout->addWidget(buttons);
    // Of this dialog, which it knows from here on.
    m_Superpose->setDefault(true);
}

void SuperposeDialog::fillAlignments(const std::vector<Alignment *> &alignments,
                                     const Compound *chosen)
{
    const QSignalBlocker silence(m_Alignments);
    KindIcons icons;
    int current = -1;
    for (Alignment *alignment : alignments) {
        if (alignment == chosen || (chosen == nullptr && current < 0 && canBeUsed(*alignment)))
            current = m_Alignments->count();
        m_References.push_back(
            std::make_unique<ObjectReferences>(std::vector<Compound *>{alignment}));
        m_Alignments->addItem(icons.icon(ObjectKind::Alignment, false),
                              tr("%1 (%2)").arg(nameText(*alignment), sizeText(*alignment)));
    }
    m_Alignments->setCurrentIndex(std::max(current, 0));
    fillRows();
}

void SuperposeDialog::fillRows()
{
    {
        const QSignalBlocker silence(m_Rows);
        m_Rows->clear();
        std::set<const Structure *> met;
        const Alignment *const shown = alignment();
        for (const SuperposableRow &row :
             shown != nullptr ? superposableRows(*shown) : std::vector<SuperposableRow>()) {
            auto *item =
                new QTreeWidgetItem(m_Rows, {QString::fromStdString(row.name),
                                             QString::fromStdString(row.structure->Name()),
                                             QLocale().toString(qulonglong(row.residues))});
            item->setData(ChainColumn, kRowRole, qulonglong(row.row));
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable |
                           Qt::ItemNeverHasChildren);
            item->setTextAlignment(AtomsColumn, Qt::AlignRight | Qt::AlignVCenter);
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

void SuperposeDialog::showPlan()
{
    const Alignment *const shown = alignment();
    QString text;
    bool isGood = false;
    if (shown == nullptr) {
        text = tr("The alignment is not loaded any more.");
    } else if (m_Rows->topLevelItemCount() < 2) {
        text = tr("Fewer than two rows of this alignment belong to structures that are loaded.");
    } else {
        const Result<SuperposePlan> plan = planSuperposition(*shown, rows());
        isGood = plan.has_value();
        text = plan ? tr("%1 will move onto %2, on %3 columns in which all of them have a CA atom.")
                          .arg(plan.value().moves.size() == 1
                                   ? tr("1 structure")
                                   : tr("%1 structures").arg(plan.value().moves.size()),
                               QString::fromStdString(plan.value().reference),
                               QLocale().toString(qulonglong(plan.value().columns)))
                    : QString::fromStdString(plan.error().message());
    }
    m_Plan->setText(text);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_Picture->setPixmap(
        style()
            ->standardIcon(isGood ? QStyle::SP_MessageBoxInformation : QStyle::SP_MessageBoxWarning)
            .pixmap(size, size));
    m_Superpose->setEnabled(isGood);
}

} // namespace TAMBO::app

#include "moc_SuperposeDialog.cpp"
