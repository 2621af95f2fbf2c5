// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the files of many models into plain values. Knows nothing of the loaded objects, so that it
// can run in a thread of its own.
#pragma once

#include "BuiltModel.h"
#include "ReadJob.h"

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace TAMBO {

// A model, what the engine aligned, and the template as the engine got it.
struct ModelFiles
{
    std::filesystem::path model;
    std::filesystem::path alignment;
    std::filesystem::path structure;
    // Reads what the engine said of the residues, in the reading thread; may be empty.
    std::function<ModelScores()> scores = {};
};

struct ReadModel
{
    ReadFile file;
    ModelJob job;
};

struct ModelsOutcome
{
    std::vector<ReadModel> models;
    // A model without all of its files is left out.
    std::vector<FileFailure> failures;
};

class ModelsJob
{
public:
    explicit ModelsJob(std::vector<ModelFiles> files) : m_Files(std::move(files)) { }

    // Fails only when it is cancelled.
    [[nodiscard]] Result<ModelsOutcome> run(const ReadJob::Progress &progress);

private:
    [[nodiscard]] Result<ReadModel> read(const ModelFiles &files, const ReadProgress &progress);
    [[nodiscard]] const Result<FileContents> &structureIn(const std::filesystem::path &file);

    std::vector<ModelFiles> m_Files;
    // Many models have one template.
    std::map<std::filesystem::path, Result<FileContents>> m_Structures;
};

} // namespace TAMBO
