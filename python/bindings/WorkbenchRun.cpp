// SPDX-License-Identifier: GPL-3.0-or-later
#include "WorkbenchRun.h"

#include "ChangeSession.h"
#include "History.h"

namespace TAMBO::script {

void WorkbenchRun::begin(const std::string &name)
{
    m_Name = name;
    m_Steps = 0;
    m_HasTakenBack = false;
    m_LastState = m_Embedding.history().state();
    m_Pause.emplace();
    ModelHooks &hooks = modelHooks();
    m_Hooks = hooks;
    m_Actions.hear(hooks);
    hooks.worked = nullptr;
    enter();
}

RunSteps::End WorkbenchRun::end(bool hasFailed)
{
    ModelHooks &hooks = modelHooks();
    // Taking back is not given up on the way.
    hooks.working = nullptr;
    if (hasFailed && ChangeSession::get().isOpen()) {
        noteTakenBack();
        ChangeSession::get().takeBackChanges();
    }
    hooks.working = m_Hooks.working;
    hooks.worked = m_Hooks.worked;
    // Those that the script has left open, too.
    m_Actions.leaveSteps();
    close();
    hooks.refused = m_Hooks.refused;
    hooks.denied = m_Hooks.denied;
    m_Actions.endStep(hasFailed);
    m_Pause.reset();
    return {m_Steps, m_HasTakenBack};
}

void WorkbenchRun::noteTakenBack() noexcept
{
    // One that can be taken back from now on has changed nothing.
    if (!ChangeSession::get().canTakeBack())
        m_HasTakenBack = true;
}

void WorkbenchRun::leave()
{
    if (!isUnderWay())
        return;
    const bool hasChanged = close();
    m_Actions.endStep(false);
    if (hasChanged)
        m_Embedding.stepEnded();
}

void WorkbenchRun::enter()
{
    if (!isUnderWay())
        return;
    // The script's own one.
    if (countStep())
        m_Embedding.stepEnded();
    m_Step = std::make_unique<OpenStep>(m_Name);
}

bool WorkbenchRun::close()
{
    m_Step.reset();
    return countStep();
}

bool WorkbenchRun::countStep()
{
    const std::uint64_t state = m_Embedding.history().state();
    if (state == m_LastState)
        return false;
    m_LastState = state;
    ++m_Steps;
    m_HasTakenBack = false;
    return true;
}

} // namespace TAMBO::script
