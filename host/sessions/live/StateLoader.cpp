// SPDX-License-Identifier: GPL-3.0-or-later
#include "StateLoader.h"

#include "History.h"
#include "ObjectEditBytes.h"
#include "ObjectIndex.h"
#include "ObjectSpace.h"
#include "SessionKinds.h"

#include <string>
#include <utility>

namespace TAMBO::sessions {

namespace {

Failure damagedState(const std::string &what)
{
    return {FailureKind::BadInput, "the session is damaged: " + what};
}

} // namespace

Result<void> StateLoader::read(std::uint32_t kind, std::string_view content)
{
    if (m_IsComplete)
        return damagedState("there is something behind the history");
    switch (static_cast<PartKind>(kind)) {
    case PartKind::Objects:
        return m_HasObjects ? Result<void>(damagedState("objects stand behind steps"))
                            : m_Objects.read(content);
    case PartKind::Steps:
        return readSteps(content);
    case PartKind::History:
        return readHistory(content);
    }
    return Failure(FailureKind::BadInput,
                   "the session has a part of an unknown kind (" + std::to_string(kind) + ')');
}

Result<void> StateLoader::outcome() const
{
    return m_IsComplete ? Result<void>() : damagedState("its end is missing");
}

Result<void> StateLoader::endObjects()
{
    if (std::exchange(m_HasObjects, true))
        return {};
    if (Result<void> done = m_Objects.complete(m_GoesOn); !done)
        return done;
    return m_Objects.fill(m_Space, m_GoesOn);
}

Result<void> StateLoader::readSteps(std::string_view content)
{
    if (Result<void> done = endObjects(); !done)
        return done;
    ValueReader steps(content);
    while (!steps.atEnd()) {
        ObjectEditReader step(steps.text(), m_Index, &m_Objects);
        if (Result<void> done = m_History.loadStep(step); !done)
            return done;
    }
    return steps.failed() ? Result<void>(damagedState(steps.cause())) : Result<void>();
}

Result<void> StateLoader::readHistory(std::string_view content)
{
    if (Result<void> done = endObjects(); !done)
        return done;
    ObjectEditReader state(content, m_Index, &m_Objects);
    m_IsComplete = true;
    return m_History.loadState(state);
}

} // namespace TAMBO::sessions
