// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionLoader.h"

#include "ChangeLoader.h"
#include "History.h"
#include "LongWork.h"
#include "ObjectIndex.h"
#include "ObjectSpace.h"
#include "SessionKinds.h"
#include "StateLoader.h"
#include "StoreReader.h"

#include <algorithm>
#include <utility>

namespace TAMBO::sessions {

namespace {

// A store that ended before its first state was there has none.
Result<void> loadState(StoreReader &store, ObjectIndex &index, ObjectSpace &space, History &history)
{
    const Result<std::uint64_t> count = store.partCount();
    if (!count)
        return count.error();
    if (count.value() == 0)
        return {};
    LongWork work("Opening the session", count.value(), LongWork::Kind::Reading);
    std::size_t parts = 0;
    StateLoader state(index, space, history, [&] { return work.goesOnAt(parts); });
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
            if (done && static_cast<RecordKind>(record.kind) == RecordKind::Change)
                ++loaded.changes;
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
