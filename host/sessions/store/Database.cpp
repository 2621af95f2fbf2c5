// SPDX-License-Identifier: GPL-3.0-or-later
#include "Database.h"

#include <sqlite3.h>

namespace TAMBO::sessions {

namespace {

// No row that we write comes near it.
constexpr int kLongestValue = 512 << 20;

void refuseSurprises(sqlite3 *connection)
{
    sqlite3_db_config(connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_limit(connection, SQLITE_LIMIT_LENGTH, kLongestValue);
    sqlite3_limit(connection, SQLITE_LIMIT_ATTACHED, 0);
}

FailureKind kindOf(int code) noexcept
{
    switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return FailureKind::Refused;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_TOOBIG:
    case SQLITE_ERROR:
        return FailureKind::BadInput;
    default:
        return FailureKind::System;
    }
}

} // namespace

void Database::Closer::operator()(sqlite3 *connection) const noexcept
{
    sqlite3_close_v2(connection);
}

Result<Database> Database::open(const std::filesystem::path &file, Access access)
{
    Database database(file);
    const int flags =
        access == Access::Read ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    sqlite3 *connection = nullptr;
    // The name is a file's, never an address with options.
    const int code =
        sqlite3_open_v2(file.c_str(), &connection, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    database.m_Connection.reset(connection);
    if (code != SQLITE_OK)
        return failure(code, database.m_Name);
    sqlite3_extended_result_codes(connection, 1);
    refuseSurprises(connection);
    if (const Result<void> done = database.run("PRAGMA cell_size_check = ON; PRAGMA mmap_size = 0");
        !done)
        return done.error();
    return database;
}

Result<void> Database::run(const char *statements)
{
    if (sqlite3_exec(m_Connection.get(), statements, nullptr, nullptr, nullptr) != SQLITE_OK)
        return failure();
    return {};
}

bool Database::isInPlace() const noexcept
{
    int hasMoved = 0;
    const int code =
        sqlite3_file_control(m_Connection.get(), "main", SQLITE_FCNTL_HAS_MOVED, &hasMoved);
    return code != SQLITE_OK || hasMoved == 0;
}

Failure Database::failure() const
{
    return failure(sqlite3_extended_errcode(m_Connection.get()), m_Name);
}

Failure Database::failure(int code, const std::string &file)
{
    if (kindOf(code) == FailureKind::Refused)
        return {FailureKind::Refused, "another program has it open", {file}};
    return {kindOf(code), sqlite3_errstr(code), {file}};
}

} // namespace TAMBO::sessions
