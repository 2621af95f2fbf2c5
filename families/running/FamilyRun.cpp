// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyRun.h"

#include "ModelPool.h"
#include "ProcessLife.h"
#include "RunProgress.h"
#include "RunSignals.h"
#include "SnakemakeRun.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <unordered_set>
#include <utility>

namespace TAMBO::families {

namespace {

namespace fs = std::filesystem;

std::vector<FamilyTarget> missingOf(const FamilyFolder &folder,
                                    const std::vector<FamilyTarget> &asked)
{
    std::vector<FamilyTarget> missing;
    std::error_code error;
    std::ranges::copy_if(asked, std::back_inserter(missing), [&](const FamilyTarget &target) {
        return target.aligned > 0 && !fs::is_regular_file(folder.modelOf(target), error);
    });
    return missing;
}

// A folder that was not prepared to its end would let each job fail.
Result<void> checkInputs(const FamilyFolder &folder, const std::vector<FamilyTarget> &missing)
{
    std::error_code error;
    for (const FamilyTarget &target : missing) {
        for (const fs::path &file : {folder.inputOf(target), folder.templateOf(target)}) {
            if (!fs::is_regular_file(file, error))
                return Failure{FailureKind::NotFound,
                               "is not there; prepare the folder again from its family",
                               {file.string()}};
        }
    }
    for (const char *name : {"models", "runs"}) {
        fs::create_directories(folder.path() / name, error);
        if (error)
            return Failure{FailureKind::System,
                           "cannot be made: " + error.message(),
                           {(folder.path() / name).string()}};
    }
    return {};
}

std::vector<ResultRow> rowsOf(const std::vector<ResultRow> &all,
                              const std::vector<FamilyTarget> &asked)
{
    std::unordered_set<std::string> files;
    for (const FamilyTarget &target : asked)
        files.insert(target.file);
    std::vector<ResultRow> rows;
    std::ranges::copy_if(all, std::back_inserter(rows), [&files](const ResultRow &row) {
        return files.contains(row.target.file);
    });
    return rows;
}

// By its words and its folder: of a folder that comes from elsewhere the number is anybody's.
bool isJobOf(const FamilyFolder &folder, const ResultRow &row)
{
    const fs::path process = "/proc/" + std::to_string(row.record.process);
    std::error_code error;
    if (!fs::equivalent(process / "cwd", folder.path(), error) || error)
        return false;
    std::ifstream file(process / "cmdline", std::ios::binary);
    const std::string words{std::istreambuf_iterator<char>(file), {}};
    const fs::path record = folder.recordOf(row.target).lexically_relative(folder.path());
    using namespace std::string_literals;
    return words.find("\0--job\0"s + record.string() + '\0') != std::string::npos;
}

// What a run has left behind on this computer that was killed with all its might: nobody else has
// the folder, and two must not work at one model.
void endLeftBehind(const FamilyFolder &folder, const std::vector<ResultRow> &rows)
{
    constexpr std::chrono::milliseconds kShortWait{20};
    constexpr int kMostWaits = 500;
    for (const ResultRow &row : rows) {
        const kestram::JobRecord &record = row.record;
        if (row.state != TargetState::Running || record.host != hostName() || !record.job.empty() ||
            !isJobOf(folder, row))
            continue;
        kill(pid_t(record.process), SIGTERM);
        for (int i = 0; i < kMostWaits && isAlive(record.process, record.started); ++i)
            std::this_thread::sleep_for(kShortWait);
    }
}

} // namespace

Result<RunOutcome> runFamily(const FamilyFolder &folder, const std::vector<FamilyTarget> &asked,
                             const RunSettings &settings, const FolderLock &, const TellEnd &tell)
{
    std::vector<FamilyTarget> missing = missingOf(folder, asked);
    if (const Result<void> checked = checkInputs(folder, missing); !checked)
        return checked.error();
    if (const Result<void> free = checkForeignLock(folder); !free)
        return free.error();
    const fs::path snakemake = settings.usesPool ? fs::path() : programOnPath("snakemake");
    if (snakemake.empty() && !settings.profile.empty())
        return Failure{FailureKind::NotFound,
                       "a profile is for Snakemake, which was not found; on Debian, install the "
                       "package snakemake"};
    RunOutcome outcome;
    const RunSignals signals;
    RunProgress progress(folder, std::move(missing), tell);
    endLeftBehind(folder, progress.rows());
    Result<int> ended = 0;
    if (!progress.missing().empty()) {
        ended = snakemake.empty()
                    ? runPool(folder, settings, signals, progress)
                    : runSnakemake(folder, snakemake, settings, signals, progress, outcome.remarks);
    }
    progress.finish();
    if (!ended)
        return ended.error();
    if (!progress.tableOutcome())
        outcome.remarks.push_back(progress.tableOutcome().error().message());
    outcome.signal = ended.value();
    outcome.rows = rowsOf(progress.rows(), asked);
    return outcome;
}

} // namespace TAMBO::families
