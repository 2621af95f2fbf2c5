// SPDX-License-Identifier: GPL-3.0-or-later
// A program that a run has started: in a group of its own, so that it ends with all that it has
// started itself.
#pragma once

#include "Result.h"

#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace TAMBO::families {

class RunSignals;

class ChildProcess
{
public:
    struct Command
    {
        // The program first; without a slash it is looked for on the search path.
        std::vector<std::string> words;
        std::filesystem::path folder;
        // What it prints and says; cut first unless it is to go on.
        std::filesystem::path output;
        bool goesOnInOutput = false;
        // That it gets when this program is gone.
        int deathSignal = 0;
    };

    [[nodiscard]] static Result<ChildProcess> start(const Command &command,
                                                    const RunSignals &signals);

    // As waitpid() has it, when it has ended.
    [[nodiscard]] std::optional<int> ended();
    // To the whole group.
    void send(int signal) const;

private:
    explicit ChildProcess(pid_t process) : m_Process(process) { }

    pid_t m_Process;
    std::optional<int> m_Status;
};

// Of a status as waitpid() has it: the exit status, 128 + the signal when it was ended by one.
[[nodiscard]] int exitStatusOf(int status);

} // namespace TAMBO::families
