// SPDX-License-Identifier: GPL-3.0-or-later
#include "Job.h"

#include "Engine.h"
#include "EngineReport.h"
#include "ExitStatus.h"
#include "FileDescriptor.h"
#include "ModelFigures.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <iostream>
#include <unistd.h>
#include <utility>

namespace kestram {

namespace {

namespace fs = std::filesystem;
using TAMBO::Failure;
using TAMBO::FailureKind;
using TAMBO::Result;

std::string variable(const char *name)
{
    const char *const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

// As users of the queue know it.
std::string batchJob()
{
    const std::string array = variable("SLURM_ARRAY_JOB_ID");
    return array.empty() ? variable("SLURM_JOB_ID") : array + '_' + variable("SLURM_ARRAY_TASK_ID");
}

std::string hostName()
{
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1);
    return name.data();
}

Failure cannotWrite(const fs::path &file, int error)
{
    return Failure{FailureKind::System,
                   std::string("cannot be written: ") + std::strerror(error),
                   {file.filename().string()}};
}

bool areSame(const fs::path &one, const fs::path &other)
{
    std::error_code ignored;
    return one.lexically_normal() == other.lexically_normal() ||
           fs::equivalent(one, other, ignored);
}

} // namespace

Job::Job(JobFiles files, std::string launcher)
    : m_Files(std::move(files)), m_Launcher(std::move(launcher))
{ }

int Job::run()
{
    m_Status = kWrongCall;
    if (const Result<void> checked = checkFiles(); !checked) {
        say(checked.error().message());
        return m_Status;
    }
    describe();
    m_Status = kEngineFailed;
    if (!save())
        return m_Status;
    try {
        if (const Result<void> built = build(); !built)
            return fail(built.error().message());
    } catch (const std::exception &error) {
        return fail(error.what());
    }
    m_Run->finish();
    return EXIT_SUCCESS;
}

// What is written must not be what is read, or what somebody keeps there.
Result<void> Job::checkFiles()
{
    const std::array<const fs::path *, 4> files = {&m_Files.record, &m_Files.model,
                                                   &m_Files.alignment, &m_Files.structure};
    for (std::size_t written = 0; written < 2; ++written) {
        std::error_code ignored;
        if (fs::is_directory(*files[written], ignored))
            return cannotWrite(*files[written], EISDIR);
        for (std::size_t other = written + 1; other < files.size(); ++other) {
            if (areSame(*files[written], *files[other]))
                return Failure{FailureKind::Refused,
                               "is to be read and written, or written twice",
                               {files[written]->string()}};
        }
    }
    return {};
}

void Job::describe()
{
    m_Record.host = hostName();
    m_Record.job = batchJob();
    m_Record.process = getpid();
    using Seconds = std::chrono::duration<double>;
    m_Record.started = Seconds(std::chrono::system_clock::now().time_since_epoch()).count();
}

void Job::say(const std::string &sentence)
{
    std::cerr << "kestram: " << sentence << '\n';
    m_Record.message = sentence;
}

bool Job::save()
{
    using Seconds = std::chrono::duration<double>;
    m_Record.seconds = Seconds(std::chrono::steady_clock::now() - m_Begin).count();
    const Result<void> written = writeJobRecord(m_Files.record, m_Record);
    if (!written)
        say(written.error().message());
    return written.has_value();
}

Result<void> Job::build()
{
    m_Status = kBadInput;
    const Result<ModellingInput> input = readInput(m_Files.alignment, m_Files.structure);
    if (!input)
        return input.error();
    describe(input.value());
    m_Status = kNoEngine;
    const Result<fs::path> engine = findEngine();
    if (!engine)
        return engine.error();
    m_Status = kEngineFailed;
    Result<std::unique_ptr<EngineRun>> run =
        EngineRun::begin({engineCommand(engine.value(), kScriptFile, m_Launcher), engine.value(),
                          [this] { return RunFolder::makeFor(m_Files.model); },
                          [this] { noteEnd(); }, [this] { sayThatItGoesOn(m_Files.record); }});
    if (!run)
        return run.error();
    m_Run = std::move(run).value();
    if (const Result<void> written = m_Run->folder().write(kScriptFile, scriptText()); !written)
        return written;
    // That the names of the rows are known is worth a look for those who wait for the model.
    if (!save())
        return Failure{FailureKind::System, m_Record.message};
    const Result<std::string> model = m_Run->build(input.value());
    if (const Result<void> measured = model ? measure(input.value()) : Result<void>(); !measured)
        return measured;
    if (model)
        return putInPlace();
    const EngineReport report = readReport(m_Run->folder().path() / kReportFile);
    m_Record.engine = report.engine;
    const std::string cause = report.failure.empty() ? "" : ": " + report.failure;
    return Failure{model.error().kind, model.error().cause + cause, model.error().place};
}

void Job::describe(const ModellingInput &input)
{
    m_Record.target = input.targetName;
    m_Record.templateName = input.templateName;
    m_Record.residues =
        std::size_t(std::ranges::count_if(input.targetRow, [](char cell) { return cell != '-'; }));
    m_Record.gaps = rebuiltGaps(input.templateRow, input.targetRow);
    for (const std::string &remark : input.remarks)
        say(remark);
}

Result<void> Job::measure(const ModellingInput &input)
{
    const Result<ModelFigures> figures = figuresOf(input, m_Run->folder().path() / kModelFile);
    if (!figures)
        return figures.error();
    m_Record.modelled = figures.value().modelled;
    if (figures.value().modelled == 0)
        say("the model is not one of \"" + input.targetName + '"');
    if (figures.value().fit) {
        m_Record.caRms = figures.value().fit->distance;
        m_Record.caCount = figures.value().fit->count;
    }
    EngineReport report = readReport(m_Run->folder().path() / kReportFile);
    m_Record.engine = report.engine;
    m_Record.backboneScore = report.score;
    if (report.score)
        m_Record.residueScores = std::move(report.residueScores);
    else
        say("the model has no score: " +
            (report.failure.empty() ? std::string("the engine gave none") : report.failure));
    return {};
}

// The record first: that of a model which is there must not say that it is still being built.
Result<void> Job::putInPlace()
{
    const fs::path built = m_Run->folder().path() / kModelFile;
    TAMBO::formats::FileDescriptor file(::open(built.c_str(), O_RDONLY | O_CLOEXEC));
    // Some systems tell only now that the disk is full.
    if (!file.isOpen() || fsync(file.number()) != 0)
        return cannotWrite(m_Files.model, errno);
    m_Record.state = JobState::Ok;
    m_Record.exitStatus = EXIT_SUCCESS;
    if (!save())
        return Failure{FailureKind::System, m_Record.message};
    if (rename(built.c_str(), m_Files.model.c_str()) != 0)
        return cannotWrite(m_Files.model, errno);
    return {};
}

int Job::fail(const std::string &sentence)
{
    // What could not be saved has been said.
    if (sentence != m_Record.message)
        say(sentence);
    m_Record.state = Watcher::endingSignal() == 0 ? JobState::Failed : JobState::Killed;
    m_Record.exitStatus = m_Status;
    [[maybe_unused]] const bool isSaved = save();
    if (m_Run)
        m_Run->finish();
    return m_Status;
}

void Job::noteEnd()
{
    m_Record.state = JobState::Killed;
    m_Record.message = "kestram was ended before the model was there";
    [[maybe_unused]] const bool isSaved = save();
}

} // namespace kestram
