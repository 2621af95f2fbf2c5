// SPDX-License-Identifier: GPL-3.0-or-later
// The modelling engine: ProMod3 (Studer et al., PLoS Comput Biol 2021, 17:e1008667).
#pragma once

#include "Result.h"

#include <filesystem>
#include <string>
#include <vector>

namespace kestram {

// Where the engine's program is, or what to install.
[[nodiscard]] TAMBO::Result<std::filesystem::path> findEngine();

// The names of files in the folder that the engine runs in.
constexpr const char *kAlignmentFile = "alignment.fasta";
constexpr const char *kTemplateFile = "template.pdb";
constexpr const char *kModelFile = "model.pdb";

// What starts the engine. action is one of its own, or the name of a script. launcher, unless
// empty, holds words that are put before the engine's, such as those of a batch system.
[[nodiscard]] std::vector<std::string> engineCommand(const std::filesystem::path &engine,
                                                     const std::string &action,
                                                     const std::string &launcher);

// The status of a process of which the program could not be started.
constexpr int kCannotStart = 127;

// The text of the model in the folder, or why there is none: status is what wait() told of the
// command.
[[nodiscard]] TAMBO::Result<std::string> builtModel(int status,
                                                    const std::vector<std::string> &command,
                                                    const std::filesystem::path &folder);

} // namespace kestram
