// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the files of one open command, and the structures that their rows name, into plain values.
// Knows nothing of the loaded objects, so that it can run in a thread of its own.
#pragma once

#include "FileReader.h"

#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace TAMBO {

struct FileFailure
{
    std::filesystem::path file;
    Failure failure;
};

struct ReadFile
{
    std::filesystem::path file;
    FileContents contents;
};

struct ReadOutcome
{
    // Files with structures before all others, so that rows find the chains they name.
    std::vector<ReadFile> files;
    std::vector<FileFailure> failures;
};

class ReadJob
{
public:
    // fraction: of all that is known to be read, 0 to 1. False cancels.
    using Progress = std::function<bool(const std::string &fileName, double fraction)>;

    // loadedStructures: names of structures that need no reading because a row names them.
    ReadJob(std::vector<std::filesystem::path> files,
            const std::set<std::string> &loadedStructures);

    // Fails only when it is cancelled: a bad file does not keep the others from being read.
    [[nodiscard]] Result<ReadOutcome> run(const Progress &progress);

private:
    [[nodiscard]] Result<void> read(const std::filesystem::path &file, ReadOutcome &outcome,
                                    const Progress &progress);
    void addSiblings(const ReadFile &file);

    std::vector<std::filesystem::path> m_Files;
    std::set<std::filesystem::path> m_Known;
    // Their codes.
    std::set<std::string> m_LoadedStructures;
    // How many of the files the user asked for; those behind them were named by rows.
    std::size_t m_Asked = 0;
    std::size_t m_Done = 0;
};

} // namespace TAMBO
