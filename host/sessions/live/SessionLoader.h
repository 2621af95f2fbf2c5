// SPDX-License-Identifier: GPL-3.0-or-later
// The way back from a store to Space and the history.
#pragma once

#include "Result.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

namespace TAMBO {
class History;
class ObjectIndex;
class ObjectSpace;
} // namespace TAMBO

namespace TAMBO::sessions {

class StoreReader;

struct LoadedSession
{
    // Of changes that were done again.
    std::uint64_t changes = 0;
    // Why the changes behind them could not be.
    std::optional<Failure> problem;
};

struct SessionLoading
{
    // Of the changes at the end.
    std::uint64_t leftOut = 0;
    // Called with how many changes have been done again; false ends it, with a failure. May be
    // empty.
    std::function<bool(std::uint64_t changes)> step;
};

// Into an empty Space and an empty history. After a failure they are empty again. Changes that
// cannot be done again are none: what was before them is loaded, and the problem told.
[[nodiscard]] Result<LoadedSession> loadSession(StoreReader &store, ObjectSpace &space,
                                                History &history,
                                                const SessionLoading &options = {});
// The same; the index, which is empty, leads to all that was loaded.
[[nodiscard]] Result<LoadedSession> loadSession(StoreReader &store, ObjectSpace &space,
                                                History &history, ObjectIndex &index,
                                                const SessionLoading &options = {});

} // namespace TAMBO::sessions
