// SPDX-License-Identifier: GPL-3.0-or-later
#include "StateParts.h"

#include "Compound.h"
#include "History.h"
#include "ObjectEditBytes.h"
#include "ObjectSpace.h"
#include "ObjectWriter.h"
#include "SessionKinds.h"
#include "StoredObject.h"

#include <utility>
#include <vector>

namespace TAMBO::sessions {

namespace {

std::vector<const StoredObject *> ownedBy(const History &history)
{
    std::vector<const StoredObject *> owned;
    for (const Compound *const object : history.ownedObjects())
        owned.push_back(StoredObject::from(object));
    return owned;
}

StatePart part(PartKind kind, std::string content)
{
    return {static_cast<std::uint32_t>(kind), std::move(content)};
}

} // namespace

StateParts::StateParts(const ObjectSpace &space, const History &history)
    : StateParts(space, history, ownedBy(history))
{ }

StateParts::StateParts(const ObjectSpace &space, const History &history,
                       std::vector<const StoredObject *> owned)
    : m_History(history), m_HasOwned(!owned.empty()), m_Objects(space, std::move(owned))
{ }

std::optional<StatePart> StateParts::next(std::size_t bytes)
{
    if (m_HasObjects) {
        ObjectWriter out;
        m_HasObjects = m_Objects.writeNext(out, bytes);
        if (m_HasObjects) {
            m_LastingParts += m_Objects.hasBegunAlignments() ? 0 : 1;
            return part(PartKind::Objects, out.take());
        }
    }
    if (m_NextStep < stepCount())
        return steps(bytes);
    if (m_IsComplete)
        return std::nullopt;
    m_IsComplete = true;
    return part(PartKind::History, m_Pinned ? m_Pinned->history : historyState());
}

std::size_t StateParts::stepCount() const noexcept
{
    return m_Pinned ? m_Pinned->steps : m_History.size();
}

std::string StateParts::historyState() const
{
    ObjectEditWriter out(ObjectContents::Elsewhere);
    m_History.storeState(out);
    return out.take();
}

bool StateParts::pin()
{
    if (!m_Pinned && m_History.position() == m_History.size())
        m_Pinned = Pinned{m_History.size(), historyState()};
    return isPinned();
}

std::size_t StateParts::goBack()
{
    m_Objects.goBack();
    m_Pinned.reset();
    m_HasObjects = true;
    m_NextStep = 0;
    m_IsComplete = false;
    return m_LastingParts;
}

std::size_t StateParts::size() const noexcept
{
    return m_Objects.size() + stepCount();
}

StatePart StateParts::steps(std::size_t bytes)
{
    ValueWriter all;
    ObjectEditWriter out(ObjectContents::Elsewhere);
    do {
        m_History.storeStep(m_NextStep++, out);
        all.text(out.bytes());
        out.clear();
    } while (m_NextStep < stepCount() && all.size() < bytes);
    return part(PartKind::Steps, all.take());
}

} // namespace TAMBO::sessions
