// SPDX-License-Identifier: GPL-3.0-or-later
#include "StoreReader.h"

#include "Statement.h"
#include "StoreTables.h"

#include <system_error>
#include <utility>

namespace TAMBO::sessions {

namespace {

constexpr char kParts[] =
    "SELECT kind, content FROM state"
    " WHERE number >= (SELECT number FROM place WHERE name = 'state-begin')"
    " AND number < (SELECT number FROM place WHERE name = 'state-end') ORDER BY number";
constexpr char kPartCount[] =
    "SELECT count(*) FROM state"
    " WHERE number >= (SELECT number FROM place WHERE name = 'state-begin')"
    " AND number < (SELECT number FROM place WHERE name = 'state-end')";
constexpr char kRecords[] =
    "SELECT kind, time, label, content FROM record WHERE number >="
    " ifnull((SELECT number FROM place WHERE name = 'records-begin'), 0) ORDER BY number";
constexpr char kRecordCount[] =
    "SELECT count(*) FROM record WHERE number >="
    " ifnull((SELECT number FROM place WHERE name = 'records-begin'), 0)";
constexpr char kValues[] = "SELECT name, content FROM value ORDER BY name";

template <typename Visit> Result<void> visitRows(Database &database, const char *query, Visit visit)
{
    Statement rows(database, query);
    while (rows.step()) {
        if (Result<void> done = visit(rows); !done)
            return done;
    }
    return rows.outcome();
}

Result<std::uint64_t> countOf(Database &database, const char *query)
{
    const Result<std::int64_t> count = numberOf(database, query);
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
    return visitRows(m_Database, kParts, [&](const Statement &row) {
        return visit(static_cast<std::uint32_t>(row.number(0)), row.bytes(1));
    });
}

Result<void> StoreReader::forEachRecord(const RecordVisitor &visit)
{
    return visitRows(m_Database, kRecords, [&](const Statement &row) {
        return visit(
            {static_cast<std::uint32_t>(row.number(0)), row.number(1), row.bytes(2), row.bytes(3)});
    });
}

Result<void> StoreReader::forEachValue(const ValueVisitor &visit)
{
    return visitRows(m_Database, kValues,
                     [&](const Statement &row) { return visit(row.bytes(0), row.bytes(1)); });
}

Result<std::uint64_t> StoreReader::partCount()
{
    return countOf(m_Database, kPartCount);
}

Result<std::uint64_t> StoreReader::recordCount()
{
    return countOf(m_Database, kRecordCount);
}

Result<std::uint64_t> StoreReader::recordCount(std::uint32_t kind)
{
    std::uint64_t count = 0;
    const Result<void> done = forEachRecord([&](const SeenRecord &record) {
        count += record.kind == kind ? 1 : 0;
        return Result<void>();
    });
    if (!done)
        return done.error();
    return count;
}

} // namespace TAMBO::sessions
