// SPDX-License-Identifier: GPL-3.0-or-later
// What stands in a session, part by part and record by record, without the file around it: loaded,
// gone through, and taken back to its first and its last state.
#include "SessionEntries.h"
#include "SessionWalk.h"

#include "ChangeLoader.h"
#include "StateLoader.h"

namespace {

using TAMBO::fuzz::Entry;
using TAMBO::sessions::ChangeLoader;
using TAMBO::sessions::StateLoader;

// False when the rest means nothing.
bool loadState(const std::vector<Entry> &entries, TAMBO::fuzz::Work &work)
{
    StateLoader state(work.index, work.space, work.history);
    bool hasState = false;
    for (const Entry &entry : entries) {
        if (entry.place != Entry::Place::State)
            continue;
        hasState = true;
        if (TAMBO::fuzz::isTold(state.read(entry.kind, entry.content)))
            return false;
    }
    // A store that has none begins with nothing.
    return !hasState || !TAMBO::fuzz::isTold(state.outcome());
}

void replay(const std::vector<Entry> &entries, TAMBO::fuzz::Work &work)
{
    ChangeLoader changes(work.index, work.history);
    for (const Entry &entry : entries) {
        if (entry.place != Entry::Place::Record)
            continue;
        if (TAMBO::fuzz::isTold(changes.read(entry.kind, entry.content)))
            return;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const std::vector<Entry> entries =
        TAMBO::fuzz::readEntries({reinterpret_cast<const char *>(bytes), size});
    TAMBO::fuzz::Work work;
    if (loadState(entries, work)) {
        replay(entries, work);
        work.walk();
    }
    return 0;
}
