// SPDX-License-Identifier: GPL-3.0-or-later
#include "JobStatus.h"

#include "JobList.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QToolButton>

#include <algorithm>

namespace TAMBO::app {

namespace {

using services::JobList;

constexpr int kSecond = 1000;
constexpr qint64 kMinute = 60;
constexpr qint64 kHour = 60 * kMinute;
// In characters: enough for a progress line, and the count of objects beside it stays readable.
constexpr int kWidestStatus = 46;
constexpr int kNarrowestStatus = 14;
constexpr int kMenuWidth = 80;

QString jobText(const JobList::Job &job, const QString &title)
{
    const QString begin = title + u' ' + JobStatus::durationText(job.running.elapsed());
    return job.lastLine.isEmpty() ? begin : begin + QStringLiteral(" – ") + job.lastLine;
}

// "&" in a menu text marks the next letter.
QString menuText(const QString &text)
{
    const QString cut = text.size() <= kMenuWidth ? text : text.left(kMenuWidth) + u'…';
    return QString(cut).replace(u'&', QStringLiteral("&&"));
}

} // namespace

JobStatus::JobStatus(JobList &jobs, QWidget *parent) : QWidget(parent), m_Jobs(jobs)
{
    setObjectName(QStringLiteral("JobStatus"));
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    m_Menu = new QMenu(this);
    connect(m_Menu, &QMenu::aboutToShow, this, &JobStatus::fillMenu);
    m_Button = new QToolButton;
    m_Button->setText(tr("Jobs"));
    m_Button->setToolTip(tr("Cancel a job, or read why one has failed"));
    m_Button->setAutoRaise(true);
    m_Button->setPopupMode(QToolButton::InstantPopup);
    m_Button->setMenu(m_Menu);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    layout->addWidget(m_Button);
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
QString JobStatus::describe() const
{
    const std::vector<JobList::Job> &jobs = m_Jobs.jobs();
    if (!jobs.empty()) {
        const JobList::Job &newest = jobs.back();
        return jobText(newest, jobs.size() == 1
                                   ? newest.title
                                   : tr("%1 jobs; %2").arg(jobs.size()).arg(newest.title));
    }
    if (m_Jobs.failures().empty())
        return {};
    const JobList::FailedJob &latest = m_Jobs.failures().back();
    return tr("%1: %2").arg(latest.title, latest.what);
}

QString JobStatus::describeAll() const
{
    QStringList lines;
    const std::vector<JobList::Job> &jobs = m_Jobs.jobs();
    for (auto job = jobs.rbegin(); job != jobs.rend(); ++job)
        lines << jobText(*job, job->title);
    const std::vector<JobList::FailedJob> &failures = m_Jobs.failures();
    for (auto failure = failures.rbegin(); failure != failures.rend(); ++failure)
        lines << tr("%1: %2").arg(failure->title, failure->what);
    return lines.join(u'\n').toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"));
}

void JobStatus::refresh()
{
    m_Text = describe();
    if (m_Jobs.jobs().empty())
        m_Clock.stop();
    else if (!m_Clock.isActive())
        m_Clock.start();
    if (m_Text.isEmpty()) {
        hide();
        return;
    }
    setToolTip(describeAll());
    updateGeometry();
    show();
    update();
}

void JobStatus::fillMenu()
{
    m_Menu->clear();
    const std::vector<JobList::Job> &jobs = m_Jobs.jobs();
    for (auto job = jobs.rbegin(); job != jobs.rend(); ++job) {
        const QString text =
            tr("Cancel %1 (%2)").arg(job->title, durationText(job->running.elapsed()));
        QAction *action = m_Menu->addAction(
            menuText(text), this, [this, number = job->number] { m_Jobs.cancel(number); });
        action->setEnabled(job->program > 0 && !job->isCancelled);
    }
    const std::vector<JobList::FailedJob> &failures = m_Jobs.failures();
    if (failures.empty())
        return;
    m_Menu->addSeparator();
    for (auto failure = failures.rbegin(); failure != failures.rend(); ++failure)
        m_Menu->addAction(menuText(tr("%1: %2").arg(failure->title, failure->what)), this,
                          [this, what = failure->what, lines = failure->lastLines] {
                              emit failureAsked(what, lines);
                          });
    m_Menu->addAction(tr("Forget Failures"), &m_Jobs, &JobList::forgetFailures);
}

QSize JobStatus::sizeHint() const
{
    const int widest = kWidestStatus * fontMetrics().averageCharWidth();
    const QSize button = m_Button->sizeHint();
    return {std::min(fontMetrics().horizontalAdvance(m_Text) + 2, widest) + button.width(),
            std::max(fontMetrics().height(), button.height())};
}

QSize JobStatus::minimumSizeHint() const
{
    const QSize button = m_Button->minimumSizeHint();
    return {kNarrowestStatus * fontMetrics().averageCharWidth() + button.width(),
            std::max(fontMetrics().height(), button.height())};
}

void JobStatus::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect room = rect().adjusted(0, 0, -m_Button->width(), 0);
    style()->drawItemText(&painter, room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          palette(), isEnabled(),
                          fontMetrics().elidedText(m_Text, Qt::ElideRight, room.width()),
                          QPalette::WindowText);
}

} // namespace TAMBO::app

#include "moc_JobStatus.cpp"
