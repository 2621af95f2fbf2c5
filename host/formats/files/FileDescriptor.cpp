// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileDescriptor.h"

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace TAMBO::formats {

FileDescriptor::FileDescriptor(FileDescriptor &&other) noexcept
    : m_Number(std::exchange(other.m_Number, -1))
{ }

FileDescriptor &FileDescriptor::operator=(FileDescriptor &&other) noexcept
{
    if (this != &other) {
        static_cast<void>(close());
        m_Number = std::exchange(other.m_Number, -1);
    }
    return *this;
}

int FileDescriptor::close() noexcept
{
    const int number = std::exchange(m_Number, -1);
    return number < 0 || ::close(number) == 0 ? 0 : errno;
}

int FileDescriptor::write(const char *bytes, std::size_t size) const noexcept
{
    while (size > 0) {
        const ssize_t count = ::write(m_Number, bytes, size);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return errno;
        bytes += count;
        size -= static_cast<std::size_t>(count);
    }
    return 0;
}

int FileDescriptor::read(char *bytes, std::size_t room, std::size_t &size) const noexcept
{
    size = 0;
    while (size < room) {
        const ssize_t count = ::read(m_Number, bytes + size, room - size);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return errno;
        if (count == 0)
            break;
        size += static_cast<std::size_t>(count);
    }
    return 0;
}

} // namespace TAMBO::formats
