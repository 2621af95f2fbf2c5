// SPDX-License-Identifier: GPL-3.0-or-later
#include "StoreTables.h"

#include "Database.h"
#include "Statement.h"

#include <string>

namespace TAMBO::sessions {

namespace {

// number: a place of the store, by its name. state: the parts [state-begin, state-end). record:
// those from records-begin on. Parts that no switch has made the state are left over from a death.
struct Table
{
    const char *name;
    const char *definition;
};

constexpr Table kTables[] = {
    {"place", "CREATE TABLE place(name TEXT PRIMARY KEY, number INTEGER NOT NULL)"},
    {"state", "CREATE TABLE state(number INTEGER PRIMARY KEY, kind INTEGER NOT NULL,"
              " content BLOB NOT NULL)"},
    {"record", "CREATE TABLE record(number INTEGER PRIMARY KEY, kind INTEGER NOT NULL,"
               " time INTEGER NOT NULL, label TEXT NOT NULL, content BLOB NOT NULL)"},
    {"value", "CREATE TABLE value(name TEXT PRIMARY KEY, content BLOB NOT NULL)"},
};

Failure notAStore(const Database &database)
{
    return {FailureKind::BadInput, "this is no file of a session", {database.name()}};
}

Failure damaged(const Database &database, const std::string &what)
{
    return {
        FailureKind::BadInput, "the file of the session is damaged: " + what, {database.name()}};
}

// Those of the system itself aside.
constexpr char kSchema[] =
    "SELECT type, name, sql FROM sqlite_schema WHERE name NOT LIKE 'sqlite\\_%' ESCAPE '\\'";

Result<void> checkSchema(Database &database)
{
    Statement schema(database, kSchema);
    std::size_t found = 0;
    while (schema.step()) {
        bool isKnown = false;
        for (const Table &table : kTables)
            isKnown |= schema.bytes(0) == "table" && schema.bytes(1) == table.name &&
                       schema.bytes(2) == table.definition;
        if (!isKnown)
            return notAStore(database);
        ++found;
    }
    if (!schema.outcome())
        return schema.outcome().error();
    if (found != std::size(kTables))
        return damaged(database, "a table is missing");
    return {};
}

} // namespace

Result<void> makeTables(Database &database)
{
    std::string statements = "PRAGMA application_id = " + std::to_string(kStoreMark) +
                             "; PRAGMA user_version = " + std::to_string(kStoreVersion) + ';';
    for (const Table &table : kTables)
        statements += std::string(table.definition) + ';';
    return database.run(statements.c_str());
}

Result<void> checkTables(Database &database)
{
    const Result<std::int64_t> mark = numberOf(database, "PRAGMA application_id");
    if (!mark)
        return mark.error();
    if (mark.value() != kStoreMark)
        return notAStore(database);
    const Result<std::int64_t> version = numberOf(database, "PRAGMA user_version");
    if (!version)
        return version.error();
    if (version.value() > kStoreVersion)
        return Failure(FailureKind::Refused,
                       "the session was saved by a newer version of the program",
                       {database.name()});
    if (version.value() < 1)
        return damaged(database, "it has no version");
    if (const Result<void> schema = checkSchema(database); !schema)
        return schema;
    const Result<std::string> check = textOf(database, "PRAGMA quick_check(1)");
    if (!check)
        return check.error();
    if (check.value() != "ok")
        return damaged(database, check.value());
    return {};
}

} // namespace TAMBO::sessions
