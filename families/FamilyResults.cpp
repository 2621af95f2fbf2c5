// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyResults.h"

#include "FolderFiles.h"
#include "FolderLock.h"
#include "FormatText.h"
#include "ProcessLife.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <sys/stat.h>
#include <system_error>
#include <utility>

namespace TAMBO::families {

namespace {

namespace fs = std::filesystem;
using kestram::JobRecord;
using kestram::JobState;

constexpr const char *kUnknown = "NA";

// A lock is seen on its own computer only, and an array has none.
FolderWork workIn(const FamilyFolder &folder, FolderWork work)
{
    return work == FolderWork::AsLocked && FolderLock::isTaken(folder.path()) ? FolderWork::GoesOn
                                                                              : work;
}

bool isSilent(const fs::path &file)
{
    struct stat state = {};
    return stat(file.c_str(), &state) != 0 ||
           std::difftime(std::time(nullptr), state.st_mtime) > kestram::kLongestSilence;
}

bool isAtWork(const JobRecord &record, const fs::path &file, FolderWork work)
{
    if (record.host == hostName())
        return isAlive(record.process, record.started);
    return work == FolderWork::AsLocked ? !isSilent(file) : work == FolderWork::GoesOn;
}

TargetState stateOf(JobState state, bool isRunning)
{
    switch (state) {
    case JobState::Failed:
        return TargetState::Failed;
    case JobState::Killed:
        return TargetState::Killed;
    case JobState::Running:
        return isRunning ? TargetState::Running : TargetState::Killed;
    case JobState::Ok:
        break;
    }
    // The model has gone since.
    return TargetState::NotRun;
}

ResultRow rowOf(const FamilyFolder &folder, const FamilyTarget &target, FolderWork work)
{
    ResultRow row;
    row.target = target;
    if (target.aligned == 0) {
        row.state = TargetState::Failed;
        row.record.message = "no column is shared with " + target.templateName;
        return row;
    }
    std::error_code error;
    row.hasModel = fs::is_regular_file(folder.modelOf(target), error);
    Result<JobRecord> record =
        kestram::readJobRecord(folder.recordOf(target), kestram::RecordParts::WithoutScores);
    if (record) {
        row.record = std::move(record).value();
        row.state = stateOf(row.record.state, isAtWork(row.record, folder.recordOf(target), work));
        if (row.state == TargetState::NotRun && !row.hasModel)
            row.record = {};
    } else if (record.error().kind != FailureKind::NotFound) {
        row.record.message = record.error().message();
    }
    // It is put in place when it is complete, just behind a record that says so, and taken away
    // when it is of something else.
    if (row.hasModel && row.state != TargetState::Running)
        row.state = TargetState::Ok;
    return row;
}

std::string known(const std::string &text)
{
    return text.empty() ? kUnknown : formats::cleanText(text);
}

std::string number(double value, int digits)
{
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*f", digits, value);
    return text.data();
}

std::string number(const std::optional<double> &value, int digits)
{
    return value ? number(*value, digits) : kUnknown;
}

template <typename Count> std::string count(const std::optional<Count> &value)
{
    return value ? std::to_string(*value) : kUnknown;
}

std::string percent(std::size_t part, std::size_t whole)
{
    return whole == 0 ? kUnknown : number(100.0 * double(part) / double(whole), 1);
}

} // namespace

std::string_view textOf(TargetState state)
{
    switch (state) {
    case TargetState::Ok:
        return "ok";
    case TargetState::Failed:
        return "failed";
    case TargetState::Killed:
        return "killed";
    case TargetState::Running:
        return "running";
    case TargetState::NotRun:
        break;
    }
    return "not run";
}

std::vector<ResultRow> resultsOf(const FamilyFolder &folder, FolderWork work)
{
    const FolderWork known = workIn(folder, work);
    std::vector<ResultRow> rows;
    rows.reserve(folder.targets().size());
    for (const FamilyTarget &target : folder.targets())
        rows.push_back(rowOf(folder, target, known));
    return rows;
}

ResultRow resultOf(const FamilyFolder &folder, const FamilyTarget &target, FolderWork work)
{
    return rowOf(folder, target, workIn(folder, work));
}

std::vector<std::pair<std::size_t, double>> residueScoresIn(const fs::path &record)
{
    Result<JobRecord> read = kestram::readJobRecord(record);
    return read ? std::move(read).value().residueScores
                : std::vector<std::pair<std::size_t, double>>();
}

const std::vector<std::string> &resultTitles()
{
    static const std::vector<std::string> kTitles = {
        "target",           "template",         "state",        "residues", "modelled",
        "identity_percent", "coverage_percent", "gaps_rebuilt", "ca_rms",   "ca_count",
        "backbone_score",   "seconds",          "host",         "job",      "exit_status",
        "last_line",        "engine",           "model"};
    return kTitles;
}

double identityOf(const FamilyTarget &target)
{
    return target.residues == 0 ? 0 : 100.0 * double(target.identical) / double(target.residues);
}

std::vector<std::string> resultTexts(const ResultRow &row)
{
    const JobRecord &record = row.record;
    const bool hasRun = record.started > 0;
    const std::size_t residues = row.target.residues;
    return {known(row.target.name),
            known(row.target.templateName),
            std::string(textOf(row.state)),
            std::to_string(residues),
            count(record.modelled),
            percent(row.target.identical, residues),
            record.modelled ? percent(*record.modelled, residues) : kUnknown,
            count(record.gaps),
            number(record.caRms, 2),
            count(record.caCount),
            number(record.backboneScore, 3),
            hasRun && row.state != TargetState::Running ? number(record.seconds, 1) : kUnknown,
            known(record.host),
            known(record.job),
            count(record.exitStatus),
            known(record.message),
            known(record.engine),
            row.hasModel ? "models/" + row.target.file + ".pdb" : kUnknown};
}

Result<void> writeResults(const FamilyFolder &folder, FolderWork work)
{
    return writeResults(folder, resultsOf(folder, work));
}

Result<void> writeResults(const FamilyFolder &folder, const std::vector<ResultRow> &rows)
{
    std::string table;
    const auto addLine = [&table](const std::vector<std::string> &fields) {
        for (std::size_t i = 0; i < fields.size(); ++i)
            table += (i == 0 ? "" : "\t") + fields[i];
        table += '\n';
    };
    addLine(resultTitles());
    for (const ResultRow &row : rows)
        addLine(resultTexts(row));
    return placeText(folder.tableFile(), table);
}

} // namespace TAMBO::families
