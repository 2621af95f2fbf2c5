// SPDX-License-Identifier: GPL-3.0-or-later
// What a session was loaded into, and what users do with it then.
#pragma once

#include "ChangeSession.h"
#include "History.h"
#include "ObjectIndex.h"
#include "ObjectSpace.h"
#include "SessionContent.h"
#include "SessionKinds.h"
#include "StateLoader.h"

#include <cstdio>
#include <cstdlib>

namespace TAMBO::fuzz {

inline void check(bool condition)
{
    if (!condition)
        std::abort();
}

// Ends with what went wrong where nothing may.
inline void check(const Result<void> &result)
{
    if (result)
        return;
    std::fprintf(stderr, "%s\n", result.error().message().c_str());
    std::abort();
}

// Whether it failed, which is said in words.
template <typename Content> bool isTold(const Result<Content> &result)
{
    check(result || !result.error().message().empty());
    return !result;
}

struct Work
{
    Work()
    {
        setEditRecorder(&history);
        index.add(space);
    }
    ~Work()
    {
        history.clear();
        space.reset();
        setEditRecorder(nullptr);
    }
    Work(const Work &) = delete;
    Work &operator=(const Work &) = delete;

    // To the first state of undo and the last one. What stands there can be stored and loaded.
    void walk()
    {
        history.goTo(0);
        history.goTo(history.size());
        const auto stored = sessions::takeSession(space, history, {}, {});
        check(stored.has_value());
        history.clear();
        space.reset();
        sessions::StateLoader again(index, space, history);
        for (const sessions::StatePart &part : stored.value().parts)
            check(again.read(part.kind, part.content));
        check(again.outcome());
    }

    ObjectSpace &space = ObjectSpace::get();
    History history;
    ObjectIndex index;
};

} // namespace TAMBO::fuzz
