// SPDX-License-Identifier: GPL-3.0-or-later
#include "Engine.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

namespace kestram {

namespace {

namespace fs = std::filesystem;
using TAMBO::Failure;
using TAMBO::FailureKind;
using TAMBO::Result;

constexpr const char *kProgram = "promod";

std::string howItEnded(int status, const std::string &program)
{
    if (WIFSIGNALED(status))
        return program + " was ended by signal " + std::to_string(WTERMSIG(status));
    if (WEXITSTATUS(status) == kCannotStart)
        return program + " cannot be started";
    return program + " failed with status " + std::to_string(WEXITSTATUS(status));
}

// Its last record says so. What was written to a full disk breaks off before.
bool isWhole(std::string_view model)
{
    const std::size_t end = model.find_last_not_of(" \r\n");
    return end != std::string_view::npos && model.substr(0, end + 1).ends_with("\nEND");
}

} // namespace

Result<fs::path> findEngine()
{
    const char *const path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "" : path);
    for (std::string folder; std::getline(folders, folder, ':');) {
        const fs::path candidate = fs::path(folder) / kProgram;
        std::error_code error;
        if (fs::is_regular_file(candidate, error) && access(candidate.c_str(), X_OK) == 0)
            return fs::absolute(candidate);
    }
    return Failure{FailureKind::NotFound,
                   "the modelling engine ProMod3 (program \"promod\") was not found; on Debian, "
                   "install the package promod3"};
}

std::vector<std::string> engineCommand(const fs::path &engine, const std::string &action,
                                       const std::string &launcher)
{
    std::istringstream stream(launcher);
    std::vector<std::string> command{std::istream_iterator<std::string>(stream), {}};
    // Plain names: the engine's own script does not quote its arguments.
    for (const char *word : {engine.c_str(), action.c_str(), "-f", kAlignmentFile, "-p",
                             kTemplateFile, "-o", kModelFile})
        command.emplace_back(word);
    return command;
}

Result<std::string> builtModel(int status, const std::vector<std::string> &command,
                               const fs::path &folder)
{
    const std::string &program = command.front();
    if (!WIFEXITED(status) || WEXITSTATUS(status) != EXIT_SUCCESS)
        return Failure{FailureKind::System, howItEnded(status, program)};
    std::ifstream file(folder / kModelFile, std::ios::binary);
    std::string model{std::istreambuf_iterator<char>(file), {}};
    if (model.find("ATOM  ") == std::string::npos)
        return Failure{FailureKind::System, program + " ended well but gave no model"};
    if (!isWhole(model))
        return Failure{FailureKind::System,
                       program + " ended well but its model breaks off; is the disk full?"};
    return model;
}

} // namespace kestram
