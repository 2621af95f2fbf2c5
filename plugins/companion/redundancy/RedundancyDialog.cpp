// SPDX-License-Identifier: GPL-3.0-or-later
#include "RedundancyDialog.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "ControlNames.h"
#include "RowRemoval.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace companion {

namespace {

constexpr double kUsualRedundancy = 90;
constexpr double kPercentOfAll = 100;
constexpr QSize kRedundancySize(760, 520);
constexpr int kRowSpace = 6;

QPushButton *plainButton(const QString &text)
{
    auto *const button = new QPushButton(text);
    button->setAutoDefault(false);
    return button;
}

} // namespace

RedundancyDialog::RedundancyDialog(TAMBO::AlignmentWindow &window, Tell tell)
    : QDialog(window.mainWindow()),
      AlignmentViewObserver(window),
      m_Window(window),
      m_Tell(std::move(tell)),
      m_Search(window),
      m_Model(new RedundancyModel(this)),
      m_Identity(new QDoubleSpinBox),
      m_Compared(new QComboBox),
      m_Kept(new QComboBox),
      m_Table(new QTableView),
      m_State(new QLabel),
      m_Progress(new QProgressBar),
      m_Again(plainButton(tr("&Search Again"))),
      m_All(plainButton(tr("Tick &All"))),
      m_None(plainButton(tr("Tick &None"))),
      m_Remove(plainButton(tr("&Remove")))
{
    setWindowTitle(tr("Redundant Rows"));
    makeControls();
    layOut();
    connect(&m_Search, &RedundancySearch::progressed, m_Progress, &QProgressBar::setValue);
    connect(&m_Search, &RedundancySearch::finished, this, &RedundancyDialog::take);
    connect(&m_Search, &RedundancySearch::failed, this, &RedundancyDialog::giveUp);
    search();
}

RedundancyDialog::~RedundancyDialog()
{
    m_Search.disconnect(this);
    // While it is hidden at its end, the table asks for its columns' widths once more.
    m_Table->setModel(nullptr);
}

void RedundancyDialog::makeControls()
{
    m_Identity->setRange(1, kPercentOfAll);
    m_Identity->setDecimals(0);
    m_Identity->setValue(kUsualRedundancy);
    m_Identity->setSuffix(QStringLiteral(" %"));
    m_Identity->setKeyboardTracking(false);
    m_Identity->setAccessibleName(tr("Least identity with a row that is kept"));
    m_Compared->addItem(tr("residues of the shorter sequence"), int(IdentityOf::ShorterSequence));
    m_Compared->addItem(tr("aligned pairs of residues"), int(IdentityOf::AlignedPairs));
    m_Compared->addItem(tr("columns of the alignment"), int(IdentityOf::AlignmentLength));
    m_Compared->setAccessibleName(tr("What identical pairs are a share of"));
    m_Kept->addItems({tr("the one with a structure, else the longest"), tr("the longest one")});
    m_Kept->setAccessibleName(tr("Which of rows that are alike is kept"));
    m_State->setTextFormat(Qt::PlainText);
    m_State->setWordWrap(true);
    m_Progress->setAccessibleName(tr("How much of the search is done"));
    m_Table->setAccessibleName(tr("Redundant rows"));
    m_Table->setModel(m_Model);
    m_Table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_Table->setTabKeyNavigation(false);
    // A name is broken at a slash otherwise, and what is behind it, residue numbers, is not shown.
    m_Table->setWordWrap(false);
    m_Table->setTextElideMode(Qt::ElideMiddle);
    QHeaderView &header = *m_Table->horizontalHeader();
    header.setSectionResizeMode(QHeaderView::ResizeToContents);
    header.setSectionResizeMode(RedundancyModel::Name, QHeaderView::Stretch);
    header.setSectionResizeMode(RedundancyModel::KeptName, QHeaderView::Stretch);
    m_Table->verticalHeader()->hide();
    m_Table->verticalHeader()->setDefaultSectionSize(m_Table->fontMetrics().height() + kRowSpace);
    m_Table->installEventFilter(this);
    connect(m_Identity, &QDoubleSpinBox::valueChanged, this, &RedundancyDialog::search);
    for (QComboBox *const box : {m_Compared, m_Kept})
        connect(box, &QComboBox::currentIndexChanged, this, &RedundancyDialog::search);
    connect(m_Model, &RedundancyModel::ticksChanged, this, &RedundancyDialog::showState);
    connect(m_Table->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &RedundancyDialog::showRow);
    connect(m_Again, &QPushButton::clicked, this, [this] {
        if (isSearching())
            giveUp(tr("The search was stopped."));
        else
            search();
    });
    connect(m_All, &QPushButton::clicked, this, [this] { m_Model->tickAll(true); });
    connect(m_None, &QPushButton::clicked, this, [this] { m_Model->tickAll(false); });
    connect(m_Remove, &QPushButton::clicked, this, &RedundancyDialog::removeTicked);
}

void RedundancyDialog::layOut()
{
    auto *const rule = new QFormLayout;
    const auto add = [rule](const QString &text, QWidget *widget) {
        auto *const label = new QLabel(text);
        label->setBuddy(widget);
        rule->addRow(label, widget);
    };
    add(tr("Rows are alike from an &identity of"), m_Identity);
    add(tr("Identical pairs of 100 &of"), m_Compared);
    add(tr("Of rows that are alike, &keep"), m_Kept);
    auto *const close = plainButton(tr("&Close"));
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    auto *const buttons = new QHBoxLayout;
    for (QPushButton *const button : {m_Again, m_All, m_None})
        buttons->addWidget(button);
    buttons->addStretch();
    buttons->addWidget(m_Remove);
    buttons->addWidget(close);
    auto *const layout = new QVBoxLayout(this);
    layout->addLayout(rule);
    layout->addWidget(m_Table, 1);
    layout->addWidget(m_Progress);
    layout->addWidget(m_State);
    layout->addLayout(buttons);
    nameInnerControls(*this);
    resize(kRedundancySize);
}

RedundancyRule RedundancyDialog::rule() const
{
    return {m_Identity->value() / kPercentOfAll,
            static_cast<IdentityOf>(m_Compared->currentData().toInt()),
            m_Kept->currentIndex() == 0};
}

// ---- Searching

void RedundancyDialog::search()
{
    m_Model->clear();
    m_Search.start(rule());
    m_Progress->setValue(0);
    showState();
}

void RedundancyDialog::take()
{
    if (!m_Search.isOfNow())
        return search();
    m_Model->show(m_Search.found(),
                  {[this](unsigned long row) {
                       const TAMBO::Alignment *const alignment = m_Window.alignment();
                       return alignment == nullptr
                                  ? QString()
                                  : QString::fromStdString(alignment->GetSeqName(row));
                   },
                   [this](unsigned long row) { return m_Search.rows().hasStructure(row); }});
    m_Table->resizeColumnToContents(RedundancyModel::Row);
    showState();
}

void RedundancyDialog::giveUp(const QString &why)
{
    m_Search.cancel();
    m_Model->clear();
    showState();
    m_State->setText(why);
}

void RedundancyDialog::alignmentShown()
{
    giveUp(tr("Another alignment is shown now."));
}

void RedundancyDialog::layoutRebuilt()
{
    // While one searches, it begins anew by itself.
    if (!isSearching() && !m_Search.isOfNow())
        giveUp(tr("The alignment has changed since it was searched."));
}

QString RedundancyDialog::stateText() const
{
    return m_State->text();
}

void RedundancyDialog::showState()
{
    const bool isSearching = m_Search.isRunning();
    m_Progress->setVisible(isSearching);
    m_Again->setText(isSearching ? tr("&Stop") : tr("&Search Again"));
    for (QPushButton *const button : {m_All, m_None})
        button->setEnabled(m_Model->rowCount() > 0);
    m_Remove->setEnabled(m_Model->tickedCount() > 0);
    const unsigned long rows = m_Search.rows().rows();
    m_State->setText(isSearching ? tr("Comparing the rows…")
                     : m_Model->rowCount() == 0
                         ? tr("No row is redundant.")
                         : tr("%L1 of %L2 rows are redundant; %L3 of them would go.")
                               .arg(m_Model->rowCount())
                               .arg(rows)
                               .arg(m_Model->tickedCount()));
}

// ---- The table

void RedundancyDialog::showRow(const QModelIndex &index)
{
    if (!index.isValid() || !m_Search.isOfNow())
        return;
    const TAMBO::CellBlock seen = m_Window.visibleCells();
    m_Window.showCell({m_Model->at(index.row()).row, (seen.colBegin + seen.colEnd) / 2});
}

// Space ticks all rows of the table that are selected, or unticks them.
bool RedundancyDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_Table || event->type() != QEvent::KeyPress ||
        static_cast<const QKeyEvent *>(event)->key() != Qt::Key_Space)
        return QDialog::eventFilter(watched, event);
    QList<int> rows;
    for (const QModelIndex &each : m_Table->selectionModel()->selectedRows())
        rows << each.row();
    if (!rows.isEmpty())
        m_Model->tick(rows, !m_Model->isTicked(rows.constFirst()));
    return true;
}

bool RedundancyDialog::removeTicked()
{
    TAMBO::Alignment *const alignment = m_Window.alignment();
    if (alignment == nullptr || !m_Search.isOfNow() || m_Model->tickedCount() == 0)
        return false;
    const int count = m_Model->tickedCount();
    if (!removeRows(*alignment, m_Model->tickedRows(alignment->height()),
                    "Remove redundant rows")) {
        m_State->setText(tr("Nothing is removed: the alignment cannot be changed now."));
        return false;
    }
    m_Tell(count == 1 ? tr("1 redundant row removed.")
                      : tr("%L1 redundant rows removed.").arg(count));
    accept();
    return true;
}

} // namespace companion
