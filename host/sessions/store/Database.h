// SPDX-License-Identifier: GPL-3.0-or-later
// A file of SQLite, closed with the object. Used by one thread at a time.
#pragma once

#include "Result.h"

#include <filesystem>
#include <memory>
#include <string>

struct sqlite3;

namespace TAMBO::sessions {

class Database
{
public:
    enum class Access {
        // Made when it is not there.
        Write,
        // What is there, as it stands in the file. Nothing is made beside it, or looked for there.
        Read
    };

    // The failure that nobody has to fear: somebody else has the file.
    [[nodiscard]] static bool isInUse(const Failure &failure) noexcept
    {
        return failure.kind == FailureKind::Refused;
    }

    // A file that is read may be another person's: nothing in it is carried out but what we ask.
    [[nodiscard]] static Result<Database> open(const std::filesystem::path &file, Access access);

    // Statements without results and values.
    [[nodiscard]] Result<void> run(const char *statements);
    // Whether the file still stands where it was opened.
    [[nodiscard]] bool isInPlace() const noexcept;

    // What the last call on the connection came to.
    [[nodiscard]] Failure failure() const;
    [[nodiscard]] static Failure failure(int code, const std::string &file);
    [[nodiscard]] sqlite3 *connection() const noexcept { return m_Connection.get(); }
    // As people call it.
    [[nodiscard]] const std::string &name() const noexcept { return m_Name; }

private:
    struct Closer
    {
        void operator()(sqlite3 *connection) const noexcept;
    };

    explicit Database(const std::filesystem::path &file) : m_Name(file.string()) { }

    std::string m_Name;
    std::unique_ptr<sqlite3, Closer> m_Connection;
};

} // namespace TAMBO::sessions
