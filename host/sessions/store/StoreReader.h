// SPDX-License-Identifier: GPL-3.0-or-later
// Reads a store: a session's file, or what a process that is gone has left behind. Files may be
// damaged or made by somebody with bad intentions; what is read are bytes and no more.
#pragma once

#include "Database.h"
#include "StoreRecord.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace TAMBO::sessions {

// Records of one kind.
struct RecordTally
{
    std::uint64_t count = 0;
    // Milliseconds since 1970; 0 without one.
    std::int64_t lastTime = 0;
};

class StoreReader
{
public:
    enum class Kind {
        // What was committed last is taken out of the journal, so the folder must let us write.
        LeftBehind,
        Whole
    };

    // Refused (Database::isInUse) when the process that writes it still runs.
    [[nodiscard]] static Result<std::unique_ptr<StoreReader>>
    open(const std::filesystem::path &file, Kind kind);

    // Each in the order in which it was handed over. A visitor that gives a failure ends the
    // reading with it.
    using PartVisitor = std::function<Result<void>(std::uint32_t kind, std::string_view content)>;
    [[nodiscard]] Result<void> forEachPart(const PartVisitor &visit);
    // Content and label last as long as the call.
    struct SeenRecord
    {
        std::uint32_t kind;
        std::int64_t time;
        std::string_view label;
        std::string_view content;
    };
    using RecordVisitor = std::function<Result<void>(const SeenRecord &record)>;
    [[nodiscard]] Result<void> forEachRecord(const RecordVisitor &visit);
    using ValueVisitor =
        std::function<Result<void>(std::string_view name, std::string_view content)>;
    [[nodiscard]] Result<void> forEachValue(const ValueVisitor &visit);
    [[nodiscard]] Result<std::uint64_t> partCount();
    [[nodiscard]] Result<std::uint64_t> recordCount();
    [[nodiscard]] Result<RecordTally> tally(std::uint32_t kind);

    // Of the file, as people call it.
    [[nodiscard]] const std::string &name() const noexcept { return m_Database.name(); }

private:
    explicit StoreReader(Database database) : m_Database(std::move(database)) { }

    Database m_Database;
};

} // namespace TAMBO::sessions
