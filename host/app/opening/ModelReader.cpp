// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModelReader.h"

#include "ChangeScope.h"
#include "DataAdder.h"
#include "RowsForModels.h"
#include "Space.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <utility>

namespace TAMBO::app {

namespace {

namespace fs = std::filesystem;

// What there is of remarks stands there.
std::string beginningOf(const fs::path &file)
{
    constexpr std::size_t kMost = std::size_t(16) << 20;
    std::string text(kMost, '\0');
    std::ifstream stream(file, std::ios::binary);
    stream.read(text.data(), std::streamsize(text.size()));
    text.resize(std::size_t(std::max<std::streamsize>(0, stream.gcount())));
    return text;
}

// Without it the model is a structure that nothing is known of.
ModelJob jobBeside(const fs::path &file)
{
    Result<ModelJob> job = readModelJob(file.parent_path() / "seq.ali");
    if (!job)
        return {};
    if (const Result<FileContents> known = readFile(file.parent_path() / "str.pdb"))
        setTemplate(job.value(), known.value());
    job->scores = scoresInRemarks(beginningOf(file));
    return std::move(job).value();
}

} // namespace

bool ModelReader::isModel(const fs::path &file)
{
    std::error_code ignored;
    return fs::exists(file.parent_path() / "seq.ali", ignored) &&
           fs::exists(file.parent_path() / "str.pdb", ignored);
}

ModelReader::ModelReader(Loader &loader, const fs::path &file)
    : m_Loader(loader),
      m_File(file),
      m_Outcome(Loader::readNow(file)),
      m_Model(file, jobBeside(file))
{ }

LoadReport ModelReader::read()
{
    const ArrivalScope arrival;
    const DataAdder<Space> guard(nullptr, Space::instance());
    RowsForModels rows(m_Model.rows());
    for (ReadFile &read : m_Outcome.files) {
        if (read.file == m_File)
            m_Model.prepare(read.contents, rows, BuiltModel::Place::OfTheJob);
    }
    LoadReport report = m_Loader.makeObjects(m_Outcome);
    if (guard.m_good && !report.structures.empty())
        m_Model.tie(*report.structures.front());
    return report;
}

} // namespace TAMBO::app
