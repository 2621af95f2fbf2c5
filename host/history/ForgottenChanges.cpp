// SPDX-License-Identifier: GPL-3.0-or-later
#include "ForgottenChanges.h"

#include "FreedObjects.h"

namespace TAMBO {

void ForgottenChanges::add(const HistoryStep &step, std::size_t index)
{
    step.forEachChange([&](const Compound &holder, EditPart part) {
        // Steps are dropped one after the other.
        m_LastSteps[{&holder, part}] = index;
    });
}

void ForgottenChanges::forget(const FreedObjects &freed)
{
    std::erase_if(m_LastSteps,
                  [&freed](const auto &entry) { return freed.holds(*entry.first.first); });
}

} // namespace TAMBO
