// SPDX-License-Identifier: GPL-3.0-or-later
// The bytes of a plain or gzip file in pieces, whichever of the two it is. Owned by one reading.
#pragma once

#include "ContentHash.h"
#include "FileState.h"
#include "ReadProgress.h"
#include "Result.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace TAMBO::formats {

class ByteSource
{
public:
    // A file that cannot be opened shows as a failure.
    ByteSource(const std::filesystem::path &path, const ReadProgress &progress);
    ~ByteSource();
    ByteSource(const ByteSource &) = delete;
    ByteSource &operator=(const ByteSource &) = delete;

    // Up to size bytes; none only at the end of the file and after a failure.
    [[nodiscard]] std::size_t read(char *room, std::size_t size);
    // Reports once more what has been read; false when that cancels the reading, or anything has
    // ended it before.
    [[nodiscard]] bool goesOn() { return m_Outcome && reportProgress(); }
    // Whether the file could be read so far. Cancelling is a failure without a cause.
    [[nodiscard]] const Result<void> &outcome() const noexcept { return m_Outcome; }
    // The name in messages.
    [[nodiscard]] const std::string &fileName() const noexcept { return m_FileName; }
    // Bytes on disk.
    [[nodiscard]] std::uint64_t size() const noexcept { return m_State ? m_State->size : 0; }
    // The file as it was when it was opened, with its content if all of that has been read. Nothing
    // for a pipe.
    [[nodiscard]] std::optional<FileState> state() const;

private:
    class Inflater;

    std::size_t readFile(char *room, std::size_t size);
    std::size_t readCompressed(char *room, std::size_t size);
    bool reportProgress();

    std::string m_FileName;
    const ReadProgress &m_Progress;
    int m_File = -1;
    std::optional<FileState> m_State;
    ContentHash m_Hash;
    std::uint64_t m_Done = 0;
    bool m_Started = false;
    std::unique_ptr<Inflater> m_Inflater;
    Result<void> m_Outcome;
};

} // namespace TAMBO::formats
