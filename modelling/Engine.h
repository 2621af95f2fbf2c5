// SPDX-License-Identifier: GPL-3.0-or-later
// The modelling engine: ProMod3 (Studer et al., PLoS Comput Biol 2021, 17:e1008667).
#pragma once

#include "Result.h"

#include <filesystem>
#include <string>

namespace kestram {

// Where the engine's program is, or what to install.
[[nodiscard]] TAMBO::Result<std::filesystem::path> findEngine();

// A new folder for one run, removed when this goes.
class RunFolder
{
public:
    RunFolder();
    ~RunFolder();
    RunFolder(const RunFolder &) = delete;
    RunFolder &operator=(const RunFolder &) = delete;

    // Empty when none could be made.
    [[nodiscard]] const std::filesystem::path &path() const noexcept { return m_Path; }

private:
    std::filesystem::path m_Path;
};

// Runs the engine in folder on "alignment.fasta" and "template.pdb" there and gives the text of the
// model. What the engine prints goes to standard error. launcher, unless empty, holds words that
// are put before the engine's command, such as those of a batch system. The engine ends when this
// program is ended.
[[nodiscard]] TAMBO::Result<std::string> runEngine(const std::filesystem::path &engine,
                                                   const std::string &launcher,
                                                   const std::filesystem::path &folder);

} // namespace kestram
