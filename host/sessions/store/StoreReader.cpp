// SPDX-License-Identifier: GPL-3.0-or-later
#include "StoreReader.h"

#include "Statement.h"
#include "StoreTables.h"

#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace TAMBO::sessions {

namespace {

// The number of a place.
std::string placeNumber(std::string_view place)
{
    return "(SELECT number FROM place WHERE name = '" + std::string(place) + "')";
}

std::string partsQuery(const std::string &what)
{
    return "SELECT " + what + " FROM state WHERE number >= " + placeNumber(kStateBegin) +
           " AND number < " + placeNumber(kStateEnd) + " ORDER BY number";
}

std::string recordsQuery(const std::string &what)
{
    return "SELECT " + what + " FROM record WHERE number >= ifnull(" + placeNumber(kRecordsBegin) +
           ", 0) ORDER BY number";
}

template <typename Visit>
Result<void> visitRows(Database &database, const std::string &query, Visit visit)
{
    Statement rows(database, query.c_str());
    while (rows.step()) {
        if (Result<void> done = visit(rows); !done)
            return done;
    }
    return rows.outcome();
}

Result<std::uint64_t> countOf(Database &database, const std::string &query)
{
    const Result<std::int64_t> count = numberOf(database, query.c_str());
    if (!count)
        return count.error();
    return static_cast<std::uint64_t>(count.value());
}

} // namespace

Result<std::unique_ptr<StoreReader>> StoreReader::open(const std::filesystem::path &file, Kind kind)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        return Failure(FailureKind::NotFound, "there is no such file", {file.string()});
    const auto access = kind == Kind::LeftBehind ? Database::Access::Write : Database::Access::Read;
    Result<Database> database = Database::open(file, access);
    if (!database)
        return database.error();
    // Nobody else is to begin with it while it is read.
    if (kind == Kind::LeftBehind) {
        if (Result<void> done = database->run("PRAGMA locking_mode = EXCLUSIVE; BEGIN IMMEDIATE;"
                                              "COMMIT");
            !done)
            return done.error();
    }
    if (Result<void> checked = checkTables(database.value()); !checked)
        return checked.error();
    return std::unique_ptr<StoreReader>(new StoreReader(std::move(database.value())));
}

Result<void> StoreReader::forEachPart(const PartVisitor &visit)
{
    return visitRows(m_Database, partsQuery("kind, content"), [&](const Statement &row) {
        return visit(static_cast<std::uint32_t>(row.number(0)), row.bytes(1));
    });
}

Result<void> StoreReader::forEachRecord(const RecordVisitor &visit)
{
    return visitRows(m_Database, recordsQuery("kind, time, label, content"),
                     [&](const Statement &row) {
                         return visit({static_cast<std::uint32_t>(row.number(0)), row.number(1),
                                       row.bytes(2), row.bytes(3)});
                     });
}

Result<void> StoreReader::forEachValue(const ValueVisitor &visit)
{
    return visitRows(m_Database, "SELECT name, content FROM value ORDER BY name",
                     [&](const Statement &row) { return visit(row.bytes(0), row.bytes(1)); });
}

Result<std::uint64_t> StoreReader::partCount()
{
    return countOf(m_Database, partsQuery("count(*)"));
}

Result<std::uint64_t> StoreReader::recordCount()
{
    return countOf(m_Database, recordsQuery("count(*)"));
}

Result<RecordTally> StoreReader::tally(std::uint32_t kind)
{
    RecordTally tally;
    const Result<void> done = forEachRecord([&](const SeenRecord &record) {
        if (record.kind == kind) {
            ++tally.count;
            tally.lastTime = record.time;
        }
        return Result<void>();
    });
    if (!done)
        return done.error();
    return tally;
}

} // namespace TAMBO::sessions
