// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionLoader.h"

#include "History.h"
#include "HistoryReplay.h"
#include "LongWork.h"
#include "ObjectEditBytes.h"
#include "ObjectIndex.h"
#include "ObjectLoader.h"
#include "ObjectSpace.h"
#include "SessionEditBytes.h"
#include "SessionKinds.h"
#include "StoreReader.h"
#include "ValueBytes.h"

#include <memory>
#include <string>
#include <utility>

namespace TAMBO::sessions {

namespace {

Failure unknown(const char *what, std::uint32_t kind)
{
    return {FailureKind::BadInput, std::string("the session has a ") + what +
                                       " of an unknown kind (" + std::to_string(kind) + ')'};
}

Failure damaged(const std::string &what)
{
    return {FailureKind::BadInput, "the session is damaged: " + what};
}

// The parts of the state, in their order.
class StateLoader
{
public:
    StateLoader(ObjectIndex &index, ObjectSpace &space, History &history)
        : m_Index(index), m_Space(space), m_History(history), m_Objects(index)
    { }

    [[nodiscard]] Result<void> read(std::uint32_t kind, std::string_view content)
    {
        if (m_IsComplete)
            return damaged("there is something behind the history");
        switch (static_cast<PartKind>(kind)) {
        case PartKind::Objects:
            return m_HasObjects ? Result<void>(damaged("objects stand behind steps"))
                                : m_Objects.read(content);
        case PartKind::Steps:
            return readSteps(content);
        case PartKind::History:
            return readHistory(content);
        }
        return unknown("part", kind);
    }

    [[nodiscard]] Result<void> outcome() const
    {
        return m_IsComplete ? Result<void>() : damaged("its end is missing");
    }

private:
    [[nodiscard]] Result<void> endObjects()
    {
        if (std::exchange(m_HasObjects, true))
            return {};
        if (Result<void> done = m_Objects.complete(); !done)
            return done;
        return m_Objects.fill(m_Space);
    }

    [[nodiscard]] Result<void> readSteps(std::string_view content)
    {
        if (Result<void> done = endObjects(); !done)
            return done;
        ValueReader steps(content);
        while (!steps.atEnd()) {
            ObjectEditReader step(steps.text(), m_Index, &m_Objects);
            if (Result<void> done = m_History.loadStep(step); !done)
                return done;
        }
        return steps.failed() ? Result<void>(damaged(steps.cause())) : Result<void>();
    }

    [[nodiscard]] Result<void> readHistory(std::string_view content)
    {
        if (Result<void> done = endObjects(); !done)
            return done;
        ObjectEditReader state(content, m_Index, &m_Objects);
        m_IsComplete = true;
        return m_History.loadState(state);
    }

    ObjectIndex &m_Index;
    ObjectSpace &m_Space;
    History &m_History;
    ObjectLoader m_Objects;
    bool m_HasObjects = false;
    bool m_IsComplete = false;
};

// The records behind the state, in their order.
class ChangeLoader
{
public:
    ChangeLoader(ObjectIndex &index, History &history)
        : m_Elsewhere(index), m_Replay(history, [this, &index](std::string_view bytes) {
              return std::make_unique<SessionEditReader>(bytes, index, m_Elsewhere);
          })
    { }

    [[nodiscard]] Result<void> read(std::uint32_t kind, std::string_view content)
    {
        switch (static_cast<RecordKind>(kind)) {
        case RecordKind::Objects:
            m_Elsewhere.add(content);
            return {};
        case RecordKind::Change: {
            Result<void> done = m_Replay.replay(content);
            m_Elsewhere.clear();
            return done;
        }
        }
        return unknown("record", kind);
    }

private:
    // Of the change that comes next.
    ObjectsElsewhere m_Elsewhere;
    HistoryReplay m_Replay;
};

// A store that ended before its first state was there has none.
Result<void> loadState(StoreReader &store, ObjectIndex &index, ObjectSpace &space, History &history)
{
    const Result<std::uint64_t> count = store.partCount();
    if (!count)
        return count.error();
    if (count.value() == 0)
        return {};
    StateLoader state(index, space, history);
    LongWork work("Opening the session", count.value(), LongWork::Kind::Reading);
    std::size_t parts = 0;
    Result<void> done =
        store.forEachPart([&](std::uint32_t kind, std::string_view content) -> Result<void> {
            if (!work.goesOnAt(parts++))
                return Failure(FailureKind::Cancelled, "cancelled");
            return state.read(kind, content);
        });
    return done ? state.outcome() : done;
}

} // namespace

Result<LoadedSession> loadSession(StoreReader &store, ObjectSpace &space, History &history,
                                  const SessionLoading &options)
{
    ObjectIndex index;
    return loadSession(store, space, history, index, options);
}

Result<LoadedSession> loadSession(StoreReader &store, ObjectSpace &space, History &history,
                                  ObjectIndex &index, const SessionLoading &options)
{
    LoadedSession loaded;
    index.add(space);
    const auto giveUp = [&](const Failure &failure) {
        history.clear();
        space.reset();
        return failure;
    };
    if (const Result<void> done = loadState(store, index, space, history); !done)
        return giveUp(done.error());

    const Result<std::uint64_t> count = store.recordCount();
    if (!count)
        return giveUp(count.error());
    const std::uint64_t most = count.value() - std::min(count.value(), options.leftOut);
    std::uint64_t seen = 0;
    bool isCancelled = false;
    const Result<void> replayed = [&] {
        ChangeLoader changes(index, history);
        return store.forEachRecord([&](const StoreReader::SeenRecord &record) -> Result<void> {
            if (seen++ >= most)
                return {};
            if (options.step && !options.step(seen)) {
                isCancelled = true;
                return Failure(FailureKind::Cancelled, "cancelled");
            }
            Result<void> done = changes.read(record.kind, record.content);
            if (done && static_cast<RecordKind>(record.kind) == RecordKind::Change) {
                ++loaded.changes;
                loaded.time = record.time;
            }
            return done;
        });
    }();
    if (isCancelled)
        return giveUp(replayed.error());
    if (!replayed)
        loaded.problem = replayed.error();
    return loaded;
}

} // namespace TAMBO::sessions
