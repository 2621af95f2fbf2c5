// SPDX-License-Identifier: GPL-3.0-or-later
// A file that takes the place of an old one when it is complete, and leaves the old one alone until
// then. Compressed when its name ends in ".gz".
#pragma once

#include "FileDescriptor.h"
#include "Result.h"
#include "TextSink.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <sys/stat.h>

namespace TAMBO::formats {

class BackupFiles;

class ReplacementFile final : public TextSink
{
public:
    // Asked for a folder of the user's own when a file is written in place or is a pipe. When
    // empty, the folder of temporary files is taken.
    using Scratch = std::function<std::filesystem::path()>;
    explicit ReplacementFile(const std::filesystem::path &target, Scratch scratch = {});
    // What was not put in place is gone.
    ~ReplacementFile() override;

    void write(std::string_view text) override;
    [[nodiscard]] bool isOpen() const override { return m_Outcome.has_value(); }
    // The old file stays beside the new one, under the name of a version of it. One that cannot is
    // not replaced.
    void keepBackups() noexcept { m_KeepsBackups = true; }
    // Called with the bytes done and all of them; false calls the rest off, which is a failure.
    using Step = std::function<bool(std::uint64_t done, std::uint64_t total)>;
    // When it succeeds, everything is on the disk and can be read from path().
    [[nodiscard]] Result<void> complete(const Step &step = {});
    // Beside the target, with the same ending. In the scratch folder when the target is written in
    // place or is no plain file (a pipe, a device).
    [[nodiscard]] const std::filesystem::path &path() const noexcept { return m_Path; }
    // To be called after complete(). The new file has owner, group and
    // permissions of the old one as far as the system lets us. A file with several links, or that
    // its folder does not let us replace, is written in place.
    // step is not asked any more once the file itself is touched.
    [[nodiscard]] Result<void> putInPlace(const Step &step = {});
    // What the user should know of how it was put in place.
    [[nodiscard]] const std::optional<std::string> &remark() const noexcept { return m_Remark; }

    // Whether it could be written so far; after a failure nothing is.
    [[nodiscard]] const Result<void> &outcome() const noexcept { return m_Outcome; }
    // The target's name in messages.
    [[nodiscard]] const std::string &fileName() const noexcept { return m_FileName; }

private:
    class Deflater;

    enum class Way { Replace, Overwrite, Send };

    void look();
    void writeInPlace(const char *reason);
    void open();
    [[nodiscard]] std::filesystem::path scratchFolder() const;
    [[nodiscard]] int openIn(const std::filesystem::path &folder);
    void writeBytes(const char *bytes, std::size_t size);
    void put(const char *bytes, std::size_t size);
    void replace();
    [[nodiscard]] bool backUp(BackupFiles &backups);
    void overwrite(const Step &step);
    void send(const Step &step);
    void sync(const Step &step);
    void cancel();
    void fail(int error);
    void fail(const std::string &cause);

    std::string m_FileName;
    std::filesystem::path m_Target;
    Scratch m_Scratch;
    std::filesystem::path m_Path;
    Way m_Way = Way::Replace;
    bool m_KeepsBackups = false;
    // Why it is written in place.
    std::string m_Reason;
    // The file that is replaced, if there is one.
    std::optional<struct stat> m_Old;
    std::optional<std::string> m_Remark;
    FileDescriptor m_File;
    std::string m_Buffer;
    std::unique_ptr<Deflater> m_Deflater;
    Result<void> m_Outcome;
};

} // namespace TAMBO::formats
