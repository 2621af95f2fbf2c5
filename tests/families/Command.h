// SPDX-License-Identifier: GPL-3.0-or-later
// Commands of the shell, run to their end or beside the test.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <sys/types.h>

// Long enough for a machine that is busy with something else.
constexpr std::chrono::seconds kPatience{120};

// Whether it happened in time; looked at again and again.
[[nodiscard]] bool waitUntil(const std::function<bool()> &happened);

[[nodiscard]] std::string contentsOf(const std::filesystem::path &file);

struct Finished
{
    // 128 more than the signal that ended the shell.
    int status = -1;
    // Of standard output and error.
    std::string output;
};

[[nodiscard]] Finished run(const std::string &command, const std::filesystem::path &folder);

// A command in a session of its own. It is ended, with all that it started there, when this ends or
// the test does.
class RunningCommand
{
public:
    RunningCommand(const std::string &command, const std::filesystem::path &folder,
                   std::filesystem::path output);
    ~RunningCommand();
    RunningCommand(const RunningCommand &) = delete;
    RunningCommand &operator=(const RunningCommand &) = delete;

    // To the whole session.
    void signal(int number) const;
    [[nodiscard]] Finished wait();

private:
    std::filesystem::path m_Output;
    pid_t m_Process = -1;
};
