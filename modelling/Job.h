// SPDX-License-Identifier: GPL-3.0-or-later
// Builds a model into a file and keeps a record of how that goes, for those who have many built.
#pragma once

#include "EngineRun.h"
#include "JobRecord.h"
#include "ModellingInput.h"
#include "Result.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>

namespace kestram {

struct JobFiles
{
    std::filesystem::path record;
    std::filesystem::path model;
    std::filesystem::path alignment;
    std::filesystem::path structure;
};

class Job
{
public:
    Job(JobFiles files, std::string launcher);

    // The program's exit status. The model is there when it is 0, and only then is there a new one.
    [[nodiscard]] int run();

private:
    void describe();
    void say(const std::string &sentence);
    // False when it cannot be written, which is said.
    [[nodiscard]] bool save();
    // The status that a failure means is set beforehand, in both.
    [[nodiscard]] TAMBO::Result<void> checkFiles();
    [[nodiscard]] TAMBO::Result<void> build();
    void describe(const ModellingInput &input);
    [[nodiscard]] TAMBO::Result<void> measure(const ModellingInput &input);
    [[nodiscard]] TAMBO::Result<void> putInPlace();
    [[nodiscard]] int fail(const std::string &sentence);
    // In the process that watches over the engine, when this one is gone.
    void noteEnd();

    JobFiles m_Files;
    std::string m_Launcher;
    std::chrono::steady_clock::time_point m_Begin = std::chrono::steady_clock::now();
    JobRecord m_Record;
    std::unique_ptr<EngineRun> m_Run;
    int m_Status = 0;
};

} // namespace kestram
