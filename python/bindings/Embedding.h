// SPDX-License-Identifier: GPL-3.0-or-later
// What the module and whoever starts Python inside of the workbench hand to each other, as
// capsules. Without it the module has objects and a history of its own.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO {
class Compound;
class History;
} // namespace TAMBO

namespace TAMBO::script {

// Stands in sys when the module is imported, and lives as long as the process.
class Embedding
{
public:
    [[nodiscard]] virtual History &history() = 0;
    virtual void opened(const Compound &object, const std::filesystem::path &file) = 0;
    virtual void stepEnded() = 0;
    // Of a session that is being saved: bytes, by their names.
    virtual std::vector<std::pair<std::string, std::string>> sessionValues() = 0;
    virtual void sessionSaved(const std::filesystem::path &file) = 0;

protected:
    ~Embedding() = default;
};
constexpr const char *kEmbedding = "_tambo_embedding";

// Of one run of a script, or one input of the console; the module has it.
class RunSteps
{
public:
    // What is changed from now on is one step of undo, unless the script opens steps itself.
    virtual void begin(const std::string &name) = 0;
    struct End
    {
        // That stay.
        std::size_t steps = 0;
        // What was changed behind them.
        bool hasTakenBack = false;
    };
    // Takes back what is in no step that has ended when the run has failed.
    virtual End end(bool hasFailed) = 0;

protected:
    ~RunSteps() = default;
};
constexpr const char *kRunSteps = "_tambo_run_steps";

} // namespace TAMBO::script
