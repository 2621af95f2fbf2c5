// SPDX-License-Identifier: GPL-3.0-or-later
// Calls of the system that a case wants to see, or to fail; and a user who is not allowed
// everything, whoever runs the tests.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <sys/types.h>

namespace TAMBO::formats {

// What fsync(), fchown() and rename() of this program ask while one of these lives: an error number
// is what they fail with, 0 lets them through. geteuid() gives the user, if there is one.
class SystemCalls
{
public:
    SystemCalls();
    ~SystemCalls();
    SystemCalls(const SystemCalls &) = delete;
    SystemCalls &operator=(const SystemCalls &) = delete;

    std::function<int(int file)> onSync;
    std::function<int(int file, uid_t user, gid_t group)> onChown;
    std::function<int()> onRename;
    std::optional<uid_t> user;
};

// The path behind an open file.
[[nodiscard]] std::string pathOf(int file);

// Runs work in a process of its own, as a user without privileges, and gives what it says.
[[nodiscard]] std::string asOrdinaryUser(const std::function<std::string()> &work);

} // namespace TAMBO::formats
