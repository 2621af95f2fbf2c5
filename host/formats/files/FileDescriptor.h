// SPDX-License-Identifier: GPL-3.0-or-later
// An open file of the system, closed with the object. Errors are the system's numbers, 0 for none.
#pragma once

#include <cstddef>

namespace TAMBO::formats {

class FileDescriptor
{
public:
    explicit FileDescriptor(int number = -1) noexcept : m_Number(number) { }
    ~FileDescriptor() { static_cast<void>(close()); }
    FileDescriptor(FileDescriptor &&other) noexcept;
    FileDescriptor &operator=(FileDescriptor &&other) noexcept;
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;

    [[nodiscard]] bool isOpen() const noexcept { return m_Number >= 0; }
    [[nodiscard]] int number() const noexcept { return m_Number; }
    // Some systems tell only now that something was not written.
    [[nodiscard]] int close() noexcept;

    // Everything, whatever the system takes at a time.
    [[nodiscard]] int write(const char *bytes, std::size_t size) const noexcept;
    // Fills bytes as far as the file goes; size is what was read.
    [[nodiscard]] int read(char *bytes, std::size_t room, std::size_t &size) const noexcept;

private:
    int m_Number = -1;
};

} // namespace TAMBO::formats
