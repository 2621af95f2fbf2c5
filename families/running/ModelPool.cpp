// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModelPool.h"

#include "ChildProcess.h"
#include "FolderFiles.h"
#include "ProcessLife.h"
#include "RunProgress.h"
#include "RunSignals.h"
#include "Text.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <ctime>
#include <sys/wait.h>
#include <utility>

namespace TAMBO::families {

namespace {

namespace fs = std::filesystem;
using kestram::JobRecord;
using kestram::JobState;
using PoolClock = std::chrono::steady_clock;

constexpr int kWait = 500;
// For the adapter and its engine to end when they are asked to.
constexpr std::chrono::seconds kPatience{5};

// Of a text of lines, the last that says something.
std::string lastLineOf(std::string_view text)
{
    std::string_view last;
    while (!text.empty()) {
        const std::string_view line = trimmed(takeLine(text));
        if (!line.empty())
            last = line;
    }
    return std::string(last);
}

class Pool
{
public:
    Pool(const FamilyFolder &folder, const RunSettings &settings, const RunSignals &signals,
         RunProgress &progress)
        : m_Folder(folder),
          m_Settings(settings),
          m_Signals(signals),
          m_Progress(progress),
          m_Jobs(std::size_t(settings.jobs.value_or(jobsOfComputer(settings.megabytes))))
    { }

    [[nodiscard]] Result<int> run()
    {
        const std::vector<FamilyTarget> &missing = m_Progress.missing();
        std::size_t next = 0;
        while (next < missing.size() || !m_Running.empty()) {
            while (next < missing.size() && m_Running.size() < m_Jobs) {
                if (const Result<void> started = start(missing[next++]); !started) {
                    stop();
                    return started.error();
                }
            }
            const int signal = m_Signals.wait(kWait);
            collect();
            if (RunSignals::isEnd(signal)) {
                stop();
                return signal;
            }
        }
        return 0;
    }

private:
    struct Job
    {
        FamilyTarget target;
        ChildProcess process;
        double started = 0;
        PoolClock::time_point begin;
    };

    [[nodiscard]] fs::path inside(const fs::path &file) const
    {
        return file.lexically_relative(m_Folder.path());
    }
    [[nodiscard]] Result<void> start(const FamilyTarget &target)
    {
        // What is found there at the end is of this run. A link would lead its words elsewhere.
        for (const fs::path &file : {m_Folder.recordOf(target), m_Folder.logOf(target)}) {
            if (Result<void> removed = removeFile(file); !removed)
                return removed;
        }
        ChildProcess::Command command;
        command.words = {m_Settings.kestram.string(),
                         "--job",
                         inside(m_Folder.recordOf(target)).string(),
                         inside(m_Folder.modelOf(target)).string(),
                         inside(m_Folder.inputOf(target)).string(),
                         inside(m_Folder.templateOf(target)).string()};
        command.folder = m_Folder.path();
        command.output = fs::absolute(m_Folder.logOf(target));
        command.deathSignal = SIGTERM;
        Result<ChildProcess> process = ChildProcess::start(command, m_Signals);
        if (!process)
            return process.error();
        m_Running.push_back(
            {target, std::move(process).value(), double(std::time(nullptr)), PoolClock::now()});
        return {};
    }
    void collect()
    {
        for (std::size_t i = 0; i < m_Running.size();) {
            const std::optional<int> status = m_Running[i].process.ended();
            if (!status) {
                ++i;
                continue;
            }
            const Job job = std::move(m_Running[i]);
            m_Running.erase(m_Running.begin() + std::ptrdiff_t(i));
            complete(job, *status);
            m_Progress.noteEnd(job.target);
        }
    }
    // What the adapter could not say itself.
    void complete(const Job &job, int status) const
    {
        const fs::path file = m_Folder.recordOf(job.target);
        Result<JobRecord> found = kestram::readJobRecord(file);
        if (found && found.value().state != JobState::Running)
            return;
        JobRecord record;
        if (found) {
            record = std::move(found).value();
        } else {
            record.host = hostName();
            record.started = job.started;
            record.target = job.target.name;
            record.templateName = job.target.templateName;
        }
        std::error_code error;
        const bool hasModel = fs::is_regular_file(m_Folder.modelOf(job.target), error);
        record.state = WIFSIGNALED(status) ? JobState::Killed
                       : hasModel          ? JobState::Ok
                                           : JobState::Failed;
        record.exitStatus = exitStatusOf(status);
        record.seconds = std::chrono::duration<double>(PoolClock::now() - job.begin).count();
        const Result<std::string> log = readText(m_Folder.logOf(job.target));
        record.message = log ? lastLineOf(log.value()) : std::string();
        if (WIFSIGNALED(status))
            record.message = "ended by signal " + std::to_string(WTERMSIG(status));
        else if (!hasModel && record.message.empty())
            record.message = "failed with status " + std::to_string(exitStatusOf(status)) +
                             " and wrote no reason; is the disk full?";
        // On a disk that is full the table says what it can.
        static_cast<void>(kestram::writeJobRecord(file, record));
    }
    void sendAll(int signal) const
    {
        for (const Job &job : m_Running)
            job.process.send(signal);
    }
    void stop()
    {
        sendAll(SIGTERM);
        const PoolClock::time_point end = PoolClock::now() + kPatience;
        constexpr int kShortWait = 50;
        while (!m_Running.empty() && PoolClock::now() < end) {
            static_cast<void>(m_Signals.wait(kShortWait));
            collect();
        }
        sendAll(SIGKILL);
        while (!m_Running.empty()) {
            static_cast<void>(m_Signals.wait(kShortWait));
            collect();
        }
    }

    const FamilyFolder &m_Folder;
    const RunSettings &m_Settings;
    const RunSignals &m_Signals;
    RunProgress &m_Progress;
    std::size_t m_Jobs;
    std::vector<Job> m_Running;
};

} // namespace

Result<int> runPool(const FamilyFolder &folder, const RunSettings &settings,
                    const RunSignals &signals, RunProgress &progress)
{
    return Pool(folder, settings, signals, progress).run();
}

} // namespace TAMBO::families
