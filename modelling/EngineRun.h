// SPDX-License-Identifier: GPL-3.0-or-later
// One run of the engine under the eye of a watcher, in a folder that goes with it.
#pragma once

#include "ModellingInput.h"
#include "Result.h"
#include "RunFolder.h"
#include "Watcher.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kestram {

class EngineRun
{
public:
    struct Plan
    {
        // As engineCommand() gives it.
        std::vector<std::string> command;
        std::filesystem::path engine;
        std::function<TAMBO::Result<std::unique_ptr<RunFolder>>()> makeFolder;
        // Called in another process when this one has gone without a call of finish().
        std::function<void()> whenLeft;
        // Called there, too, each time that so long has passed.
        std::function<void()> atTimes = {};
        std::chrono::milliseconds pause{60'000};
    };

    [[nodiscard]] static TAMBO::Result<std::unique_ptr<EngineRun>> begin(const Plan &plan);

    [[nodiscard]] const RunFolder &folder() const noexcept { return *m_Folder; }
    // The text of the model, which stands in the folder, too.
    [[nodiscard]] TAMBO::Result<std::string> build(const ModellingInput &input);
    // All is done that there was to do. The folder goes with the object.
    void finish() { m_Watcher->finish(); }

private:
    explicit EngineRun(std::vector<std::string> command) : m_Command(std::move(command)) { }

    std::vector<std::string> m_Command;
    std::unique_ptr<RunFolder> m_Folder;
    std::unique_ptr<Watcher> m_Watcher;
};

} // namespace kestram
