// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModelsJob.h"

#include "FileReader.h"

#include <algorithm>
#include <utility>

namespace TAMBO {

namespace {

namespace fs = std::filesystem;

} // namespace

Result<ModelsOutcome> ModelsJob::run(const ReadJob::Progress &progress)
{
    ModelsOutcome outcome;
    for (std::size_t i = 0; i < m_Files.size(); ++i) {
        const ModelFiles &files = m_Files[i];
        const std::string name = files.model.filename().string();
        bool isCancelled = false;
        const auto report = [&](std::uint64_t done, std::uint64_t total) {
            const double part = total == 0 ? 0.0 : std::min(1.0, double(done) / double(total));
            isCancelled = !progress(name, (double(i) + part) / double(m_Files.size()));
            return !isCancelled;
        };
        static_cast<void>(report(0, 1));
        Result<ReadModel> model =
            isCancelled ? Failure(FailureKind::Cancelled, {}) : read(files, report);
        // A reader that ended before it asked again has still been cancelled.
        if (isCancelled)
            return Failure(FailureKind::Cancelled, {});
        if (model)
            outcome.models.push_back(std::move(model).value());
        else
            outcome.failures.push_back({files.model, model.error()});
    }
    return outcome;
}

Result<ReadModel> ModelsJob::read(const ModelFiles &files, const ReadProgress &progress)
{
    Result<ModelJob> job = readModelJob(files.alignment);
    if (!job)
        return job.error();
    const Result<FileContents> &known = structureIn(files.structure);
    if (!known)
        return known.error();
    setTemplate(job.value(), known.value());
    if (files.scores)
        job->scores = files.scores();
    Result<FileContents> contents = readPackedFile(files.model, progress);
    if (!contents)
        return contents.error();
    if (contents->structures.empty())
        return Failure(FailureKind::BadInput, "there is no structure in it",
                       {files.model.filename().string()});
    return ReadModel{{files.model, std::move(contents).value()}, std::move(job).value()};
}

const Result<FileContents> &ModelsJob::structureIn(const fs::path &file)
{
    const auto found = m_Structures.find(file);
    return found != m_Structures.end() ? found->second
                                       : m_Structures.emplace(file, readFile(file)).first->second;
}

} // namespace TAMBO
