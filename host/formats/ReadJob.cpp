// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReadJob.h"

#include "SiblingStructures.h"
#include "StructureCode.h"

#include <algorithm>
#include <utility>

namespace TAMBO {

namespace {

namespace fs = std::filesystem;

// One spelling per file, whether it exists or not.
fs::path identity(const fs::path &file)
{
    std::error_code error;
    fs::path canonical = fs::weakly_canonical(file, error);
    return error ? file : canonical;
}

} // namespace

ReadJob::ReadJob(std::vector<fs::path> files, const std::set<std::string> &loadedStructures)
{
    for (const std::string &name : loadedStructures)
        m_LoadedStructures.insert(structureCode(name));
    for (fs::path &file : files) {
        if (m_Known.insert(identity(file)).second)
            m_Files.push_back(std::move(file));
    }
    m_Asked = m_Files.size();
}

Result<ReadOutcome> ReadJob::run(const Progress &progress)
{
    ReadOutcome outcome;
    // The list grows while it is worked on.
    for (m_Done = 0; m_Done < m_Files.size(); ++m_Done) {
        const fs::path file = m_Files[m_Done];
        if (const Result<void> done = read(file, outcome, progress); !done)
            return done.error();
    }
    std::stable_partition(outcome.files.begin(), outcome.files.end(),
                          [](const ReadFile &file) { return !file.contents.structures.empty(); });
    return outcome;
}

Result<void> ReadJob::read(const fs::path &file, ReadOutcome &outcome, const Progress &progress)
{
    const std::string name = file.filename().string();
    bool isCancelled = false;
    const auto report = [&](std::uint64_t done, std::uint64_t total) {
        const double part = total == 0 ? 0.0 : std::min(1.0, double(done) / double(total));
        isCancelled = !progress(name, (double(m_Done) + part) / double(m_Files.size()));
        return !isCancelled;
    };
    const Failure cancelled{FailureKind::Cancelled, {}};
    if (!report(0, 1))
        return cancelled;
    Result<FileContents> contents = readPackedFile(file, report);
    // A reader that ended before it asked again has still been cancelled.
    if (isCancelled)
        return cancelled;
    if (!contents) {
        outcome.failures.push_back({file, contents.error()});
        return {};
    }
    // A row may name a file that holds no structure; nobody asked to open that one.
    if (m_Done >= m_Asked && contents->structures.empty())
        return {};
    outcome.files.push_back({file, std::move(contents).value()});
    addSiblings(outcome.files.back());
    return {};
}

void ReadJob::addSiblings(const ReadFile &file)
{
    for (const fs::path &sibling : siblingStructures(file.file, file.contents.alignments)) {
        if (m_LoadedStructures.contains(structureCode(structureName(sibling))))
            continue;
        if (m_Known.insert(identity(sibling)).second)
            m_Files.push_back(sibling);
    }
}

} // namespace TAMBO
