// SPDX-License-Identifier: GPL-3.0-or-later
#include "JobList.h"

#include <algorithm>

namespace TAMBO::services {

JobList &JobList::instance()
{
    static JobList list;
    return list;
}

RunningJobs::Number JobList::begin(const QString &title)
{
    Job job;
    job.number = ++m_LastNumber;
    job.title = title;
    job.running.start();
    m_Jobs.push_back(job);
    emit changed();
    return job.number;
}

void JobList::say(RunningJobs::Number number, const QString &line)
{
    const auto job = std::ranges::find(m_Jobs, number, &Job::number);
    if (job == m_Jobs.end() || job->lastLine == line)
        return;
    job->lastLine = line;
    emit changed();
}

void JobList::end(RunningJobs::Number number)
{
    if (std::erase_if(m_Jobs, [number](const Job &job) { return job.number == number; }) > 0)
        emit changed();
}

} // namespace TAMBO::services

RunningJobs::Number RunningJobs::Begin(const QString &title)
{
    return TAMBO::services::JobList::instance().begin(title);
}

void RunningJobs::Say(Number job, const QString &line)
{
    TAMBO::services::JobList::instance().say(job, line);
}

void RunningJobs::End(Number job)
{
    TAMBO::services::JobList::instance().end(job);
}
