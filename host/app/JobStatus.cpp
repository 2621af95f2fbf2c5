// SPDX-License-Identifier: GPL-3.0-or-later
#include "JobStatus.h"

#include "JobList.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOption>

#include <algorithm>

namespace TAMBO::app {

namespace {

using services::JobList;

constexpr int kSecond = 1000;
constexpr qint64 kMinute = 60;
constexpr qint64 kHour = 60 * kMinute;
// In characters: enough for a progress line, and the count of objects beside it stays readable.
constexpr int kWidest = 52;
constexpr int kNarrowest = 14;

QString jobText(const JobList::Job &job, const QString &title)
{
    const QString begin = title + u' ' + JobStatus::durationText(job.running.elapsed());
    return job.lastLine.isEmpty() ? begin : begin + QStringLiteral(" – ") + job.lastLine;
}

} // namespace

JobStatus::JobStatus(JobList &jobs, QWidget *parent) : QWidget(parent), m_Jobs(jobs)
{
    setObjectName(QStringLiteral("JobStatus"));
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    m_Clock.setInterval(kSecond);
    connect(&m_Clock, &QTimer::timeout, this, &JobStatus::refresh);
    connect(&jobs, &JobList::changed, this, &JobStatus::refresh);
    refresh();
}

JobStatus::~JobStatus() = default;

QString JobStatus::durationText(qint64 milliseconds)
{
    const qint64 seconds = milliseconds / kSecond;
    const auto two = [](qint64 number) {
        return QStringLiteral("%1").arg(number, 2, 10, QChar('0'));
    };
    const QString end = two(seconds % kMinute);
    if (seconds < kHour)
        return QString::number(seconds / kMinute) + u':' + end;
    return QString::number(seconds / kHour) + u':' + two(seconds / kMinute % kMinute) + u':' + end;
}

// The job begun last is the one that the user waits for; the others are in the tool tip.
void JobStatus::refresh()
{
    const std::vector<JobList::Job> &jobs = m_Jobs.jobs();
    if (jobs.empty()) {
        m_Clock.stop();
        m_Text.clear();
        hide();
        return;
    }
    const JobList::Job &newest = jobs.back();
    m_Text =
        jobText(newest, jobs.size() == 1 ? newest.title
                                         : tr("%1 jobs; %2").arg(jobs.size()).arg(newest.title));
    QStringList lines;
    for (auto job = jobs.rbegin(); job != jobs.rend(); ++job)
        lines << jobText(*job, job->title);
    setToolTip(lines.join(u'\n').toHtmlEscaped().replace(u'\n', QStringLiteral("<br>")));
    if (!m_Clock.isActive())
        m_Clock.start();
    updateGeometry();
    show();
    update();
}

QSize JobStatus::sizeHint() const
{
    const int widest = kWidest * fontMetrics().averageCharWidth();
    return {std::min(fontMetrics().horizontalAdvance(m_Text) + 2, widest), fontMetrics().height()};
}

QSize JobStatus::minimumSizeHint() const
{
    return {kNarrowest * fontMetrics().averageCharWidth(), fontMetrics().height()};
}

void JobStatus::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    style()->drawItemText(&painter, rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          palette(), isEnabled(),
                          fontMetrics().elidedText(m_Text, Qt::ElideRight, width()),
                          QPalette::WindowText);
}

} // namespace TAMBO::app
