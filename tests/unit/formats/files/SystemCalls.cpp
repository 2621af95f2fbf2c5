// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemCalls.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <grp.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

TAMBO::formats::SystemCalls *s_Calls = nullptr;

int failWith(int error)
{
    errno = error;
    return -1;
}

} // namespace

// Linked into the program, these come before the system library's.
extern "C" int fsync(int file)
{
    if (const int error = s_Calls != nullptr && s_Calls->onSync ? s_Calls->onSync(file) : 0)
        return failWith(error);
    return static_cast<int>(::syscall(SYS_fsync, file));
}

extern "C" int fchown(int file, uid_t user, gid_t group) noexcept
{
    if (const int error =
            s_Calls != nullptr && s_Calls->onChown ? s_Calls->onChown(file, user, group) : 0)
        return failWith(error);
    return static_cast<int>(::syscall(SYS_fchown, file, user, group));
}

extern "C" int rename(const char *from, const char *to) noexcept
{
    if (const int error = s_Calls != nullptr && s_Calls->onRename ? s_Calls->onRename() : 0)
        return failWith(error);
    return static_cast<int>(::syscall(SYS_rename, from, to));
}

extern "C" uid_t geteuid() noexcept
{
    return s_Calls != nullptr && s_Calls->user ? *s_Calls->user
                                               : static_cast<uid_t>(::syscall(SYS_geteuid));
}

namespace TAMBO::formats {

SystemCalls::SystemCalls()
{
    s_Calls = this;
}

SystemCalls::~SystemCalls()
{
    s_Calls = nullptr;
}

std::string pathOf(int file)
{
    return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file)).string();
}

std::string asOrdinaryUser(const std::function<std::string()> &work)
{
    std::array<int, 2> pipe{};
    if (::pipe(pipe.data()) != 0)
        return "no pipe";
    const pid_t child = ::fork();
    if (child == 0) {
        constexpr unsigned nobody = 65534;
        std::string said;
        if (::geteuid() == 0 &&
            (::setgroups(0, nullptr) != 0 || ::setresgid(nobody, nobody, nobody) != 0 ||
             ::setresuid(nobody, nobody, nobody) != 0))
            said = "no other user";
        else
            try {
                said = work();
            } catch (const std::exception &error) {
                said = error.what();
            }
        [[maybe_unused]] const ssize_t count = ::write(pipe[1], said.data(), said.size());
        ::_exit(0);
    }
    ::close(pipe[1]);
    std::string said;
    std::array<char, 4096> buffer{};
    for (ssize_t count = 0; (count = ::read(pipe[0], buffer.data(), buffer.size())) > 0;)
        said.append(buffer.data(), static_cast<std::size_t>(count));
    ::close(pipe[0]);
    ::waitpid(child, nullptr, 0);
    return said;
}

} // namespace TAMBO::formats
