// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScriptCommand.h"

#include "ExitStatus.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <unistd.h>

namespace TAMBO::app {

namespace {

namespace fs = std::filesystem;

// The one that the package is made for, whichever comes first in the path.
constexpr const char *kPython = "/usr/bin/python3";
// Python looks there itself, after what an administrator or a user has put in its place.
constexpr const char *kDistributionFolder = "/usr/lib/python3/dist-packages";

// Beside the program, as all that it opens.
fs::path packagesFolder()
{
    std::error_code error;
    const fs::path program = fs::canonical("/proc/self/exe", error);
    return program.parent_path().parent_path() / "lib" / "python3" / "dist-packages";
}

bool hasPackage(const fs::path &folder)
{
    std::error_code error;
    return fs::exists(folder / "tambo" / "__init__.py", error);
}

void addToPath(const fs::path &folder)
{
    const char *const before = std::getenv("PYTHONPATH");
    const std::string path =
        before != nullptr && *before != '\0' ? folder.string() + ':' + before : folder.string();
    ::setenv("PYTHONPATH", path.c_str(), 1);
}

} // namespace

int runScriptCommand(const std::vector<std::string> &words, std::ostream &err)
{
    const fs::path folder = packagesFolder();
    if (!hasPackage(folder))
        return complain(err, {FailureKind::NotFound, "scripts need the package python3-tambo"},
                        kWrongCall);
    std::vector<std::string> call = words;
    if (std::error_code error; !fs::exists(call.front(), error))
        return complain(err, {FailureKind::NotFound, "No such file or directory", {call.front()}},
                        kBadInput);
    // A name as "-x.py" is no option of Python.
    if (call.front().starts_with('-'))
        call.front().insert(0, "./");
    if (folder != kDistributionFolder)
        addToPath(folder);
    call.insert(call.begin(), kPython);
    std::vector<char *> arguments;
    arguments.reserve(call.size() + 1);
    for (std::string &word : call)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    ::execv(kPython, arguments.data());
    return complain(err, {FailureKind::System, std::strerror(errno), {kPython}}, kWrongCall);
}

} // namespace TAMBO::app
