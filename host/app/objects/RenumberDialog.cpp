// SPDX-License-Identifier: GPL-3.0-or-later
#include "RenumberDialog.h"

#include "RenumberTable.h"

#include <QAbstractItemDelegate>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace TAMBO::app {

namespace {

constexpr int kMostNumber = 1'000'000;
constexpr QSize kRenumberSize(720, 440);
// As wide as the longest name, within these.
constexpr int kSequenceWidth = 200;
constexpr int kMostSequenceWidth = 360;
constexpr int kNameMargin = 16;
constexpr int kNumberWidth = 70;

int nameWidth(const RenumberTable &table, const QFontMetrics &metrics)
{
    int width = kSequenceWidth;
    for (int row = 0; row < table.rowCount() && width < kMostSequenceWidth; ++row)
        width =
            std::max(width, kNameMargin +
                                metrics.horizontalAdvance(
                                    table.index(row, RenumberTable::NameColumn).data().toString()));
    return std::min(width, kMostSequenceWidth);
}

} // namespace

RenumberDialog::RenumberDialog(const std::vector<Compound *> &sequences, QWidget *parent)
    : QDialog(parent), m_Table(new RenumberTable(sequences, this))
{
    setObjectName(QStringLiteral("RenumberDialog"));
    setWindowTitle(tr("Renumber Residues"));
    makeControls();
    connect(m_Table, &RenumberTable::changed, this, &RenumberDialog::follow);
    follow();
    resize(kRenumberSize);
    m_List->setCurrentIndex(m_Table->index(0, RenumberTable::FromColumn));
    m_List->setFocus();
}

RenumberDialog::~RenumberDialog() = default;

void RenumberDialog::makeControls()
{
    m_List = new QTreeView;
    m_List->setObjectName(QStringLiteral("Sequences"));
    m_List->setAccessibleName(tr("Sequences"));
    m_List->setModel(m_Table);
    m_List->setRootIsDecorated(false);
    m_List->setUniformRowHeights(true);
    m_List->setAlternatingRowColors(true);
    m_List->setSelectionBehavior(QAbstractItemView::SelectItems);
    m_List->setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::EditKeyPressed |
                            QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked);
    // When the view has closed the editor.
    connect(
        m_List->itemDelegate(), &QAbstractItemDelegate::closeEditor, this,
        [this](QWidget *, QAbstractItemDelegate::EndEditHint hint) {
            if (hint == QAbstractItemDelegate::SubmitModelCache)
                enterPressed();
        },
        Qt::QueuedConnection);
    m_List->setColumnWidth(RenumberTable::NameColumn, nameWidth(*m_Table, m_List->fontMetrics()));
    m_List->setColumnWidth(RenumberTable::FromColumn, kNumberWidth);
    m_List->setColumnWidth(RenumberTable::ToColumn, kNumberWidth);

    auto *label = new QLabel(tr("New numbers are typed into the column From; a row without one "
                                "stays as it is."));
    label->setWordWrap(true);

    m_First = new QSpinBox;
    m_First->setObjectName(QStringLiteral("First"));
    m_First->setRange(-kMostNumber, kMostNumber);
    m_First->setValue(1);
    auto *firstLabel = new QLabel(tr("&All from:"));
    firstLabel->setBuddy(m_First);
    const auto button = [this](const QString &text, const char *name) {
        auto *made = new QPushButton(text, this);
        made->setObjectName(QLatin1String(name));
        made->setAutoDefault(false);
        return made;
    };
    QPushButton *const fill = button(tr("&Fill In"), "FillIn");
    QPushButton *const clear = button(tr("C&lear"), "Clear");
    QPushButton *const names = button(tr("From &Names"), "FromNames");
    names->setToolTip(tr("A row called NAME/23-145 from 23 on, if it has as many residues"));
    names->setEnabled(m_Table->hasRangesInNames());
    connect(names, &QPushButton::clicked, this, &RenumberDialog::fillFromNames);
    connect(fill, &QPushButton::clicked, this, [this] { m_Table->setAll(m_First->value()); });
    connect(clear, &QPushButton::clicked, this, [this] { m_Table->setAll({}); });
    m_Jumps = new QCheckBox(tr("&Keep numbers that are left out"));
    m_Jumps->setObjectName(QStringLiteral("KeepJumps"));
    m_Jumps->setToolTip(tr("10, 11, 15 from 100 on: 100, 101, 105; otherwise 100, 101, 102"));
    m_Jumps->setChecked(true);
    m_Jumps->setEnabled(m_Table->hasJumps());
    connect(m_Jumps, &QCheckBox::toggled, m_Table, &RenumberTable::setKeepsJumps);
    auto *all = new QHBoxLayout;
    all->addWidget(firstLabel);
    all->addWidget(m_First);
    all->addWidget(fill);
    all->addWidget(names);
    all->addWidget(clear);
    all->addStretch();
    all->addWidget(m_Jumps);

    m_Says = new QLabel;
    m_Says->setObjectName(QStringLiteral("Says"));
    m_Says->setTextFormat(Qt::PlainText);
    m_Says->setWordWrap(true);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    m_Renumber = buttons->addButton(tr("&Renumber"), QDialogButtonBox::AcceptRole);
    m_Renumber->setObjectName(QStringLiteral("Renumber"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_List, 1);
    layout->addLayout(all);
    layout->addWidget(m_Says);
    layout->addWidget(buttons);
    // Of this dialog, which it knows from here on.
    m_Renumber->setDefault(true);
}

void RenumberDialog::enterPressed()
{
    const int next = m_List->currentIndex().row() + 1;
    if (next < m_Table->rowCount())
        m_List->setCurrentIndex(m_Table->index(next, RenumberTable::FromColumn));
    else if (m_Renumber->isEnabled())
        accept();
}

void RenumberDialog::fillFromNames()
{
    const RenumberTable::Filled filled = m_Table->fillFromNames();
    if (filled.otherLengths == 0)
        return;
    const QString left = filled.otherLengths == 1
                             ? tr("1 row is left out: the range in its name is of another length.")
                             : tr("%L1 rows are left out: the ranges in their names are of other "
                                  "lengths.")
                                   .arg(filled.otherLengths);
    m_Says->setText(m_Says->text() + u'\n' + left);
}

void RenumberDialog::follow()
{
    const int changed = m_Table->changedCount();
    const int clashes = m_Table->clashCount();
    QString text =
        tr(changed == 1 ? "%L1 of %L2 gets new numbers, in one step of undo."
                        : "%L1 of %L2 get new numbers, in one step of undo.")
            .arg(changed)
            .arg(m_Table->rowCount() == 1 ? tr("1 sequence")
                                          : tr("%L1 sequences").arg(m_Table->rowCount()));
    if (clashes > 0)
        text = clashes == 1 ? m_Table->firstClash()
                            : tr("%1 (and %2 more)").arg(m_Table->firstClash()).arg(clashes - 1);
    m_Says->setText(text);
    m_Renumber->setEnabled(changed > 0 && clashes == 0);
}

} // namespace TAMBO::app

#include "moc_RenumberDialog.cpp"
