// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueTies.h"

#include <algorithm>

namespace TAMBO {

void ResidueTies::append(const Run &run)
{
    if (!m_Runs.empty()) {
        Run &last = m_Runs.back();
        if (last.chain == run.chain && last.first + last.count == run.first &&
            last.chainFirst + last.count == run.chainFirst) {
            last.count += run.count;
            return;
        }
    }
    m_Runs.push_back(run);
}

const ResidueTies::Run *ResidueTies::find(std::size_t index) const noexcept
{
    const auto after = std::ranges::upper_bound(m_Runs, index, {}, &Run::first);
    if (after == m_Runs.begin())
        return nullptr;
    const Run &run = *(after - 1);
    return index < std::size_t(run.first) + run.count ? &run : nullptr;
}

bool ResidueTies::holds(const Peptide &chain) const noexcept
{
    return std::ranges::find(m_Runs, &chain, &Run::chain) != m_Runs.end();
}

void ResidueTies::erase(const Peptide &chain)
{
    std::erase_if(m_Runs, [&](const Run &run) { return run.chain == &chain; });
}

} // namespace TAMBO
