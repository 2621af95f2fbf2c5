// SPDX-License-Identifier: GPL-3.0-or-later
#include "Descendants.h"

#include "Text.h"

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace kestram {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::milliseconds kBetweenLooks{20};

// "17 (name) S 4 …" is a child of 4. The name may hold anything.
std::optional<pid_t> parentIn(const std::string &facts)
{
    const std::size_t name = facts.rfind(')');
    constexpr std::size_t kToParent = 4;
    if (name == std::string::npos || name + kToParent >= facts.size())
        return std::nullopt;
    std::string_view rest = std::string_view(facts).substr(name + kToParent);
    return TAMBO::takeNumber<pid_t>(rest);
}

std::multimap<pid_t, pid_t> childrenOfAll()
{
    std::multimap<pid_t, pid_t> children;
    std::error_code error;
    for (fs::directory_iterator entry("/proc", error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        std::string_view digits = name;
        const std::optional<pid_t> process = TAMBO::takeNumber<pid_t>(digits);
        if (!process || !digits.empty())
            continue;
        std::ifstream stream(entry->path() / "stat");
        const std::string facts{std::istreambuf_iterator<char>(stream), {}};
        if (const std::optional<pid_t> parent = parentIn(facts))
            children.emplace(*parent, *process);
    }
    return children;
}

// Those that have ended; whether there are any others.
bool reapEnded()
{
    while (true) {
        const pid_t ended = waitpid(-1, nullptr, WNOHANG);
        if (ended == 0)
            return true;
        if (ended < 0 && errno != EINTR)
            return false;
    }
}

} // namespace

void adoptDescendants()
{
    prctl(PR_SET_CHILD_SUBREAPER, 1);
}

void signalDescendants(int signal)
{
    const std::multimap<pid_t, pid_t> children = childrenOfAll();
    std::vector<pid_t> found = {getpid()};
    for (std::size_t i = 0; i < found.size(); ++i) {
        const auto [begin, end] = children.equal_range(found[i]);
        for (auto child = begin; child != end; ++child)
            found.push_back(child->second);
    }
    for (std::size_t i = 1; i < found.size(); ++i)
        kill(found[i], signal);
}

void endDescendants(std::chrono::milliseconds grace)
{
    if (!reapEnded())
        return;
    signalDescendants(SIGTERM);
    const auto deadline = std::chrono::steady_clock::now() + grace;
    while (reapEnded()) {
        if (std::chrono::steady_clock::now() >= deadline)
            signalDescendants(SIGKILL);
        std::this_thread::sleep_for(kBetweenLooks);
    }
}

} // namespace kestram
