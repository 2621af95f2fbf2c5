// SPDX-License-Identifier: GPL-3.0-or-later
// Makes Space and the history of the parts of a state, which may be anybody's bytes.
#pragma once

#include "ObjectLoader.h"
#include "Result.h"

#include <cstdint>
#include <string_view>
#include <utility>

namespace TAMBO {
class History;
} // namespace TAMBO

namespace TAMBO::sessions {

class StateLoader
{
public:
    // All of them outlive this. Space and history are empty, and to be emptied after a failure.
    // goesOn is asked now and then within parts that take long.
    StateLoader(ObjectIndex &index, ObjectSpace &space, History &history,
                ObjectLoader::GoesOn goesOn = {})
        : m_Index(index),
          m_Space(space),
          m_History(history),
          m_GoesOn(std::move(goesOn)),
          m_Objects(index)
    { }

    // The next part.
    [[nodiscard]] Result<void> read(std::uint32_t kind, std::string_view content);
    // Of all parts together.
    [[nodiscard]] Result<void> outcome() const;

private:
    [[nodiscard]] Result<void> endObjects();
    [[nodiscard]] Result<void> readSteps(std::string_view content);
    [[nodiscard]] Result<void> readHistory(std::string_view content);

    ObjectIndex &m_Index;
    ObjectSpace &m_Space;
    History &m_History;
    ObjectLoader::GoesOn m_GoesOn;
    ObjectLoader m_Objects;
    bool m_HasObjects = false;
    bool m_IsComplete = false;
};

} // namespace TAMBO::sessions
