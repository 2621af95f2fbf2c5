// SPDX-License-Identifier: GPL-3.0-or-later
#include "DuplicatesDialog.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "CellChoice.h"
#include "ControlNames.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <utility>

namespace companion {

namespace {

constexpr QSize kDuplicatesSize(620, 460);
constexpr int kLineSpace = 6;

QPushButton *dialogButton(const QString &text)
{
    auto *const button = new QPushButton(text);
    button->setAutoDefault(false);
    return button;
}

} // namespace

DuplicatesDialog::DuplicatesDialog(TAMBO::AlignmentWindow &window, DuplicateRows found, Tell tell)
    : QDialog(window.mainWindow()),
      AlignmentViewObserver(window),
      m_Window(window),
      m_Found(std::move(found)),
      m_Tell(std::move(tell)),
      m_Revision(window.alignment()->layoutRevision()),
      m_Model(new DuplicateModel(this)),
      m_Kind(new QComboBox),
      m_Table(new QTableView),
      m_State(new QLabel),
      m_All(dialogButton(tr("Select &All"))),
      m_Others(dialogButton(tr("Select All but the &First Ones")))
{
    setWindowTitle(tr("Duplicates in %1").arg(QString::fromStdString(window.alignment()->Name())));
    makeControls();
    // What there is, first.
    m_Kind->setCurrentIndex(m_Found.names.empty() && !m_Found.sequences.empty() ? 1 : 0);
    connect(m_Kind, &QComboBox::currentIndexChanged, this, &DuplicatesDialog::showKind);
    showKind();
}

// While it is hidden at its end, the table asks for its columns' widths once more.
DuplicatesDialog::~DuplicatesDialog()
{
    m_Table->setModel(nullptr);
}

void DuplicatesDialog::makeControls()
{
    const auto kind = [](const QString &text, const DuplicateGroups &groups) {
        return tr("%1 (%L2 rows)").arg(text).arg(groups.size());
    };
    m_Kind->addItems({kind(tr("the same name"), m_Found.names),
                      kind(tr("the same sequence"), m_Found.sequences)});
    m_Kind->setAccessibleName(tr("What rows have in common"));
    auto *const label = new QLabel(tr("&Rows with"));
    label->setBuddy(m_Kind);
    auto *const top = new QHBoxLayout;
    top->addWidget(label);
    top->addWidget(m_Kind);
    top->addStretch();
    m_State->setObjectName(QStringLiteral("State"));
    m_State->setTextFormat(Qt::PlainText);
    m_State->setWordWrap(true);
    m_Table->setAccessibleName(tr("Duplicate rows"));
    m_Table->setModel(m_Model);
    m_Table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_Table->setTabKeyNavigation(false);
    m_Table->setWordWrap(false);
    m_Table->setTextElideMode(Qt::ElideMiddle);
    m_Table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_Table->horizontalHeader()->setSectionResizeMode(DuplicateModel::Name, QHeaderView::Stretch);
    m_Table->horizontalHeader()->setSectionResizeMode(DuplicateModel::SameAs, QHeaderView::Stretch);
    m_Table->verticalHeader()->hide();
    m_Table->verticalHeader()->setDefaultSectionSize(m_Table->fontMetrics().height() + kLineSpace);
    auto *const close = dialogButton(tr("&Close"));
    auto *const buttons = new QHBoxLayout;
    buttons->addWidget(m_All);
    buttons->addWidget(m_Others);
    buttons->addStretch();
    buttons->addWidget(close);
    auto *const layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_Table, 1);
    layout->addWidget(m_State);
    layout->addLayout(buttons);
    nameInnerControls(*this);
    resize(kDuplicatesSize);
    connect(m_Table->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &DuplicatesDialog::showRow);
    connect(m_Table, &QTableView::clicked, this, &DuplicatesDialog::showRow);
    connect(m_All, &QPushButton::clicked, this, [this] { select(Which::All); });
    connect(m_Others, &QPushButton::clicked, this, [this] { select(Which::AllButFirst); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
}

void DuplicatesDialog::showKind()
{
    const DuplicateGroups &groups = m_Kind->currentIndex() == 0 ? m_Found.names : m_Found.sequences;
    // Before it is told, the alignment may have gone.
    const auto alignment = [this] { return m_Window.alignment(); };
    m_Model->show(groups, {[alignment](unsigned long row) {
                               return alignment() == nullptr
                                          ? QString()
                                          : QString::fromStdString(alignment()->GetSeqName(row));
                           },
                           [alignment](unsigned long row) {
                               return alignment() == nullptr
                                          ? 0UL
                                          : alignment()->residueCount(row, alignment()->width());
                           }});
    for (QPushButton *const button : {m_All, m_Others})
        button->setEnabled(!groups.empty());
    const std::size_t count = groupCount(groups);
    m_State->setText(count > 1    ? tr("%L1 rows in %L2 groups.").arg(groups.size()).arg(count)
                     : count == 1 ? tr("%L1 rows in 1 group.").arg(groups.size())
                     : m_Kind->currentIndex() == 0 ? tr("No two rows have the same name.")
                                                   : tr("No two rows have the same sequence."));
}

void DuplicatesDialog::giveUp(const QString &why)
{
    m_Found = {};
    m_Model->show({}, {});
    m_Kind->setEnabled(false);
    for (QPushButton *const button : {m_All, m_Others})
        button->setEnabled(false);
    m_State->setText(why);
}

void DuplicatesDialog::alignmentShown()
{
    giveUp(tr("Another alignment is shown now."));
}

void DuplicatesDialog::layoutRebuilt()
{
    if (m_Kind->isEnabled() && m_Window.alignment() != nullptr &&
        m_Window.alignment()->layoutRevision() != m_Revision)
        giveUp(tr("The alignment has changed since it was searched."));
}

void DuplicatesDialog::showRow(const QModelIndex &index)
{
    if (!index.isValid() || m_Window.alignment() == nullptr)
        return;
    const TAMBO::CellBlock seen = m_Window.visibleCells();
    m_Window.showCell({m_Model->at(index.row()).row, (seen.colBegin + seen.colEnd) / 2},
                      TAMBO::AlignmentWindow::Placement::Nearest);
}

bool DuplicatesDialog::select(Which which)
{
    TAMBO::Alignment *const alignment = m_Window.alignment();
    if (alignment == nullptr || alignment->layoutRevision() != m_Revision ||
        m_Model->groups().empty())
        return false;
    CellChoice choice{std::vector<bool>(alignment->height()),
                      std::vector<bool>(alignment->width(), true)};
    unsigned long count = 0;
    for (const DuplicateRow &each : m_Model->groups()) {
        if (which == Which::AllButFirst && each.row == each.first)
            continue;
        choice.rows[each.row] = true;
        ++count;
    }
    if (!companion::select(*alignment, choice, TAMBO::Alignment::Selecting::Replace)) {
        m_State->setText(tr("Nothing can be selected now."));
        return false;
    }
    m_Tell(tr("%L1 rows selected.").arg(count));
    return true;
}

} // namespace companion
