// SPDX-License-Identifier: GPL-3.0-or-later
#include "LongStages.h"

#include "Hooks.h"

#include <algorithm>

namespace TAMBO {

namespace {

LongStages *s_CurrentStages = nullptr;

} // namespace

LongStages::LongStages(const char *what, std::size_t stages)
    : m_What(what), m_Stages(std::max<std::size_t>(stages, 1))
{
    if (s_CurrentStages == nullptr)
        s_CurrentStages = this;
}

LongStages::~LongStages()
{
    if (s_CurrentStages != this)
        return;
    s_CurrentStages = nullptr;
    if (m_HasWork && modelHooks().worked)
        modelHooks().worked();
}

const LongStages *LongStages::entered() noexcept
{
    if (s_CurrentStages != nullptr)
        s_CurrentStages->m_HasWork = true;
    return s_CurrentStages;
}

double LongStages::shareOf(double share) const noexcept
{
    return std::min(1.0, (double(m_Stage) + share) / double(m_Stages));
}

} // namespace TAMBO
