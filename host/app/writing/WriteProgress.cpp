// SPDX-License-Identifier: GPL-3.0-or-later
#include "WriteProgress.h"

#include "WriteJob.h"

#include <QFileInfo>

namespace TAMBO::app {

namespace {

constexpr int kWriteTick = 50;

} // namespace

WriteProgress::WriteProgress(WriteJob &job, const QString &title, QWidget *parent)
    : ProgressBox(title, QString(), parent)
{
    setObjectName(QStringLiteral("WriteProgress"));
    follow(job);
    startTimer(kWriteTick);
}

WriteProgress::~WriteProgress() = default;

void WriteProgress::follow(WriteJob &job)
{
    m_Job = &job;
    setText(tr("Writing %1").arg(QFileInfo(job.path()).fileName()));
}

// It goes when the writing has ended.
void WriteProgress::reject()
{
    if (m_Job)
        m_Job->cancel();
    setText(tr("Cancelling…"));
}

void WriteProgress::timerEvent(QTimerEvent *event)
{
    ProgressBox::timerEvent(event);
    if (m_Job)
        setDone(m_Job->done());
}

} // namespace TAMBO::app

#include "moc_WriteProgress.cpp"
