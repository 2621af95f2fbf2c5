// SPDX-License-Identifier: GPL-3.0-or-later
// A file that is in memory alone, for input that a fuzzer makes thousands of times a second.
#pragma once

#include "FileReader.h"
#include "TextReader.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>

namespace TAMBO::formats {

class MemoryFile
{
public:
    MemoryFile(const std::uint8_t *bytes, std::size_t size);
    ~MemoryFile();
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;

    [[nodiscard]] std::filesystem::path path() const;

private:
    int m_File;
};

using Reader = Result<FileContents> (*)(TextReader &);

// Reads the bytes with one reader, whatever format they are in, and stops the program when the
// result is neither contents nor a message.
void readBytes(const std::uint8_t *bytes, std::size_t size, Reader reader);
// The same in one part and in many by several threads, as large files are read; stops the program
// when these give something else.
void readBytesInParts(const std::uint8_t *bytes, std::size_t size, Reader reader);
// The same the way users' files are read.
void readBytes(const std::uint8_t *bytes, std::size_t size);

} // namespace TAMBO::formats
