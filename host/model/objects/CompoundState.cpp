// SPDX-License-Identifier: GPL-3.0-or-later
#include "CompoundState.h"

#include "AlignmentTable.h"
#include "NamedCompound.h"
#include "ObjectSpace.h"

#include "Alignment.h"

namespace TAMBO {

CompoundState *stateOf(Compound &object) noexcept
{
    if (auto *const named = dynamic_cast<NamedCompound *>(&object))
        return &named->state();
    if (auto *const alignment = dynamic_cast<Alignment *>(&object))
        return &alignment->table().state();
    if (auto *const space = dynamic_cast<ObjectSpace *>(&object))
        return &space->state();
    return nullptr;
}

std::uint32_t identityOf(const Compound &object) noexcept
{
    static std::uint32_t last = 0;
    const CompoundState *const state = stateOf(const_cast<Compound &>(object));
    if (state == nullptr)
        return 0;
    if (state->identity == 0)
        state->identity = ++last;
    return state->identity;
}

} // namespace TAMBO
