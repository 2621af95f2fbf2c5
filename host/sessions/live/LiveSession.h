// SPDX-License-Identifier: GPL-3.0-or-later
// Hands everything that happens to the objects to a store, as it happens. What takes its time,
// large objects that arrive and the state as a whole, is handed over in slices while the user does
// nothing.
#pragma once

#include "PointerSet.h"
#include "SessionEditBytes.h"
#include "SessionKinds.h"
#include "StepJournal.h"
#include "StepRecords.h"
#include "StoreRecord.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TAMBO {
class History;
class ObjectSpace;
class StoredObject;
} // namespace TAMBO

namespace TAMBO::sessions {

class LiveSession final : public StepJournal
{
public:
    // Of objects that are written together with the change they came by, in bytes of memory.
    static constexpr std::size_t kSmall = std::size_t(64) << 10;

    using Sink = std::function<void(StoreEntry entry)>;

    // The journal as long as it lives. Space and history are stored from the state that they have
    // now, the history being the recorder.
    LiveSession(ObjectSpace &space, History &history, Sink sink, std::size_t small = kSmall);
    ~LiveSession() override;

    // Everything anew, because the store has begun anew.
    void startAnew();
    // Hands over about so many bytes of what waits. False when nothing waits any more.
    bool writeMore(std::size_t bytes);
    // All that waits.
    void finish();
    // Nothing waits: all that has been done so far has been handed over.
    [[nodiscard]] bool isUpToDate() const noexcept { return m_Tasks.empty(); }

    // ---- StepJournal

    // What waits is written as it was, before something changes.
    void changeBegins() override;
    std::string store(const Edit &inverse) override;
    void stepEnds(StoredStep &&step) override;
    void travelled(std::size_t steps) override;
    void forgotten(bool isFirst) override;
    void cleared() override;
    void marked(const Compound &object, const StateMark &mark) override;

private:
    // What is handed over in slices, or behind something that is.
    class Task;
    class StateTask;
    class RecordTask;

    // A change of what is written elsewhere as it will be at the end of the step.
    [[nodiscard]] bool isInContents(const Edit &inverse);
    [[nodiscard]] bool isLarge(const Compound *object);
    void take(std::string record);

    ObjectSpace &m_Space;
    History &m_History;
    Sink m_Sink;
    SessionEditWriter m_Writer;
    StepRecords m_Records;
    // Those that changes of the step under way bring along and that are not in the changes' bytes,
    // by the number that these begin with. 0: none.
    std::map<std::uint64_t, std::vector<const StoredObject *>> m_Large;
    std::uint64_t m_LastLarge = 0;
    // All of them, once somebody asks for one.
    std::optional<PointerSet<StoredObject>> m_LargeSet;
    // Of the step that ends.
    std::vector<const StoredObject *> m_LargeOfStep;
    std::deque<std::unique_ptr<Task>> m_Tasks;
};

} // namespace TAMBO::sessions
