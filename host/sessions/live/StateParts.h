// SPDX-License-Identifier: GPL-3.0-or-later
// Space and the history as the parts of a store, one after the other, so that the window's thread
// can go on in between.
#pragma once

#include "ObjectStore.h"
#include "StoreRecord.h"

#include <cstddef>
#include <optional>

namespace TAMBO {
class History;
}

namespace TAMBO::sessions {

class StateParts
{
public:
    // Neither may change until all parts are there.
    StateParts(const ObjectSpace &space, const History &history);

    // A part of about so many bytes; nothing after the last one.
    [[nodiscard]] std::optional<StatePart> next(std::size_t bytes);
    // Of how many objects and steps, and how many of them are in the parts so far.
    [[nodiscard]] std::size_t size() const noexcept;
    [[nodiscard]] std::size_t done() const noexcept { return m_Objects.written() + m_NextStep; }

private:
    [[nodiscard]] StatePart steps(std::size_t bytes);

    const History &m_History;
    ObjectStore m_Objects;
    bool m_HasObjects = true;
    std::size_t m_NextStep = 0;
    bool m_IsComplete = false;
};

} // namespace TAMBO::sessions
