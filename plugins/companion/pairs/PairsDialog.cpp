// SPDX-License-Identifier: GPL-3.0-or-later
#include "PairsDialog.h"

#include "Alignment.h"
#include "AlignmentWindow.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMainWindow>
#include <QProgressDialog>
#include <QPushButton>
#include <QSaveFile>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace companion {

namespace {

constexpr int kBeforeProgress = 300;
constexpr int kPercent = 100;
constexpr QSize kPairsSize(620, 480);

} // namespace

PairsDialog::PairsDialog(TAMBO::AlignmentWindow &window)
    : QDialog(window.mainWindow()),
      m_Model(new PairModel(this)),
      m_Compared(new QComboBox),
      m_Table(new QTableView),
      m_Remark(new QLabel)
{
    const TAMBO::Alignment &alignment = *window.alignment();
    setWindowTitle(tr("Identities in %1").arg(QString::fromStdString(alignment.Name())));
    const unsigned long rows = std::min(alignment.height(), kMostRows);
    for (unsigned long row = 0; row < rows; ++row) {
        m_Names << QString::fromStdString(alignment.GetSeqName(row));
        m_Rows.push_back(alignment.GetSequence(row, false));
    }
    if (rows < alignment.height())
        m_Remark->setText(tr("Of the first %1 of %2 rows.").arg(rows).arg(alignment.height()));
    m_Remark->setTextFormat(Qt::PlainText);

    m_Compared->addItem(tr("aligned pairs of residues"), int(IdentityOf::AlignedPairs));
    m_Compared->addItem(tr("residues of the shorter sequence"), int(IdentityOf::ShorterSequence));
    m_Compared->addItem(tr("columns of the alignment"), int(IdentityOf::AlignmentLength));
    auto *const label = new QLabel(tr("Identical pairs of 100 &of:"));
    label->setBuddy(m_Compared);
    auto *const csv = new QPushButton(tr("&Export as CSV…"));
    csv->setAutoDefault(false);
    auto *const top = new QHBoxLayout;
    top->addWidget(label);
    top->addWidget(m_Compared);
    top->addStretch();
    top->addWidget(csv);
    auto *const layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_Table);
    layout->addWidget(m_Remark);
    m_Table->setAccessibleName(tr("Identities of pairs of rows"));
    m_Table->setModel(m_Model);
    m_Table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_Table->horizontalHeader()->setSectionResizeMode(PairModel::FirstName, QHeaderView::Stretch);
    m_Table->horizontalHeader()->setSectionResizeMode(PairModel::SecondName, QHeaderView::Stretch);
    m_Table->verticalHeader()->setDefaultSectionSize(m_Table->fontMetrics().height() + 6);
    m_Table->sortByColumn(PairModel::Identity, Qt::DescendingOrder);
    m_Table->setSortingEnabled(true);
    m_Table->findChild<QAbstractButton *>()->setAccessibleName(tr("Select all pairs"));
    resize(kPairsSize);
    connect(m_Compared, &QComboBox::currentIndexChanged, this, &PairsDialog::compute);
    connect(csv, &QPushButton::clicked, this, &PairsDialog::askAndExport);
    compute();
}

PairsDialog::~PairsDialog() = default;

void PairsDialog::compute()
{
    QProgressDialog progress(tr("Comparing the rows…"), tr("Cancel"), 0, kPercent, this);
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(kBeforeProgress);
    auto distances = identityDistances(
        m_Rows, static_cast<IdentityOf>(m_Compared->currentData().toInt()), [&](double done) {
            progress.setValue(int(done * (kPercent - 1)));
            return !progress.wasCanceled();
        });
    // What there was stays.
    if (!distances)
        return;
    m_Model->setPairs(m_Names, std::move(*distances));
    m_Model->sort(m_Table->horizontalHeader()->sortIndicatorSection(),
                  m_Table->horizontalHeader()->sortIndicatorOrder());
}

bool PairsDialog::exportTo(const QString &file)
{
    QSaveFile out(file);
    const QByteArray csv = m_Model->toCsv();
    const bool isWritten =
        out.open(QIODevice::WriteOnly) && out.write(csv) == csv.size() && out.commit();
    m_Remark->setText(isWritten ? tr("Written: %1").arg(file)
                                : tr("%1: %2").arg(file, out.errorString()));
    return isWritten;
}

void PairsDialog::askAndExport()
{
    const QString file = QFileDialog::getSaveFileName(
        this, tr("Export Identities"), QStringLiteral("identities.csv"), tr("Tables (*.csv)"));
    if (!file.isEmpty())
        exportTo(file);
}

} // namespace companion
