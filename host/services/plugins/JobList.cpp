// SPDX-License-Identifier: GPL-3.0-or-later
#include "JobList.h"

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <sys/types.h>

namespace TAMBO::services {

namespace {

// Programs tidy up when they are asked to end, and need a moment for it.
constexpr std::chrono::seconds kGrace(5);

} // namespace

JobList &JobList::instance()
{
    static JobList list;
    return list;
}

JobList::Job *JobList::find(RunningJobs::Number number)
{
    const auto job = std::ranges::find(m_Jobs, number, &Job::number);
    return job == m_Jobs.end() ? nullptr : &*job;
}

RunningJobs::Number JobList::begin(const QString &title, qint64 program)
{
    std::erase_if(m_Failures,
                  [&title](const FailedJob &failure) { return failure.title == title; });
    Job job;
    job.number = ++m_LastNumber;
    job.title = title;
    job.program = program;
    job.running.start();
    m_Jobs.push_back(job);
    emit changed();
    return job.number;
}

void JobList::endWithWorkbench(RunningJobs::Number number)
{
    Job *job = find(number);
    if (job == nullptr)
        return;
    job->endsWithWorkbench = true;
    emit changed();
}

void JobList::say(RunningJobs::Number number, const QString &line)
{
    Job *job = find(number);
    if (job == nullptr || job->lastLine == line || job->isCancelled)
        return;
    job->lastLine = line;
    emit changed();
}

void JobList::end(RunningJobs::Number number)
{
    if (std::erase_if(m_Jobs, [number](const Job &job) { return job.number == number; }) > 0)
        emit changed();
}

void JobList::fail(RunningJobs::Number number, const QString &what, const QStringList &lastLines)
{
    const Job *job = find(number);
    if (job == nullptr)
        return;
    const bool isWanted = job->isCancelled;
    if (!isWanted)
        m_Failures.push_back({number, job->title, what, lastLines});
    end(number);
    if (!isWanted)
        emit failed(what, lastLines);
}

void JobList::cancel(RunningJobs::Number number)
{
    Job *job = find(number);
    if (job == nullptr || job->program <= 0 || job->isCancelled)
        return;
    job->isCancelled = true;
    job->lastLine = tr("is being cancelled");
    ::kill(static_cast<pid_t>(job->program), SIGTERM);
    QTimer::singleShot(kGrace, this, [this, number] { kill(number); });
    emit changed();
}

// A job stands in the list as long as nobody has collected its program, so the number of the
// process is still its own.
void JobList::kill(RunningJobs::Number number)
{
    if (const Job *job = find(number))
        ::kill(static_cast<pid_t>(job->program), SIGKILL);
}

void JobList::forgetFailures()
{
    m_Failures.clear();
    emit changed();
}

} // namespace TAMBO::services

RunningJobs::Number RunningJobs::Begin(const QString &title, qint64 program)
{
    return TAMBO::services::JobList::instance().begin(title, program);
}

void RunningJobs::EndWithWorkbench(Number job)
{
    TAMBO::services::JobList::instance().endWithWorkbench(job);
}

void RunningJobs::Say(Number job, const QString &line)
{
    TAMBO::services::JobList::instance().say(job, line);
}

void RunningJobs::End(Number job)
{
    TAMBO::services::JobList::instance().end(job);
}

void RunningJobs::Fail(Number job, const QString &what, const QStringList &lastLines)
{
    TAMBO::services::JobList::instance().fail(job, what, lastLines);
}

#include "moc_JobList.cpp"
