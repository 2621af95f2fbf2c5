// SPDX-License-Identifier: GPL-3.0-or-later
// What a modelling job says of itself while it runs and when it has ended, as a file that others
// read: who runs it where, what came of it, and figures of the model.
#pragma once

#include "Result.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kestram {

enum class JobState { Running, Ok, Failed, Killed };

// As files and tables have it: "running", "ok", "failed", "killed".
[[nodiscard]] std::string_view textOf(JobState state);

struct JobRecord
{
    JobState state = JobState::Running;
    // The names of the rows.
    std::string target;
    std::string templateName;
    std::string host;
    // What the batch system calls it, empty without one; of an array with the task, "17_3".
    std::string job;
    // Of the adapter: its number, and when it began, in seconds since 1970.
    long process = 0;
    double started = 0;
    double seconds = 0;
    // Of the adapter; 128 + the signal when it was ended by one.
    std::optional<int> exitStatus;
    // The adapter's last line.
    std::string message;
    // "ProMod3 3.2.1, OpenStructure 2.3.1"
    std::string engine;
    // Of the target's letters, and how many of them the model has.
    std::optional<std::size_t> residues;
    std::optional<std::size_t> modelled;
    // Insertions and deletions that the engine had to build between the model's ends.
    std::optional<std::size_t> gaps;
    // To the template, in Angstrom, and of how many CA atoms.
    std::optional<double> caRms;
    std::optional<std::size_t> caCount;
    // The engine's own; of the letters of the target, counted from 1, each its share.
    std::optional<double> backboneScore;
    std::vector<std::pair<std::size_t, double>> residueScores;
};

// The scores of residues are most of a record, and few who read it want them.
enum class RecordParts { All, WithoutScores };

// Fields that are not there are as in a new record, those that nobody knows are passed over. What
// is no record is a failure with the file's name and what is wrong in it.
[[nodiscard]] TAMBO::Result<JobRecord> readJobRecord(const std::filesystem::path &file,
                                                     RecordParts parts = RecordParts::All);

// A job that goes on says so by the time of its record, at least each minute: a reader on another
// computer cannot see its process. Of a record that is older than this, in seconds, the computer
// was switched off.
constexpr double kLongestSilence = 300;
void sayThatItGoesOn(const std::filesystem::path &file);

// Readers meet the old record or the new one, never a part of it.
[[nodiscard]] TAMBO::Result<void> writeJobRecord(const std::filesystem::path &file,
                                                 const JobRecord &record);

} // namespace kestram
