// SPDX-License-Identifier: GPL-3.0-or-later
// A file that takes the place of an old one when it is complete, and leaves the old one alone until
// then. Compressed when its name ends in ".gz".
#pragma once

#include "Result.h"
#include "TextSink.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace TAMBO::formats {

class ReplacementFile final : public TextSink
{
public:
    explicit ReplacementFile(const std::filesystem::path &target);
    // What was not put in place is gone.
    ~ReplacementFile() override;

    void write(std::string_view text) override;
    // Everything is on the disk now and can be read from path(). False after a failure.
    [[nodiscard]] bool complete();
    // Beside the target, with the same ending. A target that is no plain file (a pipe, a device)
    // has it among the temporary files.
    [[nodiscard]] const std::filesystem::path &path() const noexcept { return m_Path; }
    // To be called after complete(). False after a failure.
    [[nodiscard]] bool putInPlace();

    // Why nothing was written.
    [[nodiscard]] const std::optional<Failure> &failure() const noexcept { return m_Failure; }
    // The target's name in messages.
    [[nodiscard]] const std::string &fileName() const noexcept { return m_FileName; }

private:
    class Deflater;

    void open();
    void writeBytes(const char *bytes, std::size_t size);
    void copyToTarget();
    void close();
    void fail(int error);

    std::string m_FileName;
    std::filesystem::path m_Target;
    std::filesystem::path m_Path;
    bool m_TargetIsPlain = true;
    // The old file's permissions, if there is one.
    std::optional<unsigned> m_Mode;
    int m_File = -1;
    std::string m_Buffer;
    std::unique_ptr<Deflater> m_Deflater;
    std::optional<Failure> m_Failure;
};

} // namespace TAMBO::formats
