// SPDX-License-Identifier: GPL-3.0-or-later
// The state of everything as the entries of a store, which are handed over in slices.
#pragma once

#include "StateParts.h"
#include "StoreRecord.h"

#include <cstddef>
#include <optional>

namespace TAMBO::sessions {

class WaitingState
{
public:
    // Neither may change until all entries are there.
    WaitingState(const ObjectSpace &space, const History &history) : m_Parts(space, history) { }

    // The next entry, of about so many bytes; nothing behind the last one.
    [[nodiscard]] std::optional<StoreEntry> next(std::size_t bytes);

private:
    StateParts m_Parts;
    bool m_HasBegun = false;
    bool m_IsDone = false;
};

} // namespace TAMBO::sessions
