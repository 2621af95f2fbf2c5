// SPDX-License-Identifier: GPL-3.0-or-later
// What the model is asked for while a script runs inside of the workbench: a step is open from the
// run's begin to its end, but while the script holds one open itself. What is refused goes to the
// script instead of the window, and what arrives waits.
#pragma once

#include "ChangeScope.h"
#include "Embedding.h"
#include "Hooks.h"
#include "OpenStep.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace TAMBO::script {

class WorkbenchRun final : public RunSteps
{
public:
    // What the module does then.
    struct Actions
    {
        std::function<void(ModelHooks &hooks)> hear;
        // Ends the steps that the script has left open.
        std::function<void()> leaveSteps;
        // A step has ended, or is taken back.
        std::function<void(bool hasFailed)> endStep;
    };
    WorkbenchRun(Embedding &embedding, Actions actions)
        : m_Embedding(embedding), m_Actions(std::move(actions))
    { }

    void begin(const std::string &name) override;
    End end(bool hasFailed) override;
    // A step of the script's own is taken back, maybe an empty one.
    void noteTakenBack() noexcept;
    [[nodiscard]] bool isUnderWay() const noexcept { return m_Pause.has_value(); }

    // Around a step of the script's own, and what has to see all changes in the history. Nothing
    // outside of runs.
    void leave();
    void enter();

private:
    // Both tell whether the step has changed something.
    bool close();
    bool countStep();

    Embedding &m_Embedding;
    const Actions m_Actions;
    std::string m_Name;
    std::unique_ptr<OpenStep> m_Step;
    // By which it is seen whether a step has changed something.
    std::uint64_t m_LastState = 0;
    std::size_t m_Steps = 0;
    // Behind the last of them.
    bool m_HasTakenBack = false;
    std::optional<ArrivalPause> m_Pause;
    ModelHooks m_Hooks;
};

} // namespace TAMBO::script
