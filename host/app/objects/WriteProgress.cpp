// SPDX-License-Identifier: GPL-3.0-or-later
#include "WriteProgress.h"

#include "WriteJob.h"

#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace TAMBO::app {

namespace {

constexpr int kWriteSteps = 1000;
constexpr int kWriteTick = 50;

} // namespace

WriteProgress::WriteProgress(WriteJob &job, const QString &title, QWidget *parent)
    : QDialog(parent), m_Job(&job)
{
    setObjectName(QStringLiteral("WriteProgress"));
    setWindowTitle(title);
    m_Text = new QLabel(tr("Writing %1").arg(QFileInfo(job.path()).fileName()));
    m_Text->setTextFormat(Qt::PlainText);
    m_Bar = new QProgressBar;
    m_Bar->setRange(0, kWriteSteps);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::rejected, this, &WriteProgress::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_Text);
    layout->addWidget(m_Bar);
    layout->addWidget(buttons);
    setMinimumWidth(360);
    startTimer(kWriteTick);
}

WriteProgress::~WriteProgress() = default;

void WriteProgress::reject()
{
    if (m_Job)
        m_Job->cancel();
    m_Text->setText(tr("Cancelling…"));
}

// It goes when the writing has ended.
void WriteProgress::closeEvent(QCloseEvent *event)
{
    reject();
    event->ignore();
}

void WriteProgress::timerEvent(QTimerEvent *event)
{
    QDialog::timerEvent(event);
    if (m_Job)
        m_Bar->setValue(int(m_Job->done() * kWriteSteps));
}

} // namespace TAMBO::app

#include "moc_WriteProgress.cpp"
