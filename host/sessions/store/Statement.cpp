// SPDX-License-Identifier: GPL-3.0-or-later
#include "Statement.h"

#include "Database.h"

#include <sqlite3.h>

namespace TAMBO::sessions {

void Statement::Finalizer::operator()(sqlite3_stmt *statement) const noexcept
{
    sqlite3_finalize(statement);
}

Statement::Statement(Database &database, const char *text) : m_Database(database)
{
    sqlite3_stmt *statement = nullptr;
    check(sqlite3_prepare_v2(database.connection(), text, -1, &statement, nullptr));
    m_Statement.reset(statement);
}

void Statement::check(int code)
{
    if (code != SQLITE_OK && m_Outcome)
        m_Outcome = m_Database.failure();
}

Statement &Statement::bind(int parameter, std::int64_t number)
{
    if (m_Outcome)
        check(sqlite3_bind_int64(m_Statement.get(), parameter, number));
    return *this;
}

Statement &Statement::bindText(int parameter, std::string_view text)
{
    if (m_Outcome)
        check(sqlite3_bind_text64(m_Statement.get(), parameter, text.data(), text.size(),
                                  SQLITE_STATIC, SQLITE_UTF8));
    return *this;
}

Statement &Statement::bindBytes(int parameter, std::string_view bytes)
{
    // A null pointer would be no value at all.
    const char *const data = bytes.data() == nullptr ? "" : bytes.data();
    if (m_Outcome)
        check(sqlite3_bind_blob64(m_Statement.get(), parameter, data, bytes.size(), SQLITE_STATIC));
    return *this;
}

bool Statement::step()
{
    if (!m_Outcome)
        return false;
    const int code = sqlite3_step(m_Statement.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE)
        check(code);
    return code == SQLITE_ROW;
}

Result<void> Statement::run()
{
    step();
    Result<void> outcome = m_Outcome;
    reset();
    return outcome;
}

void Statement::reset()
{
    if (m_Statement == nullptr)
        return;
    // It only tells once more what the last step came to.
    static_cast<void>(sqlite3_reset(m_Statement.get()));
    m_Outcome = {};
}

std::int64_t Statement::number(int column) const
{
    return sqlite3_column_int64(m_Statement.get(), column);
}

std::string_view Statement::bytes(int column) const
{
    const void *const bytes = sqlite3_column_blob(m_Statement.get(), column);
    const int size = sqlite3_column_bytes(m_Statement.get(), column);
    if (bytes == nullptr)
        return {};
    return {static_cast<const char *>(bytes), static_cast<std::size_t>(size)};
}

Result<std::int64_t> numberOf(Database &database, const char *query)
{
    Statement statement(database, query);
    const bool hasRow = statement.step();
    if (!statement.outcome())
        return statement.outcome().error();
    return hasRow ? statement.number(0) : 0;
}

Result<std::string> textOf(Database &database, const char *query)
{
    Statement statement(database, query);
    const bool hasRow = statement.step();
    if (!statement.outcome())
        return statement.outcome().error();
    return hasRow ? std::string(statement.bytes(0)) : std::string();
}

} // namespace TAMBO::sessions
