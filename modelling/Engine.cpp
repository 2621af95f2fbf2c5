// SPDX-License-Identifier: GPL-3.0-or-later
#include "Engine.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace kestram {

namespace {

namespace fs = std::filesystem;
using TAMBO::Failure;
using TAMBO::FailureKind;
using TAMBO::Result;

constexpr const char *kProgram = "promod";
constexpr int kCannotStart = 127;

volatile std::sig_atomic_t s_Engine = 0;

void passOn(int signal)
{
    if (s_Engine > 0)
        kill(static_cast<pid_t>(-s_Engine), signal);
}

constexpr std::array kPassedOn = {SIGTERM, SIGINT, SIGHUP};

// While this lives, the signals that are passed on wait.
class HeldSignals
{
public:
    HeldSignals()
    {
        sigset_t held;
        sigemptyset(&held);
        for (const int signal : kPassedOn)
            sigaddset(&held, signal);
        sigprocmask(SIG_BLOCK, &held, &m_Before);
    }
    ~HeldSignals() { letGo(); }
    HeldSignals(const HeldSignals &) = delete;
    HeldSignals &operator=(const HeldSignals &) = delete;
    void letGo() const { sigprocmask(SIG_SETMASK, &m_Before, nullptr); }

private:
    sigset_t m_Before{};
};

// The engine runs in a group of its own, which gets the signals that come from now on.
pid_t forkEngine(const std::function<void()> &becomeEngine)
{
    // One that comes before it is known to whom it goes would leave the engine alone.
    const HeldSignals held;
    const pid_t child = fork();
    if (child == 0) {
        held.letGo();
        std::signal(SIGPIPE, SIG_DFL);
        becomeEngine();
    }
    if (child > 0) {
        setpgid(child, child);
        s_Engine = child;
        for (const int signal : kPassedOn)
            std::signal(signal, passOn);
    }
    return child;
}

std::string searchPath()
{
    const char *path = std::getenv("PATH");
    return path == nullptr ? std::string() : std::string(path);
}

std::vector<std::string> words(const std::string &text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

[[noreturn]] void becomeEngine(const fs::path &engine, const fs::path &folder,
                               std::vector<std::string> command, pid_t parent)
{
    // A group of its own, so that the engine's own children end with it.
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent)
        _exit(kCannotStart);
    dup2(STDERR_FILENO, STDOUT_FILENO);
    // The engine asks the search path for its interpreter, which is the one installed with it.
    const std::string path = engine.parent_path().string() + ':' + searchPath();
    setenv("PATH", path.c_str(), 1);
    std::vector<char *> arguments;
    std::ranges::transform(command, std::back_inserter(arguments),
                           [](std::string &word) { return word.data(); });
    arguments.push_back(nullptr);
    if (chdir(folder.c_str()) == 0)
        execvp(arguments.front(), arguments.data());
    _exit(kCannotStart);
}

std::string howItEnded(int status, const std::string &program)
{
    if (WIFSIGNALED(status))
        return program + " was ended by signal " + std::to_string(WTERMSIG(status));
    if (WEXITSTATUS(status) == kCannotStart)
        return program + " cannot be started";
    return program + " failed with status " + std::to_string(WEXITSTATUS(status));
}

} // namespace

Result<fs::path> findEngine()
{
    std::istringstream folders(searchPath());
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

RunFolder::RunFolder()
{
    std::error_code error;
    std::string name = (fs::temp_directory_path(error) / "kestram-XXXXXX").string();
    if (!error && mkdtemp(name.data()) != nullptr)
        m_Path = name;
}

RunFolder::~RunFolder()
{
    std::error_code ignored;
    if (!m_Path.empty())
        fs::remove_all(m_Path, ignored);
}

Result<std::string> runEngine(const fs::path &engine, const std::string &launcher,
                              const fs::path &folder)
{
    std::vector<std::string> command = words(launcher);
    const std::string program = command.empty() ? engine.string() : command.front();
    // Plain names: the engine's own script does not quote its arguments.
    for (const char *word : {engine.c_str(), "build-model", "-f", "alignment.fasta", "-p",
                             "template.pdb", "-o", "model.pdb"})
        command.emplace_back(word);

    const pid_t self = getpid();
    const pid_t child = forkEngine([&] { becomeEngine(engine, folder, command, self); });
    if (child < 0)
        return Failure{FailureKind::System,
                       program + " cannot be started: " + std::strerror(errno)};
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            return Failure{FailureKind::System, program + ": " + std::strerror(errno)};
    s_Engine = 0;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != EXIT_SUCCESS)
        return Failure{FailureKind::System, howItEnded(status, program)};

    std::ifstream file(folder / "model.pdb", std::ios::binary);
    std::string model{std::istreambuf_iterator<char>(file), {}};
    if (model.find("ATOM  ") == std::string::npos)
        return Failure{FailureKind::System, program + " ended well but gave no model"};
    return model;
}

} // namespace kestram
