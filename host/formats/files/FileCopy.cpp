// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileCopy.h"

#include "FileDescriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

namespace TAMBO::formats {

namespace {

constexpr std::size_t kCopyBuffer = std::size_t{1} << 18U;

} // namespace

int copyBytes(const std::filesystem::path &from, const FileDescriptor &to, const CopyStep &step)
{
    const FileDescriptor source(::open(from.c_str(), O_RDONLY | O_CLOEXEC));
    if (!source.isOpen())
        return errno;
    std::error_code unknown;
    const std::uintmax_t total = std::filesystem::file_size(from, unknown);
    std::vector<char> buffer(kCopyBuffer);
    off_t size = 0;
    for (std::size_t count = buffer.size(); count == buffer.size();) {
        if (step && !step(static_cast<std::uint64_t>(size), unknown ? 0 : total))
            return ECANCELED;
        if (const int error = source.read(buffer.data(), buffer.size(), count))
            return error;
        if (const int error = to.write(buffer.data(), count))
            return error;
        size += static_cast<off_t>(count);
    }
    return ::ftruncate(to.number(), size) == 0 && ::fsync(to.number()) == 0 ? 0 : errno;
}

int makeCopy(const std::filesystem::path &from, const std::filesystem::path &copy,
             const CopyStep &step)
{
    FileDescriptor file(::open(copy.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file.isOpen())
        return errno;
    const int error = copyBytes(from, file, step);
    const int closing = file.close();
    return error == 0 ? closing : error;
}

} // namespace TAMBO::formats
