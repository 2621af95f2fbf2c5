// SPDX-License-Identifier: GPL-3.0-or-later
// What has come of the models of a family so far, target by target, and the table of it.
#pragma once

#include "FamilyFolder.h"
#include "JobRecord.h"
#include "Result.h"

#include <string>
#include <string_view>
#include <vector>

namespace TAMBO::families {

enum class TargetState { Ok, Failed, Killed, NotRun, Running };

// As the table has it: "ok", "failed", "killed", "not run", "running".
[[nodiscard]] std::string_view textOf(TargetState state);

struct ResultRow
{
    FamilyTarget target;
    TargetState state = TargetState::NotRun;
    // Of the last run, without the scores of residues; as new when there was none.
    kestram::JobRecord record;
    bool hasModel = false;
};

// Whether somebody is at work in the folder; for who does not know, by its lock, and by how long a
// job has not been heard of. A job of another computer that has not said its end is running or
// killed by that.
enum class FolderWork { AsLocked, GoesOn, HasEnded };

// Never a failure: of what is missing or damaged nothing is known, and the row's message says why.
[[nodiscard]] std::vector<ResultRow> resultsOf(const FamilyFolder &folder,
                                               FolderWork work = FolderWork::AsLocked);
[[nodiscard]] ResultRow resultOf(const FamilyFolder &folder, const FamilyTarget &target,
                                 FolderWork work = FolderWork::AsLocked);

// What the engine said of the letters of a target, from the record of its job: none when nobody
// knows, or when it cannot be read.
[[nodiscard]] std::vector<std::pair<std::size_t, double>>
residueScoresIn(const std::filesystem::path &record);

// The names of the columns, and what a row has in each; "NA" for what is not known.
[[nodiscard]] const std::vector<std::string> &resultTitles();
[[nodiscard]] std::vector<std::string> resultTexts(const ResultRow &row);
// In percent; of the target's residues.
[[nodiscard]] double identityOf(const FamilyTarget &target);

// results.tsv, a line for each target, fields between tabs.
[[nodiscard]] Result<void> writeResults(const FamilyFolder &folder,
                                        FolderWork work = FolderWork::AsLocked);
[[nodiscard]] Result<void> writeResults(const FamilyFolder &folder,
                                        const std::vector<ResultRow> &rows);

} // namespace TAMBO::families
