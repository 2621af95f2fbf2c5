// SPDX-License-Identifier: GPL-3.0-or-later
#include "SnakemakeRun.h"

#include "ChildProcess.h"
#include "FolderFiles.h"
#include "ProcessLife.h"
#include "RunProgress.h"
#include "RunSignals.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <system_error>
#include <thread>
#include <utility>

namespace TAMBO::families {

namespace {

namespace fs = std::filesystem;
using SnakeClock = std::chrono::steady_clock;

constexpr const char *kLogName = "snakemake.log";
// Says that Snakemake's own locks are those of a run of ours.
constexpr const char *kMarkName = ".snakemake-run";

bool isLocked(const FamilyFolder &folder)
{
    std::error_code error;
    const fs::path locks = folder.path() / ".snakemake" / "locks";
    return fs::is_directory(locks, error) && !fs::is_empty(locks, error);
}

class Snakemake
{
public:
    Snakemake(const FamilyFolder &folder, fs::path program, const RunSettings &settings,
              const RunSignals &signals)
        : m_Folder(folder),
          m_Program(std::move(program)),
          m_Settings(settings),
          m_Signals(signals),
          m_Mark(folder.path() / kMarkName)
    { }

    // One that a run of ours has left behind is nobody's.
    [[nodiscard]] Result<void> openLock()
    {
        if (!isLocked(m_Folder))
            return {};
        Result<ChildProcess> unlocking = start({"--unlock"});
        if (!unlocking)
            return unlocking.error();
        // A signal that comes now is for the run.
        while (!unlocking.value().ended())
            std::this_thread::sleep_for(std::chrono::milliseconds(kShortWait));
        if (isLocked(m_Folder))
            return Failure{FailureKind::System,
                           "Snakemake cannot take back the lock of a run that was killed",
                           {(m_Folder.path() / kLogName).string()}};
        return {};
    }

    [[nodiscard]] Result<int> run(RunProgress &progress, std::vector<std::string> &remarks)
    {
        if (Result<void> marked = placeText(m_Mark, hostName() + '\n'); !marked)
            return marked.error();
        Result<ChildProcess> process = start(runWords());
        if (!process)
            return process.error();
        int end = 0;
        while (!process.value().ended()) {
            const int signal = m_Signals.wait(kWait);
            progress.look();
            if (RunSignals::isEnd(signal)) {
                end = signal;
                stop(process.value());
            }
        }
        progress.look();
        if (!isLocked(m_Folder))
            static_cast<void>(removeFile(m_Mark));
        const int status = exitStatusOf(*process.value().ended());
        if (status != 0 && end == 0)
            remarks.push_back("snakemake ended with status " + std::to_string(status) + "; " +
                              kLogName + " has what it said");
        return end;
    }

private:
    static constexpr int kWait = 500;
    static constexpr int kShortWait = 50;

    [[nodiscard]] Result<ChildProcess> start(std::vector<std::string> words) const
    {
        ChildProcess::Command command;
        command.words = {m_Program.string(), "--directory", ".", "--snakefile", "Snakefile"};
        command.words.insert(command.words.end(), words.begin(), words.end());
        command.folder = m_Folder.path();
        command.output = fs::absolute(m_Folder.path()) / kLogName;
        command.goesOnInOutput = true;
        // By which it ends its jobs, too.
        command.deathSignal = SIGINT;
        return ChildProcess::start(command, m_Signals);
    }
    [[nodiscard]] std::vector<std::string> runWords() const
    {
        std::vector<std::string> words = {"--keep-going", "--rerun-incomplete", "--rerun-triggers",
                                          "mtime", "--nocolor"};
        if (m_Settings.profile.empty()) {
            const int jobs = m_Settings.jobs.value_or(jobsOfComputer(m_Settings.megabytes));
            words.insert(words.end(), {"--cores", std::to_string(jobs)});
            return words;
        }
        words.insert(words.end(), {"--profile", profile()});
        if (m_Settings.jobs)
            words.insert(words.end(), {"--jobs", std::to_string(*m_Settings.jobs)});
        return words;
    }
    // One of the folder's own, or as Snakemake takes it, for which a path is that of the caller.
    [[nodiscard]] std::string profile() const
    {
        std::error_code error;
        const fs::path own = fs::absolute(m_Folder.path() / m_Settings.profile, error);
        if (fs::exists(own / "config.yaml", error))
            return own.string();
        return fs::is_directory(m_Settings.profile, error)
                   ? fs::absolute(m_Settings.profile, error).string()
                   : m_Settings.profile;
    }
    // It ends its jobs, also those of a cluster, when it is interrupted; that takes its time.
    void stop(ChildProcess &process) const
    {
        constexpr std::array<std::pair<int, std::chrono::seconds>, 3> kSteps = {
            {{SIGINT, std::chrono::seconds(20)},
             {SIGTERM, std::chrono::seconds(5)},
             {SIGKILL, std::chrono::seconds(5)}}};
        for (const auto &[signal, patience] : kSteps) {
            process.send(signal);
            const SnakeClock::time_point end = SnakeClock::now() + patience;
            while (!process.ended() && SnakeClock::now() < end)
                static_cast<void>(m_Signals.wait(kShortWait));
            if (process.ended())
                return;
        }
    }

    const FamilyFolder &m_Folder;
    fs::path m_Program;
    const RunSettings &m_Settings;
    const RunSignals &m_Signals;
    fs::path m_Mark;
};

} // namespace

Result<void> checkForeignLock(const FamilyFolder &folder)
{
    std::error_code error;
    if (!isLocked(folder) || fs::exists(folder.path() / kMarkName, error))
        return {};
    return Failure{
        FailureKind::Refused,
        "is locked by a call of Snakemake that is not ours; wait for its end, or, when it "
        "has ended, call snakemake --unlock there",
        {folder.path().string()}};
}

Result<int> runSnakemake(const FamilyFolder &folder, const fs::path &snakemake,
                         const RunSettings &settings, const RunSignals &signals,
                         RunProgress &progress, std::vector<std::string> &remarks)
{
    Snakemake run(folder, snakemake, settings, signals);
    if (const Result<void> opened = run.openLock(); !opened)
        return opened.error();
    return run.run(progress, remarks);
}

} // namespace TAMBO::families
