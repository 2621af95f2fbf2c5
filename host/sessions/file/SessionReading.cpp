// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionReading.h"

#include "History.h"
#include "ObjectIndex.h"
#include "ObjectSpace.h"
#include "SessionLoader.h"
#include "StoreReader.h"
#include "ValueStore.h"

#include <charconv>
#include <string>
#include <string_view>
#include <utility>

namespace TAMBO::sessions {

namespace {

Failure named(const StoreReader &session, Failure failure)
{
    if (failure.place.file.empty() && failure.kind != FailureKind::Cancelled)
        failure.place.file = session.name();
    return failure;
}

Failure damagedFile(const std::string &what)
{
    return {FailureKind::BadInput, "the session is damaged: " + what};
}

Result<void> readInto(StoreReader &session, ObjectSpace &space, History &history,
                      ObjectIndex &index)
{
    const Result<std::uint64_t> records = session.recordCount();
    if (!records)
        return records.error();
    // Those are for stores that are written while one works.
    if (records.value() != 0)
        return damagedFile("there is something behind its state");
    const Result<std::uint64_t> parts = session.partCount();
    if (!parts)
        return parts.error();
    if (parts.value() == 0)
        return damagedFile("it has no state");
    const Result<LoadedSession> loaded = loadSession(session, space, history, index);
    return loaded ? Result<void>() : loaded.error();
}

// Objects of two runs of the program may have the same number, which the values of plug-ins go by.
class ValuesAside
{
public:
    ValuesAside() : m_Values(std::exchange(ValueStore::get(), {})) { }
    ~ValuesAside() { ValueStore::get() = std::move(m_Values); }
    ValuesAside(const ValuesAside &) = delete;
    ValuesAside &operator=(const ValuesAside &) = delete;

private:
    ValueStore m_Values;
};

} // namespace

Result<std::unique_ptr<StoreReader>> openSession(const std::filesystem::path &file)
{
    return StoreReader::open(file, StoreReader::Kind::Whole);
}

Result<SessionOrigin> originOf(StoreReader &session)
{
    SessionOrigin origin;
    const Result<void> done =
        session.forEachValue([&](std::string_view name, std::string_view content) {
            if (name == kMadeBy)
                origin.program = content;
            else if (name == kMadeAt)
                std::from_chars(content.data(), content.data() + content.size(), origin.time);
            return Result<void>();
        });
    if (!done)
        return named(session, done.error());
    return origin;
}

Result<void> readSession(StoreReader &session, ObjectSpace &space, History &history,
                         ObjectIndex &index)
{
    const Result<void> done = readInto(session, space, history, index);
    return done ? done : named(session, done.error());
}

Result<void> checkSession(StoreReader &session)
{
    const ValuesAside values;
    ObjectSpace space;
    History history;
    ObjectIndex index;
    Result<void> done = readSession(session, space, history, index);
    history.clear();
    space.reset();
    return done;
}

} // namespace TAMBO::sessions
