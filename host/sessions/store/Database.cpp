// SPDX-License-Identifier: GPL-3.0-or-later
#include "Database.h"

#include <sqlite3.h>

#include <string_view>

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

// An address that says that nobody changes the file: it is neither locked, nor are changes of it
// looked for in a journal. What is no plain letter is told by its number.
std::string addressOf(const std::filesystem::path &file)
{
    constexpr char plain[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._/";
    constexpr char digits[] = "0123456789abcdef";
    const std::string &name = file.native();
    // Between two slashes and a third one stands the name of a machine: none.
    std::string address = name.starts_with('/') ? "file://" : "file:";
    for (const char letter : name) {
        const auto byte = static_cast<unsigned char>(letter);
        if (std::string_view(plain).find(letter) != std::string_view::npos)
            address += letter;
        else
            address += {'%', digits[byte >> 4U], digits[byte & 0xfU]};
    }
    return address + "?immutable=1";
}

} // namespace

void Database::Closer::operator()(sqlite3 *connection) const noexcept
{
    sqlite3_close_v2(connection);
}

Result<Database> Database::open(const std::filesystem::path &file, Access access)
{
    Database database(file);
    const bool isRead = access == Access::Read;
    const int flags = isRead ? SQLITE_OPEN_READONLY | SQLITE_OPEN_URI
                             : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    sqlite3 *connection = nullptr;
    // What is written has the name of a file, never an address with options.
    const int code = sqlite3_open_v2(isRead ? addressOf(file).c_str() : file.c_str(), &connection,
                                     flags | SQLITE_OPEN_NOMUTEX, nullptr);
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
    // Nobody who has a session knows that it is one.
    if ((code & 0xff) == SQLITE_NOTADB)
        return {FailureKind::BadInput, "this is no file of a session", {file}};
    if ((code & 0xff) == SQLITE_CORRUPT)
        return {FailureKind::BadInput, "the file of the session is damaged", {file}};
    return {kindOf(code), sqlite3_errstr(code), {file}};
}

} // namespace TAMBO::sessions
