// SPDX-License-Identifier: GPL-3.0-or-later
// Loaded into the program before its libraries: the first bytes for a file of one folder wait until
// somebody has opened a pipe for writing and closed it again. So a test knows that the program is
// in the middle of writing, for as long as it likes.
#include <atomic>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

std::atomic<bool> s_HasWaited = false;

bool isInFolder(int file, const char *folder)
{
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    char path[PATH_MAX];
    const ssize_t size = readlink(link.c_str(), path, sizeof path);
    const std::string place = std::string(folder) + '/';
    return size > 0 && std::string(path, std::size_t(size)).rfind(place, 0) == 0;
}

void waitForPipe(const char *pipe)
{
    const int gate = open(pipe, O_RDONLY | O_CLOEXEC);
    char byte = 0;
    while (gate >= 0 && read(gate, &byte, 1) > 0) {
    }
    if (gate >= 0)
        close(gate);
}

} // namespace

extern "C" __attribute__((visibility("default"))) ssize_t write(int file, const void *bytes,
                                                                size_t size)
{
    using Write = ssize_t (*)(int, const void *, size_t);
    static const auto real = reinterpret_cast<Write>(dlsym(RTLD_NEXT, "write"));
    const char *const folder = std::getenv("HELD_FOLDER");
    const char *const pipe = std::getenv("HELD_UNTIL");
    if (folder != nullptr && pipe != nullptr && !s_HasWaited && isInFolder(file, folder) &&
        !s_HasWaited.exchange(true))
        waitForPipe(pipe);
    return real(file, bytes, size);
}
