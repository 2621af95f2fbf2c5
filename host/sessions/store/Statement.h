// SPDX-License-Identifier: GPL-3.0-or-later
// A prepared statement of a database, which must outlive it. A failure stays until reset().
#pragma once

#include "Result.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3_stmt;

namespace TAMBO::sessions {

class Database;

class Statement
{
public:
    Statement(Database &database, const char *text);

    // Parameters, counted from 1. Texts and bytes are not copied: they stay until reset().
    Statement &bind(int parameter, std::int64_t number);
    Statement &bindText(int parameter, std::string_view text);
    Statement &bindBytes(int parameter, std::string_view bytes);

    // True when there is a row.
    bool step();
    // For a statement without rows, which is reset then.
    Result<void> run();
    // Ready for other values and another run.
    void reset();

    // Columns of the row, counted from 0. The bytes stay until the next step.
    [[nodiscard]] std::int64_t number(int column) const;
    [[nodiscard]] std::string_view bytes(int column) const;

    [[nodiscard]] const Result<void> &outcome() const noexcept { return m_Outcome; }

private:
    struct Finalizer
    {
        void operator()(sqlite3_stmt *statement) const noexcept;
    };

    void check(int code);

    Database &m_Database;
    std::unique_ptr<sqlite3_stmt, Finalizer> m_Statement;
    Result<void> m_Outcome;
};

// The first column of the first row, as a number; 0 without a row.
[[nodiscard]] Result<std::int64_t> numberOf(Database &database, const char *query);
// The same as text.
[[nodiscard]] Result<std::string> textOf(Database &database, const char *query);

} // namespace TAMBO::sessions
